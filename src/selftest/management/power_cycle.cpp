// Power domains. Real hardware loses its power here: what hangs on the domain starts anew.
#include "selftest/management/power_cycle.h"

#include "drv_basic/management/drv_board.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"
#include "selftest/test_value.h"

namespace {

constexpr uint32_t off = 0;
constexpr uint32_t on = 1;

// The lines show the selector in decimal, so that of the own board reads 4294967295.
void report_unread(uint32_t selector, uint32_t power_type, uint32_t ret, report_sink sink) {
    report_append(sink, "Error  : get %u power status fail 0x%x. power_type 0x%x\r\n", selector, ret, power_type);
}

bool read_back(uint32_t selector, uint32_t power_type, uint32_t *status, report_sink sink) {
    const uint32_t ret = drv_board_get_power_status(selector, power_type, status);
    if (ret != 0) {
        report_unread(selector, power_type, ret, sink);
    }
    return ret == 0;
}

bool switch_off(uint32_t selector, uint32_t power_type, report_sink sink) {
    const uint32_t ret = drv_board_set_power_off(selector, power_type);
    if (ret != 0) {
        report_append(sink, "Error  : set %u power off fail 0x%x. power_type 0x%x\r\n", selector, ret, power_type);
        return false;
    }
    uint32_t status = 0;
    if (!read_back(selector, power_type, &status, sink)) {
        return false;
    }
    if (status != off) {
        report_append(sink, "Error  : set %u power off after check fail. status 0x%x. power_type 0x%x\r\n", selector,
                      status, power_type);
    }
    return status == off;
}

bool switch_on(uint32_t selector, uint32_t power_type, report_sink sink) {
    const uint32_t ret = drv_board_set_power_on(selector, power_type);
    if (ret != 0) {
        report_append(sink, "Error  : set %u power on fail 0x%x. power_type 0x%x\r\n", selector, ret, power_type);
        return false;
    }
    uint32_t status = 0;
    if (!read_back(selector, power_type, &status, sink)) {
        return false;
    }
    if (status != on) {
        report_append(sink, "Error  : set %u power on after check fail . status 0x%x. power_type 0x%x\r\n", selector,
                      status, power_type);
    }
    return status == on;
}

} // namespace

int power_cycle(uint32_t selector, uint32_t power_type, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_power_status(selector, power_type, &status);
    if (is_not_supported(ret)) {
        return 0;
    }
    if (ret != 0) {
        report_unread(selector, power_type, ret, sink);
        return -1;
    }
    begin_test_value();
    const bool is_on_again = switch_off(selector, power_type, sink) && switch_on(selector, power_type, sink);
    end_test_value();
    if (!is_on_again) {
        return -1;
    }
    report_append(sink, "Success: 0x%x set power on and off pass. power_type 0x%x\r\n", selector, power_type);
    return 0;
}

int check_epld_power(uint32_t inst_id, report_sink sink) {
    constexpr const char *no_domain = "Info   : board is not support board epld power.\r\n";
    // One more than there are types of domains: the type behind the last one is handed on, for the driver to refuse.
    constexpr uint32_t types_end = 35;
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "board_epld_power");
    // Every board has an EPLD that switches power. One whose description does not even have the node was described
    // with another board in mind, and that is a fault; a node that names no domain is a board whose domains are fixed.
    if (!has_entries(walk)) {
        report_append(sink, "%s", no_domain);
        return -1;
    }
    int result = 0;
    bool has_domain = false;
    while (next_entry(&walk)) {
        uint32_t power_type = 0;
        if (read_element(walk, "power_type", &power_type) == 0 && power_type < types_end) {
            has_domain = true;
            result |= power_cycle(inst_id, power_type, sink);
        }
    }
    if (!has_domain) {
        report_append(sink, "%s", no_domain);
    }
    return result;
}
