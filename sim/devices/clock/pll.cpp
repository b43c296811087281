// How a loop locks on its reference, and its registers.
#include "sim/devices/clock/pll.h"

#include "sim/core/catalogue.h"
#include "sim/devices/clock/clock_source.h"

#include <algorithm>

namespace kestro_sim {

namespace pll {

namespace {

clock_source::one clock_at(board &b, const one &which, uint32_t reference) {
    return board::at<clock_source::family>(which.instance,
                                           reference == 1 ? b.get(which, input1) : b.get(which, input2));
}

// A reference that nothing is wired to is lost for good.
bool is_lost(board &b, const one &which, uint32_t reference) {
    const auto source = clock_at(b, which, reference);
    return !b.is_described(source) || clock_source::is_lost(b, source);
}

uint32_t reference_in(board &b, const one &which, uint32_t mode) {
    for (uint32_t reference = 1; reference <= 2; ++reference) {
        if ((mode == 0 || mode == reference) && !is_lost(b, which, reference)) {
            return reference;
        }
    }
    return 0;
}

} // namespace

void initialise(board &b, const one &which) {
    b.put_all(which, {{control, control_set},
                      {ref_mode, 0},
                      {reference_divider, reference_divider_set},
                      {feedback_divider, feedback_divider_set},
                      {output_divider, output_divider_set},
                      {since, static_cast<uint64_t>(b.now())}});
}

uint32_t taken_reference(board &b, const one &which) {
    return reference_in(b, which, b.get(which, ref_mode));
}

bool is_locked(board &b, const one &which) {
    const uint32_t reference = taken_reference(b, which);
    if (reference == 0) {
        return false;
    }
    const auto began = static_cast<int64_t>(b.get_wide(which, since));
    const auto arrived = static_cast<int64_t>(b.get_wide(clock_at(b, which, reference), clock_source::since));
    return b.now() - std::max(began, arrived) >= b.get(which, lock_time) * nanoseconds_per_millisecond;
}

void set_ref_mode(board &b, const one &which, uint32_t to) {
    refuse_if(to >= std::size(ref_mode_names), error::bad_value);
    change writes;
    b.put(writes, which, ref_mode, to);
    if (reference_in(b, which, to) != taken_reference(b, which)) {
        b.put(writes, which, since, static_cast<uint64_t>(b.now()));
    }
    b.commit(writes);
}

namespace {

constexpr uint32_t reset_bit = 0x80;
constexpr uint32_t output_bit = 0x01;

uint32_t read_control(board &b, const device &which, uint32_t) {
    return b.get(one{which}, control);
}

void write_control(board &b, const device &which, uint32_t, uint32_t value) {
    if ((value & reset_bit) != 0) {
        initialise(b, one{which});
        return;
    }
    b.put(one{which}, control, value & output_bit);
}

uint32_t read_reference(board &b, const device &which, uint32_t) {
    return b.get(one{which}, ref_mode);
}

// The chip has two bits for three modes, and leaves its mode at the fourth.
void write_reference(board &b, const device &which, uint32_t, uint32_t value) {
    if ((value & 3U) < std::size(ref_mode_names)) {
        set_ref_mode(b, one{which}, value & 3U);
    }
}

uint32_t read_status(board &b, const device &which, uint32_t) {
    const one chip{which};
    const uint32_t reference = taken_reference(b, chip);
    return (is_locked(b, chip) ? 0x01U : 0U) | (is_lost(b, chip, 1) ? 0x02U : 0U) | (is_lost(b, chip, 2) ? 0x04U : 0U) |
           (reference == 0 ? 0x08U : 0U) | reference << 4U;
}

constexpr uint32_t reference_divider_at = 0x10;
constexpr uint32_t feedback_divider_at = 0x11;
constexpr uint32_t output_divider_at = 0x12;

uint32_t read_divider(board &b, const device &which, uint32_t address) {
    const one chip{which};
    switch (address) {
    case reference_divider_at:
        return b.get(chip, reference_divider);
    case feedback_divider_at:
        return b.get(chip, feedback_divider);
    default:
        return b.get(chip, output_divider);
    }
}

// The output is divided behind the loop; within it a new ratio means a new lock.
void write_divider(board &b, const device &which, uint32_t address, uint32_t value) {
    const one chip{which};
    if (address == output_divider_at) {
        b.put(chip, output_divider, value);
        return;
    }
    change writes;
    if (read_divider(b, which, address) != value) {
        b.put(writes, chip, since, static_cast<uint64_t>(b.now()));
    }
    if (address == reference_divider_at) {
        b.put(writes, chip, reference_divider, value);
    } else {
        b.put(writes, chip, feedback_divider, value);
    }
    b.commit(writes);
}

constexpr space_register chip_registers[]{
    {.address = 0x00,
     .name = "identity",
     .meaning = "what tells this chip from others",
     .reset_value = 0x9C,
     .read_only = 0xFF},
    {.address = 0x01,
     .name = "revision",
     .meaning = "the revision of the chip",
     .reset_value = 0x02,
     .read_only = 0xFF},
    {.address = 0x02,
     .name = "control",
     .meaning = "bit 0 outputs on, bit 7 reset",
     .reset_value = control_set,
     .read = read_control,
     .write = write_control},
    {.address = 0x03,
     .name = "reference",
     .meaning = "0 automatic, 1 first, 2 second",
     .read = read_reference,
     .write = write_reference},
    {.address = 0x04,
     .name = "status",
     .meaning = "bit 0 locked, 1 first reference lost, 2 second reference lost, 3 holding, bits 4 and 5 the reference "
                "that is taken",
     .read = read_status},
    {.address = 0x0F, .name = "scratch", .meaning = "for trying the bus", .reset_value = 0xA5},
    {.address = reference_divider_at,
     .name = "reference_divider",
     .meaning = "what divides the reference",
     .reset_value = reference_divider_set,
     .read = read_divider,
     .write = write_divider},
    {.address = feedback_divider_at,
     .name = "feedback_divider",
     .meaning = "what divides in the loop",
     .reset_value = feedback_divider_set,
     .read = read_divider,
     .write = write_divider},
    {.address = output_divider_at,
     .name = "output_divider",
     .meaning = "what divides the output",
     .reset_value = output_divider_set,
     .read = read_divider,
     .write = write_divider},
};

} // namespace

constexpr register_space registers{"pll", &family, 8, 0x20, undeclared::all_ones, chip_registers};

} // namespace pll

namespace stratum3 {

pll::one synthesiser(board &b, const device_of<family> &which) {
    return b.find_at<pll::family>(which.instance, b.get(which, pll));
}

state state_of(board &b, const device_of<family> &which) {
    const pll::one chip = synthesiser(b, which);
    if (pll::taken_reference(b, chip) == 0) {
        return state::holding;
    }
    return pll::is_locked(b, chip) ? state::locked : state::running_free;
}

void select_by_itself(board &b, const device_of<family> &which) {
    pll::set_ref_mode(b, synthesiser(b, which), 0);
}

void select(board &b, const device_of<family> &which, uint32_t clock_id) {
    const pll::one chip = synthesiser(b, which);
    const bool is_first = clock_id == b.get(chip, pll::input1);
    refuse_if(!is_first && clock_id != b.get(chip, pll::input2), error::bad_value);
    pll::set_ref_mode(b, chip, is_first ? 1 : 2);
}

} // namespace stratum3

device_list devices_of_pll() {
    static constexpr const device_family *families[]{&pll::family, &stratum3::family};
    static constexpr const register_space *spaces[]{&pll::registers};
    return {families, spaces};
}

} // namespace kestro_sim
