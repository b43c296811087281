// powerdetec_test: the power detector chips in the feeds of the board: bus voltage in millivolts, voltage across the
// shunt in microvolts, and the power that follows from both, in milliwatts.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/environment/drv_powerdetec.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int powerdetec_get_power(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t power = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_powerdetec_get_power(inst_id, chip_id, &power);
    printf("drv_powerdetec_get_power:[ret]:%#x\r\npower:%d\r\n", ret, static_cast<int>(power));
    return static_cast<int>(ret);
}

int powerdetec_get_shuntvoltage(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t voltage = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_powerdetec_get_shuntvoltage(inst_id, chip_id, &voltage);
    printf("drv_powerdetec_get_shuntvoltage:[ret]:%#x\r\nvoltage:%d\r\n", ret, static_cast<int>(voltage));
    return static_cast<int>(ret);
}

int powerdetec_get_busvoltage(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t voltage = 0;
    char **inputs = after_optional_inst(count, args, 1, &inst_id);
    if (inputs == nullptr) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(inputs[0]);
    const uint32_t ret = drv_powerdetec_get_busvoltage(inst_id, chip_id, &voltage);
    printf("powerdetec_get_busvoltage:[ret]:%#x\r\nvoltage:%d\r\n", ret, static_cast<int>(voltage));
    return static_cast<int>(ret);
}

int powerdetec_get_chiptype(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t chiptype = 0;
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_powerdetec_get_chiptype(inst_id, chip_id, &chiptype);
    printf("powerdetec_get_chiptype:[ret]:%#x\r\n chiptype:%d\r\n", ret, static_cast<int>(chiptype));
    return static_cast<int>(ret);
}

int powerdetec_exit_chip(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_powerdetec_exit_chip(inst_id, chip_id);
    printf("powerdetec_exit_chip:[ret]:%#x\r\n", ret);
    return static_cast<int>(ret);
}

int powerdetec_init_chip(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_powerdetec_init_chip(inst_id, chip_id);
    printf("powerdetec_init_chip:[ret]:%#x\r\n", ret);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"powerdetec_get_power", powerdetec_get_power, "powerdetec_get_power"},
    command_row{"powerdetec_get_shuntvoltage", powerdetec_get_shuntvoltage, "powerdetec_get_shuntvoltage"},
    command_row{"powerdetec_get_busvoltage", powerdetec_get_busvoltage, "powerdetec_get_busvoltage"},
    command_row{"powerdetec_get_chiptype", powerdetec_get_chiptype, "powerdetec_get_chiptype inst_id chip_id"},
    command_row{"powerdetec_exit_chip", powerdetec_exit_chip, "powerdetec_exit_chip inst_id chip_id"},
    command_row{"powerdetec_init_chip", powerdetec_init_chip, "powerdetec_init_chip inst_id chip_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int powerdetec_test(int count, char **args) {
    return run_module(rows, count, args);
}
