// power_test on simulated boards: the one-key tests of the delivered supplies, of sick ones, on the slave, and two at
// once.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sstream>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

#include "tests/modules/delivered_supplies.h"
#include "tests/support/command.h"
#include "tests/support/driver_calls.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

const std::string master_line = "Info   : current board is master. power test now...\r\n";

// The empty place: a driver that has nobody to speak to answers 0x8111010f to all but presence.
const std::string empty_display = "Info   : slot 14 power 1 display test begin. \r\n"
                                  "Info   :slot 14 power 1 is not online.\r\n";
const std::string empty_init = "Info   : slot 14 power 1 init and deinit test begin. \r\n"
                               "Info   : slot 14 power 1 is not online.\r\n";
const std::string empty_config =
    "Info   : slot 14 power 1 set and get test begin. \r\n"
    "Error  : slot 14 power 1 set POWER_CLEAR_FAULT 0x1d fail. value 0 ret 0x8111010f\r\n"
    "Error  : slot 14 power 1 set POWER_ENABLE_CTRL 0x1a fail. value 1 ret 0x8111010f\r\n"
    "Error  : slot 14 power 1 set POWER_STARTUP_DELAY 0x1b fail. value 10 ret 0x8111010f\r\n"
    "Error  : slot 14 power 1 set POWER_STARTUP_DELAY 0x1b fail. value 1 ret 0x8111010f\r\n";
const std::string empty_software = "Info   : slot 14 power 1 software test begin. \r\n"
                                   "Error  : slot 14 power 1 get software info fail. ret 0x8111010f\r\n";

std::vector<std::string> words_of(const std::string &mode, int slot) {
    return {"power_test", "power_onekey_test_" + mode, std::to_string(slot)};
}

process_result run_mode(const std::string &board, const std::string &mode, int slot) {
    return run_sim({"--board", board, "--state", new_scratch_dir(), "--clock", "virtual"}, words_of(mode, slot));
}

const std::vector<std::string> all_modes = {"all", "display", "config", "init", "software"};

std::string passed(const std::string &lines) {
    return lines + timing_lines;
}

std::string failed(const std::string &mode, const std::string &lines) {
    return lines + timing_lines + operate_fail("power_onekey_test_" + mode) + operate_fail("power_test");
}

void expect_mode(const std::string &mode, int slot, const std::string &output, int status) {
    SCOPED_TRACE(mode);
    const process_result run = run_mode("mpu_master", mode, slot);
    EXPECT_EQ(run.out, output);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, status);
}

std::string frame_of_two(const std::string &mode) {
    const auto of_mode = [&mode](const delivered::supply &one) {
        const bool is_all = mode == "all";
        return (is_all || mode == "display" ? delivered::display_lines(one) : "") +
               (is_all || mode == "init" ? delivered::init_lines(one) : "") +
               (is_all || mode == "config" ? delivered::config_lines(one) : "") +
               (is_all || mode == "software" ? delivered::software_lines(one) : "");
    };
    return passed(master_line + of_mode(delivered::ac_supply) + of_mode(delivered::dc_supply));
}

std::vector<std::string> error_lines_of(const std::string &output) {
    std::vector<std::string> lines;
    std::istringstream all(output);
    for (std::string line; std::getline(all, line);) {
        if (line.starts_with("Error")) {
            lines.push_back(line.substr(0, line.find('\r')));
        }
    }
    return lines;
}

// The registers of the supplies that a test writes.
std::string kept_of(const std::string &state) {
    std::vector<std::string> lines;
    for (const std::string unit : {"slot_id=13, power_id=0", "slot_id=13, power_id=1"}) {
        for (const int type : {5, 24, 26, 27, 34}) {
            lines.push_back("drv_power_get_property(" + unit + ", type=" + std::to_string(type) + ")");
        }
    }
    return answers_of({"--state", state, "--clock", "virtual"}, lines);
}

const std::string delivered_values = "0x0 value=70\n0x0 value=0\n0x0 value=1\n0x0 value=1\n0x0 value=0\n";

} // namespace

TEST(PowerTestBoard, AFrameOfTwoHealthySupplies) {
    for (const std::string &mode : all_modes) {
        expect_mode(mode, 13, frame_of_two(mode), 0);
    }
}

// An empty place passes where presence is asked, and fails where it is not.
TEST(PowerTestBoard, AFrameWithAnEmptyPlace) {
    const delivered::supply &one = delivered::simple_supply;
    expect_mode("display", 14, passed(master_line + delivered::display_lines(one) + empty_display), 0);
    expect_mode("init", 14, passed(master_line + delivered::init_lines(one) + empty_init), 0);
    expect_mode("config", 14, failed("config", master_line + delivered::config_lines(one) + empty_config), 255);
    expect_mode("software", 14, failed("software", master_line + delivered::software_lines(one) + empty_software), 255);
    expect_mode("all", 14,
                failed("all", master_line + delivered::display_lines(one) + delivered::init_lines(one) +
                                  delivered::config_lines(one) + delivered::software_lines(one) + empty_display +
                                  empty_init + empty_config + empty_software),
                255);
}

