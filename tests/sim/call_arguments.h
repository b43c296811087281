// What one driver call takes and answers, by the types of its parameters. Numbers are given in the order of the
// parameters. What the driver writes has no word, except "null" for a missing area and "=text" for a text area that
// holds that text before; the size of an area is the last number of the call.
#pragma once

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_reset.h"
#include "drv_basic/management/drv_slot.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace kestro_tests {

constexpr uint8_t untouched = 0xCC;
constexpr size_t area_size = 16384;

class words {
  public:
    explicit words(const std::string &text);
    std::string next();
    uint32_t number();
    bool next_is_null();
    // The text behind '=', or nothing when the next word is something else.
    std::string next_text();

  private:
    std::vector<std::string> words_;
    size_t next_ = 0;
};

using handler = std::function<void(words &)>;

std::string shown(uint32_t value);
std::string shown(int32_t value);
std::string shown(uint64_t value);
std::string shown(const drv_slot_list &list);
std::string shown(const drv_reset_code &code);
std::string shown(const drv_card_list &list);
std::string hex(const uint8_t *bytes, size_t count, const char *separator);

std::string code(uint32_t result);
void print_line(const std::string &line);
void print_result(uint32_t result);
void print_answer(uint32_t result, const std::string &answers, bool is_touched);

// One parameter of a call: where it comes from, and how its answer shows.
template <typename Parameter> struct argument;

// Parameters that the driver only reads.
struct input {
    std::string answer(size_t) const {
        return "";
    }
    bool is_touched() const {
        return false;
    }
};

template <> struct argument<uint32_t> : input {
    explicit argument(words &call) : value(call.number()) {
    }
    uint32_t get() const {
        return value;
    }
    uint32_t value;
};

template <> struct argument<const char *> : input {
    explicit argument(words &call) : is_null(call.next_is_null()), text(is_null ? "" : call.next()) {
    }
    const char *get() const {
        return is_null ? nullptr : text.c_str();
    }
    bool is_null;
    std::string text;
};

template <> struct argument<const drv_reset_code *> : input {
    explicit argument(words &call);
    const drv_reset_code *get() const {
        return is_null ? nullptr : &code;
    }
    bool is_null;
    drv_reset_code code{};
};

// A number or a record that the driver answers.
template <typename Record> struct argument<Record *> {
    explicit argument(words &call) : is_null(call.next_is_null()) {
        memset(&record, untouched, sizeof record);
    }
    Record *get() {
        return is_null ? nullptr : &record;
    }
    std::string answer(size_t) const {
        return shown(record);
    }
    bool is_touched() const {
        const std::vector<uint8_t> before(sizeof record, untouched);
        return memcmp(&record, before.data(), sizeof record) != 0;
    }
    bool is_null;
    Record record;
};

// Bytes that the driver writes. There is room behind the given size, so that a write beyond the end shows.
struct area {
    explicit area(words &call) : is_null(call.next_is_null()), bytes(area_size, untouched), before(bytes) {
    }
    bool is_touched() const {
        return bytes != before;
    }
    std::string overrun(size_t size) const;
    bool is_null;
    std::vector<uint8_t> bytes;
    std::vector<uint8_t> before;
};

template <> struct argument<uint8_t *> : area {
    using area::area;
    uint8_t *get() {
        return is_null ? nullptr : bytes.data();
    }
    std::string answer(size_t size) const;
};

template <> struct argument<char *> : area {
    explicit argument(words &call);
    char *get() {
        return is_null ? nullptr : reinterpret_cast<char *>(bytes.data());
    }
    std::string answer(size_t size) const;
};

template <typename Other> size_t size_in(const argument<Other> &argument_of_call, size_t before) {
    if constexpr (std::is_same_v<Other, uint32_t>) {
        return argument_of_call.value;
    } else {
        return before;
    }
}

template <typename... Parameters> handler call_of(uint32_t (*operation)(Parameters...)) {
    return [operation](words &call) {
        // Braces: the words are taken from left to right.
        std::tuple<argument<Parameters>...> arguments{argument<Parameters>(call)...};
        std::apply(
            [&](auto &...each) {
                const uint32_t result = operation(each.get()...);
                [[maybe_unused]] size_t size = 0;
                ((size = size_in(each, size)), ...);
                std::string answers;
                ((answers += each.answer(size)), ...);
                print_answer(result, answers, (each.is_touched() || ... || false));
            },
            arguments);
    };
}

// The same call with each of its pointers in turn missing; the result codes stand on one line.
template <typename... Parameters> handler nulls_of(uint32_t (*operation)(Parameters...)) {
    return [operation](words &call) {
        std::tuple<argument<Parameters>...> arguments{argument<Parameters>(call)...};
        std::apply(
            [&](auto &...each) {
                std::string results;
                [[maybe_unused]] const auto call_without = [&](auto &one) {
                    if constexpr (std::is_pointer_v<decltype(one.get())>) {
                        one.is_null = true;
                        results += (results.empty() ? "" : " ") + code(operation(each.get()...));
                        one.is_null = false;
                    }
                };
                (call_without(each), ...);
                print_line(results);
            },
            arguments);
    };
}

} // namespace kestro_tests
