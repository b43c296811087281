// Registers of a chip as its bus reads them: a second face of devices.
//
// A space lays out a chip type: which addresses there are, what stands there after a reset, and which bits of them are
// a register of some device of the same board ("field"). A field has no value of its own. What the family's own
// operation sets is what the bus reads, and a bus write to it is the family's write.
//
// Hardware cannot refuse a write: bits that are read-only stay, bits beyond the width are cut off, and a value that the
// device behind a field does not take (a colour that the lamp lacks) leaves this field as it was, while the other
// fields of the register change.
#pragma once

#include "sim/core/board.h"
#include "sim/core/family.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestro_sim {

enum class bus : uint8_t { read_write, read_only, clear_by_one };

// What a bound register is more than a stored number: worked out when it is read (a function of board time), judged
// when it is written. Without them it is read and written as it is stored.
struct field_behaviour {
    uint32_t (*read)(board &, const device &) = nullptr;
    bool (*takes)(board &, const device &, uint32_t value) = nullptr;
};

// The id of a field that belongs to the chip of the space itself, whichever chip that is.
inline constexpr uint32_t own_id = UINT32_MAX;

struct space_field {
    uint32_t mask; // which bits of the register, adjacent
    const device_family *family;
    uint32_t id;
    const reg *bound;
    uint32_t value_shift = 0; // which part of a wide value: the bits from this one on
    bus access = bus::read_write;
    field_behaviour behaviour{};
};

struct space_register {
    uint32_t address;
    const char *name;
    const char *meaning;
    uint32_t reset_value = 0;
    uint32_t read_only = 0;    // bits of its own that a bus write leaves
    uint32_t clear_by_one = 0; // bits of its own that a written 1 clears
    std::span<const space_field> fields{};
    // Registers in a row that are worked out by the device, as a memory module's description is.
    uint32_t count = 1;
    uint32_t (*read)(board &, const device &, uint32_t address) = nullptr;
    // What a write does to registers that are worked out, by the bus or the technician: without it, nothing.
    void (*write)(board &, const device &, uint32_t address, uint32_t value) = nullptr;
    // What a bus read does besides: a latch that it clears.
    void (*after_read)(board &, const device &, uint32_t address) = nullptr;
};

enum class undeclared : uint8_t { refused, all_ones, zeros };

struct register_space {
    const char *name;            // "cpld": its paths are slot9/cpld/0/0x20
    const device_family *family; // the chips that have it
    uint32_t width;              // of a register: 8, 16 or 32 bits
    uint32_t size;               // addresses from 0 on; beyond is always refused
    undeclared unknown;          // what is at an address without a register
    std::span<const space_register> registers;
    std::optional<uint32_t> only_id{}; // the one chip with this layout, where the family's chips differ
};

// Nothing when the chip has no space of that name.
const register_space *find_space(std::string_view name, const device &chip);

const space_register *find_register(const register_space &space, uint32_t address);

// The bus. Both refuse an address beyond the space, and one without register unless the space reads as something there.
uint32_t read_space(board &b, const register_space &space, const device &chip, uint32_t address);
void write_space(board &b, const register_space &space, const device &chip, uint32_t address, uint32_t value);

// The technician's probe at the chip: it reads without any effect, and read-only bits and clear-by-one bits take the
// value too.
uint32_t peek_space(board &b, const register_space &space, const device &chip, uint32_t address);
void force_space(board &b, const register_space &space, const device &chip, uint32_t address, uint32_t value);

} // namespace kestro_sim
