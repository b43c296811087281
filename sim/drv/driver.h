// What a simulated driver family needs; docs/devices.md shows one from end to end.
//
//   uint32_t drv_voltage_get_value(uint32_t inst_id, uint32_t voltage_id, uint32_t *value) {
//       return operate([&](board &b) {
//           refuse_null(value);
//           *value = b.get(b.find<rail::family>(inst_id, voltage_id), rail::millivolts);
//       });
//   }
//
// Operations validate first, then read or write registers of described devices (sim/core/board.h). They never call
// another operation; what two of them share is a function in an unnamed namespace.
#pragma once

#include "sim/core/operation.h"

#include <cstring>
#include <string_view>

namespace kestro_sim {

// Copies a text with its terminator into an area of size bytes; refuses one that is too small.
inline void write_text(char *area, size_t size, std::string_view text) {
    refuse_null(area);
    refuse_if(text.size() >= size, error::too_small);
    std::memcpy(area, text.data(), text.size());
    area[text.size()] = '\0';
}

// The same, cut to the area; refuses one without room for a terminator.
inline void write_cut_text(char *area, size_t size, std::string_view text) {
    refuse_if(size == 0, error::too_small);
    write_text(area, size, text.substr(0, size - 1));
}

} // namespace kestro_sim
