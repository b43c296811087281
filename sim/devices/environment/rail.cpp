// How rails keep their peaks and judge themselves, and what the status bits of their sources mean.
#include "sim/devices/environment/rail.h"

#include "sim/core/catalogue.h"
#include "sim/devices/environment/status_bits.h"

#include <algorithm>
#include <cstdio>

namespace kestro_sim {

namespace {

constexpr status_bit regulator_bits[] = {
    {0x20, "output over-voltage"}, {0x10, "output over-current"}, {0x08, "input under-voltage"},
    {0x04, "over-temperature"},    {0x02, "communication fault"},
};
constexpr status_bit stage_bits[] = {
    {0x01, "power not good"},
    {0x02, "output short"},
    {0x04, "over-temperature"},
};

std::string in_millivolts(uint32_t value) {
    return std::to_string(value) + " mV";
}

} // namespace

namespace rail {

span thresholds(board &b, const one &which, limits pair) {
    if (pair == limits::warning) {
        return {b.get(which, warning_low), b.get(which, warning_high)};
    }
    return {b.get(which, alarm_low), b.get(which, alarm_high)};
}

void set_thresholds(board &b, const one &which, limits pair, const span &to) {
    thresholds(b, which, pair);
    refuse_if(to.low > to.high, error::bad_value);
    if (pair == limits::warning) {
        b.put_all(which, {{warning_low, to.low}, {warning_high, to.high}});
    } else {
        b.put_all(which, {{alarm_low, to.low}, {alarm_high, to.high}});
    }
}

finding judge(board &b, const one &which, limits pair) {
    const uint32_t value = b.get(which, millivolts);
    const auto [low, high] = thresholds(b, which, pair);
    if (value < low) {
        return {1, in_millivolts(value) + " is below " + in_millivolts(low)};
    }
    if (value > high) {
        return {2, in_millivolts(value) + " is above " + in_millivolts(high)};
    }
    return {0, in_millivolts(value) + " is within " + in_millivolts(low) + " to " + in_millivolts(high)};
}

// The peaks that were kept, and the present value: it is kept as soon as it gives way to another.
span history(board &b, const one &which) {
    const uint32_t value = b.get(which, millivolts);
    return {std::min(b.get_or(which, history_min, value), value), std::max(b.get_or(which, history_max, value), value)};
}

void set_millivolts(board &b, change &writes, const one &which, uint32_t to) {
    refuse_if(to < b.get(which, set_low) || to > b.get(which, set_high), error::bad_value);
    if (b.get(which, stuck) != 0) {
        return;
    }
    const span peaks = history(b, which);
    b.put(writes, which, millivolts, to);
    b.keep(writes, which, history_max, peaks.high);
    b.keep(writes, which, history_min, peaks.low);
}

} // namespace rail

finding regulator::check(board &b, const device_of<family> &which) {
    return faults_in(b.get(which, status), regulator_bits);
}

finding power_stage::check(board &b, const device_of<family> &which) {
    return faults_in(b.get(which, status), stage_bits);
}

std::string power_stage::dump_line(board &b, const device_of<family> &which) {
    const finding found = check(b, which);
    char line[128];
    const int length = snprintf(line, sizeof line, "power %u: status 0x%02x, %s\r\n", which.id, b.get(which, status),
                                found.status == 0 ? "good" : found.text.c_str());
    return {line, static_cast<size_t>(length)};
}

device_list devices_of_rail() {
    static constexpr const device_family *families[]{&rail::family, &regulator::family, &power_stage::family};
    return {families, {}};
}

} // namespace kestro_sim
