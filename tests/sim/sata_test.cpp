// Disks: on line when they have started, worn by the hours that they work, and how they tell of it.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";

std::string call(const std::string &name, unsigned id) {
    return "drv_sata_" + name + "(sata_id=" + std::to_string(id) + ")";
}

std::string property(unsigned id) {
    return "drv_sata_get_property(sata_id=" + std::to_string(id) + ", firm_size=64, serial_size=64)";
}

std::string report(unsigned id) {
    return "drv_sata_get_smartinfo(sata_id=" + std::to_string(id) + ", buf_len=8192)";
}

std::string seat(unsigned id) {
    return "drv_sata_check_fullin_status(sata_id=" + std::to_string(id) + ", buf_len=100)";
}

std::string life(unsigned percent) {
    return "0x0 remaining_life=" + std::to_string(percent) + "\n";
}

const std::string on_line = "0x0 status=1\n";
const std::string off_line = "0x0 status=0\n";
const std::string num = "drv_sata_get_num()";

// On the virtual clock of a state of its own.
class SataDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(SataDriver, HealthyDisks) {
    EXPECT_EQ(answers({num, call("get_online_status", 0), call("get_power_status", 1), property(0), property(1),
                       call("get_capacity", 0), call("get_partition_num", 0), call("get_remaining_life", 0), seat(0)}),
              "0x0 num=2\n" + on_line + on_line +
                  "0x0 vendor=2 speed=3 firm=\"KD0104\" serial=\"KD2511040080A\"\n"
                  "0x0 vendor=2 speed=3 firm=\"KD0107\" serial=\"KD2511040080B\"\n"
                  "0x0 capacity=0x3ba0558\n0x0 num=4\n" +
                  life(98) + "0x0 status=0 buf=\"\"\n");
    EXPECT_EQ(answers({property(0)}, {"--board", "mpu_slave"}),
              "0x0 vendor=2 speed=3 firm=\"KD0104\" serial=\"KD2511040081A\"\n");
}

TEST_F(SataDriver, ADiskWithoutPowerDoesNotAnswer) {
    EXPECT_EQ(answers({call("power_off", 1), num, call("get_online_status", 1), call("get_power_status", 1),
                       property(1), call("get_capacity", 1), call("get_partition_num", 1),
                       call("get_remaining_life", 1), report(1), seat(1), call("get_capacity", 0)}),
              ok + "0x0 num=1\n" + off_line + off_line + not_ready + not_ready + not_ready + not_ready + not_ready +
                  "0x0 status=0 buf=\"\"\n" + "0x0 capacity=0x3ba0558\n");
}

TEST_F(SataDriver, ADiskTakesItsTimeToStart) {
    const std::string status = call("get_online_status", 1);
    EXPECT_EQ(answers({call("power_off", 1), "wait 5", call("power_on", 1), status, "wait 1.999", status,
                       call("get_power_status", 1), call("power_on", 1), "wait 0.001", status}),
              ok + ok + off_line + off_line + on_line + ok + on_line);
    EXPECT_EQ(answers({call("power_off", 1), call("power_on", 1), "wait 2", status}), ok + ok + on_line);
    EXPECT_EQ(answers({call("power_off", 1), call("power_on", 1), "wait 2", status, "wait 4", status},
                      {"--set", "slot9/sata/disk/1/start_up=6000"}),
              ok + ok + off_line + on_line);
}

// 30000 hours make 100 per cent, of which 9000 were behind it when the board was new.
TEST_F(SataDriver, WearsWithTheHoursThatItWorks) {
    const std::string remaining = call("get_remaining_life", 1);
    EXPECT_EQ(answers({remaining, "wait 1079999", remaining, "wait 1", remaining}), life(70) + life(70) + life(69));
    EXPECT_EQ(answers({call("power_off", 1), "wait 10000000", call("power_on", 1), "wait 2", remaining, "wait 1079998",
                       remaining, call("power_off", 1), call("power_off", 1), "wait 7200", call("power_on", 1),
                       "wait 1079998", remaining, "wait 2", remaining}),
              ok + ok + life(69) + life(68) + ok + ok + ok + life(68) + life(67));
}

TEST_F(SataDriver, WornOutDisksGoOn) {
    EXPECT_EQ(answers({call("get_remaining_life", 0), call("get_online_status", 0)},
                      {"--set", "slot9/sata/disk/0/hours=49999"}),
              life(1) + on_line);
    EXPECT_EQ(answers({call("get_remaining_life", 0), call("get_online_status", 0)},
                      {"--set", "slot9/sata/disk/0/hours=1000000"}),
              life(0) + on_line);
}

TEST_F(SataDriver, TableOfAttributes) {
    EXPECT_EQ(answers({"wait 7200", report(0)}),
              "0x0 buf=\"Device Model:     KD-SSD-64\\r\\n"
              "Serial Number:    KD2511040080A\\r\\n"
              "Firmware Version: KD0104\\r\\n"
              "\\r\\n"
              "ID# ATTRIBUTE_NAME          FLAG     VALUE WORST THRESH TYPE      UPDATED  WHEN_FAILED RAW_VALUE\\r\\n"
              "  5 Reallocated_Sector_Ct   0x0033   100   100   010    Pre-fail  Always   -           0\\r\\n"
              "  9 Power_On_Hours          0x0032   098   098   000    Old_age   Always   -           1202\\r\\n"
              " 12 Power_Cycle_Count       0x0032   100   100   000    Old_age   Always   -           17\\r\\n"
              "194 Temperature_Celsius     0x0022   062   062   000    Old_age   Always   -           38\\r\\n"
              "197 Current_Pending_Sector  0x0012   100   100   000    Old_age   Always   -           0\\r\\n"
              "199 UDMA_CRC_Error_Count    0x003e   200   200   000    Old_age   Always   -           0\\r\\n"
              "202 Percent_Lifetime_Remain 0x0031   098   098   005    Pre-fail  Offline  -           2\\r\\n\"\n");
}

