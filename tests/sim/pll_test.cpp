// Clock synthesisers: they lock in board time, lose their lock with their reference, and dump their registers.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";

// Chip 0 has the station clock at its first reference and the synchronous clock at its second, chip 1 the local
// oscillator and a recovered clock.
const std::string status_of_0 = "drv_pll_get_reg(chip_id=0, reg=4)";
const std::string status_of_1 = "drv_pll_get_reg(chip_id=1, reg=4)";
const std::string init_0 = "drv_pll_initialization(chip_id=0)";

std::string value(uint32_t number) {
    return "0x0 value=" + std::to_string(number) + "\n";
}

std::string write_0(const std::string &reg, const std::string &to) {
    return "drv_pll_set_reg(chip_id=0, reg=" + reg + ", value=" + to + ")";
}

std::string read_0(const std::string &reg) {
    return "drv_pll_get_reg(chip_id=0, reg=" + reg + ")";
}

class PllDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat_};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string seat_ = "mpu_master";
};

} // namespace

TEST_F(PllDriver, ANewBoardIsLocked) {
    EXPECT_EQ(answers({status_of_0, status_of_1}), value(0x11) + value(0x11));
    seat_ = "lpu";
    EXPECT_EQ(answers({status_of_0, status_of_1}), value(0x11) + value(0x11));
}

TEST_F(PllDriver, LocksSomeTimeAfterInitialisation) {
    EXPECT_EQ(answers({init_0, status_of_0, status_of_1, "wait 0.499", status_of_0, "wait 0.001", status_of_0}),
              ok + value(0x10) + value(0x11) + value(0x10) + value(0x11));
}

TEST_F(PllDriver, LocksFromRunToRun) {
    EXPECT_EQ(answers({init_0, "wait 0.3", status_of_0}), ok + value(0x10));
    EXPECT_EQ(answers({"wait 0.1", status_of_0}), value(0x10));
    EXPECT_EQ(answers({"wait 0.1", status_of_0}), value(0x11));
}

TEST_F(PllDriver, TheTechnicianSaysHowLongItTakes) {
    EXPECT_EQ(answers({init_0, "wait 2.5", status_of_0, "wait 0.5", status_of_0},
                      {"--set", "slot9/pll/chip/0/lock_time=3000"}),
              ok + value(0x10) + value(0x11));
}

TEST_F(PllDriver, LostReferencesShowInTheStatus) {
    EXPECT_EQ(answers({status_of_0, status_of_1}, {"--set", "slot9/clock/source/1/present=0"}),
              value(0x23) + value(0x11));
    EXPECT_EQ(answers({status_of_0, status_of_1}, {"--set", "slot9/clock/source/2/present=0"}),
              value(0x0E) + value(0x11));
    EXPECT_EQ(answers({status_of_0}, {"--set", "slot9/clock/source/1/present=1"}), value(0x15));
}

TEST_F(PllDriver, AReferenceThatIsTakenAloneIsMissed) {
    EXPECT_EQ(answers({write_0("3", "1"), status_of_0, "wait 1", status_of_0}), ok + value(0x11) + value(0x11));
    EXPECT_EQ(answers({status_of_0}, {"--set", "slot9/clock/source/1/present=0"}), value(0x0A));
}

TEST_F(PllDriver, AnotherReferenceIsAnotherLock) {
    EXPECT_EQ(answers({write_0("3", "2"), read_0("3"), status_of_0, "wait 0.5", status_of_0, write_0("3", "3"),
                       read_0("3"), status_of_0}),
              ok + value(2) + value(0x20) + value(0x21) + ok + value(2) + value(0x21));
    EXPECT_EQ(answers({write_0("3", "0"), status_of_0, "wait 0.5", status_of_0}), ok + value(0x10) + value(0x11));
}

TEST_F(PllDriver, AReferenceThatComesBackIsLockedOnAnew) {
    EXPECT_EQ(answers({write_0("3", "2"), "wait 1", "drv_board_set_synclk_enable(enable=0)", status_of_0,
                       "drv_board_set_synclk_enable(enable=1)", status_of_0, "wait 0.5", status_of_0}),
              ok + ok + value(0x0C) + ok + value(0x20) + value(0x21));
}

