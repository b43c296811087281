// Status registers of chips whose bits stand for faults.
#pragma once

#include "sim/core/finding.h"

#include <span>

namespace kestro_sim {

struct status_bit {
    uint32_t mask;
    const char *meaning;
};

// Bits that the chip's makers do not tell of are faults too.
inline finding faults_in(uint32_t status, std::span<const status_bit> bits) {
    uint32_t known = 0;
    finding found;
    for (const status_bit &bit : bits) {
        known |= bit.mask;
        if ((status & bit.mask) != 0) {
            add_fault(found, bit.meaning);
        }
    }
    if ((status & ~known) != 0) {
        add_fault(found, "unknown fault");
    }
    return found;
}

} // namespace kestro_sim
