// What the board says that it is. Nothing here is written.
#include "selftest/management/board_identity.h"

#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_msc.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t unread = UINT32_MAX;
constexpr uint32_t peer_power = 10;
// The drivers number the domains of all boards from 0 to 33.
constexpr uint32_t no_power_domain = 34;

// What a part answers that was never programmed, or a bus on which nothing drives a line.
bool is_blank(uint32_t value) {
    return value == 0 || value == UINT32_MAX;
}

int check_type(uint32_t inst_id, uint32_t *type, report_sink sink) {
    const uint32_t ret = drv_board_get_type(inst_id, type);
    if (ret == 0 && !is_blank(*type)) {
        return 0;
    }
    report_append(sink, "Error  : get hard type fail 0x%x. type 0x%x \r\n", ret, *type);
    return -1;
}

// A bill of materials may well have number 0: only the code of the query counts.
int check_bom(uint32_t inst_id, uint32_t *bom_id, uint32_t *bom_ver, report_sink sink) {
    int result = 0;
    uint32_t ret = drv_board_get_bom_id(inst_id, bom_id);
    if (ret != 0) {
        report_append(sink, "Error  : get bom id fail 0x%x. bom_id 0x%x\r\n", ret, *bom_id);
        result = -1;
    }
    ret = drv_board_get_bom_ver(inst_id, bom_ver);
    if (ret != 0) {
        report_append(sink, "Error  : get bom version fail 0x%x. bom_ver 0x%x\r\n", ret, *bom_ver);
        result = -1;
    }
    return result;
}

int check_rated_power(uint32_t inst_id, uint32_t *power, report_sink sink) {
    const uint32_t ret = drv_board_get_power(inst_id, power);
    if (ret == 0 && !is_blank(*power)) {
        return 0;
    }
    report_append(sink, "Error  : get power fail 0x%x. power 0x%x\r\n", ret, *power);
    return -1;
}

// A driver that answers for a domain behind the last one does not look at the number that it is given, and would
// switch whatever its register map happens to have there.
int check_unknown_domain_is_refused(uint32_t inst_id, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_power_status(inst_id, no_power_domain, &status);
    if (ret != 0) {
        return 0;
    }
    report_append(sink, "Error  : get invliad power stats fail 0x%x. power 0x%x\r\n", ret, status);
    return -1;
}

bool is_master() {
    uint32_t state = 0;
    return drv_msc_get_state(DRV_INST_SELF, 0, &state) == 0 && state == 0;
}

// Boards without a peer do not support the query; their line shows the 0 that stood there before.
int show_peer_power(uint32_t inst_id, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_power_status(inst_id, peer_power, &status);
    if (ret != 0 && !is_not_supported(ret)) {
        report_append(sink, "Error  : get peer power stats fail 0x%x. power 0x%x\r\n", ret, status);
        return -1;
    }
    report_append(sink, "Info : peer power sts 0x%x.\r\n", status);
    return 0;
}

} // namespace

int check_hardware_identity(uint32_t inst_id, report_sink sink) {
    uint32_t type = 0;
    uint32_t bom_id = unread;
    uint32_t bom_ver = unread;
    uint32_t power = 0;
    int result = check_type(inst_id, &type, sink);
    result |= check_bom(inst_id, &bom_id, &bom_ver, sink);
    result |= check_rated_power(inst_id, &power, sink);
    result |= check_unknown_domain_is_refused(inst_id, sink);
    report_append(sink, "Info : board type 0x%x bom_id %u bom_ver %u power 0x%x \r\n", type, bom_id, bom_ver, power);
    // The master feeds the domain itself: only its peer sees it from outside.
    if (is_master()) {
        return result;
    }
    return result | show_peer_power(inst_id, sink);
}

int check_pcb_version(uint32_t inst_id, report_sink sink) {
    uint32_t pcb_usr_ver = 0;
    uint32_t pcb_ver = 0;
    const uint32_t usr_ret = drv_board_get_usr_pcb_ver(inst_id, &pcb_usr_ver);
    const uint32_t pcb_ret = drv_board_get_pcb_ver(inst_id, &pcb_ver);
    if (usr_ret != 0 || pcb_ret != 0 || pcb_usr_ver != pcb_ver) {
        report_append(sink, "Error  : board pcb version check fail. ret 0x%x pcb_usr_ver 0x%x pcb_ver 0x%x.\r\n",
                      usr_ret != 0 ? usr_ret : pcb_ret, pcb_usr_ver, pcb_ver);
        return -1;
    }
    report_append(sink, "Success: board pcb version check pass. version 0x%x\r\n", pcb_ver);
    report_append(sink, "Success: board user pcb version check pass. version 0x%x\r\n", pcb_usr_ver);
    return 0;
}
