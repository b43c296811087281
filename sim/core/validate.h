// Checks of the merged chassis. Each throws description_error at the first thing that is wrong, in file order.
#pragma once

#include "sim/core/description.h"

namespace kestro_sim {

// The form: level tags, names, numbering, values.
void validate_form(const description &board);

// The registers of the simulated devices, family by family.
void validate_families(const description &board);

// What one register cannot tell by itself: labels fit their sections, sections do not overlap, layouts are there.
// Values are good already.
void validate_devices(const description &board);

} // namespace kestro_sim
