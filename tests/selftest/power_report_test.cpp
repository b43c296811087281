// What power supplies report of themselves: number, versions, black box, programs, and whether they have input.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_script.h"

using namespace kestro_tests;

namespace {

std::string version_rule(int soft_id, int module_id, const std::string &answer) {
    return "drv_power_get_softver(" + power_unit_words + ", soft_id=" + std::to_string(soft_id) +
           ", module_id=" + std::to_string(module_id) + ") = " + answer + "\n";
}

std::string info_rule(const std::string &answer) {
    return power_call("get_software_info", answer);
}

} // namespace

TEST(PowerReportTest, HowManySuppliesTheFrameHas) {
    expect_part("power_number", "drv_power_get_num(slot_id=13) = 0 num=4\n", "Success: slot 13 power num 4 \r\n", 0);
    expect_part("power_number", "drv_power_get_num(slot_id=13) = 0\n", "Success: slot 13 power num 0 \r\n", 0);
    expect_part("power_number", "drv_power_get_num(slot_id=13) = 0x61\n", "Error  : get num fail. ret 0x61\r\n", 0x61);
    expect_part("power_number", "drv_power_get_num(slot_id=13) = 0x811101a4\n",
                "Error  : get num fail. ret 0x811101a4\r\n", static_cast<int>(0x811101a4U));
}

TEST(PowerReportTest, TheVersionOfAModule) {
    expect_part("power_version", version_rule(2, 1, "0 version=0xffffffff"),
                "Success: slot 13 power 0 get software version. 4294967295 \r\n", 0);
    expect_part("power_version", version_rule(2, 1, "0"), "Success: slot 13 power 0 get software version. 0 \r\n", 0);
    expect_part("power_version", version_rule(2, 1, "0x17a4"),
                "Success: slot 13 power 0 not support get software version. ret 0x17a4\r\n", 0);
    expect_part("power_version", version_rule(2, 1, "0xa5"),
                "Error  : slot 13 power 0 get software version fail. ret 0xa5\r\n", 0xa5);
}

TEST(PowerReportTest, TheWholeAreaOfTheBlackBoxIsShown) {
    expect_part("power_bbox_16", power_bbox_rule(16, "0 buffer=[41 42 00 80 ff] retlen=8"),
                "Success: slot 13 power 0 get bbox info return length 8 \r\n"
                "65 66 0 128 255 0 0 0 0 0 0 0 0 0 0 0 \r\n"
                "Success: slot 13 power 0 get bbox info AB \r\n",
                0);
    expect_part("power_bbox_16", power_bbox_rule(16, "0"),
                "Success: slot 13 power 0 get bbox info return length 0 \r\n"
                "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 \r\n"
                "Success: slot 13 power 0 get bbox info  \r\n",
                0);
}

TEST(PowerReportTest, ABlackBoxWithoutATerminatorEndsWithItsArea) {
    expect_part("power_bbox_16",
                power_bbox_rule(16, "0 buffer=[61 62 63 64 65 66 67 68 69 6a 6b 6c 6d 6e 6f 70] retlen=16"),
                "Success: slot 13 power 0 get bbox info return length 16 \r\n"
                "97 98 99 100 101 102 103 104 105 106 107 108 109 110 111 112 \r\n"
                "Success: slot 13 power 0 get bbox info abcdefghijklmnop \r\n",
                0);
}

TEST(PowerReportTest, ABlackBoxHoldsWholeRecords) {
    expect_part("power_bbox_16", power_bbox_rule(16, "0 buffer=[41] retlen=12"),
                "Error  : slot 13 power 0 get bbox info return length fail. length 0xc\r\n", -1);
    // More than there is room for, but whole.
    expect_part("power_bbox_0", power_bbox_rule(0, "0 retlen=4096"),
                "Success: slot 13 power 0 get bbox info return length 4096 \r\n\r\n"
                "Success: slot 13 power 0 get bbox info  \r\n",
                0);
}

TEST(PowerReportTest, ABlackBoxThatCannotBeRead) {
    expect_part("power_bbox_16", power_bbox_rule(16, no_support),
                "Success: slot 13 power 0 not support get bbox info. ret 0x811101a4\r\n", 0);
    expect_part("power_bbox_16", power_bbox_rule(16, "0x62"),
                "Error  : slot 13 power 0 get bbox info fail. ret 0x62\r\n", 0x62);
}

TEST(PowerReportTest, ABlackBoxBeyondWhatAReportHoldsGetsNoArea) {
    expect_part("power_bbox_half_report", "", "malloc fail.\r\n", -1);
    expect_part("power_bbox_largest", "", "malloc fail.\r\n", -1);
}

TEST(PowerReportTest, ProgramsAndTheVersionsOfTheirModules) {
    expect_part("power_software_info",
                info_rule("0 info={soft_cnt=3 software=[{soft_id=1 module_num=255} {soft_id=0x1f module_num=2} "
                          "{soft_id=3 module_num=0}]}") +
                    version_rule(1, 0, "0 version=204") + version_rule(0x1f, 0, "0 version=117") +
                    version_rule(0x1f, 1, "0x63"),
                "Success: slot 13 power 0 get software info. soft_cnt 3 \r\n"
                "soft_id 0x1 module_num 0xff\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 204\r\n"
                "soft_id 0x1f module_num 0x2\r\n"
                "Success: slot 13 power 0 soft_id 0x1f module_id 0x0 version 117\r\n"
                "Error  : slot 13 power 0 soft_id 0x1f module_id 0x1 get version fail. ret 0x63\r\n"
                "soft_id 0x3 module_num 0x0\r\n",
                0);
}

