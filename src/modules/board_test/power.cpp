// board_test, the board's power domains: switched on and off by type, and their state.
#include <cstdint>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_set_power_on(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_set_power_on", "inst_id type");
    }
    const uint32_t ret = drv_board_set_power_on(inst_id, word_to_u32(words[0]));
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_set_power_off(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_set_power_off", "inst_id type");
    }
    const uint32_t ret = drv_board_set_power_off(inst_id, word_to_u32(words[0]));
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_power_status(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_power_status", "inst_id type");
    }
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_power_status(inst_id, word_to_u32(words[0]), &status);
    if (ret == 0) {
        print_hex_dec("power_status", status);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
