// Registers in pairs, for pins 0 to 7 and 8 to 15, in the order in which the chip has them.
#include "sim/devices/chips/expander.h"

#include "sim/core/catalogue.h"

#include <cstdio>

namespace kestro_sim {

namespace {

uint32_t read_input(board &b, const device &chip, uint32_t address) {
    return expander::levels(b, expander::one{chip}) >> (8 * address) & 0xFF;
}

// The fields of a space belong to one chip, so each chip has a layout of its own.
template <uint32_t Id> struct layout {
    static constexpr space_field output0[]{{0xFF, &expander::family, Id, &expander::output, 0}};
    static constexpr space_field output1[]{{0xFF, &expander::family, Id, &expander::output, 8}};
    static constexpr space_field polarity0[]{{0xFF, &expander::family, Id, &expander::polarity, 0}};
    static constexpr space_field polarity1[]{{0xFF, &expander::family, Id, &expander::polarity, 8}};
    static constexpr space_field inputs0[]{{0xFF, &expander::family, Id, &expander::inputs, 0}};
    static constexpr space_field inputs1[]{{0xFF, &expander::family, Id, &expander::inputs, 8}};

    static constexpr space_register registers[]{
        {0, "input", "the pins as they are, inputs inverted where the polarity says so", 0, 0, 0, {}, 2, read_input},
        {2, "output0", "what pins 0 to 7 drive as outputs", 0, 0, 0, output0},
        {3, "output1", "what pins 8 to 15 drive", 0, 0, 0, output1},
        {4, "polarity0", "which of pins 0 to 7 read inverted as inputs", 0, 0, 0, polarity0},
        {5, "polarity1", "which of pins 8 to 15", 0, 0, 0, polarity1},
        {6, "config0", "which of pins 0 to 7 are inputs", 0, 0, 0, inputs0},
        {7, "config1", "which of pins 8 to 15", 0, 0, 0, inputs1},
    };
    static constexpr register_space space{"expander", &expander::family, 8, 8, undeclared::refused, registers, Id};
};

} // namespace

namespace expander {

// Polarity is a matter of inputs: an output shows the level that it drives.
uint32_t levels(board &b, const one &chip) {
    const uint32_t is_input = b.get(chip, inputs);
    const uint32_t seen = b.get(chip, wired) ^ b.get(chip, polarity);
    return (seen & is_input) | (b.get(chip, output) & ~is_input);
}

namespace {

// The first of each pair of registers.
constexpr uint32_t output_pair = 2;
constexpr uint32_t polarity_pair = 4;
constexpr uint32_t config_pair = 6;

const register_space &space_of(const one &chip) {
    const register_space *const space = find_space("expander", chip);
    refuse_if(space == nullptr, error::not_supported);
    return *space;
}

void set_bit(board &b, const one &chip, uint32_t pair, uint32_t pin, uint32_t to) {
    const uint32_t address = pair + pin / 8;
    const uint32_t mask = 1U << pin % 8;
    const uint32_t others = read_register(b, chip, address) & ~mask;
    write_register(b, chip, address, others | (to != 0 ? mask : 0));
}

} // namespace

uint32_t read_register(board &b, const one &chip, uint32_t address) {
    return read_space(b, space_of(chip), chip, address);
}

void write_register(board &b, const one &chip, uint32_t address, uint32_t value) {
    write_space(b, space_of(chip), chip, address, value | b.get(chip, data_high));
}

void set_polarity(board &b, const one &chip, uint32_t pin, uint32_t is_inverted) {
    set_bit(b, chip, polarity_pair, pin, is_inverted);
}

void set_direction(board &b, const one &chip, uint32_t pin, uint32_t is_input) {
    set_bit(b, chip, config_pair, pin, is_input);
}

void drive(board &b, const one &chip, uint32_t pin, uint32_t level) {
    refuse_if((b.get(chip, inputs) >> pin & 1U) != 0, error::bad_value);
    set_bit(b, chip, output_pair, pin, level);
}

std::string dump(board &b, const one &chip) {
    constexpr const char *names[]{"input", "output", "polarity", "config"};
    std::string text;
    for (uint32_t address = 0; address < 8; ++address) {
        char value[8];
        snprintf(value, sizeof value, " 0x%02x", read_register(b, chip, address));
        if (address % 2 == 0) {
            text += (address == 0 ? "" : ", ") + std::string(names[address / 2]);
        }
        text += value;
    }
    return text;
}

} // namespace expander

device_list devices_of_expander() {
    static constexpr const device_family *families[]{&expander::family};
    static constexpr const register_space *spaces[]{&layout<0>::space, &layout<1>::space};
    return {families, spaces};
}

} // namespace kestro_sim
