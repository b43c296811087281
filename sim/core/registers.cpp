// Values of registers in words, and names that were meant.
#include "sim/core/registers.h"

#include "sim/core/description.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <numeric>
#include <vector>

namespace kestro_sim {

namespace {

size_t edit_distance(std::string_view from, std::string_view to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i + 1;
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

std::string hexadecimal(uint64_t value, int64_t most) {
    char text[24];
    const int digits = most > 0xFFFF ? 8 : most > 0xFF ? 4 : 2;
    snprintf(text, sizeof text, "0x%0*" PRIx64, digits, value);
    return text;
}

} // namespace

uint64_t kept_value(const reg &which, uint64_t value) {
    if (which.least < 0 && value > INT32_MAX && value <= UINT32_MAX) {
        return static_cast<uint64_t>(int64_t{static_cast<int32_t>(value)});
    }
    return value;
}

bool is_in_range(const reg &which, uint64_t value) {
    const auto number = static_cast<int64_t>(kept_value(which, value));
    return number >= which.least && number <= which.most;
}

std::string number_text(const reg &which, uint64_t value) {
    if (which.is_hexadecimal) {
        return hexadecimal(value, which.most);
    }
    return std::to_string(static_cast<int64_t>(kept_value(which, value)));
}

std::string shown_text(const reg &which, uint64_t value) {
    std::string text = number_text(which, value);
    if (which.choices != nullptr && is_in_range(which, value)) {
        text += std::string(" (") + which.choices[value] + ")";
    }
    return *which.unit == '\0' ? text : text + " " + which.unit;
}

std::optional<uint64_t> read_value(const reg &which, std::string_view text) {
    if (which.choices != nullptr) {
        for (int64_t value = 0; value <= which.most; ++value) {
            if (text == which.choices[value]) {
                return static_cast<uint64_t>(value);
            }
        }
    }
    const auto number = parse_number(text);
    if (!number || !is_in_range(which, *number)) {
        return std::nullopt;
    }
    return kept_value(which, *number);
}

std::string values_of(const reg &which) {
    if (which.is_text()) {
        return "a text of at most " + std::to_string(which.text_max) + " bytes";
    }
    if (which.type == reg_type::flag) {
        return "0 or 1";
    }
    if (which.choices != nullptr) {
        std::string all;
        for (int64_t value = 0; value <= which.most; ++value) {
            all += (value == 0 ? "" : ", ") + std::to_string(value) + " " + which.choices[value];
        }
        return all;
    }
    const std::string range = number_text(which, static_cast<uint64_t>(which.least)) + " to " +
                              number_text(which, static_cast<uint64_t>(which.most));
    return "a number from " + range + (*which.unit == '\0' ? "" : std::string(" (") + which.unit + ")");
}

std::string nearest_name(std::string_view word, std::span<const std::string> candidates) {
    const std::string *best = nullptr;
    // A third of the letters wrong is still the same word.
    size_t least = word.size() / 3 + 2;
    for (const std::string &candidate : candidates) {
        const size_t distance = edit_distance(word, candidate);
        if (distance < least) {
            least = distance;
            best = &candidate;
        }
    }
    return best == nullptr ? "" : *best;
}

std::string suggestion(std::string_view word, std::span<const std::string> candidates) {
    if (const std::string near = nearest_name(word, candidates); !near.empty()) {
        return "the nearest is '" + near + "'";
    }
    std::string all;
    for (const std::string &candidate : candidates) {
        all += (all.empty() ? "" : ", ") + candidate;
    }
    return all.empty() ? "there is none" : "there are " + all;
}

} // namespace kestro_sim
