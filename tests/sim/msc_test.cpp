// Master and slave: how the two main processing units take over from each other, and what both know of it.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string of_the_peer = "inst_id=0xff00000a, ";

// The two boards of one chassis.
struct two_boards {
    test_board a = new_delivered("mpu_master");
    test_board b = seen_from(a, "mpu_slave");
};

// Answers of one operation for scc, xsc and all.
std::string in_all_modes(const test_board &board, const std::string &operation) {
    return answers(board, {operation + "(sw_mode=0)", operation + "(sw_mode=1)", operation + "(sw_mode=2)"});
}

std::string three(const std::string &name, const std::string &scc, const std::string &xsc, const std::string &all) {
    return "0x0 " + name + "=" + scc + "\n0x0 " + name + "=" + xsc + "\n0x0 " + name + "=" + all + "\n";
}

std::string states(const std::string &scc, const std::string &xsc, const std::string &all) {
    return three("state", scc, xsc, all);
}

void expect_master(const test_board &board) {
    EXPECT_EQ(in_all_modes(board, "drv_msc_get_state"), states("0", "0", "0"));
    EXPECT_EQ(in_all_modes(board, "drv_msc_get_peer_state"), states("1", "1", "1"));
}

void expect_slave(const test_board &board) {
    EXPECT_EQ(in_all_modes(board, "drv_msc_get_state"), states("1", "1", "1"));
    EXPECT_EQ(in_all_modes(board, "drv_msc_get_peer_state"), states("0", "0", "0"));
}

void expect_reason(const two_boards &two, const std::string &reason) {
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_switch_reason"), three("reason", reason, reason, reason));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_switch_reason"), three("reason", reason, reason, reason));
}

// What the technician does before the calls from one seat.
std::string answers_after(const std::string &state, const std::vector<std::string> &by_hand, const std::string &seat,
                          const std::vector<std::string> &lines) {
    std::vector<std::string> options{"--state", state, "--clock", "virtual", "--board", seat};
    options.insert(options.end(), by_hand.begin(), by_hand.end());
    return answers_of(options, lines);
}

} // namespace

TEST(Msc, ANewChassisIsHealthy) {
    const two_boards two;
    expect_master(two.a);
    expect_slave(two.b);
    expect_reason(two, "0");
    for (const test_board &board : {two.a, two.b}) {
        EXPECT_EQ(in_all_modes(board, "drv_msc_get_self_ok"), three("self_ok", "1", "1", "1"));
        EXPECT_EQ(in_all_modes(board, "drv_msc_get_peer_ok"), three("peer_ok", "1", "1", "1"));
        EXPECT_EQ(in_all_modes(board, "drv_msc_get_switch_en"), three("enable", "1", "1", "1"));
        EXPECT_EQ(in_all_modes(board, "drv_msc_get_switch_ctrl"), three("ctrl", "0", "0", "0"));
        EXPECT_EQ(in_all_modes(board, "drv_msc_get_int_state"), states("0", "0", "0"));
        EXPECT_EQ(answers(board, {"drv_msc_init()", "drv_msc_get_npu_work_mode()", "drv_msc_deinit()"}),
                  ok + "0x0 work_mode=0\n" + ok);
    }
}

TEST(Msc, AStateThatIsSetShowsInThePeersRun) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=0, state=1)"}), ok);
    expect_slave(two.a);
    expect_master(two.b);
    expect_reason(two, "1");
    // The lines of the cards follow the master.
    EXPECT_EQ(answers(two.a, {"drv_board_get_online_status(inst_id=0xff000005)"}), "0x0 status=1\n");
    EXPECT_EQ(answers(two.b, {"drv_board_get_online_status(inst_id=0xff000005)"}), "0x0 status=0\n");
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=2, state=0)"}), ok);
    expect_master(two.a);
    expect_slave(two.b);
}

TEST(Msc, AStateThatItHasAlreadyIsNoSwitchOver) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=2, state=0)", "drv_msc_force_master()"}), ok + ok);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_state(sw_mode=1, state=1)", "drv_msc_force_standby()"}), ok + ok);
    expect_master(two.a);
    expect_reason(two, "0");
}

