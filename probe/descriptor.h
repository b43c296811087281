// What the probe knows of the driver interface: operations, their parameters and records. The tables themselves are
// generated from the driver interface headers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestro_probe {

enum class scalar : uint8_t { character, int8, uint8, int16, uint16, int32, uint32, int64, uint64, float32 };

// How a parameter is passed: the direction marks of the headers, and the three that need none.
enum class mark : uint8_t {
    value,
    callback,
    opaque,
    in,
    out,
    inout,
    in_text,
    in_bytes,
    out_bytes,
    out_text,
    inout_text
};

// A member of a record; count 0 is a single value. Members of a union have the same offset.
struct field {
    const char *name;
    scalar type;
    uint32_t count;
    size_t offset;
};

struct record {
    const char *name;
    std::span<const field> fields;
};

// An area has its size in another parameter (size_parameter, -1 for none) or a fixed one. A hidden parameter can be
// matched but is not shown: the format of a variadic operation, whose text is shown in its place.
struct parameter {
    const char *name;
    mark direction;
    scalar type;
    const record *layout;
    int32_t size_parameter;
    uint32_t fixed_size;
    bool hidden;
};

struct operation {
    const char *name;
    std::span<const parameter> parameters;
};

// Sorted by name.
extern const std::span<const operation> operations;

constexpr bool is_input(mark direction) {
    return direction != mark::out && direction != mark::out_bytes && direction != mark::out_text;
}

constexpr bool is_output(mark direction) {
    return !is_input(direction) || direction == mark::inout || direction == mark::inout_text;
}

} // namespace kestro_probe
