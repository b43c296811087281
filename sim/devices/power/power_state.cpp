// What a supply does follows from its feed, its load and what is broken in it.
#include "sim/devices/power/power_state.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"
#include "sim/devices/environment/temperature.h"

#include <algorithm>

namespace kestro_sim {

namespace {

using one = power_supply::one;

enum fault_bit : uint32_t { fan = 0x01, communication = 0x02, over_voltage = 0x04, over_current = 0x08, other = 0x10 };

uint32_t divided(uint64_t dividend, uint64_t divisor) {
    return divisor == 0 ? 0 : static_cast<uint32_t>(dividend / divisor);
}

bool is_switched_on(board &b, const one &which) {
    if (b.get(which, power_supply::enabled) == 0) {
        return false;
    }
    if (!b.has(which, power_supply::enabled_at)) {
        return true; // since long: nobody has switched it
    }
    const auto since = static_cast<int64_t>(b.get_wide(which, power_supply::enabled_at));
    return b.now() - since >= b.get(which, power_supply::delay) * nanoseconds_per_second;
}

// A feed that is there but too low is a fault; without any feed there is nothing to measure, and the supply is just
// off.
uint32_t input_status(board &b, const one &which, const power_state &state) {
    const uint32_t feed = b.get(which, power_supply::feed);
    if (feed == 0) {
        return power_status::input_off;
    }
    if (!state.has_input) {
        return power_status::input_off | power_status::input_fault;
    }
    if (feed > b.get(which, power_supply::feed_high)) {
        return power_status::fault;
    }
    return state.is_input_low ? power_status::input_warning : 0;
}

void work_out_flow(board &b, const one &which, power_state &state) {
    const uint32_t feed = b.get(which, power_supply::feed);
    state.output_mv = b.get(which, power_supply::output);
    state.output_watts = b.get(which, power_supply::load);
    state.output_ma = divided(uint64_t{state.output_watts} * 1000000, state.output_mv);
    state.input_watts = divided(uint64_t{state.output_watts} * 1000, b.get(which, power_supply::efficiency));
    state.input_ma = divided(uint64_t{state.input_watts} * 1000000, feed);
}

// Fans turn slowly at no load and fully at the rated power.
void work_out_heat(board &b, const one &which, power_state &state) {
    constexpr uint32_t idle_percent = 30;
    const uint32_t rated = b.get(which, power_supply::rated);
    const auto air = static_cast<int32_t>(b.get(board::at<ambient::family>(board::chassis()), ambient::celsius));
    const uint32_t heat = divided(uint64_t{b.get(which, power_supply::rise)} * state.output_watts, rated);
    state.celsius = static_cast<uint32_t>(std::max(air, 0)) + heat;
    if (state.has_input && state.status_fans == 0) {
        state.fan_percent =
            std::min(idle_percent + divided(uint64_t{100 - idle_percent} * state.output_watts, rated), 100U);
        state.fan_speed = divided(uint64_t{b.get(which, power_supply::fan_speed_max)} * state.fan_percent, 100);
    }
    if (state.celsius > b.get_or(which, power_supply::temp_limit, UINT32_MAX)) {
        state.status_temperature = power_status::fault;
    }
}

} // namespace

power_state state_of(board &b, const one &which) {
    const uint32_t faults = b.get(which, power_supply::faults);
    const uint32_t feed = b.get(which, power_supply::feed);
    const auto when = [faults](uint32_t fault, uint32_t status) { return (faults & fault) != 0 ? status : 0U; };
    power_state state{};
    state.has_input = power_supply::has_input(b, which);
    state.is_input_low = state.has_input && feed < b.get(which, power_supply::feed_low);
    state.status_input = input_status(b, which, state);
    state.status_vout = when(over_voltage, power_status::fault);
    state.status_iout = when(over_current, power_status::fault);
    state.status_cml = when(communication, power_status::communication);
    state.status_specific = when(other, power_status::something);
    state.status_fans = when(fan, power_status::fault);

    const bool should_give = state.has_input && is_switched_on(b, which);
    const bool is_broken = ((state.status_vout | state.status_iout) & power_status::fault) != 0 ||
                           state.status_input == power_status::fault;
    state.is_output_on = should_give && !is_broken;
    state.is_lost_to_fault = should_give && is_broken;
    if (state.is_output_on) {
        work_out_flow(b, which, state);
    }
    work_out_heat(b, which, state);
    return state;
}

uint32_t status_word(const power_state &state) {
    const auto when = [](bool condition, uint32_t bit) { return condition ? bit : 0U; };
    return when(state.status_vout != 0, 0x8000) | when(state.status_iout != 0, 0x4000) |
           when(state.status_input != 0, 0x2000) | when(state.status_specific != 0, 0x1000) |
           when(!state.is_output_on, 0x0800) | when(state.status_fans != 0, 0x0400) |
           when(!state.is_output_on, 0x0040) | when((state.status_vout & power_status::fault) != 0, 0x0020) |
           when((state.status_iout & power_status::fault) != 0, 0x0010) |
           when((state.status_input & power_status::input_fault) != 0, 0x0008) |
           when(state.status_temperature != 0, 0x0004) | when(state.status_cml != 0, 0x0002);
}

device_list devices_of_power_state() {
    return {};
}

} // namespace kestro_sim
