// A desk does not reboot: a reset is noted as the board would find it after starting again.
#include "sim/devices/management/restart.h"

#include "sim/core/catalogue.h"
#include "sim/devices/storage/environment.h"

namespace kestro_sim {

// The reason register shifts: the latest comes in at 0, the oldest falls out.
void note_restart(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind) {
    auto newer = static_cast<uint32_t>(reason);
    for (const auto &past : b.all_at<reset_reason::family>(place)) {
        b.put(writes, past, reset_reason::reason, newer);
        newer = b.get(past, reset_reason::reason);
    }
    const auto control = board::at<reset_control::family>(place);
    if (b.has(control, reset_control::cool)) {
        b.put(writes, control, reset_control::cool, static_cast<uint32_t>(kind));
    }
    note_start(b, writes, place, reason, kind);
}

device_list devices_of_restart() {
    static constexpr const device_family *families[]{&reset_control::family, &reset_chip::family,
                                                     &reset_reason::family};
    return {families, {}};
}

} // namespace kestro_sim
