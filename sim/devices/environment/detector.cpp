// The chips have no values of their own: a channel shows what it is wired to. On the bus an open channel floats high.
#include "sim/devices/environment/detector.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

namespace {

constexpr uint32_t channels = 4;
constexpr uint32_t floating = 0xFFFF;

// Temperatures are sixteenths of a degree there, 12 bits before the point.
uint32_t sixteenths(int32_t millidegrees) {
    return static_cast<uint32_t>(millidegrees * 16 / 1000) & 0xFFFFU;
}

} // namespace

namespace temperature_detector {

namespace {

constexpr uint32_t limits_at = 0x08;
constexpr uint32_t status_at = 0x10;

const reg *const wires[channels]{&channel0, &channel1, &channel2, &channel3};

bool is_wired(board &b, const device &chip, uint32_t channel) {
    const auto number = b.value(chip, *wires[channel]);
    return number && b.is_described(board::at<sensor::family>(chip.instance, static_cast<uint32_t>(*number)));
}

uint32_t temperature_register(board &b, const device &chip, uint32_t channel) {
    if (!is_wired(b, chip, channel)) {
        return floating;
    }
    return sixteenths(sensor::millidegrees(b, wired_to(b, device_of<family>{chip}, channel)));
}

uint32_t limit_register(board &b, const device &chip, uint32_t address) {
    const uint32_t channel = address - limits_at;
    if (!is_wired(b, chip, channel)) {
        return floating;
    }
    const auto wired = wired_to(b, device_of<family>{chip}, channel);
    return sixteenths(sensor::thresholds(b, wired, sensor::limits::alarm).high * 1000);
}

uint32_t status_register(board &b, const device &chip, uint32_t) {
    uint32_t bits = 0;
    for (uint32_t channel = 0; channel < channels; ++channel) {
        if (is_wired(b, chip, channel) && sensor::alarm_status(b, wired_to(b, device_of<family>{chip}, channel)) == 2) {
            bits |= 1U << channel;
        }
    }
    return bits;
}

constexpr space_register chip_registers[]{
    {.address = 0x00,
     .name = "temperature",
     .meaning = "what channels 0 to 3 measure, in sixteenths of a degree Celsius",
     .count = channels,
     .read = temperature_register},
    {.address = limits_at,
     .name = "limit",
     .meaning = "above it channels 0 to 3 are in alarm, in sixteenths of a degree Celsius",
     .count = channels,
     .read = limit_register},
    {.address = status_at, .name = "status", .meaning = "a bit per channel in alarm", .read = status_register},
};

} // namespace

sensor::one wired_to(board &b, const device_of<family> &chip, uint32_t channel) {
    refuse_if(channel >= channels, error::no_such_device);
    const auto number = b.value(chip, *wires[channel]);
    refuse_if(!number, error::no_such_device);
    return b.find_at<sensor::family>(chip.instance, static_cast<uint32_t>(*number));
}

constexpr register_space registers{"thermometer", &family, 16, 0x20, undeclared::all_ones, chip_registers};

} // namespace temperature_detector

namespace voltage_detector {

namespace {

const reg *const wires[channels]{&channel0, &channel1, &channel2, &channel3};

uint32_t voltage_register(board &b, const device &chip, uint32_t channel) {
    const auto number = b.value(chip, *wires[channel]);
    if (!number) {
        return floating;
    }
    return b.get_or(board::at<rail::family>(chip.instance, static_cast<uint32_t>(*number)), rail::millivolts, floating);
}

constexpr space_register chip_registers[]{
    {.address = 0x00,
     .name = "voltage",
     .meaning = "what channels 0 to 3 measure, in millivolts",
     .count = channels,
     .read = voltage_register},
};

} // namespace

rail::one wired_to(board &b, const device_of<family> &chip, uint32_t channel) {
    refuse_if(channel >= channels, error::no_such_device);
    const auto number = b.value(chip, *wires[channel]);
    refuse_if(!number, error::no_such_device);
    return b.find_at<rail::family>(chip.instance, static_cast<uint32_t>(*number));
}

constexpr register_space registers{"voltmeter", &family, 16, 0x10, undeclared::all_ones, chip_registers};

} // namespace voltage_detector

device_list devices_of_detector() {
    static constexpr const device_family *families[]{&temperature_detector::family, &voltage_detector::family};
    static constexpr const register_space *spaces[]{&temperature_detector::registers, &voltage_detector::registers};
    return {families, spaces};
}

} // namespace kestro_sim
