// board_capability_test: what the board is equipped with, by the name of each chip, and the pins by which chips tell
// the bill of materials. Capabilities are built into the driver: there is nothing to set up, register or dump, so those
// sub-commands call nothing and always succeed.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board_capability.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

constexpr uint32_t name_size = 16;

int test_board_capability_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    const uint32_t ret = 0;
    print_begin_banner(style, "test_board_capability_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    printf("drv_board_capability_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_end_banner(style, "test_board_capability_init");
    return static_cast<int>(ret);
}

int test_board_capability_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    const uint32_t ret = 0;
    print_begin_banner(style, "test_board_capability_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    printf("drv_board_capability_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_end_banner(style, "test_board_capability_deinit");
    return static_cast<int>(ret);
}

// No name is registered, so none is shown.
int test_board_capability_register(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t mode_id = 0;
    const char *name = "";
    const uint32_t ret = 0;
    print_begin_banner(style, "test_board_capability_register");
    check_args(2, count, args, &inst_id, &mode_id, nullptr);
    printf("drv_board_capability_register::inst_id:0x%x id:%d name:%s ret:0x%x\n", inst_id, static_cast<int>(mode_id),
           name, ret);
    print_end_banner(style, "test_board_capability_register");
    return static_cast<int>(ret);
}

int test_board_capability_find(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t mode_id = 0;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char name[name_size + 1] = {};
    print_begin_banner(style, "test_board_capability_find");
    check_args(2, count, args, &inst_id, &mode_id, nullptr);
    const uint32_t ret = drv_board_capability_find(inst_id, mode_id, name, name_size);
    printf("drv_board_capability_find::inst_id:0x%x id:%d name:%s ret:0x%x\n", inst_id, static_cast<int>(mode_id), name,
           ret);
    print_result("%x %s", ret, name);
    print_end_banner(style, "test_board_capability_find");
    return static_cast<int>(ret);
}

int test_board_capability_dump(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    const char *dump = "";
    const uint32_t ret = 0;
    print_begin_banner(style, "test_board_capability_dump");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    printf("drv_board_capability_dump::inst_id:0x%x dump:%s ret:0x%x\n", inst_id, dump, ret);
    print_end_banner(style, "test_board_capability_dump");
    return static_cast<int>(ret);
}

int test_board_get_bom_value(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t bom_value = 0;
    print_begin_banner(style, "test_board_get_bom_value");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_board_get_bom_value(inst_id, chip_id, &bom_value);
    printf("drv_board_get_bom_value::inst_id:0x%x id:%d bom_value:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(bom_value), ret);
    print_result("%x %d", ret, static_cast<int>(bom_value));
    print_end_banner(style, "test_board_get_bom_value");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_board_capability_init", test_board_capability_init, "drv_board_capability_init     inst_id"},
    command_row{"drv_board_capability_deinit", test_board_capability_deinit, "drv_board_capability_deinit   inst_id"},
    command_row{"drv_board_capability_register", test_board_capability_register,
                "drv_board_capability_register inst_id mode_id"},
    command_row{"drv_board_capability_find", test_board_capability_find,
                "drv_board_capability_find     inst_id mode_id"},
    command_row{"drv_board_capability_dump", test_board_capability_dump, "drv_board_capability_dump     inst_id"},
    command_row{"drv_board_get_bom_value", test_board_get_bom_value, "drv_board_get_bom_value       inst_id chip_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int board_capability_test(int count, char **args) {
    return run_module(rows, count, args);
}
