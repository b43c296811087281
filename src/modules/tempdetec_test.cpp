// tempdetec_test: the temperature detector chips, channel by channel. They measure what temp_test shows as sensors.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_tempdetec.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int tempdetec_get_temperature(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    int32_t temperature = 0;
    char **inputs = after_optional_inst(count, args, 2, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t channel = word_to_u32(inputs[1]);
    const uint32_t ret = drv_tempdetec_get_temperature(inst_id, chip_id, channel, &temperature);
    printf("drv_tempdetec_get_temperature:[ret]:%d\r\ntemperature:%d\r\n", static_cast<int>(ret), temperature);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"tempdetec_get_temperature", tempdetec_get_temperature, "tempdetec_get_temperature"},
};

static_assert(rows_are_sound(rows));

} // namespace

int tempdetec_test(int count, char **args) {
    return run_module(rows, count, args);
}
