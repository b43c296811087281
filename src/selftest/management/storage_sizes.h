// Memories of the board: their sizes, and what the memory modules tell of their making.
#pragma once

#include <cstdint>

#include "selftest/report.h"

int check_storage_sizes(uint32_t inst_id, report_sink sink);
