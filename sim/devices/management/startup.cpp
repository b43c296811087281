// A desk does not start from these files: that a start took them is noted.
#include "sim/devices/management/startup.h"

#include "sim/core/catalogue.h"
#include "sim/devices/storage/flash.h"

#include <algorithm>
#include <array>
#include <sys/stat.h>

namespace kestro_sim {

namespace {

constexpr std::string_view software = "/opt/hostx/";
constexpr std::string_view home = "/opt/hostx/home/";

// The word is no longer than what is left of the record.
constexpr std::string_view lock_head = "LOCKWORD=";
constexpr uint32_t lock_size = 64;
constexpr uint8_t erased = 0xFF;

// The board's own file: the process is led to believe that it runs there. A pipe or a device is nothing to start from.
bool is_file_with_content(const std::string &path) {
    struct stat found {};
    return stat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode) && found.st_size > 0;
}

std::string text_or_none(board &b, const device &which, const reg &name) {
    return b.text_value(which, name).value_or("");
}

std::string shown_file(const std::string &path) {
    return path.empty() ? "as delivered" : path;
}

std::string shown_lock(boot_lock::kind what) {
    switch (what) {
    case boot_lock::kind::delivered:
        return "default";
    case boot_lock::kind::none:
        return "none";
    case boot_lock::kind::of_user:
        break;
    }
    return "set by the user";
}

std::string info(board &b) {
    const auto files = b.all_at<startup_file::family>(b.self());
    refuse_if(files.empty(), error::not_supported);
    std::string text;
    for (const auto &file : files) {
        text += b.text(file, startup_file::kind) + ": running " +
                shown_file(text_or_none(b, file, startup_file::running)) + ", next start " +
                shown_file(text_or_none(b, file, startup_file::next)) + "\r\n";
    }
    for (const auto &lock : b.all_at<boot_lock::family>(b.self())) {
        text += "lock word: " + shown_lock(boot_lock::read(b, lock)) + "\r\n";
    }
    return text;
}

} // namespace

void startup_file::choose_next(board &b, const device_of<family> &file, std::string_view name) {
    const bool is_name = name.find('/') == std::string_view::npos;
    const std::string path = is_name ? std::string(home).append(name) : std::string(name);
    refuse_if(path.size() > path_max || !path.starts_with(software) || path.find("/../") != std::string::npos,
              error::bad_value);
    refuse_if(!is_file_with_content(path), error::bad_value);
    change writes;
    board::add_text(writes, file, next, path);
    b.commit(writes);
}

boot_lock::kind boot_lock::read(board &b, const device_of<family> &lock) {
    const std::vector<uint8_t> record = read_section(b, lock.instance, b.get(lock, section), 0, lock_size);
    if (std::all_of(record.begin(), record.end(), [](uint8_t byte) { return byte == erased; })) {
        return kind::delivered;
    }
    const std::string text(record.begin(), record.end());
    const size_t end = text.find('\0');
    refuse_if(!text.starts_with(lock_head) || end == std::string::npos, error::damaged);
    return end == lock_head.size() ? kind::none : kind::of_user;
}

void boot_lock::clear(board &b, const device_of<family> &lock) {
    std::array<uint8_t, lock_size> record{};
    std::copy(lock_head.begin(), lock_head.end(), record.begin());
    write_section(b, lock.instance, b.get(lock, section), 0, record);
}

void note_start_of_files(board &b, change &writes, const std::string &place) {
    for (const auto &file : b.all_at<startup_file::family>(place)) {
        const std::string next = text_or_none(b, file, startup_file::next);
        if (next != text_or_none(b, file, startup_file::running)) {
            board::add_text(writes, file, startup_file::running, next);
        }
    }
}

device_list devices_of_startup() {
    static constexpr const device_family *families[]{&startup_file::family, &boot_lock::family};
    static constexpr diag_command commands[]{{"startup info", info}};
    return {families, {}, commands};
}

} // namespace kestro_sim
