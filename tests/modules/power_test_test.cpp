// power_test: every sub-command on the real program, with the driver scripted; power_test_board_test.cpp runs the
// one-key tests on simulated boards.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <sys/stat.h>

#include "tests/modules/power_names.h"
#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;
namespace fs = std::filesystem;

namespace {

std::string hex_of(unsigned number) {
    char text[16];
    snprintf(text, sizeof(text), "0x%x", number);
    return text;
}

// Fewer words are refused without one.
void expect_silent_refusal(const std::string &name, const std::vector<std::string> &words) {
    std::string line = "power_test " + name;
    expect_failure(line, "", "");
    for (const std::string &word : words) {
        line += " " + word;
        expect_failure(line, "", "");
    }
}

// The bytes of an area of 1024 in the script's language, with zeros behind the text.
std::string area_of(std::string text) {
    text.resize(1024, '\0');
    std::string area = "[";
    for (const char byte : text) {
        const char digits[] = "0123456789abcdef";
        const auto bits = static_cast<unsigned char>(byte);
        area += {digits[bits >> 4], digits[bits & 15], ' '};
    }
    area.back() = ']';
    return area;
}

fs::path property_file_of(const std::string &root) {
    return root + "/home/1";
}

std::string root_without_property() {
    const std::string root = new_scratch_dir();
    fs::create_directories(property_file_of(root).parent_path());
    return root;
}

std::string root_with_property(const std::string &content) {
    const std::string root = root_without_property();
    write_file(property_file_of(root), content);
    return root;
}

// power_set_board_property 13 1 0 on a board whose files lie below root.
void expect_set_on(const std::string &root, const std::string &script, const std::string &output, int status) {
    const process_result result = run_sim({"--state", new_scratch_dir(), "--root", root, "--clock", "virtual",
                                           "--strict", "--script", scratch_file("script", script + "\n")},
                                          {"power_test", "power_set_board_property", "13", "1", "0"});
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

std::string set_rule(const std::string &content) {
    return "drv_power_set_board_property(slot_id=13, power_id=1, type=0, len=1024, buffer=" + area_of(content) + ")";
}

std::string set_failed(const std::string &lines) {
    return lines + timing_lines + operate_fail("power_set_board_property") + operate_fail("power_test");
}

} // namespace

TEST(PowerTest, UsageListsTheSubCommands) {
    expect_run("power_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " power_get_property          slot_id power_id type\n"
               " power_set_property          slot_id power_id type value\n"
               " power_get_num               slot_id\n"
               " power_get_board_property    slot_id power_id type\n"
               " power_set_board_property    slot_id power_id type\n"
               " power_get_alarm             slot_id power_id type\n"
               " power_get_softver           slot_id power_id soft_id module_id\n"
               " power_get_bbox_info         slot_id power_id len\n"
               " power_get_software_info     slot_id power_id\n"
               " power_init                  slot_id power_id\n"
               " power_deinit                slot_id power_id\n"
               " power_patch_func1           null\n"
               " power_patch_func2           null\n"
               " power_onekey_test_all       slot_id\n"
               " power_onekey_test_display   slot_id\n"
               " power_onekey_test_config    slot_id\n"
               " power_onekey_test_init      slot_id\n"
               " power_onekey_test_software  slot_id (load file:/opt/hostx/home/power_app.bin)\n",
               0);
}

TEST(PowerTest, GetProperty) {
    expect_success(
        "power_test power_get_property 13 1 0x11",
        "drv_power_get_property(slot_id=13, power_id=1, type=17) = 0 value=0x24",
        printed("Success: slot 13 power 1 get POWER_TEMPERATURE 0x11 value 0x24.\r\n", "para[0]=0x0 para[1]=0x24 "));
    expect_success("power_test power_get_property 015 0xffffffff 3 more words",
                   "drv_power_get_property(slot_id=13, power_id=0xffffffff, type=3) = 0 value=0xffffffff",
                   printed("Success: slot 13 power 4294967295 get POWER_RATED_POWER 0x3 value 0xffffffff.\r\n",
                           "para[0]=0x0 para[1]=0xffffffff "));
    expect_success("power_test power_get_property frame place type",
                   "drv_power_get_property(slot_id=0, power_id=0, type=0) = 0 value=1",
                   printed("Success: slot 0 power 0 get unknown 0x0 value 0x1.\r\n", "para[0]=0x0 para[1]=0x1 "));
}

TEST(PowerTest, GetPropertyShowsTenWhereTheDriverWritesNothing) {
    expect_success("power_test power_get_property 13 1 2", "drv_power_get_property(slot_id=13, power_id=1, type=2) = 0",
                   printed("Success: slot 13 power 1 get POWER_GOOD 0x2 value 0xa.\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_failure("power_test power_get_property 13 1 2",
                   "drv_power_get_property(slot_id=13, power_id=1, type=2) = 0x811101a4",
                   printed("Error  : slot 13 power 1 get POWER_GOOD 0x2 fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=0xa "));
}

TEST(PowerTest, GetPropertyFailure) {
    expect_failure(
        "power_test power_get_property 13 1 77",
        "drv_power_get_property(slot_id=13, power_id=1, type=77) = 0x12 value=7",
        printed("Error  : slot 13 power 1 get unknown 0x4d fail. ret 0x12\r\n", "para[0]=0x12 para[1]=0x7 "));
    expect_silent_refusal("power_get_property", {"13", "1"});
}

TEST(PowerTest, PropertiesAreCalledByTheirNames) {
    for (const named_number &property : power_property_names) {
        const std::string number = std::to_string(property.number);
        const std::string named = property.name + (" " + hex_of(static_cast<unsigned>(property.number)));
        expect_success("power_test power_get_property 1 2 " + number,
                       "drv_power_get_property(slot_id=1, power_id=2, type=" + number + ") = 0 value=3",
                       printed("Success: slot 1 power 2 get " + named + " value 0x3.\r\n", "para[0]=0x0 para[1]=0x3 "));
    }
    expect_success("power_test power_set_property 1 2 4294967295 3",
                   "drv_power_set_property(slot_id=1, power_id=2, type=0xffffffff, value=3) = 0",
                   "Success: slot 1 power 2 set unknown 0xffffffff value 0x3.\r\n");
}

TEST(PowerTest, SetProperty) {
    expect_success("power_test power_set_property 13 1 0x1b 10",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=10) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0xa.\r\n");
    expect_success("power_test power_set_property 13 1 27 010 11",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=8) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0x8.\r\n");
    expect_success("power_test power_set_property 13 1 27 ten",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=0) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0x0.\r\n");
}

TEST(PowerTest, SetPropertyWithoutAValueSets255) {
    expect_success("power_test power_set_property 13 1 5",
                   "drv_power_set_property(slot_id=13, power_id=1, type=5, value=255) = 0",
                   "Success: slot 13 power 1 set POWER_TEMP_LIMIT 0x5 value 0xff.\r\n");
}

TEST(PowerTest, SetPropertyFailure) {
    expect_failure("power_test power_set_property 13 1 26 1",
                   "drv_power_set_property(slot_id=13, power_id=1, type=26, value=1) = 0x811101a4",
                   "Error  : slot 13 power 1 set POWER_ENABLE_CTRL 0x1a fail. ret 0x811101a4\r\n");
    expect_silent_refusal("power_set_property", {"13", "1"});
}

TEST(PowerTest, GetNum) {
    expect_success("power_test power_get_num 13", "drv_power_get_num(slot_id=13) = 0 num=4",
                   "Success: slot 13 power num 4 \r\n");
    expect_success("power_test power_get_num frame 2", "drv_power_get_num(slot_id=0) = 0",
                   "Success: slot 0 power num 0 \r\n");
    expect_failure("power_test power_get_num 0x10", "drv_power_get_num(slot_id=16) = 0x811101a4 num=4",
                   "Error  : get num fail. ret 0x811101a4\r\n");
    expect_silent_refusal("power_get_num", {});
}

TEST(PowerTest, GetBoardProperty) {
    expect_success("power_test power_get_board_property 13 1 0",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=0, len=1024) = 0 "
                   "buffer=\"[board]\\r\\nitem=7\" len=15",
                   printed("Success: slot 13 power 1 get 0x0 value: [board]\r\nitem=7.\r\n",
                           "para[0]=0x0 para[1]=[board]\r\nitem=7 para[2]=0xf "));
    expect_success("power_test power_get_board_property 13 1 0x1f 2 3",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=31, len=1024) = 0",
                   printed("Success: slot 13 power 1 get 0x1f value: .\r\n", "para[0]=0x0 para[1]= para[2]=0x400 "));
    expect_success("power_test power_get_board_property a b c",
                   "drv_power_get_board_property(slot_id=0, power_id=0, type=0, len=1024) = 0 buffer=\"L\"",
                   printed("Success: slot 0 power 0 get 0x0 value: L.\r\n", "para[0]=0x0 para[1]=L para[2]=0x400 "));
}

