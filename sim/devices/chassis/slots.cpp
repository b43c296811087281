// Slots are as they are built.
#include "sim/devices/chassis/slots.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_slots() {
    static constexpr const device_family *families[]{&fitting::family, &slot_range::family, &chassis_slot::family,
                                                     &place_for_card::family};
    return {families, {}};
}

} // namespace kestro_sim
