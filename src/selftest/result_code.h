// How the self-test reads driver result codes.
#pragma once

#include <cstdint>

// The low byte alone tells that a board lacks an operation; the rest of the code names the driver.
constexpr bool is_not_supported(uint32_t ret) {
    return (ret & 0xFF) == 0xA4;
}
