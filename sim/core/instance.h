// Instance ids: which board or card of the chassis an operation is meant for, as seen from the seat it is called from.
#pragma once

#include "sim/core/description.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kestro_sim {

// 0xFFFFFFFF is the seat's own board, 0xFF000000 with a slot number what sits in that slot, a card number in the top
// byte above 0xFFFF a card on the seat's board.
struct instance_id {
    enum class kind { self, slot, card } kind;
    uint32_t number; // of the slot or card
};

// Nothing for an id of no such form.
std::optional<instance_id> decode_instance(uint32_t inst_id);

// The absolute place ("slot9", "slot7/card1"). Nothing when the chassis has no such slot, or the seat's board no such
// place for a card.
std::optional<std::string> place_name(const description &chassis, std::string_view seat, const instance_id &id);

// What kinds of places there are. Nothing for the chassis itself.
std::optional<uint32_t> slot_of_place(std::string_view place);
std::optional<uint32_t> card_of_place(std::string_view place);
std::optional<uint32_t> type_of_slot(const description &chassis, uint32_t slot);

inline constexpr uint32_t main_processing_unit = 1;
inline constexpr uint32_t card_slot = 7;

// The management bus ends at the main processing units: any other board reaches itself and its own cards alone.
bool is_within_reach(const description &chassis, std::string_view seat, std::string_view place);

} // namespace kestro_sim
