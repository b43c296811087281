// The isolators in front of the buses of cards: only a stuck one lets a slave through.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::vector<std::string> of_two_cards{
    "drv_board_get_online_status(inst_id=0xff000005)", "drv_board_get_type(inst_id=0xff000005)",
    "drv_elabel_read(inst_id=0xff000005, elabel_id=0, len=4)", "drv_board_get_online_status(inst_id=0xff000002)",
    "drv_board_get_type(inst_id=0xff000002)"};

const std::string seen = "0x0 status=0\n0x0 type=0x2302201\n0x0 area=[5b 62 6f 61]\n";
const std::string not_seen = "0x0 status=1\n" + not_supported;

} // namespace

TEST(CardBus, AStuckIsolatorLetsTheSlaveThrough) {
    const std::string state = new_scratch_dir() + "/state";
    const std::vector<std::string> slave{"--board", "mpu_slave", "--state", state};
    EXPECT_EQ(answers_of(slave, of_two_cards), "0x0 status=1\n" + not_supported + no_such_instance + not_seen);
    std::vector<std::string> stuck = slave;
    stuck.insert(stuck.end(), {"--set", "slot10/board/isolator/5/stuck=1"});
    EXPECT_EQ(answers_of(stuck, of_two_cards), seen + not_seen);
    EXPECT_EQ(answers_of({"--state", state}, of_two_cards), seen + "0x0 status=0\n0x0 type=0x2302001\n");
}

} // namespace kestro_tests
