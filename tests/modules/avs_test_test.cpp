// avs_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

// The first three sub-commands are alike but for their names.
struct check {
    const char *command;
    const char *operation;
    const char *line;  // what the result line begins with
    const char *usage; // what too few words print
};

const check checks[] = {
    {"avs_test avs_check_phase_fault", "drv_avs_check_phase_fault",
     "drv_avs_check_phase_fault:[ret]:", "kestro_test avs_test avs_check_phase_fault inst_id chip_id len\n"},
    {"avs_test avs_check_chip_status", "drv_avs_check_chip",
     "drv_avs_check_chip_status:[ret]:", "kestro_test avs_test avs_check_chip_status inst_id chip_id len\n"},
    {"avs_test avs_check_word_fault_status", "drv_avs_check_word_fault",
     "drv_avs_check_word_fault_status:[ret]:", "kestro_test avs_test word_fault_status inst_id chip_id len\n"},
};

} // namespace

TEST(AvsTest, UsageListsTheSubCommandsInOrder) {
    expect_run("avs_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " avs_check_phase_fault\n"
               " avs_check_chip_status\n"
               " avs_check_word_fault_status\n"
               " avs_get_item_value\n"
               " avs_get_item_string\n",
               0);
}

TEST(AvsTest, Checks) {
    for (const check &one : checks) {
        const std::string command = one.command;
        const std::string operation = one.operation;
        const std::string line = one.line;
        expect_success(command + " 0xff000007 1 64",
                       operation + "(inst_id=0xff000007, chip_id=1, len=64) = 0 result=1 buffer=\"phase 3\"",
                       line + "0\r\nresult:1,len:64\r\nphase 3\r\n");
        expect_success(command + " 1 0x10", operation + "(inst_id=0xffffffff, chip_id=1, len=16) = 0 result=0xffffffff",
                       line + "0\r\nresult:-1,len:16\r\n\r\n");
        expect_success(command + " 1 2 30 4", operation + "(inst_id=1, chip_id=2, len=30) = 0 result=0 buffer=\"good\"",
                       line + "0\r\nresult:0,len:30\r\ngood\r\n");
        expect_failure(command + " 1 64", operation + "(inst_id=0xffffffff, chip_id=1, len=64) = 0x811101a4",
                       line + "-2129591900\r\nresult:0,len:64\r\n\r\n");
    }
}

TEST(AvsTest, ChecksShowAFullAreaToItsLastByte) {
    for (const check &one : checks) {
        expect_success(std::string(one.command) + " 1 4",
                       std::string(one.operation) +
                           "(inst_id=0xffffffff, chip_id=1, len=4) = 0 result=1 buffer=[6f 70 65 6e]",
                       std::string(one.line) + "0\r\nresult:1,len:4\r\nopen\r\n");
    }
}

TEST(AvsTest, ChecksWithoutALengthHaveNoArea) {
    for (const check &one : checks) {
        const std::string operation = one.operation;
        expect_success(std::string(one.command) + " chip length",
                       operation + "(inst_id=0xffffffff, chip_id=0, len=0) = 0 result=1",
                       std::string(one.line) + "0\r\nresult:1,len:0\r\n(null)\r\n");
        expect_failure(std::string(one.command) + " 7 1 0", operation + "(inst_id=7, chip_id=1, len=0) = 0x12",
                       std::string(one.line) + "18\r\nresult:0,len:0\r\n(null)\r\n");
    }
}

TEST(AvsTest, ChecksWithTooFewWordsPrintTheirUsage) {
    for (const check &one : checks) {
        expect_failure(one.command, "", one.usage);
        expect_failure(std::string(one.command) + " 1", "", one.usage);
    }
}

