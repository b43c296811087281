// From options to a running kestro_test: finds the parts, checks what was named, makes the board ready, sets the
// environment.
#pragma once

#include "sim/launcher/options.h"

namespace kestro_sim {

// Becomes kestro_test. Comes back when there was nothing to run but the technician's work, or by throwing.
bool launch(const launch_options &options);

} // namespace kestro_sim
