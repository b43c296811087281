// board_test: the two main processing units of the chassis, MPUA and MPUB, and the interrupt lines between boards.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

void print_check(uint32_t ret, uint32_t result, const char *dfx) {
    if (ret != 0) {
        printf("failed, dfx_msg:%s ret:0x%x\r\n", dfx, ret);
    } else if (result != 0) {
        printf("result:%d, dfx_msg:%s\r\n", static_cast<int>(result), dfx);
    } else {
        puts("result:OK\r");
    }
}

} // namespace

int board_get_mpu_status(int, char **) {
    uint32_t status = 0;
    char dfx[dfx_size] = {};
    const uint32_t ret = drv_board_get_mpu_status(DRV_INST_SELF, &status, dfx, dfx_size - 1);
    if (ret != 0) {
        printf("failed, dfx_msg:%s ret:0x%x\r\n", dfx, ret);
    } else if (status == 0) {
        puts("status:MPUA\r");
    } else if (status == 1) {
        puts("status:MPUB\r");
    } else {
        printf("status:Error status, dfx_msg:%s\r\n", dfx);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_check_mpu_status(int, char **) {
    uint32_t result = 0;
    char dfx[dfx_size] = {};
    const uint32_t ret = drv_board_check_mpu_status(DRV_INST_SELF, &result, dfx, dfx_size - 1);
    print_check(ret, result, dfx);
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_check_int_status(int count, char **args) {
    if (count < 2) {
        return usage("board_check_int_status", "index_id type");
    }
    const uint32_t index_id = word_to_u32(args[0]);
    const uint32_t type = word_to_u32(args[1]);
    uint32_t result = 0;
    char dfx[dfx_size] = {};
    const uint32_t ret = drv_board_check_int_status(index_id, type, &result, dfx, dfx_size - 1);
    print_check(ret, result, dfx);
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

} // namespace board_commands