TEST(PowerTest, GetBoardPropertyShowsAnAreaThatIsFilledToItsEnd) {
    const std::string full(1024, 'L');
    expect_success("power_test power_get_board_property 13 1 4",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=4, len=1024) = 0 buffer=\"" + full +
                       "\" len=0xffffffff",
                   printed("Success: slot 13 power 1 get 0x4 value: " + full + ".\r\n",
                           "para[0]=0x0 para[1]=" + full + " para[2]=0xffffffff "));
}

TEST(PowerTest, GetBoardPropertyFailure) {
    expect_failure("power_test power_get_board_property 13 1 3",
                   "drv_power_get_board_property(slot_id=13, power_id=1, type=3, len=1024) = 0x811101a4 "
                   "buffer=\"half\" len=2",
                   printed("Error  : slot 13 power 1 get 0x3 fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=half para[2]=0x2 "));
    expect_silent_refusal("power_get_board_property", {"13", "1"});
}

// The delivered board has a file: checksum 0x0dd3, then the label.
TEST(PowerTest, SetBoardPropertyTakesTheFileOfTheBoard) {
    const std::string label = "[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\nmade=2025-10-21";
    const std::string rule =
        "drv_power_set_board_property(slot_id=13, power_id=0, type=0, len=1024, buffer=" + area_of("\x0d\xd3" + label) +
        ")";
    const std::string items = "para[1]=\x0d\xd3" + label + " para[2]=0x400 ";
    for (const char *more : {"", " 7 8"}) {
        expect_success(std::string("power_test power_set_board_property 13 0 0") + more, rule + " = 0",
                       printed("Success: slot 13 power 0 set 0x0 value: " + label + ".\r\n", "para[0]=0x0 " + items));
    }
    expect_failure("power_test power_set_board_property 13 0 0", rule + " = 0x811101a4",
                   printed("Error  : slot 13 power 0 set 0x0 fail. ret 0x811101a4\r\n", "para[0]=0x811101a4 " + items));
}

