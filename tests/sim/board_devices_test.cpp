// Board management: memories, programmable logic, power domains, health checks and buses.
#include "tests/sim/support.h"

#include "sim/core/board.h"
#include "sim/core/state_dir.h"
#include "sim/devices/management/bus_links.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";
const std::string both_null = "0x81110101 0x81110101\n";

uint32_t black_box_register(const test_board &board, const char *name) {
    const kestro_sim::state_lock lock(board.state);
    kestro_sim::board desk(board.description, board.state, board.seat);
    const auto box = desk.find_at<kestro_sim::black_box::family>(board.seat);
    return static_cast<uint32_t>(desk.value(box, *kestro_sim::black_box::family.find(name)).value());
}

} // namespace

TEST(Memory, Sizes) {
    const std::vector<std::string> calls = {"board_get_bootrom_size" + self, "board_get_flash_size" + self,
                                            "board_get_nandflash_size" + self, "board_get_nvram_size" + self,
                                            "board_get_sdram_size" + self};
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), calls), "0x0 8\n0x0 64\n0x0 4096\n0x0 2\n0x0 8192\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), calls),
              "0x0 4\n0x0 32\n" + not_supported + not_supported + "0x0 4096\n");
}

TEST(Memory, ModulesShowTheirManufacturingBytes) {
    const std::string expected = "64 01 01 24 11 00 25 11 41 "
                                 "44 49 4d 4d 2d 34 47 2d 44 44 52 34 2d 32 34 30 30 2d 37 32 " // DIMM-4G-DDR4-2400-72
                                 "00 64 01 00 "
                                 "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
                                 "00";
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_dimm_info" + self + "1 127", "board_get_dimm_info" + self + "1 62"}),
              "0x0 [" + expected + "]\n0x0 [" + expected + "]\n");
    EXPECT_EQ(calls_print(board, {"board_get_dimm_info" + self + "1 61", "board_get_dimm_info" + self + "1 0",
                                  "board_get_dimm_info" + self + "2 127", "board_get_dimm_info" + card5 + "0 127"}),
              too_small + too_small + no_such_device + not_supported);
}

TEST(Memory, ShortPartNumbersArePaddedWithBlanks) {
    EXPECT_EQ(calls_print(new_altered("lpu", {{"self/sim_board/dimm/0/part_number", "X1"}}),
                          {"board_get_dimm_info" + self + "0 127"})
                  .substr(5 + 9 * 3, 20 * 3 - 1),
              "58 31 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20");
}

TEST(Memory, TemperaturesAndBuses) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        calls_print(board, {"board_get_dimm_temperature" + self + "0", "board_get_dimm_temperature" + self + "1",
                            "board_get_dimm_temperature" + self + "2", "board_check_dimm_bus_status" + self + "1 128",
                            "board_check_dimm_bus_status" + self + "5 128", "board_get_ddr_event" + self + "0 128",
                            "board_get_ddr_event" + self + "1 128"}),
        "0x0 41\n0x0 43\n" + no_such_device + "0x0 0 \"\"\n" + no_such_device + "0x0 0 \"\"\n" + no_such_device);
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/dimm/0/celsius", "-12"},
                                                     {"self/sim_board/dimm/1/bus_fault", "1"},
                                                     {"self/sim_board/cpu/0/ddr_event", "1"}}),
                          {"board_get_dimm_temperature" + self + "0", "board_check_dimm_bus_status" + self + "0 128",
                           "board_check_dimm_bus_status" + self + "1 128", "board_get_ddr_event" + self + "0 128"}),
              "0x0 -12\n0x0 0 \"\"\n0x0 1 \"memory module 1 does not answer on its bus\"\n"
              "0x0 1 \"memory event at processor 0\"\n");
}

TEST(Logic, VersionsAndCounts) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"),
                          {"board_get_cpld_num" + self, "board_get_ctrl_fpga_num" + self,
                           "board_get_cpld_ver" + self + "0", "board_get_cpld_ver" + self + "2",
                           "board_get_cpld_ver" + self + "3", "board_get_cpld_ver" + card5 + "0"}),
              "0x0 3\n0x0 2\n0x0 263\n0x0 516\n" + no_such_device + not_supported);
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_cpld_num" + self, "board_get_ctrl_fpga_num" + self}),
              "0x0 2\n0x0 1\n");
}

