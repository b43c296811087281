// Where each kind of management has what, but for its measurements.
#include "sim/drv/optical_lib/optical_readings.h"

#include <algorithm>

namespace kestro_sim::optical_readings {

namespace {

constexpr uint8_t first = optics::first_device;
constexpr uint8_t diagnostics = optics::diagnostics_device;

} // namespace

uint32_t byte_at(const memory &map, uint8_t device, int page, uint32_t address) {
    const auto found = map.find({device, address < optics::half ? optics::lower : page});
    return found == map.end() ? 0 : found->second[address % optics::half];
}

uint32_t word_at(const memory &map, uint8_t device, int page, uint32_t address) {
    return byte_at(map, device, page, address) << 8U | byte_at(map, device, page, address + 1);
}

bool bit_at(const memory &map, int page, uint32_t address, uint32_t bit) {
    return (byte_at(map, first, page, address) >> bit & 1U) != 0;
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

bool is_ready(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return (byte_at(map, diagnostics, 0, 110) & 1U) == 0;
    case management::qsfp:
        return !bit_at(map, 0, 2, 0);
    case management::cmis:
        break;
    }
    return (byte_at(map, first, 0, 3) >> 1U & 7U) == 3;
}

bool measures(const memory &map) {
    return managed_by(map) != management::sfp || bit_at(map, 0, 92, 6);
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
        return bit_at(map, 0, 64, 0);
    case management::qsfp:
        return false;
    case management::cmis:
        break;
    }
    return !bit_at(map, 1, 161, 0) && !bit_at(map, 1, 162, 0);
}

bool has_rates(const memory &map) {
    switch (managed_by(map)) {
    case management::sfp:
        return measures(map) && bit_at(map, 0, 65, 5);
    case management::qsfp:
        return bit_at(map, 0, 195, 5);
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