TEST(AvsTest, GetItemValue) {
    expect_success("avs_test avs_get_item_value 0xff000007 1 2",
                   "drv_avs_get_item_value(inst_id=0xff000007, chip_id=1, item=2) = 0 value=12040",
                   "drv_avs_get_item_value:[ret]:0\r\n value:12040\r\n");
    expect_success("avs_test avs_get_item_value 1 0x2",
                   "drv_avs_get_item_value(inst_id=0xffffffff, chip_id=1, item=2) = 0 value=0xffffffff",
                   "drv_avs_get_item_value:[ret]:0\r\n value:-1\r\n");
    expect_success("avs_test avs_get_item_value 1 2 3 4",
                   "drv_avs_get_item_value(inst_id=1, chip_id=2, item=3) = 0 value=0",
                   "drv_avs_get_item_value:[ret]:0\r\n value:0\r\n");
    expect_success("avs_test avs_get_item_value chip item",
                   "drv_avs_get_item_value(inst_id=0xffffffff, chip_id=0, item=0) = 0 value=5",
                   "drv_avs_get_item_value:[ret]:0\r\n value:5\r\n");
    expect_failure("avs_test avs_get_item_value 1 2",
                   "drv_avs_get_item_value(inst_id=0xffffffff, chip_id=1, item=2) = 0x811101a4",
                   "drv_avs_get_item_value:[ret]:-2129591900\r\n value:0\r\n");
    expect_failure("avs_test avs_get_item_value", "", "kestro_test avs_get_in_volt inst_id chip_id len\n");
    expect_failure("avs_test avs_get_item_value 1", "", "kestro_test avs_get_in_volt inst_id chip_id len\n");
}

TEST(AvsTest, GetItemString) {
    expect_success(
        "avs_test avs_get_item_string 0xff000007 1 2 64",
        "drv_avs_get_item_string(inst_id=0xff000007, chip_id=1, item=2, len=64) = 0 buffer=\"target voltage 900 mV\"",
        "drv_avs_get_item_string:[ret]:0\r\n buf:target voltage 900 mV, len:64\r\n");
    expect_success("avs_test avs_get_item_string 1 2 4",
                   "drv_avs_get_item_string(inst_id=0xffffffff, chip_id=1, item=2, len=4) = 0 buffer=[39 30 30 6d]",
                   "drv_avs_get_item_string:[ret]:0\r\n buf:900m, len:4\r\n");
    expect_success("avs_test avs_get_item_string 1 2 3 40 5",
                   "drv_avs_get_item_string(inst_id=1, chip_id=2, item=3, len=40) = 0",
                   "drv_avs_get_item_string:[ret]:0\r\n buf:, len:40\r\n");
    expect_success("avs_test avs_get_item_string chip item length",
                   "drv_avs_get_item_string(inst_id=0xffffffff, chip_id=0, item=0, len=0) = 0",
                   "drv_avs_get_item_string:[ret]:0\r\n buf:(null), len:0\r\n");
    expect_failure("avs_test avs_get_item_string 1 2 64",
                   "drv_avs_get_item_string(inst_id=0xffffffff, chip_id=1, item=2, len=64) = 0x811101a4",
                   "drv_avs_get_item_string:[ret]:-2129591900\r\n buf:, len:64\r\n");
}

TEST(AvsTest, GetItemStringNeedsThreeWords) {
    const std::string usage = "kestro_test avs_get_item_string inst_id chip_id len\n";
    expect_failure("avs_test avs_get_item_string", "", usage);
    expect_failure("avs_test avs_get_item_string 1", "", usage);
    expect_failure("avs_test avs_get_item_string 1 2", "", usage);
}

TEST(AvsTest, NothingIsPrintedWithoutATextArea) {
    expect_without_text_area("avs_test avs_check_phase_fault 1 64", "drv_avs_check_phase_fault = 0", timing_lines, 0);
    expect_without_text_area("avs_test avs_check_chip_status 1 64", "drv_avs_check_chip = 0", timing_lines, 0);
    expect_without_text_area("avs_test avs_check_word_fault_status 1 64", "drv_avs_check_word_fault = 0", timing_lines,
                             0);
    expect_without_text_area("avs_test avs_get_item_string 1 2 64", "drv_avs_get_item_string = 0", timing_lines, 0);
}
