// Programmable logic: registers of the CPLD and the FPGAs, checks that find what is broken, and agreement with the
// other families.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";

} // namespace

TEST(CpldDriver, RegistersOfEachChip) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_read(chip_id=0, offset=0)", "drv_cpld_reg_read(chip_id=1, offset=0)",
                              "drv_cpld_reg_read(chip_id=2, offset=0)", "drv_cpld_reg_read(chip_id=1, offset=1)",
                              "drv_board_get_cpld_ver(cpld_id=1)", "drv_cpld_reg_read(chip_id=1, offset=0x7ff)"}),
              "0x0 data=197\n0x0 data=63905\n0x0 data=63906\n0x0 data=515\n0x0 ver=515\n0x0 data=65535\n");
    EXPECT_EQ(
        answers(board, {"drv_cpld_reg_read(chip_id=0, offset=0x100)", "drv_cpld_reg_read(chip_id=1, offset=0x800)",
                        "drv_cpld_reg_write(chip_id=1, offset=0x800, data=0)", "drv_cpld_reg_read(chip_id=3, offset=0)",
                        "drv_cpld_reg_write(chip_id=3, offset=0)",
                        "drv_cpld_reg_read(inst_id=0xff000005, chip_id=0, offset=0)"}),
        out_of_range + out_of_range + out_of_range + no_such_device + no_such_device + not_supported);
}

TEST(CpldDriver, WhatIsWrittenIsReadByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_write(chip_id=0, offset=15, data=0xa7)",
                              "drv_cpld_reg_write(chip_id=2, offset=15, data=0xbeef)",
                              "drv_cpld_reg_write(chip_id=0, offset=15, data=0x100)",
                              "drv_cpld_reg_write(chip_id=2, offset=15, data=0x10000)",
                              "drv_cpld_reg_write(chip_id=2, offset=0, data=0)"}),
              ok + ok + bad_value + bad_value + ok);
    EXPECT_EQ(answers(board, {"drv_cpld_reg_read(chip_id=0, offset=15)", "drv_cpld_reg_read(chip_id=1, offset=15)",
                              "drv_cpld_reg_read(chip_id=2, offset=15)", "drv_cpld_reg_read(chip_id=2, offset=0)"}),
              "0x0 data=167\n0x0 data=90\n0x0 data=48879\n0x0 data=63906\n");
}

// A written 1 clears an interrupt that was raised; the technician raises one at the latch itself.
TEST(CpldDriver, LatchIsClearedByOnes) {
    const test_board board = new_altered("mpu_master", {});
    const auto technician =
        run_process({launcher(), "--board", board.word, "--state", board.state, "--set", "slot9/cpld/1/0x600=0x0103"});
    EXPECT_EQ(technician.err, "");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_read(chip_id=1, offset=0x600)",
                              "drv_cpld_reg_write(chip_id=1, offset=0x600, data=0x0102)",
                              "drv_cpld_reg_read(chip_id=1, offset=0x600)",
                              "drv_cpld_reg_write(chip_id=1, offset=0x600, data=0xffff)",
                              "drv_cpld_reg_read(chip_id=1, offset=0x600)"}),
              "0x0 data=259\n0x0\n0x0 data=1\n0x0\n0x0 data=0\n");
}

// The CPLD's lamps are those of the lamp driver.
TEST(CpldDriver, LampsAreTheLampDriversOwn) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_led_set_color(led_type=0, color=2, freq=7)", "drv_cpld_reg_read(chip_id=0, offset=0x20)",
                        "drv_cpld_reg_read(chip_id=0, offset=0x21)"}),
        "0x0\n0x0 data=130\n0x0 data=7\n");
}

TEST(CpldDriver, DumpShowsSixteenRegistersALine) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_dump(chip_id=1, start=0, num=18, size=256)"}),
              "0x0 buffer=\"000: f9a1 0203 07e9 0602 ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff "
              "005a\\n010: 0000 0000\\n\"\n");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_dump(chip_id=0, start=0xf, num=1, size=24)",
                              "drv_cpld_reg_dump(chip_id=0, start=0xff, num=1, size=24)",
                              "drv_cpld_reg_dump(chip_id=0, start=0, num=0, size=1)"}),
              "0x0 buffer=\"00f: 5a\\n\"\n0x0 buffer=\"0ff: ff\\n\"\n0x0 buffer=\"\"\n");
}

TEST(CpldDriver, DumpFitsTheAreaThatGoesByTheNumber) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_dump(chip_id=1, start=0, num=1025, size=9000)"}).substr(0, 18),
              "0x0 buffer=\"000: f");
    for (const uint32_t num : {0U, 1U, 2U, 15U, 16U, 17U, 1024U}) {
        const std::string said = answers(board, {"drv_cpld_reg_dump(chip_id=1, start=0, num=" + std::to_string(num) +
                                                 ", size=" + std::to_string((num + 2) * 8) + ")"});
        EXPECT_TRUE(said.starts_with("0x0 buffer=\"")) << num << said;
    }
}

