// What the probe knows of the driver interface: operations, their parameters and records. The tables themselves are
// generated from the driver interface headers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestro_probe {

// none: of an operation that returns nothing.
enum class scalar : uint8_t {
    character,
    int8,
    uint8,
    int16,
    uint16,
    int32,
    uint32,
    int64,
    uint64,
    float32,
    float64,
    none
};

// How a value is passed: the direction marks of the headers, and the three that need none.
enum class mark : uint8_t {
    value,
    callback,
    opaque,
    in,
    out,
    inout,
    in_text,
    out_text,
    inout_text,
    in_bytes,
    out_bytes,
    inout_bytes,
    in_array,
    out_array,
    inout_array
};

struct record;

// What a pointer leads to has its size in another parameter or member (size_at, -1 for none) or a fixed one; the
// parameter filled_at tells how much of it was written.
struct extent {
    int32_t size_at = -1;
    uint32_t fixed_size = 0;
    int32_t filled_at = -1;
};

// A member of a record. count 0 is a single value, rows 0 not a two-dimensional array. Members of a union have the same
// offset.
struct field {
    const char *name;
    mark direction;
    scalar type;
    const record *layout;
    extent size;
    uint32_t rows;
    uint32_t count;
    size_t offset;
};

struct record {
    const char *name;
    std::span<const field> fields;
    size_t size;
};

// A hidden parameter can be matched but is not shown: the format of a variadic operation, whose text is shown in its
// place.
struct parameter {
    const char *name;
    mark direction;
    scalar type;
    const record *layout;
    extent size;
    bool hidden;
};

struct operation {
    const char *name;
    const char *library; // the folder below include/ that declares it
    scalar result;
    std::span<const parameter> parameters;
};

// Sorted by name.
extern const std::span<const operation> operations;

constexpr bool is_input(mark direction) {
    return direction != mark::out && direction != mark::out_bytes && direction != mark::out_text &&
           direction != mark::out_array;
}

constexpr bool is_inout(mark direction) {
    return direction == mark::inout || direction == mark::inout_text || direction == mark::inout_bytes ||
           direction == mark::inout_array;
}

constexpr bool is_output(mark direction) {
    return !is_input(direction) || is_inout(direction);
}

constexpr bool is_text(mark direction) {
    return direction == mark::in_text || direction == mark::out_text || direction == mark::inout_text;
}

constexpr bool is_array(mark direction) {
    return direction == mark::in_array || direction == mark::out_array || direction == mark::inout_array;
}

// Bytes or text in an area of a given size.
constexpr bool is_area(mark direction) {
    return direction == mark::in_bytes || direction == mark::out_bytes || direction == mark::inout_bytes ||
           direction == mark::out_text || direction == mark::inout_text;
}

constexpr bool is_sized(mark direction) {
    return is_area(direction) || is_array(direction);
}

} // namespace kestro_probe
