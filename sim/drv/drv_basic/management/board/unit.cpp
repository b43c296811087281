// The board or card as a unit, and the places around it.
#include "sim/drv/drv_basic/management/board/unit.h"

#include "sim/core/instance.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr device_kind chassis_slots{"sim_chassis", "slot"};
constexpr device_kind card_places{"sim_chassis", "card"};
constexpr device_kind presence{"sim_board", "presence"};
constexpr uint32_t slot_selector = 0xFF000000U;
constexpr uint32_t card_selector = 0xFFFFU;
constexpr uint32_t slot_max = 0xFFFFU;
constexpr uint32_t absent = 1;

std::string place_of_number(board &b, uint32_t number, bool is_on_board) {
    return is_on_board ? b.place(number << 24U | card_selector) : place_of_slot(b, number);
}

} // namespace

device unit(board &b, uint32_t inst_id) {
    return b.find(inst_id, units, 0);
}

uint32_t read_unit(uint32_t inst_id, const char *name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(unit(b, inst_id), name);
    });
}

uint32_t own_slot(board &b) {
    return slot_of_place(b.self()).value_or(0);
}

uint32_t peer_slot(board &b, uint32_t inst_id) {
    return b.get(unit(b, inst_id), "peer_slot");
}

uint32_t slot_range_limit(board &b, const char *name) {
    const auto limit = element_number(b.described().element(chassis_place, "sim_chassis", "slots", "range", name));
    refuse_if(!limit, error::not_supported);
    return static_cast<uint32_t>(*limit);
}

std::string place_of_slot(board &b, uint32_t slot_id) {
    refuse_if(slot_id > slot_max, error::no_such_device);
    return b.place(slot_selector | slot_id);
}

// The first board type entry that says where the cards are holds for the board.
bool cards_are_on_board(board &b) {
    for (const pugi::xml_node entry : b.described().node(b.self(), "board_mng", "board_type").children("entry")) {
        if (const auto on_board = element_number(named_child(entry, "card_on_slot_board"))) {
            return *on_board == 1;
        }
    }
    return false;
}

std::vector<uint32_t> card_numbers(board &b) {
    if (cards_are_on_board(b)) {
        return b.ids(b.self(), card_places);
    }
    std::vector<uint32_t> slots = b.ids(board::chassis(), chassis_slots);
    std::erase_if(slots, [&](uint32_t slot) {
        return b.get(b.find_at(board::chassis(), chassis_slots, slot), "type", 0) != card_slot;
    });
    return slots;
}

std::string place_of_card(board &b, uint32_t number) {
    const std::vector<uint32_t> known = card_numbers(b);
    refuse_if(known.empty(), error::not_supported);
    refuse_if(std::find(known.begin(), known.end(), number) == known.end(), error::no_such_device);
    return place_of_number(b, number, cards_are_on_board(b));
}

bool is_card(board &b, const std::string &place) {
    const std::vector<uint32_t> known = card_numbers(b);
    const bool is_on_board = cards_are_on_board(b);
    return std::any_of(known.begin(), known.end(),
                       [&](uint32_t number) { return place_of_number(b, number, is_on_board) == place; });
}

uint32_t online_status(board &b, const std::string &place) {
    if (!b.is_present(place) || !b.is_within_reach(place)) {
        return absent;
    }
    return b.get({place, presence, 0}, "status", b.is_seen(place) ? 0 : absent);
}

void tell(const finding &found, uint32_t *status, char *dfx, uint32_t size) {
    refuse_null(status, dfx);
    write_text(dfx, size, found.text);
    *status = found.status;
}

} // namespace kestro_sim
