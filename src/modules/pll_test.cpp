// pll_test: the clock synthesisers: single registers, the setting that the board needs, and a dump of registers as
// text. No banners and no result print here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/clock/drv_pll.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int pll_get_reg(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t reg = 0;
    uint32_t value = 0;
    check_args(3, count, args, &inst_id, &chip_id, &reg);
    const uint32_t ret = drv_pll_get_reg(inst_id, chip_id, reg, &value);
    printf("drv_pll_get_reg:[ret]:%d\r\n value:0x%x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int pll_set_reg(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t reg = 0;
    uint32_t value = 0;
    check_args(4, count, args, &inst_id, &chip_id, &reg, &value);
    const uint32_t ret = drv_pll_set_reg(inst_id, chip_id, reg, value);
    printf("drv_pll_set_reg:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int pll_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_pll_initialization(inst_id, chip_id);
    printf("drv_pll_initialization:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int pll_dump_reg_customize(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **inputs = after_optional_inst(count, args, 4, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t start = word_to_u32(inputs[1]);
    const uint32_t num = word_to_u32(inputs[2]);
    const uint32_t len = word_to_u32(inputs[3]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_pll_reg_dump(inst_id, chip_id, start, num, buffer, len);
    printf("drv_pll_reg_dump:[ret]:%d len:%d\r\n%s\r\n", static_cast<int>(ret), static_cast<int>(len), buffer);
    free(buffer);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"pll_get_reg", pll_get_reg, "pll_get_reg inst_id chip_id reg"},
    command_row{"pll_set_reg", pll_set_reg, "pll_set_reg inst_id chip_id reg value"},
    command_row{"pll_init", pll_init, "pll_init"},
    command_row{"pll_dump_reg_customize", pll_dump_reg_customize, "pll_dump_reg_customize start num len"},
};

static_assert(rows_are_sound(rows));

} // namespace

int pll_test(int count, char **args) {
    return run_module(rows, count, args);
}
