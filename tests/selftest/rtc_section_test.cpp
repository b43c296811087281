// The rtc section: battery, time, agreement with the system clock, a write test and the registers.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string described = entry_count("rtc", "rtc_chip", 1);

// The virtual clock stands at Thursday, 15 January 2026, 8 o'clock.
const std::string on_time = "{subsecond=7 second=0 minute=0 hour=8 day_of_week=4 day_of_month=15 month=1 year=26}";
const std::string one_second_on =
    "{subsecond=7 second=1 minute=0 hour=8 day_of_week=4 day_of_month=15 month=1 year=26}";
const std::string test_time = "{subsecond=22 second=22 minute=22 hour=22 day_of_week=0 day_of_month=0 month=2 year=22}";
const std::string test_time_carried =
    "{subsecond=22 second=22 minute=22 hour=22 day_of_week=7 day_of_month=31 month=1 year=22}";

std::string battery(const std::string &answer) {
    return "drv_rtc_read_battery_status() = " + answer + "\n";
}

std::string read_rule(const std::string &time) {
    return "drv_rtc_read_time() = 0 time=" + time + " x1\n";
}

std::string write_rule(const std::string &time, const std::string &answer) {
    return "drv_rtc_write_time(time=" + time + ") = " + answer + " x1\n";
}

const std::string good_battery = battery("0 status=0");
const std::string good_write = write_rule(test_time, "0") + read_rule(test_time_carried);
const std::string good_dump = "drv_rtc_dump_info(len=2000) = 0 buffer=\"all registers\"\n"
                              "drv_log_record(log_id=32, level=2, flag=0, text=\"[RTC_TEST]:RTC get dump info: "
                              "\\r\\nall registers\\r\\n\") = 0\n";
const std::string good_clock = good_battery + read_rule(on_time) + good_write + write_rule(one_second_on, "0");

// The log goes to the console at once, the section's own lines come when it is over.
const std::string log_line = "\r\n[RTC_TEST][info]:RTC get dump info: \r\nall registers\r\n";
const std::string battery_line = "Success: rtc battery status test pass\r\n";
const std::string read_lines = "Success: read rtc time test pass\r\n"
                               "\trtc time: 2026/1/15 8:0:0:7 Week4(7 for Sunday)\r\n";
const std::string sys_line = "\tsys time: 2026/1/15 8:0:0:0 Week4(0 for Sunday)\r\n";
const std::string agree_lines =
    "Success: rtc system time consistency test pass\r\n" + sys_line + "\ttime diff: 0.000000(s)\r\n";
const std::string written_line = "\twrite time: 2022/2/0 22:22:22:22 \r\n";
const std::string write_lines = "Success: write rtc time test pass\r\n" + written_line +
                                "\tread  time: 2022/1/31 22:22:22:22 \r\n"
                                "\ttime diff: 0.000000(s)\r\n";
const std::string recover_line = "\tInfo :recover time ret:0x0\r\n";
const std::string dump_line = "Success: dump rtc reg test pass\r\n";
const std::string clock_lines = battery_line + read_lines + agree_lines + write_lines + recover_line;

void expect_rtc(const std::string &script, const std::string &lines, int result) {
    expect_part("rtc", described + script, lines, result);
}

// A good clock but for its battery.
void expect_battery(const std::string &rule, const std::string &line, int result) {
    expect_rtc(rule + read_rule(on_time) + good_write + write_rule(one_second_on, "0") + good_dump,
               log_line + line + read_lines + agree_lines + write_lines + recover_line + dump_line, result);
}

// A good clock that shows another time, which is written back with one second more.
void expect_time(const std::string &time, const std::string &next, const std::string &lines, int result) {
    expect_rtc(good_battery + read_rule(time) + good_write + write_rule(next, "0") + good_dump,
               log_line + battery_line + lines + write_lines + recover_line + dump_line, result);
}

// A good clock but for its write test.
void expect_write(const std::string &script, const std::string &lines, int result) {
    expect_rtc(good_battery + read_rule(on_time) + script + write_rule(one_second_on, "0") + good_dump,
               log_line + battery_line + read_lines + agree_lines + lines + recover_line + dump_line, result);
}

// A good clock but for its dump.
void expect_dump(const std::string &script, const std::string &logged, const std::string &line, int result) {
    expect_rtc(good_clock + script, logged + clock_lines + line, result);
}

