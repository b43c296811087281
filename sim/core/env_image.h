// One copy of a board's variables as it stands in flash and in memory.
//
//   bytes 0-3 "KENV", then three numbers of 32 bits, least significant byte first: the generation, the length of the
//   text, and the CRC-32 of generation, length and text; the text: "name=value" and a zero byte for each variable
//
// Of two copies that are whole the later generation counts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestro_sim {

// Memory has room for one copy, so the flash is never asked for more.
inline constexpr size_t env_copy_max = size_t{60} * 1024;
inline constexpr size_t env_head_size = 16;
inline constexpr size_t env_name_max = 63;
inline constexpr size_t env_value_max = 255;

struct env_variable {
    std::string name;
    std::string value;
};

struct env_copy {
    uint32_t generation = 0;
    std::vector<env_variable> variables;
};

// A name is neither empty nor too long, and without '='; both are without zero bytes.
bool is_env_name(const std::string &name);

// May be longer than a copy can be: the caller asks.
std::vector<uint8_t> encode_env(const env_copy &copy);

// How many bytes a copy has that begins so; nothing for what begins otherwise or is too long.
std::optional<size_t> env_copy_size(std::span<const uint8_t, env_head_size> head);

// Nothing for what is not whole; what lies behind the text is not looked at.
std::optional<env_copy> decode_env(std::span<const uint8_t> area);

} // namespace kestro_sim