TEST(Msc, ModesAreSwitchedEachForItselfWhenTheyAreNotBonded) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_bond_mode(bond=1)", "drv_msc_set_state(sw_mode=1, state=0)"}), ok + ok);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_state"), states("0", "1", "2"));
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_peer_state"), states("1", "0", "2"));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_state"), states("1", "0", "2"));
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_switch_reason"), three("reason", "0", "1", "1"));
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=0, state=1)"}), ok);
    expect_master(two.b);
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=0, state=0)"}), ok);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_state"), states("0", "1", "2"));
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=2, state=0)"}), ok);
    expect_master(two.a);
}

TEST(Msc, BondedModesGoToTheMasterOfControl) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_bond_mode(bond=1)", "drv_msc_set_state(sw_mode=1, state=1)",
                              "drv_msc_set_bond_mode(bond=0)"}),
              ok + ok + ok);
    expect_master(two.a);
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_switch_reason"), three("reason", "0", "7", "7"));
}

TEST(Msc, ABadMasterHandsOver) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_self_bad(sw_mode=1, status=1)"}), ok);
    expect_slave(two.a);
    expect_reason(two, "4");
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_self_ok"), three("self_ok", "1", "0", "0"));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_peer_ok"), three("peer_ok", "1", "0", "0"));
    EXPECT_EQ(answers(two.a, {"drv_msc_set_self_bad(sw_mode=1, status=0)"}), ok);
    expect_slave(two.a);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_self_ok"), three("self_ok", "1", "1", "1"));
}

TEST(Msc, ABadMasterThatIsNotBondedHandsOverThatMode) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_bond_mode(bond=1)", "drv_msc_set_self_bad(sw_mode=0, status=1)"}), ok + ok);
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_state"), states("0", "1", "2"));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_switch_reason"), three("reason", "4", "0", "4"));
}

TEST(Msc, ABadMasterStaysItAsLongAsThePeerIsBad) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_self_bad(sw_mode=2, status=1)"}), ok);
    EXPECT_EQ(answers(two.a, {"drv_msc_set_self_bad(sw_mode=2, status=1)"}), ok);
    expect_master(two.a);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_self_bad(sw_mode=2, status=0)"}), ok);
    expect_master(two.b);
    expect_reason(two, "4");
}

TEST(Msc, AMasterThatItsPeerCallsBadLosesToIt) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_peer_bad(sw_mode=2, status=1)"}), ok);
    expect_master(two.b);
    expect_reason(two, "4");
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_self_ok"), three("self_ok", "0", "0", "0"));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_peer_ok"), three("peer_ok", "0", "0", "0"));
    EXPECT_EQ(answers(two.a, {"drv_msc_set_state(sw_mode=0, state=0)"}), bad_value);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_state(sw_mode=0, state=1)"}), bad_value);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_peer_bad(sw_mode=2, status=0)", "drv_msc_set_state(sw_mode=0, state=1)"}),
              ok + ok);
    expect_master(two.a);
}

TEST(Msc, AMasterWhoseSoftwareIsNotReadyHandsOver) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_soft_ready(sw_mode=2, soft_ready=0)"}), ok);
    expect_master(two.b);
    expect_reason(two, "5");
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_peer_ok"), three("peer_ok", "0", "0", "0"));
    EXPECT_EQ(answers(two.a, {"drv_msc_set_soft_ready(sw_mode=0, soft_ready=1)"}), ok);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_self_ok"), three("self_ok", "1", "0", "0"));
}

