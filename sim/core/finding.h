// The outcome of a check that a device makes of itself: 0 is good and has no text.
#pragma once

#include <cstdint>
#include <string>

namespace kestro_sim {

struct finding {
    uint32_t status = 0;
    std::string text;
};

// Adds a fault to what was found so far.
inline void add_fault(finding &found, const std::string &text) {
    found.status = 1;
    found.text += (found.text.empty() ? "" : ", ") + text;
}

} // namespace kestro_sim
