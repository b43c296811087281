// How the EEPROMs of cards are divided, and what is noted of each card while it is tested.
#pragma once

#include <cstdint>

#include "selftest/report.h"

enum card_layout : uint32_t {
    unknown_card = 0,
    next_generation_card = 1,
    router_old_card = 2,
    qrm_old_card = 3,
    kv_lpu_card = 4,
};

// Cards are numbered from 0; what has no number below this is no card of a known number.
constexpr uint32_t card_numbers = 256;

// Tries the layouts one after the other, notes the first whose sections all lie where it says, and announces it. Always
// 0: a card that nobody has taught us is reported and tested all the same.
int recognise_card_layout(uint32_t inst_id, uint32_t card_number, report_sink sink);

// The layout that was recognised last; unknown_card when none was, or when the card's test has come to its end.
uint32_t card_layout_of(uint32_t card_number);
void set_card_layout(uint32_t card_number, uint32_t layout);

// A word per card for whoever tests it; the card test leaves it alone.
uint32_t card_value_of(uint32_t card_number);
void set_card_value(uint32_t card_number, uint32_t value);
