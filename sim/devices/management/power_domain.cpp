// A domain is switched at once; what it feeds is ready later. That moment is not waited for: it follows from board time
// when somebody looks.
#include "sim/devices/management/power_domain.h"

#include "sim/core/catalogue.h"
#include "sim/devices/management/board_unit.h"

namespace kestro_sim {

namespace {

// A card keeps the charge from which it would tell its end, and a break that is shorter passes it by.
bool is_held_up(board &b, const device_of<power_domain::family> &domain) {
    const auto switched_off = static_cast<int64_t>(b.get_wide(domain, power_domain::until));
    return b.now() - switched_off < b.get(domain, power_domain::hold_up) * nanoseconds_per_millisecond;
}

} // namespace

// A switch that is stuck is not noticed by the driver: only the state tells.
void power_domain::switch_to(board &b, const device_of<family> &domain, uint32_t to) {
    if (b.get(domain, stuck) != 0) {
        return;
    }
    const bool was_on = b.get(domain, on) != 0;
    change writes;
    if (was_on && to == 0) {
        b.put(writes, domain, until, static_cast<uint64_t>(b.now()));
    }
    if (!was_on && to != 0 && !is_held_up(b, domain)) {
        b.put(writes, domain, since, static_cast<uint64_t>(b.now()));
    }
    b.put(writes, domain, on, to);
    b.commit(writes);
}

bool power_domain::is_ready(board &b, const device_of<family> &domain) {
    const auto switched_on = static_cast<int64_t>(b.get_wide(domain, since));
    return b.now() - switched_on >= b.get(domain, warm_up) * nanoseconds_per_millisecond;
}

// A card whose power cannot be switched has it.
bool power_domain::drives_card_ok(board &b, const std::string &place) {
    const auto power = board::at<family>(place, card_power);
    if (!b.is_present(place) || b.get_or(power, on, 1) == 0 || !is_ready(b, power)) {
        return false;
    }
    return b.get_or(board::at<board_unit::family>(place), board_unit::card_fault, 0) == 0;
}

device_list devices_of_power_domain() {
    static constexpr const device_family *families[]{&power_domain::family};
    return {families, {}};
}

} // namespace kestro_sim