TEST(PowerTest, SetBoardPropertyWithOtherWords) {
    expect_failure("power_test power_set_board_property 0x10 two 3",
                   "drv_power_set_board_property(slot_id=16, power_id=0, type=3, len=1024) = 0x12",
                   printed("Error  : slot 16 power 0 set 0x3 fail. ret 0x12\r\n",
                           "para[0]=0x12 para[1]=\x0d\xd3[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\n"
                           "made=2025-10-21 para[2]=0x400 "));
    expect_silent_refusal("power_set_board_property", {"13", "1"});
}

// The driver is told of 1024 bytes whatever the file has.
TEST(PowerTest, SetBoardPropertyOfFilesOfEverySize) {
    expect_set_on(
        root_with_property("12label"), set_rule("12label") + " = 0",
        printed("Success: slot 13 power 1 set 0x0 value: label.\r\n", "para[0]=0x0 para[1]=12label para[2]=0x400 ") +
            timing_lines,
        0);
    for (const std::string short_file : {"", "1", "12"}) {
        expect_set_on(root_with_property(short_file), set_rule(short_file) + " = 0",
                      printed("Success: slot 13 power 1 set 0x0 value: .\r\n",
                              "para[0]=0x0 para[1]=" + short_file + " para[2]=0x400 ") +
                          timing_lines,
                      0);
    }
    const std::string full = std::string(1023, 'F') + "E";
    for (const std::string &file : {full, full + "more than there is room for"}) {
        expect_set_on(root_with_property(file), set_rule(full) + " = 0",
                      printed("Success: slot 13 power 1 set 0x0 value: " + full.substr(2) + ".\r\n",
                              "para[0]=0x0 para[1]=" + full + " para[2]=0x400 ") +
                          timing_lines,
                      0);
    }
}

