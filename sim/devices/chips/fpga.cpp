// The control FPGAs, chips 1 and 2 of the programmable logic: registers of 16 bits, what they know of the links behind
// them, and where the network processor is. The checks serve the control CPLD as well.
#include "sim/devices/chips/fpga.h"

#include "sim/core/catalogue.h"
#include "sim/devices/management/health.h"

#include <cstdio>

namespace kestro_sim {

namespace {

constexpr uint32_t fpga_size = 0x800;
constexpr bus only_read = bus::read_only;

uint32_t read_load(board &b, const device &chip, uint32_t) {
    return b.get(device_of<logic_chip::family>{chip}, logic_chip::load) == logic_chip::load_running ? 1 : 0;
}

// The fields of a space belong to one chip, so each chip has a layout of its own.
template <uint32_t Id> struct fpga {
    static constexpr space_field version[]{
        {0xFFFF, &logic_chip::family, Id, &logic_chip::version, 0, only_read, {logic_chip::read_version, nullptr}}};
    static constexpr space_field year[]{{0xFFFF,
                                         &logic_chip::family,
                                         Id,
                                         &logic_chip::build_year,
                                         0,
                                         only_read,
                                         {logic_chip::read_build_year, nullptr}}};
    static constexpr space_field date[]{
        {0x00FF, &logic_chip::family, Id, &logic_chip::build_day, 0, only_read, {logic_chip::read_build_day, nullptr}},
        {0xFF00,
         &logic_chip::family,
         Id,
         &logic_chip::build_month,
         0,
         only_read,
         {logic_chip::read_build_month, nullptr}}};
    static constexpr space_field scratch[]{{0xFFFF,
                                            &logic_chip::family,
                                            Id,
                                            &logic_chip::scratch,
                                            0,
                                            bus::read_write,
                                            {logic_chip::read_scratch, nullptr}}};
    static constexpr space_field agents[]{{0x00FF, &logic_chip::family, Id, &logic_chip::spi_fault, 0, only_read, {}}};
    static constexpr space_field ports[]{{0x00FF, &logic_chip::family, Id, &logic_chip::pcie_down, 0, only_read, {}}};
    static constexpr space_field slave[]{{0x007F, &logic_chip::family, Id, &logic_chip::np_slave}};
    static constexpr space_field address0[]{{0xFFFF, &logic_chip::family, Id, &logic_chip::np_low, 0}};
    static constexpr space_field address1[]{{0xFFFF, &logic_chip::family, Id, &logic_chip::np_low, 16}};
    static constexpr space_field address2[]{{0xFFFF, &logic_chip::family, Id, &logic_chip::np_high, 0}};
    static constexpr space_field address3[]{{0xFFFF, &logic_chip::family, Id, &logic_chip::np_high, 16}};
    static constexpr space_field latch[]{{0x0001,
                                          &test_interrupt::family,
                                          Id,
                                          &test_interrupt::latched,
                                          0,
                                          bus::clear_by_one,
                                          {test_interrupt::read_latch, test_interrupt::latch_takes}}};

    static constexpr space_register registers[]{
        {0x00, "identity", "what tells this chip from others", 0xF9A0 + Id, 0xFFFF},
        {0x01, "version", "the version of its logic", 0, 0, 0, version},
        {0x02, "build_year", "when it was made", 0, 0, 0, year},
        {0x03, "build_date", "the month in bits 8 to 15, the day below", 0, 0, 0, date},
        {logic_chip::scratch_address, "scratch", "for trying the bus", 0, 0, 0, scratch},
        {0x10, "agents", "bit N when agent N does not answer", 0, 0xFF00, 0, agents},
        {0x11, "ports", "bit N when the link of port N is down", 0, 0xFF00, 0, ports},
        {0x12, "load", "bit 0: its logic was loaded since it has power", 0, 0, 0, {}, 1, read_load},
        {0x20, "np_slave", "the network processor's address on the control bus", 0, 0xFF80, 0, slave},
        {0x21, "np_address0", "where its memory is: bits 0 to 15", 0, 0, 0, address0},
        {0x22, "np_address1", "bits 16 to 31", 0, 0, 0, address1},
        {0x23, "np_address2", "bits 32 to 47", 0, 0, 0, address2},
        {0x24, "np_address3", "bits 48 to 63", 0, 0, 0, address3},
        {0x600, "latch", "interrupts that were raised, in bit 0 the test interrupt; a written 1 clears one", 0, 0,
         0xFFFE, latch},
        {0x62F,
         "test_key",
         "0x7788 lets the test interrupt be raised",
         0,
         0,
         0,
         {},
         1,
         test_interrupt::read_key,
         test_interrupt::write_key},
        {0x630,
         "test_raise",
         "bit 0 raises the test interrupt",
         0,
         0,
         0,
         {},
         1,
         test_interrupt::read_raise,
         test_interrupt::write_raise},
    };
    static constexpr register_space space{"cpld", &logic_chip::family, 16, fpga_size, undeclared::all_ones, registers,
                                          Id};
};

std::string in_hexadecimal(uint32_t value, uint32_t width) {
    char text[16];
    snprintf(text, sizeof text, "%0*x", static_cast<int>(width / 4), value);
    return text;
}

bool is_set(uint32_t bits, uint32_t which) {
    return (bits >> which & 1U) != 0;
}

} // namespace

namespace logic_chip {

const register_space &space_of(const one &chip) {
    const register_space *const space = find_space("cpld", chip);
    refuse_if(space == nullptr, error::not_supported);
    return *space;
}

finding selftest(board &b, const one &chip) {
    const register_space &space = space_of(chip);
    const uint32_t before = b.get(chip, scratch);
    finding found;
    for (const uint32_t pattern : {0x5555U, 0xAAAAU, 0x0000U, 0xFFFFU}) {
        const uint32_t written = pattern & ((1U << space.width) - 1);
        write_space(b, space, chip, scratch_address, written);
        const uint32_t answer = read_space(b, space, chip, scratch_address);
        if (answer != written) {
            add_fault(found, "scratch wrote 0x" + in_hexadecimal(written, space.width) + " read 0x" +
                                 in_hexadecimal(answer, space.width));
        }
    }
    b.put(chip, scratch, before);
    return found;
}

finding check_agent(board &b, const one &chip, uint32_t channel) {
    refuse_if(channel >= b.get(chip, spi_agents), error::no_such_device);
    finding found;
    if (is_set(b.get(chip, spi_fault), channel)) {
        add_fault(found, "agent " + std::to_string(channel) + " does not answer");
    }
    return found;
}

finding check_port(board &b, const one &chip, uint32_t channel) {
    refuse_if(channel >= b.get(chip, pcie_ports), error::no_such_device);
    finding found;
    if (is_set(b.get(chip, pcie_down), channel)) {
        add_fault(found, "link of port " + std::to_string(channel) + " is down");
    }
    return found;
}

finding check_receiver(board &b, const one &chip, uint32_t channel) {
    refuse_if(channel >= b.get(chip, uarts), error::no_such_device);
    finding found;
    if (is_set(b.get(chip, uart_alarm), channel)) {
        add_fault(found, "receiver " + std::to_string(channel) + " lost characters");
    }
    return found;
}

finding check_chip_links(board &b, const one &chip) {
    const uint32_t links = b.get(chip, chip_links);
    const uint32_t down = b.get(chip, link_down);
    finding found;
    for (uint32_t i = 0; i < links; ++i) {
        if (is_set(down, i)) {
            add_fault(found, "link to chip " + std::to_string(i) + " is down");
        }
    }
    return found;
}

finding check_repeated_loads(board &b, const one &chip) {
    refuse_if(b.get(chip, is_fpga) == 0, error::not_supported);
    finding found;
    if (const uint32_t repeats = b.get(chip, repeated_loads); repeats != 0) {
        add_fault(found, "loads beside the first: " + std::to_string(repeats));
    }
    return found;
}

finding check_upsets(board &b, const one &chip) {
    finding found;
    if (const uint32_t turned = b.get(chip, upsets); turned != 0 && b.get(chip, is_fpga) != 0) {
        add_fault(found, "turned bits: " + std::to_string(turned));
    }
    return found;
}

void clear_upsets(board &b, const one &chip) {
    refuse_if(b.get(chip, is_fpga) == 0, error::not_supported);
    b.put(chip, upsets, 0);
}

uint32_t failed_functions(board &b, const one &chip) {
    uint32_t failed = selftest(b, chip).status;
    for (uint32_t i = 0; i < b.get_or(chip, spi_agents, 0); ++i) {
        failed |= check_agent(b, chip, i).status << 1;
    }
    for (uint32_t i = 0; i < b.get_or(chip, pcie_ports, 0); ++i) {
        failed |= check_port(b, chip, i).status << 2;
    }
    return failed;
}

std::string dump(board &b, const one &chip, uint32_t start, uint32_t num) {
    constexpr uint32_t per_line = 16;
    const register_space &space = space_of(chip);
    refuse_if(num > space.size || start > space.size - num, error::out_of_range);
    std::string text;
    for (uint32_t i = 0; i < num; ++i) {
        if (i % per_line == 0) {
            text += (i == 0 ? "" : "\n") + in_hexadecimal(start + i, 3 * 4) + ":";
        }
        text += " " + in_hexadecimal(read_space(b, space, chip, start + i), space.width);
    }
    return text + (num == 0 ? "" : "\n");
}

void set_np(board &b, const one &chip, uint32_t slave, uint64_t address) {
    b.put_all(chip, {{np_slave, slave}, {np_low, address & UINT32_MAX}, {np_high, address >> 32}});
}

} // namespace logic_chip

device_list devices_of_fpga() {
    static constexpr const register_space *spaces[]{&fpga<1>::space, &fpga<2>::space};
    return {{}, spaces};
}

} // namespace kestro_sim
