// fan_test: every sub-command on the real program, with the driver scripted, and its one-key tests on whole chassis.
#include <filesystem>
#include <regex>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

// A sub-command that hands its words on and shows one answer: what it calls, what the driver answers, what is printed.
struct simple_row {
    std::string line;
    std::string call;
    std::string answer;
    std::string success;
    std::string failure;
    std::string items;
    std::string failure_items;
};

const std::string failed_query = "para[0]=0x68 para[1]=0x0 ";
const std::string failed_setter = "para[0]=0x68 ";

// The words behind module and sub-command are no numbers.
std::string without_numbers(const std::string &line) {
    return std::regex_replace(line, std::regex(" [0-9]\\S*"), " tray");
}

std::string with_zeros(const std::string &call) {
    return std::regex_replace(call, std::regex("=[0-9a-fx]+"), "=0");
}

void expect_row(const simple_row &row) {
    expect_success(row.line, row.call + " = 0" + row.answer, printed(row.success, row.items));
    expect_failure(row.line, row.call + " = 0x68", printed(row.failure, row.failure_items));
}

// Silent about a word too few and a word too many.
void expect_exact_count(const std::string &line) {
    expect_failure(line.substr(0, line.rfind(' ')), "", "");
    expect_failure(line + " 1", "", "");
}

void expect_queries(const std::vector<simple_row> &rows) {
    for (const simple_row &row : rows) {
        expect_row(row);
        expect_exact_count(row.line);
        expect_success(without_numbers(row.line), with_zeros(row.call) + " = 0" + row.answer,
                       printed(row.success, row.items));
    }
}

// A root directory with a file in the release directory.
std::string root_with(const std::string &name, const std::string &content) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/home/release");
    write_file(root + "/home/release/" + name, content);
    return root;
}

process_result run_at(const std::string &root, const std::string &line, const std::string &script) {
    return run_sim({"--state", new_scratch_dir(), "--root", root, "--clock", "virtual", "--strict", "--script",
                    scratch_file("script", script + "\n")},
                   split_words(line));
}

void expect_at(const std::string &root, const std::string &line, const std::string &script, const std::string &output,
               int status) {
    SCOPED_TRACE("kestro_test " + line);
    const process_result result = run_at(root, line, script);
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

void expect_success_at(const std::string &root, const std::string &line, const std::string &script,
                       const std::string &body) {
    expect_at(root, line, script, body + timing_lines, 0);
}

void expect_failure_at(const std::string &root, const std::string &line, const std::string &script,
                       const std::string &body) {
    expect_at(root, line, script,
              body + timing_lines + operate_fail(split_words(line).at(1)) + operate_fail("fan_test"), 255);
}

// An area in the script's language: the text, and zeros up to that size.
std::string area(std::string text, size_t size) {
    text.resize(size, '\0');
    std::string bytes = "[";
    for (const char byte : text) {
        const char digits[] = "0123456789abcdef";
        const auto bits = static_cast<unsigned char>(byte);
        bytes += {digits[bits >> 4], digits[bits & 15], ' '};
    }
    bytes.back() = ']';
    return bytes;
}

std::string padded(std::string text, size_t size) {
    text.resize(size, '\0');
    return text;
}

std::string crc_of(const std::string &text) {
    return "drv_crc16_checksum(data=" + area(text, 1024) + ", len=1024) = 0 crc16=0x4b0a\n";
}

std::string set_label(const std::string &text) {
    return "drv_fan_set_board_property(slot_id=15, type=2, buffer=" + area("\x4b\x0a" + text, 1026) + ", len=1026) = ";
}

std::string shown_label(const std::string &text) {
    return "fan_set_elabel, elabel buff:\r\n" + padded("\x4b\x0a" + text, 1026) + "<end>\r\n";
}

} // namespace

