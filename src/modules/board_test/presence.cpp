// board_test, which boards are there: presence of a board, of this board and of its peer, and whether a board is pushed
// in all the way.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

// Absence is reported as 1; every other value counts as presence.
constexpr uint32_t absent = 1;

void print_presence(uint32_t status, uint32_t ret) {
    if (ret != 0) {
        printf("failed, online_status:%d ret:0x%x\r\n", static_cast<int>(status), ret);
    } else if (status == absent) {
        puts("success, online_status: not present\r");
    } else {
        puts("success, online_status: present\r");
    }
}

} // namespace

int board_get_online_status(int count, char **args) {
    if (count < 1) {
        return usage("board_get_online_status", "inst_id");
    }
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_online_status(word_to_u32(args[0]), &status);
    print_presence(status, ret);
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_get_online_status_ex(int count, char **args) {
    if (count < 1) {
        return usage("board_get_online_status_ex", "inst_id");
    }
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_online_status_ex(word_to_u32(args[0]), &status);
    print_presence(status, ret);
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_set_online_status(int count, char **args) {
    if (count < 2) {
        return usage("board_set_online_status", "inst_id status");
    }
    const uint32_t ret = drv_board_set_online_status(word_to_u32(args[0]), word_to_u32(args[1]));
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_self_online_status(int, char **) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_self_online_status(&status);
    print_presence(status, ret);
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_peer_online_status(int, char **) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_peer_online_status(&status);
    print_presence(status, ret);
    print_result("%x %d", ret, static_cast<int>(status));
    return static_cast<int>(ret);
}

int board_get_fullin_status(int count, char **args) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_fullin_status(inst_or_self(count, args), &status);
    if (ret == 0) {
        printf("success, fullin_status:0x%04x\r\n", status);
    } else {
        printf("failed, fullin_status:0x%04x ret:0x%x\r\n", status, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_check_fullin_status(int count, char **args) {
    uint32_t status = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_fullin_status(inst_or_self(count, args), &status, dfx, dfx_size);
    if (ret == 0) {
        printf("success, fullin_status:0x%04x dfx_info:%s\r\n", status, dfx);
    } else {
        printf("failed, fullin_status:0x%04x dfx_info:%s ret:0x%x\r\n", status, dfx, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
