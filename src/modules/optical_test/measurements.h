// The measured values of a module, for all sub-commands that show them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "optical_lib/drv_opt.h"

namespace optical_commands {

constexpr uint32_t ddm_temperature = 0x30000;
constexpr uint32_t ddm_voltage = 0x30001;
constexpr uint32_t ddm_bias = 0x30002;
constexpr uint32_t ddm_tx_power = 0x30003;
constexpr uint32_t ddm_rx_power = 0x30004;

// How many values a record holds: a count beyond its room says nothing of what stands behind it.
inline uint32_t value_count(const drv_opt_ddm_value &values) {
    return std::min<uint32_t>(values.count, DRV_OPT_LANES_MAX);
}

} // namespace optical_commands
