// What the sub-commands of board_test print alike, whatever their subject.
#include "modules/board_test/lines.h"

#include <cstdio>

namespace board_commands {

void print_hex_dec(const char *name, uint32_t value) {
    printf("%s hex:0x%08x dec:%08d\r\n", name, value, static_cast<int>(value));
}

} // namespace board_commands
