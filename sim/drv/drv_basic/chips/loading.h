// What the operations that load programmable logic have in common: the driver stays until the last byte is there, and
// leaves the board to others meanwhile.
#pragma once

#include "sim/devices/chips/logic_load.h"
#include "sim/drv/driver.h"

#include <chrono>
#include <thread>

namespace kestro_sim {

using image_bytes = std::span<const uint8_t>;

template <typename Begin, typename Finish>
uint32_t load_in_steps(const uint8_t *buffer, uint32_t length, Begin begin, Finish finish) {
    logic_load::begun load;
    const uint32_t result = operate([&](board &b) {
        refuse_null(buffer);
        load = begin(b, image_bytes(buffer, length));
    });
    if (result != 0) {
        return result;
    }
    std::this_thread::sleep_for(std::chrono::nanoseconds(load.nanoseconds));
    return operate([&](board &b) { finish(b, load); });
}

} // namespace kestro_sim
