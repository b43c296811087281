// Slots are as they are built: what is in them makes no difference here.
#include "sim/devices/chassis/slots.h"

#include "sim/core/catalogue.h"
#include "sim/core/instance.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr uint32_t slot_selector = 0xFF000000U;
constexpr uint32_t card_selector = 0xFFFFU;
constexpr uint32_t slot_max = 0xFFFFU;

std::string place_of_number(board &b, uint32_t number, bool is_on_board) {
    return is_on_board ? b.place(number << 24U | card_selector) : place_of_slot(b, number);
}

} // namespace

uint32_t slot_range::limit(board &b, word_of<family> which) {
    const auto slot =
        element_number(b.described().element(chassis_place, family.module, family.node, "range", (*which).name));
    refuse_if(!slot, error::not_supported);
    return static_cast<uint32_t>(*slot);
}

std::vector<uint32_t> chassis_slot::of_type(board &b, uint32_t wanted) {
    std::vector<uint32_t> numbers;
    for (const auto &slot : b.all_at<family>(board::chassis())) {
        if (b.get(slot, type) == wanted) {
            numbers.push_back(slot.id);
        }
    }
    return numbers;
}

uint32_t own_slot(board &b) {
    return slot_of_place(b.self()).value_or(0);
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
    if (!cards_are_on_board(b)) {
        return chassis_slot::of_type(b, card_slot);
    }
    std::vector<uint32_t> numbers;
    for (const auto &card : b.all_at<place_for_card::family>(b.self())) {
        numbers.push_back(card.id);
    }
    return numbers;
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

device_list devices_of_slots() {
    static constexpr const device_family *families[]{&fitting::family, &slot_range::family, &chassis_slot::family,
                                                     &place_for_card::family};
    return {families, {}};
}

} // namespace kestro_sim
