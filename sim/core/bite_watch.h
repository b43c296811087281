// What a watchdog that bites does to the programs that run on its board: they end, as those of a board that is reset.
//
// While a watchdog of the own board is on, a thread of the driver libraries waits for its moment, on either clock. A
// program that knew of none notices the bite at its next driver operation.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

// What an operation begins with: bites that are due are written down. Does not come back when the own board has been
// bitten since this process looked first.
void end_with_bitten_board(board &b);

// At the beginning of an operation and at its end: the moment to wait for may be another one.
void watch_for_bite(board &b);

} // namespace kestro_sim
