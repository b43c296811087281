// A module that was plugged in answers on its bus soon and is ready some time later. Its temperature goes up to where
// heat and air are in balance, and wanders a little around that.
#include "sim/devices/optics/optical_module.h"

#include "sim/core/catalogue.h"
#include "sim/devices/chassis/fan_tray.h"
#include "sim/devices/environment/temperature.h"
#include "sim/devices/optics/fibre.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kestro_sim {

namespace optical_module {

namespace {

constexpr int64_t answers_after = 300 * nanoseconds_per_millisecond;

constexpr double warming_seconds = 90;
constexpr double wander_millikelvin = 400;
constexpr double wander_seconds = 600;
constexpr double apart_seconds = 37; // modules do not wander in step
constexpr uint32_t least_percent_of_air = 20;

// No two lasers are alike: hundredths of dB and percent of the current, by lane.
constexpr int32_t power_of_lane[]{0, 14, -9, 6, -17, 11, -4, 8};
constexpr int32_t bias_of_lane[]{0, 2, -1, 1, 3, -2, 1, -3};

double seconds_since(board &b, int64_t moment) {
    return static_cast<double>(b.now() - moment) / static_cast<double>(nanoseconds_per_second);
}

int64_t plugged_in_at(board &b, const fitted &which) {
    return static_cast<int64_t>(b.get_wide(which.port, cage::since));
}

double air_millicelsius(board &b) {
    return static_cast<int32_t>(b.get(board::at<ambient::family>(board::chassis()), ambient::celsius)) * 1000.0;
}

double millicelsius(board &b, const fitted &which) {
    const double air = air_millicelsius(b);
    const double lifted = b.get(which.module, heat) * 100.0 / std::max(fan_tray::airflow(b), least_percent_of_air);
    const int64_t since = plugged_in_at(b, which);
    const double part = since < 0 ? 1 : 1 - std::exp(-seconds_since(b, since) / warming_seconds);
    const double phase = (seconds_since(b, 0) + which.module.id * apart_seconds) / wander_seconds;
    return air + lifted * part + wander_millikelvin * std::sin(2 * std::numbers::pi * phase);
}

uint32_t word(double value) {
    return static_cast<uint32_t>(std::clamp(std::lround(value), 0L, 0xFFFFL));
}

int32_t signed_word(double value) {
    return static_cast<int32_t>(std::clamp(std::lround(value), -0x8000L, 0x7FFFL));
}

uint32_t power_word(std::optional<double> dbm) {
    return dbm ? word(std::pow(10, *dbm / 10) * 10000) : 0;
}

bool is_lit(board &b, const fitted &which, uint32_t lane) {
    const uint32_t off = b.get(which.module, tx_disable) | b.get(which.module, tx_fault);
    return lane < which.kind->lanes && is_ready(b, which) && b.get(which.port, cage::tx_disable) == 0 &&
           (off >> lane & 1U) == 0;
}

} // namespace

std::optional<fitted> in(board &b, const cage::one &port) {
    cage::notice(b, port);
    const one module = board::at<family>(port.instance, b.get(port, cage::plugged));
    if (module.id == 0 || !b.is_described(module)) {
        return std::nullopt;
    }
    return fitted{port, module, &optics::model_number(b.get(module, model))};
}

fitted answering(board &b, const cage::one &port) {
    const auto which = in(b, port);
    refuse_if(!which || holds_bus(b, *which) || b.now() - plugged_in_at(b, *which) < answers_after, error::not_ready);
    return *which;
}

bool is_ready(board &b, const fitted &which) {
    return b.now() - plugged_in_at(b, which) >= b.get(which.module, start_up) * nanoseconds_per_millisecond;
}

bool holds_bus(board &b, const fitted &which) {
    return b.get(which.module, bus_hung) != 0;
}

bool recover_bus(board &b, const fitted &which) {
    if (!holds_bus(b, which)) {
        return true;
    }
    if (b.get(which.module, bus_stays) != 0) {
        return false;
    }
    b.put(which.module, bus_hung, 0);
    return true;
}

void switch_on(board &b, change &writes, const one &which) {
    if (!b.is_described(which)) {
        return;
    }
    for (const auto &volatile_register : {&tx_disable, &tx_rate, &rx_rate, &page}) {
        b.add(writes, which, *volatile_register, 0);
    }
    if (b.get(which, bus_stays) == 0) {
        b.put(writes, which, bus_hung, 0);
    }
}

std::optional<double> sent(board &b, const fitted &which, uint32_t lane) {
    if (!is_lit(b, which, lane)) {
        return std::nullopt;
    }
    if (which.kind->nanometres == 0) {
        return 0;
    }
    const int32_t more = static_cast<int32_t>(b.get(which.module, power_offset)) + power_of_lane[lane];
    return which.kind->laser_dbm + more / 100.0;
}

measurements measure(board &b, const fitted &which) {
    measurements found{};
    found.lanes.resize(which.kind->lanes);
    if (!is_ready(b, which)) {
        return found;
    }
    const double celsius = millicelsius(b, which) / 1000;
    found.temperature = signed_word(celsius * 256);
    found.voltage = b.get(which.module, voltage);
    found.laser_temperature = signed_word(optics::cooled_celsius * 256);
    found.tec_current = signed_word((celsius - optics::cooled_celsius) * 1.2 / 100 * 32767);
    for (uint32_t lane = 0; lane < which.kind->lanes; ++lane) {
        const auto arrives = fibre::light_at(b, which.port, *which.kind, lane);
        const double milliamperes = which.kind->laser_milliamperes * (100 + bias_of_lane[lane]) / 100.0 *
                                    (100 + b.get(which.module, wear)) / 100.0;
        found.lanes[lane] = {is_lit(b, which, lane) ? word(milliamperes * 500) : 0, power_word(sent(b, which, lane)),
                             power_word(arrives), !arrives || *arrives < which.kind->los_dbm};
    }
    return found;
}

} // namespace optical_module

device_list devices_of_optical_module() {
    static constexpr const device_family *families[]{&optical_module::family};
    return {families, {}};
}

} // namespace kestro_sim
