// The backplane, as a main processing unit reads it.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// For the master only: both main processing units read the same pins, and one of them tells.
int check_backplane(uint32_t inst_id, report_sink sink);
