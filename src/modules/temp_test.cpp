// temp_test: the temperature sensors of the board, in degrees Celsius: measured values, the two pairs of thresholds
// (warning and alarm), and whether a value is beyond them. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_temperature.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

int temp_get(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    int32_t value = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_temperature_get_value(inst_id, temperature_id, &value);
    if (ret == 0) {
        printf("drv_temperature_get_value:%d\r\n", value);
    } else {
        printf("drv_temperature_get_value fail ret:0x%x\r\n", ret);
    }
    print_result("%x %x", ret, static_cast<uint32_t>(value));
    return static_cast<int>(ret);
}

// Always the own board, whatever words there are.
int board_temp_get(int, char **) {
    int32_t value = 0;
    const uint32_t ret = drv_temperature_get_board_value(&value);
    if (ret == 0) {
        printf("drv_temperature_get_board_value:%d\r\n", value);
    } else {
        printf("drv_temperature_get_board_value fail ret:0x%x\r\n", ret);
    }
    return static_cast<int>(ret);
}

int temp_warning_get(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    int32_t low_th = 0;
    int32_t high_th = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_temperature_get_warning_th(inst_id, temperature_id, &low_th, &high_th);
    if (ret == 0) {
        printf("drv_temperature_get_warning_th, low_th:%d, high_th:%d \r\n", low_th, high_th);
    } else {
        printf("drv_temperature_get_warning_th fail ret:0x%x\r\n", ret);
    }
    print_result("%x %x %x", ret, static_cast<uint32_t>(low_th), static_cast<uint32_t>(high_th));
    return static_cast<int>(ret);
}

int temp_warning_set(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const auto low_th = static_cast<int32_t>(word_to_u32(inputs[1]));
    const auto high_th = static_cast<int32_t>(word_to_u32(inputs[2]));
    const uint32_t ret = drv_temperature_set_warning_th(inst_id, temperature_id, low_th, high_th);
    if (ret == 0) {
        printf("drv_temperature_set_warning_th, low_th:%d, high_th:%d \r\n", low_th, high_th);
    } else {
        printf("drv_temperature_set_warning_th fail ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int temp_alarm_get(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    int32_t low_th = 0;
    int32_t high_th = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_temperature_get_alarm_th(inst_id, temperature_id, &low_th, &high_th);
    if (ret == 0) {
        printf("drv_temperature_get_alarm_th, low_th:%d, high_th:%d \r\n", low_th, high_th);
    } else {
        printf("drv_temperature_get_alarm_th fail ret:0x%x\r\n", ret);
    }
    print_result("%x %x %x", ret, static_cast<uint32_t>(low_th), static_cast<uint32_t>(high_th));
    return static_cast<int>(ret);
}

int temp_alarm_set(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const auto low_th = static_cast<int32_t>(word_to_u32(inputs[1]));
    const auto high_th = static_cast<int32_t>(word_to_u32(inputs[2]));
    const uint32_t ret = drv_temperature_set_alarm_th(inst_id, temperature_id, low_th, high_th);
    if (ret == 0) {
        printf("drv_temperature_set_alarm_th, low_th:%d, high_th:%d \r\n", low_th, high_th);
    } else {
        printf("drv_temperature_set_alarm_th fail ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int temp_alarm_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t alarm_status = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_temperature_get_alarm(inst_id, temperature_id, &alarm_status);
    if (ret == 0) {
        printf("drv_temperature_get_alarm, alarm_status:%d \r\n", static_cast<int>(alarm_status));
    } else {
        printf("drv_temperature_get_alarm fail ret:0x%x\r\n", ret);
    }
    print_result("%x %x", ret, alarm_status);
    return static_cast<int>(ret);
}

// As with the rails, the monitor of a board is not started or stopped by default: the instance is said.
int temp_init(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_temperature_init(inst_id);
    if (ret == 0) {
        printf("drv_temperature_init, inst_id:0x%x ret:%d \r\n", inst_id, static_cast<int>(ret));
    } else {
        printf("drv_temperature_init fail ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int temp_exit(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_temperature_exit(inst_id);
    if (ret == 0) {
        printf("drv_temperature_exit,inst_id:0x%x ret:%d \r\n", inst_id, static_cast<int>(ret));
    } else {
        printf("drv_temperature_exit fail ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int temp_get_desc(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    constexpr uint32_t size = 64;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char desc[size + 1] = {};
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t temperature_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_temperature_get_node_desc(inst_id, temperature_id, desc, size);
    if (ret == 0) {
        printf("temp_get_desc:%s\r\n", desc);
    } else {
        printf("drv_temperature_get_node_desc fail ret:0x%x\r\n", ret);
    }
    print_result("%x %s", ret, desc);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"temp_get", temp_get, "temp_get"},
    command_row{"board_temp_get", board_temp_get, "board_temp_get"},
    command_row{"temp_warning_get", temp_warning_get, "temp_warning_get"},
    command_row{"temp_warning_set", temp_warning_set, "temp_warning_set"},
    command_row{"temp_alarm_get", temp_alarm_get, "temp_alarm_get"},
    command_row{"temp_alarm_set", temp_alarm_set, "temp_alarm_set"},
    command_row{"temp_alarm_status", temp_alarm_status, "temp_alarm_status"},
    command_row{"temp_init", temp_init, "temp_init"},
    command_row{"temp_exit", temp_exit, "temp_exit"},
    command_row{"temp_get_desc", temp_get_desc, "temp_get_desc"},
};

static_assert(rows_are_sound(rows));

} // namespace

int temp_test(int count, char **args) {
    return run_module(rows, count, args);
}
