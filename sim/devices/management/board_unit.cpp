// What a board is answers as it is described or was written. Whether it is there depends on who looks.
#include "sim/devices/management/board_unit.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

uint32_t board_unit::read_bootstep(board &b, const device &which) {
    const device_of<family> unit{which};
    return b.get(unit, bootstep) & ~b.get(unit, bootstep_stuck);
}

uint32_t presence::online_status(board &b, const std::string &place) {
    if (!b.is_present(place) || !b.is_within_reach(place)) {
        return absent;
    }
    const uint32_t said = b.get(board::at<family>(place), status);
    if (said != wired) {
        return said;
    }
    return b.is_seen(place) ? present : absent;
}

bool presence::is_there(board &b, const std::string &place) {
    return b.is_present(place) && b.get(board::at<family>(place), status) != absent;
}

void presence::set_online_status(board &b, const std::string &place, uint32_t value) {
    refuse_if(value != present && value != absent, error::bad_value);
    b.put(board::at<family>(place), status, value);
}

device_list devices_of_board_unit() {
    static constexpr const device_family *families[]{&board_unit::family, &capability::family, &presence::family};
    return {families, {}};
}

} // namespace kestro_sim
