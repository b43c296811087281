// A sensor approaches the temperature at which heat and air are in balance, and never stands still on the way: where it
// is follows from board time and the moment at which its course began. That is when a driver changed what heats it, or
// when its card was switched on.
#include "sim/devices/environment/temperature.h"

#include "sim/core/catalogue.h"
#include "sim/devices/chassis/fan_tray.h"
#include "sim/devices/environment/power_monitor.h"
#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/power_domain.h"

#include <algorithm>
#include <cmath>

namespace kestro_sim {

namespace sensor {

namespace {

// Warm air rises without any fan.
constexpr uint32_t least_airflow = 20;

struct course {
    double start;
    int64_t since;
};

int32_t signed_word(board &b, const one &which, word_of<family> name) {
    return static_cast<int32_t>(b.get(which, name));
}

uint64_t two_complement(int64_t value) {
    return static_cast<uint64_t>(value);
}

double air_millidegrees(board &b) {
    return static_cast<int32_t>(b.get(board::at<ambient::family>(board::chassis()), ambient::celsius)) * 1000.0;
}

uint32_t heating_milliwatts(board &b, const one &which) {
    const auto chip = board::at<power_monitor::family>(which.instance, b.get_or(which, monitor, 0));
    if (b.has(which, monitor) && b.is_described(chip)) {
        return power_monitor::milliwatts(power_monitor::flowing(b, chip));
    }
    return b.get_or(board::at<board_unit::family>(which.instance), board_unit::power_watts, 0) * 1000;
}

double balance(board &b, const one &which) {
    const double lifted = b.get(which, rise) * (heating_milliwatts(b, which) / 1000.0);
    return air_millidegrees(b) + lifted * 100 / std::max(fan_tray::airflow(b), least_airflow);
}

course course_of(board &b, const one &which) {
    const auto power = board::at<power_domain::family>(which.instance, power_domain::card_power);
    const auto since_then = static_cast<int64_t>(b.get_wide(which, since));
    if (b.is_described(power)) {
        const auto switched_on = static_cast<int64_t>(b.get_wide(power, power_domain::since));
        if (switched_on >= since_then) {
            return {air_millidegrees(b), switched_on};
        }
    }
    return {static_cast<double>(signed_word(b, which, start)), since_then};
}

double on_course(board &b, const one &which) {
    const double goal = balance(b, which);
    const course from = course_of(b, which);
    const uint32_t seconds = b.get(which, time_constant);
    if (from.since < 0 || seconds == 0) {
        return goal;
    }
    const double gone = static_cast<double>(b.now() - from.since) / static_cast<double>(nanoseconds_per_second);
    return goal + (from.start - goal) * std::exp(-gone / seconds);
}

int64_t rounded(double millidegrees) {
    return std::llround(
        std::clamp(millidegrees, -static_cast<double>(millidegrees_max), static_cast<double>(millidegrees_max)));
}

} // namespace

int32_t millidegrees(board &b, const one &which) {
    const auto power = board::at<power_domain::family>(which.instance, power_domain::card_power);
    refuse_if(b.get_or(power, power_domain::on, 1) == 0, error::no_such_device);
    return static_cast<int32_t>(rounded(on_course(b, which) + signed_word(b, which, offset)));
}

int32_t celsius(board &b, const one &which) {
    return static_cast<int32_t>(std::lround(millidegrees(b, which) / 1000.0));
}

span thresholds(board &b, const one &which, limits pair) {
    if (pair == limits::warning) {
        return {signed_word(b, which, warning_low), signed_word(b, which, warning_high)};
    }
    return {signed_word(b, which, alarm_low), signed_word(b, which, alarm_high)};
}

void set_thresholds(board &b, const one &which, limits pair, const span &to) {
    refuse_if(to.low > to.high, error::bad_value);
    if (pair == limits::warning) {
        b.put_all(which, {{warning_low, two_complement(to.low)}, {warning_high, two_complement(to.high)}});
    } else {
        b.put_all(which, {{alarm_low, two_complement(to.low)}, {alarm_high, two_complement(to.high)}});
    }
}

uint32_t alarm_status(board &b, const one &which) {
    const int32_t value = celsius(b, which);
    const auto is_beyond = [&](limits pair) {
        const auto [low, high] = thresholds(b, which, pair);
        return value < low || value > high;
    };
    if (is_beyond(limits::alarm)) {
        return 2;
    }
    return is_beyond(limits::warning) ? 1 : 0;
}

void keep_course(board &b, change &writes, const std::string &place) {
    for (const auto &which : b.all_at<family>(place)) {
        b.put(writes, which, start, two_complement(rounded(on_course(b, which))));
        b.put(writes, which, since, two_complement(b.now()));
    }
}

} // namespace sensor

device_list devices_of_temperature() {
    static constexpr const device_family *families[]{&ambient::family, &sensor::family};
    return {families, {}};
}

} // namespace kestro_sim
