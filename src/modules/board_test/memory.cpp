// board_test, sizes of the board's memories: boot ROM, flashes, NVRAM and main memory.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

// Sizes come in MiB; the GiB beside it are whole ones.
void print_size(const char *name, uint32_t size) {
    printf("%s %dM-%dG\r\n", name, static_cast<int>(size), static_cast<int>(size >> 10));
}

} // namespace

int board_get_bootrom_size(int count, char **args) {
    uint32_t size = 0;
    const uint32_t ret = drv_board_get_bootrom_size(inst_or_self(count, args), &size);
    if (ret == 0) {
        print_size("bootrom_size", size);
    }
    print_result("%x %x", ret, size);
    return static_cast<int>(ret);
}

int board_get_flash_size(int count, char **args) {
    uint32_t size = 0;
    const uint32_t ret = drv_board_get_flash_size(inst_or_self(count, args), &size);
    if (ret == 0) {
        print_size("norflash_size", size);
    }
    print_result("%x %x", ret, size);
    return static_cast<int>(ret);
}

int board_get_nandflash_size(int count, char **args) {
    uint32_t size = 0;
    const uint32_t ret = drv_board_get_nandflash_size(inst_or_self(count, args), &size);
    if (ret == 0) {
        print_size("nandflash_size", size);
    }
    print_result("%x %x", ret, size);
    return static_cast<int>(ret);
}

int board_get_nvram_size(int count, char **args) {
    uint32_t size = 0;
    const uint32_t ret = drv_board_get_nvram_size(inst_or_self(count, args), &size);
    if (ret == 0) {
        print_size("nvram_size", size);
    }
    print_result("%x %x", ret, size);
    return static_cast<int>(ret);
}

int board_get_sdram_size(int count, char **args) {
    uint32_t size = 0;
    const uint32_t ret = drv_board_get_sdram_size(inst_or_self(count, args), &size);
    if (ret == 0) {
        print_size("sdram_size", size);
    }
    print_result("%x %x", ret, size);
    return static_cast<int>(ret);
}

} // namespace board_commands
