// Sub-boards: what each can tell, and what an absent one cannot.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(Subboard, IdentityAndPresence) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_subboard_get_type(subboard_id=0)", "drv_subboard_get_pcb_ver(subboard_id=0)",
                              "drv_subboard_get_bom_ver(subboard_id=0)", "drv_subboard_get_bom_id(subboard_id=0)",
                              "drv_subboard_get_online_status(subboard_id=0)",
                              "drv_subboard_get_online_status_ex(subboard_id=0)"}),
              "0x0 type=33\n0x0 ver=1\n0x0 ver=2\n0x0 bom_id=4\n0x0 status=0\n0x0 status=0 dfx=\"\"\n");
    EXPECT_EQ(
        answers(board, {"drv_subboard_get_type(subboard_id=2)", "drv_subboard_get_online_status(subboard_id=3)",
                        "drv_subboard_get_type(subboard_id=1)", "drv_subboard_get_online_status(subboard_id=1)",
                        "drv_subboard_get_type(inst_id=0xff000005)", "drv_subboard_get_type(inst_id=0xff000006)"}),
        not_supported + not_supported + no_such_device + no_such_device + not_supported + no_such_instance);
}

TEST(Subboard, AnAbsentOneOnlySaysSo) {
    EXPECT_EQ(
        answers(new_altered("lpu", {{"self/sim_subboard/subboard/30/absent", "1"}}),
                {"drv_subboard_get_online_status(subboard_id=30)", "drv_subboard_get_online_status_ex(subboard_id=30)",
                 "drv_subboard_get_type(subboard_id=30)", "drv_subboard_get_online_status_ex(subboard_id=30, size=5)"}),
        "0x0 status=1\n0x0 status=1 dfx=\"sub-board 30 is absent\"\n" + no_such_instance + too_small);
}

} // namespace kestro_tests
