// The words of a call, and how results and answers are printed.
#include "tests/sim/call_arguments.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>

namespace kestro_tests {

words::words(const std::string &text) {
    std::istringstream stream(text);
    for (std::string word; stream >> word;) {
        words_.push_back(word);
    }
}

std::string words::next() {
    return next_ < words_.size() ? words_[next_++] : "";
}

uint32_t words::number() {
    return static_cast<uint32_t>(strtoul(next().c_str(), nullptr, 0));
}

bool words::next_is_null() {
    const bool is_null = next_ < words_.size() && words_[next_] == "null";
    next_ += is_null ? 1 : 0;
    return is_null;
}

std::string words::next_text() {
    const bool is_text = next_ < words_.size() && words_[next_].starts_with('=');
    return is_text ? next().substr(1) : "";
}

std::string shown(uint32_t value) {
    return " " + std::to_string(value);
}

std::string shown(int32_t value) {
    return " " + std::to_string(value);
}

std::string shown(uint64_t value) {
    return " " + std::to_string(value);
}

std::string shown(const drv_slot_list &list) {
    std::string text = shown(list.num) + ":";
    const uint32_t count = std::min(list.num, DRV_SLOT_LIST_MAX);
    for (uint32_t i = 0; i < count; ++i) {
        text += shown(uint32_t{list.slot_id[i]});
    }
    const bool rest_is_zero =
        std::all_of(list.slot_id + count, std::end(list.slot_id), [](uint8_t slot) { return slot == 0; });
    return text + (rest_is_zero ? "" : " REST");
}

std::string shown(const drv_reset_code &code) {
    return shown(code.code) + shown(uint32_t{code.year}) + shown(uint32_t{code.month}) + shown(uint32_t{code.day});
}

std::string shown(const drv_card_list &list) {
    std::vector<uint8_t> bytes(sizeof list);
    memcpy(bytes.data(), &list, sizeof list);
    const size_t head = sizeof list.count;
    return shown(list.count) + " [" + hex(bytes.data() + head, bytes.size() - head, "") + "]";
}

std::string hex(const uint8_t *bytes, size_t count, const char *separator) {
    std::string text;
    for (size_t i = 0; i < count; ++i) {
        char digits[3];
        snprintf(digits, sizeof digits, "%02x", bytes[i]);
        text += (i == 0 ? "" : separator) + std::string(digits);
    }
    return text;
}

std::string code(uint32_t result) {
    char digits[16];
    snprintf(digits, sizeof digits, "0x%x", result);
    return digits;
}

void print_line(const std::string &line) {
    printf("%s\n", line.c_str());
}

void print_result(uint32_t result) {
    print_line(code(result));
}

void print_answer(uint32_t result, const std::string &answers, bool is_touched) {
    print_line(code(result) + (result == 0 ? answers : is_touched ? " TOUCHED" : ""));
}

argument<const drv_reset_code *>::argument(words &call) : is_null(call.next_is_null()) {
    if (!is_null) {
        code.code = call.number();
        code.year = static_cast<uint16_t>(call.number());
        code.month = static_cast<uint8_t>(call.number());
        code.day = static_cast<uint8_t>(call.number());
    }
}

std::string area::overrun(size_t size) const {
    const auto behind = static_cast<ptrdiff_t>(std::min(size, area_size));
    return std::equal(bytes.begin() + behind, bytes.end(), before.begin() + behind) ? "" : " OVERRUN";
}

std::string argument<uint8_t *>::answer(size_t size) const {
    const auto last = std::find_if(bytes.rbegin(), bytes.rend(), [](uint8_t byte) { return byte != untouched; });
    return " [" + hex(bytes.data(), static_cast<size_t>(bytes.rend() - last), " ") + "]" + overrun(size);
}

argument<char *>::argument(words &call) : area(call) {
    const std::string text = call.next_text();
    if (!text.empty()) {
        memcpy(bytes.data(), text.c_str(), text.size() + 1);
    }
    before = bytes;
}

std::string argument<char *>::answer(size_t size) const {
    std::string text;
    for (size_t i = 0; i < bytes.size() && bytes[i] != 0; ++i) {
        const char byte = static_cast<char>(bytes[i]);
        text += byte == '\r' ? "\\r" : byte == '\n' ? "\\n" : std::string(1, byte);
    }
    return " \"" + text + "\"" + overrun(size);
}

} // namespace kestro_tests
