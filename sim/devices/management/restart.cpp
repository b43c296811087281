// A desk does not reboot: a reset is noted as the board would find it after starting again.
#include "sim/devices/management/restart.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

namespace {
// Reasons 1 power-on, 2 button and 3 watchdog come from the description or the technician only.
constexpr uint32_t reset_by_command = 4;
} // namespace

// The reason register shifts: the latest comes in at 0, the oldest falls out.
void reset_control::note_reset(board &b, change &writes, const device_of<family> &control, start how) {
    uint32_t newer = reset_by_command;
    for (const auto &past : b.all_at<reset_reason::family>(control.instance)) {
        b.put(writes, past, reset_reason::reason, newer);
        newer = b.get(past, reset_reason::reason);
    }
    if (b.has(control, cool)) {
        b.put(writes, control, cool, static_cast<uint32_t>(how));
    }
}

device_list devices_of_restart() {
    static constexpr const device_family *families[]{&reset_control::family, &reset_chip::family,
                                                     &reset_reason::family};
    return {families, {}};
}

} // namespace kestro_sim
