// board_test, programmable logic and start-up software: CPLDs, control FPGAs, the boot software and the area it started
// from, and what the board is capable of.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

// The area has one byte more than the driver is told of.
constexpr uint32_t bios_ver_size = 127;

} // namespace

int board_get_cpld_ver(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_cpld_ver", "inst_id cpld_id");
    }
    uint32_t ver = 0;
    const uint32_t ret = drv_board_get_cpld_ver(inst_id, word_to_u32(words[0]), &ver);
    if (ret == 0) {
        print_hex_dec("ver", ver);
    }
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int board_get_cpld_num(int count, char **args) {
    uint32_t num = 0;
    const uint32_t ret = drv_board_get_cpld_num(inst_or_self(count, args), &num);
    if (ret == 0) {
        print_hex_dec("num", num);
    }
    print_result("%x %x", ret, num);
    return static_cast<int>(ret);
}

int board_get_ctrl_fpga_num(int count, char **args) {
    uint32_t num = 0;
    const uint32_t ret = drv_board_get_ctrl_fpga_num(inst_or_self(count, args), &num);
    if (ret == 0) {
        print_hex_dec("num", num);
    }
    print_result("%x %x", ret, num);
    return static_cast<int>(ret);
}

int board_get_bios_ver(int count, char **args) {
    char text[bios_ver_size + 1] = {};
    const uint32_t ret = drv_board_get_bios_ver(inst_or_self(count, args), text, bios_ver_size);
    if (ret == 0) {
        printf("ver:%s\r\n", text);
    }
    print_result("%x %s", ret, text);
    return static_cast<int>(ret);
}

int board_get_area(int count, char **args) {
    uint32_t area = 0;
    const uint32_t ret = drv_board_get_area(inst_or_self(count, args), &area);
    if (ret == 0) {
        print_hex_dec("area", area);
    }
    print_result("%x %x", ret, area);
    return static_cast<int>(ret);
}

int board_check_bios(int count, char **args) {
    if (count < 1) {
        return usage("board_check_bios", "area");
    }
    uint32_t result = 0;
    const uint32_t ret = drv_board_check_bios(word_to_u32(args[0]), &result);
    if (ret == 0) {
        print_hex_dec("check_bios", result);
    }
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_get_capability(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_capability", "inst_id type");
    }
    uint32_t capability = 0;
    const uint32_t ret = drv_board_get_capability(inst_id, word_to_u32(words[0]), &capability);
    if (ret == 0) {
        print_hex_dec("capability", capability);
    }
    print_result("%x %x", ret, capability);
    return static_cast<int>(ret);
}

} // namespace board_commands
