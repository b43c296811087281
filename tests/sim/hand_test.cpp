// The bench technician's hand, through the real launcher.
#include "sim/core/store.h"
#include "sim/core/time.h"
#include "tests/sim/support.h"

#include <gtest/gtest.h>
#include <optional>

namespace kestro_tests {

namespace {

// Where the master board's registers are.
const std::string here = "slot9";

class Hand : public testing::Test {
  protected:
    process_result run(std::vector<std::string> words) const {
        words.insert(words.begin(), {build_dir() + "/kestro_sim", "--state", state_});
        return run_process(words);
    }
    std::string prints(const std::vector<std::string> &words) const {
        const process_result result = run(words);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
        return result.out;
    }
    void expect_refused(const std::vector<std::string> &words, const std::string &said) const {
        const process_result result = run(words);
        EXPECT_EQ(result.err, "kestro_sim: " + said + "\n");
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.status, 2);
    }

    // As if the last run had been an hour ago on the desk.
    void let_an_hour_pass_on_the_desk() const {
        kestro_sim::store kept(state_);
        const uint64_t hour = 3600ULL * static_cast<uint64_t>(kestro_sim::nanoseconds_per_second);
        const std::optional<uint64_t> noted = kept.get("time/real_ns");
        ASSERT_TRUE(noted.has_value());
        kestro_sim::change writes;
        writes.put("time/real_ns", *noted - hour);
        ASSERT_TRUE(kept.commit(writes));
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(Hand, ListsARegisterWithItsUnit) {
    EXPECT_EQ(prints({"--list", here + "/voltage/rail/2/millivolts"}), here + "/voltage/rail/2/millivolts = 1004 mV\n");
}

TEST_F(Hand, ListsADevice) {
    const std::string lamp = here + "/led/lamp/0/";
    EXPECT_EQ(prints({"--list", here + "/led/lamp/0"}), lamp + "color = 1 (green)\n" + lamp + "freq = 5 0.1 Hz\n" +
                                                            lamp + "mode = 1 (software)\n" + lamp + "colors = 0x0f\n" +
                                                            lamp + "freq_max = 100 0.1 Hz\n");
    EXPECT_EQ(prints({"--list=" + here + "/led/patch/1/"}), here + "/led/patch/1/answer = \"panel logic\"\n");
}

TEST_F(Hand, ListsEverythingWithoutAPath) {
    const std::string all = prints({"--list"});
    for (const char *path :
         {"/voltage/rail/0/millivolts = 12040 mV\n", "/cpld/0/0x20 = 0x81 (lamp0)\n",
          "/board/dimm/0/part_number = \"DIMM-4G-DDR4-2400-72\"\n", "/reset/chip/1/desc = \"clock\"\n"}) {
        EXPECT_NE(all.find(here + path), std::string::npos) << path;
    }
    EXPECT_EQ(all.find("/identity/elabel"), std::string::npos);
}

TEST_F(Hand, GetsTheValueAlone) {
    EXPECT_EQ(prints({"--get", here + "/voltage/rail/2/millivolts", "--get", here + "/voltage/rail/2/desc"}),
              "1004\n1V0 processor core\n");
    EXPECT_EQ(prints({"--get", here + "/cpld/0/0x0", "--get", here + "/board/logic/0/version"}), "0xc5\n0x0107\n");
}

TEST_F(Hand, SetsBeforeTheRun) {
    const std::string run =
        prints({"--set", here + "/voltage/rail/2/millivolts=850", "--set", here + "/voltage/rail/2/desc=core", "--",
                "voltage_test", "voltage_get_value", "2"});
    EXPECT_NE(run.find("drv_voltage_get_value:850\r\n"), std::string::npos) << run;
    EXPECT_EQ(prints({"--get", here + "/voltage/rail/2/millivolts", "--get", here + "/voltage/rail/2/desc"}),
              "850\ncore\n");
}

TEST_F(Hand, ActsInTheOrderOfTheLine) {
    const std::string seconds = here + "/board/bbox/0/seconds";
    EXPECT_EQ(prints({"--get", seconds, "--set", seconds + "=90", "--get", seconds, "--set", seconds + "=0x10",
                      "--list", seconds}),
              "60\n90\n" + seconds + " = 16 s\n");
}

TEST_F(Hand, SetsWhatDriversOnlyRead) {
    EXPECT_EQ(prints({"--set", here + "/reset/board/0/button=1", "--get", here + "/cpld/0/0x30"}), "0x93\n");
    EXPECT_EQ(prints({"--set", here + "/cpld/0/0x30=0x12", "--get", here + "/reset/board/0/soft_start_ok", "--get",
                      here + "/reset/board/0/cool", "--get", here + "/reset/board/0/button"}),
              "0\n0\n1\n");
    EXPECT_EQ(prints({"--set", here + "/led/lamp/1/color=green", "--get", here + "/led/lamp/1/color", "--set",
                      here + "/board/dimm/0/celsius=-5", "--get", here + "/board/dimm/0/celsius"}),
              "1\n-5\n");
}

TEST_F(Hand, TextsAreAsLongAsTheyMayBe) {
    const std::string part = here + "/board/dimm/0/part_number";
    EXPECT_EQ(prints({"--set", part + "=", "--get", part, "--set", part + "=ABCDEFGH", "--get", part, "--set",
                      part + "=12345678901234567890", "--get", part}),
              "\nABCDEFGH\n12345678901234567890\n");
    EXPECT_EQ(prints({"--get", here + "/spd/0/0x149", "--get", here + "/spd/0/0x15c"}), "0x31\n0x30\n");
    expect_refused({"--set", part + "=123456789012345678901"},
                   "--set: '123456789012345678901' is no value of " + part + "; right is a text of at most 20 bytes");
}

TEST_F(Hand, NamesTheNearestPath) {
    const std::string rail = here + "/voltage/rail/2/";
    expect_refused({"--get", rail + "milivolts"},
                   "--get: there is no '" + rail + "milivolts'; the nearest is '" + rail + "millivolts'");
    expect_refused({"--list", here + "/voltaeg/rail"},
                   "--list: there is no '" + here + "/voltaeg/rail'; the nearest is '" + here + "/voltage'");
    expect_refused({"--set", here + "/cpld/0/0x33=1"},
                   "--set: there is no '" + here + "/cpld/0/0x33'; the nearest is '" + here + "/cpld/0/0x23'");
}

TEST_F(Hand, SaysWhichValuesAreRight) {
    const std::string rail = here + "/voltage/rail/2/millivolts";
    expect_refused({"--set", rail + "=60001"},
                   "--set: '60001' is no value of " + rail + "; right is a number from 0 to 60000 (mV)");
    expect_refused({"--set", here + "/led/lamp/0/color=violet"},
                   "--set: 'violet' is no value of " + here +
                       "/led/lamp/0/color; right is 0 off, 1 green, 2 red, 3 yellow");
    expect_refused({"--set", here + "/cpld/0/0x20=0x100"},
                   "--set: '0x100' is no value of " + here + "/cpld/0/0x20; right is a number of 8 bits");
    expect_refused({"--set", rail}, "--set: '" + rail + "' has no value; right is --set PATH=VALUE");
    expect_refused({"--set", here + "/led/lamp/0/colors=1"},
                   "--set: " + here + "/led/lamp/0/colors is how the device is built; change it in the description");
    expect_refused({"--set", here + "/spd/0/0x140=1"},
                   "--set: " + here + "/spd/0/0x140 is worked out by the device; set the registers it is made of");
    expect_refused({"--get", here + "/led/lamp/0"},
                   "--get: '" + here + "/led/lamp/0' names more than one register; kestro_sim --list " + here +
                       "/led/lamp/0 shows them");
    expect_refused({"--get"}, "--get: its value is missing; right is --get PATH");
}

// The link of an inner port begins anew at the moment at which its loop is taken away, and needs two seconds.
TEST_F(Hand, BeforeAVirtualRunTheClockStandsStill) {
    const std::string loop = here + "/inner_mac/0/0x00=";
    prints(
        {"--clock", "virtual", "--set", loop + "1", "--run", "kestro_call", "--", "drv_ieth_get_link_status(port=0)"});
    let_an_hour_pass_on_the_desk();
    EXPECT_EQ(prints({"--clock", "virtual", "--set", loop + "0", "--run", "kestro_call", "--", "wait 1.999",
                      "drv_ieth_get_link_status(port=0)", "wait 0.001", "drv_ieth_get_link_status(port=0)"}),
              "drv_ieth_get_link_status(port=0) = 0x0 status=0\n"
              "drv_ieth_get_link_status(port=0) = 0x0 status=1\n");
}

TEST_F(Hand, NothingIsDoneWhenOneOfThemIsWrong) {
    const std::string seconds = here + "/board/bbox/0/seconds";
    EXPECT_EQ(run({"--set", seconds + "=90", "--get", "nowhere"}).status, 2);
    EXPECT_EQ(prints({"--get", seconds}), "60\n");
}

TEST_F(Hand, OutputThatCannotBeWrittenIsAnError) {
    const auto in_vain = [](const std::string &options) {
        return run_process({"/bin/sh", "-c",
                            "exec ${KESTRO_EMULATOR:-} " + build_dir() + "/kestro_sim --state " + new_scratch_dir() +
                                "/state " + options + " > /dev/full"});
    };
    EXPECT_EQ(in_vain("--list").err,
              "kestro_sim: standard output: cannot be written; it takes what --list and --get show\n");
    EXPECT_EQ(in_vain("--list").status, 2);
    EXPECT_EQ(in_vain("--help").err, "kestro_sim: standard output: cannot be written; it takes what --help shows\n");
    EXPECT_EQ(in_vain("--help").status, 2);
}

} // namespace kestro_tests
