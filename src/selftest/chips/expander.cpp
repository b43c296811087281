// The input/output expanders. What hangs on their pins must not move, so registers are written with what they hold.
#include "selftest/chips/expander.h"

#include "drv_basic/chips/drv_chip9555.h"
#include "selftest/entry_walk.h"

namespace {

// The polarity of the lower pins: the one register whose write no output pin feels.
constexpr uint32_t tested_register = 4;
constexpr uint32_t input_register = 0;
constexpr uint32_t polarity_pin = 1;
constexpr uint32_t direction_pin = 2;
constexpr uint32_t dump_size = 256;

constexpr uint32_t output = 0;
constexpr uint32_t input = 1;

int check_write_back(uint32_t inst_id, uint32_t chip_id, uint32_t value, report_sink sink) {
    uint32_t ret = drv_chip9555_set_reg(inst_id, chip_id, tested_register, value);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x reg write fail 0x%x. reg_value 0x%x\r\n", chip_id, ret, value);
        return -1;
    }
    uint32_t read_back = 0;
    ret = drv_chip9555_get_reg(inst_id, chip_id, tested_register, &read_back);
    if (ret != 0 || read_back != value) {
        report_append(sink, "Error  : pca chip 0x%x read write reg fail 0x%x. read_value 0x%x expect_value 0x%x\r\n",
                      chip_id, ret, read_back, value);
        return -1;
    }
    report_append(sink, "Success: pca chip 0x%x read and write reg pass. value: 0x%x\r\n", chip_id, value);
    return 0;
}

int check_dump(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    char text[dump_size + 1] = {};
    const uint32_t ret = drv_chip9555_dump(inst_id, chip_id, text, dump_size);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x reg dump fail 0x%x.\r\n", chip_id, ret);
        return -1;
    }
    report_append(sink, "Success: pca chip 0x%x reg dump pass. msg: %s\r\n", chip_id, text);
    return 0;
}

// That the polarity did not hold is an "Info" line and a failure all the same.
int check_polarity(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    uint32_t polarity = 0;
    uint32_t ret = drv_chip9555_get_polar(inst_id, chip_id, polarity_pin, &polarity);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x get polar fail 0x%x.\r\n", chip_id, ret);
        return -1;
    }
    ret = drv_chip9555_set_polar(inst_id, chip_id, polarity_pin, polarity);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x set polar fail 0x%x. polarity 0x%x\r\n", chip_id, ret, polarity);
        return -1;
    }
    uint32_t read_back = 0;
    ret = drv_chip9555_get_polar(inst_id, chip_id, polarity_pin, &read_back);
    if (ret != 0 || read_back != polarity) {
        report_append(sink, "Info  : pca chip 0x%x read write polar fail 0x%x. read_value 0x%x expect_value 0x%x\r\n",
                      chip_id, ret, read_back, polarity);
        return -1;
    }
    report_append(sink, "Success: pca chip 0x%x set and get polar pass. value: 0x%x %s\r\n", chip_id, polarity,
                  polarity == 1 ? "inverse" : "not inverse");
    return 0;
}

// Only a pin that is an input already is made one.
int check_input(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    uint32_t ret = drv_chip9555_set_indirection(inst_id, chip_id, direction_pin, input);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x set input direction fail 0x%x.\r\n", chip_id, ret);
        return -1;
    }
    uint32_t level = 0;
    ret = drv_chip9555_get_level(inst_id, chip_id, direction_pin, &level);
    if (ret != 0) {
        report_append(sink, "Error  : pca chip 0x%x get level fail 0x%x.\r\n", chip_id, ret);
        return -1;
    }
    report_append(sink, "Success: pca chip 0x%x get input level pass. value: 0x%x %s\r\n", chip_id, level,
                  level == 1 ? "hign" : "low");
    return 0;
}

int check_direction(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    uint32_t direction = output;
    const uint32_t ret = drv_chip9555_get_orientation(inst_id, chip_id, direction_pin, &direction);
    if (ret != 0 || (direction != output && direction != input)) {
        report_append(sink, "Error  : pca chip 0x%x get direction fail 0x%x. direction %u \r\n", chip_id, ret,
                      direction);
        return -1;
    }
    report_append(sink, "Success: pca chip 0x%x get direction pass. value: 0x%x %s\r\n", chip_id, direction,
                  direction == input ? "input" : "output");
    return direction == input ? check_input(inst_id, chip_id, sink) : 0;
}

// A place for a chip may be empty: one that does not answer is told and passes.
int check_chip(uint32_t inst_id, uint32_t chip_id, report_sink sink) {
    uint32_t value = 0;
    const uint32_t ret = drv_chip9555_get_reg(inst_id, chip_id, tested_register, &value);
    if (ret != 0) {
        report_append(sink, "Info   : pca chip 0x%x read reg fail 0x%x.\r\n", chip_id, ret);
        return 0;
    }
    int result = check_write_back(inst_id, chip_id, value, sink);
    result |= check_dump(inst_id, chip_id, sink);
    uint32_t pins = 0;
    if (drv_chip9555_get_reg(inst_id, chip_id, input_register, &pins) == 0) {
        result |= check_polarity(inst_id, chip_id, sink);
    }
    return result | check_direction(inst_id, chip_id, sink);
}

} // namespace

int chip9555_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "chip9555", "chip9555_chip");
    if (!has_entries(walk)) {
        report_append(sink, "No pca9555.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip_id = 0;
        if (read_element(walk, "chip_id", &chip_id) == 0) {
            result |= check_chip(inst_id, chip_id, sink);
        }
    }
    return result;
}
