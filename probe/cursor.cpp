// Words, numbers, bytes and quoted texts of one line of a script or trace.
#include "probe/cursor.h"

#include "probe/value.h"

#include <charconv>

namespace kestro_probe {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::string_view delimiters = " \t\r,()[]{}=\"#";

int hex_digit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

int two_hex_digits(std::string_view digits) {
    if (digits.size() != 2 || hex_digit(digits[0]) < 0 || hex_digit(digits[1]) < 0) {
        return -1;
    }
    return hex_digit(digits[0]) * 16 + hex_digit(digits[1]);
}

bool parse_magnitude(std::string_view digits, uint64_t &number) {
    const bool hex = digits.starts_with("0x") || digits.starts_with("0X");
    digits.remove_prefix(hex ? 2 : 0);
    const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number, hex ? 16 : 10);
    return fault == std::errc() && end == digits.data() + digits.size();
}

// -2^(n-1) to 2^n - 1: what n bits can mean, read as signed or as unsigned.
bool fits(scalar type, bool negative, uint64_t magnitude) {
    const auto bits = static_cast<unsigned>(8 * size_of(type));
    const uint64_t half = uint64_t{1} << (bits - 1);
    return negative ? magnitude <= half : magnitude <= half + (half - 1);
}

char take_escape(cursor &here) {
    const size_t start = column(here);
    ++here.at;
    const char letter = here.at < here.line.size() ? here.line[here.at++] : '\0';
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    case '\\':
    case '"':
        return letter;
    case 'x':
        if (const int byte = two_hex_digits(here.line.substr(here.at, 2)); byte >= 0) {
            here.at += 2;
            return static_cast<char>(byte);
        }
        throw syntax_error(start, "\\x without two hex digits; write \\x0a");
    default:
        throw syntax_error(start, "unknown escape; write \\n, \\r, \\t, \\\\, \\\" or \\x0a");
    }
}

} // namespace

size_t column(const cursor &here) {
    return here.at + 1;
}

void skip_blanks(cursor &here) {
    const size_t next = here.line.find_first_not_of(blanks, here.at);
    here.at = next == std::string_view::npos ? here.line.size() : next;
}

char peek(cursor &here) {
    skip_blanks(here);
    return here.at < here.line.size() && here.line[here.at] != '#' ? here.line[here.at] : '\0';
}

bool at_end(cursor &here) {
    skip_blanks(here);
    return here.at >= here.line.size() || here.line[here.at] == '#';
}

bool take(cursor &here, char wanted) {
    if (at_end(here) || peek(here) != wanted) {
        return false;
    }
    ++here.at;
    return true;
}

void expect(cursor &here, char wanted, const std::string &purpose) {
    if (!take(here, wanted)) {
        throw syntax_error(column(here), shown_word(here) + " where '" + wanted + "' was expected; write " + purpose);
    }
}

std::string_view take_word(cursor &here) {
    skip_blanks(here);
    const size_t end = std::min(here.line.find_first_of(delimiters, here.at), here.line.size());
    const std::string_view word = here.line.substr(here.at, end - here.at);
    here.at = end;
    return word;
}

std::string_view take_name(cursor &here, const std::string &purpose) {
    skip_blanks(here);
    const cursor start = here;
    const std::string_view word = take_word(here);
    for (const char c : word) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        if (!letter) {
            throw syntax_error(column(start), "'" + std::string(word) + "' is no name; write " + purpose);
        }
    }
    if (word.empty()) {
        throw syntax_error(column(start), shown_word(start) + " where a name was expected; write " + purpose);
    }
    return word;
}

uint64_t take_number(cursor &here, scalar type) {
    skip_blanks(here);
    const cursor start = here;
    const std::string_view word = take_word(here);
    const bool negative = word.starts_with('-');
    uint64_t magnitude = 0;
    if (!parse_magnitude(word.substr(negative ? 1 : 0), magnitude)) {
        throw syntax_error(column(start), shown_word(start) +
                                              " is no number; write it decimal (10), hexadecimal (0x0a) or "
                                              "negative (-1)");
    }
    if (!fits(type, negative, magnitude)) {
        const std::string bits = std::to_string(8 * size_of(type));
        throw syntax_error(column(start), shown_word(start) + " is too large; write a number of " + bits + " bits");
    }
    return normalised(type, negative ? 0 - magnitude : magnitude);
}

namespace {

template <typename Real> bool parse_real(std::string_view word, double &real) {
    Real narrow = 0;
    const auto [end, fault] = std::from_chars(word.data(), word.data() + word.size(), narrow);
    real = narrow;
    return fault == std::errc() && end == word.data() + word.size();
}

} // namespace

double take_real(cursor &here, scalar type) {
    skip_blanks(here);
    const cursor start = here;
    const std::string_view word = take_word(here);
    double real = 0;
    if (!(type == scalar::float32 ? parse_real<float>(word, real) : parse_real<double>(word, real))) {
        throw syntax_error(column(start), shown_word(start) + " is no number; write it as 3.25, -1e-3, inf or nan");
    }
    return real;
}

char take_hex_byte(cursor &here) {
    skip_blanks(here);
    const cursor start = here;
    const int byte = two_hex_digits(take_word(here));
    if (byte < 0) {
        throw syntax_error(column(start), shown_word(start) + " is no byte; write two hex digits, as in [20 02 ff]");
    }
    return static_cast<char>(byte);
}

std::string take_quoted(cursor &here) {
    skip_blanks(here);
    const size_t start = column(here);
    std::string text;
    ++here.at;
    while (here.at < here.line.size() && here.line[here.at] != '"') {
        text += here.line[here.at] == '\\' ? take_escape(here) : here.line[here.at++];
    }
    if (here.at >= here.line.size()) {
        throw syntax_error(start, "text without an end; close it with \"");
    }
    ++here.at;
    return text;
}

std::string shown_word(cursor here) {
    if (at_end(here)) {
        return "the end of the line";
    }
    const std::string_view word = take_word(here);
    return "'" + (word.empty() ? std::string(1, here.line[here.at]) : std::string(word)) + "'";
}

} // namespace kestro_probe
