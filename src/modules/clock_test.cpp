// clock_test: the clocks of the board: the detectors that watch them, what the synthesisers and the stratum 3 clock
// take as their reference, the synchronous clock that goes to the backplane, and the source of time stamps. From the
// synchronous clock on, the lines end with a point behind the line end, which begins the line that follows.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/clock/drv_clock.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

int test_clk_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_clk_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_clk_init(inst_id);
    printf("drv_clock_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_clk_init");
    return static_cast<int>(ret);
}

int test_clk_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_clk_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_clk_deinit(inst_id);
    printf("drv_clock_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_clk_deinit");
    return static_cast<int>(ret);
}

int test_clk_check_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t clock_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_clk_check_init");
    check_args(2, count, args, &inst_id, &clock_id, nullptr);
    const uint32_t ret = drv_clk_check_init(inst_id, clock_id, &status);
    printf("drv_clk_check_init::inst_id:0x%x id:%d status:%d ret:0x%x\n", inst_id, static_cast<int>(clock_id),
           static_cast<int>(status), ret);
    print_result("%x %d", ret, static_cast<int>(status));
    print_end_banner(style, "test_clk_check_init");
    return static_cast<int>(ret);
}

int test_clk_detect_check_id(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t clock_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_clk_detect_check_id");
    check_args(2, count, args, &inst_id, &clock_id, nullptr);
    const uint32_t ret = drv_clk_detect_check_id(inst_id, clock_id, &status);
    printf("drv_clk_detect_check_id::inst_id:0x%x id:%d status:%d ret:0x%x\n", inst_id, static_cast<int>(clock_id),
           static_cast<int>(status), ret);
    print_result("%x %d", ret, static_cast<int>(status));
    print_end_banner(style, "test_clk_detect_check_id");
    return static_cast<int>(ret);
}

int test_clk_detect_get_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t clock_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_clk_detect_get_status");
    check_args(2, count, args, &inst_id, &clock_id, nullptr);
    const uint32_t ret = drv_clk_detect_get_status(inst_id, clock_id, &status);
    printf("drv_clk_detect_get_status::inst_id:0x%x id:%d status:%d ret:0x%x\n", inst_id, static_cast<int>(clock_id),
           static_cast<int>(status), ret);
    print_result("%x %d", ret, static_cast<int>(status));
    print_end_banner(style, "test_clk_detect_get_status");
    return static_cast<int>(ret);
}

int test_clk_detect_get_status_history(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t clock_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_clk_detect_get_status_history");
    check_args(2, count, args, &inst_id, &clock_id, nullptr);
    const uint32_t ret = drv_clk_detect_get_status_history(inst_id, clock_id, &status);
    printf("drv_clk_detect_get_status_history::inst_id:0x%x id:%d status:%d ret:0x%x\n", inst_id,
           static_cast<int>(clock_id), static_cast<int>(status), ret);
    print_result("%x %d", ret, static_cast<int>(status));
    print_end_banner(style, "test_clk_detect_get_status_history");
    return static_cast<int>(ret);
}

int test_clk_detect_dump_reg(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t clock_id = 0;
    constexpr uint32_t size = 1024;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char buffer[size + 1] = {};
    print_begin_banner(style, "test_clk_detect_dump_reg");
    check_args(2, count, args, &inst_id, &clock_id, nullptr);
    const uint32_t ret = drv_clk_detect_dump_reg(inst_id, clock_id, buffer, size);
    printf("drv_clk_detect_dump_reg::inst_id:0x%x id:%d dump ret:0x%x. \r\n %s \r\n", inst_id,
           static_cast<int>(clock_id), ret, buffer);
    print_result("%x %s", ret, buffer);
    print_end_banner(style, "test_clk_detect_dump_reg");
    return static_cast<int>(ret);
}

int test_board_set_synclk_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t channel = 0;
    print_begin_banner(style, "test_board_set_synclk_source");
    check_args(2, count, args, &inst_id, &channel, nullptr);
    const uint32_t ret = drv_board_set_synclk_source(inst_id, channel);
    printf("drv_board_set_synclk_source::inst_id:0x%x ret:0x%x\n.", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_set_synclk_source");
    return static_cast<int>(ret);
}

int test_board_set_synclk_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_board_set_synclk_enable");
    check_args(2, count, args, &inst_id, &enable, nullptr);
    const uint32_t ret = drv_board_set_synclk_enable(inst_id, enable);
    printf("drv_board_set_synclk_enable::inst_id:0x%x ret:0x%x\n.", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_set_synclk_enable");
    return static_cast<int>(ret);
}

// The line carries the name of another operation; what reads the console knows it so.
int test_clock_set_timestamp_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t np_id = 0;
    print_begin_banner(style, "test_clock_set_timestamp_source");
    check_args(2, count, args, &inst_id, &np_id, nullptr);
    const uint32_t ret = drv_clock_set_timestamp_source(inst_id, np_id);
    printf("drv_clock_set_iic_speed::inst_id:0x%x ret:0x%x\n.", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_clock_set_timestamp_source");
    return static_cast<int>(ret);
}

