// Dying gasp. No driver tells whether it is enabled, so there is nothing to restore: simulation and cards are left
// enabled, with or without a failure before, and a card is never left untold because one call failed.
#include "selftest/environment/dyinggasp.h"

#include "drv_basic/protection/drv_dyinggasp.h"
#include "selftest/entry_walk.h"
#include "selftest/test_value.h"

namespace {

constexpr uint32_t enable_steps[] = {1, 0, 1};

// The code of the first step that failed.
uint32_t toggle_simulation(uint32_t inst_id) {
    uint32_t first_failure = 0;
    begin_test_value();
    for (const uint32_t enable : enable_steps) {
        const uint32_t ret = drv_dyinggasp_set_simulation_enable(inst_id, enable);
        first_failure = first_failure != 0 ? first_failure : ret;
    }
    end_test_value();
    return first_failure;
}

uint32_t toggle_card(uint32_t inst_id, uint32_t card) {
    uint32_t first_failure = 0;
    begin_test_value();
    for (const uint32_t enable : enable_steps) {
        const uint32_t ret = drv_dyinggasp_set_enable(inst_id, card, enable);
        first_failure = first_failure != 0 ? first_failure : ret;
    }
    end_test_value();
    return first_failure;
}

} // namespace

int check_dyinggasp_simulation(uint32_t inst_id, report_sink sink) {
    if (!has_entries(open_entry_walk(inst_id, "dyinggasp_mng", "dyinggasp_simulation_enable"))) {
        report_append(sink, "Info: dyinggasp simulation is not support.\r\n");
        return 0;
    }
    const uint32_t ret = toggle_simulation(inst_id);
    if (ret != 0) {
        report_append(sink, "Error: dyinggasp simulation fail 0x%x.\r\n", ret);
        return -1;
    }
    report_append(sink, "Success: dyinggasp simulation pass.\r\n");
    return 0;
}

// The line of a failure has the code and not the card; the card is the one that is missing among the passes.
int check_dyinggasp_cards(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "dyinggasp_mng", "dyinggasp_enable");
    if (!has_entries(walk)) {
        report_append(sink, "Info: dyinggasp card enable is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t card = 0;
        if (read_element(walk, "id", &card) != 0) {
            continue;
        }
        const uint32_t ret = toggle_card(inst_id, card);
        if (ret != 0) {
            report_append(sink, "Error: dyinggasp card enable fail 0x%x.\r\n", ret);
            result = -1;
        } else {
            report_append(sink, "Success: dyinggasp card 0x%x enable pass.\r\n", card);
        }
    }
    return result;
}

int dyinggasp_section(uint32_t inst_id, report_sink sink) {
    int result = check_dyinggasp_simulation(inst_id, sink);
    result |= check_dyinggasp_cards(inst_id, sink);
    return result;
}
