// The chip measures two voltages; current and power follow from them. The rail is the board's own, so all who measure
// it agree.
#include "sim/devices/environment/power_monitor.h"

#include "sim/core/catalogue.h"
#include "sim/devices/environment/rail.h"

#include <algorithm>

namespace kestro_sim {

namespace power_monitor {

reading flowing(board &b, const one &which) {
    const auto fed = board::at<rail::family>(which.instance, b.get(which, rail_number));
    return {b.get_or(fed, rail::millivolts, 0), b.get(which, milliamps)};
}

reading measured(board &b, const one &which) {
    const reading now = flowing(b, which);
    if (b.get(which, running) != 0) {
        return now;
    }
    return {b.get_or(which, held_millivolts, now.millivolts), b.get_or(which, held_milliamps, now.milliamps)};
}

uint32_t milliwatts(const reading &of) {
    return static_cast<uint32_t>(uint64_t{of.millivolts} * of.milliamps / 1000);
}

uint32_t shunt_microvolts(board &b, const one &which) {
    return static_cast<uint32_t>(uint64_t{measured(b, which).milliamps} * b.get(which, shunt) / 1000);
}

void start(board &b, const one &which) {
    b.put(which, running, 1);
}

void stop(board &b, const one &which) {
    const reading last = measured(b, which);
    change writes;
    b.put(writes, which, running, 0);
    b.keep(writes, which, held_millivolts, last.millivolts);
    b.keep(writes, which, held_milliamps, last.milliamps);
    b.commit(writes);
}

} // namespace power_monitor

namespace {

using namespace power_monitor;

// Beyond 16 bits the chip shows the most it can.
uint32_t in_steps_of(uint32_t step, uint32_t value) {
    return std::min<uint32_t>(value / step, UINT16_MAX);
}

uint32_t shunt_register(board &b, const device &chip, uint32_t) {
    return in_steps_of(10, shunt_microvolts(b, one{chip}));
}

uint32_t bus_register(board &b, const device &chip, uint32_t) {
    return in_steps_of(1, measured(b, one{chip}).millivolts);
}

uint32_t power_register(board &b, const device &chip, uint32_t) {
    return in_steps_of(10, milliwatts(measured(b, one{chip})));
}

uint32_t current_register(board &b, const device &chip, uint32_t) {
    return in_steps_of(10, measured(b, one{chip}).milliamps);
}

uint32_t state_register(board &b, const device &chip, uint32_t) {
    return b.get(one{chip}, running);
}

constexpr space_register chip_registers[]{
    {.address = 0x00, .name = "state", .meaning = "bit 0 while it measures", .read = state_register},
    {.address = 0x01,
     .name = "shunt_voltage",
     .meaning = "voltage across the shunt, in steps of 10 microvolts",
     .read = shunt_register},
    {.address = 0x02, .name = "bus_voltage", .meaning = "voltage of the rail in millivolts", .read = bus_register},
    {.address = 0x03, .name = "power", .meaning = "power in steps of 10 milliwatts", .read = power_register},
    {.address = 0x04, .name = "current", .meaning = "current in steps of 10 milliamperes", .read = current_register},
};

} // namespace

constexpr register_space power_monitor::registers{"wattmeter", &family, 16, 0x10, undeclared::all_ones, chip_registers};

device_list devices_of_power_monitor() {
    static constexpr const device_family *families[]{&power_monitor::family};
    static constexpr const register_space *spaces[]{&power_monitor::registers};
    return {families, spaces};
}

} // namespace kestro_sim
