// dyinggasp_test: which cards are told when the power fails, in time for a last message, and a power failure that is
// only simulated.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/protection/drv_dyinggasp.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

int test_dyinggasp_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_dyinggasp_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_dyinggasp_init(inst_id);
    printf("drv_dyinggasp_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_dyinggasp_init");
    return static_cast<int>(ret);
}

int test_dyinggasp_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_dyinggasp_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_dyinggasp_deinit(inst_id);
    printf("drv_dyinggasp_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_dyinggasp_deinit");
    return static_cast<int>(ret);
}

int test_dyinggasp_set_simulation_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_dyinggasp_set_simulation_enable");
    check_args(2, count, args, &inst_id, &enable, nullptr);
    const uint32_t ret = drv_dyinggasp_set_simulation_enable(inst_id, enable);
    printf("drv_dyinggasp_set_simulation_enable::inst_id:0x%x simu_enable:%d ret:0x%x\n", inst_id,
           static_cast<int>(enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_dyinggasp_set_simulation_enable");
    return static_cast<int>(ret);
}

int test_dyinggasp_set_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t board = 0;
    uint32_t enable = 0;
    print_begin_banner(style, "test_dyinggasp_set_enable");
    check_args(3, count, args, &inst_id, &board, &enable);
    const uint32_t ret = drv_dyinggasp_set_enable(inst_id, board, enable);
    printf("drv_dyinggasp_set_enable::inst_id:0x%x board %d enable:%d ret:0x%x\n", inst_id, static_cast<int>(board),
           static_cast<int>(enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_dyinggasp_set_enable");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_dyinggasp_init", test_dyinggasp_init, "drv_dyinggasp_init   inst_id"},
    command_row{"drv_dyinggasp_deinit", test_dyinggasp_deinit, "drv_dyinggasp_deinit inst_id"},
    command_row{"drv_dyinggasp_set_simulation_enable", test_dyinggasp_set_simulation_enable,
                "drv_dyinggasp_set_simulation_enable inst_id enable"},
    command_row{"drv_dyinggasp_set_enable", test_dyinggasp_set_enable,
                "drv_dyinggasp_set_enable            inst_id board  enable"},
};

static_assert(rows_are_sound(rows));

} // namespace

int dyinggasp_test(int count, char **args) {
    return run_module(rows, count, args);
}
