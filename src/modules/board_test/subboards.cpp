// board_test: sub-boards, the boards mounted on this one: identity and presence. Bill-of-material numbers stand in
// bom_id.cpp.
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_subboard.h"
#include "modules/board_test/handlers.h"
#include "modules/board_test/lines.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace board_commands {

int subboard_get_type(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_type", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t type = 0;
    const uint32_t ret = drv_subboard_get_type(inst_id, subboard_id, &type);
    if (ret == 0) {
        print_hex_dec("type", type);
    }
    print_result("%x %x", ret, type);
    return static_cast<int>(ret);
}

int subboard_get_pcb_ver(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_pcb_ver", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t ver = 0;
    const uint32_t ret = drv_subboard_get_pcb_ver(inst_id, subboard_id, &ver);
    if (ret == 0) {
        print_hex_dec("pcb_ver", ver);
    }
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int subboard_get_bom_ver(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_bom_ver", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t ver = 0;
    const uint32_t ret = drv_subboard_get_bom_ver(inst_id, subboard_id, &ver);
    if (ret == 0) {
        print_hex_dec("bom_ver", ver);
    }
    print_result("%x %x", ret, ver);
    return static_cast<int>(ret);
}

int subboard_get_online_status(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_online_status", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t status = 0;
    const uint32_t ret = drv_subboard_get_online_status(inst_id, subboard_id, &status);
    if (ret == 0) {
        print_hex_dec("online_status", status);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

int subboard_get_online_status_ex(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    char **words = after_optional_inst(count, args, 1, &inst_id);
    if (words == nullptr) {
        return usage("subboard_get_online_status_ex", "inst_id subboard_id");
    }
    const uint32_t subboard_id = word_to_u32(words[0]);
    uint32_t status = 0;
    // One byte more than the driver may fill: findings that take all of it are still a text.
    char dfx[dfx_size + 1] = {};
    const uint32_t ret = drv_subboard_get_online_status_ex(inst_id, subboard_id, &status, dfx, dfx_size);
    if (ret == 0) {
        printf("online_status:%d dfx:%s\r\n", static_cast<int>(status), dfx);
    }
    print_result("%x %x", ret, status);
    return static_cast<int>(ret);
}

} // namespace board_commands
