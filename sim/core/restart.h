// What a restart leaves behind in a board or card: the reason register and the way it started.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

enum class restart_reason : uint32_t { power_on = 1, button = 2, watchdog = 3, command = 4 };
enum class restart_kind : uint32_t { warm = 0, cold = 1 };

// Adds the writes to a change. A place without such registers keeps nothing.
void note_restart(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind);

} // namespace kestro_sim