TEST_F(SataDriver, SickDisksShowInTheTable) {
    const std::string table =
        answers({call("power_off", 1), call("power_on", 1), "wait 2", report(1)},
                {"--set", "slot9/sata/disk/1/hours=28500", "--set", "slot9/sata/disk/1/reallocated=90", "--set",
                 "slot9/sata/disk/1/pending=3000000000", "--set", "slot9/sata/disk/1/crc_errors=12", "--set",
                 "slot9/sata/disk/1/celsius=-7"});
    for (const char *row :
         {"  5 Reallocated_Sector_Ct   0x0033   010   010   010    Pre-fail  Always   FAILING_NOW 90\\r\\n",
          "  9 Power_On_Hours          0x0032   005   005   000    Old_age   Always   -           28500\\r\\n",
          " 12 Power_Cycle_Count       0x0032   100   100   000    Old_age   Always   -           43\\r\\n",
          "194 Temperature_Celsius     0x0022   100   100   000    Old_age   Always   -           -7\\r\\n",
          "197 Current_Pending_Sector  0x0012   000   000   000    Old_age   Always   -           3000000000\\r\\n",
          "199 UDMA_CRC_Error_Count    0x003e   188   188   000    Old_age   Always   -           12\\r\\n",
          "202 Percent_Lifetime_Remain 0x0031   005   005   005    Pre-fail  Offline  FAILING_NOW 95\\r\\n"}) {
        EXPECT_NE(table.find(row), std::string::npos) << row << table;
    }
}

TEST_F(SataDriver, EmptyBaysAndLooseDisks) {
    EXPECT_EQ(answers({num, seat(0), call("get_online_status", 0)}, {"--set", "slot9/sata/disk/0/seated=0"}),
              "0x0 num=2\n0x0 status=1 buf=\"the disk does not sit fully in its connector\"\n" + on_line);
    EXPECT_EQ(answers({num, seat(0), call("get_online_status", 0), call("get_power_status", 0), call("get_capacity", 0),
                       call("power_off", 0), call("get_power_status", 0)},
                      {"--set", "slot9/sata/disk/0/present=0"}),
              "0x0 num=1\n" + not_ready + off_line + on_line + not_ready + ok + off_line);
}

TEST(SataCalls, UnknownDisksAndBoardsWithout) {
    const test_board board = new_delivered("mpu_master");
    const std::vector<std::string> lines{call("get_online_status", 2),
                                         call("get_partition_num", 2),
                                         property(2),
                                         call("get_capacity", 2),
                                         call("get_remaining_life", 2),
                                         call("get_power_status", 2),
                                         call("power_on", 2),
                                         call("power_off", 2),
                                         report(2),
                                         seat(2)};
    std::string unknown;
    std::string unsupported;
    for (size_t i = 0; i < lines.size(); ++i) {
        unknown += no_such_device;
        unsupported += not_supported;
    }
    EXPECT_EQ(answers(board, lines), unknown);
    EXPECT_EQ(answers(new_delivered("lpu"), lines), unsupported);
    EXPECT_EQ(answers(new_delivered("lpu"), {num}), not_supported);
}

TEST(SataCalls, MissingAndShortAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_sata_get_num(num=null)", "drv_sata_get_online_status(sata_id=0, status=null)",
                              "drv_sata_get_partition_num(sata_id=0, num=null)",
                              "drv_sata_get_property(sata_id=0, firm_size=64, serial_size=64, vendor=null)",
                              "drv_sata_get_property(sata_id=0, firm_size=64, serial_size=64, speed=null)",
                              "drv_sata_get_property(sata_id=0, firm_size=64, serial_size=64, firm=null)",
                              "drv_sata_get_property(sata_id=0, firm_size=64, serial_size=64, serial=null)",
                              "drv_sata_get_capacity(sata_id=0, capacity=null)",
                              "drv_sata_get_remaining_life(sata_id=0, remaining_life=null)",
                              "drv_sata_get_power_status(sata_id=0, status=null)",
                              "drv_sata_get_smartinfo(sata_id=0, buf_len=9, buf=null)",
                              "drv_sata_check_fullin_status(sata_id=0, buf_len=9, buf=null)",
                              "drv_sata_check_fullin_status(sata_id=0, buf_len=9, status=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
                  null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
    EXPECT_EQ(answers(board, {"drv_sata_get_property(sata_id=0, firm_size=6, serial_size=64)",
                              "drv_sata_get_property(sata_id=0, firm_size=7, serial_size=13)",
                              "drv_sata_get_property(sata_id=0, firm_size=7, serial_size=14)",
                              "drv_sata_get_smartinfo(sata_id=0, buf_len=100)",
                              "drv_sata_check_fullin_status(sata_id=0, buf_len=0)"}),
              too_small + "0x81110108 firm=\"KD0104\"\n" +
                  "0x0 vendor=2 speed=3 firm=\"KD0104\" serial=\"KD2511040080A\"\n" + too_small + too_small);
}

} // namespace kestro_tests
