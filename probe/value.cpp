// Reading, writing and comparing of values, by the shape of the place they belong to.
#include "probe/value.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kestro_probe {

namespace {

template <typename Number> uint64_t number_at(const void *address) {
    Number number = 0;
    memcpy(&number, address, sizeof(number));
    return number;
}

template <typename Number> void put_number(uint64_t wide, void *address) {
    const auto number = static_cast<Number>(wide);
    memcpy(address, &number, sizeof(number));
}

value read_scalar(scalar type, const void *address) {
    value found;
    if (type == scalar::float64) {
        found.what = value::kind::real;
        memcpy(&found.real, address, sizeof(found.real));
        return found;
    }
    if (type == scalar::float32) {
        float real = 0;
        memcpy(&real, address, sizeof(real));
        found.what = value::kind::real;
        found.real = real;
        return found;
    }
    const size_t size = size_of(type);
    found.what = value::kind::number;
    found.number = normalised(type, size == 1   ? number_at<uint8_t>(address)
                                    : size == 2 ? number_at<uint16_t>(address)
                                    : size == 4 ? number_at<uint32_t>(address)
                                                : number_at<uint64_t>(address));
    return found;
}

void write_scalar(scalar type, const value &content, void *address) {
    if (type == scalar::float64) {
        memcpy(address, &content.real, sizeof(content.real));
        return;
    }
    if (type == scalar::float32) {
        const auto real = static_cast<float>(content.real);
        memcpy(address, &real, sizeof(real));
        return;
    }
    switch (size_of(type)) {
    case 1:
        return put_number<uint8_t>(content.number, address);
    case 2:
        return put_number<uint16_t>(content.number, address);
    case 4:
        return put_number<uint32_t>(content.number, address);
    default:
        return put_number<uint64_t>(content.number, address);
    }
}

value read_area(const shape &place, const char *address, size_t capacity) {
    value found;
    const size_t length = place.text ? strnlen(address, capacity) : capacity;
    // Text in a record is shown as such only where nothing but terminators follows it, else bytes would be lost.
    const bool fixed = place.count != 0;
    const bool as_text =
        place.text && (!fixed || std::all_of(address + length, address + capacity, [](char c) { return c == '\0'; }));
    found.what = as_text ? value::kind::text : value::kind::bytes;
    found.bytes.assign(address, as_text ? length : capacity);
    return found;
}

value read_list(const shape &place, const char *address, size_t capacity) {
    const shape element = element_of(place);
    value found;
    found.what = value::kind::list;
    for (size_t i = 0; i < capacity; ++i) {
        found.items.push_back(read_value(element, address + i * stride_of(element), element.count));
    }
    return found;
}

void *pointer_at(const char *address) {
    void *pointer = nullptr;
    memcpy(&pointer, address, sizeof(pointer));
    return pointer;
}

bool is_shown(const field &member, bool written) {
    return written ? is_output(member.direction) || member.direction == mark::value : is_input(member.direction);
}

value read_member(const record &layout, const field &member, const char *address, bool written) {
    const shape place = shape_of(member, written);
    const char *at = address + member.offset;
    if (member.direction == mark::value) {
        return read_value(place, at, place.count);
    }
    const void *pointer = pointer_at(at);
    const bool has_extent = pointer != nullptr && place.what != shape::form::handle;
    return read_value(place, pointer, has_extent ? extent_of(layout, member, address) : 0);
}

value read_record(const record &layout, const char *address, bool written) {
    value found;
    found.what = value::kind::record;
    for (uint32_t i = 0; i < layout.fields.size(); ++i) {
        if (is_shown(layout.fields[i], written)) {
            found.field_at.push_back(i);
            found.items.push_back(read_member(layout, layout.fields[i], address, written));
        }
    }
    return found;
}

bool write_area(const value &content, char *address, size_t capacity) {
    const size_t length = std::min(content.bytes.size(), capacity);
    memcpy(address, content.bytes.data(), length);
    if (content.what == value::kind::text && length < capacity) {
        address[length] = '\0';
    }
    return length == content.bytes.size();
}

bool write_list(const shape &place, const value &content, char *address, size_t capacity) {
    const shape element = element_of(place);
    const size_t length = std::min(content.items.size(), capacity);
    bool whole = length == content.items.size();
    for (size_t i = 0; i < length; ++i) {
        whole &= write_value(element, content.items[i], address + i * stride_of(element), element.count);
    }
    return whole;
}

bool write_member(const record &layout, const field &member, const value &content, char *address) {
    const shape place = shape_of(member);
    char *at = address + member.offset;
    if (member.direction == mark::value) {
        return write_value(place, content, at, place.count);
    }
    void *pointer = pointer_at(at);
    const bool has_extent = pointer != nullptr && place.what != shape::form::handle;
    return write_value(place, content, pointer, has_extent ? extent_of(layout, member, address) : 0);
}

// What is pointed to comes first: a length among the members says how far it reaches before that length is written.
bool write_record(const record &layout, const value &content, char *address) {
    bool whole = true;
    for (const bool pointers : {true, false}) {
        for (size_t i = 0; i < content.items.size(); ++i) {
            const field &member = layout.fields[content.field_at[i]];
            if ((member.direction != mark::value) == pointers) {
                whole &= write_member(layout, member, content.items[i], address);
            }
        }
    }
    return whole;
}

bool area_matches(const shape &place, const value &wanted, const value &found) {
    if (wanted.bytes == found.bytes) {
        return true;
    }
    if (!found.bytes.starts_with(wanted.bytes)) {
        return false;
    }
    // Text names an area up to its terminator, a list in a record its first elements; other bytes name all of it.
    return wanted.what == value::kind::text ? found.bytes[wanted.bytes.size()] == '\0' : place.count != 0;
}

// A list in a record names its first elements, any other list all of them.
bool list_matches(const shape &place, const value &wanted, const value &found) {
    const shape element = element_of(place);
    const bool fits =
        place.count != 0 ? wanted.items.size() <= found.items.size() : wanted.items.size() == found.items.size();
    return fits && std::equal(wanted.items.begin(), wanted.items.end(), found.items.begin(),
                              [&](const value &w, const value &f) { return matches(element, w, f); });
}

bool record_matches(const record &layout, const value &wanted, const value &found) {
    for (size_t i = 0; i < wanted.items.size(); ++i) {
        const uint32_t at = wanted.field_at[i];
        const auto named = std::find(found.field_at.begin(), found.field_at.end(), at);
        if (named == found.field_at.end() ||
            !matches(shape_of(layout.fields[at]), wanted.items[i],
                     found.items[static_cast<size_t>(named - found.field_at.begin())])) {
            return false;
        }
    }
    return true;
}

} // namespace

