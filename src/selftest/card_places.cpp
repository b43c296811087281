// Where a board has its cards.
#include "selftest/card_places.h"

#include "selftest/entry_walk.h"

bool cards_are_on_board(uint32_t inst_id) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "board_type");
    while (next_entry(&walk)) {
        uint32_t on_board = 0;
        if (read_element(walk, "card_on_slot_board", &on_board) == 0) {
            return on_board == 1;
        }
    }
    return false;
}
