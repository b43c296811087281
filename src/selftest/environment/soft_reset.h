// Soft resets: how the board started last, and whether what it keeps about that is of one mind.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Of boards that describe soft resets; others pass. -1 when the reset type cannot be right, a variable cannot be read,
// or the variables contradict each other.
int soft_reset_section(uint32_t inst_id, report_sink sink);
