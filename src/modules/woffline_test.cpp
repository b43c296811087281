// woffline_test: the watch over the two power lines of the board, down (0) and up (1): what it finds here and at the
// peer, its interrupt, and whether the board is cut off from the switch fabrics while a line is without power.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/protection/drv_woffline.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

int test_woffline_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_woffline_init");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_woffline_init(inst_id);
    printf("drv_woffline_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_woffline_init");
    return static_cast<int>(ret);
}

int test_woffline_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_woffline_deinit");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_woffline_deinit(inst_id);
    printf("drv_woffline_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_woffline_deinit");
    return static_cast<int>(ret);
}

int test_woffline_set_en_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_set_en_state");
    check_args(2, count, args, &inst_id, &enable, nullptr);
    const uint32_t ret = drv_woffline_set_en_state(inst_id, enable);
    printf("drv_woffline_set_en_state::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_woffline_set_en_state");
    return static_cast<int>(ret);
}

int test_woffline_get_en_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_get_en_state");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_woffline_get_en_state(inst_id, &enable);
    printf("drv_woffline_get_en_state::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable), ret);
    print_result("%x %x", ret, enable);
    print_end_banner(style, "test_woffline_get_en_state");
    return static_cast<int>(ret);
}

int test_woffline_get_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_woffline_get_state");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_woffline_get_state(inst_id, chip_id, &state);
    printf("drv_woffline_get_state::inst_id:0x%x id:%d state:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(state), ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_woffline_get_state");
    return static_cast<int>(ret);
}

// The line calls the peer's state "enable".
int test_woffline_get_peer_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_woffline_get_peer_state");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_woffline_get_peer_state(inst_id, chip_id, &state);
    printf("drv_woffline_get_peer_state::inst_id:0x%x id:%d enable:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(state), ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_woffline_get_peer_state");
    return static_cast<int>(ret);
}

int test_woffline_set_irq_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_set_irq_enable");
    check_args(2, count, args, &inst_id, &enable, nullptr);
    const uint32_t ret = drv_woffline_set_irq_enable(inst_id, enable);
    printf("drv_woffline_set_irq_enable::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_woffline_set_irq_enable");
    return static_cast<int>(ret);
}

int test_woffline_get_irq_enable(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_get_irq_enable");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_woffline_get_irq_enable(inst_id, &enable);
    printf("drv_woffline_get_irq_enable::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable), ret);
    print_result("%x %x", ret, enable);
    print_end_banner(style, "test_woffline_get_irq_enable");
    return static_cast<int>(ret);
}

int test_woffline_get_irq_state(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t chip_id = 0;
    uint32_t state = 0;
    print_begin_banner(style, "test_woffline_get_irq_state");
    check_args(2, count, args, &inst_id, &chip_id, nullptr);
    const uint32_t ret = drv_woffline_get_irq_state(inst_id, chip_id, &state);
    printf("drv_woffline_get_irq_state::inst_id:0x%x id:%d state:%d ret:0x%x\n", inst_id, static_cast<int>(chip_id),
           static_cast<int>(state), ret);
    print_result("%x %x", ret, state);
    print_end_banner(style, "test_woffline_get_irq_state");
    return static_cast<int>(ret);
}

// Both lines of the isolation spell the operation out.
int test_woffline_set_sfu_isolate_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_set_sfu_isolate_en");
    check_args(2, count, args, &inst_id, &enable, nullptr);
    const uint32_t ret = drv_woffline_set_sfu_isolate_en(inst_id, enable);
    printf("drv_woffline_set_sfu_isolate_enable::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_woffline_set_sfu_isolate_en");
    return static_cast<int>(ret);
}

int test_woffline_get_sfu_isolate_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t enable = 0;
    print_begin_banner(style, "test_woffline_get_sfu_isolate_en");
    check_args(1, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_woffline_get_sfu_isolate_en(inst_id, &enable);
    printf("drv_woffline_get_sfu_isolate_enable::inst_id:0x%x enable:%d ret:0x%x\n", inst_id, static_cast<int>(enable),
           ret);
    print_result("%x %x", ret, enable);
    print_end_banner(style, "test_woffline_get_sfu_isolate_en");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_woffline_init", test_woffline_init, "drv_woffline_init    inst_id"},
    command_row{"drv_woffline_deinit", test_woffline_deinit, "drv_woffline_deinit  inst_id"},
    command_row{"drv_woffline_set_en_state", test_woffline_set_en_state, "drv_woffline_set_en_state   inst_id enable"},
    command_row{"drv_woffline_get_en_state", test_woffline_get_en_state, "drv_woffline_get_en_state   inst_id"},
    command_row{"drv_woffline_get_state", test_woffline_get_state, "drv_woffline_get_state      inst_id chip_id"},
    command_row{"drv_woffline_get_peer_state", test_woffline_get_peer_state,
                "drv_woffline_get_peer_state inst_id chip_id"},
    command_row{"drv_woffline_set_irq_enable", test_woffline_set_irq_enable,
                "drv_woffline_set_irq_enable inst_id enable"},
    command_row{"drv_woffline_get_irq_enable", test_woffline_get_irq_enable, "drv_woffline_get_irq_enable inst_id"},
    command_row{"drv_woffline_get_irq_state", test_woffline_get_irq_state,
                "drv_woffline_get_irq_state  inst_id chip_id"},
    command_row{"drv_woffline_set_sfu_isolate_en", test_woffline_set_sfu_isolate_en,
                "drv_woffline_set_sfu_isolate_en   inst_id enable"},
    command_row{"drv_woffline_get_sfu_isolate_en", test_woffline_get_sfu_isolate_en,
                "drv_woffline_get_sfu_isolate_en   inst_id "},
};

static_assert(rows_are_sound(rows));

} // namespace

int woffline_test(int count, char **args) {
    return run_module(rows, count, args);
}
