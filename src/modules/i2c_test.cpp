// i2c_test: chips on the board's I2C buses, as bytes from one of their registers on. No banners and no result print.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/chips/drv_i2c.h"
#include "modules/modules.h"
#include "selftest/test_value.h"
#include "shell/byte_list.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr uint32_t longest_transfer = 256;

constexpr byte_list_words list_words = {"Input str", "str", ", value"};

// Zeroed; null when memory is out. The caller frees it.
uint8_t *new_bytes(uint32_t length) {
    return reinterpret_cast<uint8_t *>(new_text_area(length));
}

void print_bytes(const char *row, uint32_t address, const uint8_t *bytes, uint32_t length) {
    for (uint32_t i = 0; i < length; ++i) {
        printf("%s address:[0x%x], value:[0x%x].\r\n", row, address + i, bytes[i]);
    }
}

int i2c_read(int count, char **args) {
    if (count < 4) {
        printf("i2c_read parameter number %u is invalid.\r\n", static_cast<unsigned>(count));
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint32_t address = word_to_u32(args[2]);
    const uint32_t asked = word_to_u32(args[3]);
    if (asked > longest_transfer) {
        printf("i2c_read length %u is out of limit[1-256].\r\n", asked);
        return -1;
    }
    const uint32_t length = asked == 0 ? 1 : asked;
    uint8_t *buffer = new_bytes(length);
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = drv_i2c_read(inst_id, chip_id, address, buffer, length);
    if (ret == 0) {
        print_bytes("i2c_read", address, buffer, length);
    } else {
        printf("i2c_read fail, errorCode:%#x.\r\n", ret);
    }
    free(buffer);
    return static_cast<int>(ret);
}

// The length stands behind the bytes, where it may be left out: one byte then.
int i2c_write(int count, char **args) {
    if (count < 4) {
        printf("i2c_write parameter number %u is invalid.\r\n", static_cast<unsigned>(count));
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint32_t address = word_to_u32(args[2]);
    const uint32_t asked = count > 4 ? word_to_u32(args[4]) : 0;
    if (asked > longest_transfer) {
        printf("i2c_write length %u is out of limit[1-256].\r\n", asked);
        return -1;
    }
    const uint32_t length = asked == 0 ? 1 : asked;
    uint8_t *buffer = new_bytes(length);
    if (buffer == nullptr) {
        return -1;
    }
    parse_byte_list(args[3], length, buffer, list_words);
    const uint32_t ret = drv_i2c_write(inst_id, chip_id, address, buffer, length);
    if (ret == 0) {
        print_bytes("i2c_write", address, buffer, length);
    } else {
        printf("i2c_write fail, errorCode:%#x.\r\n", ret);
    }
    free(buffer);
    return static_cast<int>(ret);
}

// Bytes of a chip that a pattern is written over and that are written back, round after round.
struct pattern_test {
    uint32_t inst_id;
    uint32_t chip_id;
    uint32_t reg;
    uint32_t value; // what the pattern is made of
    uint32_t length;
    uint32_t times;
    uint8_t *pattern;
    uint8_t *saved;
    uint8_t *read_back;
    uint32_t last_read; // the driver's code
};

// The first byte is the lowest; those beyond 32 bits do not count.
uint32_t number_of(const uint8_t *bytes, uint32_t length) {
    uint32_t number = 0;
    for (uint32_t i = 0; i < length && i < 4; ++i) {
        number |= uint32_t{bytes[i]} << 8 * i;
    }
    return number;
}

// The value, lowest byte first, then zeros; it begins anew every 32 bytes.
void fill_pattern(pattern_test *test) {
    for (uint32_t i = 0; i < test->length; ++i) {
        const uint32_t shift = i % 32 * 8;
        test->pattern[i] = shift < 32 ? static_cast<uint8_t>(test->value >> shift) : uint8_t{0};
    }
}

bool get_areas(pattern_test *test) {
    test->pattern = new_bytes(test->length);
    if (test->pattern == nullptr) {
        printf("Test fail, malloc tx buf1 fail!");
        return false;
    }
    test->saved = new_bytes(test->length);
    if (test->saved == nullptr) {
        printf("Test fail, malloc tx buf2 fail!");
        return false;
    }
    test->read_back = new_bytes(test->length);
    if (test->read_back == nullptr) {
        printf("Test fail, malloc rx buf fail!");
        return false;
    }
    return true;
}

void free_areas(const pattern_test *test) {
    free(test->pattern);
    free(test->saved);
    free(test->read_back);
}

bool read_chip(pattern_test *test, uint8_t *bytes, uint32_t round) {
    test->last_read = drv_i2c_read(test->inst_id, test->chip_id, test->reg, bytes, test->length);
    if (test->last_read != 0) {
        printf("Test fail, errorCode:%#x.times:%d\r\n", test->last_read, static_cast<int>(round));
        return false;
    }
    return true;
}

// A write that failed shows in what is read next, so it is told and no more.
void write_chip(const pattern_test *test, const uint8_t *bytes) {
    const uint32_t ret = drv_i2c_write(test->inst_id, test->chip_id, test->reg, bytes, test->length);
    if (ret != 0) {
        printf("Test fail, errorCode:%#x.\r\n", ret);
    }
}

bool takes_pattern(pattern_test *test, uint32_t round) {
    write_chip(test, test->pattern);
    if (!read_chip(test, test->read_back, round)) {
        return false;
    }
    const uint32_t found = number_of(test->read_back, test->length);
    if (found != test->value) {
        printf("Test fail, write:0x%x, read:0x%x times:0x%x", test->value, found, round);
        flush_partial_line();
        return false;
    }
    return true;
}

bool has_saved_bytes(pattern_test *test, uint32_t round) {
    if (!read_chip(test, test->read_back, round)) {
        return false;
    }
    const uint32_t saved = number_of(test->saved, test->length);
    const uint32_t found = number_of(test->read_back, test->length);
    if (found != saved) {
        printf("Test fail, write:0x%x, read:0x%x, times:%d", saved, found, static_cast<int>(round));
        flush_partial_line();
        return false;
    }
    return true;
}

// A chip that does not keep the pattern is left as it is, for whoever looks for the cause.
void repeat(pattern_test *test) {
    for (uint32_t round = 0; round < test->times; ++round) {
        begin_test_value();
        const bool is_taken = takes_pattern(test, round);
        if (is_taken) {
            write_chip(test, test->saved);
        }
        end_test_value();
        if (!is_taken || !has_saved_bytes(test, round)) {
            return;
        }
    }
}

// What scripts look for is the line at the end, which tells that the test came through its rounds, not how: it says
// "pass" behind a mismatch, too.
int i2c_rw_test(int count, char **args) {
    pattern_test test = {};
    char **inputs = after_optional_inst(count, args, 5, &test.inst_id);
    if (inputs == nullptr) {
        printf("Test fail, i2c_write parameter number %u is invalid.\r\n", static_cast<unsigned>(count));
        return -1;
    }
    test.chip_id = word_to_u32(inputs[0]);
    test.reg = word_to_u32(inputs[1]);
    test.value = word_to_u32(inputs[2]);
    test.length = word_to_u32(inputs[3]);
    test.times = word_to_u32(inputs[4]);
    if (!get_areas(&test) || !read_chip(&test, test.saved, 0)) {
        free_areas(&test);
        return -1;
    }
    fill_pattern(&test);
    repeat(&test);
    free_areas(&test);
    printf("Test pass, i2c rw test\r\n");
    return static_cast<int>(test.last_read);
}

constexpr std::array rows = {
    command_row{"i2c_read", i2c_read, "i2c_read inst_id chip_id address length<1-256>"},
    command_row{"i2c_write", i2c_write, "i2c_write inst_id chip_id address buffer length<1-256>"},
    command_row{"i2c_rw_test", i2c_rw_test, "i2c_rw_test inst_id chip_id reg_add testvalue1 testvalue2 len times "},
};

static_assert(rows_are_sound(rows));

} // namespace

int i2c_test(int count, char **args) {
    return run_module(rows, count, args, timing_off);
}
