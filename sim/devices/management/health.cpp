// What is sick is described, or made so by the technician: most of these devices only show it.
#include "sim/devices/management/health.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

namespace test_interrupt {

namespace {

using one = device_of<family>;

// Of that chip; a chip without it has registers that do nothing.
one of_chip(const device &chip) {
    return board::at<family>(chip.instance, chip.id);
}

bool source_stands(board &b, const one &which) {
    return b.get(which, key) == right_key && b.get(which, raise) != 0;
}

void write_source(board &b, const device &chip, written_of<family> name, uint32_t value) {
    const one which = of_chip(chip);
    if (!b.is_described(which)) {
        return;
    }
    const bool stood = source_stands(b, which);
    b.put(which, name, value);
    if ((stood || source_stands(b, which)) && b.get(which, latched) == 0) {
        b.put(which, latched, 1);
    }
}

} // namespace

uint32_t read_latch(board &b, const device &which) {
    const one own{which};
    return b.get(own, latched) != 0 || source_stands(b, own) ? 1 : 0;
}

bool latch_takes(board &b, const device &which, uint32_t value) {
    return value != 0 || b.get(one{which}, stuck) == 0;
}

uint32_t read_key(board &b, const device &chip, uint32_t /*address*/) {
    return b.get(of_chip(chip), key);
}

void write_key(board &b, const device &chip, uint32_t /*address*/, uint32_t value) {
    write_source(b, chip, key, value);
}

uint32_t read_raise(board &b, const device &chip, uint32_t /*address*/) {
    return b.get(of_chip(chip), raise);
}

void write_raise(board &b, const device &chip, uint32_t /*address*/, uint32_t value) {
    write_source(b, chip, raise, value & 1U);
}

void reset(board &b, change &writes, const device &chip) {
    const one which = of_chip(chip);
    if (b.is_described(which) && (b.get(which, key) | b.get(which, raise) | b.get(which, latched)) != 0) {
        b.put(writes, which, key, 0);
        b.put(writes, which, raise, 0);
        b.put(writes, which, latched, 0);
    }
}

} // namespace test_interrupt

namespace interrupt_line {

bool is_raised(board &b, const device_of<family> &line) {
    if (b.get(line, raised) != 0) {
        return true;
    }
    return b.has(line, test_of) &&
           test_interrupt::read_latch(b, board::at<test_interrupt::family>(line.instance, b.get(line, test_of))) != 0;
}

bool is_let_through(board &b, const device_of<family> &line) {
    const uint32_t wrong = b.get(line, defect);
    return wrong == unmaskable || (wrong != dead && b.get(line, enabled) != 0);
}

} // namespace interrupt_line

device_list devices_of_health() {
    static constexpr const device_family *families[]{&corner_joint::family, &corrosion_sensor::family,
                                                     &test_interrupt::family, &interrupt_line::family,
                                                     &trusted_module::family};
    return {families, {}};
}

} // namespace kestro_sim
