// The SMI bus to the Ethernet PHYs: the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Reads the control register of every described PHY and writes it back. -1 when one fails; 0 when none is described.
int mdio_section(uint32_t inst_id, report_sink sink);
