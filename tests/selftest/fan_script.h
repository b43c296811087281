// Lines of scripts for fan trays. The parts of the self-test ask the tray in slot 11 where they ask one.
#pragma once

#include <string>
#include <vector>

namespace kestro_tests {

inline const std::string fan_no_support = "0x811101a4";
inline const std::string fan_rule_line = "----------------------------------------------------------------\r\n";

// Slots as bytes in hexadecimal: "0b 0c".
inline std::string fan_slots(int num, const std::string &slots) {
    return "drv_slot_get_list(type=5) = 0 list={num=" + std::to_string(num) + " slot_id=[" + slots + "]}\n";
}

inline std::string fan_num(int slot, const std::string &answer) {
    return "drv_fan_get_num(slot_id=" + std::to_string(slot) + ") = " + answer + "\n";
}

inline std::string tray_call(const std::string &operation, const std::string &answer) {
    return "drv_fan_" + operation + "(slot_id=11) = " + answer + "\n";
}

// `operation` with the fan, and what else it takes: "get_alarm", "0, alarm=3".
inline std::string fan_call(const std::string &operation, const std::string &fan, const std::string &answer) {
    return "drv_fan_" + operation + "(slot_id=11, fan_id=" + fan + ") = " + answer + "\n";
}

} // namespace kestro_tests
