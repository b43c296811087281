// optical_test: registers of a module's memory map, by the device and the page that the fifth and sixth word select.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"

namespace optical_commands {

namespace {

constexpr uint32_t registers_max = 64;

// A module stores a byte within 40 ms.
constexpr uint32_t write_settle_us = 40000;

} // namespace

int read_optical_register(int count, char **args) {
    const auto read = find<decltype(drv_opt_register_read)>("drv_opt_register_read");
    if (read == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    const uint32_t length = std::min(port.words.eighth, registers_max);
    // No registers are none to show, and not an area that cannot be had.
    auto *data = static_cast<uint32_t *>(calloc(std::max(length, 1U), sizeof(uint32_t)));
    if (data == nullptr) {
        return 1;
    }
    const uint32_t ret =
        read(port.words.inst_id, &port.selector, port.words.fifth, port.words.sixth, port.words.seventh, data, length);
    printf("len = %d, ret = %d\n", static_cast<int>(length), static_cast<int>(ret));
    puts("data:");
    for (uint32_t i = 0; i < length; ++i) {
        printf(" 0x%x ", data[i]);
    }
    puts("");
    free(data);
    return static_cast<int>(ret);
}

int write_optical_register(int count, char **args) {
    const auto write = find<decltype(drv_opt_register_write)>("drv_opt_register_write");
    if (write == nullptr) {
        return -1;
    }
    // Without the read the library is closed, and the delay reports that on a line of its own.
    const auto read = find<decltype(drv_opt_register_read)>("drv_opt_register_read");
    const auto delay = find<decltype(drv_cbb_optical_delay_nointerupt)>("drv_cbb_optical_delay_nointerupt");
    if (read == nullptr || delay == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    const optical_words &words = port.words;
    const uint32_t written = words.eighth;
    uint32_t ret = write(words.inst_id, &port.selector, words.fifth, words.sixth, words.seventh, &written, 1);
    delay(write_settle_us);
    uint32_t found = 0;
    ret |= read(words.inst_id, &port.selector, words.fifth, words.sixth, words.seventh, &found, 1);
    printf("wirte data = 0x%x read data = 0x%x, ret =%d\n", written, found, static_cast<int>(ret));
    return static_cast<int>(ret);
}

} // namespace optical_commands
