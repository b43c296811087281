// Fan trays: presence by slot, as the main processing units see it.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string online(const std::string &slot) {
    return "drv_fan_get_online_status(slot_id=" + slot + ")";
}

} // namespace

TEST(FanTray, BothTraysAreThere) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {online("15"), online("16")}), "0x0 online=1\n0x0 online=1\n");
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {online("15")}), "0x0 online=1\n");
}

TEST(FanTray, TheTechnicianTakesOneOut) {
    EXPECT_EQ(answers_of({"--state", new_scratch_dir() + "/state", "--set", "chassis/fan/tray/16/present=0"},
                         {online("15"), online("16")}),
              "0x0 online=1\n0x0 online=0\n");
}

TEST(FanTray, AnEmptySlotForTrays) {
    const std::string file = new_scratch_dir() + "/quiet.xml";
    write_file(file, "<board name=\"quiet\" like=\"mpu\" slot=\"9\"><place name=\"chassis\">"
                     "<module name=\"sim_fan\" remove=\"yes\"/></place></board>");
    const test_board board = new_board(file);
    EXPECT_EQ(answers(board, {online("15"), "drv_temperature_get_value(temperature_id=1)"}),
              "0x0 online=0\n0x0 value=43\n");
}

TEST(FanTray, OtherSlotsAndBoards) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {online("9"), online("1"), online("17"), online("0"),
                              "drv_fan_get_online_status(slot_id=15, online=null)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + null_pointer);
    EXPECT_EQ(answers(seen_from(board, "lpu"), {online("15"), online("7")}), not_supported + no_such_device);
}

} // namespace kestro_tests
