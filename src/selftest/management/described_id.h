// Numbers of chips, monitors and counters in the board description.
#pragma once

#include <cstdint>

#include "selftest/entry_walk.h"

// They have eight bits. All ones is the number of none: the entry has no such chip or monitor.
constexpr uint32_t no_id = 0xff;

// An entry that does not say the number has none.
inline uint32_t read_id(const entry_walk &walk, const char *element) {
    uint32_t id = no_id;
    return read_element(walk, element, &id) == 0 ? id : no_id;
}
