// digital_test: the dry contacts, inputs that sense and relays that switch a channel. A channel goes by the name of a
// chip on the command line, and by those of a type and an id in what is printed.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/chips/drv_digital.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

int test_digital_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_digital_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_digital_init(inst_id);
    printf("drv_digital_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_digital_init");
    return static_cast<int>(ret);
}

int test_digital_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_digital_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_digital_deinit(inst_id);
    printf("drv_digital_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_digital_deinit");
    return static_cast<int>(ret);
}

int test_digital_set_mode(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t mode = 0;
    print_begin_banner(style, "test_digital_set_mode");
    check_args(3, count, args, &inst_id, &chip_id, &mode);
    const uint32_t ret = drv_digital_set_mode(inst_id, chip_id, mode);
    printf("drv_digital_set_mode::inst_id:0x%x type:%d mode:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(mode), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_digital_set_mode");
    return static_cast<int>(ret);
}

int test_digital_set_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_digital_set_status");
    check_args(3, count, args, &inst_id, &chip_id, &status);
    const uint32_t ret = drv_digital_set_status(inst_id, chip_id, status);
    printf("drv_digital_set_status::inst_id:0x%x id:%d state:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(status), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_digital_set_status");
    return static_cast<int>(ret);
}

int test_digital_get_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_digital_get_status");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_digital_get_status(inst_id, chip_id, &status);
    printf("drv_digital_get_status::inst_id:0x%x id:%d state:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(status), ret);
    print_result("%x %x", ret, status);
    print_end_banner(style, "test_digital_get_status");
    return static_cast<int>(ret);
}

int test_digital_get_in_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t num = 0;
    print_begin_banner(style, "test_digital_get_in_num");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_digital_get_in_num(inst_id, &num);
    printf("drv_digital_get_in_num::inst_id:0x%x num:%d ret:0x%x\n", inst_id, static_cast<int>(num), ret);
    print_result("%x %x", ret, num);
    print_end_banner(style, "test_digital_get_in_num");
    return static_cast<int>(ret);
}

int test_digital_get_out_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t num = 0;
    print_begin_banner(style, "test_digital_get_out_num");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_digital_get_out_num(inst_id, &num);
    printf("drv_digital_get_out_num::inst_id:0x%x num:%d ret:0x%x\n", inst_id, static_cast<int>(num), ret);
    print_result("%x %x", ret, num);
    print_end_banner(style, "test_digital_get_out_num");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_digital_init", test_digital_init, "drv_digital_init        inst_id"},
    command_row{"drv_digital_deinit", test_digital_deinit, "drv_digital_deinit      inst_id"},
    command_row{"drv_digital_set_mode", test_digital_set_mode, "drv_digital_set_mode    inst_id chip_id mode"},
    command_row{"drv_digital_set_status", test_digital_set_status, "drv_digital_set_status  inst_id chip_id status"},
    command_row{"drv_digital_get_status", test_digital_get_status, "drv_digital_get_status  inst_id chip_id"},
    command_row{"drv_digital_get_in_num", test_digital_get_in_num, "drv_digital_get_in_num  inst_id"},
    command_row{"drv_digital_get_out_num", test_digital_get_out_num, "drv_digital_get_out_num inst_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int digital_test(int count, char **args) {
    return run_module(rows, count, args);
}
