// A change that spans several blocks of an image and registers that may be new: what a store must do whole or not at
// all.
#pragma once

#include "sim/core/store.h"

#include <vector>

namespace kestro_tests {

inline std::vector<uint8_t> bytes_of(size_t count, uint8_t value) {
    return std::vector<uint8_t>(count, value);
}

// Both copies of the label are filled with the value, and the two registers follow it.
inline kestro_sim::change label_change(uint8_t value) {
    kestro_sim::change writes;
    writes.write("eeprom-slot9.bin", 16, bytes_of(1200, value));
    writes.write("eeprom-slot9.bin", 1216, bytes_of(1200, value));
    writes.put("self/a/b/0/low", value);
    writes.put("self/a/b/0/high", value + 1U);
    return writes;
}

} // namespace kestro_tests
