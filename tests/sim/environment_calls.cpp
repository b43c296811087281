// Makes calls of the slot, voltage, scaling, lamp and reset drivers, one per argument ("drv_led_get_color 0xffffffff
// 1"), and prints the result code and the answers of each on a line of its own. Numbers are given in the order of the
// parameters; a number that is answered has no word. A text area is "-", or the text that it holds before; its size is
// the last number. "null" stands for any missing area. What a failed call wrote shows as TOUCHED.
#include "drv_avs.h"
#include "drv_led.h"
#include "drv_reset.h"
#include "drv_slot.h"
#include "drv_voltage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace {

constexpr uint8_t untouched = 0xCC;
constexpr size_t area_size = 4096;

class words {
  public:
    explicit words(const std::string &text) {
        std::istringstream stream(text);
        for (std::string word; stream >> word;) {
            words_.push_back(word);
        }
    }
    std::string next() {
        return next_ < words_.size() ? words_[next_++] : "";
    }
    uint32_t number() {
        return static_cast<uint32_t>(strtoul(next().c_str(), nullptr, 0));
    }
    bool next_is_null() {
        const bool is_null = next_ < words_.size() && words_[next_] == "null";
        next_ += is_null ? 1 : 0;
        return is_null;
    }

  private:
    std::vector<std::string> words_;
    size_t next_ = 0;
};

// One parameter of a call: where it comes from, and how its answer shows.
template <typename Parameter> struct argument;

template <> struct argument<uint32_t> {
    explicit argument(words &call) : value(call.number()) {
    }
    uint32_t get() {
        return value;
    }
    std::string answer(size_t) const {
        return "";
    }
    bool is_touched() const {
        return false;
    }
    uint32_t value;
};

std::string shown(uint32_t value) {
    return " " + std::to_string(value);
}

std::string shown(const drv_slot_list &list) {
    std::string text = shown(list.num) + ":";
    for (uint32_t i = 0; i < std::min(list.num, DRV_SLOT_LIST_MAX); ++i) {
        text += shown(list.slot_id[i]);
    }
    const bool rest_is_zero = std::all_of(list.slot_id + std::min(list.num, DRV_SLOT_LIST_MAX), std::end(list.slot_id),
                                          [](uint8_t slot) { return slot == 0; });
    return text + (rest_is_zero ? "" : " REST");
}

std::string shown(const drv_reset_code &code) {
    return shown(code.code) + shown(code.year) + shown(code.month) + shown(code.day);
}

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

template <> struct argument<const drv_reset_code *> {
    explicit argument(words &call) : is_null(call.next_is_null()) {
        if (!is_null) {
            code.code = call.number();
            code.year = static_cast<uint16_t>(call.number());
            code.month = static_cast<uint8_t>(call.number());
            code.day = static_cast<uint8_t>(call.number());
        }
    }
    const drv_reset_code *get() {
        return is_null ? nullptr : &code;
    }
    std::string answer(size_t) const {
        return "";
    }
    bool is_touched() const {
        return false;
    }
    bool is_null;
    drv_reset_code code{};
};

template <> struct argument<char *> {
    explicit argument(words &call) : is_null(call.next_is_null()), bytes(area_size, static_cast<char>(untouched)) {
        const std::string text = is_null ? "-" : call.next();
        if (text != "-") {
            memcpy(bytes.data(), text.c_str(), text.size() + 1);
        }
        before = bytes;
    }
    char *get() {
        return is_null ? nullptr : bytes.data();
    }
    std::string answer(size_t size) const {
        const auto behind = static_cast<ptrdiff_t>(std::min(size, area_size));
        const bool is_overrun = !std::equal(bytes.begin() + behind, bytes.end(), before.begin() + behind);
        return " \"" + readable() + "\"" + (is_overrun ? " OVERRUN" : "");
    }
    bool is_touched() const {
        return bytes != before;
    }
    std::string readable() const {
        std::string text;
        for (size_t i = 0; i < bytes.size() && bytes[i] != '\0'; ++i) {
            text += bytes[i] == '\r' ? "\\r" : bytes[i] == '\n' ? "\\n" : std::string(1, bytes[i]);
        }
        return text;
    }
    bool is_null;
    std::vector<char> bytes;
    std::vector<char> before;
};

size_t size_in(const argument<uint32_t> &number, size_t) {
    return number.value;
}

template <typename Other> size_t size_in(const argument<Other> &, size_t before) {
    return before;
}

using handler = std::function<void(words &)>;

template <typename... Parameters> handler caller(uint32_t (*operation)(Parameters...)) {
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
                const bool touched = (each.is_touched() || ... || false);
                printf("0x%x%s\n", result, result == 0 ? answers.c_str() : touched ? " TOUCHED" : "");
            },
            arguments);
    };
}

#define OPERATION(name)                                                                                                \
    { #name, caller(name) }

const std::map<std::string, handler> operations = {
    OPERATION(drv_slot_get_type),
    OPERATION(drv_slot_get_range),
    OPERATION(drv_slot_get_num),
    OPERATION(drv_slot_get_start_num),
    OPERATION(drv_slot_get_list),
    OPERATION(drv_voltage_init),
    OPERATION(drv_voltage_exit),
    OPERATION(drv_voltage_get_value),
    OPERATION(drv_voltage_set_value),
    OPERATION(drv_voltage_get_warning_th),
    OPERATION(drv_voltage_set_warning_th),
    OPERATION(drv_voltage_get_alarm_th),
    OPERATION(drv_voltage_set_alarm_th),
    OPERATION(drv_voltage_get_alarm),
    OPERATION(drv_voltage_get_history_value),
    OPERATION(drv_voltage_check_vrm_alert),
    OPERATION(drv_voltage_check_power),
    OPERATION(drv_voltage_get_node_desc),
    OPERATION(drv_avs_dump_dfx_info),
    OPERATION(drv_led_patch_func1),
    OPERATION(drv_led_patch_func2),
    OPERATION(drv_led_set_lamptest_enable),
    OPERATION(drv_led_get_lamptest_enable),
    OPERATION(drv_led_set_lamptest_ctrl_enable),
    OPERATION(drv_led_get_lamptest_ctrl_enable),
    OPERATION(drv_led_get_lamptest_support),
    OPERATION(drv_led_get_lamptest_status),
    OPERATION(drv_led_get_color),
    OPERATION(drv_led_set_color),
    OPERATION(drv_led_get_mode),
    OPERATION(drv_reset_init),
    OPERATION(drv_reset_deinit),
    OPERATION(drv_reset_chip),
    OPERATION(drv_reset_board),
    OPERATION(drv_reset_self_board),
    OPERATION(drv_reset_self_board_without_reboot),
    OPERATION(drv_reset_peer_board),
    OPERATION(drv_reset_get_code),
    OPERATION(drv_reset_get_reason),
    OPERATION(drv_reset_get_mode),
    OPERATION(drv_reset_sync_file_system),
    OPERATION(drv_reset_get_button_status),
    OPERATION(drv_reset_set_self_sys_ready),
    OPERATION(drv_reset_get_peer_sys_ready),
    OPERATION(drv_reset_set_soft_start_ok_flag),
    OPERATION(drv_reset_get_soft_start_ok_flag),
};

} // namespace

int main(int count, char **arguments) {
    for (int i = 1; i < count; ++i) {
        words call(arguments[i]);
        const std::string name = call.next();
        const auto found = operations.find(name);
        if (found == operations.end()) {
            fprintf(stderr, "no such call: %s\n", name.c_str());
            return 2;
        }
        found->second(call);
    }
    return 0;
}
