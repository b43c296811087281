// power_test on simulated boards: the one-key tests of the delivered supplies, of sick ones, on the slave, and two at
// once.
#include <gtest/gtest.h>

#include <cstdio>
#include <fcntl.h>
#include <map>
#include <sstream>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

#include "tests/modules/power_names.h"
#include "tests/support/command.h"
#include "tests/support/driver_calls.h"

using namespace kestro_tests;

namespace {

// A property that the supply lacks.
constexpr int64_t lacking = -1;

using property_values = std::map<int, int64_t>;

// What the description of the chassis makes of a supply.
struct delivered_supply {
    int slot;
    int power;
    property_values properties; // from 3 on; those that are not here are 0
    std::vector<int> black_box;
    std::string label;
    std::vector<std::string> board_lines; // behind the label
    std::string format_and_kind;
    std::string programs;
    bool has_pmbus;
};

const delivered_supply ac_supply = {
    13,
    0,
    {{3, 2200}, {4, 45000}, {5, 70},    {14, 230000}, {15, 53500}, {16, 12000}, {17, 36},    {18, 9000},
     {19, 642}, {20, 668},  {21, 0x22}, {23, 2},      {26, 1},     {27, 1},     {30, 0x104}, {31, 0x107},
     {32, 50},  {33, 3},    {35, 2904}, {36, 1},      {37, 20},    {38, 85},    {39, 1},     {41, 1}},
    {0, 1, 81, 140, 0, 1, 8, 253, 0, 52, 188, 7, 0, 2, 3, 44, 0, 52, 192, 191, 0, 1, 8, 250},
    "[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\nmade=2025-10-21",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 3", "POWER_MODULE_FEATURE: 19",
     "POWER_CHIP_FEATURE: dual stage, field update"},
    "input format 0 ac and dc_ac_type 0 ac",
    "Success: slot 13 power 0 get software info. soft_cnt 2 \r\n"
    "soft_id 0x1 module_num 0xff\r\n"
    "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 204\r\n"
    "soft_id 0x2 module_num 0x2\r\n"
    "Success: slot 13 power 0 soft_id 0x2 module_id 0x0 version 117\r\n"
    "Success: slot 13 power 0 soft_id 0x2 module_id 0x1 version 117\r\n",
    true};

// 642 W leave; 672 W come in at 54 V.
const delivered_supply dc_supply = {
    13,
    1,
    {{3, 2200}, {4, 45000},  {5, 70}, {14, 54000}, {15, 53500}, {16, 12000}, {17, 36},      {18, 9000},  {19, 642},
     {20, 672}, {21, 0x22},  {22, 1}, {23, 2},     {26, 1},     {27, 1},     {30, lacking}, {31, 0x107}, {32, 50},
     {33, 2},   {35, 12444}, {36, 2}, {37, 5},     {38, 85},    {39, 1},     {40, 1},       {41, 1}},
    {0, 1, 96, 98, 0, 1, 2, 28},
    "[board]\nitem=KT-PWR-DC-2200\nserial=2511040311\nmade=2025-10-22",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 2", "POWER_MODULE_FEATURE: 17",
     "POWER_CHIP_FEATURE: single stage, field update"},
    "input format 1 low dc and dc_ac_type 1 low dc",
    "Success: slot 13 power 1 get software info. soft_cnt 1 \r\n"
    "soft_id 0x1 module_num 0xff\r\n"
    "Success: slot 13 power 1 soft_id 0x1 module_id 0x0 version 204\r\n",
    true};

// Behind the simple protocol: 321 W leave, a fifth of what it is rated for, and warm it by 9 K.
const delivered_supply simple_supply = {
    14,
    0,
    {{3, 1600},     {4, lacking},  {5, 65},       {6, lacking},  {7, lacking},  {8, lacking},  {9, lacking},
     {11, lacking}, {12, lacking}, {14, 231000},  {15, 53500},   {16, 6000},    {17, 34},      {18, 7040},
     {19, 321},     {20, 352},     {21, lacking}, {23, lacking}, {25, lacking}, {26, 1},       {27, lacking},
     {28, lacking}, {30, lacking}, {31, lacking}, {32, lacking}, {33, 1},       {34, lacking}, {35, 1523},
     {36, 3},       {37, lacking}, {38, lacking}, {39, lacking}, {41, lacking}, {42, lacking}, {44, lacking},
     {46, lacking}, {47, lacking}},
    {},
    "[board]\nitem=KT-PWR-AC-1600\nserial=1911040140\nmade=2019-05-07",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 1", "POWER_MODULE_FEATURE", "POWER_CHIP_FEATURE"},
    "input format 0 ac and dc_ac_type 0 ac",
    "Success: slot 14 power 0 get software info. soft_cnt 1 \r\n"
    "soft_id 0x1 module_num 0x1\r\n"
    "Success: slot 14 power 0 soft_id 0x1 module_id 0x0 version 204\r\n",
    false};

