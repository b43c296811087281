// reset_test: resets of chips and boards, why and when the board was last reset, and the flags by which the two main
// processing units tell each other that they are up. Queries of the own board or its peer have no instance: the result
// line shows the board itself there.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_reset.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

// What is stored with a reset of the own board unless words say otherwise.
constexpr drv_reset_code preset_code = {.code = 0, .year = 2008, .month = 12, .day = 12};

int test_reset_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_reset_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_reset_init(inst_id);
    printf("drv_reset_init:: inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_reset_init");
    return static_cast<int>(ret);
}

int test_reset_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_reset_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_reset_deinit(inst_id);
    printf("drv_reset_deinit:: inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_reset_deinit");
    return static_cast<int>(ret);
}

// The lines of chip and board show the driver's code twice: in hexadecimal as the outcome of the reset, then in
// decimal.
int test_reset_chip(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    print_begin_banner(style, "test_reset_chip");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_reset_chip(inst_id, chip_id);
    printf("drv_reset_chip:: inst_id:0x%x chip: %d reset 0x%x ret %d \r\n", inst_id, static_cast<int>(chip_id), ret,
           static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_chip");
    return static_cast<int>(ret);
}

int test_reset_board(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_reset_board");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_reset_board(inst_id);
    printf("drv_reset_board:: inst_id:0x%x reset board:0x%x ret %d \r\n", inst_id, ret, static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_board");
    return static_cast<int>(ret);
}

// On hardware the driver call does not come back; all lines before it have ended and are out by then. The instance is
// taken and shown, but the driver resets the own board whatever it is.
int test_reset_self_board(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t month = preset_code.month;
    drv_reset_code code = preset_code;
    print_begin_banner(style, "test_reset_self_board");
    check_args(3, count, args, &inst_id, &month, &code.code);
    code.month = static_cast<uint8_t>(month);
    const uint32_t ret = drv_reset_self_board(&code);
    printf("drv_reset_self_board:: inst_id:0x%x code %d-%d-%d ret %d \r\n", inst_id, code.year, code.month, code.day,
           static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_self_board");
    return static_cast<int>(ret);
}

// Stores the record only, so the code stays 0 and only the month can be chosen.
int test_reset_self_board_without_reboot(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t month = preset_code.month;
    drv_reset_code code = preset_code;
    print_begin_banner(style, "test_reset_self_board_without_reboot");
    check_args(2, count, args, &inst_id, &month, nullptr);
    code.month = static_cast<uint8_t>(month);
    const uint32_t ret = drv_reset_self_board_without_reboot(&code);
    printf("test_reset_self_board_without_reboot:: inst_id:0x%x code %d-%d-%d ret %d \r\n", inst_id, code.year,
           code.month, code.day, static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_self_board_without_reboot");
    return static_cast<int>(ret);
}

int test_reset_peer_board(int, char **) {
    print_begin_banner(style, "test_reset_peer_board");
    const uint32_t ret = drv_reset_peer_board();
    printf("drv_reset_peer_board:: inst_id:0x%x ret %d \r\n", DRV_INST_SELF, static_cast<int>(ret));
    print_end_banner(style, "test_reset_peer_board");
    return static_cast<int>(ret);
}

int test_reset_get_code(int, char **) {
    drv_reset_code code{};
    print_begin_banner(style, "test_reset_get_code");
    const uint32_t ret = drv_reset_get_code(&code);
    printf("drv_reset_get_code:: inst_id:0x%x code:%d date:%d-%d-%d ret %d \r\n", DRV_INST_SELF,
           static_cast<int>(code.code), code.year, code.month, code.day, static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_get_code");
    return static_cast<int>(ret);
}

int test_reset_get_reason(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t index = 0;
    uint32_t reason = 0;
    print_begin_banner(style, "test_reset_get_reason");
    check_args(2, count, args, &inst_id, &index, nullptr);
    const uint32_t ret = drv_reset_get_reason(inst_id, index, &reason);
    printf("drv_reset_get_reason:: inst_id:0x%x index: %d reason: %d ret %d \r\n", inst_id, static_cast<int>(index),
           static_cast<int>(reason), static_cast<int>(ret));
    print_result("%x %d", ret, static_cast<int>(reason));
    print_end_banner(style, "test_reset_get_reason");
    return static_cast<int>(ret);
}

int test_reset_get_mode(int, char **) {
    uint32_t cool = 0;
    print_begin_banner(style, "test_reset_get_mode");
    const uint32_t ret = drv_reset_get_mode(&cool);
    printf("drv_reset_get_mode:: inst_id:0x%x cool %d ret %d \r\n", DRV_INST_SELF, static_cast<int>(cool),
           static_cast<int>(ret));
    print_end_banner(style, "test_reset_get_mode");
    return static_cast<int>(ret);
}

int test_reset_sync_file_system(int, char **) {
    print_begin_banner(style, "test_reset_sync_file_system");
    const uint32_t ret = drv_reset_sync_file_system();
    printf("drv_reset_sync_file_system:: inst_id:0x%x ret %d \r\n", DRV_INST_SELF, static_cast<int>(ret));
    print_end_banner(style, "test_reset_sync_file_system");
    return static_cast<int>(ret);
}

int test_reset_get_button_status(int, char **) {
    uint32_t status = 0;
    print_begin_banner(style, "test_reset_get_button_status");
    const uint32_t ret = drv_reset_get_button_status(&status);
    printf("drv_reset_get_button_status:: inst_id:0x%x status %d ret %d \r\n", DRV_INST_SELF, static_cast<int>(status),
           static_cast<int>(ret));
    print_end_banner(style, "test_reset_get_button_status");
    return static_cast<int>(ret);
}

// As with a reset of the own board, the instance of these two is taken and shown, and the driver has no use for it.
int test_reset_set_self_sys_ready(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t mode = 0;
    print_begin_banner(style, "test_reset_set_self_sys_ready");
    check_args(2, count, args, &inst_id, &mode, nullptr);
    const uint32_t ret = drv_reset_set_self_sys_ready(mode);
    printf("drv_reset_set_self_sys_ready:: inst_id:0x%x mode: %d ret %d \r\n", inst_id, static_cast<int>(mode),
           static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_set_self_sys_ready");
    return static_cast<int>(ret);
}

int test_reset_get_peer_sys_ready(int, char **) {
    uint32_t mode = 0;
    print_begin_banner(style, "test_reset_get_peer_sys_ready");
    const uint32_t ret = drv_reset_get_peer_sys_ready(&mode);
    printf("drv_reset_get_peer_sys_ready:: inst_id:0x%x mode: %d ret %d \r\n", DRV_INST_SELF, static_cast<int>(mode),
           static_cast<int>(ret));
    print_end_banner(style, "test_reset_get_peer_sys_ready");
    return static_cast<int>(ret);
}

int test_reset_set_soft_start_ok_flag(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t flag = 0;
    print_begin_banner(style, "test_reset_set_soft_start_ok_flag");
    check_args(2, count, args, &inst_id, &flag, nullptr);
    const uint32_t ret = drv_reset_set_soft_start_ok_flag(flag);
    printf("drv_reset_set_soft_start_ok_flag:: inst_id:0x%x flag: %d ret %d \r\n", inst_id, static_cast<int>(flag),
           static_cast<int>(ret));
    print_result("%x", ret);
    print_end_banner(style, "test_reset_set_soft_start_ok_flag");
    return static_cast<int>(ret);
}

int test_reset_get_soft_start_ok_flag(int, char **) {
    uint32_t flag = 0;
    print_begin_banner(style, "test_reset_get_soft_start_ok_flag");
    const uint32_t ret = drv_reset_get_soft_start_ok_flag(&flag);
    printf("drv_reset_get_soft_start_ok_flag:: inst_id:0x%x flag: %d ret %d \r\n", DRV_INST_SELF,
           static_cast<int>(flag), static_cast<int>(ret));
    print_result("%x %x", ret, flag);
    print_end_banner(style, "test_reset_get_soft_start_ok_flag");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_reset_init", test_reset_init, "drv_reset_init   inst_id"},
    command_row{"drv_reset_deinit", test_reset_deinit, "drv_reset_deinit inst_id"},
    command_row{"drv_reset_chip", test_reset_chip, "drv_reset_chip  inst_id chip_id"},
    command_row{"drv_reset_board", test_reset_board, "drv_reset_board inst_id"},
    command_row{"drv_reset_self_board", test_reset_self_board, "drv_reset_self_board set_code"},
    command_row{"drv_reset_self_board_without_reboot", test_reset_self_board_without_reboot,
                "drv_reset_self_board_without_reboot void"},
    command_row{"drv_reset_peer_board", test_reset_peer_board, "drv_reset_peer_board void"},
    command_row{"drv_reset_get_code", test_reset_get_code, "drv_reset_get_code get_code"},
    command_row{"drv_reset_get_reason", test_reset_get_reason, "drv_reset_get_reason inst_id index"},
    command_row{"drv_reset_get_mode", test_reset_get_mode, "drv_reset_get_mode get_cool"},
    command_row{"drv_reset_sync_file_system", test_reset_sync_file_system, "drv_reset_sync_file_system void"},
    command_row{"drv_reset_get_button_status", test_reset_get_button_status, "drv_reset_get_button_status void"},
    command_row{"drv_reset_set_self_sys_ready", test_reset_set_self_sys_ready, "drv_reset_set_self_sys_ready set_mode"},
    command_row{"drv_reset_get_peer_sys_ready", test_reset_get_peer_sys_ready, "drv_reset_get_peer_sys_ready get_mode"},
    command_row{"drv_reset_set_soft_start_ok_flag", test_reset_set_soft_start_ok_flag,
                "drv_reset_set_soft_start_ok_flag set_flag"},
    command_row{"drv_reset_get_soft_start_ok_flag", test_reset_get_soft_start_ok_flag,
                "drv_reset_get_soft_start_ok_flag get_flag"},
};

static_assert(rows_are_sound(rows));

} // namespace

int reset_test(int count, char **args) {
    return run_module(rows, count, args);
}
