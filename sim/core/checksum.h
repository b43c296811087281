// CRC-32 (the one of Ethernet frames): what registers, images and the journal are checked with. CRC-16: what units with
// a controller of their own (fan trays, power supplies) check their data with.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace kestro_sim {

namespace checksum_tables {

using table = std::array<std::array<uint32_t, 256>, 4>;

// The first table steps by one byte; four of them together take a word at a time.
constexpr table make() {
    table made{};
    for (uint32_t byte = 0; byte < 256; ++byte) {
        uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
        made[0][byte] = crc;
    }
    for (size_t step = 1; step < made.size(); ++step) {
        for (size_t byte = 0; byte < 256; ++byte) {
            const uint32_t before = made[step - 1][byte];
            made[step][byte] = (before >> 8U) ^ made[0][before & 0xFFU];
        }
    }
    return made;
}

inline constexpr table tables = make();

} // namespace checksum_tables

// Of bytes that follow on others, given the checksum of those.
constexpr uint32_t checksum(std::span<const uint8_t> bytes, uint32_t before = 0) {
    const checksum_tables::table &t = checksum_tables::tables;
    uint32_t crc = ~before;
    for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
        crc ^= static_cast<uint32_t>(bytes[0]) | static_cast<uint32_t>(bytes[1]) << 8U |
               static_cast<uint32_t>(bytes[2]) << 16U | static_cast<uint32_t>(bytes[3]) << 24U;
        crc = t[3][crc & 0xFFU] ^ t[2][crc >> 8U & 0xFFU] ^ t[1][crc >> 16U & 0xFFU] ^ t[0][crc >> 24U];
    }
    for (const uint8_t byte : bytes) {
        crc = (crc >> 8U) ^ t[0][(crc ^ byte) & 0xFFU];
    }
    return ~crc;
}

// Polynomial 0x1021, all ones to begin with.
constexpr uint16_t crc16_checksum(std::span<const uint8_t> bytes) {
    uint32_t crc = 0xFFFF;
    for (const uint8_t byte : bytes) {
        crc ^= static_cast<uint32_t>(byte) << 8U;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x8000U) != 0 ? (crc << 1U) ^ 0x1021U : crc << 1U;
        }
        crc &= 0xFFFFU;
    }
    return static_cast<uint16_t>(crc);
}

} // namespace kestro_sim
