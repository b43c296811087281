// The regulator behind a controller is the rail's own: what was set there is what is measured here. Status byte and
// word are laid out as the power management bus has them, the byte being the lower half of the word.
#include "sim/devices/environment/avs.h"

#include "sim/core/catalogue.h"
#include "sim/devices/environment/rail.h"
#include "sim/devices/environment/status_bits.h"

#include <cstdio>

namespace kestro_sim {

namespace avs {

namespace {

constexpr uint32_t output_fault = 0x8000;
constexpr uint32_t input_fault = 0x2000;

constexpr status_bit byte_bits[]{
    {0x80, "busy"},
    {0x40, "off"},
    {0x20, "output over-voltage"},
    {0x10, "output over-current"},
    {0x08, "input under-voltage"},
    {0x04, "over-temperature"},
    {0x02, "communication fault"},
    {0x01, "none of the above"},
};

// The upper half: what the byte says is told by the check of the byte.
constexpr status_bit word_bits[]{
    {output_fault, "output voltage"},
    {0x4000, "output current or power"},
    {input_fault, "input"},
    {0x1000, "manufacturer's own"},
    {0x0800, "power not good"},
    {0x0400, "fans"},
    {0x0200, "other"},
    {0x0100, "unknown"},
};

rail::one output(board &b, const one &controller) {
    return board::at<rail::family>(controller.instance, b.get(controller, rail_number));
}

rail::one input(board &b, const one &controller) {
    return board::at<rail::family>(controller.instance, b.get(controller, input_number));
}

// A rail that is not measured, or has no limits, is never beyond them.
bool is_beyond_limits(board &b, const rail::one &which) {
    return b.has(which, rail::millivolts) && b.has(which, rail::alarm_low) && b.has(which, rail::alarm_high) &&
           rail::judge(b, which, rail::limits::alarm).status != 0;
}

uint32_t status_word(board &b, const one &controller) {
    uint32_t word = b.get(controller, status_high) << 8U | b.get(controller, status);
    if (is_beyond_limits(b, output(b, controller))) {
        word |= output_fault;
    }
    if (is_beyond_limits(b, input(b, controller))) {
        word |= input_fault;
    }
    return word;
}

} // namespace

std::string dump_line(board &b, const one &controller) {
    const uint32_t measured = b.get(output(b, controller), rail::millivolts);
    char line[128];
    const int length =
        snprintf(line, sizeof line, "avs %u: rail %u, target %u mV, measured %u mV, status 0x%02x\r\n", controller.id,
                 b.get(controller, rail_number), b.get(controller, target), measured, b.get(controller, status));
    return {line, static_cast<size_t>(length)};
}

finding check_phases(board &b, const one &controller) {
    const uint32_t faults = b.get(controller, phase_fault);
    finding found;
    for (uint32_t phase = 0; faults >> phase != 0; ++phase) {
        if ((faults >> phase & 1U) != 0) {
            add_fault(found, "phase " + std::to_string(phase));
        }
    }
    return found;
}

finding check_status_byte(board &b, const one &controller) {
    return faults_in(b.get(controller, status), byte_bits);
}

finding check_status_word(board &b, const one &controller) {
    return faults_in(status_word(b, controller) & 0xFF00U, word_bits);
}

uint32_t item_value(board &b, const one &controller, item which) {
    switch (which) {
    case item::input_voltage:
        return b.get(input(b, controller), rail::millivolts);
    case item::output_voltage:
        return b.get(output(b, controller), rail::millivolts);
    case item::target_voltage:
        return b.get(controller, target);
    case item::status_byte:
        return b.get(controller, status);
    case item::status_word:
        return status_word(b, controller);
    }
    refuse(error::bad_value);
}

std::string item_text(board &b, const one &controller, item which) {
    static constexpr const char *names[item_count]{"input voltage", "output voltage", "target voltage", "status byte",
                                                   "status word"};
    const char *name = names[static_cast<uint32_t>(which)];
    const uint32_t value = item_value(b, controller, which);
    if (which != item::status_byte && which != item::status_word) {
        return std::string(name) + " " + std::to_string(value) + " mV";
    }
    char text[64];
    const int digits = which == item::status_byte ? 2 : 4;
    const int length = snprintf(text, sizeof text, "%s 0x%0*x", name, digits, value);
    return {text, static_cast<size_t>(length)};
}

namespace {

constexpr uint32_t floating = 0xFFFF;

template <item Which> uint32_t item_register(board &b, const device &chip, uint32_t) {
    return item_value(b, one{chip}, Which);
}

uint32_t input_register(board &b, const device &chip, uint32_t) {
    return b.get_or(input(b, one{chip}), rail::millivolts, floating);
}

uint32_t output_register(board &b, const device &chip, uint32_t) {
    return b.get_or(output(b, one{chip}), rail::millivolts, floating);
}

constexpr space_register chip_registers[]{
    {.address = 0x21,
     .name = "target",
     .meaning = "what the processor asks for in millivolts",
     .read = item_register<item::target_voltage>},
    {.address = 0x78, .name = "status_byte", .meaning = "the status byte", .read = item_register<item::status_byte>},
    {.address = 0x79, .name = "status_word", .meaning = "the status word", .read = item_register<item::status_word>},
    {.address = 0x88, .name = "input_voltage", .meaning = "input voltage in millivolts", .read = input_register},
    {.address = 0x8B, .name = "output_voltage", .meaning = "output voltage in millivolts", .read = output_register},
};

} // namespace

constexpr register_space registers{"pmbus", &family, 16, 0x100, undeclared::all_ones, chip_registers};

} // namespace avs

device_list devices_of_avs() {
    static constexpr const device_family *families[]{&avs::family};
    static constexpr const register_space *spaces[]{&avs::registers};
    return {families, spaces};
}

} // namespace kestro_sim
