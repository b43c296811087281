// board_test, where the boards are: slot numbers of this board and of its peer, physical and logical, the check of the
// slot number, and whether the card of a slot is ready.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

void print_slot(const char *whose, uint32_t slot_id, uint32_t ret) {
    if (ret == 0) {
        printf("success, %s slot_id:%d\r\n", whose, static_cast<int>(slot_id));
    } else {
        printf("failed, %s slot_id:%d ret:0x%x\r\n", whose, static_cast<int>(slot_id), ret);
    }
}

} // namespace

int board_get_self_slotid(int, char **) {
    uint32_t slot_id = 0;
    const uint32_t ret = drv_board_get_self_slotid(&slot_id);
    print_slot("self", slot_id, ret);
    print_result("%x %x", ret, slot_id);
    return static_cast<int>(ret);
}

int board_get_peer_slotid(int, char **) {
    uint32_t slot_id = 0;
    const uint32_t ret = drv_board_get_peer_slotid(&slot_id);
    print_slot("peer", slot_id, ret);
    print_result("%x %x", ret, slot_id);
    return static_cast<int>(ret);
}

int board_get_self_logic_slotid(int, char **) {
    uint32_t slot_id = 0;
    const uint32_t ret = drv_board_get_self_logic_slotid(&slot_id);
    print_slot("self logic", slot_id, ret);
    print_result("%x %x", ret, slot_id);
    return static_cast<int>(ret);
}

int board_get_peer_logic_slotid(int, char **) {
    uint32_t slot_id = 0;
    const uint32_t ret = drv_board_get_peer_logic_slotid(&slot_id);
    print_slot("peer logic", slot_id, ret);
    print_result("%x %x", ret, slot_id);
    return static_cast<int>(ret);
}

int board_check_slotid(int count, char **args) {
    uint32_t result = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_slotid(inst_or_self(count, args), &result, dfx, dfx_size);
    if (ret == 0) {
        printf("success, check_result:%d dfx:%s\r\n", static_cast<int>(result), dfx);
    } else {
        printf("failed, check_result:%d dfx:%s ret:0x%x\r\n", static_cast<int>(result), dfx, ret);
    }
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_get_card_ok(int count, char **args) {
    if (count < 1) {
        return usage("board_get_card_ok", "slot_id");
    }
    uint32_t ok = 0;
    const uint32_t ret = drv_board_get_card_ok(DRV_INST_SELF, word_to_u32(args[0]), &ok);
    if (ret == 0) {
        print_hex_dec("type", ok);
    }
    print_result("%x %x", ret, ok);
    return static_cast<int>(ret);
}

} // namespace board_commands
