// The one-key tests of fan trays. Their lines go straight to the console.
#include <cstdint>

#include "modules/fan_test/handlers.h"
#include "onekey/fan/fan_onekey.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace fan_commands {

namespace {

int report_test(const char *label, uint32_t ret) {
    if (ret != 0) {
        report_failure(label, ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

} // namespace

int fan_get_info_one_key_test(int, char **) {
    return report_test("fan_check_get_info_one_key_test", ::fan_check_get_info_one_key_test(console_sink));
}

int fan_get_alarm_info(int, char **) {
    return report_test("fan_get_alarm_info", ::fan_get_alarm_info(console_sink));
}

int fan_get_elabel_info(int, char **) {
    return report_test("fan_get_elabel_info", ::fan_get_elabel_info(console_sink));
}

int fan_elabel_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_elabel_test", ::fan_elabel_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_speed_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_speed_test", ::fan_speed_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_get_all_shift_info(int, char **) {
    return report_test("fan_get_all_shift_info", ::fan_get_all_shift_info(console_sink));
}

int fan_shift_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_shift_test", ::fan_shift_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_led_one_key_test(int, char **) {
    return report_test("fan_led_one_key_test", ::fan_led_one_key_test(console_sink));
}

int fan_get_init_status(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    return report_test("fan_get_init_status", ::fan_get_init_status(word_to_u32(args[0]), console_sink));
}

int fan_multi_init_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_multi_init_test",
                       ::fan_multi_init_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_multi_deinit_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_multi_deinit_test",
                       ::fan_multi_deinit_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_init_deinit_test(int count, char **args) {
    if (count != 2) {
        return -1;
    }
    return report_test("fan_init_deinit_test",
                       ::fan_init_deinit_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink));
}

int fan_one_key_test(int, char **) {
    return report_test("fan_check_one_key", ::fan_check_one_key(console_sink));
}

} // namespace fan_commands
