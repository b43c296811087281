// The management bus: error counters by slot.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";

} // namespace

TEST(Smb, ErrorCounters) {
    const test_board board =
        new_altered("mpu_master", {{"self/sim_smb/link/7/tx_errors", "2"}, {"self/sim_smb/link/7/rx_errors", "5"}});
    EXPECT_EQ(calls_print(board, {"smb_get_tx_err_count" + self + "7", "smb_get_tx_err_count" + self + "7",
                                  "smb_get_rx_err_count" + self + "7", "smb_get_tx_err_count" + self + "0",
                                  "smb_get_rx_err_count" + self + "17", "smb_get_tx_err_count" + card5 + "0"}),
              "0x0 2\n0x0 2\n0x0 5\n0x0 0\n" + no_such_device + not_supported);
}

} // namespace kestro_tests
