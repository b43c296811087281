// The way from a chip's number on a bus to the registers of a device, or to the bytes of the identity EEPROM.
#include "sim/devices/chips/bus_chips.h"

#include "sim/core/catalogue.h"
#include "sim/core/eeprom.h"
#include "sim/devices/chips/fpga.h"

#include <algorithm>

namespace kestro_sim {

namespace {

constexpr const char *eeprom_face = "eeprom";

void check_transfer(size_t size, uint32_t address, size_t length) {
    refuse_if(length == 0 || length > longest_transfer || address >= size, error::out_of_range);
}

// A transfer that would meet a register that is not there is refused before it has read or written any.
void check_registers(const register_space &space, uint32_t address, size_t number) {
    for (uint32_t i = 0; i < number && space.unknown == undeclared::refused; ++i) {
        refuse_if(find_register(space, (address + i) % space.size) == nullptr, error::out_of_range);
    }
}

std::vector<uint8_t> read_registers(board &b, const register_space &space, const device &chip, uint32_t address,
                                    uint32_t length) {
    check_transfer(space.size, address, length);
    const uint32_t step = space.width / 8;
    check_registers(space, address, (length + step - 1) / step);
    std::vector<uint8_t> bytes;
    for (uint32_t at = address; bytes.size() < length; at = (at + 1) % space.size) {
        const uint32_t value = read_space(b, space, chip, at);
        for (uint32_t shift = space.width; shift != 0; shift -= 8) {
            bytes.push_back(static_cast<uint8_t>(value >> (shift - 8)));
        }
    }
    bytes.resize(length);
    return bytes;
}

void write_registers(board &b, const register_space &space, const device &chip, uint32_t address,
                     std::span<const uint8_t> bytes) {
    check_transfer(space.size, address, bytes.size());
    const size_t step = space.width / 8;
    refuse_if(bytes.size() % step != 0, error::bad_value);
    check_registers(space, address, bytes.size() / step);
    uint32_t at = address;
    for (size_t i = 0; i < bytes.size(); i += step) {
        uint32_t value = 0;
        for (const uint8_t byte : bytes.subspan(i, step)) {
            value = value << 8 | byte;
        }
        write_space(b, space, chip, at, value);
        at = (at + 1) % space.size;
    }
}

std::vector<uint8_t> read_eeprom(board &b, const std::string &image, uint32_t address, uint32_t length) {
    const size_t size = b.image_size(image);
    check_transfer(size, address, length);
    const size_t to_end = std::min<size_t>(length, size - address);
    std::vector<uint8_t> bytes = b.read_image(image, address, to_end);
    const std::vector<uint8_t> from_start = b.read_image(image, 0, length - to_end);
    bytes.insert(bytes.end(), from_start.begin(), from_start.end());
    return bytes;
}

void write_eeprom(board &b, const std::string &image, uint32_t address, std::span<const uint8_t> bytes) {
    const size_t size = b.image_size(image);
    check_transfer(size, address, bytes.size());
    const size_t to_end = std::min<size_t>(bytes.size(), size - address);
    change writes;
    writes.write(image, address, bytes.first(to_end));
    if (to_end < bytes.size()) {
        writes.write(image, 0, bytes.subspan(to_end));
    }
    b.commit(writes);
}

// A space whose chips differ is told by the chip as well as by its name.
const register_space *space_with_face(std::string_view face, uint32_t unit) {
    for (const register_space *space : all_spaces()) {
        if (face == space->name && (!space->only_id || *space->only_id == unit)) {
            return space;
        }
    }
    return nullptr;
}

struct target {
    device chip;
    const register_space *space;
};

// Nothing answers at an address where nothing is fitted.
target behind(board &b, const i2c_chip::one &chip) {
    const uint32_t unit = b.get(chip, i2c_chip::unit);
    const register_space *const space = space_with_face(b.text(chip, i2c_chip::face), unit);
    refuse_if(space == nullptr, error::not_ready);
    const device found{chip.instance, space->family, unit};
    refuse_if(!b.is_described(found), error::not_ready);
    return {found, space};
}

bool is_eeprom(board &b, const i2c_chip::one &chip) {
    return b.text(chip, i2c_chip::face) == eeprom_face;
}

std::string eeprom_behind(board &b, const i2c_chip::one &chip) {
    refuse_if(!eeprom_layout(b.described(), chip.instance), error::not_ready);
    return eeprom_image_name(chip.instance);
}

void disturb(board &b, const i2c_chip::one &chip, std::vector<uint8_t> &bytes) {
    const uint32_t wrong = b.get(chip, i2c_chip::flicker);
    if (wrong == 0) {
        return;
    }
    const bool is_odd = b.get(chip, i2c_chip::odd_read) != 0;
    if (is_odd) {
        for (uint8_t &byte : bytes) {
            byte = static_cast<uint8_t>(byte ^ wrong);
        }
    }
    b.put(chip, i2c_chip::odd_read, is_odd ? 0 : 1);
}

} // namespace

std::vector<uint8_t> i2c_chip::read(board &b, const one &chip, uint32_t address, uint32_t length) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    std::vector<uint8_t> bytes;
    if (is_eeprom(b, chip)) {
        bytes = read_eeprom(b, eeprom_behind(b, chip), address, length);
    } else {
        const target found = behind(b, chip);
        bytes = read_registers(b, *found.space, found.chip, address, length);
    }
    disturb(b, chip, bytes);
    return bytes;
}

void i2c_chip::write(board &b, const one &chip, uint32_t address, std::span<const uint8_t> bytes) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    if (is_eeprom(b, chip)) {
        write_eeprom(b, eeprom_behind(b, chip), address, bytes);
        return;
    }
    const target found = behind(b, chip);
    write_registers(b, *found.space, found.chip, address, bytes);
}

std::vector<uint8_t> localbus_chip::read(board &b, const one &chip, uint32_t address, uint32_t length) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    const auto found = b.find_at<logic_chip::family>(chip.instance, b.get(chip, logic));
    logic_chip::need_logic(b, found);
    return read_registers(b, logic_chip::space_of(found), found, address, length);
}

void localbus_chip::write(board &b, const one &chip, uint32_t address, std::span<const uint8_t> bytes) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    const auto found = b.find_at<logic_chip::family>(chip.instance, b.get(chip, logic));
    logic_chip::need_logic(b, found);
    write_registers(b, logic_chip::space_of(found), found, address, bytes);
}

device_list devices_of_bus_chips() {
    static constexpr const device_family *families[]{&i2c_chip::family, &localbus_chip::family};
    return {families, {}};
}

} // namespace kestro_sim
