// The boot step: how far the start of the board has come, kept where its peer can read it.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Saves the own step, writes another one, reads it back and writes the saved one back. The peer's step is read too,
// and only shown where that fails.
int check_boot_step(uint32_t inst_id, report_sink sink);
