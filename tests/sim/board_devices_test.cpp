// Board management: memories, programmable logic, power domains, health checks and buses.
#include "tests/sim/support.h"

#include "sim/core/board.h"
#include "sim/core/state_dir.h"
#include "sim/devices/management/bus_links.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

uint32_t black_box_register(const test_board &board, const char *name) {
    const kestro_sim::state_lock lock(board.state);
    kestro_sim::board simulated(board.description, board.state, board.seat);
    const auto box = simulated.find_at<kestro_sim::black_box::family>(board.seat);
    return static_cast<uint32_t>(simulated.value(box, *kestro_sim::black_box::family.find(name)).value());
}

} // namespace

TEST(Memory, Sizes) {
    const std::vector<std::string> calls = {"drv_board_get_bootrom_size()", "drv_board_get_flash_size()",
                                            "drv_board_get_nandflash_size()", "drv_board_get_nvram_size()",
                                            "drv_board_get_sdram_size()"};
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls),
              "0x0 size=8\n0x0 size=64\n0x0 size=4096\n0x0 size=2\n0x0 size=8192\n");
    EXPECT_EQ(answers(new_delivered("lpu"), calls),
              "0x0 size=4\n0x0 size=32\n" + not_supported + not_supported + "0x0 size=4096\n");
}

TEST(Memory, ModulesShowTheirManufacturingBytes) {
    const std::string expected = "64 01 01 24 11 00 25 11 41 "
                                 "44 49 4d 4d 2d 34 47 2d 44 44 52 34 2d 32 34 30 30 2d 37 32 " // DIMM-4G-DDR4-2400-72
                                 "00 64 01 00 "
                                 "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                                 "00";
    // What a driver does not write keeps what kestro_call had put there.
    std::string unwritten;
    for (int i = 62; i < 127; ++i) {
        unwritten += " 5a";
    }
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_board_get_dimm_info(dimm_id=1, size=127)", "drv_board_get_dimm_info(dimm_id=1, size=62)"}),
        "0x0 buffer=[" + expected + unwritten + "]\n0x0 buffer=[" + expected + "]\n");
    EXPECT_EQ(
        answers(board, {"drv_board_get_dimm_info(dimm_id=1, size=61)", "drv_board_get_dimm_info(dimm_id=1, size=0)",
                        "drv_board_get_dimm_info(dimm_id=2, size=127)",
                        "drv_board_get_dimm_info(inst_id=0xff000005, dimm_id=0, size=127)"}),
        too_small + too_small + no_such_device + not_supported);
}

TEST(Memory, ShortPartNumbersArePaddedWithBlanks) {
    const std::string shown = answers(new_altered("lpu", {{"self/sim_board/dimm/0/part_number", "X1"}}),
                                      {"drv_board_get_dimm_info(dimm_id=0, size=127)"});
    const size_t first = shown.find('[') + 1;
    EXPECT_EQ(shown.substr(first + 9 * 3, 20 * 3 - 1), "58 31 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20");
}

TEST(Memory, TemperaturesAndBuses) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_dimm_temperature(dimm_id=0)", "drv_board_get_dimm_temperature(dimm_id=1)",
                              "drv_board_get_dimm_temperature(dimm_id=2)",
                              "drv_board_check_dimm_bus_status(dimm_no=1, size=128)",
                              "drv_board_check_dimm_bus_status(dimm_no=5, size=128)",
                              "drv_board_get_ddr_event(cpu_chip_no=0, size=128)",
                              "drv_board_get_ddr_event(cpu_chip_no=1, size=128)"}),
              "0x0 temperature=41\n0x0 temperature=43\n" + no_such_device + "0x0 status=0 dfx=\"\"\n" + no_such_device +
                  "0x0 state=0 dfx=\"\"\n" + no_such_device);
    EXPECT_EQ(
        answers(new_altered("mpu_master", {{"self/sim_board/dimm/0/celsius", "-12"},
                                           {"self/sim_board/dimm/1/bus_fault", "1"},
                                           {"self/sim_board/cpu/0/ddr_event", "1"}}),
                {"drv_board_get_dimm_temperature(dimm_id=0)", "drv_board_check_dimm_bus_status(dimm_no=0, size=128)",
                 "drv_board_check_dimm_bus_status(dimm_no=1, size=128)",
                 "drv_board_get_ddr_event(cpu_chip_no=0, size=128)"}),
        "0x0 temperature=-12\n0x0 status=0 dfx=\"\"\n0x0 status=1 dfx=\"memory module 1 does not answer on its "
        "bus\"\n0x0 state=1 dfx=\"memory event at processor 0\"\n");
}

