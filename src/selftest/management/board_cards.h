// The cards of the board.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Every card that is there, in card slots of the chassis or on the board itself: its power is switched off and on
// again, it must be ready, and it must tell its type.
int check_cards(uint32_t inst_id, report_sink sink);
