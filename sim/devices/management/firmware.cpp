// The board control CPLD, chip 0 of the logic chips, is what the processor reads on its local bus: lamps, resets and
// the supply's latch stand in it, so their drivers and the bus see the same bits. The control FPGAs have a layout of
// their own (sim/devices/chips/fpga.cpp).
#include "sim/devices/management/firmware.h"

#include "sim/core/catalogue.h"
#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/lamp.h"
#include "sim/devices/management/restart.h"

namespace kestro_sim {

namespace {

constexpr uint32_t cpld_size = 0x100;

bool lamp_takes_color(board &b, const device &which, uint32_t value) {
    return lamp::has_color(b, device_of<lamp::family>{which}, value);
}

bool lamp_takes_freq(board &b, const device &which, uint32_t value) {
    return value <= b.get(device_of<lamp::family>{which}, lamp::freq_max);
}

// A lamp has two registers: colour with what drives it, and how fast it blinks.
struct lamp_fields {
    space_field shown[2];
    space_field blinking[1];
};

constexpr lamp_fields fields_of_lamp(uint32_t id) {
    return {{{0x03, &lamp::family, id, &lamp::color, 0, bus::read_write, {nullptr, lamp_takes_color}},
             {0x80, &lamp::family, id, &lamp::mode, 0, bus::read_only, {}}},
            {{0xFF, &lamp::family, id, &lamp::freq, 0, bus::read_write, {nullptr, lamp_takes_freq}}}};
}

constexpr lamp_fields lamps[]{fields_of_lamp(0), fields_of_lamp(1), fields_of_lamp(2), fields_of_lamp(3)};

constexpr space_field version_low[]{{0xFF, &logic_chip::family, 0, &logic_chip::version, 0, bus::read_only, {}}};
constexpr space_field version_high[]{{0xFF, &logic_chip::family, 0, &logic_chip::version, 8, bus::read_only, {}}};
constexpr space_field scratch_bits[]{
    {0xFF, &logic_chip::family, 0, &logic_chip::scratch, 0, bus::read_write, {logic_chip::read_scratch, nullptr}}};
constexpr space_field lamp_test_bits[]{{0x01, &lamp_test::family, 0, &lamp_test::enable},
                                       {0x02, &lamp_test::family, 0, &lamp_test::ctrl_enable},
                                       {0x80, &lamp_test::family, 0, &lamp_test::support, 0, bus::read_only, {}}};
constexpr space_field start_bits[]{{0x01, &reset_control::family, 0, &reset_control::soft_start_ok},
                                   {0x02, &reset_control::family, 0, &reset_control::sys_ready},
                                   {0x10, &reset_control::family, 0, &reset_control::button, 0, bus::read_only, {}},
                                   {0x80, &reset_control::family, 0, &reset_control::cool, 0, bus::read_only, {}}};
constexpr space_field reason_bits[]{{0x0F, &reset_reason::family, 0, &reset_reason::reason, 0, bus::read_only, {}}};
constexpr space_field step_bits[]{
    {0xFF, &board_unit::family, 0, &board_unit::bootstep, 0, bus::read_write, {board_unit::read_bootstep, nullptr}}};
constexpr space_field latch_bits[]{{0x01, &board_unit::family, 0, &board_unit::low_voltage, 0, bus::clear_by_one, {}}};

uint32_t read_waiting(board &b, const device &chip, uint32_t) {
    return b.get(device_of<logic_chip::family>{chip}, logic_chip::load) == logic_chip::load_waiting ? 1 : 0;
}

constexpr space_register cpld_registers[]{
    {0x00, "identity", "what tells this chip from others", 0xC5, 0xFF},
    {0x01, "version_low", "low byte of the version", 0, 0, 0, version_low},
    {0x02, "version_high", "high byte of the version", 0, 0, 0, version_high},
    {logic_chip::scratch_address, "scratch", "for trying the bus", 0, 0, 0, scratch_bits},
    {0x20, "lamp0", "lamp 0: colour in bits 0 and 1, bit 7 when software drives it", 0, 0x7C, 0, lamps[0].shown},
    {0x21, "lamp0_freq", "lamp 0: blinking in tenths of a hertz", 0, 0, 0, lamps[0].blinking},
    {0x22, "lamp1", "lamp 1", 0, 0x7C, 0, lamps[1].shown},
    {0x23, "lamp1_freq", "lamp 1", 0, 0, 0, lamps[1].blinking},
    {0x24, "lamp2", "lamp 2", 0, 0x7C, 0, lamps[2].shown},
    {0x25, "lamp2_freq", "lamp 2", 0, 0, 0, lamps[2].blinking},
    {0x26, "lamp3", "lamp 3", 0, 0x7C, 0, lamps[3].shown},
    {0x27, "lamp3_freq", "lamp 3", 0, 0, 0, lamps[3].blinking},
    {0x28, "lamptest", "bit 0 all lamps on, bit 1 to the test logic, bit 7 when there is one", 0, 0x7C, 0,
     lamp_test_bits},
    {0x30, "start", "bit 0 software started, bit 1 system ready, bit 4 button pressed, bit 7 cold start", 0, 0x6C, 0,
     start_bits},
    {0x31, "reason", "why the board started last", 0, 0xF0, 0, reason_bits},
    {0x32, "bootstep", "how far the start has come", 0, 0, 0, step_bits},
    {0x38, "flash", "bit 0: new logic waits for the next cold start", 0, 0, 0, {}, 1, read_waiting},
    {0x40, "latch", "bit 0: the supply fell; a written 1 clears it", 0, 0xFE, 0, latch_bits},
    {0x41, "latch_mask", "which bits of the latch interrupt", 0xFF},
};

} // namespace

uint32_t logic_chip::read_scratch(board &b, const device &chip) {
    const device_of<family> which{chip};
    return b.get(which, scratch) & ~b.get(which, scratch_stuck);
}

namespace {

uint32_t of_running(board &b, const device &chip, word_of<logic_chip::family> in_flash,
                    word_of<logic_chip::family> loaded) {
    const device_of<logic_chip::family> which{chip};
    const bool was_loaded = b.get(which, logic_chip::load) == logic_chip::load_running;
    return was_loaded ? b.get(which, loaded) : b.get(which, in_flash);
}

} // namespace

uint32_t logic_chip::read_version(board &b, const device &chip) {
    return of_running(b, chip, version, loaded_version);
}

uint32_t logic_chip::read_build_year(board &b, const device &chip) {
    return of_running(b, chip, build_year, loaded_year);
}

uint32_t logic_chip::read_build_month(board &b, const device &chip) {
    return of_running(b, chip, build_month, loaded_month);
}

uint32_t logic_chip::read_build_day(board &b, const device &chip) {
    return of_running(b, chip, build_day, loaded_day);
}

void logic_chip::need_logic(board &b, const device &chip) {
    const device_of<family> which{chip};
    refuse_if(b.get(which, is_fpga) != 0 && b.get(which, load) == load_begun, error::not_ready);
}

constexpr register_space board_cpld{"cpld", &logic_chip::family, 8, cpld_size, undeclared::all_ones, cpld_registers, 0};

device_list devices_of_firmware() {
    static constexpr const device_family *families[]{&bios::family, &bios_area::family, &logic_chip::family};
    static constexpr const register_space *spaces[]{&board_cpld};
    return {families, spaces};
}

} // namespace kestro_sim
