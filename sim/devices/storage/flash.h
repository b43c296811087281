// The flash chips of a board: one for start-up software, divided into sections by number, and on some boards NAND. MTD
// partitions are another view of the same bytes, by name. The bytes are the images "flash" and "nand".
#pragma once

#include "sim/core/board.h"

#include <string_view>

namespace kestro_sim {

inline constexpr int64_t flash_max = 1 << 30;

namespace flash_chip {
inline constexpr reg erase_size =
    reg::number("erase_size", 512, 32768, "B", "how much is erased at once").required().fixed();
inline constexpr device_family family =
    device_family{"sim_flash", "chip", "the flash of start-up software", {erase_size}}.up_to(0);
} // namespace flash_chip

namespace flash_section {
inline constexpr reg offset =
    reg::number("offset", 0, flash_max, "B", "the first byte of the section").required().fixed();
inline constexpr reg size = reg::number("size", 0, flash_max, "B", "the bytes of the section").required().fixed();
inline constexpr reg text = reg::text("text", 1024, "what the section starts with").of_production();
inline constexpr device_family family{"sim_flash", "section", "a section of flash", {offset, size, text}};
} // namespace flash_section

namespace mtd_partition {

inline constexpr const char *chip_names[]{"flash", "nand"};

inline constexpr reg name = reg::text("name", 31, "what it is called").required().fixed();
inline constexpr reg chip = reg::choice("chip", chip_names, "the chip that it is a part of").required().fixed();
inline constexpr reg offset =
    reg::number("offset", 0, flash_max, "B", "the first byte of the partition").required().fixed();
inline constexpr reg size = reg::number("size", 0, flash_max, "B", "the bytes of the partition").required().fixed();

inline constexpr device_family family{"sim_flash", "partition", "an MTD partition", {name, chip, offset, size}};

} // namespace mtd_partition

namespace nand_chip {

inline constexpr reg block_size =
    reg::number("block_size", 512, 32768, "B", "how much is erased at once").required().fixed();
inline constexpr reg page_size =
    reg::number("page_size", 1, 4096, "B", "how much is programmed at once").required().fixed();
inline constexpr reg bad_blocks =
    reg::bits("bad_blocks", INT64_MAX, "the table of bad blocks: a bit for each, from block 0 on").or_else(0);

inline constexpr device_family family =
    device_family{"sim_flash", "nand", "NAND flash", {block_size, page_size, bad_blocks}}.up_to(0);

} // namespace nand_chip

// A section is written through: a block that is not erased is read, erased and programmed anew.
std::vector<uint8_t> read_section(board &b, const std::string &place, uint32_t id, uint32_t offset, uint32_t length);
void write_section(board &b, const std::string &place, uint32_t id, uint32_t offset, std::span<const uint8_t> bytes);

// A partition is programmed as it stands: bits go from 1 to 0 and never back. One in NAND is as long as its good
// blocks, for the driver passes over bad ones, and is programmed in whole pages (else bad_value).
std::vector<uint8_t> read_partition(board &b, const std::string &place, std::string_view name, uint32_t offset,
                                    uint32_t length);
void program_partition(board &b, const std::string &place, std::string_view name, uint32_t offset,
                       std::span<const uint8_t> bytes);

bool has_nand(board &b, const std::string &place);
uint32_t nand_partitions(board &b, const std::string &place);

} // namespace kestro_sim
