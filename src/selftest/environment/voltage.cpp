// Voltages: rails with their monitor, regulators (VRM), power stages, and the controllers that scale the core rails
// (AVS). A board or card may lack any of these.
#include "selftest/environment/voltage.h"

#include "drv_basic/environment/drv_avs.h"
#include "drv_basic/environment/drv_voltage.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t desc_size = 64;
constexpr uint32_t message_size = 1200;

// A terminator of our own stands behind texts that fill their area.
using desc_area = char[desc_size + 1];
using message_area = char[message_size + 1];

// Identifiers and millivolts have always been shown as signed numbers in these lines.
int shown(uint32_t number) {
    return static_cast<int>(number);
}

// A rail without a value is described all the same, so that the technician learns its name; its line then has the value
// 0 behind the error. What the line begins with is the outcome of the description alone.
int check_value(uint32_t inst_id, uint32_t voltage_id, report_sink sink) {
    uint32_t value = 0;
    desc_area desc = {};
    uint32_t max = 0;
    uint32_t min = 0;
    const uint32_t value_ret = drv_voltage_get_value(inst_id, voltage_id, &value);
    if (value_ret != 0) {
        report_append(sink, "Error: voltage get fail. voltage_id %d ret 0x%x\r\n", shown(voltage_id), value_ret);
    }
    const uint32_t desc_ret = drv_voltage_get_node_desc(inst_id, voltage_id, desc, desc_size);
    if (desc_ret != 0) {
        report_append(sink, "Error: voltage get desc fail. voltage_id %d ret 0x%x\r\n", shown(voltage_id), desc_ret);
    }
    const char *prefix = desc_ret != 0 ? "Error:" : "Success:";
    // Not every monitor keeps peaks.
    if (drv_voltage_get_history_value(inst_id, voltage_id, &max, &min) != 0) {
        report_append(sink, "%s get voltage_id %-3u value is %dmv. desc: %s\r\n", prefix, voltage_id, shown(value),
                      desc);
    } else {
        report_append(sink, "%s get voltage_id %-3u value is %dmv. desc: %s. max %d min %d\r\n", prefix, voltage_id,
                      shown(value), desc, shown(max), shown(min));
    }
    return value_ret == 0 && desc_ret == 0 ? 0 : -1;
}

} // namespace

int check_voltage_values(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "voltage_mng", "check_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : voltage get value is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t voltage_id = 0;
        if (read_element(walk, "voltage_id", &voltage_id) == 0) {
            result |= check_value(inst_id, voltage_id, sink);
        }
    }
    return result;
}

namespace {

struct adjustable_rail {
    uint32_t voltage_id;
    uint32_t low;
    uint32_t high;
};

bool read_rail(const entry_walk &walk, adjustable_rail *rail) {
    return read_element(walk, "voltage_id", &rail->voltage_id) == 0 &&
           read_element(walk, "set_low_th", &rail->low) == 0 && read_element(walk, "set_high_th", &rail->high) == 0;
}

// The rail stays at the midpoint: that is its nominal voltage, and what it had before may be what a test at the limits
// left. The line of a pass names it the original value; scripts of the bench read that word. A rail with another
// read-back is no fault, for regulators round to steps of their own.
int check_setting(uint32_t inst_id, const adjustable_rail &rail, report_sink sink) {
    const int voltage_id = shown(rail.voltage_id);
    uint32_t original = 0;
    uint32_t ret = drv_voltage_get_value(inst_id, rail.voltage_id, &original);
    if (ret != 0) {
        // What cannot be measured is not set.
        report_append(sink, "Error  : voltage get fail. voltage_id %d ret 0x%x\r\n", voltage_id, ret);
        return -1;
    }
    const uint32_t midpoint = (rail.low + rail.high) / 2;
    uint32_t read_back = 0;
    ret = drv_voltage_set_value(inst_id, rail.voltage_id, midpoint);
    if (ret == 0) {
        ret = drv_voltage_get_value(inst_id, rail.voltage_id, &read_back);
    }
    if (ret != 0) {
        report_append(sink, "Error  : voltage set fail. voltage_id %d set value %d ret 0x%x\r\n", voltage_id,
                      shown(midpoint), ret);
        return -1;
    }
    if (read_back == midpoint) {
        report_append(sink, "Success: voltage %u get and set value pass. original value %d\r\n", rail.voltage_id,
                      shown(read_back));
    } else {
        report_append(sink, "Info   : voltage set fail. voltage_id %d set value %d get value %d original value %d\r\n",
                      voltage_id, shown(midpoint), shown(read_back), shown(original));
    }
    return 0;
}

} // namespace

