// Values of a script, by the shape of the place they stand for.
#include "probe/script_values.h"

#include "probe/names.h"

#include <algorithm>

namespace kestro_probe {

namespace {

// What may stand here, for people who wrote something else.
std::string wanted_form(const shape &place) {
    const std::string or_null = place.nullable ? " or null" : "";
    switch (place.what) {
    case shape::form::single:
        return place.type == scalar::float32 || place.type == scalar::float64 ? "a number such as 3.25" + or_null
                                                                              : "a number" + or_null;
    case shape::form::area:
        return "\"text\", [20 02 ff]" + or_null;
    case shape::form::array:
        return (place.row > 0             ? "[[1 2] [3 4]]"
                : place.layout != nullptr ? "[{field=value} {field=value}]"
                                          : "[1 2 3]") +
               or_null;
    case shape::form::record:
        return "{field=value field=value}" + or_null;
    case shape::form::handle:
        break;
    }
    return "callback" + or_null;
}

[[noreturn]] void fail_form(const cursor &here, const shape &place) {
    throw syntax_error(column(here), shown_word(here) + " does not fit here; write " + wanted_form(place));
}

value take_bytes(cursor &here) {
    value content;
    content.what = value::kind::bytes;
    const size_t start = column(here);
    expect(here, '[', "[20 02 ff]");
    while (!take(here, ']')) {
        if (at_end(here)) {
            throw syntax_error(start, "list without an end; close it with ]");
        }
        content.bytes += take_hex_byte(here);
    }
    return content;
}

value take_single(cursor &here, scalar type) {
    value content;
    if (type == scalar::float32 || type == scalar::float64) {
        content.what = value::kind::real;
        content.real = take_real(here, type);
    } else {
        content.what = value::kind::number;
        content.number = take_number(here, type);
    }
    return content;
}

value take_list(cursor &here, const shape &place) {
    value content;
    content.what = value::kind::list;
    const size_t start = column(here);
    const shape element = element_of(place);
    expect(here, '[', "[1 2 3]");
    while (!take(here, ']')) {
        if (at_end(here)) {
            throw syntax_error(start, "list without an end; close it with ]");
        }
        content.items.push_back(take_value(here, element));
    }
    return content;
}

uint32_t take_field(cursor &here, const record &layout, const value &already, bool written) {
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "{field=value field=value}");
    std::vector<std::string_view> known;
    for (uint32_t i = 0; i < layout.fields.size(); ++i) {
        known.emplace_back(layout.fields[i].name);
        if (name != known.back()) {
            continue;
        }
        if (!belongs(layout.fields[i].direction, written ? side::output : side::input)) {
            throw syntax_error(start, "what '" + std::string(name) + "' points to is " +
                                          (written ? "read by the driver; name it in the parentheses"
                                                   : "written by the driver; name it behind the result"));
        }
        if (std::count(already.field_at.begin(), already.field_at.end(), i) != 0) {
            throw syntax_error(start, "'" + std::string(name) + "' stands here twice; name a field once");
        }
        return i;
    }
    throw syntax_error(start, std::string(layout.name) + " has no field '" + std::string(name) +
                                  "'; nearest: " + nearest_names(name, known));
}

value take_record(cursor &here, const record &layout, bool written) {
    value content;
    content.what = value::kind::record;
    const size_t start = column(here);
    expect(here, '{', "{field=value field=value}");
    while (!take(here, '}')) {
        if (at_end(here)) {
            throw syntax_error(start, "record without an end; close it with }");
        }
        const uint32_t at = take_field(here, layout, content, written);
        expect(here, '=', "field=value");
        content.field_at.push_back(at);
        content.items.push_back(take_value(here, shape_of(layout.fields[at], written)));
    }
    return content;
}

value take_area(cursor &here, const shape &place) {
    value content;
    switch (peek(here)) {
    case '"':
        content.what = value::kind::text;
        content.bytes = take_quoted(here);
        return content;
    case '[':
        return take_bytes(here);
    default:
        fail_form(here, place);
    }
}

value take_handle(cursor &here, const shape &place) {
    value content;
    if (!take_keyword(here, "callback")) {
        fail_form(here, place);
    }
    content.what = value::kind::callback;
    return content;
}

} // namespace

bool belongs(mark direction, side named) {
    return direction == mark::value || named == side::both ||
           (named == side::input ? is_input(direction) : is_output(direction));
}

bool take_keyword(cursor &here, std::string_view keyword) {
    cursor ahead = here;
    if (take_word(ahead) != keyword) {
        return false;
    }
    here = ahead;
    return true;
}

value take_value(cursor &here, const shape &place) {
    if (place.nullable && take_keyword(here, "null")) {
        return {};
    }
    const char next = peek(here);
    switch (place.what) {
    case shape::form::area:
        return take_area(here, place);
    case shape::form::handle:
        return take_handle(here, place);
    case shape::form::array:
        if (next != '[') {
            fail_form(here, place);
        }
        return take_list(here, place);
    case shape::form::record:
        if (next != '{') {
            fail_form(here, place);
        }
        return take_record(here, *place.layout, place.written);
    case shape::form::single:
        break;
    }
    if (next == '[' || next == '{' || next == '"' || next == '\0') {
        fail_form(here, place);
    }
    return take_single(here, place.type);
}

} // namespace kestro_probe
