// Temperatures of a board or card.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Every sensor of the description answers. The selector may be that of a card.
int temperature_section(uint32_t inst_id, report_sink sink);
