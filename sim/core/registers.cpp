// Values of registers in words.
#include "sim/core/registers.h"

#include "sim/core/description.h"

#include <cinttypes>
#include <cstdio>

namespace kestro_sim {

namespace {

std::string hexadecimal(uint64_t value, int64_t most) {
    char text[24];
    const int digits = most > 0xFFFF ? 8 : most > 0xFF ? 4 : 2;
    snprintf(text, sizeof text, "0x%0*" PRIx64, digits, value);
    return text;
}

} // namespace

uint64_t kept_value(const reg &which, uint64_t value) {
    if (which.least < 0 && !which.is_wide() && value > INT32_MAX && value <= UINT32_MAX) {
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

} // namespace kestro_sim
