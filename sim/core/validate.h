// Checks of the merged chassis. Each throws description_error at the first thing that is wrong, in file order.
#pragma once

#include "sim/core/description.h"

namespace kestro_sim {

// The form: level tags, names, numbering, values.
void validate_form(const description &board);

// What the simulated devices need to be built: identity, EEPROM layouts, storage.
void validate_devices(const description &board);

// The registers of board management, sub-boards and the management bus: every name is known.
void validate_board_devices(const description &board);

} // namespace kestro_sim