// A checksum may begin with a zero: then the result print has no text, and the line has that behind the checksum.
TEST(PowerTest, SetBoardPropertyShowsTheTextBehindTheChecksum) {
    const std::string file("\0\xd3label", 7);
    expect_set_on(root_with_property(file), set_rule(file) + " = 0",
                  printed("Success: slot 13 power 1 set 0x0 value: label.\r\n", "para[0]=0x0 para[1]= para[2]=0x400 ") +
                      timing_lines,
                  0);
}

TEST(PowerTest, SetBoardPropertyWithoutAFileIsRefused) {
    expect_set_on(root_without_property(), "", set_failed("can't open /home/1\n"), 255);
    expect_set_on(new_scratch_dir(), "", set_failed("can't open /home/1\n"), 255);
    const std::string nowhere = root_without_property();
    fs::create_symlink("/home/2", property_file_of(nowhere));
    expect_set_on(nowhere, "", set_failed("can't open /home/1\n"), 255);
    const std::string loop = root_without_property();
    fs::create_symlink("1", property_file_of(loop));
    expect_set_on(loop, "", set_failed("can't open /home/1\n"), 255);
}

// A pipe without a writer would keep a reader waiting.
TEST(PowerTest, SetBoardPropertyOfWhatIsNoFileIsRefused) {
    const std::string directory = root_without_property();
    fs::create_directory(property_file_of(directory));
    const std::string pipe = root_without_property();
    ASSERT_EQ(mkfifo(property_file_of(pipe).c_str(), 0600), 0);
    for (const std::string &root : {directory, pipe}) {
        expect_set_on(root, "", set_failed("can't open /home/1\n"), 255);
    }
}

TEST(PowerTest, GetAlarm) {
    expect_success("power_test power_get_alarm 13 1 0xa",
                   "drv_power_get_alarm(slot_id=13, power_id=1, type=10) = 0 alarms=0x80 sub_alarm=1",
                   printed("Success: slot 13 power 1 get POWER_ALARM_FAN 0xa result 0x80 sub_result 0x1.\r\n",
                           "para[0]=0x0 para[1]=0x80 para[2]=0x1 "));
    expect_success("power_test power_get_alarm x 1 16 4", "drv_power_get_alarm(slot_id=0, power_id=1, type=16) = 0",
                   printed("Success: slot 0 power 1 get unknown 0x10 result 0x0 sub_result 0x0.\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]=0x0 "));
    expect_failure("power_test power_get_alarm 13 1 13",
                   "drv_power_get_alarm(slot_id=13, power_id=1, type=13) = 0x811101a4 alarms=3 sub_alarm=2",
                   printed("Error  : slot 13 power 1 get POWER_ALARM_INPUT 0xd fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=0x3 para[2]=0x2 "));
    expect_silent_refusal("power_get_alarm", {"13", "1"});
}