TEST(FanTest, UsageListsTheSubCommandsInOrder) {
    expect_run("fan_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " fan_get_speed\n"
               " fan_get_num\n"
               " fan_get_max_speed\n"
               " fan_get_status\n"
               " fan_set_speed_percent\n"
               " fan_get_speed_percent\n"
               " fan_get_max_speed_by_shift\n"
               " fan_get_max_shift\n"
               " fan_set_led\n"
               " fan_get_led\n"
               " fan_get_online\n"
               " fan_get_wind_direct\n"
               " fan_get_volstatus_history\n"
               " fan_get_his_plug_status\n"
               " fan_get_alarm\n"
               " fan_get_controlable\n"
               " fan_get_detectable\n"
               " fan_set_shift\n"
               " fan_get_shift\n"
               " fan_set_power\n"
               " fan_get_power\n"
               " fan_get_board_property\n"
               " fan_set_board_property\n"
               " fan_init\n"
               " fan_exit\n"
               " fan_get_max_power_of_curshift\n"
               " fan_get_max_power_by_shift\n"
               " fan_get_max_power\n"
               " fan_set_elabel\n"
               " fan_get_operation_complete_status\n"
               " fan_get_info_one_key_test\n"
               " fan_get_alarm_info\n"
               " fan_get_elabel_info\n"
               " fan_elabel_test\n"
               " fan_speed_test\n"
               " fan_get_all_shift_info\n"
               " fan_shift_test\n"
               " fan_led_one_key_test\n"
               " fan_get_init_status\n"
               " fan_multi_init_test\n"
               " fan_multi_deinit_test\n"
               " fan_init_deinit_test\n"
               " fan_one_key_test\n",
               0);
}

TEST(FanTest, QueriesOfAFan) {
    expect_queries({
        {"fan_test fan_get_speed 15 2", "drv_fan_get_speed(slot_id=15, fan_id=2)", " speed=6000",
         "drv_fan_get_speed:6000\r\n", "drv_fan_get_speed fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1770 ",
         failed_query},
        {"fan_test fan_get_max_speed 15 2", "drv_fan_get_max_speed(slot_id=15, fan_id=2)", " max_speed=12000",
         "drv_fan_get_max_speed:12000\r\n", "drv_fan_get_max_speed fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x2ee0 ",
         failed_query},
        {"fan_test fan_get_status 15 2", "drv_fan_get_status(slot_id=15, fan_id=2)", " status=1",
         "drv_fan_get_status:1\r\n", "drv_fan_get_status fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ", failed_query},
        {"fan_test fan_get_speed_percent 0xf 02", "drv_fan_get_speed_percent(slot_id=15, fan_id=2)", " percent=50",
         "drv_fan_get_speed_percent:50\r\n", "drv_fan_get_speed_percent fail, ret:0x68\r\n",
         "para[0]=0x0 para[1]=0x32 ", failed_query},
        {"fan_test fan_get_max_shift 15 2", "drv_fan_get_max_shift(slot_id=15, fan_id=2)", " max_shift=10",
         "drv_fan_get_max_shift:10\r\n", "drv_fan_get_max_shift fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0xa ",
         failed_query},
        {"fan_test fan_get_shift 15 2", "drv_fan_get_shift(slot_id=15, fan_id=2)", " shift=0xffffffff",
         "drv_fan_get_shift:-1\r\n", "drv_fan_get_shift fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0xffffffff ",
         failed_query},
        {"fan_test fan_get_max_power_of_curshift 15 2", "drv_fan_get_max_power_of_curshift(slot_id=15, fan_id=2)",
         " max_power=3", "drv_fan_get_max_power_of_curshift:3\r\n",
         "drv_fan_get_max_power_of_curshift fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x3 ", failed_query},
        {"fan_test fan_get_max_power 15 2", "drv_fan_get_max_power(slot_id=15, fan_id=2)", " max_power=24",
         "drv_fan_get_max_power:24\r\n", "drv_fan_get_max_power fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x18 ",
         failed_query},
    });
}

TEST(FanTest, QueriesOfAFanWithAThirdWord) {
    expect_queries({
        {"fan_test fan_get_max_speed_by_shift 15 2 7", "drv_fan_get_max_speed_by_shift(slot_id=15, fan_id=2, shift=7)",
         " max_speed=8400", "drv_fan_get_max_speed_by_shift:8400\r\n",
         "drv_fan_get_max_speed_by_shift fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x20d0 ", failed_query},
        {"fan_test fan_get_max_power_by_shift 15 2 7", "drv_fan_get_max_power_by_shift(slot_id=15, fan_id=2, shift=7)",
         " max_power=9", "drv_fan_get_max_power_by_shift:9\r\n", "drv_fan_get_max_power_by_shift fail, ret:0x68\r\n",
         "para[0]=0x0 para[1]=0x9 ", failed_query},
        {"fan_test fan_get_alarm 15 2 6", "drv_fan_get_alarm(slot_id=15, fan_id=2, alarm=6)", " status=1",
         "drv_fan_get_alarm:1\r\n", "drv_fan_get_alarm fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ", failed_query},
        {"fan_test fan_get_operation_complete_status 15 0xffffffff 3",
         "drv_fan_get_operation_complete_status(slot_id=15, fan_id=0xffffffff, operation=3)", " status=1",
         "drv_fan_get_operation_complete_status:1\r\n", "drv_fan_get_operation_complete_status fail, ret:0x68\r\n",
         "para[0]=0x0 para[1]=0x1 ", failed_query},
    });
}

