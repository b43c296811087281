// Start-up software and the selection of the main processing unit in the board self-test.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string get_area(const std::string &answer) {
    return "drv_board_get_area(inst_id=0xffffffff) = " + answer + "\n";
}

// Each area is asked once.
std::string area(int number, const std::string &answer) {
    return "drv_board_check_bios(area=" + std::to_string(number) + ") = " + answer + " x1\n";
}

std::string good_areas() {
    return area(1, "0 result=0") + area(2, "0 result=0") + area(3, "0 result=0");
}

std::string version(const std::string &answer) {
    return "drv_board_get_bios_ver(inst_id=0xffffffff, size=127) = " + answer + "\n";
}

const std::string pass_1 = "Success: board bios area 1 check pass.\r\n";
const std::string pass_2 = "Success: board bios area 2 check pass.\r\n";
const std::string pass_3 = "Success: board bios area 3 check pass.\r\n";
const std::string good_version = version("0 text=\"V2.7\"");
const std::string version_line = "Success: board area bios ver V2.7 pass.\r\n";

void expect_bios(const std::string &script, const std::string &lines, int result) {
    expect_part("bios", script, lines, result);
}

std::string get_mpu(const std::string &answer) {
    return "drv_board_get_mpu_status(inst_id=0xffffffff, size=255) = " + answer + "\n";
}

std::string check_mpu(const std::string &answer) {
    return "drv_board_check_mpu_status(inst_id=0xffffffff, size=256) = " + answer + "\n";
}

} // namespace

TEST(BiosCheckTest, ThreeGoodAreas) {
    expect_bios(get_area("0 area=2") + good_areas() + good_version, pass_1 + pass_2 + pass_3 + version_line, 0);
    expect_bios(get_area("0") + area(1, "0") + area(2, "0") + area(3, "0") + good_version,
                pass_1 + pass_2 + pass_3 + version_line, 0);
}

TEST(BiosCheckTest, TheAreaInUseIsNotJudged) {
    expect_bios(get_area("0 area=77") + good_areas() + good_version, pass_1 + pass_2 + pass_3 + version_line, 0);
}

TEST(BiosCheckTest, AnAreaInUseThatIsUnknownIsTakenBackByAGoodArea) {
    expect_bios(get_area("0x61 area=9") + good_areas() + good_version,
                "Error  : board get area fail. ret 0x61 area 0x9 \r\n" + pass_1 + pass_2 + pass_3 + version_line, 0);
}

TEST(BiosCheckTest, AnAreaInUseThatIsUnknownStandsWhereDriversWriteNoStatus) {
    expect_bios(get_area("0x811101a4") + area(1, "0") + area(2, "0") + area(3, "0") + good_version,
                "Error  : board get area fail. ret 0x811101a4 area 0x0 \r\n"
                "Error  : board bios area 1 check fail. ret 0x0 sts 0xffffffff\r\n"
                "Error  : board bios area 2 check fail. ret 0x0 sts 0xffffffff\r\n"
                "Error  : board bios area 3 check fail. ret 0x0 sts 0xffffffff\r\n" +
                    version_line,
                -1);
}

TEST(BiosCheckTest, ABadLastArea) {
    expect_bios(get_area("0 area=1") + area(1, "0 result=0") + area(2, "0 result=0") + area(3, "0 result=0x3c") +
                    good_version,
                pass_1 + pass_2 + "Error  : board bios area 3 check fail. ret 0x0 sts 0x3c\r\n" + version_line, -1);
}

TEST(BiosCheckTest, ABadAreaIsTakenBackByAGoodOne) {
    expect_bios(get_area("0 area=1") + area(1, "0 result=0") + area(2, "0 result=4") + area(3, "0 result=0") +
                    good_version,
                pass_1 + "Error  : board bios area 2 check fail. ret 0x0 sts 0x4\r\n" + pass_3 + version_line, 0);
}

TEST(BiosCheckTest, ABadAreaStandsWhereTheNextHasNoStatus) {
    expect_bios(get_area("0 area=1") + area(1, "0 result=4") + area(2, "0") + area(3, "0 result=0") + good_version,
                "Error  : board bios area 1 check fail. ret 0x0 sts 0x4\r\n"
                "Error  : board bios area 2 check fail. ret 0x0 sts 0xffffffff\r\n" +
                    pass_3 + version_line,
                0);
}

TEST(BiosCheckTest, AnAreaThatCannotBeChecked) {
    expect_bios(get_area("0 area=1") + area(1, "0 result=0") + area(2, "0 result=0") + area(3, "0x62") + good_version,
                pass_1 + pass_2 + "Error  : board bios area 3 check fail. ret 0x62 sts 0x0\r\n" + version_line, -1);
    expect_bios(get_area("0 area=1") + area(1, "0x811101a4 result=0") + area(2, "0x63") + area(3, "0 result=0") +
                    good_version,
                "Error  : board bios area 1 check fail. ret 0x811101a4 sts 0x0\r\n"
                "Error  : board bios area 2 check fail. ret 0x63 sts 0xffffffff\r\n" +
                    pass_3 + version_line,
                0);
}

