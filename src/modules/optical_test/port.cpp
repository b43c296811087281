#include "modules/optical_test/port.h"

#include <cstddef>
#include <cstdio>

#include "shell/words.h"

namespace optical_commands {

namespace {

held_library held = {"liboptical_lib.so", nullptr};

card_ports map;

// Ports that no row covers are of type 0. Rows behind the end marker are searched as well, and a row covers one port
// more than it has: where two rows follow on each other, the first port of the second counts as one of the first.
// Scripts name the package where that matters.
uint32_t package_type_of(uint32_t port) {
    for (const drv_opt_port_row &row : map) {
        // An id and a number may pass 32 bits together; a row at the top then ends there, and does not begin again at
        // 0.
        const uint64_t end = uint64_t{row.start_id} + row.number;
        if (row.start_id <= port && port <= end) {
            return row.package_type;
        }
    }
    return 0;
}

uint32_t all_lanes(uint32_t lane_num) {
    const bool fits = lane_num >= 1 && lane_num <= 31;
    return fits ? (1U << lane_num) - 1 : 0xFFFFFFFF;
}

} // namespace

held_library &library() {
    return held;
}

card_ports &port_map() {
    return map;
}

optical_words read_words(int count, char **args) {
    optical_words words = {};
    if (args == nullptr) {
        puts("input error : ppcargv is null .");
        return words;
    }
    const auto word = [&](int n) { return n <= count ? word_to_u32(args[n - 1]) : 0; };
    words.inst_id = word(1);
    words.port = word(2);
    words.package = word(3);
    words.lanebitmap = word(4);
    words.fifth = static_cast<uint8_t>(word(5));
    words.sixth = static_cast<uint8_t>(word(6));
    words.seventh = word(7);
    words.eighth = word(8);
    return words;
}

int select_port(const optical_words &words, drv_opt_port_para *selector) {
    if (selector == nullptr) {
        puts("input error : ppcargv is null");
        return 0;
    }
    selector->lanebitmap = words.lanebitmap;
    selector->port = words.port;
    selector->package_type = package_type_of(words.port);
    if (words.lanebitmap == 0) {
        const auto get_lane_num = find<decltype(drv_opt_get_lane_num)>("drv_opt_get_lane_num");
        if (get_lane_num == nullptr) {
            return -1;
        }
        // A driver that does not answer leaves the 0 that stands for all lanes there may be.
        uint32_t lane_num = 0;
        get_lane_num(words.inst_id, selector, &lane_num);
        selector->lanebitmap = all_lanes(lane_num);
    }
    // The lanes are asked of the port as the card has it; only then a package of the command line counts.
    if (words.package != 0) {
        selector->package_type = words.package;
    }
    printf("inst_id = 0x%x, port_para: package_type = %d, package %d, port = %d, lanebitmap = 0x%x\n", words.inst_id,
           static_cast<int>(selector->package_type), static_cast<int>(words.package), static_cast<int>(selector->port),
           selector->lanebitmap);
    return 0;
}

selected_port read_port(int count, char **args) {
    selected_port port = {};
    port.words = read_words(count, args);
    select_port(port.words, &port.selector);
    return port;
}

} // namespace optical_commands
