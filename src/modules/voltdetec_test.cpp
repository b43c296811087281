// voltdetec_test: the voltage detector chips, channel by channel. They measure the rails that voltage_test shows.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_voltdetec.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int voltdetec_get_voltage(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t voltage = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t channel = word_to_u32(inputs[1]);
    const uint32_t ret = drv_voltdetec_get_voltage(inst_id, chip_id, channel, &voltage);
    printf("drv_voltdetec_get_voltage:[ret]:%d\r\nvoltage:%d\r\n", static_cast<int>(ret), static_cast<int>(voltage));
    return static_cast<int>(ret);
}

int voltdetec_init(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_voltdetec_init(inst_id);
    printf("drv_voltdetec_init ret[%#x], inst_id:0x%x.\r\n", ret, inst_id);
    return static_cast<int>(ret);
}

int voltdetec_exit(int count, char **args) {
    if (count != 1) {
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_voltdetec_exit(inst_id);
    printf("drv_voltdetec_exit ret[%#x], inst_id:0x%x.\r\n", ret, inst_id);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"voltdetec_get_voltage", voltdetec_get_voltage, "voltdetec_get_voltage"},
    command_row{"voltdetec_init", voltdetec_init, "voltdetec_init"},
    command_row{"voltdetec_exit", voltdetec_exit, "voltdetec_exit"},
};

static_assert(rows_are_sound(rows));

} // namespace

int voltdetec_test(int count, char **args) {
    return run_module(rows, count, args);
}
