// Lines of scripts for the power supply in slot 13, place 0, which the parts of the self-test ask.
#pragma once

#include <string>

namespace kestro_tests {

inline const std::string no_support = "0x811101a4";
inline const std::string power_unit_words = "slot_id=13, power_id=0";

inline std::string power_get(int type, const std::string &answer) {
    return "drv_power_get_property(" + power_unit_words + ", type=" + std::to_string(type) + ") = " + answer + "\n";
}

inline std::string power_set(int type, uint32_t value, const std::string &answer) {
    return "drv_power_set_property(" + power_unit_words + ", type=" + std::to_string(type) +
           ", value=" + std::to_string(value) + ") = " + answer + "\n";
}

inline std::string power_alarm_rule(int type, const std::string &answer) {
    return "drv_power_get_alarm(" + power_unit_words + ", type=" + std::to_string(type) + ") = " + answer + "\n";
}

inline std::string power_call(const std::string &operation, const std::string &answer) {
    return "drv_power_" + operation + "(" + power_unit_words + ") = " + answer + "\n";
}

inline std::string power_bbox_rule(uint32_t len, const std::string &answer) {
    return "drv_power_get_bbox_info(" + power_unit_words + ", len=" + std::to_string(len) + ") = " + answer + "\n";
}

inline std::string power_board_rule(int type, uint32_t len, const std::string &answer) {
    return "drv_power_get_board_property(" + power_unit_words + ", type=" + std::to_string(type) +
           ", len=" + std::to_string(len) + ") = " + answer + "\n";
}

// A supply on the PMBus that has lost its input.
inline std::string lost_input_on_pmbus() {
    return power_get(21, "0 value=0x22") + power_get(9, "0 value=8") + power_get(2, "0 value=1") +
           power_get(40, "0 value=3") + power_alarm_rule(7, "0 alarms=0x48 sub_alarm=1") +
           power_alarm_rule(13, "0 alarms=0x18 sub_alarm=1");
}

inline const std::string lost_input_on_pmbus_line =
    "Info   : slot 13 power 0 pmbus maybe has no input power. POWER_ALARM_VIN_UNIT_OFF 0x48  POWER_ALARM_INPUT "
    "0x18\r\n";

// One behind the simple protocol.
inline std::string lost_input_on_simple_protocol() {
    return power_get(21, no_support) + power_get(20, "0x55") + power_get(14, "0 value=0") + power_get(1, "0 value=1");
}

inline const std::string lost_input_on_simple_protocol_line =
    "Info   :slot 13 power 0 maybe has no input power. ret_power 0x55 input_power 0x0 ret_vol 0x0 input_vol 0x0 \r\n";

} // namespace kestro_tests