size_t extent_of(const record &layout, const field &pointer, const char *record_address) {
    if (pointer.direction == mark::in_text) {
        return strlen(static_cast<const char *>(pointer_at(record_address + pointer.offset)));
    }
    if (pointer.size.size_at < 0) {
        return pointer.size.fixed_size;
    }
    const field &size = layout.fields[static_cast<size_t>(pointer.size.size_at)];
    const uint64_t count = read_scalar(size.type, record_address + size.offset).number;
    const bool negative = is_signed(size.type) && static_cast<int64_t>(count) < 0;
    return negative ? 0 : static_cast<size_t>(std::min<uint64_t>(count, longest_shown_area));
}

value read_value(const shape &place, const void *address, size_t capacity) {
    value found;
    if (address == nullptr) {
        return found;
    }
    switch (place.what) {
    case shape::form::single:
        return read_scalar(place.type, address);
    case shape::form::area:
        return read_area(place, static_cast<const char *>(address), capacity);
    case shape::form::array:
        return read_list(place, static_cast<const char *>(address), capacity);
    case shape::form::record:
        return read_record(*place.layout, static_cast<const char *>(address), place.written);
    case shape::form::handle:
        found.what = value::kind::callback;
        break;
    }
    return found;
}

bool write_value(const shape &place, const value &content, void *address, size_t capacity) {
    if (content.what == value::kind::null || address == nullptr) {
        return content.what == value::kind::null;
    }
    switch (place.what) {
    case shape::form::single:
        write_scalar(place.type, content, address);
        break;
    case shape::form::area:
        return write_area(content, static_cast<char *>(address), capacity);
    case shape::form::array:
        return write_list(place, content, static_cast<char *>(address), capacity);
    case shape::form::record:
        return write_record(*place.layout, content, static_cast<char *>(address));
    case shape::form::handle:
        break;
    }
    return true;
}

bool matches(const shape &place, const value &wanted, const value &found) {
    if (wanted.what == value::kind::null || found.what == value::kind::null) {
        return wanted.what == found.what;
    }
    switch (place.what) {
    case shape::form::single:
        return wanted.number == found.number &&
               (wanted.real == found.real || (std::isnan(wanted.real) && std::isnan(found.real)));
    case shape::form::area:
        return area_matches(place, wanted, found);
    case shape::form::array:
        return list_matches(place, wanted, found);
    case shape::form::record:
        return record_matches(*place.layout, wanted, found);
    case shape::form::handle:
        break;
    }
    return true;
}

} // namespace kestro_probe
