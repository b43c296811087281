// Bytes of a file as rows of sixteen, in hexadecimal and as text.
#pragma once

#include <cstdint>

// The rows are whole ones, from the offset rounded down to 16; what a row has before the offset and behind the last
// byte is "-- " and "-". Addresses show the low 32 bits of the offset.
void print_hex_dump(uint64_t offset, const uint8_t *data, uint32_t length);