// A board whose clock was set: what it counted, in nanoseconds since 2000, when the board was made.
std::string board_that_counts(const std::string &nanoseconds) {
    return scratch_file("board.xml", "<board name=\"late\" like=\"mpu\" slot=\"9\"><module name=\"sim_rtc\">"
                                     "<node name=\"chip\"><entry name=\"0\"><element name=\"offset\" value=\"" +
                                         nanoseconds + "\"/></entry></node></module></board>");
}

} // namespace

TEST(RtcSectionTest, AGoodClock) {
    expect_rtc(good_clock + good_dump, log_line + clock_lines + dump_line, 0);
}

TEST(RtcSectionTest, ABoardWithoutAClockFails) {
    expect_part("rtc", entry_count("rtc", "rtc_chip", 0), "Error: rtc xml get entry num fail.\r\n", -1);
    expect_part("rtc", no_entry_count("rtc", "rtc_chip", "0x51 count=1"), "Error: rtc xml get entry num fail.\r\n", -1);
}

// The drivers know one clock, however many entries there are.
TEST(RtcSectionTest, TheClockIsTestedOnce) {
    expect_part("rtc", entry_count("rtc", "rtc_chip", 2) + good_clock + good_dump, log_line + clock_lines + dump_line,
                0);
}

TEST(RtcSectionTest, Battery) {
    expect_battery(battery("0x811101a4 status=1"), "Info   : rtc battery status test is not support\r\n", 0);
    expect_battery(battery("0x21"), "Error : rtc battery status test fail\r\n", -1);
    expect_battery(battery("0 status=1"), "Error : rtc battery status test fail\r\n", -1);
    expect_battery(battery("0 status=0xffffffff"), "Error : rtc battery status test fail\r\n", -1);
    expect_battery(battery("0"), battery_line, 0);
}

// There would be nothing to put back, so the test time is not written.
TEST(RtcSectionTest, AClockThatCannotBeReadIsNotWritten) {
    expect_rtc(good_battery + "drv_rtc_read_time() = 0x22\n" + good_dump,
               log_line + battery_line + "Error : read rtc time test ret:0x22\r\n" + dump_line, -1);
}

TEST(RtcSectionTest, AClockThatLagsByTwoSecondsFails) {
    expect_time("{subsecond=99 second=59 minute=59 hour=7 day_of_week=4 day_of_month=15 month=1 year=26}",
                "{subsecond=99 second=60 minute=59 hour=7 day_of_week=4 day_of_month=15 month=1 year=26}",
                "Success: read rtc time test pass\r\n"
                "\trtc time: 2026/1/15 7:59:59:99 Week4(7 for Sunday)\r\n"
                "Success: rtc system time consistency test pass\r\n" +
                    sys_line + "\ttime diff: 1.000000(s)\r\n",
                0);
    expect_time("{subsecond=0 second=58 minute=59 hour=7 day_of_week=4 day_of_month=15 month=1 year=26}",
                "{subsecond=0 second=59 minute=59 hour=7 day_of_week=4 day_of_month=15 month=1 year=26}",
                "Success: read rtc time test pass\r\n"
                "\trtc time: 2026/1/15 7:59:58:0 Week4(7 for Sunday)\r\n"
                "Error : rtc system time consistency test fail\r\n" +
                    sys_line + "\ttime diff: 2.000000(s)\r\n",
                -1);
}

TEST(RtcSectionTest, AClockThatIsAheadPasses) {
    expect_time("{subsecond=0 second=0 minute=0 hour=8 day_of_week=7 day_of_month=15 month=1 year=27}",
                "{subsecond=0 second=1 minute=0 hour=8 day_of_week=7 day_of_month=15 month=1 year=27}",
                "Success: read rtc time test pass\r\n"
                "\trtc time: 2027/1/15 8:0:0:0 Week7(7 for Sunday)\r\n"
                "Success: rtc system time consistency test pass\r\n" +
                    sys_line + "\ttime diff: -31536000.000000(s)\r\n",
                0);
}

// Years below ten have one digit, as the numbers are printed without leading zeros.
TEST(RtcSectionTest, AnOldTime) {
    expect_time("{subsecond=1 second=2 minute=3 hour=4 day_of_week=6 day_of_month=1 month=1 year=5}",
                "{subsecond=1 second=3 minute=3 hour=4 day_of_week=6 day_of_month=1 month=1 year=5}",
                "Success: read rtc time test pass\r\n"
                "\trtc time: 205/1/1 4:3:2:1 Week6(7 for Sunday)\r\n"
                "Error : rtc system time consistency test fail\r\n" +
                    sys_line + "\ttime diff: 663911818.000000(s)\r\n",
                -1);
}

