// board_test: the buses between the boards of the chassis: error counters of the serial management bus per slot, and
// the SMI buses with their main and backup source.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_smb.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

namespace {

void print_bus_check(uint32_t ret, uint32_t result, const char *dfx) {
    if (ret == 0) {
        printf("result:%d\r\n", static_cast<int>(result));
    } else {
        printf("failed, result:%d dfx:%s ret:0x%x\r\n", static_cast<int>(result), dfx, ret);
    }
}

} // namespace

int board_get_tx_err_count(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_tx_err_count", "inst_id slot_id");
    }
    const uint32_t slot_id = word_to_u32(words[0]);
    uint32_t errors = 0;
    const uint32_t ret = drv_smb_get_tx_err_count(inst_id, slot_id, &errors);
    if (ret == 0) {
        printf("success, status:0x%08x \r\n", errors);
    } else {
        printf("failed, status:0x%08x ret:0x%x\r\n", errors, ret);
    }
    print_result("%x %x", ret, errors);
    return static_cast<int>(ret);
}

int board_get_rx_err_count(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_get_rx_err_count", "inst_id slot_id");
    }
    const uint32_t slot_id = word_to_u32(words[0]);
    uint32_t errors = 0;
    const uint32_t ret = drv_smb_get_rx_err_count(inst_id, slot_id, &errors);
    if (ret == 0) {
        printf("success, status:0x%08x \r\n", errors);
    } else {
        printf("failed, status:0x%08x ret:0x%x\r\n", errors, ret);
    }
    print_result("%x %x", ret, errors);
    return static_cast<int>(ret);
}

int board_check_smi_crc(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_check_smi_crc", "inst_id bus_id");
    }
    const uint32_t bus_id = word_to_u32(words[0]);
    uint32_t result = 0;
    // One byte more than the driver may fill: findings that take all of it are still a text.
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_smi_crc(inst_id, bus_id, &result, dfx, dfx_size);
    print_bus_check(ret, result, dfx);
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_check_smi_los(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_check_smi_los", "inst_id bus_id");
    }
    const uint32_t bus_id = word_to_u32(words[0]);
    uint32_t result = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_smi_los(inst_id, bus_id, &result, dfx, dfx_size);
    print_bus_check(ret, result, dfx);
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_check_smi(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_check_smi", "inst_id bus_id");
    }
    const uint32_t bus_id = word_to_u32(words[0]);
    uint32_t result = 0;
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_board_check_smi(inst_id, bus_id, &result, dfx, dfx_size);
    print_bus_check(ret, result, dfx);
    print_result("%x %x", ret, result);
    return static_cast<int>(ret);
}

int board_set_backup_smi_en(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_set_backup_smi_en", "inst_id en_flag");
    }
    const uint32_t en_flag = word_to_u32(words[0]);
    const uint32_t ret = drv_board_set_backup_smi_en(inst_id, en_flag);
    if (ret == 0) {
        puts("set backup smi success");
    } else {
        printf("set backup smi failed, ret:0x%x\r\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_set_smi_source(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("board_set_smi_source", "inst_id source");
    }
    const uint32_t source = word_to_u32(words[0]);
    const uint32_t ret = drv_board_set_smi_source(inst_id, source);
    if (ret == 0) {
        puts("set smi source success");
    } else {
        printf("set smi source failed, ret:0x%x\r\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

int board_get_smi_source(int count, char **args) {
    const uint32_t inst_id = inst_or_self(count, args);
    uint32_t source = 0;
    const uint32_t ret = drv_board_get_smi_source(inst_id, &source);
    if (ret == 0) {
        printf("get smi sourece success, source:%u\r\n", source);
    } else {
        printf("get smi sourece failed, ret:0x%x\r\n", ret);
    }
    print_result("%x ", ret);
    return static_cast<int>(ret);
}

} // namespace board_commands
