// voltage_test: the supply rails of the board, in millivolts: measured values, the two pairs of thresholds (warning
// and alarm), the lowest and highest value since power-on, and the findings of the regulators and power stages. No
// banners here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/environment/drv_avs.h"
#include "drv_basic/environment/drv_voltage.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

int voltage_get_value(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t voltage_id = 0;
    uint32_t value = 0;
    check_args(2, count, args, &inst_id, &voltage_id, nullptr);
    const uint32_t ret = drv_voltage_get_value(inst_id, voltage_id, &value);
    if (ret == 0) {
        printf("drv_voltage_get_value:%d\r\n", static_cast<int>(value));
    } else {
        printf("drv_voltage_get_value fail, ret:0x%x\r\n", ret);
    }
    print_result("%x %d", ret, static_cast<int>(value));
    return static_cast<int>(ret);
}

int voltage_set_value(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t value = word_to_u32(inputs[1]);
    const uint32_t ret = drv_voltage_set_value(inst_id, voltage_id, value);
    if (ret == 0) {
        printf("drv_voltage_set_value:%d\r\n", static_cast<int>(value));
    } else {
        printf("drv_voltage_set_value fail,ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int voltage_get_warning_th(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t low_th = 0;
    uint32_t high_th = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_voltage_get_warning_th(inst_id, voltage_id, &low_th, &high_th);
    if (ret == 0) {
        printf("drv_voltage_get_warning_th, low_th:%d, high_th:%d \r\n", static_cast<int>(low_th),
               static_cast<int>(high_th));
    } else {
        printf("drv_voltage_get_warning_th fail,ret:0x%x\r\n", ret);
    }
    print_result("%x %x %x", ret, low_th, high_th);
    return static_cast<int>(ret);
}

int voltage_set_warning_th(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t low_th = word_to_u32(inputs[1]);
    const uint32_t high_th = word_to_u32(inputs[2]);
    const uint32_t ret = drv_voltage_set_warning_th(inst_id, voltage_id, low_th, high_th);
    if (ret == 0) {
        printf("drv_voltage_set_warning_th, low_th:%d, high_th:%d \r\n", static_cast<int>(low_th),
               static_cast<int>(high_th));
    } else {
        printf("drv_voltage_set_warning_th fail,ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int voltage_get_alarm_th(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t low_th = 0;
    uint32_t high_th = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_voltage_get_alarm_th(inst_id, voltage_id, &low_th, &high_th);
    if (ret == 0) {
        printf("drv_voltage_get_alarm_th, low_th:%d, high_th:%d \r\n", static_cast<int>(low_th),
               static_cast<int>(high_th));
    } else {
        printf("drv_voltage_get_alarm_th fail,ret:0x%x\r\n", ret);
    }
    print_result("%x %x %x", ret, low_th, high_th);
    return static_cast<int>(ret);
}

int voltage_set_alarm_th(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t low_th = word_to_u32(inputs[1]);
    const uint32_t high_th = word_to_u32(inputs[2]);
    const uint32_t ret = drv_voltage_set_alarm_th(inst_id, voltage_id, low_th, high_th);
    if (ret == 0) {
        printf("drv_voltage_set_alarm_th, low_th:%d, high_th:%d \r\n", static_cast<int>(low_th),
               static_cast<int>(high_th));
    } else {
        printf("drv_voltage_set_alarm_th fail,ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

// Status and reason are shown even when the driver fails: they tell how far it came. The last item of the result print
// is the size of the reason's area, not its text.
int voltage_alarm_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t alarm_status = 0;
    char **inputs = after_optional_inst(count, args, 3, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t alarm_type = word_to_u32(inputs[1]);
    const uint32_t len = word_to_u32(inputs[2]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_voltage_get_alarm(inst_id, voltage_id, alarm_type, &alarm_status, buffer, len);
    printf("drv_voltage_get_alarm, alarm_status:%d\r\n", static_cast<int>(alarm_status));
    printf("drv_voltage_get_alarm, buffer:%s\r\n", buffer);
    print_result("%x %x %x", ret, alarm_status, len);
    free(buffer);
    return static_cast<int>(ret);
}

int voltage_history_value(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t max_value = 0;
    uint32_t min_value = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_voltage_get_history_value(inst_id, voltage_id, &max_value, &min_value);
    if (ret == 0) {
        printf("drv_voltage_get_history_value, max_value:%d  min_value:%d\r\n", static_cast<int>(max_value),
               static_cast<int>(min_value));
    } else {
        printf("drv_voltage_get_history_value fail, ret:0x%x\r\n", ret);
    }
    print_result("%x %x %x", ret, max_value, min_value);
    return static_cast<int>(ret);
}

// Bringing the rails up or down without saying whose is too easy a slip: the instance has no default here.
int voltage_init(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_voltage_init(inst_id);
    if (ret == 0) {
        printf("drv_voltage_init, inst_id:0x%x, ret:%d\r\n", inst_id, static_cast<int>(ret));
    } else {
        printf("drv_voltage_init fail,ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int voltage_exit(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_voltage_exit(inst_id);
    if (ret == 0) {
        printf("drv_voltage_exit, inst_id:0x%x, ret:%d\r\n", inst_id, static_cast<int>(ret));
    } else {
        printf("drv_voltage_exit fail,ret:0x%x\r\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

// The scaling controllers set the core rails; their registers are dumped as text.
int voltage_avs_dump(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t len = word_to_u32(inputs[0]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_avs_dump_dfx_info(inst_id, buffer, len);
    if (ret == 0) {
        printf("drv_avs_dump_dfx_info, buffer:%s\r\n", buffer);
    } else {
        printf("drv_avs_dump_dfx_info fail,ret:0x%x\r\n", ret);
    }
    print_result("%x %s", ret, buffer);
    free(buffer);
    return static_cast<int>(ret);
}

int voltage_check_vrm_alert(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t result = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t len = word_to_u32(inputs[1]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_voltage_check_vrm_alert(inst_id, chip_id, &result, buffer, len);
    printf("drv_voltage_check_vrm_alert, result:%d\r\n", static_cast<int>(result));
    printf("drv_voltage_check_vrm_alert, buffer:%s\r\n", buffer);
    print_result("%x %x %s", ret, result, buffer);
    free(buffer);
    return static_cast<int>(ret);
}

int voltage_check_power(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t result = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t power_id = word_to_u32(inputs[0]);
    const uint32_t len = word_to_u32(inputs[1]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_voltage_check_power(inst_id, power_id, &result, buffer, len);
    printf("drv_voltage_check_power, result:%d\r\n", static_cast<int>(result));
    printf("drv_voltage_check_power, buffer:%s\r\n", buffer);
    print_result("%x %x %s", ret, result, buffer);
    free(buffer);
    return static_cast<int>(ret);
}

int voltage_get_desc(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    constexpr uint32_t size = 64;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char desc[size + 1] = {};
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t voltage_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_voltage_get_node_desc(inst_id, voltage_id, desc, size);
    if (ret == 0) {
        printf("voltage_get_desc:%s\r\n", desc);
    } else {
        printf("drv_voltage_get_node_desc fail,ret:0x%x\r\n", ret);
    }
    print_result("%x %s", ret, desc);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"voltage_get_value", voltage_get_value, "voltage_get_value  inst_id voltage_id "},
    command_row{"voltage_set_value", voltage_set_value, "voltage_set_value"},
    command_row{"voltage_get_warning_th", voltage_get_warning_th, "voltage_get_warning_th"},
    command_row{"voltage_set_warning_th", voltage_set_warning_th, "voltage_set_warning_th"},
    command_row{"voltage_get_alarm_th", voltage_get_alarm_th, "voltage_get_alarm_th"},
    command_row{"voltage_set_alarm_th", voltage_set_alarm_th, "voltage_set_alarm_th"},
    command_row{"voltage_alarm_status", voltage_alarm_status, "voltage_alarm_status"},
    command_row{"voltage_history_value", voltage_history_value, "voltage_history_value"},
    command_row{"voltage_init", voltage_init, "voltage_init"},
    command_row{"voltage_exit", voltage_exit, "voltage_exit"},
    command_row{"voltage_avs_dump", voltage_avs_dump, "voltage_avs_dump"},
    command_row{"voltage_check_vrm_alert", voltage_check_vrm_alert, "voltage_check_vrm_alert"},
    command_row{"voltage_check_power", voltage_check_power, "voltage_check_power"},
    command_row{"voltage_get_desc", voltage_get_desc, "voltage_get_desc"},
};

static_assert(rows_are_sound(rows));

} // namespace

int voltage_test(int count, char **args) {
    return run_module(rows, count, args);
}