TEST(Msc, NothingIsSwitchedWithoutACommandUnlessBothBoardsLetItHappen) {
    for (const std::string owner : {"", "inst_id=0xff00000a, "}) {
        const two_boards two;
        EXPECT_EQ(answers(two.a, {"drv_msc_set_switch_en(" + owner + "sw_mode=2, enable=0)",
                                  "drv_msc_set_self_bad(sw_mode=2, status=1)"}),
                  ok + ok);
        expect_master(two.a);
        EXPECT_EQ(answers(two.a, {"drv_msc_set_switch_ctrl(" + owner + "sw_mode=2, ctrl=1)",
                                  "drv_msc_set_switch_en(" + owner + "sw_mode=2, enable=1)"}),
                  ok + ok);
        expect_master(two.a);
        EXPECT_EQ(answers(two.a, {"drv_msc_set_switch_ctrl(" + owner + "sw_mode=2, ctrl=0)"}), ok);
        expect_master(two.b);
    }
}

TEST(Msc, SettingsAreKeptByMode) {
    const two_boards two;
    EXPECT_EQ(
        answers(two.a, {"drv_msc_set_switch_en(sw_mode=1, enable=0)", "drv_msc_set_switch_ctrl(sw_mode=0, ctrl=1)",
                        "drv_msc_set_npu_work_mode(work_mode=255)"}),
        ok + ok + ok);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_switch_en"), three("enable", "1", "0", "0"));
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_switch_ctrl"), three("ctrl", "1", "0", "1"));
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_switch_en"), three("enable", "1", "1", "1"));
    EXPECT_EQ(answers(two.b, {"drv_msc_get_npu_work_mode(inst_id=0xff000009)", "drv_msc_get_npu_work_mode()",
                              "drv_msc_get_switch_en(inst_id=0xff000009, sw_mode=1)"}),
              "0x0 work_mode=255\n0x0 work_mode=0\n0x0 enable=0\n");
}

TEST(Msc, ForceAsksForNoState) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_self_bad(sw_mode=2, status=1)", "drv_msc_set_state(sw_mode=2, state=0)",
                              "drv_msc_force_master()"}),
              ok + bad_value + ok);
    expect_master(two.b);
    expect_reason(two, "2");
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_switch_ctrl"), three("ctrl", "1", "1", "1"));
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_switch_ctrl"), three("ctrl", "0", "0", "0"));
    EXPECT_EQ(answers(two.b, {"drv_msc_force_standby()"}), ok);
    expect_master(two.a);
    EXPECT_EQ(answers(two.a, {"drv_msc_force_standby()"}), ok);
    expect_master(two.b);
}

TEST(Msc, APeerThatIsHeldStaysASlave) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_peer_slave()"}), ok);
    expect_master(two.b);
    expect_reason(two, "3");
    EXPECT_EQ(
        answers(two.a, {"drv_msc_set_state(sw_mode=2, state=0)", "drv_msc_force_master()", "drv_msc_set_peer_slave()"}),
        bad_value + bad_value + bad_value);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_state(sw_mode=2, state=1)", "drv_msc_force_standby()",
                              "drv_msc_set_self_bad(sw_mode=2, status=1)"}),
              bad_value + bad_value + ok);
    expect_master(two.b);
    EXPECT_EQ(answers(two.b, {"drv_msc_set_peer_slave_cancel()"}), ok);
    expect_master(two.a);
    expect_reason(two, "4");
}

TEST(Msc, ABoardThatIsBadHoldsNoPeer) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_self_bad(sw_mode=0, status=1)", "drv_msc_set_peer_slave()",
                              "drv_msc_set_peer_slave_cancel()"}),
              ok + bad_value + ok);
    EXPECT_EQ(answers(two.a, {"drv_msc_set_peer_slave()", "drv_msc_set_peer_slave_cancel()"}), ok + ok);
    expect_master(two.a);
    expect_reason(two, "0");
}

