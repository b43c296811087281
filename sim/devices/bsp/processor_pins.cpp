// Pins and reserved memory are as they were written or built.
#include "sim/devices/bsp/processor_pins.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

void gpio_pin::drive(board &b, const device_of<family> &pin, uint32_t to) {
    refuse_if(b.get(pin, is_output) == 0, error::bad_value);
    b.put(pin, level, to);
}

device_list devices_of_processor_pins() {
    static constexpr const device_family *families[]{&gpio_pin::family, &reserved_memory::family};
    return {families, {}};
}

} // namespace kestro_sim
