// The boot step: saved, overwritten, read back and written back, whatever was read in between.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/held_signals.h"
#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

constexpr const char *pass_line = "Success: board set and get self bootstep pass. bootstep 0x0\r\n";

struct steps {
    std::string saved = "0 step=55";
    std::string set = "0";
    std::string read_back = "0 step=10";
    std::string restore = "0";
    std::string peer = "0 step=60";
    std::string restored_step = "55";
};

// Rules that serve once, so that the calls come in this order.
std::string script_of(const steps &answers) {
    return "drv_board_get_self_bootstep(inst_id=0xffffffff) = " + answers.saved + " x1\n" +
           "drv_board_set_self_bootstep(inst_id=0xffffffff, step=10) = " + answers.set + " x1\n" +
           "drv_board_get_self_bootstep(inst_id=0xffffffff) = " + answers.read_back + " x1\n" +
           "drv_board_set_self_bootstep(inst_id=0xffffffff, step=" + answers.restored_step + ") = " + answers.restore +
           " x1\n" + "drv_board_get_peer_bootstep(inst_id=0xffffffff) = " + answers.peer + " x1\n";
}

void expect_steps(const steps &answers, const std::string &lines, int result) {
    expect_part("boot_step", script_of(answers), lines, result);
}

} // namespace

TEST(BootStepTest, TheSavedStepIsWrittenBack) {
    expect_steps({}, pass_line, 0);
}

// The step of the test is a step like any other.
TEST(BootStepTest, StepsFrom0To255AreGood) {
    for (const std::string step : {"0", "10", "255"}) {
        steps answers;
        answers.saved = "0 step=" + step;
        answers.restored_step = step;
        expect_steps(answers, pass_line, 0);
    }
}

TEST(BootStepTest, AStepThatIsNotWrittenIs0) {
    steps answers;
    answers.saved = "0";
    answers.restored_step = "0";
    expect_steps(answers, pass_line, 0);
}

TEST(BootStepTest, ABoardWithoutBootSteps) {
    expect_part("boot_step", "drv_board_get_self_bootstep(inst_id=0xffffffff) = 0xa4\n",
                "Info   : board bootstep is not support\r\n", 0);
}

TEST(BootStepTest, ACodeOfADriverIsNoMissingBootStep) {
    steps answers;
    answers.saved = "0x811101a4";
    answers.restored_step = "0";
    expect_steps(answers, "Error  : board get self bootstep fail. ret 0x811101a4 bootstep 0x0\r\n", -1);
}

// Nothing was saved: what stands there is written back, and the rest goes on.
TEST(BootStepTest, AStepThatCannotBeRead) {
    steps answers;
    answers.saved = "0x61";
    answers.restored_step = "0";
    expect_steps(answers, "Error  : board get self bootstep fail. ret 0x61 bootstep 0x0\r\n", -1);
    answers.saved = "0x61 step=7";
    answers.restored_step = "7";
    expect_steps(answers, "Error  : board get self bootstep fail. ret 0x61 bootstep 0x7\r\n", -1);
}

TEST(BootStepTest, AStepThatNoBoardHas) {
    steps answers;
    answers.saved = "0 step=256";
    answers.restored_step = "256";
    expect_steps(answers, "Error  : board get self bootstep fail. ret 0x0 bootstep 0x100\r\n", -1);
    answers.saved = "0 step=0xffffffff";
    answers.restored_step = "0xffffffff";
    answers.restore = "0x62";
    expect_steps(answers,
                 "Error  : board get self bootstep fail. ret 0x0 bootstep 0xffffffff\r\n"
                 "Error  : board set and get self bootstep fail. ret 0x62 get_bootstep 0xa set_bootstep 0xa\r\n",
                 -1);
}

TEST(BootStepTest, AStepThatCannotBeSet) {
    steps answers;
    answers.set = "0x63";
    answers.read_back = "0 step=55";
    expect_steps(answers,
                 "Error  : board set self bootstep fail. ret 0x63 set_bootstep 0xa\r\n"
                 "Error  : board set and get self bootstep fail. ret 0x0 get_bootstep 0x37 set_bootstep 0xa\r\n",
                 -1);
    // A driver that says so although the step was kept.
    answers.read_back = "0 step=10";
    expect_steps(answers, "Error  : board set self bootstep fail. ret 0x63 set_bootstep 0xa\r\n", -1);
}

