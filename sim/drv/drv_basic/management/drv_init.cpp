// Bring-up of the drivers of a slot.
#include "drv_basic/management/drv_init.h"

#include "sim/devices/management/bring_up.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t slot_selector = 0xFF000000U;
constexpr uint32_t slots_max = 0xFF;

// Plain slot numbers name no instance otherwise.
device_of<bring_up::family> drivers_of(board &b, uint32_t slot) {
    return b.find<bring_up::family>(slot <= slots_max ? slot_selector | slot : slot);
}

} // namespace

uint32_t drv_init_entry(uint32_t slot) {
    return operate([&](board &b) { bring_up::begin(b, drivers_of(b, slot)); });
}

uint32_t drv_exit_entry(uint32_t slot) {
    return operate([&](board &b) { bring_up::end(b, drivers_of(b, slot)); });
}
