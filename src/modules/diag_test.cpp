// diag_test: whether the diagnosis of the drivers comes up, and its commands with it.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/service/drv_diag_cmd.h"
#include "modules/diagnose_module.h"
#include "modules/modules.h"

namespace {

int test_diag_init(int /*count*/, char ** /*args*/) {
    uint32_t ret = drv_diag_init();
    if (ret != 0) {
        printf("drv_diag_init fail. ret 0x%x\n", ret);
        return -1;
    }
    ret = drv_diag_cmd_init();
    if (ret != 0) {
        printf("drv_diag_cmd_init fail.. ret 0x%x\n", ret);
        return -1;
    }
    puts("kestro_test diag_test_int success.");
    return 0;
}

constexpr std::array rows = {
    command_row{"test_diag_init", test_diag_init, "test_diag_init"},
};

static_assert(rows_are_sound(rows));

} // namespace

int diag_test(int count, char **args) {
    return run_diagnose_module(rows[0], count, args, "diag");
}
