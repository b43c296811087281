// board_test, solder joints at the four corners of a chip, by chip.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_get_four_corner_status(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_four_corner_status", "inst_id chip_id");
    }
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_four_corner_status(inst_id, word_to_u32(words[0]), &status);
    if (ret == 0) {
        print_hex_dec("type", status);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_check_four_corner_status(int count, char **args) {
    uint32_t inst_id = 0;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_check_four_corner_status", "inst_id chip_id");
    }
    uint32_t status = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t chip_id = word_to_u32(words[0]);
    const uint32_t ret = drv_board_check_four_corner_status(inst_id, chip_id, &status, dfx, dfx_size);
    if (ret == 0) {
        printf("four_corner_status hex:0x%04x dec:%04d\r\n", status, static_cast<int>(status));
        printf("four_corner_status dfx_info:%s\r\n", dfx);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
