// Interrupt lines of the board, as its combiners collect them.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Registers, masks and unmasks every interrupt line of the board description and looks for it in the kernel's table.
// Lines that pass stay registered and enabled.
int intr_section(uint32_t inst_id, report_sink sink);
