// board_test, memory modules: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// What the driver reads of a module: bytes 320 to 381 of its SPD, and one byte that is not shown any more.
const char *const module_bytes = "[81 a2 01 20 15 12 34 ab cd "
                                 "50 4e 2d 30 31 32 33 34 35 36 37 38 39 2d 41 42 43 20 20 20 "
                                 "0f 80 ff 00 "
                                 "80 81 82 83 84 85 86 87 88 89 8a 8b 8c 8d 8e 8f 90 91 92 93 94 95 96 97 98 99 9a 9b "
                                 "9c 77]";

const char *const module_lines =
    "addr 320,321: 0x81,0xa2\r\n"
    "addr 322: 0x1\r\n"
    "addr 323,324: 0x20,0x15\r\n"
    "addr 325-328: 0x12,0x34,0xab,0xcd\r\n"
    "addr 329-348:\r\n"
    "P,N,-,0,1,2,3,4,5,6,7,8,9,-,A,B,C, , , ,\r\n"
    "addr 349: 0xf\r\n"
    "addr 350,351: 0x80,0xff\r\n"
    "addr 352: 0x0\r\n"
    "addr 353-381:\r\n"
    "0x80,0x81,0x82,0x83,0x84,0x85,0x86,0x87,0x88,0x89,0x8a,0x8b,0x8c,0x8d,0x8e,0x8f,0x90,0x91,0x92,0x93,0x94,0x95,"
    "0x96,0x97,0x98,0x99,0x9a,0x9b,0x9c,\r\n";

// A module of which nothing was read: its part number is twenty NUL characters, each with its comma.
std::string empty_lines() {
    std::string lines = "addr 320,321: 0x0,0x0\r\n"
                        "addr 322: 0x0\r\n"
                        "addr 323,324: 0x0,0x0\r\n"
                        "addr 325-328: 0x0,0x0,0x0,0x0\r\n"
                        "addr 329-348:\r\n";
    for (int i = 0; i < 20; ++i) {
        lines += '\0';
        lines += ',';
    }
    return lines + "\r\n"
                   "addr 349: 0x0\r\n"
                   "addr 350,351: 0x0,0x0\r\n"
                   "addr 352: 0x0\r\n"
                   "addr 353-381:\r\n"
                   "0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,"
                   "0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0,\r\n";
}

} // namespace

TEST(BoardDimmTest, GetDimmInfoDumpsTheManufacturingInformation) {
    expect_success("board_test board_get_dimm_info 1",
                   std::string("drv_board_get_dimm_info(inst_id=0xffffffff, dimm_id=1, size=127) = 0 buffer=") +
                       module_bytes,
                   printed(std::string("dimm_info, ret:0\r\n") + module_lines, "para[0]=0x0 "));
    expect_success("board_test board_get_dimm_info 0xff000005 2",
                   std::string("drv_board_get_dimm_info(inst_id=0xff000005, dimm_id=2, size=127) = 0 buffer=") +
                       module_bytes,
                   printed(std::string("dimm_info, ret:0\r\n") + module_lines, "para[0]=0x0 "));
}

TEST(BoardDimmTest, GetDimmInfoWords) {
    expect_success("board_test board_get_dimm_info 3 4 5",
                   "drv_board_get_dimm_info(inst_id=3, dimm_id=4, size=127) = 0",
                   printed("dimm_info, ret:0\r\n" + empty_lines(), "para[0]=0x0 "));
    expect_success("board_test board_get_dimm_info dimm",
                   "drv_board_get_dimm_info(inst_id=0xffffffff, dimm_id=0, size=127) = 0",
                   printed("dimm_info, ret:0\r\n" + empty_lines(), "para[0]=0x0 "));
    expect_failure("board_test board_get_dimm_info", "",
                   "./kestro_test board_test board_get_dimm_info [inst_id dimm_id]\r\n");
}

TEST(BoardDimmTest, GetDimmInfoDumpsOnFailureToo) {
    expect_failure("board_test board_get_dimm_info 1",
                   "drv_board_get_dimm_info(inst_id=0xffffffff, dimm_id=1, size=127) = 0x12",
                   printed("dimm_info, ret:18\r\n" + empty_lines(), "para[0]=0x12 "));
    expect_failure("board_test board_get_dimm_info 1",
                   std::string("drv_board_get_dimm_info(inst_id=0xffffffff, dimm_id=1, size=127) = 0x811101a4 "
                               "buffer=") +
                       module_bytes,
                   printed(std::string("dimm_info, ret:-2129591900\r\n") + module_lines, "para[0]=0x811101a4 "));
}

TEST(BoardDimmTest, GetDimmTemperatureEndsInTheSignOfTheConsole) {
    expect_success("board_test board_get_dimm_temperature 1",
                   "drv_board_get_dimm_temperature(inst_id=0xffffffff, dimm_id=1) = 0 temperature=45",
                   printed("dimm_temperature, ret:0\r\ntemperature: 45\xA1\xE6\r\n\r\n", "para[0]=0x0 "));
    expect_success("board_test board_get_dimm_temperature 6 2",
                   "drv_board_get_dimm_temperature(inst_id=6, dimm_id=2) = 0 temperature=-5",
                   printed("dimm_temperature, ret:0\r\ntemperature: -5\xA1\xE6\r\n\r\n", "para[0]=0x0 "));
}

TEST(BoardDimmTest, GetDimmTemperatureWords) {
    expect_success("board_test board_get_dimm_temperature 6 2 9",
                   "drv_board_get_dimm_temperature(inst_id=6, dimm_id=2) = 0 temperature=100",
                   printed("dimm_temperature, ret:0\r\ntemperature: 100\xA1\xE6\r\n\r\n", "para[0]=0x0 "));
    expect_success("board_test board_get_dimm_temperature warm",
                   "drv_board_get_dimm_temperature(inst_id=0xffffffff, dimm_id=0) = 0 temperature=1",
                   printed("dimm_temperature, ret:0\r\ntemperature: 1\xA1\xE6\r\n\r\n", "para[0]=0x0 "));
    expect_failure("board_test board_get_dimm_temperature", "",
                   "./kestro_test board_test board_get_dimm_temperature [inst_id dimm_id]\r\n");
}

TEST(BoardDimmTest, GetDimmTemperaturePrintsItsLinesOnFailureToo) {
    expect_failure(
        "board_test board_get_dimm_temperature 1",
        "drv_board_get_dimm_temperature(inst_id=0xffffffff, dimm_id=1) = 0x811101a4",
        printed("dimm_temperature, ret:-2129591900\r\ntemperature: 0\xA1\xE6\r\n\r\n", "para[0]=0x811101a4 "));
    expect_failure("board_test board_get_dimm_temperature 1",
                   "drv_board_get_dimm_temperature(inst_id=0xffffffff, dimm_id=1) = 3 temperature=7",
                   printed("dimm_temperature, ret:3\r\ntemperature: 7\xA1\xE6\r\n\r\n", "para[0]=0x3 "));
}