TEST(BiosCheckTest, AVersionThatCannotBeRead) {
    expect_bios(get_area("0 area=1") + good_areas() + version("0x64 text=\"V\""),
                pass_1 + pass_2 + pass_3 + "Error  : board bios get ver fail. ret 0x64 \r\n", -1);
}

TEST(BiosCheckTest, AVersionThatTheBoardDoesNotTellPasses) {
    expect_bios(get_area("0 area=1") + good_areas() + version("0x811101a4"),
                pass_1 + pass_2 + pass_3 + "Success: board area bios ver  pass.\r\n", 0);
}

TEST(BiosCheckTest, AVersionDoesNotTakeAFailureBack) {
    expect_bios(get_area("0 area=1") + area(1, "0 result=0") + area(2, "0 result=0") + area(3, "0 result=1") +
                    version("0x811101a4 text=\"V1\""),
                pass_1 + pass_2 +
                    "Error  : board bios area 3 check fail. ret 0x0 sts 0x1\r\n"
                    "Success: board area bios ver V1 pass.\r\n",
                -1);
}

TEST(BiosCheckTest, AVersionThatFillsItsArea) {
    const std::string text(127, 'V');
    expect_bios(get_area("0 area=1") + good_areas() + version("0 text=\"" + text + "\""),
                pass_1 + pass_2 + pass_3 + "Success: board area bios ver " + text + " pass.\r\n", 0);
}

TEST(MpuStatusCheckTest, EitherSlot) {
    expect_part("mpu_status", get_mpu("0 status=0") + check_mpu("0 result=0"),
                "Success: board get mpu status pass. sts 0 (0: mpua small slot 1: mpub big slot)\r\n"
                "Success: board check mpu status pass. sts 0\r\n",
                0);
    expect_part("mpu_status", get_mpu("0 status=1 dfx=\"B\"") + check_mpu("0 result=0"),
                "Success: board get mpu status pass. sts 1 (0: mpua small slot 1: mpub big slot)\r\n"
                "Success: board check mpu status pass. sts 0\r\n",
                0);
}

TEST(MpuStatusCheckTest, DriversThatWriteNothing) {
    expect_part("mpu_status", get_mpu("0") + check_mpu("0"),
                "Success: board get mpu status pass. sts 0 (0: mpua small slot 1: mpub big slot)\r\n"
                "Success: board check mpu status pass. sts 0\r\n",
                0);
}

TEST(MpuStatusCheckTest, WhatTheCheckFoundIsShownOnly) {
    expect_part("mpu_status", get_mpu("0 status=1") + check_mpu("0 result=31 dfx=\"" + std::string(256, 'F') + "\""),
                "Success: board get mpu status pass. sts 1 (0: mpua small slot 1: mpub big slot)\r\n"
                "Success: board check mpu status pass. sts 31\r\n",
                0);
}

TEST(MpuStatusCheckTest, AStatusOfNeitherSlot) {
    expect_part("mpu_status", get_mpu("0 status=2 dfx=\"no slot\"") + check_mpu("0 result=0"),
                "Error  : board get mpu status fail. ret 0x0 status 0x2 msg no slot\r\n"
                "Error  : board mpu status check fail. ret 0x0 sts 0x0 \r\n",
                -1);
}

TEST(MpuStatusCheckTest, AStatusThatCannotBeRead) {
    expect_part("mpu_status", get_mpu("0x65") + check_mpu("0 result=0x1a"),
                "Error  : board get mpu status fail. ret 0x65 status 0x0 msg \r\n"
                "Error  : board mpu status check fail. ret 0x0 sts 0x1a \r\n",
                -1);
    expect_part("mpu_status", get_mpu("0x811101a4 status=1") + check_mpu("0x811101a4"),
                "Error  : board get mpu status fail. ret 0x811101a4 status 0x1 msg \r\n"
                "Error  : board mpu status check fail. ret 0x811101a4 sts 0x0 \r\n",
                -1);
}

TEST(MpuStatusCheckTest, ACheckThatFails) {
    expect_part("mpu_status", get_mpu("0 status=1") + check_mpu("0x66 result=0x1d dfx=\"slot 9\""),
                "Success: board get mpu status pass. sts 1 (0: mpua small slot 1: mpub big slot)\r\n"
                "Error  : board mpu status check fail. ret 0x66 sts 0x1d \r\n",
                -1);
}

TEST(MpuStatusCheckTest, AMessageThatFillsItsArea) {
    const std::string message(255, 'F');
    expect_part("mpu_status", get_mpu("0 status=0xffffffff dfx=\"" + message + "\"") + check_mpu("0"),
                "Error  : board get mpu status fail. ret 0x0 status 0xffffffff msg " + message +
                    "\r\n"
                    "Error  : board mpu status check fail. ret 0x0 sts 0x0 \r\n",
                -1);
}
