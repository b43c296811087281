// The system watchdog of the board.
#pragma once

namespace kestro_sim {

// Lets the drivers look at the board, where the program has them: its watchdog is on as the run begins.
void look_at_watchdog();

} // namespace kestro_sim
