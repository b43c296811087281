// board_test: the cards of the board, the plug-in cards' part of the board description, and the notice when a board
// comes or goes.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_pic.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_get_card_list(int, char **) {
    drv_card_list list{};
    const uint32_t ret = drv_board_get_card_list(DRV_INST_SELF, &list);
    if (ret == 0) {
        printf("card list num is %d\n", static_cast<int>(list.count));
        // Boards with cards on the board itself count up to 32 one-byte card numbers: the record ends here all the
        // same.
        for (uint32_t i = 0; i < list.count && i < DRV_CARD_LIST_SLOTS; ++i) {
            printf("card_list[%d]:%d\n", static_cast<int>(i), static_cast<int>(list.slot_id[i]));
        }
    }
    print_result("%x %x", ret, list.count);
    return static_cast<int>(ret);
}

int board_pic_xml_load(int count, char **args) {
    if (count < 1) {
        return usage("board_pic_xml_load", "inst_id");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_pic_xml_load(inst_id);
    if (ret == 0) {
        puts("board pic xml load success\r");
    } else {
        printf("board pic xml load failed, ret:0x%x\r\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_pic_xml_unload(int count, char **args) {
    if (count < 1) {
        return usage("board_pic_xml_unload", "inst_id");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_pic_xml_unload(inst_id);
    if (ret == 0) {
        puts("board pic xml unload success\r");
    } else {
        printf("board pic xml unload failed, ret:0x%x\r\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

// Registering only shows that the driver's entry point answers: nobody stays to be called, so the handler is null.
int board_in_out_reg(int, char **) {
    const uint32_t ret = drv_board_in_out_reg(nullptr, nullptr, "stub_string", 0);
    if (ret == 0) {
        puts("success");
    } else {
        printf("failed, ret:0x%x\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_in_out_unreg(int, char **) {
    const uint32_t ret = drv_board_in_out_unreg(nullptr);
    if (ret == 0) {
        puts("success");
    } else {
        printf("failed, ret:0x%x\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

} // namespace board_commands
