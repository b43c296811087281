// Bar code storage: the write test and the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Saves the bar code, writes the test text, reads it back, writes the saved one back and compares. 0 when they match
// or the board has no such bar code, else -1.
int barcode_write_test(uint32_t inst_id, uint32_t barcode_id, report_sink sink);

// The write test on every bar code of the board description. -1 when one fails or none is described.
int barcode_section(uint32_t inst_id, report_sink sink);
