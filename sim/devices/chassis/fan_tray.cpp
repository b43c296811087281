// Each tray has its share of the air; one that is not there moves none.
#include "sim/devices/chassis/fan_tray.h"

#include "sim/core/catalogue.h"
#include "sim/devices/chassis/slots.h"

namespace kestro_sim {

bool fan_tray::is_present(board &b, uint32_t slot_id) {
    const auto slot = b.find_at<chassis_slot::family>(board::chassis(), slot_id);
    refuse_if(b.get(slot, chassis_slot::type) != slot_type, error::no_such_device);
    return b.get_or(board::at<family>(board::chassis(), slot_id), present, 0) != 0;
}

uint32_t fan_tray::airflow(board &b) {
    constexpr uint32_t full = 100;
    const auto trays = b.all_at<family>(board::chassis());
    if (trays.empty()) {
        return full;
    }
    uint32_t sum = 0;
    for (const auto &tray : trays) {
        sum += b.get(tray, present) != 0 ? b.get(tray, percent) : 0;
    }
    return sum / static_cast<uint32_t>(trays.size());
}

device_list devices_of_fan_tray() {
    static constexpr const device_family *families[]{&fan_tray::family};
    return {families, {}};
}

} // namespace kestro_sim
