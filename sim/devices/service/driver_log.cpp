// Logs that are described are the drivers' own; what programs register is kept in registers of the same names.
#include "sim/devices/service/driver_log.h"

#include "sim/core/catalogue.h"
#include "sim/core/operation.h"
#include "sim/core/state_files.h"

#include <algorithm>
#include <cstring>

namespace kestro_sim {

namespace {

driver_log::one log_at(board &b, uint32_t id) {
    return board::at<driver_log::family>(b.self(), id);
}

std::string name_of_log(board &b, const driver_log::one &log) {
    return b.text_value(log, driver_log::name).value_or("");
}

bool is_character_of_name(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '-' ||
           c == '.';
}

} // namespace

driver_log::one driver_log::find(board &b, uint32_t id) {
    refuse_if(id > id_max, error::bad_value);
    one log = log_at(b, id);
    refuse_if(name_of_log(b, log).empty(), error::no_such_device);
    return log;
}

std::vector<driver_log::one> driver_log::all(board &b) {
    std::vector<one> logs;
    for (uint32_t id = 0; id <= id_max; ++id) {
        if (!name_of_log(b, log_at(b, id)).empty()) {
            logs.push_back(log_at(b, id));
        }
    }
    return logs;
}

std::optional<driver_log::one> driver_log::named(board &b, std::string_view wanted) {
    for (const one &log : all(b)) {
        if (name_of_log(b, log) == wanted) {
            return log;
        }
    }
    return std::nullopt;
}

void driver_log::enroll(board &b, uint32_t id, std::string_view wanted, uint32_t bytes) {
    refuse_if(id > id_max || !is_name(wanted), error::bad_value);
    const one log = log_at(b, id);
    const std::string present = name_of_log(b, log);
    refuse_if(!present.empty() && present != wanted, error::bad_value);
    refuse_if(present.empty() && named(b, wanted).has_value(), error::bad_value);
    change writes;
    board::add_text(writes, log, name, std::string(wanted));
    b.put(writes, log, size, bytes);
    b.commit(writes);
}

void driver_log::strike_off(board &b, uint32_t id) {
    const one log = find(b, id);
    refuse_if(b.is_described(log), error::bad_value);
    // Who is killed between the two leaves an empty log, not the lines of this one to whoever has the id next.
    replace_ring(b.state_dir(), file(b, log), "");
    change writes;
    board::add_text(writes, log, name, "");
    b.commit(writes);
}

bool driver_log::is_name(std::string_view wanted) {
    return !wanted.empty() && wanted.size() <= name.text_max && wanted.find_first_not_of('.') != std::string::npos &&
           std::all_of(wanted.begin(), wanted.end(), is_character_of_name);
}

std::string driver_log::file(board &b, const one &log) {
    return "log/" + b.self() + "/" + std::to_string(log.id) + ".log";
}

void driver_log::append(board &b, const one &log, std::string_view lines) {
    append_to_ring(b.state_dir(), file(b, log), lines, b.get(log, size));
}

void driver_log::note(board &b, std::string_view log_name, const std::string &text) {
    if (const auto log = named(b, log_name)) {
        append(b, *log, "2 " + text + "\n");
    }
}

device_list devices_of_driver_log() {
    static constexpr const device_family *families[]{&driver_log::family, &log_transfer::family};
    return {families, {}};
}

} // namespace kestro_sim

// Asked by the world library, when a program opens a file below /dev/kestro_log: where the lines of that log lie.
extern "C" int kestro_sim_log_file(const char *name, char *place, size_t size);
int kestro_sim_log_file(const char *name, char *place, size_t size) {
    using namespace kestro_sim;
    if (!driver_log::is_name(name)) {
        return 0;
    }
    const uint32_t result = operate([&](board &b) {
        const auto log = driver_log::named(b, name);
        refuse_if(!log, error::no_such_device);
        const std::string file = driver_log::file(b, *log);
        const open_file there = open_of_state(b.state_dir(), file, O_RDONLY | O_CREAT);
        const std::string path = (b.state_dir() / file).string();
        refuse_if(!there || path.size() >= size, error::not_ready);
        std::memcpy(place, path.c_str(), path.size() + 1);
    });
    return result == 0 ? 1 : 0;
}
