// Where each kind of management has what it measures, its limits and what is beyond them.
#include "sim/drv/optical_lib/optical_readings.h"

#include <cmath>

namespace kestro_sim::optical_readings {

namespace {

constexpr uint8_t first = optics::first_device;
constexpr uint8_t diagnostics = optics::diagnostics_device;
constexpr double dark_dbm = -40;

struct location {
    uint8_t device = 0; // 0: this kind of module has no such thing
    int page = 0;
    uint32_t value = 0;
    int limits_page = 0;
    uint32_t limits = 0;
};

// By quantity; of lanes, the first one's.
constexpr location sfp_locations[quantities]{{diagnostics, 0, 96, 0, 0},
                                             {diagnostics, 0, 98, 0, 8},
                                             {diagnostics, 0, 100, 0, 16},
                                             {diagnostics, 0, 102, 0, 24},
                                             {diagnostics, 0, 104, 0, 32},
                                             {},
                                             {}};
constexpr location qsfp_locations[quantities]{{first, 0, 22, 3, 128},
                                              {first, 0, 26, 3, 144},
                                              {first, 0, 42, 3, 184},
                                              {first, 0, 50, 3, 192},
                                              {first, 0, 34, 3, 176},
                                              {},
                                              {}};
constexpr location cmis_locations[quantities]{
    {first, 0, 14, 2, 128},     {first, 0, 16, 2, 136}, {first, 0x11, 170, 2, 184}, {first, 0x11, 154, 2, 176},
    {first, 0x11, 186, 2, 192}, {first, 0, 20, 2, 152}, {first, 0, 18, 2, 144}};

const location &location_of(const memory &map, quantity what) {
    const auto index = static_cast<size_t>(what);
    switch (managed_by(map)) {
    case management::sfp:
        return sfp_locations[index];
    case management::qsfp:
        return qsfp_locations[index];
    case management::cmis:
        break;
    }
    return cmis_locations[index];
}

double in_units(uint32_t word, quantity what) {
    const auto with_sign = static_cast<int16_t>(word);
    switch (what) {
    case quantity::temperature:
    case quantity::laser_temperature:
        return with_sign / 256.0;
    case quantity::voltage:
        return word / 10000.0;
    case quantity::bias:
        return word / 500.0;
    case quantity::tx_power:
    case quantity::rx_power:
        return word == 0 ? dark_dbm : 10 * std::log10(word / 10000.0);
    case quantity::tec_current:
        break;
    }
    return with_sign * 100.0 / 32767;
}

uint32_t flags_of_sfp(const memory &map, quantity what) {
    static constexpr uint32_t alarms = 112;
    static constexpr uint32_t warnings = 116;
    const uint32_t shift = 14 - 2 * static_cast<uint32_t>(what);
    return (word_at(map, diagnostics, 0, alarms) >> shift & 3U) << 2U |
           (word_at(map, diagnostics, 0, warnings) >> shift & 3U);
}

uint32_t flags_of_qsfp(const memory &map, quantity what, uint32_t lane) {
    static constexpr uint32_t bytes[]{6, 7, 11, 13, 9};
    const uint32_t byte = byte_at(map, first, 0, bytes[static_cast<size_t>(what)] + lane / 2);
    return lane % 2 == 0 ? byte >> 4U : byte & 0x0FU;
}

// The first of the four is the lowest bit here.
uint32_t high_alarm_first(uint32_t bits) {
    return (bits & 1U) << 3U | (bits & 2U) << 1U | (bits & 4U) >> 1U | (bits & 8U) >> 3U;
}

uint32_t flags_of_cmis(const memory &map, quantity what, uint32_t lane) {
    switch (what) {
    case quantity::temperature:
        return high_alarm_first(byte_at(map, first, 0, 9) & 0x0FU);
    case quantity::voltage:
        return high_alarm_first(byte_at(map, first, 0, 9) >> 4U);
    case quantity::tec_current:
        return high_alarm_first(byte_at(map, first, 0, 10) & 0x0FU);
    case quantity::laser_temperature:
        return high_alarm_first(byte_at(map, first, 0, 10) >> 4U);
    case quantity::bias:
    case quantity::tx_power:
    case quantity::rx_power:
        break;
    }
    const uint32_t bytes = what == quantity::tx_power ? 139 : what == quantity::bias ? 143 : 149;
    uint32_t found = 0;
    for (uint32_t i = 0; i < 4; ++i) {
        found |= (byte_at(map, first, 0x11, bytes + i) >> lane & 1U) << (3 - i);
    }
    return found;
}

bool qsfp_measures(const memory &map, quantity what) {
    switch (what) {
    case quantity::temperature:
        return bit_at(map, 0, 220, 5);
    case quantity::voltage:
        return bit_at(map, 0, 220, 4);
    case quantity::tx_power:
        return bit_at(map, 0, 220, 2);
    case quantity::bias:
    case quantity::rx_power:
        return true;
    case quantity::laser_temperature:
    case quantity::tec_current:
        break;
    }
    return false;
}

bool cmis_measures(const memory &map, quantity what) {
    switch (what) {
    case quantity::temperature:
        return bit_at(map, 1, 159, 0);
    case quantity::voltage:
        return bit_at(map, 1, 159, 1);
    case quantity::bias:
        return bit_at(map, 1, 160, 0);
    case quantity::tx_power:
        return bit_at(map, 1, 160, 1);
    case quantity::rx_power:
        return bit_at(map, 1, 160, 2);
    case quantity::laser_temperature:
        return bit_at(map, 1, 159, 3) && !bit_at(map, 1, 145, 1);
    case quantity::tec_current:
        break;
    }
    return bit_at(map, 1, 159, 2) && bit_at(map, 1, 145, 0);
}

} // namespace

bool is_of_each_lane(quantity what) {
    return what == quantity::bias || what == quantity::tx_power || what == quantity::rx_power;
}

bool measures(const memory &map, quantity what) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) && location_of(map, what).device != 0;
    case management::qsfp:
        return qsfp_measures(map, what);
    case management::cmis:
        break;
    }
    return cmis_measures(map, what);
}

double measured(const memory &map, quantity what, uint32_t lane) {
    const location &at = location_of(map, what);
    return in_units(word_at(map, at.device, at.page, at.value + 2 * lane), what);
}

std::array<double, 4> limits(const memory &map, quantity what) {
    const location &at = location_of(map, what);
    std::array<double, 4> found{};
    for (uint32_t i = 0; i < found.size(); ++i) {
        found[i] = in_units(word_at(map, at.device, at.limits_page, at.limits + 2 * i), what);
    }
    return found;
}

uint32_t flags(const memory &map, quantity what, uint32_t lane) {
    switch (managed_by(map)) {
    case management::sfp:
        return flags_of_sfp(map, what);
    case management::qsfp:
        return flags_of_qsfp(map, what, lane);
    case management::cmis:
        break;
    }
    return flags_of_cmis(map, what, lane);
}

} // namespace kestro_sim::optical_readings
