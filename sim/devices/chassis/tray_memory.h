// What a fan tray keeps: its electronic label, its ability file (what its fans can) and its expanded label, images of
// their CRC-16, the more significant byte first, and data filled with zeros.
#pragma once

#include "sim/devices/chassis/fan_tray.h"

#include <span>
#include <vector>

namespace kestro_sim::tray_memory {

inline constexpr uint32_t image_size = 1026;

enum class kind { label, ability, expanded_label };

// not_supported by a tray without.
std::vector<uint8_t> read(board &b, const fan_tray::one &tray, kind which);

// Whole images with their checksum, or nothing.
void write(board &b, const fan_tray::one &tray, kind which, std::span<const uint8_t> image);

} // namespace kestro_sim::tray_memory
