// Drivers that were brought up belong to the board that was there then: the next one in its place begins without.
#include "sim/devices/management/bring_up.h"

#include "sim/core/catalogue.h"
#include "sim/core/fitting.h"

namespace kestro_sim {

namespace {

bool is_up(board &b, const device_of<bring_up::family> &drivers) {
    return b.get(drivers, bring_up::up) != 0 &&
           b.get(drivers, bring_up::fitting) == presence_changes(b, drivers.instance);
}

} // namespace

void bring_up::begin(board &b, const device_of<family> &drivers) {
    b.put_all(drivers, {{up, 1}, {fitting, presence_changes(b, drivers.instance)}});
}

void bring_up::end(board &b, const device_of<family> &drivers) {
    refuse_if(!is_up(b, drivers), error::not_ready);
    b.put(drivers, up, 0);
}

device_list devices_of_bring_up() {
    static constexpr const device_family *families[]{&bring_up::family};
    return {families, {}};
}

} // namespace kestro_sim