const std::string no_code = "0x811101a4";
const std::string master_line = "Info   : current board is master. power test now...\r\n";

std::string on(const delivered_supply &one) {
    return "slot " + std::to_string(one.slot) + " power " + std::to_string(one.power);
}

std::string hex_of(int64_t number) {
    char text[24];
    snprintf(text, sizeof(text), "0x%llx", static_cast<unsigned long long>(number));
    return text;
}

// Nothing can be read of what clears faults and of the two numbers without a name.
int64_t property_of(const delivered_supply &one, int type) {
    const auto found = one.properties.find(type);
    const bool is_nobodys = type == 29 || type == 45 || type == 48;
    return found != one.properties.end() ? found->second : is_nobodys ? lacking : 0;
}

std::string property_line(const delivered_supply &one, int type) {
    const named_number &named = power_property_names[type - 1];
    const std::string what = std::string(named.name) + " " + hex_of(type);
    const int64_t value = property_of(one, type);
    return value == lacking ? "Success: " + on(one) + " not support get " + what + ". ret " + no_code + "\r\n"
                            : "Success: " + on(one) + " get " + what + ": " + hex_of(value) + "\r\n";
}

std::string black_box_lines(const delivered_supply &one) {
    if (one.black_box.empty()) {
        return "Success: " + on(one) + " not support get bbox info. ret " + no_code + "\r\n";
    }
    std::string numbers;
    for (size_t i = 0; i < 4096; ++i) {
        numbers += std::to_string(i < one.black_box.size() ? one.black_box[i] : 0) + " ";
    }
    // The first record begins with a zero byte, so there is no text.
    return "Success: " + on(one) + " get bbox info return length " + std::to_string(one.black_box.size()) + " \r\n" +
           numbers + "\r\nSuccess: " + on(one) + " get bbox info  \r\n";
}

std::string board_property_lines(const delivered_supply &one) {
    std::string lines = "Success: " + on(one) + " len " + std::to_string(one.label.size()) +
                        " POWER_BOARD_ELABLE: " + one.label + "\r\n \r\n";
    for (const std::string &line : one.board_lines) {
        lines += line.find(':') == std::string::npos
                     ? "Success: " + on(one) + " not support get " + line + " info. ret " + no_code + "\r\n"
                     : "Success: " + on(one) + " " + line + "\r\n";
    }
    return lines;
}

std::string alarm_lines(const delivered_supply &one) {
    constexpr named_number alarms[] = {
        {1, "POWER_ALARM_CMD"},           {2, "POWER_ALARM_TEMPERATURE"},   {3, "POWER_ALARM_VIN_UV_FAULT"},
        {4, "POWER_ALARM_IOUT_OC_FAULT"}, {5, "POWER_ALARM_VOUT_OV_FAULT"}, {6, "POWER_ALARM_VIN_OV_DETECT"},
        {7, "POWER_ALARM_VIN_UNIT_OFF"},  {13, "POWER_ALARM_INPUT"},        {9, "POWER_ALARM_OTHER"},
        {10, "POWER_ALARM_FAN"},          {14, "POWER_ALARM_IOUT_POUT"},    {15, "POWER_ALARM_VOUT"}};
    std::string lines;
    for (const named_number &alarm : alarms) {
        const std::string what = std::string(alarm.name) + " " + hex_of(alarm.number);
        lines += one.has_pmbus || alarm.number == 2 || alarm.number == 10
                     ? "Success: " + on(one) + " get " + what + ": alarms 0x0 sub_alarm 0x0\r\n"
                     : "Success: " + on(one) + " not support get " + what + " info. ret " + no_code + "\r\n";
    }
    return lines;
}

std::string display_lines(const delivered_supply &one) {
    std::string lines = "Info   : " + on(one) + " display test begin. \r\n" + black_box_lines(one) +
                        "Success: " + on(one) + " " + one.format_and_kind + " is match \r\n";
    for (const int type : {1, 2, 9, 43, 7, 8, 10, 13, 24, 44}) {
        lines += property_line(one, type);
    }
    for (int type = 3; type <= 48; ++type) {
        lines += property_line(one, type);
    }
    return lines + board_property_lines(one) + alarm_lines(one);
}

std::string init_lines(const delivered_supply &one) {
    std::string lines = "Info   : " + on(one) + " init and deinit test begin. \r\n";
    for (const std::string round : {"0", "1", "2"}) {
        lines += "Success: " + on(one) + " init and deinit success. times " + round + "\r\n";
    }
    return lines + "Success: " + on(one) + " duplicate init success\r\n";
}

