// chip9555_test: the input/output expanders, by register and by pin. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/chips/drv_chip9555.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int chip9555_get_reg(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t offset = 0;
    uint32_t value = 0;
    check_args(3, count, args, &inst_id, &chip_id, &offset);
    const uint32_t ret = drv_chip9555_get_reg(inst_id, chip_id, offset, &value);
    printf("drv_chip9555_get_reg:[ret]:%d\r\n value:0x%x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int chip9555_set_reg(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t offset = 0;
    uint32_t value = 0;
    check_args(4, count, args, &inst_id, &chip_id, &offset, &value);
    const uint32_t ret = drv_chip9555_set_reg(inst_id, chip_id, offset, value);
    printf("drv_chip9555_set_reg:[ret]:%d\r\n value:0x%x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int chip9555_get_level(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t pin = 0;
    uint32_t value = 0;
    check_args(3, count, args, &inst_id, &chip_id, &pin);
    const uint32_t ret = drv_chip9555_get_level(inst_id, chip_id, pin, &value);
    printf("drv_chip9555_get_level:[ret]:%d\r\n value:0x%x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int chip9555_set_level(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t pin = 0;
    uint32_t value = 0;
    check_args(4, count, args, &inst_id, &chip_id, &pin, &value);
    const uint32_t ret = drv_chip9555_set_level(inst_id, chip_id, pin, value);
    printf("drv_chip9555_set_level:[ret]:%d\r\n value:0x%x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"chip9555_get_reg", chip9555_get_reg, "chip9555_get_reg    inst_id(option) chip_id offset"},
    command_row{"chip9555_set_reg", chip9555_set_reg, "chip9555_set_reg    inst_id(option) chip_id offset value"},
    command_row{"chip9555_get_level", chip9555_get_level, "chip9555_get_level  inst_id(option) chip_id pin"},
    command_row{"chip9555_set_level", chip9555_set_level, "chip9555_set_level  inst_id(option) chip_id pin value"},
};

static_assert(rows_are_sound(rows));

} // namespace

int chip9555_test(int count, char **args) {
    return run_module(rows, count, args);
}