TEST(PowerTest, AlarmsAreCalledByTheirNames) {
    constexpr named_number names[] = {
        {0, "unknown"},
        {1, "POWER_ALARM_CMD"},
        {2, "POWER_ALARM_TEMPERATURE"},
        {3, "POWER_ALARM_VIN_UV_FAULT"},
        {4, "POWER_ALARM_IOUT_OC_FAULT"},
        {5, "POWER_ALARM_VOUT_OV_FAULT"},
        {6, "POWER_ALARM_VIN_OV_DETECT"},
        {7, "POWER_ALARM_VIN_UNIT_OFF"},
        {8, "unknown"},
        {9, "POWER_ALARM_OTHER"},
        {10, "POWER_ALARM_FAN"},
        {11, "unknown"},
        {12, "unknown"},
        {13, "POWER_ALARM_INPUT"},
        {14, "POWER_ALARM_IOUT_POUT"},
        {15, "POWER_ALARM_VOUT"},
        {16, "unknown"},
    };
    for (const named_number &alarm : names) {
        const std::string number = std::to_string(alarm.number);
        const std::string named = alarm.name + (" " + hex_of(static_cast<unsigned>(alarm.number)));
        expect_success("power_test power_get_alarm 1 2 " + number,
                       "drv_power_get_alarm(slot_id=1, power_id=2, type=" + number + ") = 0 alarms=5 sub_alarm=6",
                       printed("Success: slot 1 power 2 get " + named + " result 0x5 sub_result 0x6.\r\n",
                               "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    }
}

TEST(PowerTest, GetSoftver) {
    const std::string rule = "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=2)";
    expect_success("power_test power_get_softver 13 1 0x1f 2", rule + " = 0 version=204",
                   "Success: slot 13 power 1 get software version. 204 \r\n");
    expect_success("power_test power_get_softver 13 1 0x1f 2 9", rule + " = 0",
                   "Success: slot 13 power 1 get software version. 0 \r\n");
    expect_success("power_test power_get_softver 13 1 0x1f 2", rule + " = 0x811101a4",
                   "Success: slot 13 power 1 not support get software version. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_softver a b c d",
                   "drv_power_get_softver(slot_id=0, power_id=0, soft_id=0, module_id=0) = 0x12",
                   "Error  : slot 0 power 0 get software version fail. ret 0x12\r\n");
    expect_silent_refusal("power_get_softver", {"13", "1", "31"});
}

TEST(PowerTest, GetBboxInfo) {
    expect_success("power_test power_get_bbox_info 13 1 0xc",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=12) = 0 buffer=[41 42 00 ff] retlen=8",
                   "Success: slot 13 power 1 get bbox info return length 8 \r\n"
                   "65 66 0 255 0 0 0 0 0 0 0 0 \r\n"
                   "Success: slot 13 power 1 get bbox info AB \r\n");
    expect_success("power_test power_get_bbox_info 13 1 len 5",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=0) = 0",
                   "Success: slot 13 power 1 get bbox info return length 0 \r\n"
                   "\r\n"
                   "Success: slot 13 power 1 get bbox info  \r\n");
    expect_success("power_test power_get_bbox_info 13 1 3",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=3) = 0 buffer=\"FFF\" retlen=16",
                   "Success: slot 13 power 1 get bbox info return length 16 \r\n"
                   "70 70 70 \r\n"
                   "Success: slot 13 power 1 get bbox info FFF \r\n");
}

TEST(PowerTest, GetBboxInfoFailure) {
    expect_success("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0x811101a4",
                   "Success: slot 13 power 1 not support get bbox info. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0x12",
                   "Error  : slot 13 power 1 get bbox info fail. ret 0x12\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0 retlen=12",
                   "Error  : slot 13 power 1 get bbox info return length fail. length 0xc\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 -1", "", "malloc fail.\r\n");
    expect_silent_refusal("power_get_bbox_info", {"13", "1"});
}

TEST(PowerTest, GetBboxInfoWithoutMemory) {
    expect_without_text_area("power_test power_get_bbox_info 13 1 16", "drv_power_get_bbox_info = 0 retlen=8",
                             std::string("malloc fail.\r\n") + timing_lines + operate_fail("power_get_bbox_info") +
                                 operate_fail("power_test"),
                             255);
}

