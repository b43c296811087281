// Programmable control logic, and capabilities: a board that says it can do something has to have what that takes.
#include "selftest/management/control_logic.h"

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_msc.h"
#include "drv_basic/management/drv_slot.h"
#include "selftest/card_places.h"

namespace {

constexpr uint32_t flex_card = 0;
constexpr uint32_t master_slave = 3;

// A version that cannot be read is told and no more: chips that are being loaded have none yet.
void show_versions(uint32_t chips, report_sink sink) {
    for (uint32_t chip = 0; chip < chips; ++chip) {
        uint32_t version = 0;
        const uint32_t ret = drv_board_get_cpld_ver(DRV_INST_SELF, chip, &version);
        if (ret != 0) {
            report_append(sink, "Error  : board get logic version fail. ret 0x%x chip_id 0x%x \r\n", ret, chip);
        } else {
            report_append(sink, "Info   : logic chip %u, version %u \r\n", chip, version);
        }
    }
}

int check_flex_card(report_sink sink) {
    uint32_t value = 0;
    uint32_t ret = drv_board_get_capability(DRV_INST_SELF, flex_card, &value);
    if (ret != 0) {
        report_append(sink, "Error  : board capability flex card check fail. ret 0x%x \r\n", ret);
        return -1;
    }
    if (value != 1) {
        report_append(sink, "Info   : board is not support flex card\r\n");
        return 0;
    }
    drv_slot_list slots = {};
    ret = drv_slot_get_list(card_slot_type, &slots);
    if (ret != 0 || slots.num == 0) {
        report_append(sink, "Error  : board support flex card but get card slot list fail. ret 0x%x \r\n", ret);
        return -1;
    }
    return 0;
}

int check_master_slave(report_sink sink) {
    uint32_t value = 0;
    uint32_t ret = drv_board_get_capability(DRV_INST_SELF, master_slave, &value);
    if (ret != 0) {
        report_append(sink, "Error  : board capability msc check fail. ret 0x%x \r\n", ret);
        return -1;
    }
    if (value != 1) {
        report_append(sink, "Info   : board is not support msc.\r\n");
        return 0;
    }
    // Enabled or not is the operator's choice; that it can be asked for tells that there is a controller.
    uint32_t enable = 0;
    ret = drv_msc_get_switch_en(DRV_INST_SELF, 0, &enable);
    if (ret != 0) {
        report_append(sink, "Error  : board support msc but get switch en fail. ret 0x%x \r\n", ret);
        return -1;
    }
    return 0;
}

} // namespace

int check_control_logic(uint32_t, report_sink sink) {
    uint32_t chips = 0;
    uint32_t fpgas = 0;
    const uint32_t chips_ret = drv_board_get_cpld_num(DRV_INST_SELF, &chips);
    const uint32_t fpgas_ret = drv_board_get_ctrl_fpga_num(DRV_INST_SELF, &fpgas);
    const uint32_t ret = chips_ret != 0 ? chips_ret : fpgas_ret;
    // Control FPGAs are counted among the CPLDs.
    if (ret != 0 || chips == 0 || fpgas > chips) {
        report_append(sink,
                      "Error  : board ctrl logic check fail. ret 0x%x ctrl_logic_num 0x%x ctrl_fpga_num 0x%x \r\n", ret,
                      chips, fpgas);
        return -1;
    }
    show_versions(chips, sink);
    report_append(sink, "Success: board ctrl logic check pass. ctrl_logic_num %u ctrl_fpga_num %u\r\n", chips, fpgas);
    return 0;
}

int check_capability(uint32_t, report_sink sink) {
    const int flex_card_result = check_flex_card(sink);
    return check_master_slave(sink) | flex_card_result;
}
