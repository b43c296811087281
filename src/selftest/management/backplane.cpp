// The backplane. Its operations have no instance, for there is one.
#include "selftest/management/backplane.h"

#include "drv_basic/management/drv_backplane.h"
#include "selftest/entry_walk.h"

namespace {

struct backplane_identity {
    uint32_t type;
    uint32_t pcb_ver;
};

int read_identity(backplane_identity *identity, report_sink sink) {
    const uint32_t type_ret = drv_backplane_get_type(&identity->type);
    const uint32_t pcb_ver_ret = drv_backplane_get_pcb_ver(&identity->pcb_ver);
    const uint32_t ret = type_ret != 0 ? type_ret : pcb_ver_ret;
    if (ret != 0) {
        report_append(sink, "Error  : board get backplane type or pcb ver fail. ret 0x%x\r\n", ret);
        return -1;
    }
    return 0;
}

int check_id_pins(report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_backplane_check_id(&status);
    if (ret != 0 || status != 0) {
        report_append(sink, "Error  : board backplane id check fail. ret 0x%x sts 0x%x \r\n", ret, status);
        return -1;
    }
    return 0;
}

// The fault analysis says which pin it is.
int analyse_id_pins(report_sink sink) {
    constexpr uint32_t message_size = 256;
    char message[message_size + 1] = {};
    uint32_t status = 0;
    const uint32_t ret = drv_backplane_fmea_check_id(&status, message, message_size);
    if (ret != 0 || status != 0) {
        report_append(sink, "Error  : board backplane id fmea check fail. ret 0x%x sts 0x%x %s \r\n", ret, status,
                      message);
        return -1;
    }
    return 0;
}

} // namespace

int check_backplane(uint32_t inst_id, report_sink sink) {
    const entry_walk walk = open_entry_walk(inst_id, "bkp_mng", "bkp_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Success: board not support back plane check. ret 0x%x, entry_num = %u\r\n", walk.ret,
                      walk.count);
        return 0;
    }
    backplane_identity identity = {};
    int result = read_identity(&identity, sink);
    result |= check_id_pins(sink);
    result |= analyse_id_pins(sink);
    if (result == 0) {
        report_append(sink, "Success: board backplane check pass. type 0x%x pcb_ver %u\r\n", identity.type,
                      identity.pcb_ver);
    }
    return result;
}