TEST(Bios, VersionAndAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(
        calls_print(board, {"board_get_bios_ver" + self + "127", "board_get_bios_ver" + self + "13",
                            "board_get_bios_ver" + self + "12", "board_get_bios_ver" + self + "0",
                            "board_get_area" + self, "board_check_bios 1", "board_check_bios 2", "board_check_bios 3"}),
        "0x0 \"BIOS 1.12.03\"\n0x0 \"BIOS 1.12.03\"\n" + too_small + too_small + "0x0 2\n0x0 0\n0x0 0\n0x0 0\n");
    EXPECT_EQ(calls_print(board, {"board_check_bios 0", "board_check_bios 4"}), no_such_device + no_such_device);
    EXPECT_EQ(calls_print(new_altered("lpu", {{"self/sim_board/bios_area/2/fault", "7"}}),
                          {"board_check_bios 1", "board_check_bios 2"}),
              "0x0 0\n0x0 1\n");
}

TEST(Start, BootStepIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_self_bootstep" + self, "board_set_self_bootstep" + self + "255"}),
              "0x0 60\n0x0\n");
    EXPECT_EQ(calls_print(board, {"board_set_self_bootstep" + self + "256", "board_get_self_bootstep" + self,
                                  "board_set_self_bootstep" + card5 + "1", "board_get_factory_reset_flag" + self}),
              bad_value + "0x0 255\n" + not_supported + "0x0 0\n");
}

TEST(Start, ThePeerShowsItsOwnStep) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"),
                          {"board_set_self_bootstep" + self + "3", "board_get_peer_bootstep" + self}),
              "0x0\n0x0 55\n");
    EXPECT_EQ(calls_print(new_delivered("mpu_slave"), {"board_get_peer_bootstep" + self}), "0x0 60\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_peer_bootstep" + self}), not_supported);
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/unit/0/peer_slot", "8"}}),
                          {"board_get_peer_bootstep" + self, "board_get_peer_online_status"}),
              no_such_instance + "0x0 1\n");
}

TEST(Power, DomainsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_power_status" + self + "3", "board_set_power_off" + self + "3",
                                  "board_set_power_off" + card5 + "9"}),
              "0x0 1\n0x0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"board_get_power_status" + self + "3", "board_get_power_status" + card5 + "9",
                                  "board_get_power_status 0xff000004 9", "board_set_power_on" + self + "3",
                                  "board_get_power_status" + self + "3"}),
              "0x0 0\n0x0 0\n0x0 1\n0x0\n0x0 1\n");
}

TEST(Power, DomainsThatAreNot) {
    const test_board board = new_delivered("mpu_master");
    for (const char *call : {"board_get_power_status", "board_set_power_on", "board_set_power_off"}) {
        const std::string name = call;
        EXPECT_EQ(calls_print(board, {name + self + "34"}), no_such_device) << name;
        EXPECT_EQ(calls_print(board, {name + self + "0xffffffff"}), no_such_device) << name;
        EXPECT_EQ(calls_print(board, {name + self + "33"}), not_supported) << name;
        EXPECT_EQ(calls_print(board, {name + card5 + "3"}), not_supported) << name;
        EXPECT_EQ(calls_print(board, {name + " 0xff000006 9"}), no_such_instance) << name;
    }
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_power_status" + self + "10"}), not_supported);
}

TEST(Power, LowVoltage) {
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_check_low_voltage" + self + "127"}), "0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_altered("lpu", {{"self/sim_board/unit/0/low_voltage", "1"}}),
                          {"board_check_low_voltage" + self + "127"}),
              "0x0 1 \"the supply fell below its limit\"\n");
}

TEST(Health, SolderJoints) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/corner/1/status", "4"}});
    EXPECT_EQ(calls_print(
                  board,
                  {"board_get_four_corner_status" + self + "0", "board_get_four_corner_status" + self + "1",
                   "board_check_four_corner_status" + self + "0 128", "board_check_four_corner_status" + self + "1 128",
                   "board_get_four_corner_status" + self + "3", "board_check_four_corner_status" + self + "9 128",
                   "board_check_four_corner_status" + card5 + "0 128"}),
              "0x0 0\n0x0 4\n0x0 0 \"\"\n0x0 1 \"a corner joint of chip 1 is open\"\n" + no_such_device +
                  no_such_device + not_supported);
}

