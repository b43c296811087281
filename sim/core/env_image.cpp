#include "sim/core/env_image.h"

#include "sim/core/checksum.h"

#include <algorithm>
#include <string_view>

namespace kestro_sim {

namespace {

constexpr std::array<uint8_t, 4> magic{'K', 'E', 'N', 'V'};
constexpr size_t generation_at = 4;
constexpr size_t length_at = 8;
constexpr size_t checksum_at = 12;

void put_number(std::vector<uint8_t> &area, size_t at, uint32_t number) {
    for (size_t i = 0; i < sizeof number; ++i) {
        area[at + i] = static_cast<uint8_t>(number >> (8 * i));
    }
}

uint32_t number_at(std::span<const uint8_t> area, size_t at) {
    uint32_t number = 0;
    for (size_t i = 0; i < sizeof number; ++i) {
        number |= uint32_t{area[at + i]} << (8 * i);
    }
    return number;
}

uint32_t checksum_of(std::span<const uint8_t> copy) {
    const auto numbers = copy.subspan(generation_at, checksum_at - generation_at);
    return checksum(copy.subspan(env_head_size), checksum(numbers));
}

// Nothing for a record that no driver wrote.
std::optional<env_variable> variable_of(std::string_view record) {
    const size_t equals = record.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    env_variable variable{std::string(record.substr(0, equals)), std::string(record.substr(equals + 1))};
    if (!is_env_name(variable.name) || variable.value.size() > env_value_max) {
        return std::nullopt;
    }
    return variable;
}

} // namespace

bool is_env_name(const std::string &name) {
    return !name.empty() && name.size() <= env_name_max && name.find('=') == std::string::npos;
}

std::vector<uint8_t> encode_env(const env_copy &copy) {
    std::vector<uint8_t> area(env_head_size);
    std::copy(magic.begin(), magic.end(), area.begin());
    for (const env_variable &variable : copy.variables) {
        area.insert(area.end(), variable.name.begin(), variable.name.end());
        area.push_back('=');
        area.insert(area.end(), variable.value.begin(), variable.value.end());
        area.push_back(0);
    }
    put_number(area, generation_at, copy.generation);
    put_number(area, length_at, static_cast<uint32_t>(area.size() - env_head_size));
    put_number(area, checksum_at, checksum_of(area));
    return area;
}

std::optional<size_t> env_copy_size(std::span<const uint8_t, env_head_size> head) {
    const uint32_t length = number_at(head, length_at);
    if (!std::equal(magic.begin(), magic.end(), head.begin()) || length > env_copy_max - env_head_size) {
        return std::nullopt;
    }
    return env_head_size + length;
}

std::optional<env_copy> decode_env(std::span<const uint8_t> area) {
    if (area.size() < env_head_size) {
        return std::nullopt;
    }
    const auto size = env_copy_size(area.first<env_head_size>());
    if (!size || *size > area.size() || checksum_of(area.first(*size)) != number_at(area, checksum_at)) {
        return std::nullopt;
    }
    env_copy copy{number_at(area, generation_at), {}};
    std::string_view text(reinterpret_cast<const char *>(area.data()) + env_head_size, *size - env_head_size);
    while (!text.empty()) {
        const size_t end = text.find('\0');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        auto variable = variable_of(text.substr(0, end));
        if (!variable) {
            return std::nullopt;
        }
        copy.variables.push_back(std::move(*variable));
        text.remove_prefix(end + 1);
    }
    return copy;
}

} // namespace kestro_sim
