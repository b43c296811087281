// What the storage devices of a new board hold.
#pragma once

#include "sim/core/description.h"

#include <filesystem>

namespace kestro_sim {

// Writes the image files of all described storage devices: identity EEPROMs, flash, NVRAM.
void write_new_images(const description &chassis, const std::filesystem::path &directory);

} // namespace kestro_sim
