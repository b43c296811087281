// The wide ones: state and measurements of the module in the lower half, identification in page 00h, what it can in
// 01h, limits in 02h, a page for users in 03h, controls of the lanes in 10h and their flags and measurements in 11h.
#include "sim/core/catalogue.h"
#include "sim/devices/optics/module_memory.h"

#include <algorithm>

namespace kestro_sim {

namespace optics {

namespace {

constexpr uint8_t cmis_revision = 0x40;
constexpr uint8_t state_power_up = 0x02 << 1;
constexpr uint8_t state_ready = 0x03 << 1;
constexpr uint8_t single_mode_media = 0x02;
constexpr uint8_t host_400gaui_8 = 0x11;
constexpr uint8_t no_more_applications = 0xFF;

uint8_t in_unit(uint32_t value, uint32_t unit) {
    return static_cast<uint8_t>(std::min<uint32_t>(value / unit, 0xFF));
}

// Bit 0 is the high alarm here, bit 3 the low warning.
uint32_t reversed(uint32_t flags) {
    return (flags & 8U) >> 3U | (flags & 4U) >> 1U | (flags & 2U) << 1U | (flags & 1U) << 3U;
}

void fill_module(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    at[0] = kind.identifier;
    at[1] = cmis_revision;
    at[3] = from.is_ready ? state_ready : state_power_up;
    at[85] = single_mode_media;
    at[86] = host_400gaui_8;
    at[87] = kind.extended_compliance;
    at[88] = static_cast<uint8_t>(kind.lanes << 4U | kind.lanes);
    at[89] = 0x01;
    at[90] = no_more_applications;
    at[127] = static_cast<uint8_t>(from.b.get(from.which.module, optical_module::page));
    if (!from.is_ready) {
        return;
    }
    const auto &measured = from.measured;
    at[9] =
        static_cast<uint8_t>(reversed(overstepped(measured.temperature, from.limits.temperature)) |
                             reversed(overstepped(static_cast<int32_t>(measured.voltage), from.limits.voltage)) << 4U);
    at.word(14, measured.temperature);
    at.word(16, measured.voltage);
    if (kind.is_cooled) {
        at[10] = static_cast<uint8_t>(reversed(overstepped(measured.tec_current, from.limits.tec_current)) |
                                      reversed(overstepped(measured.laser_temperature, from.limits.laser_temperature))
                                          << 4U);
        at.word(18, measured.tec_current);
        at.word(20, measured.laser_temperature);
    }
}

// Copper, a laser that emits from its surface, or one with a grating for 1310 or 1550 nm.
uint8_t technology_of(double nanometres) {
    return nanometres == 0 ? 0x0A : nanometres < 1000 ? 0x00 : nanometres < 1400 ? 0x04 : 0x05;
}

void fill_identification(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    const auto &module = from.which.module;
    at[128] = kind.identifier;
    at.text(129, 16, from.b.text(module, optical_module::vendor));
    const uint32_t maker = from.b.get(module, optical_module::oui);
    at[145] = static_cast<uint8_t>(maker >> 16U);
    at.word(146, maker);
    at.text(148, 16, from.b.text(module, optical_module::part));
    at.text(164, 2, from.b.text(module, optical_module::revision));
    at.text(166, 16, from.b.text(module, optical_module::serial));
    at.text(182, 8, from.b.text(module, optical_module::date));
    at.text(190, 10, "");
    at[200] = 4 << 5; // the fifth class: up to 10 W
    at[201] = 40;
    at[203] = kind.connector;
    at[212] = technology_of(kind.nanometres);
    at.sum(128, 221, 222);
}

void fill_abilities(memory_view &at, const map_source &from) {
    const model &kind = *from.which.kind;
    // In kilometres, or in tenths of one.
    at[132] = static_cast<uint8_t>(kind.reaches.sm >= 6400 ? 0x40U | in_unit(kind.reaches.sm, 1000)
                                                           : uint32_t{in_unit(kind.reaches.sm, 100)});
    at[134] = in_unit(kind.reaches.om4, 2);
    at[135] = in_unit(kind.reaches.om3, 2);
    at[136] = in_unit(kind.reaches.om2, 1);
    at.word(138, static_cast<int64_t>(kind.nanometres * 20));
    at.word(140, 2000);
    at[142] = 0x04; // a page for users
    // Cooled; the first further value is the cooler's current, the second the lasers' temperature.
    at[145] = kind.is_cooled ? 0x81 : 0;
    at[155] = 0x02; // transmitters can be switched off
    at[157] = 0x01; // faults of transmitters are told
    at[158] = 0x02; // and lost light
    at[159] = static_cast<uint8_t>(0x03 | (kind.is_cooled ? 0x0C : 0));
    at[160] = 0x07; // bias, power sent, power received
    at[161] = kind.has_cdr ? 0x01 : 0;
    at[162] = kind.has_cdr ? 0x01 : 0;
    at[176] = 0x01; // the application begins at the first lane of the medium
    at.sum(130, 254, 255);
}

void fill_limits_of_module(memory_view &at, const map_source &from) {
    const all_limits &limits = from.limits;
    const limit_words none{};
    const bool is_cooled = from.which.kind->is_cooled;
    const std::pair<uint32_t, const limit_words *> at_address[]{{128, &limits.temperature},
                                                                {136, &limits.voltage},
                                                                {144, is_cooled ? &limits.tec_current : &none},
                                                                {152, is_cooled ? &limits.laser_temperature : &none},
                                                                {176, &limits.tx_power},
                                                                {184, &limits.bias},
                                                                {192, &limits.rx_power}};
    for (const auto &[address, words] : at_address) {
        for (uint32_t i = 0; i < words->size(); ++i) {
            at.word(address + 2 * i, (*words)[i]);
        }
    }
    at.sum(128, 254, 255);
}

// A byte for each of the four limits, a bit for each lane.
void set_lane_flags(memory_view &at, uint32_t first, uint32_t lane, uint32_t value, const limit_words &words) {
    const uint32_t flags = overstepped(static_cast<int32_t>(value), words);
    for (uint32_t i = 0; i < 4; ++i) {
        at[first + i] = static_cast<uint8_t>(at[first + i] | (flags >> (3 - i) & 1U) << lane);
    }
}

void fill_lanes(memory_view &at, const map_source &from) {
    at[135] = static_cast<uint8_t>(from.b.get(from.which.module, optical_module::tx_fault));
    if (!from.is_ready) {
        return;
    }
    for (uint32_t lane = 0; lane < from.measured.lanes.size(); ++lane) {
        const auto &words = from.measured.lanes[lane];
        at[128 + lane / 2] = static_cast<uint8_t>(at[128 + lane / 2] | 4U << (lane % 2 * 4)); // activated
        at[147] = static_cast<uint8_t>(at[147] | (words.is_dark ? 1U : 0U) << lane);
        set_lane_flags(at, 139, lane, words.tx_power, from.limits.tx_power);
        set_lane_flags(at, 143, lane, words.bias, from.limits.bias);
        set_lane_flags(at, 149, lane, words.rx_power, from.limits.rx_power);
        at.word(154 + 2 * lane, words.tx_power);
        at.word(170 + 2 * lane, words.bias);
        at.word(186 + 2 * lane, words.rx_power);
    }
}

} // namespace

void fill_cmis(memory &to, const map_source &from) {
    memory_view base(to, first_device, 0);
    fill_module(base, from);
    fill_identification(base, from);
    memory_view abilities(to, first_device, 1);
    fill_abilities(abilities, from);
    memory_view limits(to, first_device, 2);
    fill_limits_of_module(limits, from);
    memory_view(to, first_device, 3);
    memory_view controls(to, first_device, 0x10);
    controls[130] = static_cast<uint8_t>(from.b.get(from.which.module, optical_module::tx_disable));
    memory_view lanes(to, first_device, 0x11);
    fill_lanes(lanes, from);
}

void write_cmis(board &b, const optical_module::fitted &which, int page, uint32_t address, uint8_t value) {
    if (address == 127) {
        b.put(which.module, optical_module::page, has_page(*which.kind, first_device, value) ? value : 0);
    } else if (page == 0x10 && address == 130) {
        b.put(which.module, optical_module::tx_disable, value);
    }
}

} // namespace optics

device_list devices_of_cmis_memory() {
    return {};
}

} // namespace kestro_sim
