// board_test: what wears or disturbs a board: low voltage, corrosion, memory events and the buses to the memory
// modules.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int board_get_check_low_voltage(int, char **) {
    uint32_t status = 0;
    char dfx[dfx_size] = {};
    const uint32_t ret = drv_board_check_low_voltage(DRV_INST_SELF, &status, dfx, dfx_size - 1);
    if (ret == 0) {
        printf("success, status:%d dfx:%s\r\n", static_cast<int>(status), dfx);
    } else {
        printf("failed, status:%d dfx:%s ret:0x%x\r\n", static_cast<int>(status), dfx, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_check_corrosion_status(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t status = 0;
    // One byte more than the driver may fill: findings that take all of it are still a text.
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_corrosion_status(inst_id, &status, dfx, dfx_size);
    if (ret == 0) {
        printf("success, corrosion status:%d dfx:%s\r\n", static_cast<int>(status), dfx);
    } else {
        printf("failed, corrosion status:%d dfx:%s ret:0x%x\r\n", static_cast<int>(status), dfx, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int board_get_ddr_event(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_ddr_event", "inst_id cpu_chip_no");
    }
    const uint32_t cpu_chip_no = word_to_u32(words[0]);
    uint32_t state = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_get_ddr_event(inst_id, cpu_chip_no, &state, dfx, dfx_size);
    if (ret == 0) {
        printf("success, state:%d\n", static_cast<int>(state));
    } else {
        printf("failed, state:%d dfx:%s ret:0x%x\r\n", static_cast<int>(state), dfx, ret);
    }
    print_result("%x %x", ret, state);
    return static_cast<int>(ret);
}

int board_check_dimm_bus_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_check_dimm_bus_status", "inst_id dimm_no");
    }
    const uint32_t dimm_no = word_to_u32(words[0]);
    uint32_t status = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_dimm_bus_status(inst_id, dimm_no, &status, dfx, dfx_size);
    if (ret == 0) {
        printf("status:%d\r\n", static_cast<int>(status));
    } else {
        printf("failed, status:%d dfx:%s ret:0x%x\r\n", static_cast<int>(status), dfx, ret);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