int test_clock_set_pll_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t pll_id = 0;
    uint32_t ref_mode = 0;
    print_begin_banner(style, "test_clock_set_pll_source");
    check_args(3, count, args, &inst_id, &pll_id, &ref_mode);
    const uint32_t ret = drv_clock_set_pll_source(inst_id, pll_id, ref_mode);
    printf("drv_clock_set_pll_source::inst_id:0x%x pll_id:%d ref_mode:%d ret:0x%x\n.", inst_id,
           static_cast<int>(pll_id), static_cast<int>(ref_mode), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_clock_set_pll_source");
    return static_cast<int>(ret);
}

// The status has a word of its own: it is what stands there before the driver writes it, and stays when that fails.
int test_board_get_3clk_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t status = 0;
    print_begin_banner(style, "test_board_get_3clk_status");
    check_args(2, count, args, &inst_id, &status, nullptr);
    const uint32_t ret = drv_board_get_3clk_status(inst_id, &status);
    printf("drv_board_get_3clk_status::inst_id:0x%x status:%d ret:0x%x\n.", inst_id, static_cast<int>(status), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_get_3clk_status");
    return static_cast<int>(ret);
}

int test_board_set_3clk_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sel_en = 0;
    uint32_t l3clk_src = 0;
    print_begin_banner(style, "test_board_set_3clk_source");
    check_args(3, count, args, &inst_id, &sel_en, &l3clk_src);
    const uint32_t ret = drv_board_set_3clk_source(inst_id, sel_en, &l3clk_src);
    printf("drv_board_set_3clk_source::inst_id:0x%x ret:0x%x\n.", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_set_3clk_source");
    return static_cast<int>(ret);
}

int test_board_get_3clk_source_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t sel_en = 0;
    print_begin_banner(style, "test_board_get_3clk_source_mode");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_board_get_3clk_source_mode(inst_id, &sel_en);
    printf("drv_board_get_3clk_source_mode::inst_id:0x%x sel_en:%d ret:0x%x\n.", inst_id, static_cast<int>(sel_en),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_get_3clk_source_mode");
    return static_cast<int>(ret);
}

int test_board_get_synclk_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t channel = 0;
    print_begin_banner(style, "test_board_get_synclk_source");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_board_get_synclk_source(inst_id, &channel);
    printf("drv_board_get_synclk_source::inst_id:0x%x channel:0x%x ret:0x%x\n.", inst_id, channel, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_get_synclk_source");
    return static_cast<int>(ret);
}

int test_board_set_synclk_los(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t port = 0;
    print_begin_banner(style, "test_board_set_synclk_los");
    check_args(2, count, args, &inst_id, &port, nullptr);
    const uint32_t ret = drv_board_set_synclk_los(inst_id, port);
    printf("drv_board_set_synclk_los::inst_id:0x%x port:0x%x ret:0x%x\n.", inst_id, port, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_board_set_synclk_los");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_clk_init", test_clk_init, "drv_clk_init   inst_id"},
    command_row{"drv_clk_deinit", test_clk_deinit, "drv_clk_deinit inst_id"},
    command_row{"drv_clk_check_init", test_clk_check_init, "drv_clk_check_init         inst_id clock_id"},
    command_row{"drv_clk_detect_check_id", test_clk_detect_check_id, "drv_clk_detect_check_id    inst_id clock_id"},
    command_row{"drv_clk_detect_get_status", test_clk_detect_get_status, "drv_clk_detect_get_status  inst_id clock_id"},
    command_row{"drv_clk_detect_get_status_history", test_clk_detect_get_status_history,
                "drv_clk_detect_get_status_history inst_id clock_id"},
    command_row{"drv_clk_detect_dump_reg", test_clk_detect_dump_reg, "drv_clk_detect_dump_reg    inst_id clock_id"},
    command_row{"drv_board_set_synclk_source", test_board_set_synclk_source,
                "drv_board_set_synclk_source    inst_id channel"},
    command_row{"drv_board_set_synclk_enable", test_board_set_synclk_enable,
                "drv_board_set_synclk_enable    inst_id enable"},
    command_row{"drv_clock_set_timestamp_source", test_clock_set_timestamp_source,
                "drv_clock_set_timestamp_source inst_id np_id"},
    command_row{"drv_clock_set_pll_source", test_clock_set_pll_source,
                "drv_clock_set_pll_source       inst_id pll_id ref_mode"},
    command_row{"drv_board_get_3clk_status", test_board_get_3clk_status,
                "drv_board_get_3clk_status      inst_id status"},
    command_row{"drv_board_set_3clk_source", test_board_set_3clk_source,
                "drv_board_set_3clk_source      inst_id sel_en, &l3clk_src"},
    command_row{"drv_board_get_3clk_source_mode", test_board_get_3clk_source_mode,
                "drv_board_get_3clk_source_mode inst_id"},
    command_row{"drv_board_get_synclk_source", test_board_get_synclk_source, "drv_board_get_synclk_source    inst_id"},
    command_row{"drv_board_set_synclk_los", test_board_set_synclk_los, "drv_board_set_synclk_los inst_id port"},
};

static_assert(rows_are_sound(rows));

} // namespace

int clock_test(int count, char **args) {
    return run_module(rows, count, args);
}
