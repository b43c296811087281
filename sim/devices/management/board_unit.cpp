// What a board is answers as it is described or was written: there is nothing to work out.
#include "sim/devices/management/board_unit.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_board_unit() {
    static constexpr const device_family *families[]{&board_unit::family, &capability::family, &presence::family,
                                                     &master_control::family, &mastership::family};
    return {families, {}};
}

} // namespace kestro_sim
