// Slots are as they are built.
#include "sim/devices/chassis/slots.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_slots() {
    static constexpr const device_family *families[]{&own_place::family, &slot_range::family, &chassis_slot::family,
                                                     &card_place::family};
    return {families, {}};
}

} // namespace kestro_sim
