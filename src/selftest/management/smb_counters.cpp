// Error counters of the management bus. Each control chip of the board may count at a link of its own, sent and
// received frames apart.
#include "selftest/management/smb_counters.h"

#include "drv_basic/management/drv_smb.h"
#include "selftest/entry_walk.h"
#include "selftest/management/described_id.h"

namespace {

int report_count(const char *direction, uint32_t ret, uint32_t count, report_sink sink) {
    if (ret != 0 || count != 0) {
        report_append(sink, "Error  : board get smb %s cnt fail 0x%x. cnt %u\r\n", direction, ret, count);
        return -1;
    }
    report_append(sink, "Success: board get smb %s cnt pass\r\n", direction);
    return 0;
}

int check_tx(uint32_t inst_id, uint32_t tx_err_id, report_sink sink) {
    uint32_t count = 0;
    const uint32_t ret = drv_smb_get_tx_err_count(inst_id, tx_err_id, &count);
    return report_count("tx", ret, count, sink);
}

int check_rx(uint32_t inst_id, uint32_t rx_err_id, report_sink sink) {
    uint32_t count = 0;
    const uint32_t ret = drv_smb_get_rx_err_count(inst_id, rx_err_id, &count);
    return report_count("rx", ret, count, sink);
}

} // namespace

int check_smb_counters(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "board_mng", "board_epld");
    if (!has_entries(walk)) {
        // Without a line: who runs this check by hand sees the result.
        return -1;
    }
    int result = 0;
    bool counted = false;
    while (next_entry(&walk)) {
        const uint32_t tx_err_id = read_id(walk, "smb_tx_err_id");
        if (tx_err_id != no_id) {
            counted = true;
            result |= check_tx(inst_id, tx_err_id, sink);
        }
        const uint32_t rx_err_id = read_id(walk, "smb_rx_err_id");
        if (rx_err_id != no_id) {
            counted = true;
            result |= check_rx(inst_id, rx_err_id, sink);
        }
    }
    if (!counted) {
        report_append(sink, "Info   : board is not support smb tx and rx err cnt.\r\n");
    }
    return result;
}