TEST(Health, Corrosion) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), {"board_check_corrosion_status" + self + "128",
                                                        "board_check_corrosion_status" + card5 + "128"}),
              "0x0 0 \"\"\n" + not_supported);
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/corrosion/0/status", "1"},
                                                     {"self/sim_board/corrosion/1/status", "2"}}),
                          {"board_check_corrosion_status" + self + "128"}),
              "0x0 1 \"corrosion at sensor 0, corrosion at sensor 1\"\n");
}

TEST(Health, WhichMainProcessingUnit) {
    const std::vector<std::string> calls = {"board_get_mpu_status" + self + "127",
                                            "board_check_mpu_status" + self + "127"};
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), calls), "0x0 0 \"\"\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_delivered("mpu_slave"), calls), "0x0 1 \"\"\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), calls), "0x0 0 \"\"\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/unit/0/mpu", "1"}}), calls),
              "0x0 1 \"\"\n0x0 1 \"slot 9 reads MPU status 1\"\n");
    EXPECT_EQ(calls_print(new_altered("lpu", {{"self/sim_board/unit/0/mpu", "2"}}), calls),
              "0x0 2 \"neither slot of the two is selected\"\n0x0 1 \"slot 7 reads MPU status 2\"\n");
}

TEST(Health, Interrupts) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/interrupt/8/fault", "1"}});
    EXPECT_EQ(calls_print(board, {"board_check_int_status 0 1 127", "board_check_int_status 8 30 127",
                                  "board_check_int_status 0 2 127", "board_check_int_status 3 1 127"}),
              "0x0 0 \"\"\n0x0 1 \"interrupt 8 is stuck\"\n" + no_such_device + no_such_device);
}

TEST(Health, TextsNeedRoom) {
    const test_board board = new_altered("lpu", {{"self/sim_board/unit/0/low_voltage", "1"}});
    EXPECT_EQ(calls_print(board, {"board_check_low_voltage" + self + "32", "board_check_low_voltage" + self + "31",
                                  "board_check_low_voltage" + self + "0", "board_check_fullin_status" + self + "1",
                                  "board_check_fullin_status" + self + "0"}),
              "0x0 1 \"the supply fell below its limit\"\n" + too_small + too_small + "0x0 0 \"\"\n" + too_small);
}

TEST(Tpm, OfEachBoard) {
    const std::vector<std::string> calls = {"board_get_tpm_online_status" + self, "board_get_tpm_active_status" + self};
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), calls), "0x0 0\n0x0 1\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), calls), "0x0 1\n0x0 0\n");
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), {"board_get_tpm_online_status" + card5}), not_supported);
}

TEST(Isolation, IsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        calls_print(board, {"board_set_sfu_isolate" + self + "0 1", "board_set_sfu_fullin_isolate_en" + self + "1 1"}),
        ok + ok);
    EXPECT_EQ(calls_print(board, {"board_get_sfu_isolate" + self + "0", "board_get_sfu_isolate" + self + "1",
                                  "board_get_sfu_fullin_isolate_en" + self + "0",
                                  "board_get_sfu_fullin_isolate_en" + self + "1"}),
              "0x0 1\n0x0 0\n0x0 0\n0x0 1\n");
    EXPECT_EQ(
        calls_print(board, {"board_set_sfu_isolate" + self + "0 2", "board_set_sfu_isolate" + self + "2 1",
                            "board_get_sfu_fullin_isolate_en" + self + "2", "board_get_sfu_isolate" + card5 + "0"}),
        bad_value + no_such_device + no_such_device + not_supported);
}

TEST(BlackBox, KeepsItsSettings) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(black_box_register(board, "seconds"), 60U);
    EXPECT_EQ(calls_print(board, {"board_set_bbox_enable" + self + "0", "board_set_bbox_time" + self + "3600",
                                  "board_set_bbox_enable" + self + "2"}),
              ok + ok + bad_value);
    EXPECT_EQ(black_box_register(board, "enable"), 0U);
    EXPECT_EQ(black_box_register(board, "seconds"), 3600U);
    EXPECT_EQ(
        calls_print(new_delivered("lpu"), {"board_set_bbox_enable" + self + "0", "board_set_bbox_time" + self + "1"}),
        not_supported + not_supported);
}

TEST(Smi, SourceIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_slave");
    EXPECT_EQ(calls_print(board, {"board_get_smi_source" + self, "board_set_smi_source" + self + "1",
                                  "board_set_backup_smi_en" + self + "0"}),
              "0x0 0\n0x0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"board_set_smi_source" + self + "2", "board_set_backup_smi_en" + self + "2",
                                  "board_get_smi_source" + self, "board_get_smi_source" + card5}),
              bad_value + bad_value + "0x0 1\n" + not_supported);
}