TEST(FanTest, QueriesOfATray) {
    expect_queries({
        {"fan_test fan_get_num 15", "drv_fan_get_num(slot_id=15)", " num=3", "drv_fan_get_num:3\r\n",
         "drv_fan_get_num fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x3 ", failed_query},
        {"fan_test fan_get_led 15 4", "drv_fan_get_led(slot_id=15, type=4)", " color=2", "drv_fan_get_led:2\r\n",
         "drv_fan_get_led fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x2 ", failed_query},
        {"fan_test fan_get_online 15", "drv_fan_get_online_status(slot_id=15)", " online=1",
         "drv_fan_get_online_status:1\r\n", "drv_fan_get_online_status fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
        {"fan_test fan_get_wind_direct 15", "drv_fan_get_wind_direct(slot_id=15)", " direct=1",
         "fan get wind direct:1\r\n", "fan get wind direct fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
        {"fan_test fan_get_volstatus_history 15", "drv_fan_get_volstatus_history(slot_id=15)", " status=1",
         "fan get volstatus history:1\r\n", "fan get volstatus history fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
        {"fan_test fan_get_his_plug_status 15", "drv_fan_get_history_plug_status(slot_id=15)", " plugged=1",
         "fan get his plug status:1\r\n", "fan get his plug status fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
        {"fan_test fan_get_controlable 15", "drv_fan_get_controlable(slot_id=15)", " controlable=1",
         "drv_fan_get_controlable:1\r\n", "drv_fan_get_controlable fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
        {"fan_test fan_get_detectable 15", "drv_fan_get_detectable(slot_id=15)", " detectable=1",
         "drv_fan_get_detectable:1\r\n", "drv_fan_get_detectable fail, ret:0x68\r\n", "para[0]=0x0 para[1]=0x1 ",
         failed_query},
    });
}

TEST(FanTest, AQueryOfADriverThatWritesNothingShowsZero) {
    expect_success("fan_test fan_get_speed 15 2", "drv_fan_get_speed(slot_id=15, fan_id=2) = 0",
                   printed("drv_fan_get_speed:0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("fan_test fan_get_speed 15 2", "drv_fan_get_speed(slot_id=15, fan_id=2) = 0x811101a4 speed=7",
                   printed("drv_fan_get_speed fail, ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x7 "));
}

TEST(FanTest, Setters) {
    const std::vector<simple_row> rows = {
        {"fan_test fan_set_speed_percent 15 2 80", "drv_fan_set_speed_percent(slot_id=15, fan_id=2, percent=80)", "",
         "drv_fan_set_speed_percent success percent:80\r\n", "drv_fan_set_speed_percent fail, ret:0x68\r\n",
         "para[0]=0x0 ", failed_setter},
        {"fan_test fan_set_led 15 1 4", "drv_fan_set_led(slot_id=15, type=1, color=4)", "",
         "drv_fan_set_led suceess, type:1, color:4\r\n", "drv_fan_set_led fail, ret:0x68\r\n", "para[0]=0x0 ",
         failed_setter},
        {"fan_test fan_set_shift 15 0xffffffff 7", "drv_fan_set_shift(slot_id=15, fan_id=0xffffffff, shift=7)", "",
         "drv_fan_set_shift:7\r\n", "drv_fan_set_shift fail, ret:0x68\r\n", "para[0]=0x0 ", failed_setter},
        {"fan_test fan_init 15", "drv_fan_init(slot_id=15)", "", "drv_fan_init suceess!\r\n",
         "drv_fan_init fail, ret:0x68\r\n", "para[0]=0x0 ", failed_setter},
        {"fan_test fan_exit 15", "drv_fan_exit(slot_id=15)", "", "drv_fan_exit success!\r\n",
         "drv_fan_exit fail, ret:0x68\r\n", "para[0]=0x0 ", failed_setter},
    };
    for (const simple_row &row : rows) {
        expect_row(row);
        expect_exact_count(row.line);
    }
}

TEST(FanTest, SettersWithWordsThatAreNoNumbers) {
    expect_success("fan_test fan_set_speed_percent tray fan full",
                   "drv_fan_set_speed_percent(slot_id=0, fan_id=0, percent=0) = 0",
                   printed("drv_fan_set_speed_percent success percent:0\r\n", "para[0]=0x0 "));
    expect_success("fan_test fan_set_led tray lamp green", "drv_fan_set_led(slot_id=0, type=0, color=0) = 0",
                   printed("drv_fan_set_led suceess, type:0, color:0\r\n", "para[0]=0x0 "));
    expect_success("fan_test fan_set_shift tray fan -1", "drv_fan_set_shift(slot_id=0, fan_id=0, shift=0xffffffff) = 0",
                   printed("drv_fan_set_shift:-1\r\n", "para[0]=0x0 "));
    expect_success("fan_test fan_init tray", "drv_fan_init(slot_id=0) = 0",
                   printed("drv_fan_init suceess!\r\n", "para[0]=0x0 "));
    expect_success("fan_test fan_exit tray", "drv_fan_exit(slot_id=0) = 0",
                   printed("drv_fan_exit success!\r\n", "para[0]=0x0 "));
}

// Their result print has two items for each value; those without a value show 0.
TEST(FanTest, PowerOfAFan) {
    expect_success("fan_test fan_set_power 15 2 1", "drv_fan_set_power(slot_id=15, fan_id=2, power=1) = 0",
                   printed("drv_fan_set_power:1\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("fan_test fan_set_power 15 2 0", "drv_fan_set_power(slot_id=15, fan_id=2, power=0) = 0x68",
                   printed("drv_fan_set_power fail, ret:0x68\r\n", "para[0]=0x68 para[1]=0x0 "));
    expect_success("fan_test fan_set_power tray fan on", "drv_fan_set_power(slot_id=0, fan_id=0, power=0) = 0",
                   printed("drv_fan_set_power:0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("fan_test fan_get_power 15 2", "drv_fan_get_power(slot_id=15, fan_id=2) = 0 power=1",
                   printed("drv_fan_get_power:1\r\n", "para[0]=0x0 para[1]=0x1 para[2]=0x0 para[3]=0x0 "));
    expect_failure(
        "fan_test fan_get_power 15 2", "drv_fan_get_power(slot_id=15, fan_id=2) = 0x68",
        printed("drv_fan_get_power fail, ret:0x68\r\n", "para[0]=0x68 para[1]=0x0 para[2]=0x0 para[3]=0x0 "));
    expect_success("fan_test fan_get_power tray fan", "drv_fan_get_power(slot_id=0, fan_id=0) = 0 power=1",
                   printed("drv_fan_get_power:1\r\n", "para[0]=0x0 para[1]=0x1 para[2]=0x0 para[3]=0x0 "));
}

TEST(FanTest, PowerOfAFanWithAnotherNumberOfWords) {
    for (const char *words : {"", " 15", " 15 2", " 15 2 1 0"}) {
        expect_failure(std::string("fan_test fan_set_power") + words, "",
                       "./kestro_test fan_test fan_set_power [slot_id fan_id power]\r\n");
    }
    for (const char *words : {"", " 15", " 15 2 1"}) {
        expect_failure(std::string("fan_test fan_get_power") + words, "",
                       "./kestro_test fan_test fan_get_power [slot_id fan_id]\r\n");
    }
}

TEST(FanTest, GetBoardProperty) {
    expect_success("fan_test fan_get_board_property 15 1 16",
                   "drv_fan_get_board_property(slot_id=15, type=1, len=16) = 0 buffer=[56 32 00 ff 0a] len=5",
                   "drv_fan_get_board_property:V2\r\nlen:5\r\n56 32 0 ff a \r\n <end> \r\n");
    expect_success("fan_test fan_get_board_property tray type 0x10",
                   "drv_fan_get_board_property(slot_id=0, type=0, len=16) = 0 len=0",
                   "drv_fan_get_board_property:\r\nlen:0\r\n\r\n <end> \r\n");
    expect_failure("fan_test fan_get_board_property 15 2 1026",
                   "drv_fan_get_board_property(slot_id=15, type=2, len=1026) = 0x811101a4", "");
    expect_failure("fan_test fan_get_board_property 15 2", "", "");
    expect_failure("fan_test fan_get_board_property 15 2 1026 0", "", "");
}

TEST(FanTest, GetBoardPropertyShowsItsAreaAndNoMore) {
    expect_success("fan_test fan_get_board_property 15 1 4",
                   "drv_fan_get_board_property(slot_id=15, type=1, len=4) = 0 buffer=[41 42 43 44]",
                   "drv_fan_get_board_property:ABCD\r\nlen:4\r\n41 42 43 44 \r\n <end> \r\n");
    expect_success("fan_test fan_get_board_property 15 1 4",
                   "drv_fan_get_board_property(slot_id=15, type=1, len=4) = 0 buffer=[41 42 43 44] len=9",
                   "drv_fan_get_board_property:ABCD\r\nlen:9\r\n41 42 43 44 \r\n <end> \r\n");
    expect_success("fan_test fan_get_board_property 15 1 none",
                   "drv_fan_get_board_property(slot_id=15, type=1, len=0) = 0",
                   "drv_fan_get_board_property:\r\nlen:0\r\n\r\n <end> \r\n");
}

TEST(FanTest, BoardPropertiesWithoutAnArea) {
    const std::string failed = std::string("malloc buffer fail\r\n") + timing_lines;
    expect_without_text_area("fan_test fan_get_board_property 15 1 64", "drv_fan_get_board_property = 0",
                             failed + operate_fail("fan_get_board_property") + operate_fail("fan_test"), 255);
    expect_without_text_area("fan_test fan_set_board_property 15 1 fan_pcb_version.txt 64",
                             "drv_fan_set_board_property = 0",
                             failed + operate_fail("fan_set_board_property") + operate_fail("fan_test"), 255);
    expect_without_text_area("fan_test fan_set_elabel 15 /home/release/fan_label.txt",
                             "drv_fan_set_board_property = 0\ndrv_crc16_checksum = 0",
                             failed + operate_fail("fan_set_elabel") + operate_fail("fan_test"), 255);
}

// The delivered board has a version file.
TEST(FanTest, SetPcbVersion) {
    expect_success("fan_test fan_set_board_property 15 1 fan_pcb_version.txt 8",
                   "drv_fan_set_board_property(slot_id=15, type=1, buffer=[56 45 52 2e 43 00 00 00], len=8) = 0",
                   printed("image_len:5\r\ndrv_fan_set_board_property, pcb_buff:VER.C.\r\n"
                           "drv_fan_set_board_property:VER.C\r\nlen:8",
                           "para[0]=0x0 "));
    expect_failure("fan_test fan_set_board_property 0xf 01 fan_pcb_version.txt 4",
                   "drv_fan_set_board_property(slot_id=15, type=1, buffer=[56 45 52 2e], len=4) = 0x68",
                   printed("image_len:5\r\ndrv_fan_set_board_property, pcb_buff:VER..\r\n"
                           "drv_fan_set_board_property fail, ret:0x68\r\n",
                           "para[0]=0x68 "));
}

TEST(FanTest, SetLabelImageAndAbilityFile) {
    const std::string root = root_with("image", std::string("\x01\x0f\0\xa0Z", 5));
    expect_success_at(root, "fan_test fan_set_board_property 15 2 image 5",
                      "drv_fan_set_board_property(slot_id=15, type=2, buffer=[01 0f 00 a0 5a], len=5) = 0",
                      printed("drv_fan_set_board_property:\x01\x0f\r\nlen:5", "para[0]=0x0 "));
    expect_success_at(root, "fan_test fan_set_board_property 15 3 image 7",
                      "drv_fan_set_board_property(slot_id=15, type=3, buffer=[01 0f 00 a0 5a 00 00], len=7) = 0",
                      printed("fan_set_board_property, ability_buff:\r\n1f0a05a00<end>\r\n"
                              "drv_fan_set_board_property:\x01\x0f\r\nlen:7",
                              "para[0]=0x0 "));
    expect_failure_at(root, "fan_test fan_set_board_property 15 3 image 2",
                      "drv_fan_set_board_property(slot_id=15, type=3, buffer=[01 0f], len=2) = 0x811101a4",
                      printed("fan_set_board_property, ability_buff:\r\n1f<end>\r\n"
                              "drv_fan_set_board_property fail, ret:0x811101a4\r\n",
                              "para[0]=0x811101a4 "));
}

TEST(FanTest, SetBoardPropertyOfAnotherType) {
    for (const char *type : {"4", "0", "6", "type"}) {
        expect_failure(std::string("fan_test fan_set_board_property 15 ") + type + " fan_pcb_version.txt 8", "",
                       "drv_fan_set_board_property, invalid type.\r\n");
    }
}

TEST(FanTest, SetBoardPropertyWithoutAFile) {
    expect_failure("fan_test fan_set_board_property 15 4 no_such_file 8", "",
                   "open file[/home/release/no_such_file] failure\r\n");
    expect_failure("fan_test fan_set_board_property 15 1 fan_pcb_version.txt", "", "");
    expect_failure("fan_test fan_set_board_property 15 1 fan_pcb_version.txt 8 9", "", "");
    expect_failure("fan_test fan_set_board_property", "", "");
}

// A directory, a pipe that nobody writes to, an empty name.
TEST(FanTest, SetBoardPropertyOfWhatIsNoFile) {
    const std::string root = root_with("image", "x");
    std::filesystem::create_directory(root + "/home/release/folder");
    ASSERT_EQ(mkfifo((root + "/home/release/pipe").c_str(), 0600), 0);
    expect_failure_at(root, "fan_test fan_set_board_property 15 2 folder 8", "",
                      "open file[/home/release/folder] failure\r\n");
    expect_failure_at(root, "fan_test fan_set_board_property 15 2 pipe 8", "",
                      "open file[/home/release/pipe] failure\r\n");
    expect_failure_at(root, "fan_test fan_set_board_property 15 2 '' 8", "", "open file[/home/release/] failure\r\n");
    expect_failure_at(root, "fan_test fan_set_elabel 15 /home/release/folder", "",
                      "open elabel file[/home/release/folder] failure\r\n");
    expect_failure_at(root, "fan_test fan_set_elabel 15 /home/release/pipe", "",
                      "open elabel file[/home/release/pipe] failure\r\n");
}

// The path has room for 127 characters.
TEST(FanTest, PathsThatFitAndPathsThatDoNot) {
    const std::string fits(113, 'f');
    const std::string root = root_with(fits, "V");
    write_file(root + "/home/release/" + fits + "f", "W");
    expect_success_at(root, "fan_test fan_set_board_property 15 2 " + fits + " 1",
                      "drv_fan_set_board_property(slot_id=15, type=2, buffer=[56], len=1) = 0",
                      printed("drv_fan_set_board_property:V\r\nlen:1", "para[0]=0x0 "));
    expect_failure_at(root, "fan_test fan_set_board_property 15 2 " + fits + "f 1", "",
                      "open file[/home/release/" + fits + "] failure\r\n");
    expect_failure_at(root, "fan_test fan_set_elabel 15 /home/release/" + fits + "f", "",
                      "open elabel file[/home/release/" + fits + "] failure\r\n");
}

TEST(FanTest, SetElabel) {
    const std::string label = "[board]\nitem=KT-FAN-12000\nserial=2511040999\nmade=2025-11-03\n";
    expect_success("fan_test fan_set_elabel 15 /home/release/fan_label.txt", crc_of(label) + set_label(label) + "0",
                   shown_label(label) + printed("fan_set_elabel success!!\r\n", "para[0]=0x0 "));
    expect_failure("fan_test fan_set_elabel 15 /home/release/fan_label.txt", crc_of(label) + set_label(label) + "0x68",
                   shown_label(label) + printed("fan_set_elabel fail!!\r\n", "para[0]=0x68 "));
    expect_failure("fan_test fan_set_elabel 15 /home/release/fan_label.txt", "drv_crc16_checksum = 0x68",
                   "drv_crc16_checksum failure\r\n");
}

TEST(FanTest, SetElabelOfAnyLength) {
    const std::string longest(1024, 'L');
    expect_success_at(root_with("label", longest), "fan_test fan_set_elabel 15 /home/release/label",
                      crc_of(longest) + set_label(longest) + "0",
                      shown_label(longest) + printed("fan_set_elabel success!!\r\n", "para[0]=0x0 "));
    expect_success_at(root_with("label", ""), "fan_test fan_set_elabel 15 /home/release/label",
                      crc_of("") + set_label("") + "0",
                      shown_label("") + printed("fan_set_elabel success!!\r\n", "para[0]=0x0 "));
    const std::string binary("a\0b", 3);
    expect_success_at(root_with("label", binary), "fan_test fan_set_elabel 15 /home/release/label",
                      crc_of(binary) + set_label(binary) + "0",
                      shown_label(binary) + printed("fan_set_elabel success!!\r\n", "para[0]=0x0 "));
    expect_failure_at(root_with("label", longest + "L"), "fan_test fan_set_elabel 15 /home/release/label", "",
                      "read elabel file[/home/release/label] file_len:1025 read_len:1025 or more 1024\r\n");
}

TEST(FanTest, SetElabelOfAHugeFile) {
    const std::string root = root_with("label", "x");
    std::filesystem::resize_file(root + "/home/release/label", 16 * 1024 * 1024);
    expect_failure_at(root, "fan_test fan_set_elabel 15 /home/release/label", "",
                      "read elabel file[/home/release/label] file_len:16777216 read_len:16777216 or more 1024\r\n");
    std::filesystem::resize_file(root + "/home/release/label", 16 * 1024 * 1024 + 1);
    expect_failure_at(root, "fan_test fan_set_elabel 15 /home/release/label", "", "malloc buffer fail\r\n");
}

// Its length is not known before it is read.
TEST(FanTest, SetElabelOfAFileOfTheKernel) {
    expect_failure("fan_test fan_set_elabel 15 /proc/version", "",
                   "read elabel file[/proc/version] file_len:-1 read_len:0 or more 1024\r\n");
}

TEST(FanTest, SetElabelWithoutAFileOrWithAnotherNumberOfWords) {
    expect_failure("fan_test fan_set_elabel 15 /home/release/no_such_file", "",
                   "open elabel file[/home/release/no_such_file] failure\r\n");
    expect_failure("fan_test fan_set_elabel 15 ''", "", "open elabel file[] failure\r\n");
    expect_failure("fan_test fan_set_elabel 15", "", "");
    expect_failure("fan_test fan_set_elabel 15 /home/release/fan_label.txt 1", "", "");
}

// What is set is there afterwards, and the tray's firmware takes the checksum for right.
TEST(FanTest, ALabelIsKeptByTheTray) {
    const std::string state = new_scratch_dir();
    const auto run = [&](const std::string &line) {
        return run_sim({"--state", state, "--clock", "virtual"}, split_words(line));
    };
    const std::string label = "[board]\nitem=KT-FAN-12000\nserial=2511040999\nmade=2025-11-03\n";
    EXPECT_EQ(run("fan_test fan_set_elabel 15 /home/release/fan_label.txt").status, 0);
    const std::string out = run("fan_test fan_get_elabel_info").out;
    EXPECT_NE(out.find("[FAN15]\r\nElabel:  length: 1026, CRC: "), std::string::npos);
    EXPECT_NE(out.find(label + "\r\n"), std::string::npos);
    EXPECT_EQ(run("fan_test fan_set_board_property 15 1 fan_pcb_version.txt 6").status, 0);
    EXPECT_EQ(run("fan_test fan_get_board_property 15 1 16").out,
              std::string("drv_fan_get_board_property:VER.C\r\nlen:6\r\n56 45 52 2e 43 0 \r\n <end> \r\n") +
                  timing_lines);
}

// Rows of tests of all trays ignore any words.
TEST(FanTest, OneKeyTestsOfAllTraysThatFail) {
    const struct {
        const char *name;
        const char *label;
    } rows[] = {
        {"fan_get_info_one_key_test", "fan_check_get_info_one_key_test"},
        {"fan_get_alarm_info", "fan_get_alarm_info"},
        {"fan_get_elabel_info", "fan_get_elabel_info"},
        {"fan_get_all_shift_info", "fan_get_all_shift_info"},
        {"fan_led_one_key_test", "fan_led_one_key_test"},
        {"fan_one_key_test", "fan_check_one_key"},
    };
    for (const auto &row : rows) {
        for (const char *words : {"", " 15", " 15 2 tray"}) {
            expect_failure(std::string("fan_test ") + row.name + words, "drv_slot_get_list(type=5) = 0x68",
                           printed(std::string("Error: get fan slot list fail\r\n") + row.label + " fail, ret:0x68\r\n",
                                   "para[0]=0x68 "));
        }
    }
}

TEST(FanTest, OneKeyTestsOfATrayThatFail) {
    const std::string dashes = "----------------------------------------------------------------\r\n";
    expect_failure("fan_test fan_elabel_test 15 3", "drv_fan_get_board_property(slot_id=15, type=2, len=1026) = 0x68",
                   printed(dashes + "Error: get fan15 elabel fail\r\n[FAN15] Elabel Test: --\r\n"
                                    "fan_elabel_test fail, ret:0x68\r\n",
                           "para[0]=0x68 "));
    expect_failure("fan_test fan_speed_test 15 3", "drv_fan_get_num(slot_id=15) = 0x68",
                   printed("Error: get fan15 num fail\r\nfan_speed_test fail, ret:0x68\r\n", "para[0]=0x68 "));
    expect_failure("fan_test fan_shift_test 15 3", "drv_fan_get_num(slot_id=15) = 0x68",
                   printed("Error: get fan15 num fail\r\nfan_shift_test fail, ret:0x68\r\n", "para[0]=0x68 "));
    expect_failure("fan_test fan_get_init_status 15", "drv_fan_get_num(slot_id=15) = 0x68",
                   printed("Error: get fan15 num fail\r\nfan_get_init_status fail, ret:0x68\r\n", "para[0]=0x68 "));
    expect_failure("fan_test fan_multi_init_test 15 1", "drv_fan_init(slot_id=15) = 0x68",
                   printed(dashes + "[FAN15] Multi Init Test Result: \r\nError: [0 times]init fail(0x68)\r\n"
                                    "Info: Success times: 0, Fail times: 1, total times: 1\r\n"
                                    "-----------------Total test time: 000s 000000ms-----------------\r\n"
                                    "fan_multi_init_test fail, ret:0x68\r\n",
                           "para[0]=0x68 "));
    expect_run("fan_test fan_multi_deinit_test 15 1",
               "drv_fan_exit(slot_id=15) = 0\ndrv_fan_init(slot_id=15) = 0x68\n"
               "drv_fan_get_operation_complete_status(slot_id=15, fan_id=0xffffffff, operation=0) = 0",
               printed(dashes + "[FAN15] Multi Deinit Test Result: \r\nError: init fail when recovery(0x68)\r\n"
                                "Info: Success times: 1, Fail times: 0, total times: 1\r\n"
                                "-----------------Total test time: 001s 001000ms-----------------\r\n"
                                "fan_multi_deinit_test fail, ret:0x68\r\n",
                       "para[0]=0x68 ") +
                   "cmd_exec used second:1\r\ncmd_exec used millisecond:1000\r\n" +
                   operate_fail("fan_multi_deinit_test") + operate_fail("fan_test"),
               255);
    expect_failure("fan_test fan_init_deinit_test 15 1", "drv_fan_exit(slot_id=15) = 0x68",
                   printed(dashes + "[FAN15] Init-Deinit Test Result: \r\n"
                                    "Info: Success times: 0, Fail times: 1, total times: 1\r\n"
                                    "-----------------Total test time: 000s 000000ms-----------------\r\n"
                                    "fan_init_deinit_test fail, ret:0x68\r\n",
                           "para[0]=0x68 "));
}

TEST(FanTest, OneKeyTestsThatPass) {
    const std::string dashes = "----------------------------------------------------------------\r\n";
    expect_success("fan_test fan_get_init_status tray", "drv_fan_get_num(slot_id=0) = 0 num=0",
                   printed(dashes + "[FAN0] Init Status:\r\n" + dashes, "para[0]=0x0 "));
    expect_success(
        "fan_test fan_led_one_key_test", "drv_slot_get_list(type=5) = 0 list={num=0}",
        printed(dashes + "--------------------Total test time: 0s 0ms--------------------\r\n", "para[0]=0x0 "));
    expect_success("fan_test fan_multi_init_test 15 rounds", "",
                   printed(dashes + "[FAN15] Multi Init Test Result: \r\n"
                                    "Info: Success times: 0, Fail times: 0, total times: 0\r\n"
                                    "-----------------Total test time: 000s 000000ms-----------------\r\n",
                           "para[0]=0x0 "));
}

TEST(FanTest, OneKeyTestsOfATrayNeedTheirWords) {
    for (const char *name : {"fan_elabel_test", "fan_speed_test", "fan_shift_test", "fan_multi_init_test",
                             "fan_multi_deinit_test", "fan_init_deinit_test"}) {
        expect_failure(std::string("fan_test ") + name, "", "");
        expect_failure(std::string("fan_test ") + name + " 15", "", "");
        expect_failure(std::string("fan_test ") + name + " 15 2 3", "", "");
    }
    expect_failure("fan_test fan_get_init_status", "", "");
    expect_failure("fan_test fan_get_init_status 15 2", "", "");
}
