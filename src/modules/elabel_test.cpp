// elabel_test: electronic labels, the texts by which manufacturing and stock keeping know a board. A label is an area
// of 1200 bytes that is read and written whole; a board may have several, told apart by the label id.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/identity/drv_elabel.h"
#include "modules/modules.h"
#include "selftest/identity/elabel_storage.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

// No sub-command guesses an instance or a label here, and missing words are no failure: scripts go on behind them.
int refuse_missing_words() {
    puts("elabel test too few args!");
    return 0;
}

int elabel_read(int count, char **args) {
    if (count < 2) {
        return refuse_missing_words();
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t elabel_id = word_to_u32(args[1]);
    elabel_area area = {};
    const uint32_t ret = drv_elabel_read(inst_id, elabel_id, reinterpret_cast<uint8_t *>(area), elabel_size);
    if (ret != 0) {
        printf("drv_elabel_read fail, inst_id=0x%x, elabel_id=0x%x, ret=%#x.\r\n", inst_id, elabel_id, ret);
    } else {
        printf("drv_elabel_read success, inst_id=0x%x, elabel_id=0x%x.\r\n", inst_id, elabel_id);
        printf("\r\n%s\r\n", area);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

// Writes the area and shows it. The length is the label text's own; the driver is always given the whole area, so that
// nothing of a longer label stays behind the text.
uint32_t write_label(uint32_t inst_id, uint32_t elabel_id, const char *area, uint32_t length) {
    const uint32_t ret = drv_elabel_write(inst_id, elabel_id, reinterpret_cast<const uint8_t *>(area), elabel_size);
    if (ret != 0) {
        printf("drv_elabel_write fail, ret = 0x%x, elabel_id = 0x%x, len = 0x%x.\r\n", ret, elabel_id, length);
    } else {
        printf("drv_elabel_write success, inst_id=0x%x, elabel_id = 0x%x, len = 0x%x.\r\n", inst_id, elabel_id, length);
    }
    printf("write info :\r\n%s\r\n\r\n", area);
    return ret;
}

int elabel_write(int count, char **args) {
    if (count < 2) {
        return refuse_missing_words();
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t elabel_id = word_to_u32(args[1]);
    char *area = new_text_area(elabel_size);
    if (area == nullptr) {
        return -1;
    }
    uint32_t length = 0;
    if (get_test_label(area, &length, console_sink) != 0) {
        puts("elabel get write info fail");
        free(area);
        return -1;
    }
    const uint32_t ret = write_label(inst_id, elabel_id, area, length);
    free(area);
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int elabel_read_write_test(int count, char **args) {
    if (count < 2) {
        return refuse_missing_words();
    }
    return elabel_write_test(word_to_u32(args[0]), word_to_u32(args[1]), console_sink);
}

int elabel_init(int count, char **args) {
    if (count < 1) {
        return refuse_missing_words();
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_elabel_init(inst_id);
    if (ret != 0) {
        printf("elabel_init fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
    } else {
        printf("elabel_init success, inst_id=0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int elabel_deinit(int count, char **args) {
    if (count < 1) {
        return refuse_missing_words();
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t ret = drv_elabel_deinit(inst_id);
    if (ret != 0) {
        printf("elabel_deinit fail, inst_id=0x%x, ret=%#x.\r\n", inst_id, ret);
    } else {
        printf("elabel_deinit success, inst_id=0x%x.\r\n", inst_id);
    }
    print_result("%x", ret);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"elabel_read", elabel_read, "elabel_read                inst_id elabel_id"},
    command_row{"elabel_write", elabel_write, "elabel_write               inst_id elabel_id"},
    command_row{"elabel_read_write_test", elabel_read_write_test, "elabel_read_write_test     inst_id elabel_id"},
    command_row{"elabel_init", elabel_init, "elabel_init                inst_id"},
    command_row{"elabel_deinit", elabel_deinit, "elabel_deinit              inst_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int elabel_test(int count, char **args) {
    return run_module(rows, count, args);
}
