// barcode_test: bar codes, the texts on a board's stickers as the board stores them, 128 bytes each. Reads and writes
// may ask for other lengths, to see what the driver makes of them.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/identity/drv_barcode.h"
#include "modules/modules.h"
#include "selftest/identity/barcode_storage.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

// More than any bar code: a driver that is asked for too much can be seen to refuse or to cut.
constexpr uint32_t read_capacity = 1024;

// Missing words are no failure here: scripts go on behind them.
int refuse_missing_words(const char *message) {
    puts(message);
    return 0;
}

void print_bytes(const uint8_t *bytes, uint32_t len) {
    for (uint32_t i = 0; i < len; ++i) {
        if (i % 16 == 0) {
            printf("\r\n");
        }
        printf("[%u]=%#x ", i, static_cast<unsigned>(bytes[i]));
    }
}

int barcode_read(int count, char **args) {
    if (count < 3) {
        return refuse_missing_words("barcode test too few args.paramter: inst_id barcode_id len");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t barcode_id = word_to_u32(args[1]);
    const uint32_t wanted = word_to_u32(args[2]);
    const uint32_t len = wanted < read_capacity ? wanted : read_capacity;
    // A terminator stands behind a text that fills the buffer.
    uint8_t buffer[read_capacity + 1] = {};
    const uint32_t ret = drv_barcode_read(inst_id, barcode_id, buffer, len);
    if (ret != 0) {
        printf("drv_barcode_read fail, inst_id=%#x, barcode_id=%#x, len=%#x, ret=%#x.\r\n", inst_id, barcode_id, len,
               ret);
        return -1;
    }
    printf("drv_barcode_read success, inst_id=%#x, barcode_id=%#x, len=%#x.\r\n", inst_id, barcode_id, len);
    printf("\r\nBarCode:[%s]\r\n", reinterpret_cast<const char *>(buffer));
    print_bytes(buffer, len);
    print_result("%x", ret);
    return 0;
}

// Byte i gets the value i. The index is held at 255, the last value of a byte, so beyond 256 bytes the filling never
// ends: longer test patterns do not exist, and a run that asks for one is to be stopped by hand before it reaches the
// store. The volatile bytes make the endless loop one that the compiler may not remove.
void fill_with_index(volatile uint8_t *bytes, uint32_t len) {
    for (uint32_t i = 0; i < len; ++i) {
        if (i > 255) {
            i = 255;
        }
        bytes[i] = static_cast<uint8_t>(i);
    }
}

int barcode_write(int count, char **args) {
    if (count < 3) {
        return refuse_missing_words("barcode test too few args!");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t barcode_id = word_to_u32(args[1]);
    const uint32_t len = word_to_u32(args[2]);
    uint8_t *buffer = reinterpret_cast<uint8_t *>(new_text_area(len));
    if (buffer == nullptr) {
        puts("barcode_write malloc fail.!");
        return 0;
    }
    fill_with_index(buffer, len);
    const uint32_t ret = drv_barcode_write(inst_id, barcode_id, buffer, len);
    if (ret != 0) {
        printf("drv_barcode_write fail, inst_id=%#x, barcode_id=%#x, len=%#x, ret=%#x.\r\n", inst_id, barcode_id, len,
               ret);
    } else {
        printf("drv_barcode_write success, inst_id=%#x, barcode_id=%#x, len=%#x.\r\n", inst_id, barcode_id, len);
    }
    free(buffer);
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int barcode_read_write_test(int count, char **args) {
    if (count < 2) {
        // The label module's words; scripts look for them here too.
        return refuse_missing_words("elabel test too few args!");
    }
    return barcode_write_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink);
}

// The help texts of these two name a bar code and a length as well; the driver takes the instance alone.
int barcode_init(int count, char **args) {
    if (count < 1) {
        return refuse_missing_words("barcode test too few args!");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_barcode_init(inst_id);
    if (ret != 0) {
        printf("drv_barcode_init fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
    } else {
        printf("drv_barcode_init success, inst_id=0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int barcode_deinit(int count, char **args) {
    if (count < 1) {
        return refuse_missing_words("barcode test too few args!");
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_barcode_deinit(inst_id);
    if (ret != 0) {
        printf("drv_barcode_deinit fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
    } else {
        printf("drv_barcode_deinit success, inst_id=0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"barcode_read", barcode_read, "barcode_read                inst_id barcode_id len"},
    command_row{"barcode_write", barcode_write, "barcode_write               inst_id barcode_id len"},
    command_row{"barcode_read_write_test", barcode_read_write_test, "barcode_read_write_test     inst_id barcode_id"},
    command_row{"barcode_init", barcode_init, "barcode_init                inst_id barcode_id len"},
    command_row{"barcode_deinit", barcode_deinit, "barcode_deinit              inst_id barcode_id len"},
};

static_assert(rows_are_sound(rows));

} // namespace

int barcode_test(int count, char **args) {
    return run_module(rows, count, args);
}
