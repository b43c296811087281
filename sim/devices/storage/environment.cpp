// Variables are few: they are looked for by their names.
#include "sim/devices/storage/environment.h"

#include "sim/core/catalogue.h"
#include "sim/devices/storage/flash_environment.h"

#include <charconv>
#include <optional>

namespace kestro_sim {

namespace {

template <const device_family &Family>
std::optional<device_of<Family>> named(board &b, const std::string &place, std::string_view wanted) {
    const reg &name = *Family.find("name");
    for (const auto &variable : b.all_at<Family>(place)) {
        if (b.text_value(variable, name) == wanted) {
            return variable;
        }
    }
    return std::nullopt;
}

template <const device_family &Family>
device_of<Family> find_named(board &b, const std::string &place, std::string_view wanted) {
    refuse_if(b.all_at<Family>(place).empty(), error::not_supported);
    const auto variable = named<Family>(b, place, wanted);
    refuse_if(!variable, error::no_such_device);
    return *variable;
}

template <const device_family &Family>
void write_named(board &b, change &writes, const std::string &place, std::string_view wanted, const std::string &text) {
    if (const auto variable = named<Family>(b, place, wanted)) {
        board::add_text(writes, *variable, *Family.find("text"), text);
    }
}

} // namespace

std::string memory_variable::text_of_name(board &b, const std::string &place, std::string_view wanted) {
    return b.text(find_named<family>(b, place, wanted), text);
}

uint32_t number_to_base(const std::string &text, uint32_t base) {
    refuse_if(base < 2 || base > 36, error::bad_value);
    uint32_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, problem] = std::from_chars(text.data(), end, number, static_cast<int>(base));
    refuse_if(problem != std::errc{} || stop != end, error::bad_value);
    return number;
}

// hard_reset_init_flag stays as it is: hardware that a soft start keeps was brought up by the hard one before.
void note_start(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind) {
    const bool is_soft = reason != restart_reason::power_on && kind == restart_kind::warm;
    write_named<memory_variable::family>(b, writes, place, "kestro_softreset_mode", is_soft ? "0" : "1");
    note_start_in_flash(b, writes, place, reason, is_soft);
}

device_list devices_of_environment() {
    static constexpr const device_family *families[]{&memory_variable::family};
    return {families, {}};
}

} // namespace kestro_sim
