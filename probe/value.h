// A value as scripts and traces write it, and its way from and to the memory of a driver call.
#pragma once

#include "probe/descriptor.h"

#include <string>
#include <vector>

namespace kestro_probe {

// An area that is said to be longer is read in part: a wrong size is likelier than a driver that fills so much.
constexpr size_t longest_shown_area = size_t{16} << 20;

// The place a value belongs to: what is understood there and how it is shown.
struct shape {
    enum class form : uint8_t { single, area, array, record, handle };

    form what = form::single;
    scalar type = scalar::uint32;
    const record *layout = nullptr;
    size_t count = 0;      // elements of an array or of an area within a record
    size_t row = 0;        // elements of each row of a two-dimensional array
    bool text = false;     // an area that is shown as text
    bool nullable = false; // a pointer: it may be null
    bool hex = false;      // numbers that people know by their hexadecimal form
    bool written = false;  // stands behind the result: what a record points to for reading only is left out
};

shape shape_of(const parameter &described, bool written = false);
shape shape_of(const field &described, bool written = false);

// What the elements of an array are, and how far one lies from the next.
shape element_of(const shape &array);
size_t stride_of(const shape &element);

// How many elements an area or array has that a pointer in a record leads to; of a text that is read, its length.
size_t extent_of(const record &layout, const field &pointer, const char *record_address);

struct value {
    enum class kind : uint8_t { null, callback, number, real, bytes, text, list, record };

    kind what = kind::null;
    uint64_t number = 0; // a signed number is kept sign-extended
    double real = 0;
    std::string bytes;              // of bytes and text
    std::vector<value> items;       // of a list, or of the named fields of a record
    std::vector<uint32_t> field_at; // which field of the record each item is

    bool operator==(const value &) const = default;
};

size_t size_of(scalar type);
bool is_signed(scalar type);

// The bits of a number as a value of this type has them; a number that the type does not hold is cut.
uint64_t normalised(scalar type, uint64_t number);

// Reads what stands at an address. capacity is the size of an area in bytes, of an array in elements.
value read_value(const shape &place, const void *address, size_t capacity);

// Writes a value to an address and nothing beyond capacity; false when the value did not fit whole.
bool write_value(const shape &place, const value &content, void *address, size_t capacity);

// Whether what was found is what is wanted. Fields that are not named may be anything.
bool matches(const shape &place, const value &wanted, const value &found);

std::string print_value(const shape &place, const value &content);
std::string print_text(const std::string &text);

} // namespace kestro_probe
