// Soft resets. The start-up software leaves three variables behind: in the memory that survives a reset whether the
// start was a soft one, and in flash why it was none, and whether the hardware had been brought up from anew. Checks go
// on after a failure, so that a fault is seen with all that belongs to it.
#include "selftest/environment/soft_reset.h"

#include <cstring>

#include "drv_basic/management/drv_softreset.h"
#include "drv_basic/storage/drv_env.h"
#include "nb_ctl/board_xml.h"

namespace {

constexpr uint32_t last_reset_type = 2; // soft, hard, power-on

constexpr const char *mode_name = "kestro_softreset_mode";
constexpr const char *board_reset_name = "board_reset_mode";
constexpr const char *hard_reset_name = "hard_reset_init_flag";

constexpr uint32_t soft_mode = 0;
constexpr uint32_t hard_mode = 1;

// Each with a terminator of our own behind texts that fill their area.
constexpr uint32_t board_reset_size = 256;
constexpr uint32_t hard_reset_size = 4;

struct start_variables {
    uint32_t mode;
    char board_reset[board_reset_size + 1];
    char hard_reset[hard_reset_size + 1];
};

int check_reset_type(uint32_t inst_id, report_sink sink) {
    uint32_t reset_type = 0;
    const uint32_t ret = drv_softreset_get_reset_type(inst_id, &reset_type);
    if (ret != 0) {
        report_append(sink, "Error: soft reset get reset-type fail ret 0x%x\r\n", ret);
        return -1;
    }
    if (reset_type > last_reset_type) {
        report_append(sink, "Error: soft reset get reset-type fail reset_type 0x%x\r\n", reset_type);
        return -1;
    }
    return 0;
}

// A mode that cannot be read stays one that no start leaves behind. A text that cannot be read is an empty one: the
// start-up software takes a reason away when it has been served.
int read_variables(start_variables *variables, report_sink sink) {
    *variables = {};
    variables->mode = UINT32_MAX;
    int result = 0;
    const uint32_t ret = drv_memenv_num_get(mode_name, &variables->mode, 10);
    if (ret != 0) {
        report_append(sink, "Error: get env %s fail ret 0x%x\r\n", mode_name, ret);
        result = -1;
    }
    report_append(sink, "Info: memenv: %s is %u (0: soft 1:not-soft))\r\n", mode_name, variables->mode);
    drv_env_get(board_reset_name, variables->board_reset, board_reset_size);
    report_append(sink, "Info: env: %s is %s \r\n", board_reset_name, variables->board_reset);
    report_append(sink,
                  "Info: 0:soft-reset-now 1:voltage dip 3:fpag check fail 4:bsp-cpu-chip-reset 5: hard_reset_init_flag "
                  "is not 1 7: board_reset_mode is null 9:package_set_flag is 1 10:start_from_cfg is 1 \r\n");
    drv_env_get(hard_reset_name, variables->hard_reset, hard_reset_size);
    report_append(sink, "Info: env: %s is %s (0: soft 1: hard) \r\n", hard_reset_name, variables->hard_reset);
    return result;
}

// A start of either kind has come to its end when board_reset_mode is no longer "0", which asks for a soft reset. A
// soft start keeps hardware that was brought up, so its flag isn't "0" either: the flag says how the hardware was
// brought up last, not how the board started.
int check_variables(const start_variables &variables, report_sink sink) {
    const bool is_done = strcmp(variables.board_reset, "0") != 0;
    if (variables.mode == soft_mode && is_done && strcmp(variables.hard_reset, "0") != 0) {
        report_append(sink, "Success: soft reset now \r\n");
        return 0;
    }
    if (variables.mode == hard_mode && is_done && strcmp(variables.hard_reset, "1") == 0) {
        report_append(sink, "Success: hard reset now \r\n");
        return 0;
    }
    report_append(sink, "Error: env match check fail. kestro_soft_reset %u evnstr_hardrest %s evnstr_boardrest %s \r\n",
                  variables.mode, variables.hard_reset, variables.board_reset);
    return -1;
}

// One named entry; whatever its element says, the board knows soft resets.
bool is_described(uint32_t inst_id) {
    uint32_t value = 0;
    return xml_get_element_value_u32(inst_id, "softreset_mng", "softreset_attr", "softreset_support", "value",
                                     &value) == 0;
}

} // namespace

int soft_reset_section(uint32_t inst_id, report_sink sink) {
    if (!is_described(inst_id)) {
        report_append(sink, "Info: ptn soft reset is not support.\r\n");
        return 0;
    }
    int result = check_reset_type(inst_id, sink);
    start_variables variables;
    result |= read_variables(&variables, sink);
    return result | check_variables(variables, sink);
}
