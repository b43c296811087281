// The order of the sections and the master/slave branch.
#include <gtest/gtest.h>

#include "tests/selftest/board_run.h"

using namespace kestro_tests;

namespace {

void expect_behind_msc(const std::string &msc_answer, const std::string &banners) {
    expect_board_run(no_barcode.script + no_elabel.script + no_mac.script + msc_answer, new_scratch_dir(),
                     {no_barcode.lines, no_elabel.lines, no_mac.lines, banners});
}

const std::string master_banners = "\r\n##### backplane test begin \r\n\r\n##### power test begin \r\n";
const std::string slave_banner = "\r\n##### slave board special test begin \r\n";

} // namespace

TEST(OrchestratorTest, AMasterRunsBackplaneAndPower) {
    expect_behind_msc("drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0", master_banners);
}

TEST(OrchestratorTest, ASlaveRunsItsSpecialSection) {
    expect_behind_msc("drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1", slave_banner);
}

TEST(OrchestratorTest, TheStateIsPresetToSlave) {
    expect_behind_msc("drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0", slave_banner);
}

TEST(OrchestratorTest, AnyOtherStateRunsNothingMore) {
    expect_behind_msc("drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=2", "");
}

TEST(OrchestratorTest, AFailedQueryRunsNothingMoreAndSaysNothing) {
    expect_behind_msc("drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 5 state=0", "");
}
