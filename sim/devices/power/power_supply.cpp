// Where supplies are, how their drivers come up, and what these may set.
#include "sim/devices/power/power_supply.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"
#include "sim/devices/chassis/slots.h"

namespace kestro_sim {

namespace {

using one = power_supply::one;

void clear_faults(board &b, const one &which) {
    b.put_all(which, {{power_supply::alarm_kept, 0}, {power_supply::bad_kept, 0}, {power_supply::low_kept, 0}});
}

void set_clock(board &b, const one &which, uint32_t seconds) {
    change writes;
    b.keep(writes, which, power_supply::clock_set, seconds);
    b.keep(writes, which, power_supply::clock_set_at, static_cast<uint64_t>(b.now()));
    b.commit(writes);
}

void switch_output(board &b, const one &which, uint32_t on) {
    refuse_if(on > 1, error::bad_value);
    if (on == b.get(which, power_supply::enabled)) {
        return;
    }
    if (on != 0) {
        change writes;
        b.put(writes, which, power_supply::enabled, 1);
        b.keep(writes, which, power_supply::enabled_at, static_cast<uint64_t>(b.now()));
        b.commit(writes);
    } else {
        b.put_all(which, {{power_supply::enabled, 0}, {power_supply::off_at, power_supply::clock(b, which)}});
    }
}

} // namespace

uint32_t power_supply::count(board &b, uint32_t slot_id) {
    const auto slot = b.find_at<chassis_slot::family>(board::chassis(), slot_id);
    refuse_if(b.get(slot, chassis_slot::type) != slot_type, error::no_such_device);
    refuse_if(!b.is_within_reach(place_of_slot(b, slot_id)), error::not_supported);
    uint32_t places = 0;
    for (const auto &each : b.all_at<family>(board::chassis())) {
        places += each.id / places_max == slot_id ? 1 : 0;
    }
    return places;
}

power_supply::one power_supply::find(board &b, uint32_t slot_id, uint32_t power_id) {
    const uint32_t places = count(b, slot_id);
    refuse_if(places == 0 || power_id >= places_max, error::no_such_device);
    return b.find_at<family>(board::chassis(), slot_id * places_max + power_id);
}

power_supply::one power_supply::find_answering(board &b, uint32_t slot_id, uint32_t power_id) {
    one which = find(b, slot_id, power_id);
    refuse_if(b.get(which, present) == 0, error::not_ready);
    return which;
}

bool power_supply::is_present(board &b, const one &which) {
    return b.get(which, present) != 0 && b.get(which, line_broken) == 0;
}

bool power_supply::has_input(board &b, const one &which) {
    return b.get(which, feed) >= b.get(which, feed_off);
}

bool power_supply::is_on_pmbus(board &b, const one &which) {
    return b.has(which, pmbus);
}

uint32_t power_supply::clock(board &b, const one &which) {
    if (!b.has(which, clock_set)) {
        return 0;
    }
    const auto set_at = static_cast<int64_t>(b.get_wide(which, clock_set_at));
    return b.get(which, clock_set) + static_cast<uint32_t>((b.now() - set_at) / nanoseconds_per_second);
}

void power_supply::bring_up(board &b, const one &which) {
    refuse_if(!is_on_pmbus(b, which) && !has_input(b, which), error::not_ready);
    b.put(which, is_up, 1);
}

void power_supply::take_down(board &b, const one &which) {
    b.put(which, is_up, 0);
}

void power_supply::set_property(board &b, const one &which, uint32_t number, uint32_t value) {
    refuse_if((number == 27 || number == 28 || number == 34) && !is_on_pmbus(b, which), error::not_supported);
    switch (number) {
    case 5:
        b.put(which, temp_limit, value);
        break;
    case 24:
        refuse_if(value > 1, error::bad_value);
        b.put(which, latch, b.get(which, latch_stuck) != 0 ? 0 : value);
        break;
    case 26:
        switch_output(b, which, value);
        break;
    case 27:
        b.put(which, delay, value);
        break;
    case 28:
        set_clock(b, which, value);
        break;
    case 29:
        clear_faults(b, which);
        break;
    case 34:
        b.put(which, temp_mode, value);
        break;
    default:
        refuse(error::not_supported);
    }
}

device_list devices_of_power_supply() {
    static constexpr const device_family *families[]{&power_supply::family, &power_build::family};
    return {families, {}};
}

} // namespace kestro_sim
