// Parser and printer of the language of scripts and traces.
#include "probe/script.h"

#include "probe/cursor.h"
#include "probe/names.h"

#include <algorithm>
#include <charconv>

namespace kestro_probe {

namespace {

value take_value(cursor &here, const shape &place);

// What may stand here, for people who wrote something else.
std::string wanted_form(const shape &place) {
    const std::string or_null = place.nullable ? " or null" : "";
    switch (place.what) {
    case shape::form::single:
        return place.type == scalar::float32 ? "a number such as 3.25" + or_null : "a number" + or_null;
    case shape::form::area:
        return "\"text\", [20 02 ff]" + or_null;
    case shape::form::array:
        return "[1 2 3]" + or_null;
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
    if (type == scalar::float32) {
        content.what = value::kind::real;
        content.real = take_real(here);
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
    expect(here, '[', "[1 2 3]");
    while (!take(here, ']')) {
        if (at_end(here)) {
            throw syntax_error(start, "list without an end; close it with ]");
        }
        content.items.push_back(take_single(here, place.type));
    }
    return content;
}

uint32_t take_field(cursor &here, const record &layout, const value &already) {
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "{field=value field=value}");
    std::vector<std::string_view> known;
    for (uint32_t i = 0; i < layout.fields.size(); ++i) {
        known.emplace_back(layout.fields[i].name);
        if (name != known.back()) {
            continue;
        }
        if (std::count(already.field_at.begin(), already.field_at.end(), i) != 0) {
            throw syntax_error(start, "'" + std::string(name) + "' stands here twice; name a field once");
        }
        return i;
    }
    throw syntax_error(start, std::string(layout.name) + " has no field '" + std::string(name) +
                                  "'; nearest: " + nearest_names(name, known));
}

value take_record(cursor &here, const record &layout) {
    value content;
    content.what = value::kind::record;
    const size_t start = column(here);
    expect(here, '{', "{field=value field=value}");
    while (!take(here, '}')) {
        if (at_end(here)) {
            throw syntax_error(start, "record without an end; close it with }");
        }
        const uint32_t at = take_field(here, layout, content);
        expect(here, '=', "field=value");
        content.field_at.push_back(at);
        content.items.push_back(take_value(here, shape_of(layout.fields[at])));
    }
    return content;
}

bool take_keyword(cursor &here, std::string_view keyword) {
    cursor ahead = here;
    if (take_word(ahead) != keyword) {
        return false;
    }
    here = ahead;
    return true;
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
        return take_record(here, *place.layout);
    case shape::form::single:
        break;
    }
    if (next == '[' || next == '{' || next == '"' || next == '\0') {
        fail_form(here, place);
    }
    return take_single(here, place.type);
}

std::string wrong_side(const parameter &named, bool input) {
    const std::string name = "'" + std::string(named.name) + "'";
    return input ? name + " is written by the driver; name it behind the result, as in = 0 " + named.name + "=..."
                 : name + " is read by the driver; name it in the parentheses";
}

uint32_t take_parameter(cursor &here, const operation &op, bool input, const std::vector<named_value> &already) {
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "name=value");
    std::vector<std::string_view> known;
    for (uint32_t i = 0; i < op.parameters.size(); ++i) {
        const parameter &candidate = op.parameters[i];
        const bool fits = input ? is_input(candidate.direction) : is_output(candidate.direction);
        if (name == candidate.name && !fits) {
            throw syntax_error(start, wrong_side(candidate, input));
        }
        if (fits) {
            known.emplace_back(candidate.name);
        }
        if (name != candidate.name) {
            continue;
        }
        if (std::any_of(already.begin(), already.end(), [&](const named_value &v) { return v.parameter == i; })) {
            throw syntax_error(start, "'" + std::string(name) + "' stands here twice; name it once");
        }
        return i;
    }
    const std::string side = input ? "input" : "output";
    const std::string nearest = nearest_names(name, known);
    throw syntax_error(start, std::string(op.name) + " has no " + side + " '" + std::string(name) + "'; " +
                                  (nearest.empty() ? "it has no " + side + "s" : "nearest: " + nearest));
}

void take_named_value(cursor &here, const operation &op, bool input, std::vector<named_value> &into) {
    const uint32_t at = take_parameter(here, op, input, into);
    expect(here, '=', "name=value");
    into.push_back({at, take_value(here, shape_of(op.parameters[at]))});
}

void take_inputs(cursor &here, rule &read) {
    read.any_input = !take(here, '(');
    if (read.any_input || take(here, ')')) {
        return;
    }
    do {
        take_named_value(here, operations[read.operation], true, read.inputs);
    } while (take(here, ','));
    expect(here, ')', "op(name=value, name=value) = result");
}

void take_result(cursor &here, rule &read) {
    expect(here, '=', "op(name=value) = result");
    for (const auto &[keyword, what] :
         {std::pair{"pass", outcome::pass}, std::pair{"crash", outcome::crash}, std::pair{"hang", outcome::hang}}) {
        if (take_keyword(here, keyword)) {
            read.what = what;
            return;
        }
    }
    skip_blanks(here);
    const cursor start = here;
    const std::string_view word = take_word(here);
    if (word.empty() || (word[0] != '-' && (word[0] < '0' || word[0] > '9'))) {
        throw syntax_error(column(start), shown_word(start) + " is no result; write a number such as 0 or 0xdead, "
                                                              "pass, crash or hang");
    }
    here = start;
    read.code = static_cast<uint32_t>(take_number(here, scalar::uint32));
}

// "x3" at the end of a line.
bool take_times(cursor &here, rule &read) {
    skip_blanks(here);
    cursor ahead = here;
    const std::string_view word = take_word(ahead);
    if (!word.starts_with('x') || peek(ahead) == '=') {
        return false;
    }
    const std::string_view digits = word.substr(1);
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), read.times);
    if (fault != std::errc() || end != digits.data() + digits.size() || read.times == 0) {
        throw syntax_error(column(here), "'" + std::string(word) + "' is no count; write x1, x2, ... for how often " +
                                             "the rule serves");
    }
    here = ahead;
    return true;
}

