// lbc_test: chips on the processor's local bus, as bytes from one of their registers on. No banners and no result
// print. The bus is opened for each sub-command and closed whatever became of the transfer.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/chips/drv_localbus.h"
#include "modules/modules.h"
#include "shell/byte_list.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr uint32_t longest_transfer = 256;

constexpr byte_list_words list_words = {"Input string", "string", ""};

void print_bytes(const char *row, uint32_t address, const uint8_t *bytes, uint32_t length) {
    for (uint32_t i = 0; i < length; ++i) {
        printf("%s address:[0x%x], value:[0x%x].\r\n", row, address + i, bytes[i]);
    }
}

uint32_t read_and_print(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint8_t *buffer, uint32_t length) {
    uint32_t ret = drv_localbus_init(inst_id);
    if (ret != 0) {
        printf("lbc_read local bus init failed, errorCode:%#x.\r\n", ret);
        return UINT32_MAX;
    }
    ret = drv_localbus_read(inst_id, chip_id, address, buffer, length);
    if (ret == 0) {
        print_bytes("lbc_read", address, buffer, length);
    } else {
        printf("lbc_read fail, errorCode:%#x.\r\n", ret);
    }
    drv_localbus_exit(inst_id);
    return ret;
}

int lbc_read(int count, char **args) {
    if (count < 4) {
        printf("lbc_read parameter number %d is invalid.\r\n", count);
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint32_t address = word_to_u32(args[2]);
    const uint32_t asked = word_to_u32(args[3]);
    if (asked > longest_transfer) {
        printf("lbc_read length %u is out of limit[1-256].\r\n", asked);
        return -1;
    }
    const uint32_t length = asked == 0 ? 1 : asked;
    uint8_t *buffer = reinterpret_cast<uint8_t *>(new_text_area(length));
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = read_and_print(inst_id, chip_id, address, buffer, length);
    free(buffer);
    return static_cast<int>(ret);
}

uint32_t write_and_print(uint32_t inst_id, uint32_t chip_id, uint32_t address, const char *list, uint8_t *buffer,
                         uint32_t length) {
    uint32_t ret = drv_localbus_init(inst_id);
    if (ret != 0) {
        printf("lbc_write local bus init failed, errorCode:%#x.\r\n", ret);
        return UINT32_MAX;
    }
    parse_byte_list(list, length, buffer, list_words);
    ret = drv_localbus_write(inst_id, chip_id, address, buffer, length);
    if (ret == 0) {
        print_bytes("lbc_write", address, buffer, length);
    } else {
        printf("lbc_write fail, errorCode:%#x.\r\n", ret);
    }
    drv_localbus_exit(inst_id);
    return ret;
}

// The length stands behind the bytes, where it may be left out: one byte then.
int lbc_write(int count, char **args) {
    if (count < 4) {
        printf("lbc_write parameter number %u is invalid.\r\n", static_cast<unsigned>(count));
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint32_t address = word_to_u32(args[2]);
    const uint32_t asked = count > 4 ? word_to_u32(args[4]) : 0;
    if (asked > longest_transfer) {
        printf("lbc_write length %u is out of limit[1-256].\r\n", asked);
        return -1;
    }
    const uint32_t length = asked == 0 ? 1 : asked;
    uint8_t *buffer = reinterpret_cast<uint8_t *>(new_text_area(length));
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = write_and_print(inst_id, chip_id, address, args[3], buffer, length);
    free(buffer);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"lbc_read", lbc_read, "lbc_read inst_id chip_id address length<1-256>"},
    command_row{"lbc_write", lbc_write, "lbc_write inst_id chip_id address buffer length<1-256>"},
};

static_assert(rows_are_sound(rows));

} // namespace

int lbc_test(int count, char **args) {
    return run_module(rows, count, args, timing_off);
}
