// Where values stand: how long each type is, and what the places are that parameters and fields describe.
#include "probe/value.h"

#include <algorithm>
#include <string_view>

namespace kestro_probe {

namespace {

bool is_byte(scalar type) {
    return size_of(type) == 1;
}

// What a pointer with that mark leads to.
shape behind_pointer(mark direction, scalar type, const record *layout) {
    shape place;
    place.type = type;
    place.layout = layout;
    place.nullable = true;
    place.text = is_text(direction);
    if (direction == mark::callback || direction == mark::opaque) {
        place.what = shape::form::handle;
    } else if (is_area(direction) || place.text) {
        place.what = shape::form::area;
    } else if (is_array(direction)) {
        place.what = shape::form::array;
    } else {
        place.what = layout != nullptr ? shape::form::record : shape::form::single;
    }
    return place;
}

shape within_record(const field &described) {
    shape place;
    place.type = described.type;
    place.layout = described.layout;
    place.count = described.rows > 0 ? described.rows : described.count;
    place.row = described.rows > 0 ? described.count : 0;
    const bool bytes = described.layout == nullptr && is_byte(described.type);
    if (place.count > 0) {
        place.what = bytes && place.row == 0 ? shape::form::area : shape::form::array;
        place.text = described.type == scalar::character && place.row == 0;
    } else {
        place.what = described.layout != nullptr ? shape::form::record : shape::form::single;
    }
    return place;
}

} // namespace

size_t size_of(scalar type) {
    switch (type) {
    case scalar::character:
    case scalar::int8:
    case scalar::uint8:
        return 1;
    case scalar::int16:
    case scalar::uint16:
        return 2;
    case scalar::int64:
    case scalar::uint64:
    case scalar::float64:
        return 8;
    case scalar::int32:
    case scalar::uint32:
    case scalar::float32:
        return 4;
    case scalar::none:
        break;
    }
    return 0;
}

// A plain char counts as unsigned, as it is on the board's processor.
bool is_signed(scalar type) {
    return type == scalar::int8 || type == scalar::int16 || type == scalar::int32 || type == scalar::int64;
}

uint64_t normalised(scalar type, uint64_t number) {
    const auto unused = static_cast<unsigned>(64 - 8 * size_of(type));
    const uint64_t high = number << unused;
    return is_signed(type) ? static_cast<uint64_t>(static_cast<int64_t>(high) >> unused) : high >> unused;
}

shape shape_of(const parameter &described, bool written) {
    shape place = behind_pointer(described.direction, described.type, described.layout);
    place.nullable = described.direction != mark::value;
    place.hex = std::string_view(described.name) == "inst_id";
    place.written = written;
    return place;
}

shape shape_of(const field &described, bool written) {
    shape place = described.direction != mark::value
                      ? behind_pointer(described.direction, described.type, described.layout)
                      : within_record(described);
    place.written = written;
    return place;
}

shape element_of(const shape &array) {
    shape element;
    element.type = array.type;
    element.layout = array.layout;
    element.written = array.written;
    element.count = array.row;
    if (array.row > 0) {
        element.what = is_byte(array.type) ? shape::form::area : shape::form::array;
        element.text = array.type == scalar::character;
    } else if (array.layout != nullptr) {
        element.what = shape::form::record;
    }
    return element;
}

size_t stride_of(const shape &element) {
    if (element.what == shape::form::record) {
        return element.layout->size;
    }
    return size_of(element.type) * std::max<size_t>(element.count, 1);
}

} // namespace kestro_probe