int check_voltage_setting(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "voltage_mng", "set_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : voltage set value is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        adjustable_rail rail = {};
        if (read_rail(walk, &rail)) {
            result |= check_setting(inst_id, rail, sink);
        }
    }
    return result;
}

// "0x-8" in front of the chip looks like a slip and stays: repair instructions quote these lines, and log filters of
// the factory look for it. The code is 0x0 where the check itself went well and found an alert.
int check_vrm_alerts(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "voltage_mng", "vrm_alert_result");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : voltage avs alert check is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip_id = 0;
        if (read_element(walk, "vrm_chip_id", &chip_id) != 0) {
            continue;
        }
        message_area message = {};
        uint32_t alert = 0;
        const uint32_t ret = drv_voltage_check_vrm_alert(inst_id, chip_id, &alert, message, message_size);
        if (ret != 0 || alert != 0) {
            report_append(sink, "Error: voltage get avs chip 0x-8%x alert fail 0x%x\r\n", chip_id, ret);
            result = -1;
        } else {
            report_append(sink, "Success: voltage get avs chip 0x-8%x alert check pass\r\n", chip_id);
        }
    }
    return result;
}

namespace {

int dump_power(uint32_t inst_id, report_sink sink) {
    message_area dump = {};
    const uint32_t ret = drv_voltage_dump_power(inst_id, dump, message_size);
    if (is_not_supported(ret)) {
        report_append(sink, "Info   : voltage power dump is not support\r\n");
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : voltage power dump fail 0x%x\r\n", ret);
        return -1;
    }
    return 0;
}

int dump_avs(uint32_t inst_id, report_sink sink) {
    message_area dump = {};
    const uint32_t ret = drv_avs_dump_dfx_info(inst_id, dump, message_size);
    if (is_not_supported(ret)) {
        report_append(sink, "Info   : voltage avs dump is not support\r\n");
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : voltage avs dump fail 0x%x\r\n", ret);
        return -1;
    }
    return 0;
}

} // namespace

// That the dumps can be had is what counts; they are for the laboratory and would drown the lines of the self-test.
int check_power_and_avs_dump(uint32_t inst_id, report_sink sink) {
    int result = dump_power(inst_id, sink);
    result |= dump_avs(inst_id, sink);
    if (result == 0) {
        report_append(sink, "Success: voltage power and avs dump pass\r\n");
    }
    return result;
}

int check_power_stages(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "voltage_mng", "power_check");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : voltage power check is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t power_id = 0;
        if (read_element(walk, "power_id", &power_id) != 0) {
            continue;
        }
        message_area message = {};
        uint32_t faults = 0;
        const uint32_t ret = drv_voltage_check_power(inst_id, power_id, &faults, message, message_size);
        if (ret != 0 || faults != 0) {
            report_append(sink, "Error: voltage power %u check fail 0x%x\r\n", power_id, ret);
            result = -1;
        } else {
            report_append(sink, "Success: voltage power %u check pass\r\n", power_id);
        }
    }
    return result;
}

int voltage_section(uint32_t inst_id, report_sink sink) {
    int result = check_voltage_values(inst_id, sink);
    result |= check_voltage_setting(inst_id, sink);
    result |= check_vrm_alerts(inst_id, sink);
    result |= check_power_and_avs_dump(inst_id, sink);
    result |= check_power_stages(inst_id, sink);
    return result;
}
