// Where each kind of management has what.
#include "sim/drv/optical_lib/optical_readings.h"

#include <algorithm>
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

bool has_bit(const memory &map, int page, uint32_t address, uint32_t bit) {
    return (byte_at(map, first, page, address) >> bit & 1U) != 0;
}

bool qsfp_measures(const memory &map, quantity what) {
    switch (what) {
    case quantity::temperature:
        return has_bit(map, 0, 220, 5);
    case quantity::voltage:
        return has_bit(map, 0, 220, 4);
    case quantity::tx_power:
        return has_bit(map, 0, 220, 2);
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
        return has_bit(map, 1, 159, 0);
    case quantity::voltage:
        return has_bit(map, 1, 159, 1);
    case quantity::bias:
        return has_bit(map, 1, 160, 0);
    case quantity::tx_power:
        return has_bit(map, 1, 160, 1);
    case quantity::rx_power:
        return has_bit(map, 1, 160, 2);
    case quantity::laser_temperature:
        return has_bit(map, 1, 159, 3) && !has_bit(map, 1, 145, 1);
    case quantity::tec_current:
        break;
    }
    return has_bit(map, 1, 159, 2) && has_bit(map, 1, 145, 0);
}

} // namespace

uint32_t byte_at(const memory &map, uint8_t device, int page, uint32_t address) {
    const auto found = map.find({device, address < optics::half ? optics::lower : page});
    return found == map.end() ? 0 : found->second[address % optics::half];
}

uint32_t word_at(const memory &map, uint8_t device, int page, uint32_t address) {
    return byte_at(map, device, page, address) << 8U | byte_at(map, device, page, address + 1);
}

management managed_by(const memory &map) {
    switch (byte_at(map, first, 0, 0)) {
    case 0x03:
        return management::sfp;
    case 0x0D:
    case 0x11:
        return management::qsfp;
    default:
        return management::cmis;
    }
}

uint32_t lanes(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return 1;
    case management::qsfp:
        return 4;
    case management::cmis:
        break;
    }
    return byte_at(map, first, 0, 88) & 0x0FU;
}

bool is_of_each_lane(quantity what) {
    return what == quantity::bias || what == quantity::tx_power || what == quantity::rx_power;
}

bool is_ready(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return (byte_at(map, diagnostics, 0, 110) & 1U) == 0;
    case management::qsfp:
        return !has_bit(map, 0, 2, 0);
    case management::cmis:
        break;
    }
    return (byte_at(map, first, 0, 3) >> 1U & 7U) == 3;
}

bool measures(const memory &map) {
    return managed_by(map) != management::sfp || has_bit(map, 0, 92, 6);
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

std::optional<uint32_t> dark_lanes(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) ? std::optional(byte_at(map, diagnostics, 0, 110) >> 1U & 1U) : std::nullopt;
    case management::qsfp:
        return byte_at(map, first, 0, 3) & 0x0FU;
    case management::cmis:
        break;
    }
    return byte_at(map, first, 0x11, 147);
}

std::optional<uint32_t> failed_lanes(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) ? std::optional(byte_at(map, diagnostics, 0, 110) >> 2U & 1U) : std::nullopt;
    case management::qsfp:
        return byte_at(map, first, 0, 4) & 0x0FU;
    case management::cmis:
        break;
    }
    return byte_at(map, first, 0x11, 135);
}

std::optional<uint32_t> disabled_lanes(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) ? std::optional((byte_at(map, diagnostics, 0, 110) & 0xC0U) != 0 ? 1U : 0U) : std::nullopt;
    case management::qsfp:
        return byte_at(map, first, 0, 86) & 0x0FU;
    case management::cmis:
        break;
    }
    return byte_at(map, first, 0x10, 130);
}

// A wide module has no byte for it: it is what its media interface has.
uint32_t encoding(const memory &map) {
    static constexpr uint32_t pam4 = 0x08;
    switch (managed_by(map)) {
    case management::sfp:
        return byte_at(map, first, 0, 11);
    case management::qsfp:
        return byte_at(map, first, 0, 139);
    case management::cmis:
        break;
    }
    return pam4;
}

bool is_linear(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return has_bit(map, 0, 64, 0);
    case management::qsfp:
        return false;
    case management::cmis:
        break;
    }
    return !has_bit(map, 1, 161, 0) && !has_bit(map, 1, 162, 0);
}

bool has_rates(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) && has_bit(map, 0, 65, 5);
    case management::qsfp:
        return has_bit(map, 0, 195, 5);
    case management::cmis:
        break;
    }
    return false;
}

uint32_t mbit_per_s(const memory &map) {
    static constexpr uint32_t says_the_other_byte = 0xFF;
    switch (managed_by(map)) {
    case management::sfp:
        return byte_at(map, first, 0, 12) * 100;
    case management::qsfp: {
        const uint32_t byte = byte_at(map, first, 0, 140);
        return lanes(map) * (byte == says_the_other_byte ? byte_at(map, first, 0, 222) * 250 : byte * 100);
    }
    case management::cmis:
        break;
    }
    return 0;
}

uint32_t nanometres(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return word_at(map, first, 0, 60);
    case management::qsfp:
        return word_at(map, first, 0, 186) / 20;
    case management::cmis:
        break;
    }
    return word_at(map, first, 1, 138) / 20;
}

reach distances(const memory &map) {
    const auto metres = [&](int page, uint32_t address, uint32_t unit) {
        return byte_at(map, first, page, address) * unit;
    };
    if (managed_by(map) == management::qsfp) {
        return {metres(0, 145, 1), metres(0, 144, 1), metres(0, 143, 2), metres(0, 146, 2), metres(0, 142, 1000), 0};
    }
    if (managed_by(map) == management::cmis) {
        static constexpr uint32_t units[]{100, 1000, 10000, 0};
        const uint32_t sm = byte_at(map, first, 1, 132);
        return {0, metres(1, 136, 1), metres(1, 135, 2), metres(1, 134, 2), (sm & 0x3FU) * units[sm >> 6U], 0};
    }
    const bool is_copper = nanometres(map) == 0;
    return {metres(0, 17, 10),
            metres(0, 16, 10),
            metres(0, 19, 10),
            is_copper ? 0 : metres(0, 18, 10),
            std::max(metres(0, 14, 1000), metres(0, 15, 100)),
            is_copper ? metres(0, 18, 1) : 0};
}

} // namespace kestro_sim::optical_readings
