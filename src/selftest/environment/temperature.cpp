// Temperature sensors. Whether a value is too high is left to the monitor of the running board: at the bench a board is
// as warm as its last test made it. What is checked is that each sensor answers.
#include "selftest/environment/temperature.h"

#include "drv_basic/environment/drv_temperature.h"
#include "selftest/entry_walk.h"

namespace {

constexpr uint32_t desc_size = 64;

// As with rails: a sensor without a value is described all the same, and its line begins as the description went.
int check_sensor(uint32_t inst_id, uint32_t temperature_id, report_sink sink) {
    const int shown_id = static_cast<int>(temperature_id);
    int32_t value = 0;
    char desc[desc_size + 1] = {};
    const uint32_t value_ret = drv_temperature_get_value(inst_id, temperature_id, &value);
    if (value_ret != 0) {
        report_append(sink, "Error: temperature get fail. temperature_id %d ret 0x%x\r\n", shown_id, value_ret);
    }
    const uint32_t desc_ret = drv_temperature_get_node_desc(inst_id, temperature_id, desc, desc_size);
    if (desc_ret != 0) {
        report_append(sink, "Error: temperature get desc fail. temperature_id %d ret 0x%x\r\n", shown_id, desc_ret);
    }
    report_append(sink, "%s get temperature_id %-3u value is %d. desc: %s\r\n",
                  desc_ret != 0 ? "Error:" : "Success:", temperature_id, value, desc);
    return value_ret == 0 && desc_ret == 0 ? 0 : -1;
}

} // namespace

// Every board has a sensor in its air inlet, and so have the cards that are asked for it: a description without any is
// damaged.
int temperature_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "temp_mng", "temp_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Error: temperature xml get entry num fail.\r\n");
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t temperature_id = 0;
        if (read_element(walk, "temperature_id", &temperature_id) == 0) {
            result |= check_sensor(inst_id, temperature_id, sink);
        }
    }
    return result;
}