TEST(Msc, APeerThatIsNotThereIsAbnormal) {
    const std::string state = new_scratch_dir() + "/state";
    const std::vector<std::string> reads{"drv_msc_get_peer_state(sw_mode=0)", "drv_msc_get_peer_ok(sw_mode=0)",
                                         "drv_msc_get_state(sw_mode=2)", "drv_msc_get_self_ok(sw_mode=2)"};
    const std::vector<std::string> commands{
        "drv_msc_set_peer_bad(sw_mode=0, status=1)", "drv_msc_set_peer_slave()",
        "drv_msc_set_state(sw_mode=2, state=1)",     "drv_msc_force_standby()",
        "drv_msc_set_self_bad(sw_mode=2, status=1)", "drv_msc_get_state(sw_mode=2)",
        "drv_msc_set_self_bad(sw_mode=2, status=0)", "drv_msc_set_peer_slave_cancel()"};
    const std::string alone = "0x0 state=2\n0x0 peer_ok=0\n0x0 state=0\n0x0 self_ok=1\n";
    const std::string refused =
        no_such_instance + no_such_instance + no_such_instance + no_such_instance + ok + "0x0 state=0\n" + ok + ok;
    EXPECT_EQ(answers_after(state, {"--pull", "slot10"}, "mpu_master", reads), alone);
    EXPECT_EQ(answers_after(state, {}, "mpu_master", commands), refused);
    EXPECT_EQ(answers_after(state, {"--plug", "slot10"}, "mpu_master", reads),
              "0x0 state=1\n0x0 peer_ok=1\n0x0 state=0\n0x0 self_ok=1\n");
    EXPECT_EQ(answers_after(state, {}, "mpu_master", {"drv_board_set_online_status(inst_id=0xff00000a, status=1)"}),
              ok);
    EXPECT_EQ(answers_after(state, {}, "mpu_master", reads), alone);
    EXPECT_EQ(answers_after(state, {}, "mpu_master", commands), refused);
}

TEST(Msc, TheSlaveTakesOverFromAMasterThatGoes) {
    const std::string state = new_scratch_dir() + "/state";
    const std::vector<std::string> looks{"drv_msc_get_state(sw_mode=2)", "drv_msc_get_peer_state(sw_mode=2)",
                                         "drv_msc_get_switch_reason(sw_mode=1)"};
    EXPECT_EQ(answers_after(state, {"--pull", "slot9"}, "mpu_slave", looks),
              "0x0 state=0\n0x0 state=2\n0x0 reason=6\n");
    EXPECT_EQ(answers_after(state, {"--plug", "slot9"}, "mpu_slave", looks),
              "0x0 state=0\n0x0 state=1\n0x0 reason=6\n");
    EXPECT_EQ(answers_after(state, {}, "mpu_master", looks), "0x0 state=1\n0x0 state=0\n0x0 reason=6\n");
}

TEST(Msc, ASlaveThatIsForcedDoesNotTakeOverFromAMasterThatGoes) {
    const std::string state = new_scratch_dir() + "/state";
    answers_after(state, {"--set", "slot10/msc/mode/0/control=force"}, "mpu_slave", {});
    EXPECT_EQ(answers_after(state, {"--pull", "slot9"}, "mpu_slave",
                            {"drv_msc_get_state(sw_mode=0)", "drv_msc_get_state(sw_mode=1)"}),
              "0x0 state=1\n0x0 state=1\n");
}

TEST(Msc, TheLastOneThereTakesOverWhenItIsPlugged) {
    const std::string state = new_scratch_dir() + "/state";
    answers_after(state, {"--pull", "slot10"}, "mpu_master", {});
    answers_after(state, {"--pull", "slot9"}, "lpu", {});
    EXPECT_EQ(answers_after(state, {"--plug", "slot10"}, "mpu_slave", {"drv_msc_get_state(sw_mode=2)"}),
              "0x0 state=0\n");
}

// Both bonded modes or none.
TEST(Msc, BondedModesWaitForEachOther) {
    const two_boards two;
    EXPECT_EQ(answers(two.b, {"drv_msc_set_self_bad(sw_mode=1, status=1)"}), ok);
    EXPECT_EQ(answers(two.a, {"drv_msc_set_self_bad(sw_mode=0, status=1)"}), ok);
    expect_master(two.a);
    EXPECT_EQ(answers(two.a, {"drv_msc_set_bond_mode(bond=1)", "drv_msc_set_self_bad(sw_mode=0, status=1)"}), ok + ok);
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_state"), states("1", "0", "2"));
}

