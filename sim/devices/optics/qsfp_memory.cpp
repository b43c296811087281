// QSFP+ and QSFP28: status and measurements in the lower half, identification in page 00h, a page for users in 02h,
// limits in 03h.
#include "sim/core/catalogue.h"
#include "sim/devices/optics/module_memory.h"

#include <algorithm>

namespace kestro_sim {

namespace optics {

namespace {

constexpr uint8_t revision_of_map = 0x08;
constexpr uint8_t data_not_ready = 0x01;
constexpr uint8_t initialised = 0x01;
constexpr uint8_t cdr_both_ways = 0x0C;
constexpr uint8_t beyond_25_gigabit = 0xFF;
constexpr uint32_t rate_unit = 250; // Mbit/s, where a lane has more than 25 Gbit/s

uint8_t in_units(uint32_t value, uint32_t unit) {
    return static_cast<uint8_t>(std::min<uint32_t>(value / unit, 0xFF));
}

uint8_t lanes_with(const map_source &from, bool (*has)(const optical_module::lane_words &)) {
    uint32_t bits = 0;
    for (uint32_t lane = 0; lane < from.measured.lanes.size(); ++lane) {
        bits |= has(from.measured.lanes[lane]) ? 1U << lane : 0U;
    }
    return static_cast<uint8_t>(bits);
}

void fill_status(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    board &b = from.b;
    at[0] = kind.identifier;
    at[1] = revision_of_map;
    at[2] = from.is_ready ? 0 : data_not_ready;
    at[3] = from.is_ready ? lanes_with(from, [](const auto &lane) { return lane.is_dark; }) : 0;
    at[4] = static_cast<uint8_t>(b.get(from.which.module, optical_module::tx_fault) & 0x0FU);
    at[86] = static_cast<uint8_t>(b.get(from.which.module, optical_module::tx_disable) & 0x0FU);
    at[87] = static_cast<uint8_t>(b.get(from.which.module, optical_module::rx_rate));
    at[88] = static_cast<uint8_t>(b.get(from.which.module, optical_module::tx_rate));
    at[127] = static_cast<uint8_t>(b.get(from.which.module, optical_module::page));
}

// Four bits for each value, two lanes in a byte, the first in its upper half.
void fill_flags(memory_view &at, const map_source &from) {
    const all_limits &limits = from.limits;
    const auto flags = [](int64_t value, const limit_words &words) {
        return overstepped(static_cast<int32_t>(value), words);
    };
    at[6] = static_cast<uint8_t>(flags(from.measured.temperature, limits.temperature) << 4U | initialised);
    at[7] = static_cast<uint8_t>(flags(from.measured.voltage, limits.voltage) << 4U);
    for (uint32_t lane = 0; lane < from.measured.lanes.size(); ++lane) {
        const auto &words = from.measured.lanes[lane];
        const uint32_t shift = lane % 2 == 0 ? 4 : 0;
        const auto add = [&](uint32_t address, uint32_t bits) {
            at[address + lane / 2] = static_cast<uint8_t>(at[address + lane / 2] | bits << shift);
        };
        add(9, flags(words.rx_power, limits.rx_power));
        add(11, flags(words.bias, limits.bias));
        add(13, flags(words.tx_power, limits.tx_power));
    }
}

void fill_measurements(memory_view &at, const map_source &from) {
    at.word(22, from.measured.temperature);
    at.word(26, from.measured.voltage);
    for (uint32_t lane = 0; lane < from.measured.lanes.size(); ++lane) {
        const auto &words = from.measured.lanes[lane];
        at.word(34 + 2 * lane, words.rx_power);
        at.word(42 + 2 * lane, words.bias);
        at.word(50 + 2 * lane, words.tx_power);
    }
}

void fill_base_page(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    const auto &module = from.which.module;
    at[128] = kind.identifier;
    at[129] = kind.has_cdr ? cdr_both_ways : 0;
    at[130] = kind.connector;
    for (uint32_t i = 0; i < kind.compliance.size(); ++i) {
        at[131 + i] = kind.compliance[i];
    }
    at[139] = kind.encoding;
    at[140] = kind.mbit_per_s > 25400 ? beyond_25_gigabit : in_units(kind.mbit_per_s, 100);
    at[142] = in_units(kind.reaches.sm, 1000);
    at[143] = in_units(kind.reaches.om3, 2);
    at[144] = in_units(kind.reaches.om2, 1);
    at[145] = in_units(kind.reaches.om1, 1);
    at[146] = in_units(kind.reaches.om4, 2);
    at.text(148, 16, from.b.text(module, optical_module::vendor));
    const uint32_t maker = from.b.get(module, optical_module::oui);
    at[165] = static_cast<uint8_t>(maker >> 16U);
    at.word(166, maker);
    at.text(168, 16, from.b.text(module, optical_module::part));
    at.text(184, 2, from.b.text(module, optical_module::revision));
    at.word(186, static_cast<int64_t>(kind.nanometres * 20));
    at.word(188, 2000); // 10 nm to both sides
    at[190] = 70;       // the warmest its case may be
    at.sum(128, 190, 191);
}

void fill_extended_page(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    const auto &module = from.which.module;
    at[192] = kind.extended_compliance;
    at[195] = static_cast<uint8_t>(0x9A | (kind.has_rates ? 0x20 : 0)); // page 02h, disable, fault, LOS; rates
    at.text(196, 16, from.b.text(module, optical_module::serial));
    at.text(212, 8, from.b.text(module, optical_module::date));
    at[220] = 0x3C; // measures temperature, voltage, average power received, power sent
    at[222] = kind.mbit_per_s > 25400 ? in_units(kind.mbit_per_s, rate_unit) : 0;
    at.sum(192, 222, 223);
}

void fill_limits_page(memory_view &at, const all_limits &limits) {
    const std::pair<uint32_t, const limit_words *> at_address[]{{128, &limits.temperature},
                                                                {144, &limits.voltage},
                                                                {176, &limits.rx_power},
                                                                {184, &limits.bias},
                                                                {192, &limits.tx_power}};
    for (const auto &[address, words] : at_address) {
        for (uint32_t i = 0; i < words->size(); ++i) {
            at.word(address + 2 * i, (*words)[i]);
        }
    }
}

} // namespace

void fill_qsfp(memory &to, const map_source &from) {
    memory_view base(to, first_device, 0);
    fill_status(base, from);
    if (from.is_ready) {
        fill_flags(base, from);
        fill_measurements(base, from);
    }
    fill_base_page(base, from);
    fill_extended_page(base, from);
    memory_view(to, first_device, 2);
    memory_view limits(to, first_device, 3);
    fill_limits_page(limits, from.limits);
}

void write_qsfp(board &b, const optical_module::fitted &which, uint32_t address, uint8_t value) {
    if (address == 86) {
        b.put(which.module, optical_module::tx_disable, value & 0x0FU);
    } else if (address == 87 && which.kind->has_rates) {
        b.put(which.module, optical_module::rx_rate, value);
    } else if (address == 88 && which.kind->has_rates) {
        b.put(which.module, optical_module::tx_rate, value);
    } else if (address == 127) {
        b.put(which.module, optical_module::page, has_page(*which.kind, first_device, value) ? value : 0);
    }
}

} // namespace optics

device_list devices_of_qsfp_memory() {
    return {};
}

} // namespace kestro_sim
