// board_test: isolation of switch fabrics from the board, by command and when a fabric board is not fully inserted.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_set_sfu_isolate(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 2, &inst_id);
    if (words == nullptr) {
        return usage("board_set_sfu_isolate", "inst_id id enable");
    }
    const uint32_t id = word_to_u32(words[0]);
    const uint32_t enable = word_to_u32(words[1]);
    const uint32_t ret = drv_board_set_sfu_isolate(inst_id, id, enable);
    if (ret == 0) {
        puts("set sfu isolate success");
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int board_get_sfu_isolate(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_sfu_isolate", "inst_id id");
    }
    const uint32_t id = word_to_u32(words[0]);
    uint32_t value = 0;
    const uint32_t ret = drv_board_get_sfu_isolate(inst_id, id, &value);
    if (ret == 0) {
        printf("sfu isolate:%d\n", static_cast<int>(value));
    }
    print_result("%x %x", ret, value);
    return static_cast<int>(ret);
}

int board_set_sfu_fullin_isolate_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 2, &inst_id);
    if (words == nullptr) {
        return usage("board_set_sfu_fullin_isolate_en", "inst_id id enable");
    }
    const uint32_t id = word_to_u32(words[0]);
    const uint32_t enable = word_to_u32(words[1]);
    const uint32_t ret = drv_board_set_sfu_fullin_isolate_en(inst_id, id, enable);
    if (ret == 0) {
        puts("set sfu fullin isolate en success");
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int board_get_sfu_fullin_isolate_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_sfu_fullin_isolate_en", "inst_id id");
    }
    const uint32_t id = word_to_u32(words[0]);
    uint32_t value = 0;
    const uint32_t ret = drv_board_get_sfu_fullin_isolate_en(inst_id, id, &value);
    if (ret == 0) {
        printf("sfu fullin isolate en:%d\n", static_cast<int>(value));
    }
    print_result("%x %x", ret, value);
    return static_cast<int>(ret);
}

} // namespace board_commands