TEST(PowerTest, GetSoftwareInfo) {
    expect_success("power_test power_get_software_info 13 1 9",
                   "drv_power_get_software_info(slot_id=13, power_id=1) = 0 "
                   "info={soft_cnt=2 software=[{soft_id=1 module_num=255} {soft_id=0x1f module_num=2}]}\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=1, module_id=0) = 0 version=204\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=0) = 0 version=117\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=1) = 0x12",
                   "Success: slot 13 power 1 get software info. soft_cnt 2 \r\n"
                   "soft_id 0x1 module_num 0xff\r\n"
                   "Success: slot 13 power 1 soft_id 0x1 module_id 0x0 version 204\r\n"
                   "soft_id 0x1f module_num 0x2\r\n"
                   "Success: slot 13 power 1 soft_id 0x1f module_id 0x0 version 117\r\n"
                   "Error  : slot 13 power 1 soft_id 0x1f module_id 0x1 get version fail. ret 0x12\r\n");
    expect_success("power_test power_get_software_info 13 1",
                   "drv_power_get_software_info(slot_id=13, power_id=1) = 0x811101a4",
                   "Success: slot 13 power 1 not support get software info. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_software_info frame 0x1",
                   "drv_power_get_software_info(slot_id=0, power_id=1) = 0x12",
                   "Error  : slot 0 power 1 get software info fail. ret 0x12\r\n");
    expect_silent_refusal("power_get_software_info", {"13"});
}

TEST(PowerTest, Init) {
    expect_success("power_test power_init 13 0x1", "drv_power_init(slot_id=13, power_id=1) = 0",
                   "Success: slot 13 power 1 init success. \r\n");
    expect_success("power_test power_init frame 2 3", "drv_power_init(slot_id=0, power_id=2) = 0",
                   "Success: slot 0 power 2 init success. \r\n");
    expect_failure("power_test power_init 13 1", "drv_power_init(slot_id=13, power_id=1) = 0x811101a4",
                   "Error  : slot 13 power 1 init fail . ret = 0x811101a4 \r\n");
    expect_silent_refusal("power_init", {"13"});
}

TEST(PowerTest, Deinit) {
    expect_success("power_test power_deinit 13 0x1", "drv_power_deinit(slot_id=13, power_id=1) = 0",
                   "Success: slot 13 power 1 deinit success. \r\n");
    expect_success("power_test power_deinit frame 2 3", "drv_power_deinit(slot_id=0, power_id=2) = 0",
                   "Success: slot 0 power 2 deinit success. \r\n");
    expect_failure("power_test power_deinit 13 1", "drv_power_deinit(slot_id=13, power_id=1) = 0x811101a4",
                   "Error  : slot 13 power 1 deinit fail . ret = 0x811101a4 \r\n");
    expect_silent_refusal("power_deinit", {"13"});
}

// What the driver answers is not looked at, and no word is either.
TEST(PowerTest, PatchFunctions) {
    for (const std::string number : {"1", "2"}) {
        const std::string name = "power_patch_func" + number;
        const std::string rule = "drv_" + name + "(text=\"test start " + number + "\", len=12)";
        expect_success("power_test " + name, rule + " = 0", "");
        expect_success("power_test " + name + " null 2", rule + " = 0x811101a4", "");
    }
}