TEST(Msc, ASwitchOverInterruptsOnce) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_set_int_en(sw_mode=1, enable=1)", "drv_msc_get_int_state(sw_mode=2)",
                              "drv_msc_set_state(sw_mode=2, state=1)"}),
              ok + "0x0 state=0\n" + ok);
    EXPECT_EQ(in_all_modes(two.b, "drv_msc_get_int_state"), states("0", "0", "0"));
    EXPECT_EQ(in_all_modes(two.a, "drv_msc_get_int_state"), states("0", "1", "0"));
    EXPECT_EQ(answers(two.b, {"drv_msc_set_state(sw_mode=2, state=1)", "drv_msc_set_int_en(sw_mode=2, enable=1)",
                              "drv_msc_get_int_state(sw_mode=2)", "drv_msc_force_master()",
                              "drv_msc_get_int_state(sw_mode=2)", "drv_msc_get_int_state(sw_mode=0)",
                              "drv_msc_set_int_en(sw_mode=0, enable=0)", "drv_msc_force_standby()",
                              "drv_msc_get_int_state(sw_mode=0)", "drv_msc_get_int_state(sw_mode=1)"}),
              ok + ok + "0x0 state=0\n" + ok + "0x0 state=1\n0x0 state=0\n" + ok + ok + "0x0 state=0\n0x0 state=1\n");
}

// The technician moves both modes with the one register.
TEST(Msc, TheRegisterOfTheChassisSaysWhoIsTheMaster) {
    const std::string state = new_scratch_dir() + "/state";
    EXPECT_EQ(
        answers_after(state, {"--set", "chassis/msc/master/0/slot=10"}, "mpu_slave",
                      {"drv_msc_get_state(sw_mode=0)", "drv_msc_get_state(sw_mode=1)", "drv_msc_get_state(sw_mode=2)"}),
        "0x0 state=0\n0x0 state=0\n0x0 state=0\n");
}

TEST(Msc, DumpTellsBothModes) {
    const two_boards two;
    EXPECT_EQ(answers(two.a, {"drv_msc_dump_info(size=256)"}),
              "0x0 buffer=\"bond, npu mode 0\\nscc: master, peer slave, auto, enabled, ok, peer ok, last: none\\n"
              "xsc: master, peer slave, auto, enabled, ok, peer ok, last: none\"\n");
    const std::string longest =
        "0x0 buffer=\"spec, npu mode 255, peer held\\n"
        "scc: master, peer abnormal, force, disabled, not ok, peer not ok, last: peer made slave\\n"
        "xsc: master, peer abnormal, force, disabled, not ok, peer not ok, last: peer made slave\"\n";
    EXPECT_EQ(
        answers(two.b, {"drv_msc_set_bond_mode(bond=1)", "drv_msc_set_npu_work_mode(work_mode=255)",
                        "drv_msc_set_peer_slave()", "drv_msc_set_switch_en(sw_mode=2, enable=0)",
                        "drv_msc_set_switch_ctrl(sw_mode=2, ctrl=1)", "drv_msc_set_self_bad(sw_mode=2, status=1)",
                        "drv_board_set_online_status(inst_id=0xff000009, status=1)", "drv_msc_dump_info(size=256)",
                        "drv_msc_dump_info(size=206)", "drv_msc_dump_info(size=205)", "drv_msc_dump_info(size=0)"}),
        ok + ok + ok + ok + ok + ok + ok + longest + longest + too_small + too_small);
}

