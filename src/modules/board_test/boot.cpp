// board_test: start-up and what outlives it: how far this board and its peer have booted, the factory-reset flag, and
// the black box that keeps the last moments before a crash.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

// A boot step may be left over from a peer that has been pulled out since: only a present peer makes it good.
uint32_t confirm_peer(uint32_t step) {
    uint32_t online = 0;
    const uint32_t ret = drv_board_get_peer_online_status(&online);
    if (ret == 0 && online == 1) {
        puts("failed, peer board not online");
        return static_cast<uint32_t>(-1);
    }
    if (ret == 0 && online == 0) {
        printf("success, bootstep:%d\n", static_cast<int>(step));
    } else {
        printf("failed, peer online ret:0x%x\n", ret);
    }
    return ret;
}

} // namespace

int board_get_peer_bootstep(int, char **) {
    uint32_t step = 0;
    uint32_t ret = drv_board_get_peer_bootstep(DRV_INST_SELF, &step);
    if (ret == 0) {
        printf("bootstep:%d\n", static_cast<int>(step));
        ret = confirm_peer(step);
    } else {
        printf("failed, bootstep ret:0x%x\n", ret);
    }
    print_result("%x %x", ret, step);
    return static_cast<int>(ret);
}

// Says "peer" of the board's own step: scripts look for these words.
int board_get_self_bootstep(int, char **) {
    uint32_t step = 0;
    const uint32_t ret = drv_board_get_self_bootstep(DRV_INST_SELF, &step);
    if (ret == 0) {
        printf("success, peer bootstep:%d\n", static_cast<int>(step));
    } else {
        printf("failed, ret:0x%x\n", ret);
    }
    print_result("%x %x", ret, step);
    return static_cast<int>(ret);
}

int board_set_self_bootstep(int count, char **args) {
    if (count < 1) {
        return usage("board_set_self_bootstep", "self_bootstep");
    }
    const uint32_t step = word_to_u32(args[0]);
    const uint32_t ret = drv_board_set_self_bootstep(DRV_INST_SELF, step);
    if (ret == 0) {
        puts("success");
    } else {
        printf("failed, ret:0x%x\n", ret);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int board_get_factory_reset_flag(int, char **) {
    uint32_t flag = 0;
    const uint32_t ret = drv_board_get_factory_reset_flag(DRV_INST_SELF, &flag);
    if (ret == 0) {
        printf("success, flag:%d\n", static_cast<int>(flag));
    } else {
        printf("failed, ret:0x%x\n", ret);
    }
    print_result("%x %x", ret, flag);
    return static_cast<int>(ret);
}

int board_set_bbox_enable(int count, char **args) {
    if (count < 1) {
        return usage("board_set_bbox_enable", "enable_status");
    }
    const uint32_t enable = word_to_u32(args[0]);
    const uint32_t ret = drv_board_set_bbox_enable(DRV_INST_SELF, enable);
    if (ret == 0) {
        puts("set bbox enable_status success");
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_set_bbox_time(int count, char **args) {
    if (count < 1) {
        return usage("board_set_bbox_time", "time_value");
    }
    const uint32_t time_value = word_to_u32(args[0]);
    const uint32_t ret = drv_board_set_bbox_time(DRV_INST_SELF, time_value);
    if (ret == 0) {
        puts("set bbox time_value success");
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

} // namespace board_commands
