// What the sub-commands of both stores of variables share.
#pragma once

#include <cstdint>

namespace env_commands {

// What a driver is told of the area for a value. The area itself has one byte more, for a terminator.
inline constexpr uint32_t value_size = 127;

// The words that a sub-command takes; -1.
int report_form(const char *sub_command, const char *words);

void report_text(const char *name, const char *value);

// A number that was read, or the code with which that failed. Gives the code.
int report_number(const char *operation, uint32_t ret, const char *name, uint32_t value);

// Gives the code.
int report_code(const char *operation, uint32_t ret);

void report_listing(int ret, const char *text);

// The value behind a name: only where there are exactly these two words, else the variable gets an empty text.
const char *text_to_set(int count, char **args);

} // namespace env_commands
