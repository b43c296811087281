// MAC address storage: the write test of one type and the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Saves the count and addresses of a MAC type, writes a test address, reads it back, writes the saved ones back and
// compares count and first address. 0 when they match, else -1.
int mac_write_test(uint32_t inst_id, uint32_t type_id, report_sink sink);

// The write test on every type of the board description, and whether each has its spare storage. Types that belong to
// the whole chassis are tested on the master board only.
int mac_section(uint32_t inst_id, report_sink sink);
