// usb_test: the board's USB ports and the sticks in them. Ports are counted over the whole board: the instance that may
// lead the words is shown and goes no further. The sub-commands without a port take no word at all.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/storage/drv_usb.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

int test_usb_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_usb_init");
    check_args(0, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_usb_init();
    printf("drv_usb_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_usb_init");
    return static_cast<int>(ret);
}

int test_usb_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_usb_deinit");
    check_args(0, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_usb_deinit();
    printf("drv_usb_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_usb_deinit");
    return static_cast<int>(ret);
}

int test_usb_get_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t num = 0;
    print_begin_banner(style, "test_usb_get_num");
    check_args(0, count, args, &inst_id, nullptr, nullptr);
    const uint32_t ret = drv_usb_get_num(&num);
    printf("drv_usb_get_num::inst_id:0x%x num:%d ret:0x%x\n", inst_id, static_cast<int>(num), ret);
    print_result("%x %x", ret, num);
    print_end_banner(style, "test_usb_get_num");
    return static_cast<int>(ret);
}

int test_usb_get_devmap(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    constexpr uint32_t len = 64;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char devmap[len + 1] = {};
    print_begin_banner(style, "test_usb_get_devmap");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_devmap(usb_id, devmap, len);
    printf("drv_usb_get_devmap::inst_id:0x%x usb_id:%d devmap:%s ret:0x%x\n", inst_id, static_cast<int>(usb_id), devmap,
           ret);
    print_result("%x %s", ret, devmap);
    print_end_banner(style, "test_usb_get_devmap");
    return static_cast<int>(ret);
}

