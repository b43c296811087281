// Slots of the chassis: their range, what the backplane tells of each type, and the type of each slot.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Count, first number and list of one type agree.
int check_slots_of_type(uint32_t type, report_sink sink);

int check_slot_types(uint32_t first, uint32_t last, report_sink sink);

// The slots are those of the chassis, whatever board is under test.
int slot_section(uint32_t inst_id, report_sink sink);
