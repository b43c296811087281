// slot_test: the slots of the chassis, what stands in them, and which slots a type of board or tray has. The chassis is
// one for all boards, so no sub-command takes an instance.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_slot.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int slot_get_type(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    uint32_t type = 0;
    const uint32_t ret = drv_slot_get_type(word_to_u32(args[0]), &type);
    printf("drv_slot_get_type:%d\r\n", static_cast<int>(type));
    return static_cast<int>(ret);
}

int slot_get_range(int, char **) {
    uint32_t slot_min = 0;
    uint32_t slot_max = 0;
    const uint32_t ret = drv_slot_get_range(&slot_min, &slot_max);
    printf("drv_slot_get_range, slot_min:%d, slot_max:%d \r\n", static_cast<int>(slot_min), static_cast<int>(slot_max));
    return static_cast<int>(ret);
}

int slot_get_num(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    uint32_t num = 0;
    const uint32_t ret = drv_slot_get_num(word_to_u32(args[0]), &num);
    printf("drv_slot_get_num:%d \r\n", static_cast<int>(num));
    return static_cast<int>(ret);
}

int slot_get_start_num(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    uint32_t start_num = 0;
    const uint32_t ret = drv_slot_get_start_num(word_to_u32(args[0]), &start_num);
    printf("drv_slot_get_start_num:%d \r\n", static_cast<int>(start_num));
    return static_cast<int>(ret);
}

int slot_get_list(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    drv_slot_list list{};
    const uint32_t ret = drv_slot_get_list(word_to_u32(args[0]), &list);
    printf("drv_slot_get_list, num:%d \r\n", static_cast<int>(list.num));
    // A driver may report more slots than its record has room for.
    for (uint32_t i = 0; i < list.num && i < DRV_SLOT_LIST_MAX; ++i) {
        printf("drv_slot_get_list, slot_id:%d \r\n", static_cast<int>(list.slot_id[i]));
    }
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"slot_get_type", slot_get_type, "slot_get_type"},
    command_row{"slot_get_range", slot_get_range, "slot_get_range"},
    command_row{"slot_get_num", slot_get_num, "slot_get_num"},
    command_row{"slot_get_start_num", slot_get_start_num, "slot_get_start_num"},
    command_row{"slot_get_list", slot_get_list, "slot_get_list"},
};

static_assert(rows_are_sound(rows));

} // namespace

int slot_test(int count, char **args) {
    return run_module(rows, count, args);
}
