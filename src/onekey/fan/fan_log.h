// The log that the fan driver keeps for itself.
#pragma once

#include <cstdint>

// Reads it into the buffer, of which the last byte is left alone; no terminator is written. 0, or -1 when there is no
// such log or it cannot be read.
int fan_log_fetch(char *buffer, uint32_t size);
