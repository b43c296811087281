// A memory that nobody wrote to since the state was made is as start-up software leaves it: there is no copy in it
// then, and the variables are those of the description.
#include "sim/devices/storage/memory_environment.h"

#include "sim/core/catalogue.h"
#include "sim/devices/storage/high_memory.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr uint32_t environment_part = 16;
constexpr const char *start_mode = "kestro_softreset_mode";

using variables = std::vector<env_variable>;

struct memory_halves {
    std::string image;
    uint32_t main;
    uint32_t backup;
    uint32_t size;
};

memory_halves halves_of(board &b, const std::string &place) {
    const part_bytes bytes = bytes_of_part(b, place, environment_part);
    const uint32_t half = bytes.length / 2;
    return {bytes.image, bytes.offset, bytes.offset + half, half};
}

variables described(board &b, const std::string &place) {
    variables found;
    for (const auto &variable : b.all_at<memory_variable::family>(place)) {
        found.push_back({b.text(variable, memory_variable::name), b.text(variable, memory_variable::text)});
    }
    return found;
}

bool has_environment(board &b, const std::string &place) {
    return !b.all_at<memory_variable::family>(place).empty() &&
           b.is_described(board::at<memory_part::family>(place, environment_part));
}

variables read(board &b, const std::string &place) {
    refuse_if(!has_environment(b, place), error::not_supported);
    const memory_halves halves = halves_of(b, place);
    for (const uint32_t offset : {halves.main, halves.backup}) {
        if (const auto copy = decode_env(b.read_image(halves.image, offset, halves.size))) {
            return copy->variables;
        }
    }
    return described(b, place);
}

variables with_texts(variables all) {
    std::erase_if(all, [](const env_variable &variable) { return variable.value.empty(); });
    return all;
}

// A whole half, so that nothing of a longer copy is left behind a shorter one. Variables without a text make room for
// others.
std::vector<uint8_t> half_with(const variables &kept, uint32_t size) {
    std::vector<uint8_t> half = encode_env({0, kept});
    if (half.size() > size) {
        half = encode_env({0, with_texts(kept)});
    }
    refuse_if(half.size() > size, error::store_full);
    half.resize(size);
    return half;
}

bool has_room_for(board &b, const std::string &place, const variables &wanted) {
    return encode_env({0, with_texts(wanted)}).size() <= halves_of(b, place).size;
}

void write_main(board &b, const std::string &place, const variables &changed) {
    const memory_halves halves = halves_of(b, place);
    change writes;
    writes.write(halves.image, halves.main, half_with(changed, halves.size));
    b.commit(writes);
}

void write_both(board &b, change &writes, const std::string &place, const variables &saved) {
    const memory_halves halves = halves_of(b, place);
    const std::vector<uint8_t> half = half_with(saved, halves.size);
    writes.write(halves.image, halves.main, half);
    writes.write(halves.image, halves.backup, half);
}

env_variable *find(variables &among, std::string_view name) {
    const auto found =
        std::find_if(among.begin(), among.end(), [&](const env_variable &variable) { return variable.name == name; });
    return found == among.end() ? nullptr : &*found;
}

env_variable &find_known(variables &among, std::string_view name) {
    env_variable *const found = find(among, name);
    refuse_if(found == nullptr, error::no_such_device);
    return *found;
}

} // namespace

std::string memory_environment::get(board &b, const std::string &place, const std::string &name) {
    variables all = read(b, place);
    return find_known(all, name).value;
}

void memory_environment::set(board &b, const std::string &place, const std::string &name, const std::string &text) {
    variables all = read(b, place);
    refuse_if(!is_env_name(name) || text.size() > env_value_max, error::bad_value);
    if (env_variable *const known = find(all, name)) {
        known->value = text;
    } else {
        all.push_back({name, text});
    }
    write_main(b, place, all);
}

void memory_environment::save(board &b, const std::string &place) {
    change writes;
    write_both(b, writes, place, read(b, place));
    b.commit(writes);
}

void memory_environment::clear(board &b, const std::string &place, const std::string &name) {
    variables all = read(b, place);
    find_known(all, name).value.clear();
    write_main(b, place, all);
}

void memory_environment::clear_all(board &b, const std::string &place) {
    variables all = read(b, place);
    for (env_variable &variable : all) {
        variable.value.clear();
    }
    write_main(b, place, all);
}

std::string memory_environment::listing(board &b, const std::string &place) {
    std::string lines;
    for (const env_variable &variable : read(b, place)) {
        lines += variable.name + "=" + variable.value + "\n";
    }
    return lines;
}

void note_start_in_memory(board &b, change &writes, const std::string &place, restart_reason reason, bool is_soft) {
    if (!has_environment(b, place)) {
        return;
    }
    variables all = reason == restart_reason::power_on ? described(b, place) : read(b, place);
    const variables before = all;
    if (env_variable *const mode = find(all, start_mode)) {
        mode->value = is_soft ? "0" : "1";
    }
    // A board starts all the same when its variables leave no room for that.
    write_both(b, writes, place, has_room_for(b, place, all) ? all : before);
}

device_list devices_of_memory_environment() {
    static constexpr const device_family *families[]{&memory_variable::family};
    return {families, {}};
}

} // namespace kestro_sim
