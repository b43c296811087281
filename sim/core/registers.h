// Values of registers as people write and read them.
#pragma once

#include "sim/core/family.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestro_sim {

// Whether the register takes the number. A register of 32 bits with values below 0 also takes them as 32 bits.
bool is_in_range(const reg &which, uint64_t value);

// As it is kept: a negative number of 32 bits is one of 64.
uint64_t kept_value(const reg &which, uint64_t value);

// "1004", "0x0102", "-12".
std::string number_text(const reg &which, uint64_t value);

// "1004 mV", "1 (green)".
std::string shown_text(const reg &which, uint64_t value);

// A number in range or the name of a choice.
std::optional<uint64_t> read_value(const reg &which, std::string_view text);

// "a number from 0 to 60000 (mV)", "0 or 1", "0 off, 1 green", "a text of at most 20 bytes".
std::string values_of(const reg &which);

} // namespace kestro_sim
