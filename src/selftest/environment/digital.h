// The dry contacts: the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Reads every input, switches every output over and back, and sets the modes of all. -1 when one fails; what the board
// does not describe is not tested.
int digital_section(uint32_t inst_id, report_sink sink);
