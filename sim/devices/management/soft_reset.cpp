// What the last reset was to the packets.
#include "sim/devices/management/soft_reset.h"

#include "sim/core/catalogue.h"
#include "sim/devices/management/restart.h"

namespace kestro_sim {

namespace {

reset_type recorded(board &b, const std::string &place) {
    const auto reason = b.get(board::at<reset_reason::family>(place), reset_reason::reason);
    if (static_cast<restart_reason>(reason) == restart_reason::power_on) {
        return reset_type::power_on;
    }
    const auto kind = b.get(board::at<reset_control::family>(place), reset_control::cool);
    return static_cast<restart_kind>(kind) == restart_kind::warm ? reset_type::soft : reset_type::hard;
}

} // namespace

uint32_t soft_reset::last(board &b, const device_of<family> &control) {
    refuse_if(b.get(control, support) == 0, error::not_supported);
    if (b.has(control, stuck_at)) {
        return b.get(control, stuck_at);
    }
    return static_cast<uint32_t>(recorded(b, control.instance));
}

device_list devices_of_soft_reset() {
    static constexpr const device_family *families[]{&soft_reset::family};
    return {families, {}};
}

} // namespace kestro_sim
