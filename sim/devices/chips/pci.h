// PCI Express: the processor's cores with a link each, and the devices behind them. A device has 256 bytes of
// configuration space and up to two windows: one of 64 bits in its base registers 0 and 1, one of 32 bits in 2.
#pragma once

#include "sim/core/register_space.h"

namespace kestro_sim {

namespace pci_device {

inline constexpr reg bus = reg::number("bus", 0, 0xFF, "", "its bus").required().fixed();
inline constexpr reg number = reg::number("device", 0, 0x1F, "", "its device number there").required().fixed();
inline constexpr reg function = reg::number("function", 0, 7, "", "its function").required().fixed();
inline constexpr reg core = reg::number("core", 0, 7, "", "the core that it is behind").required().fixed();
inline constexpr reg vendor_id = reg::bits("vendor_id", 0xFFFF, "who made it").required().fixed();
inline constexpr reg device_id = reg::bits("device_id", 0xFFFF, "what it is").required().fixed();
inline constexpr reg class_code = reg::bits("class_code", 0xFFFFFF, "what it serves for").required().fixed();
inline constexpr reg revision = reg::bits("revision", 0xFF, "its revision").or_else(0).fixed();
inline constexpr reg command = reg::bits("command", 0x0547, "what it is allowed to do").written().or_else(0x0006);
inline constexpr reg status =
    reg::bits("status", 0xFFFF, "bits 8 and 11 to 15 are errors, which a written 1 clears").written().or_else(0x0010);
inline constexpr reg bar0_size =
    reg::bits("bar0_size", any_u32, "bytes of its window at base registers 0 and 1, a power of two").fixed();
inline constexpr reg bar0 = reg::bits("bar0", any_u32, "where that window is: the lower 32 bits").written();
inline constexpr reg bar1 = reg::bits("bar1", any_u32, "the upper 32 bits").written();
inline constexpr reg bar2_size =
    reg::bits("bar2_size", any_u32, "bytes of its window at base register 2, a power of two").fixed();
inline constexpr reg bar2 = reg::bits("bar2", any_u32, "where that window is").written();
inline constexpr reg removed = reg::flag("removed", "whether it was taken off its bus").written().or_else(0);

inline constexpr device_family family = device_family{
    "sim_pci",
    "device",
    "a PCI device",
    {bus, number, function, core, vendor_id, device_id, class_code, revision, command, status, bar0_size, bar0, bar1,
     bar2_size, bar2, removed}}.up_to(3);

using one = device_of<family>;

bool is_there(board &b, const one &which);

// By double words. A device that was removed reads as all ones and takes no write.
uint32_t read_config(board &b, const one &which, uint32_t offset);
void write_config(board &b, const one &which, uint32_t offset, uint32_t value);

// Refuse one that is not there, or is there already gone (no_such_device).
void remove(board &b, const one &which);

// A device that comes back is as after power-on, in the windows that it had.
void bring_back(board &b, const one &which);

struct window {
    uint64_t address;
    uint32_t size;
};

// Refuses a window that the device lacks (not_supported), and the upper half of one (bad_value).
window window_at(board &b, const one &which, uint32_t bar);

} // namespace pci_device

namespace pci_core {

inline constexpr const char *modes[]{"root complex", "end point"};

inline constexpr reg link = reg::flag("link", "whether its link comes up when there is a device").or_else(1);
inline constexpr reg speed = reg::number("speed", 1, 5, "", "the generation that its link has trained to").required();
inline constexpr reg mode = reg::choice("mode", modes, "which end of the link it is").or_else(0);
inline constexpr reg max_payload = reg::number("max_payload", 128, 4096, "bytes", "the largest packet").required();
inline constexpr reg max_read_request =
    reg::number("max_read_request", 128, 4096, "bytes", "the largest read").required();
inline constexpr reg mute = reg::flag("mute", "whether its status register does not answer").or_else(0);
inline constexpr reg dllp_err = reg::number("dllp_err", 0, any_u32, "", "broken packets of the link layer").or_else(0);
inline constexpr reg tlp_err =
    reg::number("tlp_err", 0, any_u32, "", "broken packets of the transaction layer").or_else(0);

inline constexpr device_family family = device_family{
    "sim_pci",
    "core",
    "a PCI Express core of the processor",
    {link, speed, mode, max_payload, max_read_request, dllp_err, tlp_err,
     mute}}.up_to(7);

using one = device_of<family>;

// Up as long as one of the devices behind it is there.
bool is_up(board &b, const one &which);
uint32_t speed_now(board &b, const one &which);

// Its status register. Refuses (not_ready) where that does not answer.
uint32_t status(board &b, const one &which);

} // namespace pci_core

} // namespace kestro_sim
