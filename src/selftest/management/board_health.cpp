// What wears or starves a board. The monitors stand in its control logic; the drivers read them and say what they
// found.
#include "selftest/management/board_health.h"

#include "drv_basic/management/drv_board.h"
#include "selftest/entry_walk.h"
#include "selftest/management/described_id.h"

namespace {

// A terminator of our own stands behind messages that fill their area.
constexpr uint32_t message_size = 256;
using message_area = char[message_size + 1];

// The monitor's status, and then what the driver makes of it. The message of the driver is left out: it says again
// which chip it is.
int check_joints_of_chip(uint32_t inst_id, uint32_t chip_id, uint32_t *status, report_sink sink) {
    uint32_t ret = drv_board_get_four_corner_status(inst_id, chip_id, status);
    if (ret != 0 || *status != 0) {
        report_append(sink, "Error  : board get weld sts fail. ret 0x%x sts 0x%x\r\n", ret, *status);
        return -1;
    }
    uint32_t result = 0;
    message_area message = {};
    ret = drv_board_check_four_corner_status(inst_id, chip_id, &result, message, message_size);
    if (ret != 0 || result != 0) {
        report_append(sink, "Error  : board check weld sts fail. ret 0x%x result 0x%x\r\n", ret, result);
        return -1;
    }
    return 0;
}

// The driver reads all sensors at once and takes no number: it is asked only where each control chip has one. Some
// descriptions write "none" with 32 bits instead of eight.
bool has_all_corrosion_sensors(uint32_t inst_id) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "board_epld");
    if (!has_entries(walk)) {
        return false;
    }
    while (next_entry(&walk)) {
        const uint32_t corrosion_id = read_id(walk, "corrosion_id");
        if (corrosion_id == no_id || corrosion_id == UINT32_MAX) {
            return false;
        }
    }
    return true;
}

} // namespace

int check_weld(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "weld_map");
    bool supported = has_entries(walk);
    uint32_t status = 0;
    while (supported && next_entry(&walk)) {
        const uint32_t chip_id = read_id(walk, "chip_id");
        // One map serves several kinds of boards, and a board without monitors is told by any entry of it: what its
        // other entries read is then nobody's status.
        if (chip_id == no_id) {
            supported = false;
        } else if (check_joints_of_chip(inst_id, chip_id, &status, sink) != 0) {
            return -1;
        }
    }
    if (!supported) {
        report_append(sink, "Success: board not support weld sts check.\r\n");
        return 0;
    }
    report_append(sink, "Success: board weld sts check pass. status %u\r\n", status);
    return 0;
}

int check_corrosion(uint32_t inst_id, report_sink sink) {
    if (!has_all_corrosion_sensors(inst_id)) {
        report_append(sink, "Success: board not support corrosion sts check.\r\n");
        return 0;
    }
    uint32_t result = 0;
    message_area message = {};
    const uint32_t ret = drv_board_check_corrosion_status(inst_id, &result, message, message_size);
    if (ret != 0 || result != 0) {
        report_append(sink, "Error  : board check corrosion sts fail. ret 0x%x result 0x%x\r\n", ret, result);
        return -1;
    }
    report_append(sink, "Success: board corrosion sts check pass.\r\n");
    return 0;
}

int check_low_voltage(uint32_t inst_id, report_sink sink) {
    uint32_t status = 0;
    message_area message = {};
    const uint32_t ret = drv_board_check_low_voltage(inst_id, &status, message, message_size);
    if (ret != 0 || status != 0) {
        report_append(sink, "Error  : board low voltage check fail. ret 0x%x sts 0x%x %s \r\n", ret, status, message);
        return -1;
    }
    report_append(sink, "Success: board low voltage check pass.\r\n");
    return 0;
}
