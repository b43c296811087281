// board_test: bill-of-material numbers, of the board and of its sub-boards.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_subboard.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_get_bom_id(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t bom_id = 0;
    const uint32_t ret = drv_board_get_bom_id(inst_id, &bom_id);
    if (ret == 0) {
        printf("success, bom id:0x%08x \r\n", bom_id);
    } else {
        printf("failed, bom id:0x%08x ret:0x%x\r\n", bom_id, ret);
    }
    print_result("%x %x", ret, bom_id);
    return static_cast<int>(ret);
}

int subboard_get_bom_id(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_bom_id", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t bom_id = 0;
    const uint32_t ret = drv_subboard_get_bom_id(inst_id, subboard_id, &bom_id);
    if (ret == 0) {
        printf("success, bom id:0x%08x \r\n", bom_id);
    }
    print_result("%x %x", ret, bom_id);
    return static_cast<int>(ret);
}

} // namespace board_commands
