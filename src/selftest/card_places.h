// Where a board has its cards, and how the drivers are asked about one of them.
#pragma once

#include <cstdint>

constexpr uint32_t card_slot_type = 7;

// The selector of the card in a slot of the chassis.
inline uint32_t card_in_slot(uint32_t slot) {
    return 0xff000000 | (slot & 0xffff);
}

// The selector of a card that sits on the board itself.
inline uint32_t card_on_board(uint8_t card) {
    return static_cast<uint32_t>(card) << 24 | 0xffff;
}

// Whether the description says that the cards sit on the board, not in slots of their own.
bool cards_are_on_board(uint32_t inst_id);
