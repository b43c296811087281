// The MAC section of an identity EEPROM: per address type a count and a base address.
//
//   bytes 0-2 "MAC", byte 3 format 1, byte 4 number of records, bytes 5-7 zero, then records of ten bytes:
//   type, zero, count (two bytes, most significant first), base address (six bytes)
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kestro_sim {

inline constexpr size_t mac_header_size = 8;
inline constexpr size_t mac_record_size = 10;
inline constexpr uint32_t mac_type_max = 255;
inline constexpr uint32_t mac_count_max = 65535;

using mac_address = std::array<uint8_t, 6>;

struct mac_record {
    uint8_t type;
    uint16_t count;
    mac_address base;
};

mac_address address_from_number(uint64_t number);
uint64_t number_from_address(const mac_address &address);

// How many records an area of that size holds.
size_t mac_area_capacity(size_t size);

std::vector<uint8_t> encode_mac_area(std::span<const mac_record> records, size_t size);

// Nothing when the area holds no MAC records.
std::optional<std::vector<mac_record>> decode_mac_area(std::span<const uint8_t> area);

} // namespace kestro_sim