// Month 0, day 0 and year 0 are the last day of November 1999.
TEST(RtcSectionTest, ADriverThatWritesNothingGivesZeros) {
    expect_rtc(
        battery("0") + "drv_rtc_read_time() = 0 x2\n" + write_rule(test_time, "0") +
            write_rule("{subsecond=0 second=1 minute=0 hour=0 day_of_week=0 day_of_month=0 month=0 year=0}", "0") +
            "drv_rtc_dump_info(len=2000) = 0\n"
            "drv_log_record(log_id=32, level=2, flag=0, text=\"[RTC_TEST]:RTC get dump info: \\r\\n\\r\\n\") = "
            "0\n",
        "\r\n[RTC_TEST][info]:RTC get dump info: \r\n\r\n" + battery_line +
            "Success: read rtc time test pass\r\n\trtc time: 200/0/0 0:0:0:0 Week0(7 for Sunday)\r\n"
            "Error : rtc system time consistency test fail\r\n" +
            sys_line + "\ttime diff: 824544000.000000(s)\r\n" + "Error : write rtc time test fail\r\n\tret 0x0\r\n" +
            written_line + "\tread  time: 200/0/0 0:0:0:0 \r\n\ttime diff: 699747742.000000(s)\r\n" + recover_line +
            dump_line,
        -1);
}

TEST(RtcSectionTest, ATimeThatIsNotKept) {
    expect_write(write_rule(test_time, "0") +
                     read_rule("{subsecond=3 second=20 minute=22 hour=22 day_of_month=31 month=1 year=22}"),
                 "Error : write rtc time test fail\r\n\tret 0x0\r\n" + written_line +
                     "\tread  time: 2022/1/31 22:22:20:3 \r\n\ttime diff: 2.000000(s)\r\n",
                 -1);
    expect_write(write_rule(test_time, "0") +
                     read_rule("{subsecond=3 second=21 minute=22 hour=22 day_of_month=31 month=1 year=22}"),
                 "Success: write rtc time test pass\r\n" + written_line +
                     "\tread  time: 2022/1/31 22:22:21:3 \r\n\ttime diff: 1.000000(s)\r\n",
                 0);
}

// A clock that ignored the write shows today: that is ahead of the test time, and passes.
TEST(RtcSectionTest, ATimeAheadOfTheOneWrittenPasses) {
    expect_write(write_rule(test_time, "0") + read_rule(on_time),
                 "Success: write rtc time test pass\r\n" + written_line +
                     "\tread  time: 2026/1/15 8:0:0:7 \r\n\ttime diff: -124796258.000000(s)\r\n",
                 0);
}

// What the clock shows is told either way, and the time found is put back.
TEST(RtcSectionTest, AWriteOrReadBackThatFails) {
    expect_write(write_rule(test_time, "0x23") + read_rule(on_time),
                 "Error : write rtc time test fail\r\n\tret 0x23\r\n" + written_line +
                     "\tread  time: 2026/1/15 8:0:0:7 \r\n\ttime diff: -124796258.000000(s)\r\n",
                 -1);
    expect_write(write_rule(test_time, "0") + "drv_rtc_read_time() = 0x24\n",
                 "Error : write rtc time test fail\r\n\tret 0x24\r\n" + written_line +
                     "\tread  time: 200/0/0 0:0:0:0 \r\n\ttime diff: 699747742.000000(s)\r\n",
                 -1);
    expect_write(write_rule(test_time, "0x23") + "drv_rtc_read_time() = 0x24\n",
                 "Error : write rtc time test fail\r\n\tret 0x23\r\n" + written_line +
                     "\tread  time: 200/0/0 0:0:0:0 \r\n\ttime diff: 699747742.000000(s)\r\n",
                 -1);
}

TEST(RtcSectionTest, ATimeThatCannotBePutBack) {
    expect_rtc(good_battery + read_rule(on_time) + good_write + write_rule(one_second_on, "0x25") + good_dump,
               log_line + battery_line + read_lines + agree_lines + write_lines + "\tInfo :recover time ret:0x25\r\n" +
                   dump_line,
               -1);
}

TEST(RtcSectionTest, ADumpThatFails) {
    expect_dump("drv_rtc_dump_info(len=2000) = 0x26 buffer=\"half\"\n", "", "Error : dump rtc reg test ret:0x26\r\n",
                -1);
}

