// Chips on the I2C buses.
#include "drv_basic/chips/drv_i2c.h"

#include "sim/devices/chips/bus_chips.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <array>

using namespace kestro_sim;

namespace {

constexpr uint32_t word_length = 4;

i2c_chip::one chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    return b.find<i2c_chip::family>(inst_id, chip_id);
}

} // namespace

uint32_t drv_i2c_read(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint8_t *buffer, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto bytes = i2c_chip::read(b, chip(b, inst_id, chip_id), address, length);
        std::copy(bytes.begin(), bytes.end(), buffer);
    });
}

uint32_t drv_i2c_write(uint32_t inst_id, uint32_t chip_id, uint32_t address, const uint8_t *buffer, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(buffer);
        i2c_chip::write(b, chip(b, inst_id, chip_id), address, {buffer, length});
    });
}

uint32_t drv_i2c_read_u32(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto bytes = i2c_chip::read(b, chip(b, inst_id, chip_id), address, word_length);
        uint32_t number = 0;
        for (uint32_t i = 0; i < word_length; ++i) {
            number |= uint32_t{bytes[i]} << 8 * i;
        }
        *value = number;
    });
}

uint32_t drv_i2c_write_u32(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint32_t value) {
    return operate([&](board &b) {
        std::array<uint8_t, word_length> bytes{};
        for (uint32_t i = 0; i < word_length; ++i) {
            bytes[i] = static_cast<uint8_t>(value >> 8 * i);
        }
        i2c_chip::write(b, chip(b, inst_id, chip_id), address, bytes);
    });
}
