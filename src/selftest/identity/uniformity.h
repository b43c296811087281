// Whether the master and backup copies of a card's identity are uniform.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Compare the master and backup sections of the card's EEPROM. Always 0: the lines tell.
int elabel_uniformity_check(uint32_t inst_id, report_sink sink);
int mac_uniformity_check(uint32_t inst_id, report_sink sink);
