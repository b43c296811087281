// What the board is equipped with: the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Looks every described capability up in the driver. -1 when one is not known there or none is described.
int board_capability_section(uint32_t inst_id, report_sink sink);