// A version is 0 when the driver writes none; "not supported" is a failure here.
TEST(PowerReportTest, VersionsOfModulesAreNotRemembered) {
    expect_part("power_software_info",
                info_rule("0 info={soft_cnt=1 software=[{soft_id=1 module_num=11}]}") +
                    version_rule(1, 0, "0 version=7") + version_rule(1, 1, "0") + version_rule(1, 2, no_support) +
                    "drv_power_get_softver = 0 version=5 x8\n",
                "Success: slot 13 power 0 get software info. soft_cnt 1 \r\n"
                "soft_id 0x1 module_num 0xb\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 7\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x1 version 0\r\n"
                "Error  : slot 13 power 0 soft_id 0x1 module_id 0x2 get version fail. ret 0x811101a4\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x3 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x4 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x5 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x6 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x7 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x8 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0x9 version 5\r\n"
                "Success: slot 13 power 0 soft_id 0x1 module_id 0xa version 5\r\n",
                0);
}

TEST(PowerReportTest, ProgramsThatCannotBeListed) {
    expect_part("power_software_info", info_rule("0"), "Success: slot 13 power 0 get software info. soft_cnt 0 \r\n",
                0);
    expect_part("power_software_info", info_rule("0x811101a4"),
                "Success: slot 13 power 0 not support get software info. ret 0x811101a4\r\n", 0);
    expect_part("power_software_info", info_rule("0x64"),
                "Error  : slot 13 power 0 get software info fail. ret 0x64\r\n", 0x64);
}

// The record has room for three; what a driver counts beyond is not there to be read.
TEST(PowerReportTest, MoreProgramsThanTheRecordHolds) {
    expect_part("power_software_info", info_rule("0 info={soft_cnt=4000000000}"),
                "Success: slot 13 power 0 get software info. soft_cnt 4000000000 \r\n"
                "soft_id 0x0 module_num 0x0\r\n"
                "soft_id 0x0 module_num 0x0\r\n"
                "soft_id 0x0 module_num 0x0\r\n",
                0);
}

TEST(PowerInputTest, ASupplyOnThePmbusTellsThatItHasNoInput) {
    expect_part("power_input", lost_input_on_pmbus(), lost_input_on_pmbus_line, 3);
}

// One sign that is missing, or a call that fails, and it is taken to have input. All five are asked all the same.
TEST(PowerInputTest, OnThePmbusEverySignIsNeeded) {
    for (const std::string &other :
         {power_get(9, "0 value=0x18"), power_get(9, "0x71 value=8"), power_get(2, "0"), power_get(2, "0x72 value=1"),
          power_get(40, "0 value=0"), power_get(40, "0x73 value=3"), power_alarm_rule(7, "0 alarms=0x48"),
          power_alarm_rule(7, "0x74 alarms=0x48 sub_alarm=1"), power_alarm_rule(13, "0 alarms=0x18"),
          power_alarm_rule(13, "0x811101a4 alarms=0x18 sub_alarm=1")}) {
        std::string script = lost_input_on_pmbus();
        const std::string key = other.substr(0, other.find(" = "));
        const size_t at = script.find(key);
        ASSERT_NE(at, std::string::npos) << key;
        script.replace(at, script.find('\n', at) + 1 - at, other);
        expect_part("power_input", script, "", 1);
    }
}

TEST(PowerInputTest, OneBehindTheSimpleProtocolShowsNothing) {
    expect_part("power_input", lost_input_on_simple_protocol(), lost_input_on_simple_protocol_line, 2);
    expect_part("power_input",
                power_get(21, "0x17a4") + power_get(20, "0 value=0") + power_get(14, "0x56") +
                    power_get(1, "0 value=1"),
                "Info   :slot 13 power 0 maybe has no input power. ret_power 0x0 input_power 0x0 ret_vol 0x56 "
                "input_vol 0x0 \r\n",
                2);
}

TEST(PowerInputTest, BehindTheSimpleProtocolEverySignIsNeeded) {
    const std::string simple = power_get(21, no_support);
    const std::string voltage = power_get(14, "0 value=0");
    const std::string alarm = power_get(1, "0 value=1");
    expect_part("power_input", simple + power_get(20, "0 value=1") + voltage + alarm, "", 0);
    expect_part("power_input", simple + power_get(20, no_support) + voltage + alarm, "", 0);
    expect_part("power_input", simple + power_get(20, "0") + power_get(14, "0 value=1") + alarm, "", 0);
    expect_part("power_input", simple + power_get(20, "0") + power_get(14, no_support) + alarm, "", 0);
    expect_part("power_input", simple + power_get(20, "0") + voltage + power_get(1, "0 value=0"), "", 0);
    expect_part("power_input", simple + power_get(20, "0") + voltage + power_get(1, "0 value=2"), "", 0);
    expect_part("power_input", simple + power_get(20, "0") + voltage + power_get(1, "0x57 value=1"), "", 0);
}

TEST(PowerInputTest, ASupplyThatDoesNotSayWhatItIs) {
    expect_part("power_input", power_get(21, "0x58"), "", 0);
}
