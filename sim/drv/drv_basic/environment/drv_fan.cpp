// Fan trays, by slot. Their presence lines end at the main processing units.
#include "drv_basic/environment/drv_fan.h"

#include "sim/devices/chassis/fan_tray.h"
#include "sim/devices/chassis/slots.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_fan_get_online_status(uint32_t slot_id, uint32_t *online) {
    return operate([&](board &b) {
        refuse_null(online);
        const bool is_present = fan_tray::is_present(b, slot_id);
        refuse_if(!b.is_within_reach(place_of_slot(b, slot_id)), error::not_supported);
        *online = is_present ? 1 : 0;
    });
}
