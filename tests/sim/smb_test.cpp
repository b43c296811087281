// The management bus: error counters by slot.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(Smb, ErrorCounters) {
    const test_board board =
        new_altered("mpu_master", {{"self/sim_smb/link/7/tx_errors", "2"}, {"self/sim_smb/link/7/rx_errors", "5"}});
    EXPECT_EQ(answers(board, {"drv_smb_get_tx_err_count(slot_id=7)", "drv_smb_get_tx_err_count(slot_id=7)",
                              "drv_smb_get_rx_err_count(slot_id=7)", "drv_smb_get_tx_err_count(slot_id=0)",
                              "drv_smb_get_rx_err_count(slot_id=17)",
                              "drv_smb_get_tx_err_count(inst_id=0xff000005, slot_id=0)",
                              "drv_smb_get_rx_err_count(slot_id=7, count=null)"}),
              "0x0 count=2\n0x0 count=2\n0x0 count=5\n0x0 count=0\n" + no_such_device + not_supported + null_pointer);
}

} // namespace kestro_tests