namespace {

const std::string master_rule = "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0\n";
const std::string master_line = "Info   : current board is master. power test now...\r\n";
const std::string no_supply_rules = master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n"
                                                  "drv_power_get_property(slot_id=13, power_id=0, type=0) = 0 value=1\n"
                                                  "drv_power_init(slot_id=13, power_id=0) = 0x84\n"
                                                  "drv_power_get_property(slot_id=13, power_id=0) = 0x811101a4\n"
                                                  "drv_power_set_property(slot_id=13, power_id=0) = 0x811101a4\n"
                                                  "drv_power_get_software_info(slot_id=13, power_id=0) = 0x83";

const std::string absent_display = "Info   : slot 13 power 0 display test begin. \r\n"
                                   "Info   :slot 13 power 0 is not online.\r\n";
const std::string absent_init = "Info   : slot 13 power 0 init and deinit test begin. \r\n"
                                "Info   : slot 13 power 0 is not online.\r\n";
const std::string lacking_config = "Info   : slot 13 power 0 set and get test begin. \r\n"
                                   "Info   : slot 13 power 0 get POWER_TEMP_LIMIT 0x5 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_LATCH_STATE 0x18 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_TEMP_MODE 0x22 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_CLEAR_FAULT 0x1d is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_ENABLE_CTRL 0x1a is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n";
const std::string unlisted_software = "Info   : slot 13 power 0 software test begin. \r\n"
                                      "Error  : slot 13 power 0 get software info fail. ret 0x83\r\n";

std::string rules_with(const std::vector<std::string> &operations) {
    std::string rules = master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n";
    std::istringstream all(no_supply_rules);
    for (std::string rule; std::getline(all, rule);) {
        for (const std::string &operation : operations) {
            rules += rule.starts_with(operation) ? rule + "\n" : "";
        }
    }
    return rules;
}

} // namespace

// A place without a supply, whose driver does not list programs either.
TEST(PowerTest, OnekeyTestsByMode) {
    expect_failure("power_test power_onekey_test_all 13", no_supply_rules,
                   master_line + absent_display + absent_init + lacking_config + unlisted_software);
    expect_success("power_test power_onekey_test_display 0xd 2",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0, type=0)"}),
                   master_line + absent_display);
    expect_success("power_test power_onekey_test_config 13",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0)", "drv_power_set_property"}),
                   master_line + lacking_config);
    expect_success("power_test power_onekey_test_init 13",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0, type=0)", "drv_power_init"}),
                   master_line + absent_init);
    expect_failure("power_test power_onekey_test_software 13", rules_with({"drv_power_get_software_info"}),
                   master_line + unlisted_software);
}

TEST(PowerTest, OnekeyTestsOfAFrameThatIsNone) {
    for (const std::string mode : {"all", "display", "config", "init", "software"}) {
        const std::string name = "power_onekey_test_" + mode;
        expect_failure("power_test " + name + " frame", master_rule + "drv_power_get_num(slot_id=0) = 0x81110103",
                       master_line + "Error  : slot 0 get power num fail. ret 0x81110103\r\n");
        expect_success("power_test " + name + " 13 14",
                       "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x85\n"
                       "drv_power_get_num(slot_id=13) = 0",
                       "Error  : drv_msc_get_state fail, default master, power test now...\r\n");
        expect_success("power_test " + name + " 13", "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1",
                       "Info    : current board is slave, hardware not support power test\r\n");
        expect_silent_refusal(name, {});
    }
}

namespace {

std::string zero_property(int type) {
    return std::string("Success: slot 13 power 0 get ") + power_property_names[type - 1].name + " " +
           hex_of(static_cast<unsigned>(type)) + ": 0x0\r\n";
}

std::string zero_properties() {
    std::string lines;
    for (const int type : {1, 2, 9, 43, 7, 8, 10, 13, 24, 44}) {
        lines += zero_property(type);
    }
    for (int type = 3; type <= 48; ++type) {
        lines += zero_property(type);
    }
    return lines;
}

std::string quiet_alarms() {
    std::string lines;
    for (const char *alarm :
         {"POWER_ALARM_CMD 0x1", "POWER_ALARM_TEMPERATURE 0x2", "POWER_ALARM_VIN_UV_FAULT 0x3",
          "POWER_ALARM_IOUT_OC_FAULT 0x4", "POWER_ALARM_VOUT_OV_FAULT 0x5", "POWER_ALARM_VIN_OV_DETECT 0x6",
          "POWER_ALARM_VIN_UNIT_OFF 0x7", "POWER_ALARM_INPUT 0xd", "POWER_ALARM_OTHER 0x9", "POWER_ALARM_FAN 0xa",
          "POWER_ALARM_IOUT_POUT 0xe", "POWER_ALARM_VOUT 0xf"}) {
        lines += std::string("Success: slot 13 power 0 get ") + alarm + ": alarms 0x0 sub_alarm 0x0\r\n";
    }
    return lines;
}

std::string empty_black_box() {
    std::string numbers;
    for (int i = 0; i < 4096; ++i) {
        numbers += "0 ";
    }
    return "Success: slot 13 power 0 get bbox info return length 0 \r\n" + numbers +
           "\r\nSuccess: slot 13 power 0 get bbox info  \r\n";
}

} // namespace

