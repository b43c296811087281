// The reason register shifts: the latest comes in at 0, the oldest falls out.
#include "sim/core/restart.h"

namespace kestro_sim {

namespace {

constexpr device_kind controls{"sim_reset", "board"};
constexpr device_kind reasons{"sim_reset", "reason"};

} // namespace

void note_restart(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind) {
    auto newer = static_cast<uint32_t>(reason);
    for (const uint32_t index : b.ids(place, reasons)) {
        const device kept{place, reasons, index};
        writes.put(cell_key(kept, "reason"), newer);
        newer = b.get(kept, "reason");
    }
    const device control{place, controls, 0};
    if (b.has(control, "cool")) {
        writes.put(cell_key(control, "cool"), static_cast<uint32_t>(kind));
    }
}

} // namespace kestro_sim
