// The board or card as a unit, and the places around it.
#include "sim/drv/board/unit.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr device_kind chassis_slots{"sim_chassis", "slot"};
constexpr device_kind card_places{"sim_chassis", "card"};
constexpr device_kind presence{"sim_board", "presence"};
constexpr uint32_t card_slot_type = 7;
constexpr uint32_t slot_selector = 0xFF000000U;
constexpr uint32_t card_selector = 0xFFFFU;
constexpr uint32_t slot_max = 0xFFFFU;
constexpr uint32_t absent = 1;

// No object of static duration: drivers are called from exit handlers too.
std::string self() {
    return std::string(self_instance);
}

std::string place_of_number(board &desk, uint32_t number, bool is_on_board) {
    return is_on_board ? desk.place(number << 24U | card_selector) : place_of_slot(desk, number);
}

} // namespace

device unit(board &desk, uint32_t inst_id) {
    return desk.find(inst_id, units, 0);
}

uint32_t read_unit(uint32_t inst_id, const char *name, uint32_t *value) {
    return operate([&](board &desk) {
        refuse_null(value);
        *value = desk.get(unit(desk, inst_id), name);
    });
}

uint32_t own_slot(board &desk) {
    const auto slot = element_number(desk.described().element(self_instance, "sim_chassis", "place", "self", "slot"));
    refuse_if(!slot, error::not_supported);
    return static_cast<uint32_t>(*slot);
}

uint32_t peer_slot(board &desk, uint32_t inst_id) {
    return desk.get(unit(desk, inst_id), "peer_slot");
}

uint32_t slot_range_limit(board &desk, const char *name) {
    const auto limit = element_number(desk.described().element(self_instance, "sim_chassis", "slots", "range", name));
    refuse_if(!limit, error::not_supported);
    return static_cast<uint32_t>(*limit);
}

std::string place_of_slot(board &desk, uint32_t slot_id) {
    refuse_if(slot_id > slot_max, error::no_such_device);
    return desk.place(slot_selector | slot_id);
}

// The first board type entry that says where the cards are holds for the board.
bool cards_are_on_board(board &desk) {
    for (const pugi::xml_node entry :
         desk.described().node(self_instance, "board_mng", "board_type").children("entry")) {
        if (const auto on_board = element_number(named_child(entry, "card_on_slot_board"))) {
            return *on_board == 1;
        }
    }
    return false;
}

std::vector<uint32_t> card_numbers(board &desk) {
    if (cards_are_on_board(desk)) {
        return desk.ids(self(), card_places);
    }
    std::vector<uint32_t> slots = desk.ids(self(), chassis_slots);
    std::erase_if(slots, [&](uint32_t slot) {
        return desk.get(desk.find_at(self(), chassis_slots, slot), "type", 0) != card_slot_type;
    });
    return slots;
}

std::string place_of_card(board &desk, uint32_t number) {
    const std::vector<uint32_t> known = card_numbers(desk);
    refuse_if(known.empty(), error::not_supported);
    refuse_if(std::find(known.begin(), known.end(), number) == known.end(), error::no_such_device);
    return place_of_number(desk, number, cards_are_on_board(desk));
}

bool is_card(board &desk, const std::string &place) {
    const std::vector<uint32_t> known = card_numbers(desk);
    const bool is_on_board = cards_are_on_board(desk);
    return std::any_of(known.begin(), known.end(),
                       [&](uint32_t number) { return place_of_number(desk, number, is_on_board) == place; });
}

uint32_t online_status(board &desk, const std::string &place) {
    return desk.is_present(place) ? desk.get({place, presence, 0}, "status", 0) : absent;
}

void add_fault(finding &found, const std::string &text) {
    found.status = 1;
    found.text += (found.text.empty() ? "" : ", ") + text;
}

void tell(const finding &found, uint32_t *status, char *dfx, uint32_t size) {
    refuse_null(status, dfx);
    write_text(dfx, size, found.text);
    *status = found.status;
}

} // namespace kestro_sim
