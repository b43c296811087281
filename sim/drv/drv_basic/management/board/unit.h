// What the parts of the board management family share: the board or card as a unit, its peer, places in the chassis,
// and how a check tells what it found.
#pragma once

#include "sim/core/finding.h"
#include "sim/drv/driver.h"

namespace kestro_sim {

// A board or card as a whole: one entry, 0.
inline constexpr device_kind units{"sim_board", "unit"};

device unit(board &b, uint32_t inst_id);

// Reads a register of the unit; what the unit lacks is not supported.
uint32_t read_unit(uint32_t inst_id, const char *name, uint32_t *value);

uint32_t own_slot(board &b);

// The place beside a main processing unit. A board without a peer refuses as not supported.
uint32_t peer_slot(board &b, uint32_t inst_id);

// "first" or "last" slot of the chassis.
uint32_t slot_range_limit(board &b, const char *name);

std::string place_of_slot(board &b, uint32_t slot_id);

// Cards stand in card slots of the chassis, or on the board itself.
bool cards_are_on_board(board &b);
std::vector<uint32_t> card_numbers(board &b);
std::string place_of_card(board &b, uint32_t number);
bool is_card(board &b, const std::string &place);

// 0 present, 1 absent, as the own board sees it. Software may take a board off line, or tell of one whose presence line
// ends elsewhere; an empty place is never on line.
uint32_t online_status(board &b, const std::string &place);

// Hands the outcome over; the text goes first, so that a refused one leaves the status untouched.
void tell(const finding &found, uint32_t *status, char *dfx, uint32_t size);

} // namespace kestro_sim
