// Panel lamps. A lamp has the colours that its diodes give, and is driven by software or by the hardware it shows; the
// lamp test lights them all.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace lamp {

inline constexpr const char *color_names[]{"off", "green", "red", "yellow"};
inline constexpr const char *mode_names[]{"hardware", "software"};

inline constexpr reg color = reg::choice("color", color_names, "what it shows").required().written();
inline constexpr reg freq =
    reg::number("freq", 0, 1000, "0.1 Hz", "how fast it blinks; 0 is steady").required().written();
inline constexpr reg mode = reg::choice("mode", mode_names, "what drives it").required();
inline constexpr reg colors = reg::bits("colors", 0x0F, "the colours it has, bit N for colour N").required().fixed();
inline constexpr reg freq_max = reg::number("freq_max", 0, 1000, "0.1 Hz", "the fastest it blinks").required().fixed();

inline constexpr device_family family{"sim_led", "lamp", "a lamp", {color, freq, mode, colors, freq_max}};

bool has_color(board &b, const device_of<family> &which, uint32_t value);

// A lamp that shows the state of hardware cannot be set.
void show(board &b, const device_of<family> &which, uint32_t to_color, uint32_t to_freq);

} // namespace lamp

namespace lamp_test {

inline constexpr reg support = reg::flag("support", "whether the panel has a lamp test").required();
inline constexpr reg enable = reg::flag("enable", "whether all lamps are lit").written();
inline constexpr reg ctrl_enable = reg::flag("ctrl_enable", "whether the lamp-test logic has the lamps").written();

inline constexpr device_family family =
    device_family{"sim_led", "lamptest", "a lamp test", {support, enable, ctrl_enable}}.up_to(0);

// The panel may tell that it has no lamp test; then there is nothing to switch.
void require_support(board &b, const device_of<family> &test);

} // namespace lamp_test

namespace panel_patch {
inline constexpr reg answer = reg::text("answer", 63, "what the panel calls itself").required();
inline constexpr device_family family{"sim_led", "patch", "a patch function of the panel", {answer}};
} // namespace panel_patch

} // namespace kestro_sim
