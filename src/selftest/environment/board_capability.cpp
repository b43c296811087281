// What the board is equipped with. The driver finds out at its start which make of a chip is fitted; what the board is
// built with and the driver did not find is a fault.
#include "selftest/environment/board_capability.h"

#include <array>

#include "drv_basic/management/drv_board_capability.h"
#include "selftest/entry_walk.h"

namespace {

constexpr uint32_t name_size = 16;

// The kind stands in the upper half of an id, the number of the chip in the lower.
const char *kind_name(uint32_t id) {
    constexpr std::array names = {"fpga", "tpm", "pll", "freq", "avs"};
    const uint32_t kind = id >> 16;
    return kind < names.size() ? names[kind] : "unknown";
}

int check_capability(uint32_t inst_id, uint32_t id, report_sink sink) {
    char name[name_size + 1] = {};
    const uint32_t ret = drv_board_capability_find(inst_id, id, name, name_size);
    if (ret != 0) {
        report_append(sink, "Error: board capability 0x%-6x %s get capability fail 0x%x.\r\n", id, kind_name(id), ret);
        return -1;
    }
    report_append(sink, "Success: board capability 0x%-6x %s get capability is: %s\r\n", id, kind_name(id), name);
    return 0;
}

} // namespace

// Every board has some, so a description without them is told as "Info" and fails all the same.
int board_capability_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "board_capability_mng", "board_capability_get_type");
    if (!has_entries(walk)) {
        report_append(sink, "Info: board capability xml is not support.\r\n");
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t id = 0;
        if (read_element(walk, "id", &id) == 0) {
            result |= check_capability(inst_id, id, sink);
        }
    }
    return result;
}
