// The configuration space of PCI devices, and how removing one shows at its core.
#include "sim/devices/chips/pci.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr uint32_t config_size = 0x100;
constexpr uint32_t all_ones = 0xFFFFFFFF;

// Low bits of a base register that say what kind of window it is: memory, of 64 bits and prefetchable.
constexpr uint32_t wide_window = 0x0C;

// A base register holds the address bits above its window's size; the others say what it is. So all ones that are
// written read back as the size.
uint32_t read_bar0(board &b, const device &which) {
    const pci_device::one chip{which};
    return (b.get(chip, pci_device::bar0) & ~(b.get(chip, pci_device::bar0_size) - 1)) | wide_window;
}

uint32_t read_bar2(board &b, const device &which) {
    const pci_device::one chip{which};
    return b.get(chip, pci_device::bar2) & ~(b.get(chip, pci_device::bar2_size) - 1);
}

// Link status: the speed in bits 16 to 19, a width of one lane.
uint32_t read_link(board &b, const device &which, uint32_t /*address*/) {
    const uint32_t core = b.get(pci_device::one{which}, pci_device::core);
    const uint32_t speed = pci_core::speed_now(b, b.find_at<pci_core::family>(which.instance, core));
    return speed == 0 ? 0 : 1U << 20 | speed << 16;
}

constexpr bus only_read = bus::read_only;

// The fields of a space belong to one device, so each has a layout of its own.
template <uint32_t Id> struct config {
    static constexpr space_field identity[]{
        {0x0000FFFF, &pci_device::family, Id, &pci_device::vendor_id, 0, only_read, {}},
        {0xFFFF0000, &pci_device::family, Id, &pci_device::device_id, 0, only_read, {}}};
    static constexpr space_field command[]{
        {0x00000007, &pci_device::family, Id, &pci_device::command, 0},
        {0x00000040, &pci_device::family, Id, &pci_device::command, 6},
        {0x00000100, &pci_device::family, Id, &pci_device::command, 8},
        {0x00000400, &pci_device::family, Id, &pci_device::command, 10},
        {0x00100000, &pci_device::family, Id, &pci_device::status, 4, only_read, {}},
        {0x01000000, &pci_device::family, Id, &pci_device::status, 8, bus::clear_by_one, {}},
        {0xF8000000, &pci_device::family, Id, &pci_device::status, 11, bus::clear_by_one, {}}};
    static constexpr space_field kind[]{
        {0x000000FF, &pci_device::family, Id, &pci_device::revision, 0, only_read, {}},
        {0xFFFFFF00, &pci_device::family, Id, &pci_device::class_code, 0, only_read, {}}};
    static constexpr space_field base0[]{
        {all_ones, &pci_device::family, Id, &pci_device::bar0, 0, bus::read_write, {read_bar0, nullptr}}};
    static constexpr space_field base1[]{{all_ones, &pci_device::family, Id, &pci_device::bar1}};
    static constexpr space_field base2[]{
        {all_ones, &pci_device::family, Id, &pci_device::bar2, 0, bus::read_write, {read_bar2, nullptr}}};

    static constexpr space_register registers[]{
        {0x00, "identity", "vendor below, device above", 0, 0, 0, identity},
        {0x04, "command_status", "command below, status above", 0, 0x06EFFAB8, 0, command},
        {0x08, "class", "revision below, class above", 0, 0, 0, kind},
        {0x0C, "header", "the cache line in bits 0 to 7", 0x10, 0xFFFFFF00},
        {0x10, "bar0", "base register 0", 0, 0, 0, base0},
        {0x14, "bar1", "base register 1, the upper half of 0", 0, 0, 0, base1},
        {0x18, "bar2", "base register 2", 0, 0, 0, base2},
        {0x34, "capabilities", "where the first capability stands", 0x40, all_ones},
        {0x3C, "interrupt", "the line in bits 0 to 7, pin 1", 0x01FF, 0xFFFFFF00},
        {0x40, "express", "the PCI Express capability, the last one", 0x00020010, all_ones},
        {0x50, "link", "the speed in bits 16 to 19, the width in 20 to 25", 0, 0, 0, {}, 1, read_link},
    };
    static constexpr register_space space{"pci_config",      &pci_device::family, 32, config_size,
                                          undeclared::zeros, registers,           Id};
};

const register_space &space_of(const pci_device::one &which) {
    const register_space *const space = find_space("pci_config", which);
    refuse_if(space == nullptr, error::not_supported);
    return *space;
}

} // namespace

namespace pci_device {

bool is_there(board &b, const one &which) {
    return b.get(which, removed) == 0;
}

uint32_t read_config(board &b, const one &which, uint32_t offset) {
    const uint32_t value = read_space(b, space_of(which), which, offset);
    return is_there(b, which) ? value : all_ones;
}

void write_config(board &b, const one &which, uint32_t offset, uint32_t value) {
    if (is_there(b, which)) {
        write_space(b, space_of(which), which, offset, value);
    } else {
        refuse_if(offset >= config_size, error::out_of_range);
    }
}

void remove(board &b, const one &which) {
    refuse_if(!is_there(b, which), error::no_such_device);
    b.put(which, removed, 1);
}

void bring_back(board &b, const one &which) {
    if (!is_there(b, which)) {
        b.put_all(which, {{removed, 0}, {command, command.reset_value}, {status, status.reset_value}});
    }
}

window window_at(board &b, const one &which, uint32_t bar) {
    refuse_if(!is_there(b, which), error::no_such_device);
    refuse_if(bar == 1 || bar > 5, error::bad_value);
    if (bar == 0) {
        const uint32_t size = b.get(which, bar0_size);
        const uint32_t low = b.get(which, bar0) & ~(size - 1);
        return {uint64_t{b.get(which, bar1)} << 32 | low, size};
    }
    refuse_if(bar != 2, error::not_supported);
    const uint32_t size = b.get(which, bar2_size);
    return {b.get(which, bar2) & ~(size - 1), size};
}

} // namespace pci_device

namespace pci_core {

bool is_up(board &b, const one &which) {
    const auto devices = b.all_at<pci_device::family>(which.instance);
    const bool has_device = std::any_of(devices.begin(), devices.end(), [&](const pci_device::one &chip) {
        return b.get(chip, pci_device::core) == which.id && pci_device::is_there(b, chip);
    });
    return has_device && b.get(which, link) != 0;
}

uint32_t speed_now(board &b, const one &which) {
    return is_up(b, which) ? b.get(which, speed) : 0;
}

uint32_t status(board &b, const one &which) {
    refuse_if(b.get(which, mute) != 0, error::not_ready);
    return (is_up(b, which) ? 1U : 0U) | speed_now(b, which) << 4;
}

} // namespace pci_core

device_list devices_of_pci() {
    static constexpr const device_family *families[]{&pci_device::family, &pci_core::family};
    static constexpr const register_space *spaces[]{&config<0>::space, &config<1>::space, &config<2>::space,
                                                    &config<3>::space};
    return {families, spaces};
}

} // namespace kestro_sim
