// Watches who is on line in the slots and card places that this board sees.
#include "sim/drv/drv_basic/management/board/presence_events.h"

#include "sim/core/fitting.h"
#include "sim/core/instance.h"
#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/board_unit.h"

#include <map>
#include <utility>

namespace kestro_sim {

namespace {

struct state {
    uint32_t status;  // on line or not
    uint32_t changes; // how often something went or came by hand
};

// What listeners have been told last, by place. Only touched within operations, and never freed: drivers are called
// from exit handlers too.
std::map<std::string, state> &told() {
    static auto *const states = new std::map<std::string, state>;
    return *states;
}

state look_at(board &b, const std::string &place) {
    return {presence::online_status(b, place), presence_changes(b, place)};
}

// A card on the board goes by its own number.
uint32_t number_of_place(const std::string &place) {
    const auto card = card_of_place(place);
    return card ? *card : slot_of_place(place).value_or(0);
}

std::vector<std::string> places(board &b) {
    std::vector<std::string> all;
    const uint32_t last = slot_range::limit(b, slot_range::last);
    for (uint32_t slot = slot_range::limit(b, slot_range::first); slot <= last; ++slot) {
        all.push_back(place_of_slot(b, slot));
    }
    if (cards_are_on_board(b)) {
        for (const uint32_t card : card_numbers(b)) {
            all.push_back(place_of_card(b, card));
        }
    }
    return all;
}

// What is new of the place. A card that was pulled and plugged between two looks is there as before, and yet another
// one to its board: it went and came.
std::vector<event> take_note(board &b, const std::string &place) {
    const auto known = told().find(place);
    if (known == told().end()) {
        return {};
    }
    const state before = std::exchange(known->second, look_at(b, place));
    const bool is_there = known->second.status == presence::present;
    const event came{presence_topic, number_of_place(place), 1, {}};
    const event went{presence_topic, number_of_place(place), 0, {}};
    if (known->second.status != before.status) {
        return {is_there ? came : went};
    }
    return is_there && known->second.changes != before.changes ? std::vector<event>{went, came} : std::vector<event>{};
}

std::optional<due_events> look_around(board &b, int64_t after) {
    due_events found{after, {}};
    for (const std::string &place : places(b)) {
        for (event &news : take_note(b, place)) {
            found.events.push_back(std::move(news));
        }
    }
    return found.events.empty() ? std::nullopt : std::optional<due_events>(std::move(found));
}

} // namespace

void begin_to_watch_presence(board &b) {
    static bool is_source = false;
    if (!is_source) {
        add_event_source(presence_topic, look_around);
        is_source = true;
    }
    for (const std::string &place : places(b)) {
        told()[place] = look_at(b, place);
    }
}

void announce_presence(board &b, const std::string &place) {
    for (event &news : take_note(b, place)) {
        post(b, std::move(news));
    }
}

} // namespace kestro_sim
