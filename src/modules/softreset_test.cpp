// softreset_test: whether the board started last by a soft reset, with its packets going on, or from anew.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_softreset.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::wide;

// The second word is what stands there until the driver answers: a failed read shows it.
int test_softreset_get_reset_type(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t reset_type = 0;
    print_begin_banner(style, "test_softreset_get_reset_type");
    check_args(2, count, args, &inst_id, &reset_type, nullptr);
    const uint32_t ret = drv_softreset_get_reset_type(inst_id, &reset_type);
    printf("drv_softreset_get_reset_type::inst_id:0x%x reset_type %d ret:0x%x\n", inst_id, static_cast<int>(reset_type),
           ret);
    print_end_banner(style, "test_softreset_get_reset_type");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_softreset_get_reset_type_test", test_softreset_get_reset_type,
                "drv_softreset_get_reset_type_test inst_id reset_type"},
};

static_assert(rows_are_sound(rows));

} // namespace

int softreset_test(int count, char **args) {
    return run_module(rows, count, args);
}
