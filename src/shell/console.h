// Console helpers of the sub-commands: banners, the tagged line, and output that outlives a driver crash.
#pragma once

#include <cstdint>

// Every module keeps one of three banner styles: wide has blank lines around, narrow a line before, bare none.
enum class banner_style { wide, narrow, bare };

void print_begin_banner(banner_style style, const char *test);
void print_end_banner(banner_style style, const char *test);

// Prints "<tag>[time of day]text" as one line, or nothing when it would pass 512 bytes. The assembled line is itself
// taken as a format, so a percent sign in the tag or the values is read a second time. Returns the print's result, or
// -1.
int print_tagged_line(const char *tag, const char *format, ...) __attribute__((format(printf, 2, 3)));

// Brings a line that has not ended yet to the screen: before a wait, and before a driver call that may not come back.
void flush_partial_line();

// A zeroed area for len bytes of driver text, and a terminator behind it; null when memory is out, and for more than
// the board's C library ever gives (half of its address space), on a desk too. The caller frees it.
char *new_text_area(uint32_t len);
