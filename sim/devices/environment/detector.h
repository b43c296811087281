// Detector chips with several channels: what each channel is wired to is a sensor or a rail of the same board.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"
#include "sim/devices/environment/rail.h"
#include "sim/devices/environment/temperature.h"

namespace kestro_sim {

namespace temperature_detector {
inline constexpr reg channel0 = reg::number("channel0", 0, any_u32, "", "the sensor at channel 0").fixed();
inline constexpr reg channel1 = reg::number("channel1", 0, any_u32, "", "the sensor at channel 1").fixed();
inline constexpr reg channel2 = reg::number("channel2", 0, any_u32, "", "the sensor at channel 2").fixed();
inline constexpr reg channel3 = reg::number("channel3", 0, any_u32, "", "the sensor at channel 3").fixed();
inline constexpr device_family family{
    "sim_tempdetec", "chip", "a temperature detector chip", {channel0, channel1, channel2, channel3}};

// A channel that is not wired is refused.
sensor::one wired_to(board &b, const device_of<family> &chip, uint32_t channel);

extern const register_space registers;
} // namespace temperature_detector

namespace voltage_detector {
inline constexpr reg channel0 = reg::number("channel0", 0, any_u32, "", "the rail at channel 0").fixed();
inline constexpr reg channel1 = reg::number("channel1", 0, any_u32, "", "the rail at channel 1").fixed();
inline constexpr reg channel2 = reg::number("channel2", 0, any_u32, "", "the rail at channel 2").fixed();
inline constexpr reg channel3 = reg::number("channel3", 0, any_u32, "", "the rail at channel 3").fixed();
inline constexpr device_family family{
    "sim_voltdetec", "chip", "a voltage detector chip", {channel0, channel1, channel2, channel3}};

rail::one wired_to(board &b, const device_of<family> &chip, uint32_t channel);

extern const register_space registers;
} // namespace voltage_detector

} // namespace kestro_sim
