// Instance ids: which board or card of the chassis an operation is meant for.
#pragma once

#include "sim/core/description.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kestro_sim {

// 0xFFFFFFFF is the board itself, 0xFF000000 with a slot number what sits in that slot, a card number in the top byte
// above 0xFFFF a card on the board.
struct instance_id {
    enum class kind { self, slot, card } kind;
    uint32_t number; // of the slot or card
};

// Nothing for an id of no such form.
std::optional<instance_id> decode_instance(uint32_t inst_id);

// The name that modules carry ("self", "slot@5", "card@1"). The board's own slot is the board itself. Nothing when
// the chassis has no such slot, or the board no such place for a card.
std::optional<std::string> place_name(const description &board, const instance_id &id);

// A slot may be empty: what is there has an identity.
bool is_present(const description &board, std::string_view place);

} // namespace kestro_sim