TEST(CpldDriver, DumpBeyondTheChip) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_reg_dump(chip_id=0, start=0xff, num=2, size=256)",
                              "drv_cpld_reg_dump(chip_id=0, start=0xffffffff, num=2, size=256)",
                              "drv_cpld_reg_dump(chip_id=0, start=0, num=0xffffffff, size=256)",
                              "drv_cpld_reg_dump(chip_id=0, start=0, num=1, size=8)",
                              "drv_cpld_reg_dump(chip_id=0, start=0, num=1, size=256, buffer=null)"}),
              out_of_range + out_of_range + out_of_range + too_small + null_pointer);
}

TEST(CpldDriver, SelftestFindsStuckBitsAndKeepsTheScratchRegister) {
    const test_board healthy = new_delivered("mpu_master");
    EXPECT_EQ(answers(healthy, {"drv_cpld_reg_write(chip_id=1, offset=15, data=0x1234)",
                                "drv_cpld_selftest(chip_id=0, size=256)", "drv_cpld_selftest(chip_id=1, size=256)",
                                "drv_cpld_selftest(chip_id=2, size=256)", "drv_cpld_reg_read(chip_id=1, offset=15)"}),
              "0x0\n0x0 result=0 msg=\"\"\n0x0 result=0 msg=\"\"\n0x0 result=0 msg=\"\"\n0x0 data=4660\n");
    const test_board stuck = new_altered("mpu_master", {{"self/sim_board/logic/0/scratch_stuck", "0x01"}});
    EXPECT_EQ(answers(stuck, {"drv_cpld_selftest(chip_id=0, size=256)", "drv_cpld_reg_read(chip_id=0, offset=15)",
                              "drv_cpld_reg_write(chip_id=0, offset=15, data=0xff)",
                              "drv_cpld_reg_read(chip_id=0, offset=15)", "drv_cpld_selftest(chip_id=0, size=8)"}),
              "0x0 result=1 msg=\"scratch wrote 0x55 read 0x54, scratch wrote 0xff read 0xfe\"\n0x0 data=90\n0x0\n"
              "0x0 data=254\n" +
                  too_small);
}

TEST(CpldDriver, BuildTimes) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_cpld_get_build_time(chip_id=0)", "drv_cpld_get_build_time(chip_id=2)",
                       "drv_cpld_get_build_time(inst_id=0xff000005, chip_id=0)"}),
              "0x0 year=2025 month=3 day=14\n0x0 year=2025 month=11 day=27\n" + not_supported);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_cpld_get_build_time(chip_id=1)", "drv_cpld_get_build_time(chip_id=2)",
                                             "drv_cpld_reg_read(chip_id=1, offset=3)"}),
              "0x0 year=2025 month=1 day=9\n" + no_such_device + "0x0 data=265\n");
    EXPECT_EQ(
        answers(new_altered("lpu", {{"self/sim_board/logic/1/build_day", ""}}), {"drv_cpld_get_build_time(chip_id=1)"}),
        not_supported);
}

TEST(CpldDriver, AgentsAndPorts) {
    const test_board board = new_altered(
        "mpu_master", {{"self/sim_board/logic/1/spi_fault", "0x04"}, {"self/sim_board/logic/1/pcie_down", "2"}});
    EXPECT_EQ(answers(board, {"drv_cpld_check_agent_spi_status(chip_id=1, channel=1, size=64)",
                              "drv_cpld_check_agent_spi_status(chip_id=1, channel=2, size=64)",
                              "drv_cpld_check_agent_spi_status(chip_id=1, channel=4, size=64)",
                              "drv_cpld_check_pcie_link_status(chip_id=1, channel=0, size=64)",
                              "drv_cpld_check_pcie_link_status(chip_id=1, channel=1, size=64)",
                              "drv_cpld_check_pcie_link_status(chip_id=1, channel=2, size=64)",
                              "drv_cpld_check_pcie_link_status(chip_id=0, channel=0, size=64)",
                              "drv_cpld_check_agent_spi_status(chip_id=1, channel=0xffffffff, size=64)"}),
              "0x0 result=0 msg=\"\"\n0x0 result=1 msg=\"agent 2 does not answer\"\n" + no_such_device +
                  "0x0 result=0 msg=\"\"\n0x0 result=1 msg=\"link of port 1 is down\"\n" + no_such_device +
                  not_supported + no_such_device);
    EXPECT_EQ(
        answers(board, {"drv_cpld_reg_read(chip_id=1, offset=0x10)", "drv_cpld_reg_read(chip_id=1, offset=0x11)"}),
        "0x0 data=4\n0x0 data=2\n");
}

