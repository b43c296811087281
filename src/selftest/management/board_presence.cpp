// Presence and slots. What these checks read comes from wires of the backplane; nothing is written.
#include "selftest/management/board_presence.h"

#include <initializer_list>

#include "drv_basic/management/drv_board.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t present = 0;
constexpr uint32_t absent = 1;
constexpr uint32_t message_capacity = 256;

// A terminator of our own stands behind messages that fill their area.
using message_area = char[message_capacity + 1];

struct slot_ids {
    uint32_t slot;
    uint32_t logic_slot;
    uint32_t peer_slot;
    uint32_t peer_logic_slot;
};

bool is_failure(uint32_t ret) {
    return ret != 0 && !is_not_supported(ret);
}

int read_own_slots(slot_ids *ids, report_sink sink) {
    int result = 0;
    for (const uint32_t ret :
         {drv_board_get_self_slotid(&ids->slot), drv_board_get_self_logic_slotid(&ids->logic_slot)}) {
        if (ret != 0) {
            report_append(sink, "Error  : board get slotid fail. ret 0x%x\r\n", ret);
            result = -1;
        }
    }
    return result;
}

// Boards that stand alone have no peer to ask for.
int read_peer_slots(slot_ids *ids, report_sink sink) {
    int result = 0;
    for (const uint32_t ret :
         {drv_board_get_peer_slotid(&ids->peer_slot), drv_board_get_peer_logic_slotid(&ids->peer_logic_slot)}) {
        if (is_failure(ret)) {
            report_append(sink, "Error  : board get peer slotid fail. ret 0x%x\r\n", ret);
            result = -1;
        }
    }
    return result;
}

// Logical slots are counted upward from the physical ones: chassis that are one to the software leave room below.
int compare_own_slots(const slot_ids &ids, report_sink sink) {
    if (ids.logic_slot >= ids.slot) {
        return 0;
    }
    report_append(sink, "Error  : board logic slotid  check fail. logic_slot_id %u slot_id %u\r\n", ids.logic_slot,
                  ids.slot);
    return -1;
}

} // namespace

int check_self_online(uint32_t /*inst_id*/, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_self_online_status(&status);
    if (ret != 0 || status != present) {
        report_append(sink, "Error  : board self online check fail. ret 0x%x sts 0x%x\r\n", ret, status);
        return -1;
    }
    report_append(sink, "Success: board self online check pass. %s %u\r\n", "present", status);
    return 0;
}

// An empty slot beside the board is no fault of the board.
int check_peer_online(uint32_t /*inst_id*/, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_board_get_peer_online_status(&status);
    if (is_not_supported(ret)) {
        return 0;
    }
    if (ret != 0 || (status != present && status != absent)) {
        report_append(sink, "Error  : board peer online check fail. ret 0x%x sts 0x%x\r\n", ret, status);
        return -1;
    }
    report_append(sink, "Success: board peer online check pass. status %s %u \r\n",
                  status == present ? "present" : "unpresent", status);
    return 0;
}

int check_fullin(uint32_t inst_id, report_sink sink) {
    constexpr uint32_t not_fully_in = 1;
    uint32_t status = 0;
    uint32_t ret = drv_board_get_fullin_status(inst_id, &status);
    if (is_failure(ret) || status == not_fully_in) {
        report_append(sink, "Error  : board get fullin check fail. ret 0x%x sts 0x%x\r\n", ret, status);
        return -1;
    }
    message_area message = {};
    uint32_t found = 0;
    ret = drv_board_check_fullin_status(inst_id, &found, message, message_capacity);
    if (is_failure(ret) || found != 0) {
        report_append(sink, "Error  : board fullin check fail. ret 0x%x sts 0x%x %s \r\n", ret, found, message);
        return -1;
    }
    report_append(sink, "Success: board fullin check pass. sts %u\r\n", status);
    return 0;
}

int check_slot_id(uint32_t inst_id, report_sink sink) {
    slot_ids ids{};
    int result = read_own_slots(&ids, sink);
    result |= compare_own_slots(ids, sink);
    result |= read_peer_slots(&ids, sink);
    message_area message = {};
    uint32_t found = 0;
    const uint32_t ret = drv_board_check_slotid(inst_id, &found, message, message_capacity);
    // What the driver found is shown and not judged: it counts the slots of the chassis that it was built for, and the
    // same board is delivered in bigger ones.
    if (ret != 0 || result != 0) {
        report_append(sink, "Error  : board check slotid fail. ret 0x%x result 0x%x\r\n", ret, found);
        return -1;
    }
    report_append(sink,
                  "Success: board slotid check pass. slot_id %u logic_slot_id %u peer_slot_id %u peer_logic_slot_id %u "
                  "\r\n",
                  ids.slot, ids.logic_slot, ids.peer_slot, ids.peer_logic_slot);
    return 0;
}

int check_tpm(uint32_t inst_id, report_sink sink) {
    uint32_t online = 0;
    uint32_t active = 0;
    const uint32_t online_ret = drv_board_get_tpm_online_status(inst_id, &online);
    const uint32_t active_ret = drv_board_get_tpm_active_status(inst_id, &active);
    if (online_ret != 0) {
        report_append(sink, "Error  : get tpm online sts fail 0x%x.\r\n", online_ret);
    }
    if (active_ret != 0) {
        report_append(sink, "Error  : get tpm active sts fail 0x%x.\r\n", active_ret);
    }
    if (online_ret != 0 || active_ret != 0) {
        return -1;
    }
    report_append(sink, "Success: board tpm online %u (0: present 1: absent) tpm active %u (0: unactive 1:active)\r\n",
                  online, active);
    return 0;
}
