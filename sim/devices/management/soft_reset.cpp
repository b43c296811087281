// What the last reset was to the packets.
#include "sim/devices/management/soft_reset.h"

#include "sim/core/catalogue.h"
#include "sim/devices/management/restart.h"

namespace kestro_sim {

reset_type soft_reset::last(board &b, const device_of<family> &control) {
    refuse_if(b.get(control, support) == 0, error::not_supported);
    const auto reason = b.get(board::at<reset_reason::family>(control.instance), reset_reason::reason);
    if (static_cast<restart_reason>(reason) == restart_reason::power_on) {
        return reset_type::power_on;
    }
    const auto kind = b.get(board::at<reset_control::family>(control.instance), reset_control::cool);
    return static_cast<restart_kind>(kind) == restart_kind::warm ? reset_type::soft : reset_type::hard;
}

device_list devices_of_soft_reset() {
    static constexpr const device_family *families[]{&soft_reset::family};
    return {families, {}};
}

} // namespace kestro_sim
