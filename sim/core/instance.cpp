// Instance ids against the slots of the chassis and the places for cards on a board ("sim_chassis").
#include "sim/core/instance.h"

#include "drv_types.h"

namespace kestro_sim {

namespace {

constexpr uint32_t slot_selector = 0xFF00U;
constexpr uint32_t card_marker = 0xFFFFU;

bool chassis_has_slot(const description &chassis, uint32_t slot) {
    const pugi::xml_node range = chassis.entry(chassis_place, "sim_chassis", "slots", "range");
    const auto first = element_number(named_child(range, "first"));
    const auto last = element_number(named_child(range, "last"));
    return first && last && slot >= *first && slot <= *last;
}

bool board_carries_card(const description &chassis, std::string_view seat, uint32_t card) {
    return !chassis.entry(seat, "sim_chassis", "card", std::to_string(card)).empty();
}

std::optional<uint32_t> number_behind(std::string_view text, std::string_view prefix) {
    if (!text.starts_with(prefix)) {
        return std::nullopt;
    }
    const auto number = parse_number(text.substr(prefix.size()));
    return number ? std::optional<uint32_t>(static_cast<uint32_t>(*number)) : std::nullopt;
}

} // namespace

std::optional<instance_id> decode_instance(uint32_t inst_id) {
    if (inst_id == DRV_INST_SELF) {
        return instance_id{instance_id::kind::self, 0};
    }
    if (inst_id >> 16 == slot_selector) {
        return instance_id{instance_id::kind::slot, inst_id & 0xFFFFU};
    }
    if ((inst_id & 0xFFFFU) == card_marker && (inst_id >> 16 & 0xFFU) == 0) {
        return instance_id{instance_id::kind::card, inst_id >> 24};
    }
    return std::nullopt;
}

std::optional<std::string> place_name(const description &chassis, std::string_view seat, const instance_id &id) {
    switch (id.kind) {
    case instance_id::kind::self:
        return std::string(seat);
    case instance_id::kind::slot:
        if (slot_of_place(seat) == id.number || chassis_has_slot(chassis, id.number)) {
            return slot_place(id.number);
        }
        break;
    case instance_id::kind::card:
        if (board_carries_card(chassis, seat, id.number)) {
            return card_place(seat, id.number);
        }
        break;
    }
    return std::nullopt;
}

std::optional<uint32_t> slot_of_place(std::string_view place) {
    return number_behind(place.substr(0, place.find('/')), "slot");
}

std::optional<uint32_t> card_of_place(std::string_view place) {
    const size_t slash = place.find('/');
    return slash == std::string_view::npos ? std::nullopt : number_behind(place.substr(slash + 1), "card");
}

std::optional<uint32_t> type_of_slot(const description &chassis, uint32_t slot) {
    const auto type =
        element_number(chassis.element(chassis_place, "sim_chassis", "slot", std::to_string(slot), "type"));
    return type ? std::optional<uint32_t>(static_cast<uint32_t>(*type)) : std::nullopt;
}

bool is_within_reach(const description &chassis, std::string_view seat, std::string_view place) {
    const auto slot = slot_of_place(seat);
    return (slot && type_of_slot(chassis, *slot) == main_processing_unit) || slot == slot_of_place(place);
}

} // namespace kestro_sim
