// A tray as a whole: presence, the air it moves, its lamp and its controller.
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_fan.h"
#include "modules/fan_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace fan_commands {

int fan_get_num(int count, char **args) {
    uint32_t num = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_num(word_to_u32(args[0]), &num);
    return report_value("drv_fan_get_num", ret, num);
}

int fan_set_led(int count, char **args) {
    if (count != 3) {
        return -1;
    }
    const uint32_t type = word_to_u32(args[1]);
    const uint32_t color = word_to_u32(args[2]);
    const uint32_t ret = drv_fan_set_led(word_to_u32(args[0]), type, color);
    if (ret == 0) {
        printf("drv_fan_set_led suceess, type:%d, color:%d\r\n", static_cast<int>(type), static_cast<int>(color));
    } else {
        report_failure("drv_fan_set_led", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int fan_get_led(int count, char **args) {
    uint32_t color = 0;
    if (count != 2) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_led(word_to_u32(args[0]), word_to_u32(args[1]), &color);
    return report_value("drv_fan_get_led", ret, color);
}

int fan_get_online(int count, char **args) {
    uint32_t online = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_online_status(word_to_u32(args[0]), &online);
    return report_value("drv_fan_get_online_status", ret, online);
}

int fan_get_wind_direct(int count, char **args) {
    uint32_t direct = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_wind_direct(word_to_u32(args[0]), &direct);
    return report_value("fan get wind direct", ret, direct);
}

int fan_get_volstatus_history(int count, char **args) {
    uint32_t status = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_volstatus_history(word_to_u32(args[0]), &status);
    return report_value("fan get volstatus history", ret, status);
}

int fan_get_his_plug_status(int count, char **args) {
    uint32_t plugged = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_history_plug_status(word_to_u32(args[0]), &plugged);
    return report_value("fan get his plug status", ret, plugged);
}

int fan_get_controlable(int count, char **args) {
    uint32_t controlable = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_controlable(word_to_u32(args[0]), &controlable);
    return report_value("drv_fan_get_controlable", ret, controlable);
}

int fan_get_detectable(int count, char **args) {
    uint32_t detectable = 0;
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_get_detectable(word_to_u32(args[0]), &detectable);
    return report_value("drv_fan_get_detectable", ret, detectable);
}

int fan_init(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_init(word_to_u32(args[0]));
    if (ret == 0) {
        printf("drv_fan_init suceess!\r\n");
    } else {
        report_failure("drv_fan_init", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int fan_exit(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t ret = drv_fan_exit(word_to_u32(args[0]));
    if (ret == 0) {
        printf("drv_fan_exit success!\r\n");
    } else {
        report_failure("drv_fan_exit", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

} // namespace fan_commands
