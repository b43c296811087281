// A change of speed takes its course from the speed at that moment. A stalled fan stands at once.
#include "sim/devices/chassis/fan.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"

#include <algorithm>

namespace kestro_sim {

namespace fan {

namespace {

constexpr uint32_t speed_alarm = 2;
constexpr uint32_t alarm_count = 7;

std::vector<one> fans_of(board &b, uint32_t slot_id) {
    std::vector<one> fans;
    for (const auto &each : b.all_at<family>(board::chassis())) {
        if (each.id / fans_max == slot_id) {
            fans.push_back(each);
        }
    }
    return fans;
}

uint32_t wanted_speed(board &b, const one &which) {
    if (b.get_or(which, power, 1) == 0) {
        return 0;
    }
    const auto tray = board::at<fan_tray::family>(which.instance, which.id / fans_max);
    return b.get_or(which, target, b.get(which, max_speed) * b.get_or(tray, fan_tray::percent, 0) / 100);
}

// Begins a course: from the present speed to another one.
void turn(board &b, change &writes, const one &which) {
    b.keep(writes, which, start, speed(b, which));
    b.keep(writes, which, since, static_cast<uint64_t>(b.now()));
}

void set_speed(board &b, change &writes, const one &which, uint32_t wanted) {
    if (b.get(which, stuck) == 0) {
        turn(b, writes, which);
        b.keep(writes, which, target, wanted);
    }
}

void require_control(board &b, const std::vector<one> &fans) {
    const auto tray = board::at<fan_tray::family>(fans.front().instance, fans.front().id / fans_max);
    refuse_if(b.get_or(tray, fan_tray::controlable, 1) == 0, error::not_supported);
}

void require_shift(board &b, const one &which, uint32_t wanted) {
    refuse_if(wanted == 0 || wanted > b.get(which, max_shift), error::bad_value);
}

} // namespace

uint32_t count(board &b, uint32_t slot_id) {
    return static_cast<uint32_t>(fans_of(b, fan_tray::find_present(b, slot_id).id).size());
}

one find(board &b, uint32_t slot_id, uint32_t fan_id) {
    fan_tray::find_answering(b, slot_id);
    refuse_if(fan_id >= fans_max, error::no_such_device);
    return b.find_at<family>(board::chassis(), slot_id * fans_max + fan_id);
}

std::vector<one> find_one_or_all(board &b, uint32_t slot_id, uint32_t fan_id) {
    if (fan_id != all_fans) {
        return {find(b, slot_id, fan_id)};
    }
    auto fans = fans_of(b, fan_tray::find_answering(b, slot_id).id);
    refuse_if(fans.empty(), error::not_supported);
    return fans;
}

uint32_t speed(board &b, const one &which) {
    if (b.get(which, stalled) != 0) {
        return 0;
    }
    const int64_t wanted = wanted_speed(b, which);
    if (!b.has(which, since)) {
        return static_cast<uint32_t>(wanted);
    }
    const int64_t from = b.get(which, start);
    const int64_t gone = (b.now() - static_cast<int64_t>(b.get_wide(which, since))) / nanoseconds_per_millisecond;
    // Beyond a day every fan is there, and the product stays in its range.
    const int64_t turned = std::min<int64_t>(gone, 86'400'000) * b.get(which, spin) / 1000;
    return static_cast<uint32_t>(from < wanted ? std::min(from + turned, wanted) : std::max(from - turned, wanted));
}

uint32_t percent(board &b, const one &which) {
    const uint32_t most = b.get(which, max_speed);
    return (speed(b, which) * 100 + most / 2) / most;
}

void set_percent(board &b, const std::vector<one> &fans, uint32_t percent) {
    require_control(b, fans);
    refuse_if(percent > 100, error::bad_value);
    change writes;
    for (const one &each : fans) {
        set_speed(b, writes, each, b.get(each, max_speed) * percent / 100);
    }
    b.commit(writes);
}

// A fan that stands is in its lowest shift.
uint32_t shift(board &b, const one &which) {
    const uint32_t most = b.get(which, max_speed);
    return std::max(1U, (speed(b, which) * b.get(which, max_shift) + most - 1) / most);
}

void set_shift(board &b, const std::vector<one> &fans, uint32_t shift) {
    require_control(b, fans);
    change writes;
    for (const one &each : fans) {
        set_speed(b, writes, each, max_speed_of_shift(b, each, shift));
    }
    b.commit(writes);
}

uint32_t max_speed_of_shift(board &b, const one &which, uint32_t shift) {
    require_shift(b, which, shift);
    return b.get(which, max_speed) * shift / b.get(which, max_shift);
}

// Rounded up: it is what a supply must be able to give.
uint32_t max_power_of_shift(board &b, const one &which, uint32_t shift) {
    require_shift(b, which, shift);
    const auto cube = [](uint64_t value) { return value * value * value; };
    const uint64_t whole = cube(b.get(which, max_shift));
    return static_cast<uint32_t>((b.get(which, max_power) * cube(shift) + whole - 1) / whole);
}

void switch_power(board &b, const std::vector<one> &fans, uint32_t on) {
    refuse_if(on > 1, error::bad_value);
    change writes;
    for (const one &each : fans) {
        turn(b, writes, each);
        b.put(writes, each, power, on);
    }
    b.commit(writes);
}

bool is_stalled(board &b, const one &which) {
    return b.get(which, stalled) != 0 && wanted_speed(b, which) != 0;
}

bool has_alarm(board &b, const one &which, uint32_t alarm) {
    refuse_if(alarm >= alarm_count, error::no_such_device);
    return (b.get(which, alarms) >> alarm & 1U) != 0 || (alarm == speed_alarm && is_stalled(b, which));
}

uint32_t mean_percent(board &b, const fan_tray::one &tray) {
    const auto fans = fans_of(b, tray.id);
    if (fans.empty()) {
        return b.get(tray, fan_tray::percent);
    }
    uint32_t sum = 0;
    for (const one &each : fans) {
        sum += percent(b, each);
    }
    return sum / static_cast<uint32_t>(fans.size());
}

} // namespace fan

device_list devices_of_fan() {
    static constexpr const device_family *families[]{&fan::family};
    return {families, {}};
}

} // namespace kestro_sim
