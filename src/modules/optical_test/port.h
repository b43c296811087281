// What the sub-commands of optical_test share: the library that the run holds, the words of the command line, and the
// port that these select.
#pragma once

#include <array>
#include <cstdint>

#include "optical_lib/drv_opt.h"
#include "shell/driver_library.h"

namespace optical_commands {

// Open from the run's first step to its last, unless an operation was missing: it is closed from then on.
held_library &library();

// Null, and a line, for what the library lacks.
template <typename operation> operation *find(const char *name) {
    return find_operation<operation>(library(), name);
}

// Which ports of the card are of which package type, as the driver said when it was brought up.
using card_ports = std::array<drv_opt_port_row, DRV_OPT_MAP_ROWS>;

card_ports &port_map();

// The words behind a sub-command, 0 where they are missing. Four are common to all; what the others are depends on the
// sub-command, and its fifth and sixth are single bytes.
struct optical_words {
    uint32_t inst_id;
    uint32_t port;
    uint32_t package;
    uint32_t lanebitmap;
    uint8_t fifth;
    uint8_t sixth;
    uint32_t seventh;
    uint32_t eighth;
};

optical_words read_words(int count, char **args);

// Fills what every operation takes to know a port, and prints it. Without lanes in the words all lanes of the port are
// meant; -1 when the library cannot say how many these are, and the selector is then filled in part.
int select_port(const optical_words &words, drv_opt_port_para *selector);

// Both in one, for sub-commands: one whose selector is filled in part goes on with it, and the driver judges it.
struct selected_port {
    optical_words words;
    drv_opt_port_para selector;
};

selected_port read_port(int count, char **args);

} // namespace optical_commands