TEST(BootStepTest, AReadBackThatFailsOrIsWrong) {
    steps answers;
    answers.read_back = "0x64";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x64 get_bootstep 0x0 set_bootstep 0xa\r\n", -1);
    answers.read_back = "0 step=55";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x0 get_bootstep 0x37 set_bootstep 0xa\r\n", -1);
    answers.read_back = "0";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x0 get_bootstep 0x0 set_bootstep 0xa\r\n", -1);
    answers.read_back = "0x64 step=10";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x64 get_bootstep 0xa set_bootstep 0xa\r\n", -1);
}

TEST(BootStepTest, AStepThatCannotBeWrittenBack) {
    steps answers;
    answers.restore = "0x65";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x65 get_bootstep 0xa set_bootstep 0xa\r\n", -1);
    answers.read_back = "0x64";
    expect_steps(answers,
                 "Error  : board set and get self bootstep fail. ret 0x64 get_bootstep 0x0 set_bootstep 0xa\r\n", -1);
}

TEST(BootStepTest, EveryCallFails) {
    expect_steps({"0x61", "0x62", "0x63", "0x64", "0x65", "0"},
                 "Error  : board get self bootstep fail. ret 0x61 bootstep 0x0\r\n"
                 "Error  : board set self bootstep fail. ret 0x62 set_bootstep 0xa\r\n"
                 "Error  : board set and get self bootstep fail. ret 0x63 get_bootstep 0x0 set_bootstep 0xa\r\n"
                 "Info   : board get peer bootstep fail. ret 0x65 peer_bootstep 0x0\r\n",
                 -1);
}

// The peer's step is information; what it is does not matter either.
TEST(BootStepTest, APeerThatCannotBeAskedIsNoFault) {
    steps answers;
    answers.peer = "0x811101a4";
    expect_steps(answers,
                 std::string(pass_line) + "Info   : board get peer bootstep fail. ret 0x811101a4 peer_bootstep 0x0\r\n",
                 0);
    answers.peer = "0xa4 step=9";
    expect_steps(answers,
                 std::string(pass_line) + "Info   : board get peer bootstep fail. ret 0xa4 peer_bootstep 0x9\r\n", 0);
    answers.peer = "0 step=4096";
    expect_steps(answers, pass_line, 0);
}

TEST(BootStepTest, OnTheSimulatedBoards) {
    EXPECT_EQ(run_part({}, "boot_step").out, std::string(pass_line) + "result 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "boot_step").out, std::string(pass_line) + "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "boot_step").out,
              std::string(pass_line) + "Info   : board get peer bootstep fail. ret 0x811101a4 peer_bootstep 0x0\r\n" +
                  "result 0\n");
}

// The slave's own step is what it was, seen by itself and by the master.
TEST(BootStepTest, TheBoardKeepsItsStep) {
    const std::string state = new_scratch_dir();
    ASSERT_EQ(run_part({"--board", "mpu_slave", "--state", state}, "boot_step").status, 0);
    const process_result own =
        run_sim({"--board", "mpu_slave", "--state", state, "--get", "slot10/board/unit/0/bootstep"}, {});
    EXPECT_EQ(own.out, "55\n");
}

TEST(BootStepTest, TheSavedStepIsBackBeforeThePeerIsAsked) {
    EXPECT_EQ(calls_of({"--board", "mpu_slave"}, "boot_step"),
              (std::vector<std::string>{"drv_board_get_self_bootstep(inst_id=0xffffffff)",
                                        "drv_board_set_self_bootstep(inst_id=0xffffffff, step=10)",
                                        "drv_board_get_self_bootstep(inst_id=0xffffffff)",
                                        "drv_board_set_self_bootstep(inst_id=0xffffffff, step=55)",
                                        "drv_board_get_peer_bootstep(inst_id=0xffffffff)"}));
}

// An operator's Ctrl-C waits while the board shows the step of the test.
TEST(BootStepTest, AnInterruptWaitsUntilTheSavedStepIsBack) {
    const std::string get = "drv_board_get_self_bootstep";
    const std::string set = "drv_board_set_self_bootstep";
    steps answers;
    answers.saved = "hang";
    expect_interrupts("boot_step", script_of(answers), get, 1, 1);
    answers = {};
    answers.set = "hang";
    expect_interrupts("boot_step", script_of(answers), set, 2, 2);
    answers = {};
    answers.read_back = "hang";
    expect_interrupts("boot_step", script_of(answers), get, 3, 2);
    answers = {};
    answers.restore = "hang";
    expect_interrupts("boot_step", script_of(answers), set, 4, 2);
    answers = {};
    answers.peer = "hang";
    expect_interrupts("boot_step", script_of(answers), "drv_board_get_peer_bootstep", 5, 1);
}
