// All one-key tests of fan trays.
#include "onekey/fan/fan_onekey.h"

#include "onekey/fan/fan_report.h"

namespace {

// The labels before anything moves; the driver last, for what stands before needs it up.
uint32_t test_tray(uint32_t slot_id, report_sink sink) {
    constexpr uint32_t times = 2;
    uint32_t result = fan_get_init_status(slot_id, sink);
    result |= fan_elabel_test(slot_id, times, sink);
    result |= fan_speed_test(slot_id, times, sink);
    result |= fan_shift_test(slot_id, times, sink);
    result |= fan_multi_init_test(slot_id, times, sink);
    result |= fan_multi_deinit_test(slot_id, times, sink);
    result |= fan_init_deinit_test(slot_id, times, sink);
    return result;
}

} // namespace

uint32_t fan_check_one_key(report_sink sink) {
    drv_slot_list list{};
    uint32_t result = list_fan_slots(&list, sink);
    if (result != 0) {
        return result;
    }
    result |= fan_check_get_info_one_key_test(sink);
    result |= fan_get_alarm_info(sink);
    result |= fan_get_elabel_info(sink);
    result |= fan_get_all_shift_info(sink);
    result |= fan_led_one_key_test(sink);
    for (uint32_t i = 0; i < list.num; ++i) {
        result |= test_tray(list.slot_id[i], sink);
    }
    return result;
}
