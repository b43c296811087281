// Walks along one line of a script or trace and takes it apart into words, numbers and quoted texts.
#pragma once

#include "probe/descriptor.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro_probe {

// A fault in a line: what is wrong and what would be right, and the column where, counted from 1.
struct syntax_error : std::runtime_error {
    syntax_error(size_t where, const std::string &message) : std::runtime_error(message), column(where) {
    }
    size_t column;
};

struct cursor {
    std::string_view line;
    size_t at = 0;
};

size_t column(const cursor &here);

// Past blanks. The end of the line and the start of a comment both end what is read.
void skip_blanks(cursor &here);
bool at_end(cursor &here);

// The character that comes next after blanks, '\0' at the end.
char peek(cursor &here);
bool take(cursor &here, char wanted);
void expect(cursor &here, char wanted, const std::string &purpose);

// A word up to a blank or a delimiter; may be empty.
std::string_view take_word(cursor &here);

// A name of letters, digits and underscores.
std::string_view take_name(cursor &here, const std::string &purpose);

// A number that fits the type, signed or unsigned: -1 and 0xffffffff are the same 32 bits.
uint64_t take_number(cursor &here, scalar type);
double take_real(cursor &here, scalar type);
char take_hex_byte(cursor &here);

// A text in double quotes, escapes resolved.
std::string take_quoted(cursor &here);

// How a fault names what stands there: a short piece of the line, or "the end of the line".
std::string shown_word(cursor here);

} // namespace kestro_probe