std::string config_lines(const delivered_supply &one) {
    const auto passed = [&one](const std::string &what, const std::string &value) {
        return "Success: " + on(one) + " set " + what + " pass. value " + value + "\r\n";
    };
    const auto lacks = [&one](const std::string &what) {
        return "Info   : " + on(one) + " get " + what + " is not support. \r\n";
    };
    const std::string mode = "POWER_TEMP_MODE 0x22";
    const std::string delay = "POWER_STARTUP_DELAY 0x1b";
    return "Info   : " + on(one) + " set and get test begin. \r\n" +
           passed("POWER_TEMP_LIMIT 0x5", std::to_string(property_of(one, 5) - 1)) +
           passed("POWER_LATCH_STATE 0x18", "1") + (one.has_pmbus ? passed(mode, "1") : lacks(mode)) +
           passed("POWER_CLEAR_FAULT 0x1d", "0") + passed("POWER_ENABLE_CTRL 0x1a", "1") +
           (one.has_pmbus ? passed(delay, "10") + passed(delay, "1") : lacks(delay) + lacks(delay));
}

// The delivered image is the version that all of them run.
std::string software_lines(const delivered_supply &one) {
    return "Info   : " + on(one) + " software test begin. \r\n" + one.programs +
           "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n"
           "Info   : file head soft_id 0x1 rsv 0x0 crc[0] 0x3e crc[1] 0x6\r\n"
           "Success: " +
           on(one) + " load file /opt/hostx/home/power_app.bin success. len 0x108\r\n" + one.programs;
}

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
    const auto of_mode = [&mode](const delivered_supply &one) {
        const bool is_all = mode == "all";
        return (is_all || mode == "display" ? display_lines(one) : "") +
               (is_all || mode == "init" ? init_lines(one) : "") +
               (is_all || mode == "config" ? config_lines(one) : "") +
               (is_all || mode == "software" ? software_lines(one) : "");
    };
    return passed(master_line + of_mode(ac_supply) + of_mode(dc_supply));
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

TEST(PowerTestOnABoard, AFrameOfTwoHealthySupplies) {
    for (const std::string &mode : all_modes) {
        expect_mode(mode, 13, frame_of_two(mode), 0);
    }
}

// An empty place passes where presence is asked, and fails where it is not.
TEST(PowerTestOnABoard, AFrameWithAnEmptyPlace) {
    const delivered_supply &one = simple_supply;
    expect_mode("display", 14, passed(master_line + display_lines(one) + empty_display), 0);
    expect_mode("init", 14, passed(master_line + init_lines(one) + empty_init), 0);
    expect_mode("config", 14, failed("config", master_line + config_lines(one) + empty_config), 255);
    expect_mode("software", 14, failed("software", master_line + software_lines(one) + empty_software), 255);
    expect_mode("all", 14,
                failed("all", master_line + display_lines(one) + init_lines(one) + config_lines(one) +
                                  software_lines(one) + empty_display + empty_init + empty_config + empty_software),
                255);
}

TEST(PowerTestOnABoard, ASlotWithoutAFrame) {
    for (const std::string &mode : all_modes) {
        expect_mode(mode, 9, failed(mode, master_line + "Error  : slot 9 get power num fail. ret 0x81110103\r\n"), 255);
    }
}

TEST(PowerTestOnABoard, ASlaveTestsNothing) {
    for (const std::string &mode : all_modes) {
        const process_result run = run_mode("mpu_slave", mode, 13);
        EXPECT_EQ(run.out, passed("Info    : current board is slave, hardware not support power test\r\n"));
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, 0);
    }
}

// A line card knows no master, and no supplies.
TEST(PowerTestOnABoard, ALineCardFindsNoSupplies) {
    for (const std::string &mode : all_modes) {
        const process_result run = run_mode("lpu", mode, 13);
        EXPECT_EQ(run.out, failed(mode, "Error  : drv_msc_get_state fail, default master, power test now...\r\n"
                                        "Error  : slot 13 get power num fail. ret 0x811101a4\r\n"));
        EXPECT_EQ(run.status, 255);
    }
}

TEST(PowerTestOnABoard, SickSuppliesFailTheTestThatShowsIt) {
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
TEST(PowerTestOnABoard, SuppliesWithoutInputPass) {
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
TEST(PowerTestOnABoard, TwoAtOnceFindWhatOneAloneFinds) {
    for (const std::string &mode : all_modes) {
        SCOPED_TRACE(mode);
        const std::string state = new_scratch_dir();
        ASSERT_EQ(kept_of(state), delivered_values + delivered_values);
        for (int time = 0; time < 5; ++time) {
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
TEST(PowerTestOnABoard, ATestWaitsForItsTurn) {
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
TEST(PowerTestOnABoard, ALabelThatIsSetIsRead) {
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
