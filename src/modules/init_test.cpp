// init_test: brings the drivers of a slot up, and down again. The board does so when it starts; by hand it is done for
// a card that was plugged in later. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_init.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int init_entry(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t slot = word_to_u32(args[0]);
    const uint32_t ret = drv_init_entry(slot);
    if (ret == 0) {
        printf("Succeed to init slot %x.\r\n", slot);
    } else {
        printf("Failed to init slot %x.\r\n", slot);
    }
    return static_cast<int>(ret);
}

int exit_entry(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t slot = word_to_u32(args[0]);
    const uint32_t ret = drv_exit_entry(slot);
    if (ret == 0) {
        printf("Succeed to exit slot %x.\r\n", slot);
    } else {
        printf("Failed to exit slot %x.\r\n", slot);
    }
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"init_entry", init_entry, "init_entry"},
    command_row{"exit_entry", exit_entry, "exit_entry"},
};

static_assert(rows_are_sound(rows));

} // namespace

int init_test(int count, char **args) {
    return run_module(rows, count, args);
}
