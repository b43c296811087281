// Sub-boards: what each can tell, and what an absent one cannot.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";

} // namespace

TEST(Subboard, IdentityAndPresence) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"subboard_get_type" + self + "0", "subboard_get_pcb_ver" + self + "0",
                                  "subboard_get_bom_ver" + self + "0", "subboard_get_bom_id" + self + "0",
                                  "subboard_get_online_status" + self + "0",
                                  "subboard_get_online_status_ex" + self + "0 128"}),
              "0x0 33\n0x0 1\n0x0 2\n0x0 4\n0x0 0\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(board, {"subboard_get_type" + self + "2", "subboard_get_online_status" + self + "3",
                                  "subboard_get_type" + self + "1", "subboard_get_online_status" + self + "1",
                                  "subboard_get_type" + card5 + "0", "subboard_get_type 0xff000006 0"}),
              not_supported + not_supported + no_such_device + no_such_device + not_supported + no_such_instance);
}

TEST(Subboard, AnAbsentOneOnlySaysSo) {
    EXPECT_EQ(
        calls_print(new_altered("lpu", {{"self/sim_subboard/subboard/30/absent", "1"}}),
                    {"subboard_get_online_status" + self + "30", "subboard_get_online_status_ex" + self + "30 128",
                     "subboard_get_type" + self + "30", "subboard_get_online_status_ex" + self + "30 5"}),
        "0x0 1\n0x0 1 \"sub-board 30 is absent\"\n" + no_such_instance + too_small);
}

} // namespace kestro_tests
