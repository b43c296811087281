// What boards are equipped with, the backplane that main processing units read, and how a board started last.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(BoardCapability, EveryDescribedItemHasAName) {
    for (const std::string seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(seat);
        const auto chassis = read_board(seat);
        size_t items = 0;
        for (const pugi::xml_node entry :
             chassis->node(place_of_seat(seat), "board_capability_mng", "board_capability_get_type")
                 .children("entry")) {
            const std::string id =
                std::to_string(kestro_sim::element_number(kestro_sim::named_child(entry, "id")).value());
            const std::string said = answers(board, {"drv_board_capability_find(mode_id=" + id + ", size=16)"});
            EXPECT_TRUE(said.starts_with("0x0 name=\"")) << seat << id << said;
            EXPECT_NE(said, "0x0 name=\"\"\n") << seat << id;
            ++items;
        }
        EXPECT_EQ(items, seat == "lpu" ? 3U : 6U);
    }
}

TEST(BoardCapability, FindsItemsByKindAndNumber) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_capability_find(mode_id=1, size=16)",
                              "drv_board_capability_find(mode_id=0x10000, size=8)",
                              "drv_board_capability_find(mode_id=0x10000, size=7)",
                              "drv_board_capability_find(mode_id=0x10001, size=16)",
                              "drv_board_capability_find(inst_id=0xff000007, mode_id=0, size=16)",
                              "drv_board_capability_find(inst_id=0xff000005, mode_id=0, size=16)",
                              "drv_board_capability_find(inst_id=0xff000006, mode_id=0, size=16)",
                              "drv_board_capability_find(mode_id=1, size=16, name=null)"}),
              "0x0 name=\"timing fpga\"\n0x0 name=\"tpm 2.0\"\n" + too_small + no_such_device +
                  "0x0 name=\"framer fpga\"\n" + not_supported + no_such_instance + null_pointer);
}

// The chip that controls the board reads what the board says of itself.
TEST(BoardCapability, BomValuesAgreeWithTheBoard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_bom_id()", "drv_board_get_bom_value(chip_id=0)",
                              "drv_board_get_bom_value(chip_id=2)", "drv_board_get_bom_value(chip_id=3)",
                              "drv_board_get_bom_value(inst_id=0xff000005, chip_id=0)",
                              "drv_board_get_bom_value(chip_id=0, bom_value=null)"}),
              "0x0 bom_id=3\n0x0 bom_value=3\n0x0 bom_value=2\n" + no_such_device + not_supported + null_pointer);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_bom_id()", "drv_board_get_bom_value(chip_id=0)"}),
              "0x0 bom_id=6\n0x0 bom_value=6\n");
}

TEST(Backplane, IsOneForBothMainProcessingUnits) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(answers(new_delivered(seat), {"drv_backplane_get_type()", "drv_backplane_get_pcb_ver()",
                                                "drv_backplane_get_serdes_speed()", "drv_backplane_check_id()",
                                                "drv_backplane_fmea_check_id(size=256)"}),
                  "0x0 type=278\n0x0 pcb_ver=259\n0x0 speed=25781\n0x0 check=0\n0x0 check_result=0 dfx=\"\"\n");
    }
}

TEST(Backplane, ALineCardDoesNotReadIt) {
    EXPECT_EQ(answers(new_delivered("lpu"),
                      {"drv_backplane_get_type()", "drv_backplane_get_pcb_ver()", "drv_backplane_get_serdes_speed()",
                       "drv_backplane_check_id()", "drv_backplane_fmea_check_id(size=256)"}),
              not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST(Backplane, TellsWhichPinsAreStuck) {
    const std::string state = new_scratch_dir() + "/state";
    const auto checked = [&](const std::string &pins) {
        return answers_of({"--state", state, "--clock", "virtual", "--set", "chassis/backplane/backplane/0/" + pins},
                          {"drv_backplane_check_id()", "drv_backplane_fmea_check_id(size=256)"});
    };
    EXPECT_EQ(checked("id_pins=0x17"), "0x0 check=1\n0x0 check_result=1 dfx=\"id pin 0 is stuck\"\n");
    EXPECT_EQ(checked("inverted_pins=0x69"),
              "0x0 check=1\n0x0 check_result=1 dfx=\"id pin 0 is stuck, id pin 7 is stuck\"\n");
    EXPECT_EQ(checked("id_pins=0x96"), "0x0 check=0\n0x0 check_result=0 dfx=\"\"\n");
}

TEST(Backplane, MissingAndSmallAreas) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_backplane_get_type(type=null)", "drv_backplane_get_pcb_ver(pcb_ver=null)",
                       "drv_backplane_get_serdes_speed(speed=null)", "drv_backplane_check_id(check=null)",
                       "drv_backplane_fmea_check_id(size=256, check_result=null)",
                       "drv_backplane_fmea_check_id(size=256, dfx=null)", "drv_backplane_fmea_check_id(size=0)",
                       "drv_backplane_fmea_check_id(size=1)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + too_small +
                  "0x0 check_result=0 dfx=\"\"\n");
}

// The type follows from the record of resets: how the board came up from power, from a warm and from a cold start.
TEST(SoftReset, TellsHowTheBoardStartedLast) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    const std::string type = "drv_softreset_get_reset_type()";
    EXPECT_EQ(answers(slave, {type, "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})", type}),
              "0x0 reset_type=2\n" + ok + "0x0 reset_type=0\n");
    EXPECT_EQ(answers(master, {"drv_reset_peer_board()", type, "drv_softreset_get_reset_type(inst_id=0xff00000a)"}),
              ok + "0x0 reset_type=2\n0x0 reset_type=1\n");
    EXPECT_EQ(answers(slave, {type}), "0x0 reset_type=1\n");
}

TEST(SoftReset, IsOfMainProcessingUnits) {
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_softreset_get_reset_type()"}), not_supported);
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_softreset_get_reset_type(inst_id=0xff000006)",
                                                    "drv_softreset_get_reset_type(reset_type=null)"}),
              no_such_instance + null_pointer);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_softreset/control/0/support", "0"}}),
                      {"drv_softreset_get_reset_type()"}),
              not_supported);
}

} // namespace kestro_tests
