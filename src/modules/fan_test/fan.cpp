// Speed, shift, power and alarms of one fan.
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_fan.h"
#include "modules/fan_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace fan_commands {

int fan_get_speed(int count, char **args) {
    uint32_t speed = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_speed(word_to_u32(args[0]), word_to_u32(args[1]), &speed);
    return report_value("drv_fan_get_speed", ret, speed);
}

int fan_get_max_speed(int count, char **args) {
    uint32_t max_speed = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_max_speed(word_to_u32(args[0]), word_to_u32(args[1]), &max_speed);
    return report_value("drv_fan_get_max_speed", ret, max_speed);
}

int fan_get_status(int count, char **args) {
    uint32_t status = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_status(word_to_u32(args[0]), word_to_u32(args[1]), &status);
    return report_value("drv_fan_get_status", ret, status);
}

int fan_set_speed_percent(int count, char **args) {
    if (count != 3) {
        return -1;
    }
    const uint32_t percent = word_to_u32(args[2]);
    const uint32_t ret = drv_fan_set_speed_percent(word_to_u32(args[0]), word_to_u32(args[1]), percent);
    if (ret == 0) {
        printf("drv_fan_set_speed_percent success percent:%d\r\n", static_cast<int>(percent));
    } else {
        report_failure("drv_fan_set_speed_percent", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int fan_get_speed_percent(int count, char **args) {
    uint32_t percent = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_speed_percent(word_to_u32(args[0]), word_to_u32(args[1]), &percent);
    return report_value("drv_fan_get_speed_percent", ret, percent);
}

int fan_get_max_speed_by_shift(int count, char **args) {
    uint32_t max_speed = 0;
    if (count != 3) {
        return -1;
    }
    const uint32_t ret =
        drv_fan_get_max_speed_by_shift(word_to_u32(args[0]), word_to_u32(args[1]), word_to_u32(args[2]), &max_speed);
    return report_value("drv_fan_get_max_speed_by_shift", ret, max_speed);
}

int fan_get_max_shift(int count, char **args) {
    uint32_t max_shift = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_max_shift(word_to_u32(args[0]), word_to_u32(args[1]), &max_shift);
    return report_value("drv_fan_get_max_shift", ret, max_shift);
}

int fan_get_alarm(int count, char **args) {
    uint32_t status = 0;
    if (count != 3) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_alarm(word_to_u32(args[0]), word_to_u32(args[1]), word_to_u32(args[2]), &status);
    return report_value("drv_fan_get_alarm", ret, status);
}

int fan_set_shift(int count, char **args) {
    if (count != 3) {
        return -1;
    }
    const uint32_t shift = word_to_u32(args[2]);
    const uint32_t ret = drv_fan_set_shift(word_to_u32(args[0]), word_to_u32(args[1]), shift);
    if (ret == 0) {
        printf("drv_fan_set_shift:%d\r\n", static_cast<int>(shift));
    } else {
        report_failure("drv_fan_set_shift", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int fan_get_shift(int count, char **args) {
    uint32_t shift = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_shift(word_to_u32(args[0]), word_to_u32(args[1]), &shift);
    return report_value("drv_fan_get_shift", ret, shift);
}

// Switching a fan off by a slip is worth a usage line. The result print of the two power commands is asked for with a
// "0x" before each item, whose letter counts as an item of its own: there are twice as many items as values. Those
// without a value show 0.
int fan_set_power(int count, char **args) {
    if (count != 3) {
        printf("./kestro_test fan_test %s [slot_id fan_id power]\r\n", "fan_set_power");
        return -1;
    }
    const uint32_t power = word_to_u32(args[2]);
    const uint32_t ret = drv_fan_set_power(word_to_u32(args[0]), word_to_u32(args[1]), power);
    if (ret == 0) {
        printf("drv_fan_set_power:%d\r\n", static_cast<int>(power));
    } else {
        report_failure("drv_fan_set_power", ret);
    }
    print_result("%x %x", ret, 0);
    return static_cast<int>(ret);
}

int fan_get_power(int count, char **args) {
    uint32_t power = 0;
    if (count != 2) {
        printf("./kestro_test fan_test %s [slot_id fan_id]\r\n", "fan_get_power");
        return -1;
    }
    const uint32_t ret = drv_fan_get_power(word_to_u32(args[0]), word_to_u32(args[1]), &power);
    if (ret == 0) {
        printf("drv_fan_get_power:%d\r\n", static_cast<int>(power));
    } else {
        report_failure("drv_fan_get_power", ret);
    }
    print_result("%x %x %x %x", ret, power, 0, 0);
    return static_cast<int>(ret);
}

int fan_get_max_power_of_curshift(int count, char **args) {
    uint32_t max_power = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_max_power_of_curshift(word_to_u32(args[0]), word_to_u32(args[1]), &max_power);
    return report_value("drv_fan_get_max_power_of_curshift", ret, max_power);
}

int fan_get_max_power_by_shift(int count, char **args) {
    uint32_t max_power = 0;
    if (count != 3) {
        return -1;
    }
    const uint32_t ret =
        drv_fan_get_max_power_by_shift(word_to_u32(args[0]), word_to_u32(args[1]), word_to_u32(args[2]), &max_power);
    return report_value("drv_fan_get_max_power_by_shift", ret, max_power);
}

int fan_get_max_power(int count, char **args) {
    uint32_t max_power = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_max_power(word_to_u32(args[0]), word_to_u32(args[1]), &max_power);
    return report_value("drv_fan_get_max_power", ret, max_power);
}

int fan_get_operation_complete_status(int count, char **args) {
    uint32_t status = 0;
    if (count != 3) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_operation_complete_status(word_to_u32(args[0]), word_to_u32(args[1]),
                                                               word_to_u32(args[2]), &status);
    return report_value("drv_fan_get_operation_complete_status", ret, status);
}

} // namespace fan_commands
