// Power domains, switched off and on again.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The domain of a board or card loses its power and is left switched on, whatever it was before. A domain that it does
// not have passes without a line. At the first step that fails the domain stays as it is.
int power_cycle(uint32_t selector, uint32_t power_type, report_sink sink);

// All domains that the board's EPLD switches, as they are described.
int check_epld_power(uint32_t inst_id, report_sink sink);
