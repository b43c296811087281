// The order of the sections and the master/slave branch.
#include <gtest/gtest.h>

#include "tests/selftest/board_run.h"
#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

constexpr const char *common_banners = "\r\n##### board mng test begin \r\n"
                                       "\r\n##### voltage test begin \r\n"
                                       "\r\n##### temperature test begin \r\n"
                                       "\r\n##### barcode test begin \r\n"
                                       "\r\n##### elabel test begin \r\n"
                                       "\r\n##### mac test begin \r\n"
                                       "\r\n##### woffline test begin \r\n"
                                       "\r\n##### slot test begin \r\n"
                                       "\r\n##### digital test begin \r\n"
                                       "\r\n##### board capability test begin \r\n"
                                       "\r\n##### soft-reset test begin \r\n"
                                       "\r\n##### sub-board test begin \r\n"
                                       "\r\n##### dyinggasp test begin \r\n"
                                       "\r\n##### intr test begin \r\n"
                                       "\r\n##### cpld test begin \r\n"
                                       "\r\n##### i2c test begin \r\n"
                                       "\r\n##### lbc bus test begin \r\n"
                                       "\r\n##### mdio test begin \r\n"
                                       "\r\n##### pci test begin \r\n"
                                       "\r\n##### chip9555 test begin \r\n"
                                       "\r\n##### rtc test begin \r\n"
                                       "\r\n##### msc test begin \r\n";
constexpr const char *master_banners = "\r\n##### backplane test begin \r\n\r\n##### power test begin \r\n";
constexpr const char *slave_banner = "\r\n##### slave board special test begin \r\n";

// On the simulated master board, but for what it says of its mastership.
void expect_behind_msc(const std::string &msc_answer, const std::string &banners) {
    const std::string rule = "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = " + msc_answer + "\n";
    const process_result run = run_board({"--state", new_scratch_dir(), "--script", scratch_file("script", rule)});
    EXPECT_EQ(banners_of(run.out), common_banners + banners);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

} // namespace

TEST(OrchestratorTest, AMasterRunsBackplaneAndPower) {
    expect_behind_msc("0 state=0", master_banners);
}

TEST(OrchestratorTest, ASlaveRunsItsSpecialSection) {
    expect_behind_msc("0 state=1", slave_banner);
}

TEST(OrchestratorTest, TheStateIsPresetToSlave) {
    expect_behind_msc("0", slave_banner);
}

TEST(OrchestratorTest, AnyOtherStateRunsNothingMore) {
    expect_behind_msc("0 state=2", "");
}

TEST(OrchestratorTest, AFailedQueryRunsNothingMoreAndSaysNothing) {
    expect_behind_msc("5 state=0", "");
}

TEST(OrchestratorTest, FailedSectionsAreToldByTheirLinesAlone) {
    const process_result run = run_board({"--state", new_scratch_dir(), "--fail-call", "1+"});
    EXPECT_EQ(banners_of(run.out), common_banners);
    EXPECT_NE(run.out.find("Error"), std::string::npos);
    EXPECT_TRUE(run.out.ends_with(timing_lines));
    EXPECT_EQ(run.status, 0);
}
