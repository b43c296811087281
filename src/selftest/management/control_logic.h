// Programmable control logic of the own board, and what the board says that it can do.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Both ask the board that the program runs on, whichever board is under test: drivers know logic chips and capabilities
// of no other.
int check_control_logic(uint32_t inst_id, report_sink sink);
int check_capability(uint32_t inst_id, report_sink sink);
