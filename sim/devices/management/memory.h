// Memories of the board: sizes, and what the memory modules tell about themselves.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"
#include "sim/core/register_space.h"

namespace kestro_sim {

namespace memory {

inline constexpr int64_t mib_max = 1 << 20;

inline constexpr reg bootrom_mib = reg::number("bootrom_mib", 0, mib_max, "MiB", "the size of the boot ROM");
inline constexpr reg flash_mib = reg::number("flash_mib", 0, mib_max, "MiB", "the size of the flash");
inline constexpr reg nandflash_mib = reg::number("nandflash_mib", 0, mib_max, "MiB", "the size of the NAND flash");
inline constexpr reg nvram_mib = reg::number("nvram_mib", 0, mib_max, "MiB", "the size of the non-volatile RAM");
inline constexpr reg sdram_mib = reg::number("sdram_mib", 0, mib_max, "MiB", "the size of the main memory");

inline constexpr device_family family = device_family{
    "sim_board",
    "memory",
    "the memories of a board",
    {bootrom_mib, flash_mib, nandflash_mib, nvram_mib,
     sdram_mib}}.up_to(0);

} // namespace memory

namespace dimm {

inline constexpr size_t part_number_max = 20;

inline constexpr reg maker = reg::bits("maker", 0xFFFF, "who made the module").required();
inline constexpr reg site = reg::number("site", 0, 255, "", "where it was made").required();
inline constexpr reg year = reg::number("year", 0, 99, "", "when it was made").required();
inline constexpr reg week = reg::number("week", 0, 53, "", "when it was made").required();
inline constexpr reg serial = reg::bits("serial", any_u32, "its serial number").required();
inline constexpr reg part_number = reg::text("part_number", part_number_max, "its part number").required();
inline constexpr reg revision = reg::number("revision", 0, 255, "", "the revision of the module").required();
inline constexpr reg chip_maker = reg::bits("chip_maker", 0xFFFF, "who made its chips").required();
inline constexpr reg stepping = reg::number("stepping", 0, 255, "", "the stepping of its chips").required();
inline constexpr reg celsius = reg::number("celsius", -64, 191, "degrees Celsius", "how hot it is");
inline constexpr reg bus_fault = reg::flag("bus_fault", "whether it does not answer on its bus");

inline constexpr device_family family{
    "sim_board",
    "dimm",
    "a memory module",
    {maker, site, year, week, serial, part_number, revision, chip_maker, stepping, celsius, bus_fault}};

// The manufacturing block of the module's own description, as its I2C bus reads it.
inline constexpr uint32_t spd_first = 320;
inline constexpr uint32_t spd_size = 62;

extern const register_space spd;

} // namespace dimm

namespace processor {
inline constexpr reg ddr_event =
    reg::number("ddr_event", 0, any_u32, "", "other than 0 after a memory event").required();
inline constexpr device_family family{"sim_board", "cpu", "a processor", {ddr_event}};
} // namespace processor

} // namespace kestro_sim
