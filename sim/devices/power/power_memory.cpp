// Programs are taken as a whole or not at all, each with its checksum.
#include "sim/devices/power/power_memory.h"

#include "sim/core/catalogue.h"
#include "sim/core/checksum.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr size_t head_size = 4; // program, reserved, checksum
constexpr size_t version_size = 4;

uint32_t big_endian(std::span<const uint8_t> bytes) {
    uint32_t number = 0;
    for (const uint8_t byte : bytes) {
        number = number << 8U | byte;
    }
    return number;
}

void append_big_endian(std::vector<uint8_t> &bytes, uint32_t number, uint32_t size) {
    for (uint32_t left = size; left > 0; --left) {
        bytes.push_back(static_cast<uint8_t>(number >> (8 * (left - 1))));
    }
}

} // namespace

std::vector<device_of<power_program::family>> power_program::all(board &b, const power_supply::one &supply) {
    std::vector<device_of<family>> programs;
    bool has_had_any = false;
    for (const auto &each : b.all_at<family>(supply.instance)) {
        if (each.id / 10 == supply.id && each.id % 10 < programs_max) {
            has_had_any = true;
            if (b.get(each, is_lost) == 0) {
                programs.push_back(each);
            }
        }
    }
    refuse_if(!has_had_any, error::not_supported);
    return programs;
}

uint32_t power_program::version_of(board &b, const power_supply::one &supply, uint32_t id, uint32_t module_id) {
    for (const auto &each : all(b, supply)) {
        const uint32_t count = b.get(each, modules) == one_module ? 1 : b.get(each, modules);
        if (b.get(each, soft_id) == id && module_id < count) {
            return b.get(each, version);
        }
    }
    refuse(error::no_such_device);
}

void power_program::load(board &b, const power_supply::one &supply, std::span<const uint8_t> image) {
    const auto programs = all(b, supply);
    refuse_if(image.size() < head_size + version_size, error::too_small);
    const auto wanted = std::find_if(programs.begin(), programs.end(),
                                     [&](const auto &each) { return b.get(each, soft_id) == image[0]; });
    refuse_if(wanted == programs.end(), error::no_such_device);
    const auto body = image.subspan(head_size);
    refuse_if(big_endian(image.subspan(2, 2)) != crc16_checksum(body), error::damaged);
    change writes;
    b.put(writes, *wanted, version, big_endian(body.first(version_size)));
    for (const auto &each : programs) {
        if (b.get(each, is_fragile) != 0) {
            b.put(writes, each, is_lost, 1);
        }
    }
    b.commit(writes);
}

std::vector<uint8_t> power_bbox::contents(board &b, const power_supply::one &supply) {
    std::vector<uint8_t> bytes;
    bool has_any = false;
    for (const auto &each : b.all_at<family>(supply.instance)) {
        if (each.id / records_max != supply.id) {
            continue;
        }
        has_any = true;
        append_big_endian(bytes, b.get(each, seconds), 4);
        append_big_endian(bytes, b.get(each, event), 2);
        if (b.get(each, is_torn) == 0) {
            append_big_endian(bytes, b.get(each, value), 2);
        }
    }
    refuse_if(!has_any, error::not_supported);
    return bytes;
}

void set_power_label(board &b, const power_supply::one &supply, std::span<const uint8_t> area) {
    refuse_if(area.size() < 2, error::too_small);
    const auto text = area.subspan(2);
    refuse_if(big_endian(area.first(2)) != crc16_checksum(text), error::damaged);
    const auto end = std::find(text.begin(), text.end(), 0);
    const auto build = b.find_at<power_build::family>(supply.instance, supply.id);
    change writes;
    board::add_text(writes, build, power_build::label, {text.begin(), end});
    b.commit(writes);
}

device_list devices_of_power_memory() {
    static constexpr const device_family *families[]{&power_program::family, &power_bbox::family};
    return {families, {}};
}

} // namespace kestro_sim
