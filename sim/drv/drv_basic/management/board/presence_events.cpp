// Watches who is on line in the slots and card places that this board sees.
#include "sim/drv/drv_basic/management/board/presence_events.h"

#include "sim/core/instance.h"
#include "sim/drv/drv_basic/management/board/unit.h"

#include <map>

namespace kestro_sim {

namespace {

// What listeners have been told last, by place. Only touched within operations, and never freed: drivers are called
// from exit handlers too.
std::map<std::string, uint32_t> &told() {
    static auto *const states = new std::map<std::string, uint32_t>;
    return *states;
}

// A card on the board goes by its own number.
uint32_t number_of_place(const std::string &place) {
    const auto card = card_of_place(place);
    return card ? *card : slot_of_place(place).value_or(0);
}

std::vector<std::string> places(board &b) {
    std::vector<std::string> all;
    const uint32_t last = slot_range_limit(b, "last");
    for (uint32_t slot = slot_range_limit(b, "first"); slot <= last; ++slot) {
        all.push_back(place_of_slot(b, slot));
    }
    if (cards_are_on_board(b)) {
        for (const uint32_t card : card_numbers(b)) {
            all.push_back(place_of_card(b, card));
        }
    }
    return all;
}

// Gives whether there is something new of the place.
bool take_note(board &b, const std::string &place, event &news) {
    const uint32_t status = online_status(b, place);
    const auto known = told().find(place);
    if (known == told().end() || known->second == status) {
        return false;
    }
    known->second = status;
    news = {presence_topic, number_of_place(place), status == 0 ? 1U : 0U, {}};
    return true;
}

std::optional<due_events> look_around(board &b, int64_t after) {
    due_events found{after, {}};
    event news;
    for (const std::string &place : places(b)) {
        if (take_note(b, place, news)) {
            found.events.push_back(news);
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
        told()[place] = online_status(b, place);
    }
}

void announce_presence(board &b, const std::string &place) {
    event news;
    if (take_note(b, place, news)) {
        post(b, news);
    }
}

} // namespace kestro_sim
