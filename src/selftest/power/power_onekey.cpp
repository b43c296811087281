#include "selftest/power/power_onekey.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "drv_basic/management/drv_msc.h"
#include "drv_basic/power/drv_power.h"
#include "selftest/entry_walk.h"
#include "selftest/power/power_display.h"
#include "selftest/power/power_init.h"
#include "selftest/power/power_names.h"
#include "selftest/power/power_set_and_get.h"
#include "selftest/power/power_software.h"

namespace {

// A board that does not know what it is tests: it may be the only one.
bool may_test_power(report_sink sink) {
    uint32_t state = 0;
    if (drv_msc_get_state(DRV_INST_SELF, 0, &state) != 0) {
        report_append(sink, "Error  : drv_msc_get_state fail, default master, power test now...\r\n");
        return true;
    }
    if (state != 0) {
        report_append(sink, "Info    : current board is slave, hardware not support power test\r\n");
        return false;
    }
    report_append(sink, "Info   : current board is master. power test now...\r\n");
    return true;
}

// The folder that images are copied to.
constexpr const char *turns_folder = "/opt/hostx/home";

// Of two runs at once each would take the other's test value for what the supply had, and write that back in the end.
// So one waits until the other is through with its supply. A board without the folder has no turns.
int begin_turn() {
    const int turn = open(turns_folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    while (turn >= 0 && flock(turn, LOCK_EX) != 0 && errno == EINTR) {
    }
    return turn;
}

void end_turn(int turn) {
    if (turn >= 0) {
        close(turn);
    }
}

int run_tests(const power_unit &unit, power_test_mode mode, report_sink sink) {
    constexpr uint32_t init_rounds = 3;
    const auto is_asked_for = [mode](power_test_mode test) { return mode == power_test_all || mode == test; };
    const int turn = begin_turn();
    int result = 0;
    if (is_asked_for(power_test_display)) {
        result |= power_display_test(unit, sink);
    }
    if (is_asked_for(power_test_init)) {
        result |= power_init_test(unit, init_rounds, sink);
    }
    if (is_asked_for(power_test_config)) {
        result |= power_set_and_get_test(unit, sink);
    }
    if (is_asked_for(power_test_software)) {
        result |= power_software_test(unit, sink);
    }
    end_turn(turn);
    return result;
}

} // namespace

int power_onekey_test(uint32_t slot_id, power_test_mode mode, report_sink sink) {
    if (!may_test_power(sink)) {
        return 0;
    }
    uint32_t num = 0;
    const uint32_t ret = drv_power_get_num(slot_id, &num);
    if (ret != 0) {
        report_append(sink, "Error  : slot %u get power num fail. ret 0x%x\r\n", slot_id, ret);
        return -1;
    }
    int result = 0;
    for (uint32_t power_id = 0; power_id < num; ++power_id) {
        result |= run_tests({slot_id, power_id}, mode, sink);
    }
    return result;
}

int power_single_test(const power_unit &unit, report_sink sink) {
    return may_test_power(sink) ? run_tests(unit, power_test_all, sink) : 0;
}

namespace {

bool is_online(const power_unit &unit) {
    const power_value absent = read_power_property(unit, property_online);
    return absent.ret == 0 && absent.value == 0;
}

} // namespace

int power_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "power_mng", "power_capbility");
    if (!has_entries(walk)) {
        report_append(sink, "Info: power is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        power_unit unit{};
        const uint32_t slot_ret = read_element(walk, "slot_id", &unit.slot_id);
        const uint32_t power_ret = read_element(walk, "power_id", &unit.power_id);
        if (slot_ret != 0 || power_ret != 0 || !is_online(unit)) {
            continue;
        }
        report_append(sink, "\r\n##### slot %u power %u test begin\r\n", unit.slot_id, unit.power_id);
        result |= power_single_test(unit, sink);
    }
    return result;
}