TEST(PowerTestBoard, ASlotWithoutAFrame) {
    for (const std::string &mode : all_modes) {
        expect_mode(mode, 9, failed(mode, master_line + "Error  : slot 9 get power num fail. ret 0x81110103\r\n"), 255);
    }
}

TEST(PowerTestBoard, ASlaveTestsNothing) {
    for (const std::string &mode : all_modes) {
        const process_result run = run_mode("mpu_slave", mode, 13);
        EXPECT_EQ(run.out, passed("Info    : current board is slave, hardware not support power test\r\n"));
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, 0);
    }
}

// A line card knows no master, and no supplies.
TEST(PowerTestBoard, ALineCardFindsNoSupplies) {
    for (const std::string &mode : all_modes) {
        const process_result run = run_mode("lpu", mode, 13);
        EXPECT_EQ(run.out, failed(mode, "Error  : drv_msc_get_state fail, default master, power test now...\r\n"
                                        "Error  : slot 13 get power num fail. ret 0x811101a4\r\n"));
        EXPECT_EQ(run.status, 255);
    }
}

TEST(PowerTestBoard, SickSuppliesFailTheTestThatShowsIt) {
    const std::string on_0 = "Error  : slot 13 power 0 ";
    const std::string on_1 = "Error  : slot 13 power 1 ";
    const struct {
        std::string board;
        std::string mode;
        int slot;
        std::vector<std::string> errors;
    } cases[] = {
        {"power_bbox_torn", "display", 13, {on_0 + "get bbox info return length fail. length 0x16"}},
        {"power_fan_stopped",
         "display",
         13,
         {on_1 + "get POWER_ALARM 0x1 fail. result 0x1", on_1 + "get POWER_ALARM_HISTORY 0x2b fail. result 0x1",
          on_1 + "get POWER_FAN_STATE 0xd fail. result 0x80",
          on_1 + "get POWER_ALARM_FAN 0xa fail. alarms 0x80 sub_alarm 0x1"}},
        {"power_kind_unknown", "display", 14, {}},
        {"power_rating_missing", "display", 13, {on_1 + "get POWER_RATED_POWER 0x3 should be support. ret 0x811101a4"}},
        {"power_latch_stuck",
         "config",
         13,
         {on_0 + "set POWER_LATCH_STATE 0x18 fail. original_value 0 set_value 1 get_value 0"}},
        {"power_program_lost",
         "software",
         13,
         {on_0 + "after load file /opt/hostx/home/power_app.bin soft_cnt change."}},
        {"power_image_damaged",
         "software",
         13,
         {on_0 + "load file /opt/hostx/home/power_app.bin fail. ret=0x81110109 len 0x108",
          on_1 + "load file /opt/hostx/home/power_app.bin fail. ret=0x81110109 len 0x108"}},
    };
    for (const auto &each : cases) {
        SCOPED_TRACE(each.board);
        const std::string board = source_dir() + "/sim/chassis/sick/" + each.board + ".xml";
        for (const std::string &mode : {each.mode, std::string("all")}) {
            const process_result run = run_mode(board, mode, each.slot);
            if (mode == each.mode) {
                EXPECT_EQ(error_lines_of(run.out), each.errors);
            }
            EXPECT_EQ(run.err, "");
            EXPECT_EQ(run.status, 255);
        }
        EXPECT_EQ(run_mode(board, "init", each.slot).status, 0);
    }
}

// A cable that is pulled is no fault of the supply.
TEST(PowerTestBoard, SuppliesWithoutInputPass) {
    const std::string board = source_dir() + "/sim/chassis/sick/power_no_input.xml";
    const std::string line = "Info   : slot 13 power 0 pmbus maybe has no input power. POWER_ALARM_VIN_UNIT_OFF 0x8  "
                             "POWER_ALARM_INPUT 0x8\r\n";
    for (const std::string &mode : all_modes) {
        const process_result run = run_mode(board, mode, 13);
        EXPECT_EQ(error_lines_of(run.out), std::vector<std::string>{});
        EXPECT_EQ(run.status, 0) << mode;
        EXPECT_EQ(run.out.find(line) != std::string::npos, mode != "config" && mode != "software") << mode;
    }
    const std::string state = new_scratch_dir();
    const process_result run = run_sim(
        {"--state", state, "--clock", "virtual", "--set", "chassis/power/supply/140/feed=0"}, words_of("init", 14));
    const std::string round = "Info   : slot 14 power 0 init and deinit fail. times ";
    const std::string codes = " init_ret 0x8111010f deinit_ret 0x0 \r\n";
    EXPECT_EQ(run.out,
              passed(master_line + "Info   : slot 14 power 0 init and deinit test begin. \r\n" + round + "0" + codes +
                     round + "1" + codes + round + "2" + codes +
                     "Info   :slot 14 power 0 maybe has no input power. ret_power 0x8111010f input_power 0x0 ret_vol "
                     "0x8111010f input_vol 0x0 \r\n"
                     "Success: slot 14 power 0 init fail when no input power\r\n" +
                     empty_init));
    EXPECT_EQ(run.status, 0);
}

