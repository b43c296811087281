// Pins and reserved memory are as they were written or built.
#include "sim/devices/bsp/processor_pins.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_processor_pins() {
    static constexpr const device_family *families[]{&gpio_pin::family, &reserved_memory::family};
    return {families, {}};
}

} // namespace kestro_sim
