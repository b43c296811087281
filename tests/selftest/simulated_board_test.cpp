// The self-test on the simulated boards: real storage, the whole way down.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "tests/selftest/board_run.h"

using namespace kestro_tests;

namespace {

constexpr const char *barcode_pass = "Success: barcode read and write match test pass.\r\n";
constexpr const char *elabel_pass = "Now read elabel load info from file\xEF\xBC\x9A/opt/hostx/home/elabel.txt\r\n"
                                    "Success: elabel read and write match test pass.\r\n";
constexpr const char *master_banners = "\r\n##### backplane test begin \r\n\r\n##### power test begin \r\n";
constexpr const char *slave_banner = "\r\n##### slave board special test begin \r\n";

std::string three_barcodes() {
    return std::string(barcode_pass) + barcode_pass + barcode_pass;
}

std::string mac_pass(int type, const std::string &name, int count, const std::string &address) {
    const std::string written = std::to_string(count > 1 ? count - 1 : count) + " mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n";
    return "Success: orignal mac read num " + std::to_string(count) + " mac:" + address + "\r\n" +
           "Success: write mac num " + written + "Success: read mac num " + written +
           "Success: mac read and write num and value match test pass.\r\n" + "Success: mac type " +
           std::to_string(type) + " " + name + " test pass.\r\n";
}

// The types that the master board describes, with the addresses it is delivered with.
std::string master_macs() {
    return mac_pass(0, "meth-mac", 2, "0x2-0xa0-0xc0-0x9-0x0-0x0") +
           mac_pass(1, "system-mac", 16, "0x2-0xa0-0xc0-0x9-0x0-0x20") +
           mac_pass(3, "corvex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x40") +
           mac_pass(5, "eth-ex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x80") +
           mac_pass(64, "bkp-flexe-mac", 8, "0x2-0xa0-0xc0-0x9-0x0-0xa0") +
           mac_pass(65, "bkp-flexe-mac", 8, "0x2-0xa0-0xc0-0x9-0x0-0xc0");
}

// A slave leaves the addresses of the whole chassis alone.
std::string slave_macs() {
    return mac_pass(0, "meth-mac", 2, "0x2-0xa0-0xc0-0xa-0x0-0x0") +
           mac_pass(3, "corvex-mac", 1, "0x2-0xa0-0xc0-0xa-0x0-0x40") +
           mac_pass(5, "eth-ex-mac", 1, "0x2-0xa0-0xc0-0xa-0x0-0x80");
}

process_result run_board(std::vector<std::string> options) {
    options.insert(options.end(), {"--clock", "virtual"});
    return run_sim(options, {"board_test", "board_onekey_test"});
}

void expect_output(const process_result &result, const board_lines &lines) {
    EXPECT_EQ(result.out, board_output(lines));
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

std::map<std::string, std::string> images(const std::string &state) {
    std::map<std::string, std::string> found;
    for (const auto &entry : std::filesystem::directory_iterator(state + "/images")) {
        found[entry.path().filename().string()] = read_file(entry.path().string());
    }
    return found;
}

// A board of the test's own: the master with a few parts changed.
std::string changed_board(const std::string &changes) {
    return scratch_file("board.xml", "<board name=\"changed\" like=\"mpu\" slot=\"9\">" + changes + "</board>");
}

} // namespace

TEST(SimulatedBoardTest, AHealthyMasterHasNoErrorLine) {
    const process_result result = run_board({"--state", new_scratch_dir()});
    expect_output(result, {three_barcodes(), elabel_pass, master_macs(), master_banners});
    EXPECT_EQ(result.out.find("Error"), std::string::npos);
}

TEST(SimulatedBoardTest, AHealthySlaveHasNoErrorLine) {
    const process_result result = run_board({"--board", "mpu_slave", "--state", new_scratch_dir()});
    expect_output(result, {three_barcodes(), elabel_pass, slave_macs(), slave_banner});
    EXPECT_EQ(result.out.find("Error"), std::string::npos);
}

TEST(SimulatedBoardTest, ASwitchOverLetsTheTwoChangeTheirParts) {
    const std::string state = new_scratch_dir();
    const std::vector<std::string> hand_over{"msc_test", "drv_msc_set_state", "2", "1"};
    ASSERT_EQ(run_sim({"--state", state, "--clock", "virtual"}, hand_over).status, 0);
    const std::string was_master = run_board({"--state", state}).out;
    const std::string was_slave = run_board({"--state", state, "--board", "mpu_slave"}).out;
    EXPECT_NE(was_master.find(slave_banner), std::string::npos);
    EXPECT_EQ(was_master.find(master_banners), std::string::npos);
    EXPECT_EQ(was_master.find("mac type 1 "), std::string::npos);
    EXPECT_NE(was_slave.find(master_banners), std::string::npos);
    EXPECT_EQ(was_slave.find(slave_banner), std::string::npos);
    EXPECT_NE(was_slave.find("Success: mac type 1 system-mac test pass."), std::string::npos);
    EXPECT_EQ((was_master + was_slave).find("Error"), std::string::npos);
}

TEST(SimulatedBoardTest, TheIdentityIsWhatItWasBefore) {
    const std::string state = new_scratch_dir();
    ASSERT_EQ(run_sim({"--state", state}, {"slot_test", "slot_get_range"}).status, 0);
    const auto before = images(state);
    ASSERT_FALSE(before.empty());
    run_board({"--state", state});
    EXPECT_EQ(images(state), before);
}

TEST(SimulatedBoardTest, ATraceReplaysToTheSameBytes) {
    const std::string trace = new_scratch_dir() + "/trace";
    const process_result recorded = run_board({"--state", new_scratch_dir(), "--trace", trace});
    expect_output(recorded, {three_barcodes(), elabel_pass, master_macs(), master_banners});
    const process_result replayed = run_board({"--state", new_scratch_dir(), "--replay", trace});
    EXPECT_EQ(replayed.out, recorded.out);
    EXPECT_EQ(replayed.err, "");
    EXPECT_EQ(replayed.status, 0);
}

TEST(SimulatedBoardTest, ADescriptionWithoutANodeTurnsThatSectionOnly) {
    const std::string board = changed_board("<module name=\"barcode\" remove=\"yes\"/>");
    expect_output(run_board({"--board", board, "--state", new_scratch_dir()}),
                  {"Error: barcode_ xml get entry num fail.\r\n", elabel_pass, master_macs(), master_banners});
}

TEST(SimulatedBoardTest, ADescriptionWithoutAnyNodeOfTheSelfTest) {
    std::string changes;
    for (const char *module : {"board_mng",     "voltage_mng",   "temp_mng",     "barcode",
                               "mac_mng",       "woffline_mng",  "digital_mng",  "board_capability_mng",
                               "softreset_mng", "dyinggasp_mng", "irq_combiner", "cpld",
                               "i2c",           "lbc",           "smi",          "pci",
                               "chip9555",      "rtc",           "bkp_mng",      "power_mng"}) {
        changes += std::string("<module name=\"") + module + "\" remove=\"yes\"/>";
    }
    const std::string board = changed_board(changes);
    expect_output(run_board({"--board", board, "--state", new_scratch_dir()}),
                  {"Error: barcode_ xml get entry num fail.\r\n", elabel_pass, "Error: mac xml get entry num fail.\r\n",
                   master_banners});
}

TEST(SimulatedBoardTest, AMissingSpareTurnsThatTypeOnly) {
    const std::string board =
        changed_board("<module name=\"mac_mng\"><node name=\"mac_storage_spare\"><entry name=\"entry0\">"
                      "<element name=\"id\" remove=\"yes\"/><element name=\"other\" value=\"0\"/>"
                      "</entry></node></module>");
    std::string macs = master_macs();
    const std::string passed = "Success: mac type 0 meth-mac test pass.\r\n";
    macs.insert(macs.find(passed) + passed.size(), "Error: mac 0 has no spare.\r\n");
    expect_output(run_board({"--board", board, "--state", new_scratch_dir()}),
                  {three_barcodes(), elabel_pass, macs, master_banners});
}

TEST(SimulatedBoardTest, AStateThatCannotBeReadRunsNoBranch) {
    const std::string script = scratch_file("script", "drv_msc_get_state = 0x15\n");
    const process_result result = run_board({"--state", new_scratch_dir(), "--script", script});
    // Without the state the board passes for no master, so the addresses of the chassis are left alone too.
    expect_output(result, {three_barcodes(), elabel_pass,
                           mac_pass(0, "meth-mac", 2, "0x2-0xa0-0xc0-0x9-0x0-0x0") +
                               mac_pass(3, "corvex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x40") +
                               mac_pass(5, "eth-ex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x80"),
                           ""});
}
