// Instance ids against the description's slots ("sim_chassis") and identities ("sim_identity").
#include "sim/core/instance.h"

#include "drv_types.h"

namespace kestro_sim {

namespace {

constexpr uint32_t slot_selector = 0xFF00U;
constexpr uint32_t card_marker = 0xFFFFU;

bool chassis_has_slot(const description &board, uint32_t slot) {
    const pugi::xml_node range = board.entry(self_instance, "sim_chassis", "slots", "range");
    const auto first = element_number(named_child(range, "first"));
    const auto last = element_number(named_child(range, "last"));
    return first && last && slot >= *first && slot <= *last;
}

bool board_carries_card(const description &board, uint32_t card) {
    return !board.entry(self_instance, "sim_chassis", "card", std::to_string(card)).empty();
}

bool is_own_slot(const description &board, uint32_t slot) {
    return element_number(board.element(self_instance, "sim_chassis", "place", "self", "slot")) == slot;
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

std::optional<std::string> place_name(const description &board, const instance_id &id) {
    switch (id.kind) {
    case instance_id::kind::self:
        return std::string(self_instance);
    case instance_id::kind::slot:
        if (is_own_slot(board, id.number)) {
            return std::string(self_instance);
        }
        if (chassis_has_slot(board, id.number)) {
            return "slot@" + std::to_string(id.number);
        }
        break;
    case instance_id::kind::card:
        if (board_carries_card(board, id.number)) {
            return "card@" + std::to_string(id.number);
        }
        break;
    }
    return std::nullopt;
}

bool is_present(const description &board, std::string_view place) {
    return !board.module(place, "sim_identity").empty();
}

} // namespace kestro_sim