TEST(Memory, AModuleThatDoesNotAnswerOnItsBusTellsNothing) {
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/dimm/1/bus_fault", "1"}}),
                      {"drv_board_get_dimm_info(dimm_id=1, size=127)", "drv_board_get_dimm_temperature(dimm_id=1)",
                       "drv_board_get_dimm_temperature(dimm_id=0)"}),
              "0x8111010f\n0x8111010f\n0x0 temperature=41\n");
}

TEST(Logic, VersionsAndCounts) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_board_get_cpld_num()", "drv_board_get_ctrl_fpga_num()", "drv_board_get_cpld_ver(cpld_id=0)",
                       "drv_board_get_cpld_ver(cpld_id=2)", "drv_board_get_cpld_ver(cpld_id=3)",
                       "drv_board_get_cpld_ver(inst_id=0xff000005, cpld_id=0)"}),
              "0x0 num=3\n0x0 num=2\n0x0 ver=263\n0x0 ver=516\n" + no_such_device + not_supported);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_cpld_num()", "drv_board_get_ctrl_fpga_num()"}),
              "0x0 num=2\n0x0 num=1\n");
}

TEST(Bios, VersionAndAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board,
                      {"drv_board_get_bios_ver(size=127)", "drv_board_get_bios_ver(size=13)",
                       "drv_board_get_bios_ver(size=12)", "drv_board_get_bios_ver(size=0)", "drv_board_get_area()",
                       "drv_board_check_bios(area=1)", "drv_board_check_bios(area=2)", "drv_board_check_bios(area=3)"}),
              "0x0 text=\"BIOS 1.12.03\"\n0x0 text=\"BIOS 1.12.03\"\n" + too_small + too_small +
                  "0x0 area=2\n0x0 result=0\n0x0 result=0\n0x0 result=0\n");
    EXPECT_EQ(answers(board, {"drv_board_check_bios(area=0)", "drv_board_check_bios(area=4)"}),
              no_such_device + no_such_device);
    EXPECT_EQ(answers(new_altered("lpu", {{"self/sim_board/bios_area/2/fault", "7"}}),
                      {"drv_board_check_bios(area=1)", "drv_board_check_bios(area=2)"}),
              "0x0 result=0\n0x0 result=1\n");
}

TEST(Start, BootStepIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_self_bootstep()", "drv_board_set_self_bootstep(step=255)"}),
              "0x0 step=60\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_board_set_self_bootstep(step=256)", "drv_board_get_self_bootstep()",
                              "drv_board_set_self_bootstep(inst_id=0xff000005, step=1)",
                              "drv_board_get_factory_reset_flag()"}),
              bad_value + "0x0 step=255\n" + not_supported + "0x0 flag=0\n");
}

TEST(Start, ThePeerShowsItsOwnStep) {
    EXPECT_EQ(
        answers(new_delivered("mpu_master"), {"drv_board_set_self_bootstep(step=3)", "drv_board_get_peer_bootstep()"}),
        "0x0\n0x0 step=55\n");
    EXPECT_EQ(answers(new_delivered("mpu_slave"), {"drv_board_get_peer_bootstep()"}), "0x0 step=60\n");
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_peer_bootstep()"}), not_supported);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/unit/0/peer_slot", "8"}}),
                      {"drv_board_get_peer_bootstep()", "drv_board_get_peer_online_status()"}),
              no_such_instance + "0x0 status=1\n");
}

// The board, its peer and the bus read the same latch.
TEST(Start, ABitOfTheBootStepThatStays0) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/unit/0/bootstep_stuck", "2"}});
    EXPECT_EQ(answers(board, {"drv_board_set_self_bootstep(step=10)", "drv_board_get_self_bootstep()",
                              "drv_cpld_reg_read(chip_id=0, offset=0x32)"}),
              "0x0\n0x0 step=8\n0x0 data=8\n");
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {"drv_board_get_peer_bootstep()"}), "0x0 step=8\n");
}

TEST(Power, DomainsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_power_status(type=3)", "drv_board_set_power_off(type=3)",
                              "drv_board_set_power_off(inst_id=0xff000005, type=9)"}),
              "0x0 status=1\n0x0\n0x0\n");
    EXPECT_EQ(
        answers(board, {"drv_board_get_power_status(type=3)", "drv_board_get_power_status(inst_id=0xff000005, type=9)",
                        "drv_board_get_power_status(inst_id=0xff000004, type=9)", "drv_board_set_power_on(type=3)",
                        "drv_board_get_power_status(type=3)"}),
        "0x0 status=0\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=1\n");
}