TEST(Smi, BusChecks) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/smi_bus/1/crc_errors", "3"}});
    EXPECT_EQ(calls_print(board, {"board_check_smi" + self + "0 128", "board_check_smi_crc" + self + "1 128",
                                  "board_check_smi_los" + self + "1 128", "board_check_smi" + self + "1 128",
                                  "board_check_smi" + self + "2 128", "board_check_smi_los" + card5 + "0 128"}),
              "0x0 0 \"\"\n0x0 1 \"bus 1: checksum errors\"\n0x0 0 \"\"\n0x0 1 \"bus 1: checksum errors\"\n" +
                  no_such_device + not_supported);
    EXPECT_EQ(calls_print(new_altered("lpu", {{"self/sim_board/smi_bus/0/los", "1"}}),
                          {"board_check_smi_los" + self + "0 128", "board_check_smi_crc" + self + "0 128"}),
              "0x0 1 \"bus 0: no signal\"\n0x0 0 \"\"\n");
}

TEST(Outputs, NullPointersAreRefused) {
    const test_board board = new_delivered("mpu_master");
    for (const char *call : {"board_get_type",          "board_get_pcb_ver",           "board_get_usr_pcb_ver",
                             "board_get_soft_pcb_ver",  "board_get_bom_ver",           "board_get_bom_id",
                             "board_get_power",         "board_get_online_status",     "board_get_online_status_ex",
                             "board_get_fullin_status", "board_get_card_list",         "board_get_bootrom_size",
                             "board_get_cpld_num",      "board_get_ctrl_fpga_num",     "board_get_area",
                             "board_get_peer_bootstep", "board_get_self_bootstep",     "board_get_factory_reset_flag",
                             "board_get_smi_source",    "board_get_tpm_online_status", "board_get_tpm_active_status"}) {
        EXPECT_EQ(calls_print(board, {"null_" + std::string(call) + self}), null_pointer) << call;
    }
    for (const char *call : {"board_get_self_online_status", "board_get_peer_online_status", "board_get_self_slotid",
                             "board_get_peer_slotid", "board_get_self_logic_slotid", "board_get_peer_logic_slotid",
                             "board_check_bios 1"}) {
        EXPECT_EQ(calls_print(board, {"null_" + std::string(call)}), null_pointer) << call;
    }
}

TEST(Outputs, NullPointersOfNumberedDevicesAreRefused) {
    const test_board board = new_delivered("mpu_master");
    for (const char *call :
         {"board_get_capability", "board_get_dimm_temperature", "board_get_cpld_ver", "board_get_four_corner_status",
          "board_get_sfu_isolate", "board_get_sfu_fullin_isolate_en", "subboard_get_type", "subboard_get_online_status",
          "smb_get_tx_err_count", "smb_get_rx_err_count"}) {
        EXPECT_EQ(calls_print(board, {"null_" + std::string(call) + self + "0"}), null_pointer) << call;
    }
    EXPECT_EQ(
        calls_print(board, {"null_board_get_power_status" + self + "3", "null_board_get_card_ok" + self + "5",
                            "null_board_get_dimm_info" + self + "0 127", "null_board_get_bios_ver" + self + "127"}),
        null_pointer + null_pointer + null_pointer + null_pointer);
}

TEST(Outputs, NullPointersOfChecksAreRefused) {
    const test_board board = new_delivered("mpu_master");
    for (const char *call : {"board_check_fullin_status", "board_check_slotid", "board_check_low_voltage",
                             "board_check_corrosion_status", "board_get_mpu_status", "board_check_mpu_status"}) {
        EXPECT_EQ(calls_print(board, {"null_" + std::string(call) + self + "128"}), both_null) << call;
    }
    for (const char *call :
         {"board_check_dimm_bus_status", "board_get_ddr_event", "board_check_four_corner_status", "board_check_smi",
          "board_check_smi_crc", "board_check_smi_los", "subboard_get_online_status_ex"}) {
        EXPECT_EQ(calls_print(board, {"null_" + std::string(call) + self + "0 128"}), both_null) << call;
    }
    EXPECT_EQ(calls_print(board, {"null_board_check_int_status 0 1 128"}), both_null);
}

} // namespace kestro_tests
