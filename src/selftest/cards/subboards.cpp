// Sub-boards. Not every sub-board has the wires to tell everything: an element of the description enables each item,
// and 255 stands for an item that the sub-board lacks.
#include "selftest/cards/subboards.h"

#include "drv_basic/management/drv_subboard.h"
#include "selftest/entry_walk.h"

namespace {

constexpr uint32_t message_size = 255;
constexpr uint32_t not_wired = 255;

const char *subboard_name(uint32_t subboard_id) {
    switch (subboard_id) {
    case 0:
        return "cpu-board";
    case 1:
        return "cpu-board-1";
    case 2:
        return "tpm-board";
    case 3:
        return "mng-board";
    case 10:
        return "mife-board";
    case 20:
        return "three-board";
    case 30:
        return "intf-board";
    default:
        return "unknown";
    }
}

bool is_described(const entry_walk &walk, const char *element) {
    uint32_t config = 0;
    return read_element(walk, element, &config) == 0 && config != not_wired;
}

int check_type(const entry_walk &walk, uint32_t subboard_id, report_sink sink) {
    const char *name = subboard_name(subboard_id);
    if (!is_described(walk, "type_cfg")) {
        report_append(sink, "Info: get subboard %u %s type is not support.\r\n", subboard_id, name);
        return 0;
    }
    uint32_t type = 0;
    const uint32_t ret = drv_subboard_get_type(walk.inst_id, subboard_id, &type);
    if (ret != 0) {
        report_append(sink, "Error: get subboard %u %s type fail 0x%x.\r\n", subboard_id, name, ret);
        return -1;
    }
    report_append(sink, "Success: get subboard %u %s type is 0x%x.\r\n", subboard_id, name, type);
    return 0;
}

int check_pcb(const entry_walk &walk, uint32_t subboard_id, report_sink sink) {
    const char *name = subboard_name(subboard_id);
    if (!is_described(walk, "pcb_cfg")) {
        report_append(sink, "Info: get subboard %u %s pcb is not support.\r\n", subboard_id, name);
        return 0;
    }
    uint32_t version = 0;
    const uint32_t ret = drv_subboard_get_pcb_ver(walk.inst_id, subboard_id, &version);
    if (ret != 0) {
        report_append(sink, "Error: get subboard %u %s pcb fail 0x%x.\r\n", subboard_id, name, ret);
        return -1;
    }
    report_append(sink, "Success: get subboard %u %s pcb is 0x%x.\r\n", subboard_id, name, version);
    return 0;
}

int check_bom_version(const entry_walk &walk, uint32_t subboard_id, report_sink sink) {
    const char *name = subboard_name(subboard_id);
    if (!is_described(walk, "bom_ver_cfg")) {
        report_append(sink, "Info: get subboard %u %s bom version is not support.\r\n", subboard_id, name);
        return 0;
    }
    uint32_t version = 0;
    const uint32_t ret = drv_subboard_get_bom_ver(walk.inst_id, subboard_id, &version);
    if (ret != 0) {
        report_append(sink, "Error: get subboard %u %s bom version fail 0x%x.\r\n", subboard_id, name, ret);
        return -1;
    }
    report_append(sink, "Success: get subboard %u %s bom version is 0x%x.\r\n", subboard_id, name, version);
    return 0;
}

// The status is shown, not judged: sub-boards are options. Both ways of asking write the same status; the second one
// has the reason as well.
int check_online(const entry_walk &walk, uint32_t subboard_id, report_sink sink) {
    const char *name = subboard_name(subboard_id);
    if (!is_described(walk, "online_cfg")) {
        report_append(sink, "Info: get subboard %u %s online is not support.\r\n", subboard_id, name);
        return 0;
    }
    uint32_t status = 0;
    uint32_t ret = drv_subboard_get_online_status(walk.inst_id, subboard_id, &status);
    if (ret != 0) {
        report_append(sink, "Error: get subboard %u %s online status fail 0x%x.\r\n", subboard_id, name, ret);
        return -1;
    }
    char message[message_size + 1] = {};
    ret = drv_subboard_get_online_status_ex(walk.inst_id, subboard_id, &status, message, message_size);
    if (ret != 0) {
        report_append(sink, "Error: get subboard %u %s online status ex fail 0x%x msg %s\r\n", subboard_id, name, ret,
                      message);
        return -1;
    }
    report_append(sink, "Success: get subboard %u %s online 0x%x\r\n", subboard_id, name, status);
    return 0;
}

int check_subboard(const entry_walk &walk, uint32_t subboard_id, report_sink sink) {
    int result = check_type(walk, subboard_id, sink);
    result |= check_pcb(walk, subboard_id, sink);
    result |= check_bom_version(walk, subboard_id, sink);
    result |= check_online(walk, subboard_id, sink);
    return result;
}

} // namespace

int subboard_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "subboard_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Info: sub board is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t subboard_id = 0;
        if (read_element(walk, "subboard_id", &subboard_id) == 0) {
            result |= check_subboard(walk, subboard_id, sink);
        }
    }
    return result;
}
