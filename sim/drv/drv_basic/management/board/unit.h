// What the parts of the board management family share: the board or card as a unit, its peer, and how a check tells
// what it found.
#pragma once

#include "sim/core/finding.h"
#include "sim/devices/management/board_unit.h"
#include "sim/drv/driver.h"

namespace kestro_sim {

device_of<board_unit::family> unit(board &b, uint32_t inst_id);

// Reads a register of the unit; what the unit lacks is not supported.
uint32_t read_unit(uint32_t inst_id, word_of<board_unit::family> name, uint32_t *value);

// The slot beside a main processing unit. A board without a peer refuses as not supported.
uint32_t peer_slot(board &b, uint32_t inst_id);

// Hands the outcome over; the text goes first, so that a refused one leaves the status untouched.
void tell(const finding &found, uint32_t *status, char *dfx, uint32_t size);

} // namespace kestro_sim