TEST_F(PllDriver, RatioOfTheLoopIsLockedOnAnew) {
    EXPECT_EQ(answers({write_0("0x11", "0x50"), status_of_0, write_0("0x11", "0x60"), status_of_0, read_0("0x11"),
                       "wait 0.5", status_of_0, write_0("0x10", "5"), read_0("0x10"), status_of_0, "wait 0.5",
                       write_0("0x12", "9"), read_0("0x12"), status_of_0}),
              ok + value(0x11) + ok + value(0x10) + value(0x60) + value(0x11) + ok + value(5) + value(0x10) + ok +
                  value(9) + value(0x11));
}

TEST_F(PllDriver, InitialisationAndResetPutRegistersBack) {
    const std::vector<std::string> read_all{read_0("2"), read_0("3"), read_0("0x10"), read_0("0x11"), read_0("0x12")};
    const std::string fresh = value(1) + value(0) + value(0x04) + value(0x50) + value(0x08);
    const std::vector<std::string> spoil{write_0("2", "0x7e"), write_0("3", "2"), write_0("0x10", "1"),
                                         write_0("0x11", "2"), write_0("0x12", "3")};
    const std::string spoilt = value(0) + value(2) + value(1) + value(2) + value(3);
    EXPECT_EQ(answers(read_all), fresh);
    for (const std::string &way : {init_0, write_0("2", "0x80")}) {
        EXPECT_EQ(answers(spoil), ok + ok + ok + ok + ok);
        EXPECT_EQ(answers(read_all), spoilt);
        EXPECT_EQ(answers({way, status_of_0, "wait 0.5", status_of_0}), ok + value(0x10) + value(0x11));
        EXPECT_EQ(answers(read_all), fresh);
    }
}

TEST_F(PllDriver, RegistersOfTheChip) {
    EXPECT_EQ(answers({read_0("0"), read_0("1"), read_0("15"), read_0("5"), write_0("0", "0"), write_0("1", "0"),
                       write_0("4", "0"), write_0("5", "0"), write_0("15", "0x3c"), read_0("0"), read_0("1"),
                       read_0("4"), read_0("5"), read_0("15")}),
              value(0x9C) + value(2) + value(0xA5) + value(0xFF) + ok + ok + ok + ok + ok + value(0x9C) + value(2) +
                  value(0x11) + value(0xFF) + value(0x3C));
    EXPECT_EQ(answers({"drv_pll_get_reg(chip_id=1, reg=15)"}), value(0xA5));
}

TEST_F(PllDriver, Dump) {
    EXPECT_EQ(answers({"drv_pll_reg_dump(chip_id=0, start=0, num=32, len=200)",
                       "drv_pll_reg_dump(chip_id=0, start=15, num=3, len=15)",
                       "drv_pll_reg_dump(chip_id=0, start=15, num=3, len=14)",
                       "drv_pll_reg_dump(chip_id=0, start=32, num=0, len=1)",
                       "drv_pll_reg_dump(chip_id=0, start=32, num=0, len=0)"}),
              "0x0 buffer=\"0x00: 9c 02 01 00 11 ff ff ff ff ff ff ff ff ff ff a5\\n"
              "0x10: 04 50 08 ff ff ff ff ff ff ff ff ff ff ff ff ff\"\n"
              "0x0 buffer=\"0x0f: a5 04 50\"\n" +
                  too_small + "0x0 buffer=\"\"\n" + too_small);
    EXPECT_EQ(answers({"drv_pll_reg_dump(chip_id=0, start=0, num=33, len=200)",
                       "drv_pll_reg_dump(chip_id=0, start=33, num=0, len=200)",
                       "drv_pll_reg_dump(chip_id=0, start=31, num=2, len=200)",
                       "drv_pll_reg_dump(chip_id=0, start=1, num=0xffffffff, len=200)"}),
              out_of_range + out_of_range + out_of_range + out_of_range);
}

TEST_F(PllDriver, RefusesWhatThereIsNot) {
    EXPECT_EQ(answers({"drv_pll_get_reg(chip_id=2)", "drv_pll_set_reg(chip_id=2)", "drv_pll_initialization(chip_id=2)",
                       "drv_pll_reg_dump(chip_id=2, len=64)", "drv_pll_get_reg(inst_id=0xff000005)",
                       "drv_pll_initialization(inst_id=0xff000006)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + not_supported + no_such_instance);
    EXPECT_EQ(answers({read_0("32"), write_0("32", "0"), write_0("15", "256"), "drv_pll_get_reg(value=null)",
                       "drv_pll_reg_dump(num=1, len=64, buffer=null)"}),
              out_of_range + out_of_range + bad_value + null_pointer + null_pointer);
}

} // namespace kestro_tests
