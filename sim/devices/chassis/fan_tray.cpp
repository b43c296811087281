// Each tray has its share of the air; one that is not there moves none.
#include "sim/devices/chassis/fan_tray.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"
#include "sim/devices/chassis/fan.h"
#include "sim/devices/chassis/slots.h"

namespace kestro_sim {

bool fan_tray::is_present(board &b, uint32_t slot_id) {
    const auto slot = b.find_at<chassis_slot::family>(board::chassis(), slot_id);
    refuse_if(b.get(slot, chassis_slot::type) != slot_type, error::no_such_device);
    return b.get_or(board::at<family>(board::chassis(), slot_id), present, 0) != 0;
}

fan_tray::one fan_tray::find(board &b, uint32_t slot_id) {
    is_present(b, slot_id);
    refuse_if(!b.is_within_reach(place_of_slot(b, slot_id)), error::not_supported);
    return board::at<family>(board::chassis(), slot_id);
}

fan_tray::one fan_tray::find_present(board &b, uint32_t slot_id) {
    one tray = find(b, slot_id);
    refuse_if(!is_present(b, slot_id), error::not_ready);
    return tray;
}

fan_tray::one fan_tray::find_answering(board &b, uint32_t slot_id) {
    one tray = find_present(b, slot_id);
    refuse_if(b.get(tray, is_up) == 0, error::not_ready);
    return tray;
}

void fan_tray::bring_up(board &b, const one &tray) {
    change writes;
    b.put(writes, tray, is_up, 1);
    b.keep(writes, tray, up_since, static_cast<uint64_t>(b.now()));
    b.commit(writes);
}

void fan_tray::take_down(board &b, const one &tray) {
    b.put(tray, is_up, 0);
}

// One that was never begun has been up since the chassis was switched on.
bool fan_tray::is_coming_up(board &b, const one &tray) {
    if (!b.has(tray, up_since)) {
        return false;
    }
    const int64_t needed = b.get(tray, init_time) * nanoseconds_per_millisecond;
    return b.get(tray, init_stuck) != 0 || b.now() < static_cast<int64_t>(b.get_wide(tray, up_since)) + needed;
}

bool fan_tray::take_plug_history(board &b, const one &tray) {
    const uint32_t now_present = is_present(b, tray.id) ? 1 : 0;
    const bool has_changed = now_present != b.get(tray, was_present);
    if (has_changed) {
        b.put(tray, was_present, now_present);
    }
    return has_changed;
}

bool fan_tray::take_voltage_history(board &b, const one &tray) {
    const bool has_failed = b.get(tray, voltage_failed) != 0;
    if (has_failed) {
        b.put(tray, voltage_failed, 0);
    }
    return has_failed;
}

// Green and red diodes stand apart, yellow is a third: there is no colour 3.
void fan_tray::show(board &b, const one &tray, uint32_t to_color) {
    refuse_if(!b.has(tray, color), error::not_supported);
    refuse_if(to_color > 4 || to_color == 3, error::bad_value);
    if (b.get(tray, lamp_stuck) == 0) {
        b.put(tray, color, to_color);
    }
}

uint32_t fan_tray::airflow(board &b) {
    constexpr uint32_t full = 100;
    const auto trays = b.all_at<family>(board::chassis());
    if (trays.empty()) {
        return full;
    }
    uint32_t sum = 0;
    for (const auto &tray : trays) {
        sum += b.get(tray, present) != 0 ? fan::mean_percent(b, tray) : 0;
    }
    return sum / static_cast<uint32_t>(trays.size());
}

device_list devices_of_fan_tray() {
    static constexpr const device_family *families[]{&fan_tray::family};
    return {families, {}};
}

} // namespace kestro_sim
