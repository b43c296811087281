// Chips on the SPI buses: what each makes of the frames that reach it.
//
// Three kinds: the CPLD of a plug-in card, on the card itself, with registers of 16 bits; the queue memory controller
// (qoram) and the switch fabric's agent (sa8009), both with registers of 32 bits. A chip that gets a frame that it does
// not know, or one for a register that it lacks, pulls its fault line, and the driver refuses the transfer: bad_value
// and out_of_range.
//
//   CPLD    write  register (lowest byte first, bit 15 set), value (lowest byte first)
//           read   register (bit 15 clear): value, lowest byte first
//   qoram   write  04 00 00, register, value; numbers have their highest byte first, here and below
//           write  84 00 00, register: asks for it
//           read   c4: status (0 nothing was asked for, 1 not there yet, 2 answered, 3 no such register), value
//   sa8009  write  82 01, register, value
//           read   81 01, register: status (0), 01, register, value, CRC-16 of these ten bytes
#pragma once

#include "sim/core/board.h"

#include <span>
#include <vector>

namespace kestro_sim {

namespace spi_chip {
inline constexpr const char *kinds[]{"pic_cpld", "qoram", "sa8009"};
inline constexpr uint32_t pic_cpld_kind = 0;
inline constexpr uint32_t qoram_kind = 1;

inline constexpr reg kind = reg::choice("kind", kinds, "what it is").required().fixed();
inline constexpr reg unit =
    reg::number("unit", 0, UINT16_MAX, "", "which one of its kind; of a card's CPLD, which card").or_else(0).fixed();
inline constexpr reg silent = reg::flag("silent", "whether it leaves its select line unanswered").or_else(0);
inline constexpr device_family family{"sim_spi", "chip", "a chip on an SPI bus", {kind, unit, silent}};

using one = device_of<family>;

// Refuse a chip that does not answer, such as that of a card that is absent or has no power (not_ready).
void write(board &b, const one &chip, std::span<const uint8_t> frame);
std::vector<uint8_t> read(board &b, const one &chip, std::span<const uint8_t> command, uint32_t length);
} // namespace spi_chip

namespace pic_cpld {
inline constexpr reg version = reg::bits("version", 0xFFFF, "the version of its logic").required().written();
inline constexpr reg part = reg::bits("part", any_u32, "which part it is: what its images are for").fixed();
inline constexpr reg load_time = reg::number("load_time", 0, 600000, "ms", "how long loading it takes").or_else(2000);
inline constexpr reg loading =
    reg::flag("loading", "whether a load was begun and not finished; it does not answer then").or_else(0).written();
inline constexpr reg loads = reg::number("loads", 0, any_u32, "", "how many loads were begun").or_else(0).written();
inline constexpr reg loaded_version =
    reg::bits("loaded_version", 0xFFFF, "the version of the image that was loaded last").or_else(0).written();
inline constexpr device_family family = device_family{
    "sim_pic",
    "cpld",
    "the CPLD of a plug-in card",
    {version, part, load_time, loading, loads,
     loaded_version}}.up_to(0);

using one = device_of<family>;

// Of the card in that place; a card without power has none (not_ready).
one of_card(board &b, const std::string &place);

// Of the card that a chip on an SPI bus belongs to. Refuses a chip of another kind (no_such_device), and a card that
// is absent, has no power or is not reached (not_ready).
one behind(board &b, const spi_chip::one &chip);
} // namespace pic_cpld

namespace qoram {
inline constexpr const char *requests[]{"none", "register", "unknown"};
inline constexpr uint32_t nothing = 0;
inline constexpr uint32_t known_register = 1;
inline constexpr uint32_t unknown_register = 2;

inline constexpr reg version = reg::bits("version", any_u32, "the version of the chip").required();
inline constexpr reg latency =
    reg::number("latency", 0, 60000000, "us", "how long it takes to answer a request").or_else(0);
inline constexpr reg asked = reg::choice("asked", requests, "what it was asked for last").or_else(nothing).written();
inline constexpr reg address = reg::bits("address", any_u32, "the register that it was asked for").or_else(0).written();
inline constexpr reg since =
    reg::number("since", 0, INT64_MAX, "ns", "the board time at which it was asked").or_else(0).written();
inline constexpr device_family family{
    "sim_qoram", "chip", "a queue memory controller", {version, latency, asked, address, since}};

using one = device_of<family>;
} // namespace qoram

namespace sa8009 {
inline constexpr reg version = reg::bits("version", any_u32, "the version of the chip").required();
inline constexpr device_family family{"sim_sa8009", "chip", "an agent of the switch fabric", {version}};

using one = device_of<family>;
} // namespace sa8009

} // namespace kestro_sim
