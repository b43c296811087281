// Error counters of the management bus between the boards.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// No section runs it: boards that are pulled and plugged while the chassis runs leave errors on the bus, so the
// counters are only good after a start of the whole chassis. It is for whoever looks into such a case.
int check_smb_counters(uint32_t inst_id, report_sink sink);