TEST(Msc, ValuesBeyondTheirRangeAreRefused) {
    const test_board board = new_delivered("mpu_master");
    for (const std::string call : {"set_bond_mode(bond=2)",
                                   "set_switch_en(sw_mode=0, enable=2)",
                                   "set_switch_en(sw_mode=3, enable=1)",
                                   "get_switch_en(sw_mode=3)",
                                   "set_switch_ctrl(sw_mode=2, ctrl=2)",
                                   "set_switch_ctrl(sw_mode=3, ctrl=1)",
                                   "get_switch_ctrl(sw_mode=3)",
                                   "set_state(sw_mode=0, state=2)",
                                   "set_state(sw_mode=3, state=1)",
                                   "get_state(sw_mode=0xffffffff)",
                                   "get_peer_state(sw_mode=3)",
                                   "get_switch_reason(sw_mode=3)",
                                   "set_npu_work_mode(work_mode=256)",
                                   "set_int_en(sw_mode=0, enable=2)",
                                   "set_int_en(sw_mode=3, enable=1)",
                                   "get_int_state(sw_mode=3)",
                                   "get_self_ok(sw_mode=3)",
                                   "get_peer_ok(sw_mode=3)",
                                   "set_self_bad(sw_mode=0, status=2)",
                                   "set_self_bad(sw_mode=3, status=1)",
                                   "set_peer_bad(sw_mode=0, status=2)",
                                   "set_peer_bad(sw_mode=3, status=1)",
                                   "set_soft_ready(sw_mode=0, soft_ready=2)",
                                   "set_soft_ready(sw_mode=3, soft_ready=1)"}) {
        EXPECT_EQ(answers(board, {"drv_msc_" + call}), bad_value) << call;
    }
    expect_master(board);
}

TEST(Msc, OnlyMainProcessingUnitsTakePart) {
    const std::vector<std::string> operations{"init(",
                                              "deinit(",
                                              "set_bond_mode(bond=1",
                                              "set_switch_en(sw_mode=0, enable=0",
                                              "get_switch_en(sw_mode=0",
                                              "set_switch_ctrl(sw_mode=0, ctrl=1",
                                              "get_switch_ctrl(sw_mode=0",
                                              "set_state(sw_mode=0, state=1",
                                              "get_state(sw_mode=0",
                                              "get_peer_state(sw_mode=0",
                                              "set_npu_work_mode(work_mode=1",
                                              "get_npu_work_mode(",
                                              "get_switch_reason(sw_mode=0",
                                              "set_int_en(sw_mode=0, enable=1",
                                              "get_int_state(sw_mode=0",
                                              "set_peer_slave(",
                                              "set_peer_slave_cancel(",
                                              "set_soft_ready(sw_mode=0, soft_ready=0",
                                              "force_master(",
                                              "force_standby(",
                                              "dump_info(size=256"};
    const test_board lpu = new_delivered("lpu");
    const test_board master = new_delivered("mpu_master");
    for (const std::string &operation : operations) {
        const std::string more = operation.back() == '(' ? "" : ", ";
        EXPECT_EQ(answers(lpu, {"drv_msc_" + operation + ")"}), not_supported) << operation;
        EXPECT_EQ(answers(master, {"drv_msc_" + operation + more + "inst_id=0xff000005)",
                                   "drv_msc_" + operation + more + "inst_id=0xff000006)"}),
                  not_supported + no_such_instance)
            << operation;
    }
    EXPECT_EQ(answers(lpu, {"drv_msc_get_self_ok(sw_mode=0)", "drv_msc_get_peer_ok(sw_mode=0)",
                            "drv_msc_set_self_bad(sw_mode=0, status=1)", "drv_msc_set_peer_bad(sw_mode=0, status=1)"}),
              not_supported + not_supported + not_supported + not_supported);
    expect_master(master);
}

TEST(Msc, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    for (const std::string call :
         {"get_switch_en(enable=null)", "get_switch_ctrl(ctrl=null)", "get_state(state=null)",
          "get_peer_state(state=null)", "get_npu_work_mode(work_mode=null)", "get_switch_reason(reason=null)",
          "get_int_state(state=null)", "get_self_ok(self_ok=null)", "get_peer_ok(peer_ok=null)",
          "dump_info(size=256, buffer=null)"}) {
        EXPECT_EQ(answers(board, {"drv_msc_" + call}), null_pointer) << call;
    }
}

} // namespace kestro_tests
