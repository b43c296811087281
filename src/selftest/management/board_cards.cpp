// The cards. Each one that is there loses its power for a moment, with the traffic that it carries.
#include "selftest/management/board_cards.h"

#include <algorithm>

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_slot.h"
#include "selftest/card_places.h"
#include "selftest/management/power_cycle.h"

namespace {

// The domain that feeds a card as a whole.
constexpr uint32_t card_power = 9;
constexpr uint32_t not_online = 1;

// The board reads the line "card ok", so it is the board that is asked, by the number of the slot or card.
int check_card_ok(uint32_t inst_id, uint32_t card, uint32_t number, report_sink sink) {
    uint32_t ok = 0;
    const uint32_t ret = drv_board_get_card_ok(inst_id, number, &ok);
    if (ret != 0) {
        report_append(sink, "Error  : get card 0x%x ok fail 0x%x.\r\n", card, ret);
        return -1;
    }
    if (ok != 0) {
        report_append(sink, "Error  : slot %u card ok is not ok %u.\r\n", number, ok);
        return -1;
    }
    report_append(sink, "Success: slot %u card ok is ok.\r\n", number);
    return 0;
}

int check_card_type(uint32_t card, report_sink sink) {
    uint32_t type = 0;
    const uint32_t ret = drv_board_get_type(card, &type);
    if (ret != 0 || type == 0 || type == UINT32_MAX) {
        report_append(sink, "Error  : get card 0x%x hard type fail 0x%x. type 0x%x \r\n", card, ret, type);
        return -1;
    }
    report_append(sink, "Success: card 0x%x type is 0x%x.\r\n", card, type);
    return 0;
}

int check_card_on_board(uint32_t inst_id, uint8_t number, report_sink sink) {
    const uint32_t card = card_on_board(number);
    uint32_t status = not_online;
    const uint32_t ret = drv_board_get_online_status(card, &status);
    if (ret != 0) {
        report_append(sink, "Error  : board card 0x%x get online fail 0x%x.\r\n", card, ret);
        return -1;
    }
    if (status == not_online) {
        report_append(sink, "Info   : board card 0x%x is not online.\r\n", card);
        return 0;
    }
    int result = power_cycle(card, card_power, sink);
    result |= check_card_ok(inst_id, card, number, sink);
    result |= check_card_type(card, sink);
    return result;
}

int check_cards_on_board(uint32_t inst_id, report_sink sink) {
    drv_card_list cards{};
    const uint32_t ret = drv_board_get_card_list(inst_id, &cards);
    if (ret != 0) {
        report_append(sink, "Error  : board get card lists fail 0x%x.\r\n", ret);
        return -1;
    }
    int result = 0;
    for (uint32_t i = 0; i < std::min(cards.count, DRV_CARD_LIST_CARDS); ++i) {
        result |= check_card_on_board(inst_id, cards.card_no[i], sink);
    }
    return result;
}

// The type comes first here: a card in a slot drives its line through the backplane, and gets the time that reading
// the type over the management bus takes.
int check_card_in_slot(uint32_t inst_id, uint32_t slot, report_sink sink) {
    const uint32_t card = card_in_slot(slot);
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_online_status(card, &status);
    if (ret != 0) {
        report_append(sink, "Error  : board card %u get online fail 0x%x.\r\n", slot, ret);
        return -1;
    }
    if (status == not_online) {
        report_append(sink, "Info   : board card %u is not online.\r\n", slot);
        return 0;
    }
    int result = power_cycle(card, card_power, sink);
    result |= check_card_type(card, sink);
    result |= check_card_ok(inst_id, card, slot, sink);
    return result;
}

bool takes_a_card(uint32_t slot) {
    uint32_t type = 0;
    return drv_slot_get_type(slot, &type) == 0 && type == card_slot_type;
}

int check_cards_in_slots(uint32_t inst_id, report_sink sink) {
    uint32_t start = 0;
    uint32_t end = 0;
    if (drv_slot_get_range(&start, &end) != 0) {
        return -1;
    }
    int result = 0;
    // Wider than a slot number, so that a range which ends at the last number ends at all.
    for (uint64_t slot = start; slot <= end; ++slot) {
        if (takes_a_card(static_cast<uint32_t>(slot))) {
            result |= check_card_in_slot(inst_id, static_cast<uint32_t>(slot), sink);
        }
    }
    return result;
}

} // namespace

int check_cards(uint32_t inst_id, report_sink sink) {
    if (cards_are_on_board(inst_id)) {
        report_append(sink, "Info   : card is on board.\r\n");
        return check_cards_on_board(inst_id, sink);
    }
    report_append(sink, "Info   : card is on slot.\r\n");
    return check_cards_in_slots(inst_id, sink);
}
