// board_test, who the board is: start and end of board management, hardware type, the versions of its circuit board and
// parts list, and the rated power.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

void print_identity(const char *name, uint32_t value, uint32_t ret) {
    if (ret == 0) {
        printf("success, %s:0x%08x\r\n", name, value);
    } else {
        printf("failed, %s:0x%08x ret:0x%x\r\n", name, value, ret);
    }
}

} // namespace

int board_init(int count, char **args) {
    const uint32_t ret = drv_board_init(inst_or_self(count, args));
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_deinit(int count, char **args) {
    const uint32_t ret = drv_board_deinit(inst_or_self(count, args));
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_type(int count, char **args) {
    uint32_t type = 0;
    const uint32_t ret = drv_board_get_type(inst_or_self(count, args), &type);
    print_identity("type", type, ret);
    print_result("%x %x", ret, type);
    return static_cast<int>(ret);
}

int board_set_type(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_set_type", "inst_id type");
    }
    const uint32_t ret = drv_board_set_type(inst_id, word_to_u32(words[0]));
    print_result("%x", ret);
    return static_cast<int>(ret);
}

int board_get_pcb_ver(int count, char **args) {
    uint32_t ver = 0;
    const uint32_t ret = drv_board_get_pcb_ver(inst_or_self(count, args), &ver);
    print_identity("pcb_ver", ver, ret);
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

// The version that users are shown has four digits, unlike the other versions of the circuit board.
int board_get_usr_pcb_ver(int, char **) {
    uint32_t ver = 0;
    const uint32_t ret = drv_board_get_usr_pcb_ver(DRV_INST_SELF, &ver);
    if (ret == 0) {
        printf("success, ver:0x%04x\r\n", ver);
    } else {
        printf("failed, ver:0x%04x ret:0x%x\r\n", ver, ret);
    }
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int board_get_soft_pcb_ver(int count, char **args) {
    uint32_t ver = 0;
    const uint32_t ret = drv_board_get_soft_pcb_ver(inst_or_self(count, args), &ver);
    print_identity("soft pcb_ver", ver, ret);
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int board_get_bom_ver(int count, char **args) {
    uint32_t ver = 0;
    const uint32_t ret = drv_board_get_bom_ver(inst_or_self(count, args), &ver);
    // A blank stands before the end of the success line, and of that line only.
    if (ret == 0) {
        printf("success, bom_ver:0x%08x \r\n", ver);
    } else {
        printf("failed, bom_ver:0x%08x ret:0x%x\r\n", ver, ret);
    }
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int board_get_power(int count, char **args) {
    uint32_t power = 0;
    const uint32_t ret = drv_board_get_power(inst_or_self(count, args), &power);
    if (ret == 0) {
        print_hex_dec("power", power);
    }
    print_result("%x %x", ret, power);
    return static_cast<int>(ret);
}

} // namespace board_commands
