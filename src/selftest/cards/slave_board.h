// What a slave board must not reach.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The type of a card stands in the card's own logic, which answers the master alone: every card on line has to refuse
// the slave. -1 at the first one that does not.
int slave_special_section(uint32_t inst_id, report_sink sink);