// A supply that has all there is, and the image of the delivered board.
TEST(PowerTest, OnekeyTestOfASupplyThatHasAll) {
    const std::string unit = "slot_id=13, power_id=0";
    const std::string programs = "Success: slot 13 power 0 get software info. soft_cnt 1 \r\n"
                                 "soft_id 0x1 module_num 0xff\r\n"
                                 "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 204\r\n";
    expect_success(
        "power_test power_onekey_test_all 13",
        master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n" + "drv_power_get_property(" + unit +
            ", type=24) = 0 value=0 x3\n" + "drv_power_get_property(" + unit + ", type=24) = 0 value=1\n" +
            "drv_power_get_property(" + unit + ", type=34) = 0 value=0 x2\n" + "drv_power_get_property(" + unit +
            ", type=34) = 0 value=1\n" + "drv_power_get_property(" + unit + ") = 0 value=0\n" +
            "drv_power_set_property(" + unit + ") = 0\n" + "drv_power_get_bbox_info(" + unit + ", len=4096) = 0\n" +
            "drv_power_get_board_property(" + unit + ", type=0, len=1026) = 0 buffer=\"label\" len=5\n" +
            "drv_power_get_board_property(" + unit + ", len=5) = 0x811101a4 x4\n" + "drv_power_get_alarm(" + unit +
            ") = 0\n" + "drv_power_init(" + unit + ") = 0 x6\n" + "drv_power_deinit(" + unit + ") = 0 x4\n" +
            "drv_power_get_software_info(" + unit +
            ") = 0 info={soft_cnt=1 software=[{soft_id=1 module_num=255}]} x2\n" + "drv_power_get_softver(" + unit +
            ", soft_id=1, module_id=0) = 0 version=204 x2\n" + "drv_power_load_app(" + unit +
            ", reserved=0, len=264) = 0",
        master_line + "Info   : slot 13 power 0 display test begin. \r\n" + empty_black_box() +
            "Success: slot 13 power 0 input format 0 ac and dc_ac_type 0 ac is match \r\n" + zero_properties() +
            "Success: slot 13 power 0 len 5 POWER_BOARD_ELABLE: label\r\n \r\n"
            "Success: slot 13 power 0 not support get POWER_BOARD_SOFT_VER info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_BOARD_HW_VER info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_MODULE_FEATURE info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_CHIP_FEATURE info. ret 0x811101a4\r\n" +
            quiet_alarms() +
            "Info   : slot 13 power 0 init and deinit test begin. \r\n"
            "Success: slot 13 power 0 init and deinit success. times 0\r\n"
            "Success: slot 13 power 0 init and deinit success. times 1\r\n"
            "Success: slot 13 power 0 init and deinit success. times 2\r\n"
            "Success: slot 13 power 0 duplicate init success\r\n"
            "Info   : slot 13 power 0 set and get test begin. \r\n"
            "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 0\r\n"
            "Success: slot 13 power 0 set POWER_LATCH_STATE 0x18 pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_TEMP_MODE 0x22 pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_CLEAR_FAULT 0x1d pass. value 0\r\n"
            "Success: slot 13 power 0 set POWER_ENABLE_CTRL 0x1a pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 10\r\n"
            "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 1\r\n"
            "Info   : slot 13 power 0 software test begin. \r\n" +
            programs +
            "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n"
            "Info   : file head soft_id 0x1 rsv 0x0 crc[0] 0x3e crc[1] 0x6\r\n"
            "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x108\r\n" +
            programs);
}
