// An image for programmable logic, as scripts/make_image makes it.
//
//   bytes 0-3 "KLOG"; then numbers, least significant byte first: the part that it is for (32 bits), the version of the
//   logic (32), the year (16), month and day (8 each) in which it was made, the length of the configuration (32), and
//   the CRC-32 of all these numbers and the configuration; the configuration
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kestro_sim {

inline constexpr size_t logic_image_head_size = 24;
inline constexpr uint32_t logic_version_max = 0xFFFF;

struct logic_image {
    uint32_t part = 0;
    uint32_t version = 0;
    uint32_t year = 0;
    uint32_t month = 0;
    uint32_t day = 0;
    std::span<const uint8_t> configuration;
};

// Refuses what does not begin as an image, and numbers that no chip tells: bad_value. Refuses an image that was cut
// short or lengthened, or whose checksum is wrong: damaged.
logic_image decode_logic_image(std::span<const uint8_t> bytes);

} // namespace kestro_sim
