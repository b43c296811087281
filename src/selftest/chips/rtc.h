// The real-time clock: the self-test section.
#pragma once

#include <cstdint>

// Battery, time, agreement with the system clock, a write test and the registers. The lines go into the buffer from the
// fill length on, bounded by the capacity. -1 when an item fails or no clock is described.
int rtc_section(uint32_t inst_id, char *buffer, uint32_t capacity, uint32_t *fill);
