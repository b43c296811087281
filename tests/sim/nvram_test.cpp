// Non-volatile RAM: two chips, of which one follows what is written to the other.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

const std::string in_step = "0x0 status=0\n";
const std::string on_its_way = "0x0 status=1\n";

const std::string ask = "drv_nvram_get_sync_status()";

std::string from(int chip, int64_t offset, int64_t length) {
    return "drv_nvram_read(chip_id=" + std::to_string(chip) + ", offset=" + std::to_string(offset) +
           ", len=" + std::to_string(length) + ")";
}

std::string into(int chip, int64_t offset, const std::string &text) {
    return "drv_nvram_write(chip_id=" + std::to_string(chip) + ", offset=" + std::to_string(offset) + ", buffer=\"" +
           text + "\", len=" + std::to_string(text.size()) + ")";
}

std::string holds(const std::string &text, size_t length = 0) {
    return "0x0 buffer=" + bytes(text, length) + "\n";
}

// On the virtual clock of a state of its own.
class NvramDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", "mpu_master"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(NvramDriver, ANewBoardHasZerosInBothChips) {
    EXPECT_EQ(answers({from(0, 0, 3), from(1, 65533, 3), ask}), holds("", 3) + holds("", 3) + in_step);
}

TEST_F(NvramDriver, TheOtherChipFollowsAfterTwoSeconds) {
    for (const int chip : {0, 1}) {
        SCOPED_TRACE(chip);
        EXPECT_EQ(answers({into(chip, 16, chip == 0 ? "ABCD" : "EFGH"), ask, "wait 1.999", ask}),
                  ok + on_its_way + on_its_way);
        EXPECT_EQ(answers({from(chip, 16, 4), from(1 - chip, 16, 4), "wait 0.001", from(1 - chip, 16, 4), ask}),
                  chip == 0 ? holds("ABCD") + holds("", 4) + holds("ABCD") + in_step
                            : holds("EFGH") + holds("ABCD") + holds("EFGH") + in_step);
    }
}

TEST_F(NvramDriver, NothingBesideWhatWasWrittenChanges) {
    answers({into(0, 16, "ABCD"), "wait 2"});
    EXPECT_EQ(answers({from(1, 14, 8), from(1, 14, 3), from(1, 19, 2), from(1, 12, 4), from(1, 20, 1)}),
              holds(std::string("\0\0ABCD\0\0", 8)) + holds(std::string("\0\0A", 3)) + holds(std::string("D\0", 2)) +
                  holds("", 4) + holds("", 1));
}

TEST_F(NvramDriver, EachWriteBeginsTheWaitAnew) {
    EXPECT_EQ(answers({into(0, 40, "AB"), "wait 1.5", into(0, 10, "CD"), "wait 1.999", from(1, 40, 2), from(1, 10, 2),
                       "wait 0.001", from(1, 40, 2), from(1, 10, 2), from(1, 12, 1)}),
              ok + ok + holds("", 2) + holds("", 2) + holds("AB") + holds("CD") + holds("", 1));
}

TEST_F(NvramDriver, WhatHasFollowedStays) {
    EXPECT_EQ(answers({into(0, 0, "A"), "wait 2", into(0, 100, "B"), ask, from(1, 0, 1), from(1, 100, 1), "wait 2",
                       into(1, 0, "C"), from(1, 100, 1), from(0, 0, 1)}),
              ok + ok + on_its_way + holds("A") + holds("", 1) + ok + holds("B") + holds("A"));
}

// The logic does not wait when the other chip is written: the later write wins where both meet.
TEST_F(NvramDriver, WritesToBothChips) {
    EXPECT_EQ(answers({into(0, 16, "AAAA"), into(1, 18, "BBBB"), from(0, 16, 6), from(1, 16, 6), "wait 2",
                       from(0, 16, 6), from(1, 16, 6), ask}),
              ok + ok + holds("AAAA", 6) + holds("AABBBB") + holds("AABBBB") + holds("AABBBB") + in_step);
}

TEST_F(NvramDriver, AWholeChip) {
    EXPECT_EQ(answers({"drv_nvram_write(chip_id=1, offset=0, buffer=\"all\", len=65536)", into(1, 65535, "Z"), "wait 2",
                       from(0, 0, 4), from(0, 65535, 1)}),
              ok + ok + holds("all", 4) + holds("Z"));
}

