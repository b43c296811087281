// Health of the board: solder joints, corrosion, interrupt lines with what raises one for a test, and the trusted
// platform module.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace corner_joint {
inline constexpr reg status =
    reg::number("status", 0, any_u32, "", "other than 0 when a corner joint is open").required();
inline constexpr device_family family{"sim_board", "corner", "the corner joints of a chip", {status}};
} // namespace corner_joint

namespace corrosion_sensor {
inline constexpr reg status = reg::number("status", 0, any_u32, "", "other than 0 on corrosion").required();
inline constexpr device_family family{"sim_board", "corrosion", "a corrosion sensor", {status}};
} // namespace corrosion_sensor

// Some logic chips raise an interrupt for a test. Its source stands while the key is right and the bit is set; it sets
// bit 0 of the chip's latch, which stays until a 1 is written there without the source.
namespace test_interrupt {
inline constexpr uint32_t right_key = 0x7788;
inline constexpr reg key = reg::bits("key", 0xFFFF, "0x7788 lets the test interrupt be raised").written().or_else(0);
inline constexpr reg raise = reg::flag("raise", "whether it is raised, where the key is right").written().or_else(0);
inline constexpr reg latched = reg::flag("latched", "its bit in the latch of the chip").written().or_else(0);
inline constexpr reg stuck =
    reg::flag("stuck", "whether that bit stays once it was set, whatever is written").or_else(0);
inline constexpr device_family family{
    "sim_board", "test_interrupt", "the test interrupt of a logic chip", {key, raise, latched, stuck}};

// As the chip's bus sees them.
uint32_t read_latch(board &b, const device &which);
bool latch_takes(board &b, const device &which, uint32_t value);
uint32_t read_key(board &b, const device &chip, uint32_t address);
void write_key(board &b, const device &chip, uint32_t address, uint32_t value);
uint32_t read_raise(board &b, const device &chip, uint32_t address);
void write_raise(board &b, const device &chip, uint32_t address, uint32_t value);

// As after power-on; nothing for a chip without it.
void reset(board &b, change &writes, const device &chip);
} // namespace test_interrupt

// A line is raised while its source is: that of a test interrupt by its latch, any other as the technician sets it.
namespace interrupt_line {
inline constexpr const char *defects[]{"none", "dead", "once", "edge", "unmaskable"};
enum defect_kind : uint8_t {
    sound,
    dead,      // its handler is never called
    once,      // it is not acknowledged: after the first call it waits for ever, until a handler is registered anew
    edge,      // a call for each time that it is raised, and none for what is raised while it is disabled
    unmaskable // it is let through whatever is set
};

inline constexpr reg type = reg::number("type", 0, any_u32, "", "the type of interrupt").required().fixed();
inline constexpr reg fault = reg::flag("fault", "whether the line is stuck").required();
inline constexpr reg numbered =
    reg::flag("numbered", "whether it is called by its index, and not by its type alone").or_else(1).fixed();
inline constexpr reg test_of =
    reg::number("test_of", 0, any_u32, "", "the logic chip whose test interrupt it carries").fixed();
inline constexpr reg enabled = reg::flag("enabled", "whether it is let through").written().or_else(0);
inline constexpr reg raised = reg::flag("raised", "whether its source is raised").or_else(0);
inline constexpr reg defect = reg::choice("defect", defects, "what is wrong with it").or_else(sound);
inline constexpr device_family family{
    "sim_board", "interrupt", "an interrupt line", {type, fault, numbered, test_of, enabled, raised, defect}};

bool is_raised(board &b, const device_of<family> &line);
bool is_let_through(board &b, const device_of<family> &line);
} // namespace interrupt_line

namespace trusted_module {
inline constexpr reg absent = reg::flag("absent", "whether the module is missing").required();
inline constexpr reg active = reg::flag("active", "whether it works").required();
inline constexpr device_family family =
    device_family{"sim_board", "tpm", "the trusted platform module", {absent, active}}.up_to(0);
} // namespace trusted_module

} // namespace kestro_sim
