// Bits of a chip's registers: its own are cells of the store, bound ones are registers of other devices.
#include "sim/core/register_space.h"

#include "sim/core/catalogue.h"
#include "sim/core/registers.h"

#include <bit>
#include <cstdio>

namespace kestro_sim {

namespace {

uint32_t all_bits(const register_space &space) {
    return space.width == 32 ? UINT32_MAX : (1U << space.width) - 1;
}

uint32_t bound_bits(const space_register &which) {
    uint32_t bits = 0;
    for (const space_field &field : which.fields) {
        bits |= field.mask;
    }
    return bits;
}

std::string image_key(const register_space &space, const device &chip, uint32_t address) {
    char place[64];
    snprintf(place, sizeof place, "/%s/%u/0x%x", space.name, chip.id, address);
    return chip.instance + place;
}

uint32_t own_bits(board &b, const register_space &space, const device &chip, const space_register &which,
                  uint32_t address) {
    const auto kept = b.cell(image_key(space, chip, address));
    return kept ? static_cast<uint32_t>(*kept) : which.reset_value;
}

// The device behind a field; nothing when this board lacks it, and its bits are wired to nothing.
std::optional<device> device_behind(board &b, const device &chip, const space_field &field) {
    const device behind{chip.instance, field.family, field.id == own_id ? chip.id : field.id};
    if (!b.is_described(behind) || !b.value(behind, *field.bound)) {
        return std::nullopt;
    }
    return behind;
}

uint32_t value_behind(board &b, const device &behind, const space_field &field) {
    if (field.behaviour.read != nullptr) {
        return field.behaviour.read(b, behind);
    }
    return static_cast<uint32_t>(b.value(behind, *field.bound).value_or(0));
}

uint32_t read_field(board &b, const device &chip, const space_field &field) {
    const auto behind = device_behind(b, chip, field);
    if (!behind) {
        return 0;
    }
    const uint32_t value = value_behind(b, *behind, field) >> field.value_shift;
    return value << std::countr_zero(field.mask) & field.mask;
}

// What the bound register becomes when these bits are written to its part.
uint32_t merged(uint32_t before, uint32_t part, const space_field &field) {
    const uint32_t bits = (field.mask >> std::countr_zero(field.mask)) << field.value_shift;
    return (before & ~bits) | (part << field.value_shift & bits);
}

bool takes(board &b, const device &behind, const space_field &field, uint32_t value) {
    return is_in_range(*field.bound, value) &&
           (field.behaviour.takes == nullptr || field.behaviour.takes(b, behind, value));
}

// Fields of one register may be parts of one device's register, so what was decided so far is seen here.
struct decided {
    std::string key;
    uint32_t value;
};

void write_field(board &b, const device &chip, const space_field &field, uint32_t written,
                 std::vector<decided> &decisions, bool by_force) {
    const auto behind = device_behind(b, chip, field);
    if (!behind || (field.access == bus::read_only && !by_force)) {
        return;
    }
    const std::string key = cell_key(*behind, field.bound->name);
    uint32_t before = static_cast<uint32_t>(b.value(*behind, *field.bound).value_or(0));
    for (const decided &earlier : decisions) {
        before = earlier.key == key ? earlier.value : before;
    }
    uint32_t part = (written & field.mask) >> std::countr_zero(field.mask);
    if (field.access == bus::clear_by_one && !by_force) {
        part = (before >> field.value_shift) & ~part;
    }
    const uint32_t value = merged(before, part, field);
    if (value != before && (by_force ? is_in_range(*field.bound, value) : takes(b, *behind, field, value))) {
        decisions.push_back({key, value});
    }
}

void store_register(board &b, const register_space &space, const device &chip, uint32_t address, uint32_t value,
                    bool by_force) {
    refuse_if(address >= space.size, error::out_of_range);
    const space_register *which = find_register(space, address);
    if (which == nullptr) {
        refuse_if(space.unknown == undeclared::refused, error::out_of_range);
        return;
    }
    if (which->read != nullptr) {
        if (which->write != nullptr) {
            which->write(b, chip, address, value);
        }
        return;
    }
    std::vector<decided> decisions;
    for (const space_field &field : which->fields) {
        write_field(b, chip, field, value, decisions, by_force);
    }
    const uint32_t before = own_bits(b, space, chip, *which, address);
    const uint32_t fixed = by_force ? 0 : which->read_only;
    const uint32_t cleared = by_force ? 0 : which->clear_by_one;
    const uint32_t plain = all_bits(space) & ~(fixed | cleared | bound_bits(*which));
    const uint32_t own = (before & (fixed | cleared) & ~(value & cleared)) | (value & plain);
    change writes;
    for (const decided &decision : decisions) {
        writes.put(decision.key, decision.value);
    }
    if (own != (before & ~bound_bits(*which))) {
        writes.put(image_key(space, chip, address), own);
    }
    b.commit(writes);
}

} // namespace

const register_space *find_space(std::string_view name, const device &chip) {
    for (const register_space *space : all_spaces()) {
        const bool is_of_family = std::string_view(space->family->module) == chip.family->module &&
                                  std::string_view(space->family->node) == chip.family->node;
        if (is_of_family && name == space->name && (!space->only_id || *space->only_id == chip.id)) {
            return space;
        }
    }
    return nullptr;
}

const space_register *find_register(const register_space &space, uint32_t address) {
    for (const space_register &which : space.registers) {
        if (address >= which.address && address - which.address < which.count) {
            return &which;
        }
    }
    return nullptr;
}

uint32_t read_space(board &b, const register_space &space, const device &chip, uint32_t address) {
    const uint32_t value = peek_space(b, space, chip, address);
    const space_register *which = find_register(space, address);
    if (which != nullptr && which->after_read != nullptr) {
        which->after_read(b, chip, address);
    }
    return value;
}

uint32_t peek_space(board &b, const register_space &space, const device &chip, uint32_t address) {
    refuse_if(address >= space.size, error::out_of_range);
    const space_register *which = find_register(space, address);
    if (which == nullptr) {
        refuse_if(space.unknown == undeclared::refused, error::out_of_range);
        return space.unknown == undeclared::all_ones ? all_bits(space) : 0;
    }
    if (which->read != nullptr) {
        return which->read(b, chip, address) & all_bits(space);
    }
    uint32_t value = own_bits(b, space, chip, *which, address) & ~bound_bits(*which);
    for (const space_field &field : which->fields) {
        value |= read_field(b, chip, field);
    }
    return value & all_bits(space);
}

void write_space(board &b, const register_space &space, const device &chip, uint32_t address, uint32_t value) {
    store_register(b, space, chip, address, value & all_bits(space), false);
}

void force_space(board &b, const register_space &space, const device &chip, uint32_t address, uint32_t value) {
    store_register(b, space, chip, address, value & all_bits(space), true);
}

} // namespace kestro_sim