TEST(CpldDriver, LinksAndReceivers) {
    const std::vector<std::string> calls = {"drv_cpld_check_chip_link(chip_id=0, size=64)",
                                            "drv_cpld_check_chip_link(chip_id=1, size=64)",
                                            "drv_cpld_uart_get_recv_alarm(chip_id=0, channel=0, size=64)",
                                            "drv_cpld_uart_get_recv_alarm(chip_id=0, channel=1, size=64)",
                                            "drv_cpld_uart_get_recv_alarm(chip_id=0, channel=2, size=64)",
                                            "drv_cpld_uart_get_recv_alarm(chip_id=1, channel=0, size=64)"};
    const std::string good = "0x0 result=0 msg=\"\"\n";
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), good + good + good + good + no_such_device + not_supported);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/logic/0/link_down", "7"},
                                                 {"self/sim_board/logic/0/uart_alarm", "2"},
                                                 {"self/sim_board/logic/1/chip_links", ""}}),
                      calls),
              "0x0 result=1 msg=\"link to chip 0 is down, link to chip 1 is down\"\n" + not_supported + good +
                  "0x0 result=1 msg=\"receiver 1 lost characters\"\n" + no_such_device + not_supported);
}

// A CPLD keeps its logic without power, so it neither loads it nor loses bits of it.
TEST(CpldDriver, LogicThatIsLoaded) {
    const std::vector<std::string> calls = {
        "drv_cpld_check_repeat_load(chip_id=0, size=64)", "drv_cpld_check_repeat_load(chip_id=1, size=64)",
        "drv_fpga_check_seu(chip_id=0, size=64)", "drv_fpga_check_seu(chip_id=1, size=64)",
        "drv_cpld_get_version(chip_id=1)"};
    const std::string good = "0x0 result=0 msg=\"\"\n";
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), not_supported + good + good + good + "0x0 version=515\n");
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/logic/0/upsets", "4"},
                                                 {"self/sim_board/logic/1/upsets", "3"},
                                                 {"self/sim_board/logic/1/repeated_loads", "2"}}),
                      calls),
              not_supported + "0x0 result=1 msg=\"loads beside the first: 2\"\n" + good +
                  "0x0 result=1 msg=\"turned bits: 3\"\n0x0 version=515\n");
}

TEST(CpldDriver, AllFunctionsTellWhichFailed) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_cpld_test_all_function(chip_id=0)", "drv_cpld_test_all_function(chip_id=2)"}),
              "0x0 flag=0\n0x0 flag=0\n");
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/logic/0/scratch_stuck", "0x80"},
                                                 {"self/sim_board/logic/1/spi_fault", "0x08"},
                                                 {"self/sim_board/logic/2/pcie_down", "1"},
                                                 {"self/sim_board/logic/2/spi_fault", "1"}}),
                      {"drv_cpld_test_all_function(chip_id=0)", "drv_cpld_test_all_function(chip_id=1)",
                       "drv_cpld_test_all_function(chip_id=2)"}),
              "0x0 flag=1\n0x0 flag=2\n0x0 flag=6\n");
}

// The four registers hold the address from its lowest bits on.
TEST(CpldDriver, NpParaStandInTheRegisters) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_set_np_para(chip_id=1, slave_addr=0x42, np_addr=0x0004000300020001)",
                              "drv_cpld_set_np_para(chip_id=1, slave_addr=0x80, np_addr=5)",
                              "drv_cpld_set_np_para(chip_id=2, slave_addr=1, np_addr=5)"}),
              ok + bad_value + not_supported);
    EXPECT_EQ(answers(board, {"drv_cpld_reg_read(chip_id=1, offset=0x20)", "drv_cpld_reg_read(chip_id=1, offset=0x21)",
                              "drv_cpld_reg_read(chip_id=1, offset=0x22)", "drv_cpld_reg_read(chip_id=1, offset=0x23)",
                              "drv_cpld_reg_read(chip_id=1, offset=0x24)"}),
              "0x0 data=66\n0x0 data=1\n0x0 data=2\n0x0 data=3\n0x0 data=4\n");
}

TEST(CpldDriver, InstancesAndMissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_cpld_init()", "drv_cpld_deinit()", "drv_cpld_init(inst_id=0xff000005)",
                              "drv_cpld_deinit(inst_id=0xff000006)"}),
              ok + ok + not_supported + no_such_instance);
    EXPECT_EQ(
        answers(board,
                {"drv_cpld_reg_read(chip_id=0, data=null)", "drv_cpld_selftest(chip_id=0, size=64, result=null)",
                 "drv_cpld_selftest(chip_id=0, size=64, msg=null)", "drv_cpld_test_all_function(chip_id=0, flag=null)",
                 "drv_cpld_get_build_time(chip_id=0, year=null)", "drv_cpld_get_build_time(chip_id=0, day=null)",
                 "drv_cpld_check_agent_spi_status(chip_id=0, size=64, result=null)",
                 "drv_cpld_check_pcie_link_status(chip_id=1, size=64, msg=null)",
                 "drv_cpld_check_chip_link(chip_id=0, size=64, result=null)",
                 "drv_cpld_uart_get_recv_alarm(chip_id=0, size=64, msg=null)",
                 "drv_cpld_check_repeat_load(chip_id=1, size=64, msg=null)",
                 "drv_cpld_get_version(chip_id=0, version=null)", "drv_fpga_check_seu(chip_id=1, size=64, msg=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
