// The one-key test of a plug-in card.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Presence, type, layout of the EEPROM, and then what that layout has: identity storage, sensors and power. inst_id is
// the selector of the card.
int card_onekey_test(uint32_t inst_id, report_sink sink);
