// The real-time clock: runs with board time, keeps what it was set to, and shows the same in its registers.
#include "sim/devices/management/rtc.h"

#include "sim/core/register_space.h"
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string time_of(const std::string &fields) {
    return "0x0 time={" + fields + "}\n";
}

std::string write_of(const std::string &fields) {
    return "drv_rtc_write_time(time={" + fields + "})";
}

const std::string clockless =
    R"(<board name="clockless" like="mpu" slot="9"><module name="sim_rtc" remove="yes"/></board>)";
const std::string read_time = "drv_rtc_read_time()";

// On the virtual clock of a state of its own.
class RtcDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

// A new virtual clock shows Thursday, 15 January 2026, 8 o'clock.
TEST_F(RtcDriver, ANewClockIsRight) {
    EXPECT_EQ(answers({read_time, "wait 61.25", read_time}),
              time_of("subsecond=0 second=0 minute=0 hour=8 day_of_week=4 day_of_month=15 month=1 year=26") +
                  time_of("subsecond=25 second=1 minute=1 hour=8 day_of_week=4 day_of_month=15 month=1 year=26"));
}

TEST_F(RtcDriver, RunsOnFromWhatItWasSetTo) {
    EXPECT_EQ(answers({write_of("subsecond=98 second=59 minute=59 hour=23 day_of_week=7 day_of_month=28 month=2 "
                                "year=28"),
                       read_time, "wait 0.02", read_time, "wait 86400", read_time}),
              ok + time_of("subsecond=98 second=59 minute=59 hour=23 day_of_week=7 day_of_month=28 month=2 year=28") +
                  time_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=1 day_of_month=29 month=2 year=28") +
                  time_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=2 day_of_month=1 month=3 year=28"));
}

TEST_F(RtcDriver, KeepsItsOffsetFromRunToRun) {
    EXPECT_EQ(answers({"wait 100",
                       write_of("subsecond=5 second=5 minute=5 hour=5 day_of_week=5 day_of_month=5 month=5 year=5"),
                       "wait 10"}),
              ok);
    EXPECT_EQ(answers({read_time, "wait 3650", read_time}),
              time_of("subsecond=5 second=15 minute=5 hour=5 day_of_week=5 day_of_month=5 month=5 year=5") +
                  time_of("subsecond=5 second=5 minute=6 hour=6 day_of_week=5 day_of_month=5 month=5 year=5"));
}

TEST_F(RtcDriver, BeginsAnewAfterACentury) {
    EXPECT_EQ(answers({write_of("subsecond=0 second=59 minute=59 hour=23 day_of_week=4 day_of_month=31 month=12 "
                                "year=99"),
                       "wait 1", read_time}),
              ok + time_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=5 day_of_month=1 month=1 year=0"));
}

TEST_F(RtcDriver, CarriesOverWhatTheCalendarLacks) {
    EXPECT_EQ(answers({write_of("subsecond=22 second=22 minute=22 hour=22 day_of_week=0 day_of_month=0 month=2 "
                                "year=22"),
                       read_time,
                       write_of("subsecond=0 second=60 minute=59 hour=23 day_of_week=1 day_of_month=31 month=12 "
                                "year=0"),
                       read_time,
                       write_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=1 day_of_month=0 month=1 year=0"),
                       read_time}),
              ok + time_of("subsecond=22 second=22 minute=22 hour=22 day_of_week=7 day_of_month=31 month=1 year=22") +
                  ok + time_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=1 day_of_month=1 month=1 year=1") +
                  ok + time_of("subsecond=0 second=0 minute=0 hour=0 day_of_week=1 day_of_month=31 month=12 year=99"));
}

TEST_F(RtcDriver, RefusesWhatItsDigitsDoNotHold) {
    const std::string good = "subsecond=1 second=2 minute=3 hour=4 day_of_week=5 day_of_month=6 month=7 year=8";
    const std::vector<std::pair<std::string, std::string>> wrong{
        {"subsecond=1", "subsecond=100"},
        {"second=2", "second=80"},
        {"minute=3", "minute=80"},
        {"hour=4", "hour=40"},
        {"day_of_week=5", "day_of_week=8"},
        {"day_of_month=6", "day_of_month=40"},
        {"month=7", "month=20"},
        {"year=8", "year=100"},
        {"year=8", "year=-1"},
        {"subsecond=1", "subsecond=-128"},
    };
    std::vector<std::string> lines{write_of(good)};
    std::string said = ok;
    for (const auto &[right, instead] : wrong) {
        lines.push_back(write_of(replaced(good, right, instead)));
        said += bad_value;
    }
    lines.push_back(read_time);
    EXPECT_EQ(answers(lines), said + time_of(good));
}

TEST_F(RtcDriver, RegistersShowTheTimeInDecimalDigits) {
    EXPECT_EQ(answers({write_of("subsecond=9 second=58 minute=37 hour=16 day_of_week=3 day_of_month=29 month=11 "
                                "year=45"),
                       "drv_rtc_reg_dump(start=0, num=8, len=64)", "drv_rtc_reg_dump(start=7, num=5, len=64)", "wait 2",
                       "drv_rtc_reg_dump(start=1, num=2, len=64)"}),
              ok + "0x0 buffer=\"0x00: 09 58 37 16 03 29 11 45\\r\\n\"\n" +
                  "0x0 buffer=\"0x07: 45 00 00 ff ff\\r\\n\"\n" + "0x0 buffer=\"0x01: 00 38\\r\\n\"\n");
    EXPECT_EQ(answers({"drv_rtc_reg_dump(start=0x18, num=8, len=64)", "drv_rtc_reg_dump(start=4, num=9, len=64)"}),
              "0x0 buffer=\"0x18: 00 00 00 00 00 00 00 00\\r\\n\"\n"
              "0x0 buffer=\"0x04: 03 29 11 45 00 00 ff ff\\r\\n0x0c: ff\\r\\n\"\n");
}

TEST_F(RtcDriver, DumpNamesAllRegistersOfTheClock) {
    EXPECT_EQ(answers({write_of("subsecond=9 second=58 minute=37 hour=16 day_of_week=3 day_of_month=29 month=11 "
                                "year=45"),
                       "drv_rtc_dump_info(len=2000)"}),
              ok + "0x0 buffer=\"0x00: 0x09 subsecond\\r\\n0x01: 0x58 second\\r\\n0x02: 0x37 minute\\r\\n"
                   "0x03: 0x16 hour\\r\\n0x04: 0x03 day_of_week\\r\\n0x05: 0x29 day_of_month\\r\\n"
                   "0x06: 0x11 month\\r\\n0x07: 0x45 year\\r\\n0x08: 0x00 status\\r\\n0x09: 0x00 trim\\r\\n\"\n");
}

TEST_F(RtcDriver, SickClockTellsItsFaults) {
    EXPECT_EQ(answers({"drv_rtc_check(len=100)", "drv_rtc_reg_dump(start=8, num=1, len=64)"}),
              "0x0 result=0 buffer=\"\"\n0x0 buffer=\"0x08: 00\\r\\n\"\n");
    EXPECT_EQ(answers({"drv_rtc_check(len=100)", "drv_rtc_reg_dump(start=8, num=1, len=64)"},
                      {"--set", "slot9/rtc/chip/0/battery=2499"}),
              "0x0 result=1 buffer=\"the battery is low: 2499 mV\"\n0x0 buffer=\"0x08: 02\\r\\n\"\n");
    EXPECT_EQ(answers({"drv_rtc_check(len=100)", "drv_rtc_reg_dump(start=8, num=1, len=64)",
                       "drv_rtc_write_time(time={day_of_month=1 month=1})", "drv_rtc_check(len=100)"},
                      {"--set", "slot9/rtc/chip/0/oscillator_stopped=1"}),
              "0x0 result=1 buffer=\"the oscillator has stopped since the time was set, the battery is low: 2499 mV\"\n"
              "0x0 buffer=\"0x08: 03\\r\\n\"\n" +
                  ok + "0x0 result=1 buffer=\"the battery is low: 2499 mV\"\n");
    EXPECT_EQ(answers({"drv_rtc_check(len=100)"}, {"--set", "slot9/rtc/chip/0/battery=2500"}),
              "0x0 result=0 buffer=\"\"\n");
}

TEST_F(RtcDriver, BatteryIsLowBelowTwoAndAHalfVolts) {
    const std::string battery = "drv_rtc_read_battery_status()";
    EXPECT_EQ(answers({battery}), "0x0 status=0\n");
    EXPECT_EQ(answers({battery}, {"--set", "slot9/rtc/chip/0/battery=2500"}), "0x0 status=0\n");
    EXPECT_EQ(answers({battery}, {"--set", "slot9/rtc/chip/0/battery=2499"}), "0x0 status=1\n");
}

// Twenty hours are bit 5 of the hours; those up to 19 are kept.
TEST_F(RtcDriver, ABitOfTheHoursThatIsNotTaken) {
    const std::string in_the_evening =
        "subsecond=9 second=58 minute=37 hour=22 day_of_week=3 day_of_month=29 month=11 year=45";
    const std::string before_eight =
        "subsecond=9 second=58 minute=37 hour=19 day_of_week=3 day_of_month=29 month=11 year=45";
    EXPECT_EQ(answers({write_of(in_the_evening), read_time, write_of(before_eight), read_time},
                      {"--set", "slot9/rtc/chip/0/hour_lost=0x20"}),
              ok + time_of(replaced(in_the_evening, "hour=22", "hour=2")) + ok + time_of(before_eight));
}

TEST_F(RtcDriver, EachBoardHasItsOwn) {
    EXPECT_EQ(answers({"drv_rtc_write_time(time={day_of_month=1 month=1 year=50})"}), ok);
    for (const char *seat : {"mpu_slave", "lpu"}) {
        EXPECT_EQ(answers({read_time}, {"--board", seat}),
                  time_of("subsecond=0 second=0 minute=0 hour=8 day_of_week=4 day_of_month=15 month=1 year=26"));
    }
}

TEST_F(RtcDriver, WrongCalls) {
    EXPECT_EQ(answers({"drv_rtc_read_time(time=null)", "drv_rtc_write_time(time=null)",
                       "drv_rtc_dump_info(len=2000, buffer=null)", "drv_rtc_read_battery_status(status=null)",
                       "drv_rtc_reg_dump(num=1, len=9, buffer=null)", "drv_rtc_check(len=9, buffer=null)",
                       "drv_rtc_check(len=9, result=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
    const std::string out_of_range = "0x81110107\n";
    EXPECT_EQ(
        answers({"drv_rtc_reg_dump(start=0, num=0, len=64)", "drv_rtc_reg_dump(start=0x20, num=1, len=64)",
                 "drv_rtc_reg_dump(start=0x1f, num=2, len=64)", "drv_rtc_reg_dump(start=0x1f, num=0xffffffff, len=64)",
                 "drv_rtc_reg_dump(start=0x1f, num=1, len=64)"}),
        out_of_range + out_of_range + out_of_range + out_of_range + "0x0 buffer=\"0x1f: 00\\r\\n\"\n");
    EXPECT_EQ(answers({"drv_rtc_reg_dump(start=8, num=1, len=10)", "drv_rtc_reg_dump(start=8, num=1, len=11)",
                       "drv_rtc_check(len=0)", "drv_rtc_dump_info(len=100)"}),
              too_small + "0x0 buffer=\"0x08: 00\\r\\n\"\n" + too_small + too_small);
}

TEST(RtcDescription, ABoardWithoutAClock) {
    const test_board board = new_board(scratch_file("clockless.xml", clockless));
    EXPECT_EQ(answers(board, {read_time, "drv_rtc_write_time(time={day_of_month=1})", "drv_rtc_dump_info(len=9)",
                              "drv_rtc_reg_dump(num=1, len=9)", "drv_rtc_check(len=9)"}),
              not_supported + not_supported + not_supported + not_supported + not_supported);
}

// The bus sees the same clock as the driver, and sets it.
TEST(RtcSpace, IsTheOtherFaceOfTheClock) {
    using namespace kestro_sim;
    const test_board made = new_delivered("mpu_master");
    board b(made.description, made.state, made.seat);
    const auto chip = b.find_at<rtc::family>(b.self());
    const register_space *space = find_space("rtc", chip);
    ASSERT_NE(space, nullptr);
    ASSERT_TRUE(b.begin_operation());
    rtc::set(b, chip, {0, 0, 30, 12, 2, 15, 6, 30});
    write_space(b, *space, chip, 0x03, 0x23);
    write_space(b, *space, chip, 0x05, 0x19);
    write_space(b, *space, chip, 0x06, 0x1A); // no decimal digit
    write_space(b, *space, chip, 0x03, 0x40); // four tens of hours
    const rtc::counters time = rtc::read(b, chip);
    EXPECT_EQ(time.hour, 23U);
    EXPECT_EQ(time.minute, 30U);
    EXPECT_EQ(time.day_of_month, 19U);
    EXPECT_EQ(time.day_of_week, 2U);
    EXPECT_EQ(time.month, 6U);
    EXPECT_EQ(time.year, 30U);
    EXPECT_EQ(read_space(b, *space, chip, 0x03), 0x23U);
    write_space(b, *space, chip, 0x1F, 0x5A);
    EXPECT_EQ(read_space(b, *space, chip, 0x1F), 0x5AU);
    EXPECT_EQ(read_space(b, *space, chip, 0x10), 0U);
}

// The launcher's clock is the real one: the seconds go on.
TEST(RtcSpace, TheTechnicianSetsTheClock) {
    const process_result result =
        run_process({launcher(), "--state", new_scratch_dir() + "/state", "--set", "slot9/rtc/0/0x01=0x00", "--set",
                     "slot9/rtc/0/0x02=0x45", "--set", "slot9/rtc/0/0x03=0x23", "--set", "slot9/rtc/0/0x07=0x31",
                     "--get", "slot9/rtc/0/0x02", "--get", "slot9/rtc/0/0x03", "--get", "slot9/rtc/0/0x07"});
    EXPECT_EQ(result.out, "0x45\n0x23\n0x31\n");
    EXPECT_EQ(result.err, "");
}

TEST(RtcSpace, SoftwareClearsTheStoppedBitAndCannotSetIt) {
    using namespace kestro_sim;
    const test_board made = new_altered("mpu_master", {{"self/sim_rtc/chip/0/oscillator_stopped", "1"}});
    board b(made.description, made.state, made.seat);
    const auto chip = b.find_at<rtc::family>(b.self());
    const register_space *space = find_space("rtc", chip);
    ASSERT_TRUE(b.begin_operation());
    EXPECT_EQ(read_space(b, *space, chip, 0x08), 0x01U);
    write_space(b, *space, chip, 0x08, 0x00);
    EXPECT_EQ(read_space(b, *space, chip, 0x08), 0x00U);
    write_space(b, *space, chip, 0x08, 0xFF);
    EXPECT_EQ(read_space(b, *space, chip, 0x08), 0x00U);
}

} // namespace kestro_tests
