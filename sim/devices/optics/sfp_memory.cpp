// SFP and SFP+: identification at 0xA0, diagnostics at 0xA2.
#include "sim/core/catalogue.h"
#include "sim/devices/optics/module_memory.h"

#include <algorithm>

namespace kestro_sim {

namespace optics {

namespace {

// In the options of the identification.
constexpr uint8_t linear_receiver = 0x01; // byte 64
constexpr uint8_t rate_select = 0x20;     // byte 65
constexpr uint8_t tx_disable_pin = 0x10;
constexpr uint8_t tx_fault_pin = 0x08;
constexpr uint8_t los_pin = 0x02;

constexpr uint8_t measures_inside = 0x68; // measures, calibrated inside, average power
constexpr uint8_t rev_12 = 0x08;

// In status and control, byte 110, and its extension, byte 118.
constexpr uint8_t pin_disables = 0x80;
constexpr uint8_t soft_disable = 0x40;
constexpr uint8_t soft_rate = 0x08;
constexpr uint8_t has_fault = 0x04;
constexpr uint8_t is_los = 0x02;
constexpr uint8_t not_ready = 0x01;

uint8_t length_in(uint32_t metres, uint32_t unit) {
    return static_cast<uint8_t>(std::min<uint32_t>(metres / unit, 0xFF));
}

void fill_base(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    at[0] = kind.identifier;
    at[1] = 0x04;
    at[2] = kind.connector;
    for (uint32_t i = 0; i < kind.compliance.size(); ++i) {
        at[3 + i] = kind.compliance[i];
    }
    at[11] = kind.encoding;
    at[12] = length_in(kind.mbit_per_s, 100);
    at[14] = length_in(kind.reaches.sm, 1000);
    at[15] = length_in(kind.reaches.sm, 100);
    at[16] = length_in(kind.reaches.om2, 10);
    at[17] = length_in(kind.reaches.om1, 10);
    at[18] = kind.nanometres == 0 ? length_in(kind.reaches.copper, 1) : length_in(kind.reaches.om4, 10);
    at[19] = length_in(kind.reaches.om3, 10);
    at.text(20, 16, from.b.text(from.which.module, optical_module::vendor));
    const uint32_t maker = from.b.get(from.which.module, optical_module::oui);
    at[37] = static_cast<uint8_t>(maker >> 16U);
    at.word(38, maker);
    at.text(40, 16, from.b.text(from.which.module, optical_module::part));
    at.text(56, 4, from.b.text(from.which.module, optical_module::revision));
    at.word(60, static_cast<int64_t>(kind.nanometres));
    at.sum(0, 62, 63);
}

void fill_extension(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    at[64] = kind.is_linear ? linear_receiver : 0;
    at[65] = static_cast<uint8_t>(tx_disable_pin | tx_fault_pin | los_pin | (kind.has_rates ? rate_select : 0));
    at.text(68, 16, from.b.text(from.which.module, optical_module::serial));
    at.text(84, 8, from.b.text(from.which.module, optical_module::date));
    if (kind.measures) {
        at[92] = measures_inside;
        at[93] = kind.has_rates ? 0xF8 : 0xF0; // flags, and all of the pins in software too
        at[94] = rev_12;
    }
    at.sum(64, 94, 95);
}

void fill_limits(memory_view &at, const all_limits &limits) {
    const limit_words *const in_order[]{&limits.temperature, &limits.voltage, &limits.bias, &limits.tx_power,
                                        &limits.rx_power};
    uint32_t address = 0;
    for (const limit_words *words : in_order) {
        for (const int32_t word : *words) {
            at.word(address, word);
            address += 2;
        }
    }
    // Calibrated inside: slopes of 1, and 1 for what arrives.
    for (const uint32_t slope : {76U, 80U, 84U, 88U}) {
        at.word(slope, 0x0100);
    }
    at.word(68, 0x3F80);
    at.sum(0, 94, 95);
}

// Alarms and warnings in two bytes: a pair of bits for each of the five values.
uint32_t pairs(const map_source &from, uint32_t shift) {
    const auto &lane = from.measured.lanes[0];
    const auto pair = [&](int64_t value, const limit_words &words) {
        return overstepped(static_cast<int32_t>(value), words) >> shift & 3U;
    };
    return pair(from.measured.temperature, from.limits.temperature) << 14U |
           pair(from.measured.voltage, from.limits.voltage) << 12U | pair(lane.bias, from.limits.bias) << 10U |
           pair(lane.tx_power, from.limits.tx_power) << 8U | pair(lane.rx_power, from.limits.rx_power) << 6U;
}

uint8_t status(const map_source &from) {
    board &b = from.b;
    const auto &module = from.which.module;
    uint32_t bits = 0;
    bits |= b.get(from.which.port, cage::tx_disable) != 0 ? pin_disables : 0U;
    bits |= b.get(module, optical_module::tx_disable) != 0 ? soft_disable : 0U;
    bits |= b.get(module, optical_module::rx_rate) != 0 ? soft_rate : 0U;
    bits |= (b.get(module, optical_module::tx_fault) & 1U) != 0 ? has_fault : 0U;
    bits |= from.measured.lanes[0].is_dark ? is_los : 0U;
    bits |= from.is_ready ? 0U : not_ready;
    return static_cast<uint8_t>(bits);
}

void fill_diagnostics(memory_view &at, const map_source &from) {
    fill_limits(at, from.limits);
    const auto &lane = from.measured.lanes[0];
    at.word(96, from.measured.temperature);
    at.word(98, from.measured.voltage);
    at.word(100, lane.bias);
    at.word(102, lane.tx_power);
    at.word(104, lane.rx_power);
    at[110] = status(from);
    if (from.is_ready) {
        at.word(112, pairs(from, 2));
        at.word(116, pairs(from, 0));
    }
    at[118] = from.b.get(from.which.module, optical_module::tx_rate) != 0 ? soft_rate : 0;
}

} // namespace

void fill_sfp(memory &to, const map_source &from) {
    memory_view identification(to, first_device, 0);
    fill_base(identification, from);
    fill_extension(identification, from);
    if (from.which.kind->measures) {
        memory_view diagnostics(to, diagnostics_device, 0);
        fill_diagnostics(diagnostics, from);
    }
}

void write_sfp(board &b, const optical_module::fitted &which, uint32_t address, uint8_t value) {
    const uint32_t rate = which.kind->has_rates && (value & soft_rate) != 0 ? 1 : 0;
    if (address == 110) {
        b.put_all(which.module, {{optical_module::tx_disable, (value & soft_disable) != 0 ? 1U : 0U},
                                 {optical_module::rx_rate, rate}});
    } else if (address == 118) {
        b.put(which.module, optical_module::tx_rate, rate);
    }
}

} // namespace optics

device_list devices_of_sfp_memory() {
    return {};
}

} // namespace kestro_sim