TEST_F(NvramDriver, ASilentChipIsNotFollowed) {
    EXPECT_EQ(answers({into(0, 0, "A"), from(1, 0, 1), into(1, 0, "B"), "wait 10", ask},
                      {"--set", "slot9/nvram/chip/1/silent=1"}),
              ok + not_ready + not_ready + "0x0 status=3\n");
    EXPECT_EQ(answers({ask, from(1, 0, 1)}, {"--set", "slot9/nvram/chip/1/silent=0"}), in_step + holds("A"));
    EXPECT_EQ(answers({ask}, {"--set", "slot9/nvram/chip/0/silent=1"}), "0x0 status=2\n");
}

// What only the silent chip had is lost once the other one is written.
TEST_F(NvramDriver, AChipThatFallsSilentBeforeItIsFollowed) {
    answers({into(0, 0, "AAAA")});
    EXPECT_EQ(answers({into(1, 8, "BB"), "wait 2", from(1, 0, 4)}, {"--set", "slot9/nvram/chip/0/silent=1"}),
              ok + holds("", 4));
    EXPECT_EQ(answers({from(0, 8, 2), from(0, 0, 4), from(1, 0, 4), ask}, {"--set", "slot9/nvram/chip/0/silent=0"}),
              holds("BB") + holds("", 4) + holds("", 4) + in_step);
}

TEST_F(NvramDriver, ARangeSetByHandThatIsNone) {
    for (const std::string first : {"70000", "50"}) {
        EXPECT_EQ(answers({ask, from(1, 0, 1)},
                          {"--set", "slot9/nvram/mirror/0/pending=1", "--set", "slot9/nvram/mirror/0/first=" + first,
                           "--set", "slot9/nvram/mirror/0/end=" + std::string(first == "50" ? "49" : "80000"), "--set",
                           "slot9/nvram/mirror/0/quiet=0"}),
                  in_step + holds("", 1));
    }
}

TEST_F(NvramDriver, HowLongItWaitsIsSaid) {
    EXPECT_EQ(answers({into(0, 0, "A"), ask, from(1, 0, 1)}, {"--set", "slot9/nvram/mirror/0/quiet=0"}),
              ok + in_step + holds("A"));
}

TEST_F(NvramDriver, BoardsHaveTheirOwn) {
    EXPECT_EQ(answers({into(0, 0, "A"), "drv_nvram_read(inst_id=0xff00000a, chip_id=0, len=1)",
                       "drv_nvram_read(inst_id=0xff000009, chip_id=0, len=1)",
                       "drv_nvram_get_sync_status(inst_id=0xff00000a)", "drv_nvram_get_sync_status(inst_id=0xff000009)",
                       "drv_nvram_get_sync_status(inst_id=0xff000007)", "drv_nvram_read(inst_id=0xff000005, len=1)",
                       "drv_nvram_write(inst_id=0xff000006, len=1, buffer=\"A\")"}),
              ok + holds("", 1) + holds("A") + in_step + on_its_way + not_supported + not_supported + no_such_instance);
}

TEST_F(NvramDriver, Limits) {
    EXPECT_EQ(answers({from(0, 65535, 1), from(0, 65535, 2), from(0, 65536, 1), from(0, 0, 0), from(0, 0, 65537),
                       from(0, 4294967295, 2), from(1, 0, 16777216), from(2, 0, 1), into(0, 65535, "AB"),
                       into(0, 65536, "A"), into(0, 4294967295, "AB"), into(0, 0, ""), into(2, 0, "A"), ask,
                       "drv_nvram_get_sync_status(pair_id=1)"}),
              holds("", 1) + out_of_range + out_of_range + out_of_range + out_of_range + out_of_range + out_of_range +
                  no_such_device + out_of_range + out_of_range + out_of_range + out_of_range + no_such_device +
                  in_step + no_such_device);
    EXPECT_EQ(answers({"drv_nvram_read(len=1, buffer=null)", "drv_nvram_write(len=1, buffer=null)",
                       "drv_nvram_get_sync_status(status=null)"}),
              null_pointer + null_pointer + null_pointer);
}

TEST(NvramOfASickBoard, IsNotFitted) {
    EXPECT_EQ(answers_of({"--state", new_scratch_dir() + "/state", "--board",
                          source_dir() + "/sim/chassis/sick/nvram_not_fitted.xml"},
                         {ask, from(0, 0, 1), into(0, 0, "A")}),
              not_supported + not_supported + not_supported);
}

} // namespace kestro_tests
