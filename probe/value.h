// A value as scripts and traces write it, and its way from and to the memory of a driver call.
#pragma once

#include "probe/descriptor.h"

#include <string>
#include <vector>

namespace kestro_probe {

// The place a value belongs to: what is understood there and how it is shown.
struct shape {
    enum class form : uint8_t { single, area, array, record, handle };

    form what = form::single;
    scalar type = scalar::uint32;
    const record *layout = nullptr;
    size_t count = 0;      // elements of an array or of an area within a record
    bool text = false;     // an area that is shown as text
    bool nullable = false; // a pointer: it may be null
    bool hex = false;      // numbers that people know by their hexadecimal form
};

shape shape_of(const parameter &described);
shape shape_of(const field &described);

struct value {
    enum class kind : uint8_t { null, callback, number, real, bytes, text, list, record };

    kind what = kind::null;
    uint64_t number = 0; // a signed number is kept sign-extended
    float real = 0;
    std::string bytes;              // of bytes and text
    std::vector<value> items;       // of a list, or of the named fields of a record
    std::vector<uint32_t> field_at; // which field of the record each item is

    bool operator==(const value &) const = default;
};

size_t size_of(scalar type);
bool is_signed(scalar type);

// The bits of a number as a value of this type has them; a number that the type does not hold is cut.
uint64_t normalised(scalar type, uint64_t number);

// Reads what stands at an address. capacity is the size of an area in bytes.
value read_value(const shape &place, const void *address, size_t capacity);

// Writes a value to an address and nothing beyond capacity; false when the value did not fit whole.
bool write_value(const shape &place, const value &content, void *address, size_t capacity);

// Whether what was found is what is wanted. Fields that are not named may be anything.
bool matches(const shape &place, const value &wanted, const value &found);

std::string print_value(const shape &place, const value &content);
std::string print_text(const std::string &text);

} // namespace kestro_probe
