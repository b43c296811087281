// Storage devices that are raw images.
#pragma once

#include "sim/core/family.h"

namespace kestro_sim::storage_image {

inline constexpr reg size = reg::number("size", 0, 1 << 30, "B", "the image's bytes").required().of_production();
inline constexpr reg fill =
    reg::bits("fill", 0xFF, "the byte that the new image is filled with").required().of_production();
inline constexpr reg text =
    reg::text("text", 1024, "what stands in it from production, behind the CRC-16 of all that follows").of_production();
inline constexpr device_family family =
    device_family{"sim_storage", "image", "a storage image", {size, fill, text}}.named(naming::by_name);

} // namespace kestro_sim::storage_image