TEST(Power, DomainsThatAreNot) {
    const test_board board = new_delivered("mpu_master");
    for (const std::string name : {"drv_board_get_power_status", "drv_board_set_power_on", "drv_board_set_power_off"}) {
        EXPECT_EQ(answers(board, {name + "(type=34)", name + "(type=0xffffffff)", name + "(type=33)",
                                  name + "(inst_id=0xff000005, type=3)", name + "(inst_id=0xff000006, type=9)"}),
                  no_such_device + no_such_device + not_supported + not_supported + no_such_instance)
            << name;
    }
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_power_status(type=10)"}), not_supported);
}

TEST(Power, LowVoltage) {
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_check_low_voltage(size=127)"}), "0x0 status=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_altered("lpu", {{"self/sim_board/unit/0/low_voltage", "1"}}),
                      {"drv_board_check_low_voltage(size=127)"}),
              "0x0 status=1 dfx=\"the supply fell below its limit\"\n");
}

TEST(Health, SolderJoints) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/corner/1/status", "4"}});
    EXPECT_EQ(
        answers(board, {"drv_board_get_four_corner_status(chip_id=0)", "drv_board_get_four_corner_status(chip_id=1)",
                        "drv_board_check_four_corner_status(chip_id=0, size=128)",
                        "drv_board_check_four_corner_status(chip_id=1, size=128)",
                        "drv_board_get_four_corner_status(chip_id=3)",
                        "drv_board_check_four_corner_status(chip_id=9, size=128)",
                        "drv_board_check_four_corner_status(inst_id=0xff000005, chip_id=0, size=128)"}),
        "0x0 status=0\n0x0 status=4\n0x0 status=0 dfx=\"\"\n0x0 status=1 dfx=\"a corner joint of chip 1 is open\"\n" +
            no_such_device + no_such_device + not_supported);
}

TEST(Health, Corrosion) {
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_board_check_corrosion_status(size=128)",
                                                    "drv_board_check_corrosion_status(inst_id=0xff000005, size=128)"}),
              "0x0 status=0 dfx=\"\"\n" + not_supported);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/corrosion/0/status", "1"},
                                                 {"self/sim_board/corrosion/1/status", "2"}}),
                      {"drv_board_check_corrosion_status(size=128)"}),
              "0x0 status=1 dfx=\"corrosion at sensor 0, corrosion at sensor 1\"\n");
}

TEST(Health, WhichMainProcessingUnit) {
    const std::vector<std::string> calls = {"drv_board_get_mpu_status(size=127)",
                                            "drv_board_check_mpu_status(size=127)"};
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), "0x0 status=0 dfx=\"\"\n0x0 result=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_delivered("mpu_slave"), calls), "0x0 status=1 dfx=\"\"\n0x0 result=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_delivered("lpu"), calls), "0x0 status=0 dfx=\"\"\n0x0 result=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/unit/0/mpu", "1"}}), calls),
              "0x0 status=1 dfx=\"\"\n0x0 result=1 dfx=\"slot 9 reads MPU status 1\"\n");
    EXPECT_EQ(
        answers(new_altered("lpu", {{"self/sim_board/unit/0/mpu", "2"}}), calls),
        "0x0 status=2 dfx=\"neither slot of the two is selected\"\n0x0 result=1 dfx=\"slot 7 reads MPU status 2\"\n");
}

TEST(Health, Interrupts) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/interrupt/8/fault", "1"}});
    EXPECT_EQ(answers(board, {"drv_board_check_int_status(index_id=0, type=1, size=127)",
                              "drv_board_check_int_status(index_id=8, type=30, size=127)",
                              "drv_board_check_int_status(index_id=0, type=2, size=127)",
                              "drv_board_check_int_status(index_id=3, type=1, size=127)"}),
              "0x0 result=0 dfx=\"\"\n0x0 result=1 dfx=\"interrupt 8 is stuck\"\n" + no_such_device + no_such_device);
}

