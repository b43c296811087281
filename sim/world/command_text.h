// The board's paths in the text of a shell command.
#pragma once

#include <cstddef>

namespace kestro_sim {

// Copies the command with each board path led to the board's files, quoted as the place in the text needs it. Gives the
// length without the terminator; writes at most `size` characters, the terminator among them.
size_t command_on_desk(const char *command, char *text, size_t size);

} // namespace kestro_sim
