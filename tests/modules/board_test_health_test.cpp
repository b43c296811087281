// board_test: low voltage, corrosion, memory events and memory buses, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardHealthTest, LowVoltage) {
    expect_success("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0",
                   "success, status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0 status=10 dfx=\"12V at 10.9V\"",
                   "success, status:10 dfx:12V at 10.9V\r\npara[0]=0x0 para[1]=0xa "s + result_end);
    expect_success("board_test board_get_check_low_voltage 5 rail 7",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0 status=0xffffffff",
                   "success, status:-1 dfx:\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_failure("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0x51 status=2 dfx=\"no monitor\"",
                   "failed, status:2 dfx:no monitor ret:0x51\r\npara[0]=0x51 para[1]=0x2 "s + result_end);
    expect_failure("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0x51",
                   "failed, status:0 dfx: ret:0x51\r\npara[0]=0x51 para[1]=0x0 "s + result_end);
}

TEST(BoardHealthTest, Corrosion) {
    expect_success("board_test board_check_corrosion_status",
                   "drv_board_check_corrosion_status(inst_id=0xffffffff, size=128) = 0",
                   "success, corrosion status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_corrosion_status 0x3",
                   "drv_board_check_corrosion_status(inst_id=3, size=128) = 0 status=1 dfx=\"sensor 2 open\"",
                   "success, corrosion status:1 dfx:sensor 2 open\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_check_corrosion_status 1 2 3",
                   "drv_board_check_corrosion_status(inst_id=1, size=128) = 0",
                   "success, corrosion status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_corrosion_status board",
                   "drv_board_check_corrosion_status(inst_id=0, size=128) = 0",
                   "success, corrosion status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_corrosion_status",
                   "drv_board_check_corrosion_status(inst_id=0xffffffff, size=128) = 7 status=1 dfx=\"adc busy\"",
                   "failed, corrosion status:1 dfx:adc busy ret:0x7\r\npara[0]=0x7 para[1]=0x1 "s + result_end);
}

TEST(BoardHealthTest, FindingsThatFillTheirAreaAreShownWhole) {
    std::string bytes;
    for (int i = 0; i < 128; ++i) {
        bytes += " 41";
    }
    expect_success("board_test board_check_corrosion_status",
                   "drv_board_check_corrosion_status(inst_id=0xffffffff, size=128) = 0 dfx=[" + bytes + " ]",
                   "success, corrosion status:0 dfx:" + std::string(128, 'A') + "\r\npara[0]=0x0 para[1]=0x0 " +
                       result_end);
    expect_success("board_test board_get_check_low_voltage",
                   "drv_board_check_low_voltage(inst_id=0xffffffff, size=127) = 0 dfx=[" + bytes.substr(3) + " ]",
                   "success, status:0 dfx:" + std::string(127, 'A') + "\r\npara[0]=0x0 para[1]=0x0 " + result_end);
}

TEST(BoardHealthTest, DdrEvent) {
    expect_success("board_test board_get_ddr_event 1",
                   "drv_board_get_ddr_event(inst_id=0xffffffff, cpu_chip_no=1, size=128) = 0 dfx=\"quiet\"",
                   "success, state:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_ddr_event 0x10 2",
                   "drv_board_get_ddr_event(inst_id=16, cpu_chip_no=2, size=128) = 0 state=12",
                   "success, state:12\npara[0]=0x0 para[1]=0xc "s + result_end);
    expect_success("board_test board_get_ddr_event 5 6 7",
                   "drv_board_get_ddr_event(inst_id=5, cpu_chip_no=6, size=128) = 0 state=0xffffffff",
                   "success, state:-1\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_get_ddr_event chip",
                   "drv_board_get_ddr_event(inst_id=0xffffffff, cpu_chip_no=0, size=128) = 0",
                   "success, state:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_ddr_event 1",
                   "drv_board_get_ddr_event(inst_id=0xffffffff, cpu_chip_no=1, size=128) = 0x61 state=2 dfx=\"ecc 3\"",
                   "failed, state:2 dfx:ecc 3 ret:0x61\r\npara[0]=0x61 para[1]=0x2 "s + result_end);
    expect_failure("board_test board_get_ddr_event", "",
                   "./kestro_test board_test board_get_ddr_event [inst_id cpu_chip_no]\r\n");
}

TEST(BoardHealthTest, DimmBusStatus) {
    expect_success("board_test board_check_dimm_bus_status 1",
                   "drv_board_check_dimm_bus_status(inst_id=0xffffffff, dimm_no=1, size=128) = 0 dfx=\"quiet\"",
                   "status:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_dimm_bus_status 0x10 2",
                   "drv_board_check_dimm_bus_status(inst_id=16, dimm_no=2, size=128) = 0 status=12",
                   "status:12\r\npara[0]=0x0 para[1]=0xc "s + result_end);
    expect_success("board_test board_check_dimm_bus_status 5 6 7",
                   "drv_board_check_dimm_bus_status(inst_id=5, dimm_no=6, size=128) = 0 status=0xffffffff",
                   "status:-1\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_check_dimm_bus_status dimm",
                   "drv_board_check_dimm_bus_status(inst_id=0xffffffff, dimm_no=0, size=128) = 0",
                   "status:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure(
        "board_test board_check_dimm_bus_status 1",
        "drv_board_check_dimm_bus_status(inst_id=0xffffffff, dimm_no=1, size=128) = 0x61 status=2 dfx=\"sda low\"",
        "failed, status:2 dfx:sda low ret:0x61\r\npara[0]=0x61 para[1]=0x2 "s + result_end);
    expect_failure("board_test board_check_dimm_bus_status", "",
                   "./kestro_test board_test board_check_dimm_bus_status [inst_id dimm_no]\r\n");
}
