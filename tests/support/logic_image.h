// Images for programmable logic, byte for byte as their format has it. The checksum is worked out bit by bit here.
#pragma once

#include <cstdint>
#include <string>

namespace kestro_tests {

inline uint32_t crc32_bit_by_bit(const std::string &bytes) {
    uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 1U) != 0 ? crc >> 1U ^ 0xEDB88320U : crc >> 1U;
        }
    }
    return ~crc;
}

inline std::string least_byte_first(uint32_t number, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> (8 * i));
    }
    return bytes;
}

struct image_parts {
    uint32_t part = 0;
    uint32_t version = 0;
    uint32_t year = 2026;
    uint32_t month = 1;
    uint32_t day = 10;
    std::string configuration = "logic";
};

inline std::string image_bytes(const image_parts &of) {
    const std::string numbers = least_byte_first(of.part, 4) + least_byte_first(of.version, 4) +
                                least_byte_first(of.year, 2) + least_byte_first(of.month, 1) +
                                least_byte_first(of.day, 1) +
                                least_byte_first(static_cast<uint32_t>(of.configuration.size()), 4);
    const uint32_t checksum = crc32_bit_by_bit(numbers + of.configuration);
    return "KLOG" + numbers + least_byte_first(checksum, 4) + of.configuration;
}

} // namespace kestro_tests