TEST(Health, TextsNeedRoom) {
    const test_board board = new_altered("lpu", {{"self/sim_board/unit/0/low_voltage", "1"}});
    EXPECT_EQ(answers(board, {"drv_board_check_low_voltage(size=32)", "drv_board_check_low_voltage(size=31)",
                              "drv_board_check_low_voltage(size=0)", "drv_board_check_fullin_status(size=1)",
                              "drv_board_check_fullin_status(size=0)"}),
              "0x0 status=1 dfx=\"the supply fell below its limit\"\n" + too_small + too_small +
                  "0x0 status=0 dfx=\"\"\n" + too_small);
}

TEST(Tpm, OfEachBoard) {
    const std::vector<std::string> calls = {"drv_board_get_tpm_online_status()", "drv_board_get_tpm_active_status()"};
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), "0x0 status=0\n0x0 status=1\n");
    EXPECT_EQ(answers(new_delivered("lpu"), calls), "0x0 status=1\n0x0 status=0\n");
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_board_get_tpm_online_status(inst_id=0xff000005)"}),
              not_supported);
}

TEST(Isolation, IsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_set_sfu_isolate(id=0, enable=1)",
                              "drv_board_set_sfu_fullin_isolate_en(id=1, enable=1)"}),
              ok + ok);
    EXPECT_EQ(
        answers(board, {"drv_board_get_sfu_isolate(id=0)", "drv_board_get_sfu_isolate(id=1)",
                        "drv_board_get_sfu_fullin_isolate_en(id=0)", "drv_board_get_sfu_fullin_isolate_en(id=1)"}),
        "0x0 value=1\n0x0 value=0\n0x0 value=0\n0x0 value=1\n");
    EXPECT_EQ(answers(board, {"drv_board_set_sfu_isolate(id=0, enable=2)", "drv_board_set_sfu_isolate(id=2, enable=1)",
                              "drv_board_get_sfu_fullin_isolate_en(id=2)",
                              "drv_board_get_sfu_isolate(inst_id=0xff000005, id=0)"}),
              bad_value + no_such_device + no_such_device + not_supported);
}

TEST(BlackBox, KeepsItsSettings) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(black_box_register(board, "seconds"), 60U);
    EXPECT_EQ(answers(board, {"drv_board_set_bbox_enable(enable=0)", "drv_board_set_bbox_time(time_value=3600)",
                              "drv_board_set_bbox_enable(enable=2)"}),
              ok + ok + bad_value);
    EXPECT_EQ(black_box_register(board, "enable"), 0U);
    EXPECT_EQ(black_box_register(board, "seconds"), 3600U);
    EXPECT_EQ(
        answers(new_delivered("lpu"), {"drv_board_set_bbox_enable(enable=0)", "drv_board_set_bbox_time(time_value=1)"}),
        not_supported + not_supported);
}

TEST(Smi, SourceIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_slave");
    EXPECT_EQ(answers(board, {"drv_board_get_smi_source()", "drv_board_set_smi_source(source=1)",
                              "drv_board_set_backup_smi_en(en_flag=0)"}),
              "0x0 source=0\n0x0\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_board_set_smi_source(source=2)", "drv_board_set_backup_smi_en(en_flag=2)",
                              "drv_board_get_smi_source()", "drv_board_get_smi_source(inst_id=0xff000005)"}),
              bad_value + bad_value + "0x0 source=1\n" + not_supported);
}

TEST(Smi, BusChecks) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/smi_bus/1/crc_errors", "3"}});
    EXPECT_EQ(answers(board, {"drv_board_check_smi(bus_id=0, size=128)", "drv_board_check_smi_crc(bus_id=1, size=128)",
                              "drv_board_check_smi_los(bus_id=1, size=128)", "drv_board_check_smi(bus_id=1, size=128)",
                              "drv_board_check_smi(bus_id=2, size=128)",
                              "drv_board_check_smi_los(inst_id=0xff000005, bus_id=0, size=128)"}),
              "0x0 result=0 dfx=\"\"\n0x0 result=1 dfx=\"bus 1: checksum errors\"\n0x0 result=0 dfx=\"\"\n0x0 result=1 "
              "dfx=\"bus 1: checksum errors\"\n" +
                  no_such_device + not_supported);
    EXPECT_EQ(answers(new_altered("lpu", {{"self/sim_board/smi_bus/0/los", "1"}}),
                      {"drv_board_check_smi_los(bus_id=0, size=128)", "drv_board_check_smi_crc(bus_id=0, size=128)"}),
              "0x0 result=1 dfx=\"bus 0: no signal\"\n0x0 result=0 dfx=\"\"\n");
}

} // namespace kestro_tests
