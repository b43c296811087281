// How relays and inputs stand, by their modes and wires.
#include "sim/devices/chips/contacts.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

bool contact_output::is_closed(board &b, const device_of<family> &which) {
    if (b.has(which, stuck)) {
        return b.get(which, stuck) != 0;
    }
    const bool is_active = b.get(which, status) != 0;
    return is_active == (b.get(which, mode) == active_closed);
}

uint32_t contact_output::shown(board &b, const device_of<family> &which) {
    return is_closed(b, which) == (b.get(which, mode) == active_closed) ? 1 : 0;
}

uint32_t contact_input::status(board &b, const device_of<family> &which) {
    const bool is_closed =
        b.has(which, wired_to)
            ? contact_output::is_closed(b, b.find_at<contact_output::family>(which.instance, b.get(which, wired_to)))
            : b.get(which, closed) != 0;
    return is_closed == (b.get(which, mode) == active_closed) ? 1 : 0;
}

device_list devices_of_contacts() {
    static constexpr const device_family *families[]{&contact_input::family, &contact_output::family};
    return {families, {}};
}

} // namespace kestro_sim
