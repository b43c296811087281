// A sub-board without a presence line is taken to be there.
#include "sim/devices/management/subboard.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

bool subboard::is_absent(board &b, const device_of<family> &which) {
    return b.get_or(which, absent, 0) != 0;
}

device_list devices_of_subboard() {
    static constexpr const device_family *families[]{&subboard::family};
    return {families, {}};
}

} // namespace kestro_sim
