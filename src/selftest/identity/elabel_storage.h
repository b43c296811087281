// Electronic label storage: the test label and the write test.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The label area of a board: 1200 bytes, and a terminator of our own for labels that fill it.
constexpr uint32_t elabel_size = 1200;
using elabel_area = char[elabel_size + 1];

// Fills the target, at least elabel_size + 1 zeroed bytes, with the label text of the board's label file, or with a
// built-in text when that cannot be had, and tells the text's length. -1 for a null target only.
int get_test_label(char *target, uint32_t *length, report_sink sink);

// Saves the label, writes the test label, reads it back, writes the saved label back and compares. -1 when an operation
// fails; a mismatch is reported and passes.
int elabel_write_test(uint32_t inst_id, uint32_t elabel_id, report_sink sink);