void take_outputs(cursor &here, rule &read) {
    while (!at_end(here)) {
        if (take_times(here, read)) {
            break;
        }
        if (read.what == outcome::crash || read.what == outcome::hang) {
            throw syntax_error(column(here), "a call that does not return writes nothing; end the rule here");
        }
        take_named_value(here, operations[read.operation], false, read.outputs);
    }
    if (!at_end(here)) {
        throw syntax_error(column(here), shown_word(here) + " behind the count; end the rule with the count");
    }
}

rule take_rule(cursor &here) {
    rule read;
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "op(name=value) = result name=value");
    read.operation = find_operation(name);
    if (read.operation == operations.size()) {
        std::vector<std::string_view> known;
        for (const operation &op : operations) {
            known.emplace_back(op.name);
        }
        throw syntax_error(start, "no operation is called '" + std::string(name) +
                                      "'; nearest: " + nearest_names(name, known));
    }
    take_inputs(here, read);
    take_result(here, read);
    take_outputs(here, read);
    return read;
}

void parse_line(script &into, std::string_view text, size_t number) {
    cursor here{text};
    if (at_end(here)) {
        return;
    }
    const size_t start = here.at;
    try {
        rule read = take_rule(here);
        read.line = number;
        read.source = std::string(text.substr(start, here.at - start));
        read.source.erase(read.source.find_last_not_of(" \t\r") + 1);
        into.rules.push_back(std::move(read));
    } catch (const syntax_error &fault) {
        into.faults.push_back(into.file + ":" + std::to_string(number) + ":" + std::to_string(fault.column) + ": " +
                              fault.what());
    }
}

std::string print_named(uint32_t operation, const named_value &named) {
    const parameter &shown = operations[operation].parameters[named.parameter];
    return std::string(shown.name) + "=" + print_value(shape_of(shown), named.content);
}

std::string print_result(const rule &shown) {
    switch (shown.what) {
    case outcome::pass:
        return "pass";
    case outcome::crash:
        return "crash";
    case outcome::hang:
        return "hang";
    case outcome::code:
        break;
    }
    char digits[8];
    return "0x" + std::string(digits, std::to_chars(digits, digits + sizeof(digits), shown.code, 16).ptr);
}

} // namespace

uint32_t find_operation(std::string_view name) {
    const auto found = std::lower_bound(operations.begin(), operations.end(), name,
                                        [](const operation &op, std::string_view wanted) { return op.name < wanted; });
    const bool known = found != operations.end() && found->name == name;
    return static_cast<uint32_t>((known ? found : operations.end()) - operations.begin());
}

script parse_script(const std::string &file, std::string_view content) {
    script read;
    read.file = file;
    for (size_t number = 1; !content.empty(); ++number) {
        const size_t end = std::min(content.find('\n'), content.size());
        parse_line(read, content.substr(0, end), number);
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    return read;
}

std::string print_call(uint32_t operation, const std::vector<named_value> &inputs) {
    std::string text = std::string(operations[operation].name) + "(";
    for (size_t i = 0; i < inputs.size(); ++i) {
        text += (i > 0 ? ", " : "") + print_named(operation, inputs[i]);
    }
    return text + ")";
}

std::string print_rule(const rule &shown) {
    std::string text = shown.any_input ? operations[shown.operation].name : print_call(shown.operation, shown.inputs);
    text += " = " + print_result(shown);
    for (const named_value &output : shown.outputs) {
        text += " " + print_named(shown.operation, output);
    }
    return text + (shown.times > 0 ? " x" + std::to_string(shown.times) : "");
}

} // namespace kestro_probe
