// Parser and printer of the language of scripts and traces.
#include "probe/script.h"

#include "probe/names.h"
#include "probe/script_values.h"

#include <algorithm>
#include <charconv>

namespace kestro_probe {

namespace {

std::string wrong_side(const parameter &named, bool input) {
    const std::string name = "'" + std::string(named.name) + "'";
    return input ? name + " is written by the driver; name it behind the result, as in = 0 " + named.name + "=..."
                 : name + " is read by the driver; name it in the parentheses";
}

bool is_on(side wanted, const parameter &candidate) {
    switch (wanted) {
    case side::input:
        return is_input(candidate.direction);
    case side::output:
        return is_output(candidate.direction);
    default:
        return true;
    }
}

uint32_t take_parameter(cursor &here, const operation &op, side wanted, const std::vector<named_value> &already) {
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "name=value");
    std::vector<std::string_view> known;
    for (uint32_t i = 0; i < op.parameters.size(); ++i) {
        const parameter &candidate = op.parameters[i];
        const bool fits = is_on(wanted, candidate);
        if (name == candidate.name && !fits) {
            throw syntax_error(start, wrong_side(candidate, wanted == side::input));
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
    const std::string kind = wanted == side::input ? "input" : wanted == side::output ? "output" : "parameter";
    const std::string nearest = nearest_names(name, known);
    throw syntax_error(start, std::string(op.name) + " has no " + kind + " '" + std::string(name) + "'; " +
                                  (nearest.empty() ? "it has no " + kind + "s" : "nearest: " + nearest));
}

void take_named_value(cursor &here, const operation &op, side wanted, std::vector<named_value> &into) {
    const uint32_t at = take_parameter(here, op, wanted, into);
    const bool written = wanted == side::output || (wanted == side::both && !is_input(op.parameters[at].direction));
    expect(here, '=', "name=value");
    into.push_back({at, take_value(here, shape_of(op.parameters[at], written))});
}

void take_inputs(cursor &here, rule &read, side wanted) {
    read.any_input = !take(here, '(');
    if (read.any_input || take(here, ')')) {
        return;
    }
    do {
        take_named_value(here, operations[read.operation], wanted, read.inputs);
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
    const scalar type = operations[read.operation].result;
    if (take_keyword(here, "void")) {
        if (type != scalar::none) {
            throw syntax_error(column(here) - 4,
                               std::string(operations[read.operation].name) + " returns a number; write it, as in = 0");
        }
        return;
    }
    skip_blanks(here);
    const cursor start = here;
    const std::string_view word = take_word(here);
    if (word.empty() || (word[0] != '-' && (word[0] < '0' || word[0] > '9'))) {
        throw syntax_error(column(start), shown_word(start) + " is no result; write a number such as 0 or 0xdead, "
                                                              "pass, crash or hang");
    }
    here = start;
    if (type == scalar::none) {
        throw syntax_error(column(start), std::string(operations[read.operation].name) +
                                              " returns nothing; write void, pass, crash or hang");
    }
    read.code = take_number(here, type);
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
        take_named_value(here, operations[read.operation], side::output, read.outputs);
    }
    if (!at_end(here)) {
        throw syntax_error(column(here), shown_word(here) + " behind the count; end the rule with the count");
    }
}

// "@2" in front of a call.
uint32_t take_thread(cursor &here) {
    skip_blanks(here);
    if (here.line.substr(here.at, 1) != "@") {
        return 0;
    }
    const size_t start = column(here);
    ++here.at;
    const std::string_view digits = take_word(here);
    uint32_t thread = 0;
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), thread);
    if (fault != std::errc() || end != digits.data() + digits.size() || thread == 0) {
        throw syntax_error(start, "'@" + std::string(digits) + "' is no thread; write @1, @2, ...");
    }
    return thread;
}

uint32_t take_operation(cursor &here) {
    skip_blanks(here);
    const size_t start = column(here);
    const std::string_view name = take_name(here, "op(name=value) = result name=value");
    const uint32_t found = find_operation(name);
    if (found == operations.size()) {
        std::vector<std::string_view> known;
        for (const operation &op : operations) {
            known.emplace_back(op.name);
        }
        throw syntax_error(start, "no operation is called '" + std::string(name) +
                                      "'; nearest: " + nearest_names(name, known));
    }
    return found;
}

// Of a line of a recording whose call had not come back: it ends in the mark, or it is the file's last, cut off.
bool is_begun(cursor here, bool cut_off) {
    return take_word(here) == "..." ? at_end(here) : cut_off && at_end(here);
}

bool take_rule(cursor &here, bool cut_off, rule &read) {
    read.thread = take_thread(here);
    read.operation = take_operation(here);
    take_inputs(here, read, side::input);
    skip_blanks(here);
    if (!read.any_input && is_begun(here, cut_off)) {
        return false;
    }
    take_result(here, read);
    take_outputs(here, read);
    return true;
}

void parse_line(script &into, std::string_view text, size_t number, bool cut_off, std::vector<rule> &begun) {
    cursor here{text};
    if (at_end(here)) {
        return;
    }
    const size_t start = here.at;
    try {
        rule read;
        const bool whole = take_rule(here, cut_off, read);
        read.line = number;
        read.source = std::string(text.substr(start, here.at - start));
        read.source.erase(read.source.find_last_not_of(" \t\r") + 1);
        (whole ? into.rules : begun).push_back(std::move(read));
    } catch (const syntax_error &fault) {
        into.faults.push_back(into.file + ":" + std::to_string(number) + ":" + std::to_string(fault.column) + ": " +
                              fault.what());
    }
}

// A call that came back has a whole line further down. What is left was under way when the recorded run ended.
void report_unfinished(script &into, const std::vector<rule> &begun) {
    std::vector<bool> taken(into.rules.size());
    for (const rule &head : begun) {
        size_t at = 0;
        for (; at < into.rules.size(); ++at) {
            const rule &line = into.rules[at];
            if (!taken[at] && line.line > head.line && line.thread == head.thread && line.operation == head.operation &&
                line.inputs == head.inputs) {
                break;
            }
        }
        if (at < into.rules.size()) {
            taken[at] = true;
            continue;
        }
        into.faults.push_back(into.file + ":" + std::to_string(head.line) +
                              ":1: this call never came back, the recorded run ended in it; write what it is to do "
                              "behind it, as in = crash, or take the line out: " +
                              head.source);
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
    const scalar type = operations[shown.operation].result;
    if (type == scalar::none) {
        return "void";
    }
    if (is_signed(type) && static_cast<int64_t>(shown.code) < 0) {
        return std::to_string(static_cast<int64_t>(shown.code));
    }
    char digits[16];
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
    std::vector<rule> begun;
    for (size_t number = 1; !content.empty(); ++number) {
        const size_t end = std::min(content.find('\n'), content.size());
        parse_line(read, content.substr(0, end), number, end == content.size(), begun);
        content.remove_prefix(std::min(end + 1, content.size()));
    }
    report_unfinished(read, begun);
    return read;
}

rule parse_call(std::string_view line) {
    cursor here{line};
    rule read;
    read.operation = take_operation(here);
    take_inputs(here, read, side::both);
    if (!at_end(here)) {
        throw syntax_error(column(here), shown_word(here) + " behind the call; write op(name=value, name=value)");
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

std::string print_answer(const rule &shown) {
    std::string text = " = " + print_result(shown);
    for (const named_value &output : shown.outputs) {
        text += " " + print_named(shown.operation, output);
    }
    return text + (shown.times > 0 ? " x" + std::to_string(shown.times) : "");
}

std::string print_thread(uint32_t thread) {
    return thread > 1 ? "@" + std::to_string(thread) + " " : "";
}

std::string print_rule(const rule &shown) {
    const std::string call =
        shown.any_input ? operations[shown.operation].name : print_call(shown.operation, shown.inputs);
    return print_thread(shown.thread) + call + print_answer(shown);
}

} // namespace kestro_probe