// The driver fills its 2000 bytes without a terminator; the log takes 255 characters.
TEST(RtcSectionTest, ADumpThatFillsItsArea) {
    const std::string logged = "RTC get dump info: \r\n" + std::string(234, 'r');
    expect_dump("drv_rtc_dump_info(len=2000) = 0 buffer=\"" + std::string(2000, 'r') +
                    "\"\ndrv_log_record(log_id=32, level=2, flag=0, text=\"[RTC_TEST]:RTC get dump info: \\r\\n" +
                    std::string(234, 'r') + "\") = 0\n",
                "\r\n[RTC_TEST][info]:" + logged, dump_line, 0);
}

// The first allocation is the buffer of the console run.
TEST(RtcSectionTest, NoMemoryForTheDump) {
    const process_result run = run_part({"--root", new_scratch_dir(), "--strict", "--script",
                                         scratch_file("script", described + good_clock), "--fail-alloc", "2"},
                                        "rtc");
    EXPECT_EQ(run.out, clock_lines + "Error : dump rtc reg malloc fail\r\nresult -1\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

// The drivers are called in one order: the clock holds the test time between two calls only.
TEST(RtcSectionTest, OrderOfCalls) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_part({"--trace", trace}, "rtc");
    std::string operations;
    std::istringstream calls(read_file(trace));
    for (std::string line; std::getline(calls, line);) {
        operations += line.substr(0, line.find('(')) + "\n";
    }
    EXPECT_EQ(operations, "xml_get_entry_num\n"
                          "drv_rtc_read_battery_status\n"
                          "drv_rtc_read_time\n"
                          "drv_rtc_write_time\n"
                          "drv_rtc_read_time\n"
                          "drv_rtc_write_time\n"
                          "drv_rtc_dump_info\n"
                          "drv_log_record\n");
}

// A second has been added each time, so the clock of a second run is a second ahead.
TEST(RtcSectionTest, AHealthyClockIsPutBack) {
    const std::string state = new_scratch_dir();
    const std::string first = run_part({"--state", state, "--board", "mpu_slave"}, "rtc").out;
    const std::string second = run_part({"--state", state, "--board", "mpu_slave"}, "rtc").out;
    const std::string unchanged = write_lines + recover_line + dump_line + "result 0\n";
    EXPECT_EQ(first, "\r\n[RTC_TEST][info]:RTC get dump info: \r\n"
                     "0x00: 0x00 subsecond\r\n0x01: 0x01 second\r\n0x02: 0x00 minute\r\n0x03: 0x08 hour\r\n"
                     "0x04: 0x04 day_of_week\r\n0x05: 0x15 day_of_month\r\n0x06: 0x01 month\r\n0x07: 0x26 year\r\n"
                     "0x08: 0x00 status\r\n0x09: 0x00 trim\r\n\r\n" +
                         battery_line +
                         "Success: read rtc time test pass\r\n\trtc time: 2026/1/15 8:0:0:0 Week4(7 for Sunday)\r\n" +
                         agree_lines + unchanged);
    EXPECT_EQ(second.substr(second.find("Success: rtc battery")),
              battery_line +
                  "Success: read rtc time test pass\r\n\trtc time: 2026/1/15 8:0:1:0 Week4(7 for Sunday)\r\n"
                  "Success: rtc system time consistency test pass\r\n" +
                  sys_line + "\ttime diff: -1.000000(s)\r\n" + unchanged);
}

// It was set to three seconds before eight when the board was made.
TEST(RtcSectionTest, ASimulatedClockThatLags) {
    const std::string lines = run_part({"--board", board_that_counts("821779197000000000")}, "rtc").out;
    EXPECT_EQ(lines.substr(lines.find("Success: rtc battery")),
              battery_line +
                  "Success: read rtc time test pass\r\n\trtc time: 2026/1/15 7:59:57:0 Week4(7 for Sunday)\r\n"
                  "Error : rtc system time consistency test fail\r\n" +
                  sys_line + "\ttime diff: 3.000000(s)\r\n" + write_lines + recover_line + dump_line + "result -1\n");
}

// Second 60 began the next minute, which the chip carries over.
TEST(RtcSectionTest, ASecondBeforeTheMinute) {
    const std::string lines = run_part({"--board", board_that_counts("821779199000000000")}, "rtc").out;
    EXPECT_NE(lines.find("\trtc time: 2026/1/15 7:59:59:0 Week4(7 for Sunday)\r\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("0x01: 0x00 second\r\n0x02: 0x00 minute\r\n0x03: 0x08 hour\r\n"), std::string::npos) << lines;
    EXPECT_NE(lines.find("result 0\n"), std::string::npos) << lines;
}
