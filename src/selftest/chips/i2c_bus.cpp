// I2C. Each chip is read from its first register on, over and over, and gets back what it held: chips whose first
// registers change by themselves, as sensors and clocks, are left out of the description.
#include "selftest/chips/i2c_bus.h"

#include "drv_basic/chips/drv_i2c.h"
#include "selftest/entry_walk.h"

namespace {

constexpr const char *module = "i2c";
constexpr const char *node = "i2c_dev";
constexpr uint32_t address = 0;
constexpr uint32_t first_read = 10; // bytes
constexpr uint32_t repetitions = 10;

bool is_read_the_same(uint32_t inst_id, uint32_t chip, uint32_t expected, report_sink sink) {
    for (uint32_t i = 0; i < repetitions; ++i) {
        uint32_t value = 0;
        const uint32_t ret = drv_i2c_read_u32(inst_id, chip, address, &value);
        if (ret != 0 || value != expected) {
            report_append(sink,
                          "Error: i2c chip 0x%x i2c repeated read u32 fail 0x%x. times %u address 0x%x read value "
                          "0x%x expect value 0x%x\r\n",
                          chip, ret, i, address, value, expected);
            return false;
        }
    }
    return true;
}

// Some chips take no write at their first registers: that is told, and what counts is that nothing changed.
int write_back(uint32_t inst_id, uint32_t chip, uint32_t held, report_sink sink) {
    uint32_t ret = drv_i2c_write_u32(inst_id, chip, address, held);
    if (ret != 0) {
        report_append(sink, "Info   : i2c chip 0x%x i2c write u32 fail 0x%x. address 0x%x value 0x%x \r\n", chip, ret,
                      address, held);
    }
    uint32_t value = 0;
    ret = drv_i2c_read_u32(inst_id, chip, address, &value);
    if (ret != 0 || value != held) {
        report_append(sink, "Error: i2c chip 0x%x i2c read u32 after write fail 0x%x. address 0x%x value 0x%x\r\n",
                      chip, ret, address, value);
        return -1;
    }
    report_append(sink, "Success: i2c chip 0x%x i2c read write pass. address 0x%x set_value 0x%x get_value 0x%x\r\n",
                  chip, address, held, value);
    return 0;
}

// A chip that does not answer at all may not be fitted, and passes.
int check_chip(uint32_t inst_id, uint32_t chip, report_sink sink) {
    uint8_t bytes[first_read] = {};
    uint32_t ret = drv_i2c_read(inst_id, chip, address, bytes, first_read);
    if (ret != 0) {
        report_append(sink, "Info   : i2c chip 0x%x i2c read fail 0x%x.\r\n", chip, ret);
        return 0;
    }
    uint32_t held = 0;
    ret = drv_i2c_read_u32(inst_id, chip, address, &held);
    if (ret != 0) {
        report_append(sink, "Error: i2c chip 0x%x i2c read u32 fail 0x%x. address 0x%x value 0x%x \r\n", chip, ret,
                      address, held);
        return -1;
    }
    return is_read_the_same(inst_id, chip, held, sink) ? write_back(inst_id, chip, held, sink) : -1;
}

} // namespace

int i2c_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, module, node);
    if (!has_entries(walk)) {
        report_append(sink, "Error: i2c xml get %s entry num fail.\r\n", node);
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip = 0;
        const uint32_t ret = read_element(walk, "chip_id", &chip);
        if (ret != 0) {
            report_append(sink, "Error: i2c xml get %s fail. 0x%x  \r\n", "chip_id", ret);
            result = -1;
            continue;
        }
        result |= check_chip(inst_id, chip, sink);
    }
    return result;
}