// Each takes its turn with a supply, so neither sees the other's test values.
TEST(PowerTestBoard, TwoAtOnceFindWhatOneAloneFinds) {
    for (const std::string &mode : all_modes) {
        SCOPED_TRACE(mode);
        const std::string state = new_scratch_dir();
        ASSERT_EQ(kept_of(state), delivered_values + delivered_values);
        for (int time = 0; time < 5; time += stride()) {
            const std::vector<std::string> options = {"--state", state, "--clock", "virtual"};
            process_result other;
            std::thread beside([&] { other = run_launcher(options, words_of(mode, 13)); });
            const process_result run = run_launcher(options, words_of(mode, 13));
            beside.join();
            EXPECT_EQ(run.out, frame_of_two(mode));
            EXPECT_EQ(other.out, frame_of_two(mode));
            EXPECT_EQ(run.err + other.err, "");
            EXPECT_EQ(run.status + other.status, 0);
        }
        EXPECT_EQ(kept_of(state), delivered_values + delivered_values);
    }
}

// As long as another test has its turn no supply is asked anything.
TEST(PowerTestBoard, ATestWaitsForItsTurn) {
    const std::string state = new_scratch_dir();
    const std::string trace = new_scratch_dir() + "/trace";
    ASSERT_EQ(run_sim({"--state", state, "--clock", "virtual"}, words_of("init", 13)).status, 0);
    const int turn = open((state + "/root/slot9/opt/hostx/home").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_GE(turn, 0);
    ASSERT_EQ(flock(turn, LOCK_EX), 0);
    const std::vector<std::string> options = {"--state", state, "--clock", "virtual", "--trace", trace};
    process_options impatient;
    impatient.kill_after_ms = 500;
    EXPECT_EQ(run_sim(options, words_of("config", 13), impatient).status, 128 + SIGKILL);
    EXPECT_EQ(read_file(trace), "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x0 state=0\n"
                                "drv_power_get_num(slot_id=13) = 0x0 num=2\n");
    close(turn);
    EXPECT_EQ(run_sim(options, words_of("config", 13)).out, frame_of_two("config"));
}

// What one sub-command sets, another one reads.
TEST(PowerTestBoard, ALabelThatIsSetIsRead) {
    const std::string state = new_scratch_dir();
    const auto run = [&state](const std::vector<std::string> &words) {
        return run_sim({"--state", state, "--clock", "virtual"}, words);
    };
    ASSERT_EQ(run({"power_test", "power_get_num", "13"}).out, passed("Success: slot 13 power num 2 \r\n"));
    std::string file = "\xbc\x48[board]\nitem=KT-PWR-TEST";
    file.resize(1024, '\0');
    const std::string path = state + "/root/slot9/home/1";
    write_file(path, file);
    EXPECT_EQ(run({"power_test", "power_set_board_property", "13", "1", "0"}).out,
              passed(printed("Success: slot 13 power 1 set 0x0 value: [board]\nitem=KT-PWR-TEST.\r\n",
                             "para[0]=0x0 para[1]=\xbc\x48[board]\nitem=KT-PWR-TEST para[2]=0x400 ")));
    EXPECT_EQ(run({"power_test", "power_get_board_property", "13", "1", "0"}).out,
              passed(printed("Success: slot 13 power 1 get 0x0 value: [board]\nitem=KT-PWR-TEST.\r\n",
                             "para[0]=0x0 para[1]=[board]\nitem=KT-PWR-TEST para[2]=0x18 ")));
    // A text that the checksum does not fit is refused, and the label stays.
    file[4] = '?';
    write_file(path, file);
    EXPECT_EQ(run({"power_test", "power_set_board_property", "13", "1", "0"}).status, 255);
    EXPECT_EQ(run({"power_test", "power_get_board_property", "13", "1", "0"}).out.find("?"), std::string::npos);
}
