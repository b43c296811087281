// board_test: the trusted platform module, whether it is fitted and whether it is active.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_get_tpm_online_status(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_tpm_online_status(inst_id, &status);
    if (ret == 0) {
        printf("success, tpm_online:0x%08x \r\n", status);
    } else {
        printf("failed, tpm_online:0x%08x ret:0x%x\r\n", status, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_get_tpm_active_status(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_tpm_active_status(inst_id, &status);
    if (ret == 0) {
        printf("success, tpm_active:0x%08x \r\n", status);
    } else {
        printf("failed, tpm_active:0x%08x ret:0x%x\r\n", status, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
