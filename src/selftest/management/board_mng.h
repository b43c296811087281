// The board management section of the self-test.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// All checks of the board as a whole, one after the other, whatever those before found.
int board_mng_test(uint32_t inst_id, report_sink sink);
