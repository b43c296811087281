// The serial presence detect of DDR4 modules: most of it stands in the module's registers, packed as the standard says.
#include "sim/devices/management/memory.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

namespace {

using module_registers = device_of<dimm::family>;

// Bytes are called by their SPD numbers.
constexpr uint32_t maker_at = 320;
constexpr uint32_t site_at = 322;
constexpr uint32_t year_at = 323;
constexpr uint32_t week_at = 324;
constexpr uint32_t serial_at = 325;
constexpr uint32_t part_number_at = 329;
constexpr uint32_t revision_at = 349;
constexpr uint32_t chip_maker_at = 350;
constexpr uint32_t stepping_at = 352;
constexpr uint32_t rest_at = 353;

uint32_t bcd(uint32_t number) {
    return (number / 10 % 10) << 4U | number % 10;
}

// Highest byte first.
uint32_t byte_of(uint32_t value, uint32_t length, uint32_t index) {
    return value >> 8 * (length - 1 - index) & 0xFFU;
}

uint32_t part_number_byte(board &b, const module_registers &which, uint32_t index) {
    const std::string part = b.text(which, dimm::part_number);
    return index < part.size() ? static_cast<unsigned char>(part[index]) : ' ';
}

uint32_t spd_byte(board &b, const device &chip, uint32_t at) {
    const module_registers which{chip};
    if (at < site_at) {
        return byte_of(b.get(which, dimm::maker), 2, at - maker_at);
    }
    if (at >= serial_at && at < part_number_at) {
        return byte_of(b.get(which, dimm::serial), 4, at - serial_at);
    }
    if (at >= part_number_at && at < revision_at) {
        return part_number_byte(b, which, at - part_number_at);
    }
    if (at >= chip_maker_at && at < stepping_at) {
        return byte_of(b.get(which, dimm::chip_maker), 2, at - chip_maker_at);
    }
    switch (at) {
    case site_at:
        return b.get(which, dimm::site);
    case year_at:
        return bcd(b.get(which, dimm::year));
    case week_at:
        return bcd(b.get(which, dimm::week));
    case revision_at:
        return b.get(which, dimm::revision);
    case stepping_at:
        return b.get(which, dimm::stepping);
    default:
        return 0;
    }
}

constexpr space_register spd_registers[]{
    {.address = dimm::spd_first,
     .name = "manufacturing",
     .meaning = "the manufacturing block",
     .count = rest_at - dimm::spd_first,
     .read = spd_byte},
    {.address = rest_at,
     .name = "manufacturer's own",
     .meaning = "bytes for the manufacturer's own use",
     .read_only = 0xFF,
     .count = dimm::spd_first + dimm::spd_size - rest_at},
};

} // namespace

constexpr register_space dimm::spd{"spd", &dimm::family, 8, 512, undeclared::all_ones, spd_registers};

device_list devices_of_memory() {
    static constexpr const device_family *families[]{&memory::family, &dimm::family, &processor::family};
    static constexpr const register_space *spaces[]{&dimm::spd};
    return {families, spaces};
}

} // namespace kestro_sim
