// Plug-in cards as their board sees them.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/power_domain.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t not_ready = 1;

void require_self(board &b, uint32_t inst_id) {
    refuse_if(b.instance(inst_id) != b.self(), error::not_supported);
}

} // namespace

uint32_t drv_board_get_card_ok(uint32_t inst_id, uint32_t slot_id, uint32_t *ok) {
    return operate([&](board &b) {
        refuse_null(ok);
        require_self(b, inst_id);
        *ok = power_domain::drives_card_ok(b, place_of_card(b, slot_id)) ? 0 : not_ready;
    });
}

// Empty places are listed too: whoever walks the list asks each for its presence.
uint32_t drv_board_get_card_list(uint32_t inst_id, drv_card_list *list) {
    return operate([&](board &b) {
        refuse_null(list);
        require_self(b, inst_id);
        const bool is_by_card = cards_are_on_board(b);
        const std::vector<uint32_t> numbers = card_numbers(b);
        refuse_if(numbers.size() > (is_by_card ? DRV_CARD_LIST_CARDS : DRV_CARD_LIST_SLOTS), error::too_small);
        drv_card_list filled{};
        filled.count = static_cast<uint32_t>(numbers.size());
        for (size_t i = 0; i < numbers.size(); ++i) {
            if (is_by_card) {
                filled.card_no[i] = static_cast<uint8_t>(numbers[i]);
            } else {
                filled.slot_id[i] = numbers[i];
            }
        }
        *list = filled;
    });
}