// The line bears the name of the count; scripts know it so.
int test_usb_get_size(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t size = 0;
    print_begin_banner(style, "test_usb_get_size");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_size(usb_id, &size);
    printf("drv_usb_get_num::inst_id:0x%x usb_id:%d size:%d ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           static_cast<int>(size), ret);
    print_result("%x %x", ret, size);
    print_end_banner(style, "test_usb_get_size");
    return static_cast<int>(ret);
}

int test_usb_get_hotplug_ability(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t hotplug = 0;
    print_begin_banner(style, "test_usb_get_hotplug_ability");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_hotplug_ability(usb_id, &hotplug);
    printf("drv_usb_get_hotplug_ability::inst_id:0x%x usb_id:%d hotplug:%d ret:0x%x\n", inst_id,
           static_cast<int>(usb_id), static_cast<int>(hotplug), ret);
    print_result("%x %x", ret, hotplug);
    print_end_banner(style, "test_usb_get_hotplug_ability");
    return static_cast<int>(ret);
}

int test_usb_get_online_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t online = 0;
    print_begin_banner(style, "test_usb_get_online_status");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_online_status(usb_id, &online);
    printf("drv_usb_get_online_status::inst_id:0x%x usb_id:%d online:%d ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           static_cast<int>(online), ret);
    print_result("%x %x", ret, online);
    print_end_banner(style, "test_usb_get_online_status");
    return static_cast<int>(ret);
}

int test_usb_get_partition_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t num = 0;
    print_begin_banner(style, "test_usb_get_partition_num");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_partition_num(usb_id, &num);
    printf("drv_usb_get_partition_num::inst_id:0x%x usb_id:%d partit:%d ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           static_cast<int>(num), ret);
    print_result("%x %x", ret, num);
    print_end_banner(style, "test_usb_get_partition_num");
    return static_cast<int>(ret);
}

int test_usb_hotplug_regist_event(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    print_begin_banner(style, "test_usb_hotplug_regist_event");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_hotplug_regist_event(usb_id);
    printf("drv_usb_hotplug_regist_event::inst_id:0x%x usb_id:%d reg ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_usb_hotplug_regist_event");
    return static_cast<int>(ret);
}

int test_usb_power_on(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    print_begin_banner(style, "test_usb_power_on");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_power_on(usb_id);
    printf("drv_usb_power_on::inst_id:0x%x usb_id:%d power on ret:0x%x\n", inst_id, static_cast<int>(usb_id), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_usb_power_on");
    return static_cast<int>(ret);
}

int test_usb_power_off(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    print_begin_banner(style, "test_usb_power_off");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_power_off(usb_id);
    printf("drv_usb_power_off::inst_id:0x%x usb_id:%d power off ret:0x%x\n", inst_id, static_cast<int>(usb_id), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_usb_power_off");
    return static_cast<int>(ret);
}

int test_usb_check_fault(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t fault = 0;
    print_begin_banner(style, "test_usb_check_fault");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_check_fault(usb_id, &fault);
    printf("drv_usb_check_fault::inst_id:0x%x usb_id:%d check_fault:%d ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           static_cast<int>(fault), ret);
    print_result("%x %x", ret, fault);
    print_end_banner(style, "test_usb_check_fault");
    return static_cast<int>(ret);
}

int test_usb_recover_fault(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t result = 0;
    print_begin_banner(style, "test_usb_recover_fault");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_recover_fault(usb_id, &result);
    printf("drv_usb_recover_fault::inst_id:0x%x usb_id:%d recover_fault:%d ret:0x%x\n", inst_id,
           static_cast<int>(usb_id), static_cast<int>(result), ret);
    print_result("%x %x", ret, result);
    print_end_banner(style, "test_usb_recover_fault");
    return static_cast<int>(ret);
}

int test_usb_check_voltage_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t status = 0;
    print_begin_banner(style, "test_usb_check_voltage_status");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_check_voltage_status(usb_id, &status);
    printf("drv_usb_check_voltage_status::inst_id:0x%x usb_id:%d check_volt:%d ret:0x%x\n", inst_id,
           static_cast<int>(usb_id), static_cast<int>(status), ret);
    print_result("%x %x", ret, status);
    print_end_banner(style, "test_usb_check_voltage_status");
    return static_cast<int>(ret);
}

int test_usb_get_irq_no(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t usb_id = 0;
    uint32_t irq_no = 0;
    print_begin_banner(style, "test_usb_get_irq_no");
    check_args(2, count, args, &inst_id, &usb_id, nullptr);
    const uint32_t ret = drv_usb_get_irq_no(usb_id, &irq_no);
    printf("drv_usb_get_irq_no::inst_id:0x%x usb_id:%d irq_no:%d ret:0x%x\n", inst_id, static_cast<int>(usb_id),
           static_cast<int>(irq_no), ret);
    print_result("%x %x", ret, irq_no);
    print_end_banner(style, "test_usb_get_irq_no");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_usb_init", test_usb_init, "drv_usb_init"},
    command_row{"drv_usb_deinit", test_usb_deinit, "drv_usb_deinit"},
    command_row{"drv_usb_get_num", test_usb_get_num, "drv_usb_get_num"},
    command_row{"drv_usb_get_devmap", test_usb_get_devmap, "drv_usb_get_devmap           usb_id"},
    command_row{"drv_usb_get_size", test_usb_get_size, "drv_usb_get_size             usb_id"},
    command_row{"drv_usb_get_hotplug_ability", test_usb_get_hotplug_ability, "drv_usb_get_hotplug_ability  usb_id"},
    command_row{"drv_usb_get_online_status", test_usb_get_online_status, "drv_usb_get_online_status    usb_id"},
    command_row{"drv_usb_get_partition_num", test_usb_get_partition_num, "drv_usb_get_partition_num    usb_id"},
    command_row{"drv_usb_hotplug_regist_event", test_usb_hotplug_regist_event, "drv_usb_hotplug_regist_event usb_id"},
    command_row{"drv_usb_power_on", test_usb_power_on, "drv_usb_power_on      usb_id"},
    command_row{"drv_usb_power_off", test_usb_power_off, "drv_usb_power_off     usb_id"},
    command_row{"drv_usb_check_fault", test_usb_check_fault, "drv_usb_check_fault   usb_id"},
    command_row{"drv_usb_recover_fault", test_usb_recover_fault, "drv_usb_recover_fault usb_id"},
    command_row{"drv_usb_check_voltage_status", test_usb_check_voltage_status, "drv_usb_check_voltage_status usb_id"},
    command_row{"drv_usb_get_irq_no", test_usb_get_irq_no, "drv_usb_get_irq_no inst_id usb_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int usb_test(int count, char **args) {
    return run_module(rows, count, args);
}
