// The self-test on the simulated boards: real storage, the whole way down.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "tests/selftest/board_run.h"
#include "tests/support/command.h"

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

// The storage of a board's identity, the whole way down.
void expect_identity(const process_result &result, const std::string &barcodes, const std::string &macs) {
    EXPECT_EQ(section_of(result.out, "barcode"), barcodes);
    EXPECT_EQ(section_of(result.out, "elabel"), elabel_pass);
    EXPECT_EQ(section_of(result.out, "mac"), macs);
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
    expect_identity(result, three_barcodes(), master_macs());
    EXPECT_EQ(result.out.find("Error"), std::string::npos);
}

TEST(SimulatedBoardTest, AHealthySlaveHasNoErrorLine) {
    const process_result result = run_board({"--board", "mpu_slave", "--state", new_scratch_dir()});
    expect_identity(result, three_barcodes(), slave_macs());
    EXPECT_EQ(result.out.find("Error"), std::string::npos);
}

TEST(SimulatedBoardTest, ASwitchOverLetsTheTwoChangeTheirParts) {
    const std::string state = new_scratch_dir();
    const std::vector<std::string> hand_over{"msc_test", "drv_msc_set_state", "2", "1"};
    ASSERT_EQ(run_sim({"--state", state, "--clock", "virtual"}, hand_over).status, 0);
    const std::string was_master = run_board({"--state", state}).out;
    const std::string was_slave = run_board({"--state", state, "--board", "mpu_slave"}).out;
    EXPECT_NE(banners_of(was_master).find(slave_banner), std::string::npos);
    EXPECT_EQ(banners_of(was_master).find(master_banners), std::string::npos);
    EXPECT_EQ(was_master.find("mac type 1 "), std::string::npos);
    EXPECT_NE(banners_of(was_slave).find(master_banners), std::string::npos);
    EXPECT_EQ(banners_of(was_slave).find(slave_banner), std::string::npos);
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
    expect_identity(recorded, three_barcodes(), master_macs());
    const process_result replayed = run_board({"--state", new_scratch_dir(), "--replay", trace});
    EXPECT_EQ(replayed.out, recorded.out);
    EXPECT_EQ(replayed.err, "");
    EXPECT_EQ(replayed.status, 0);
}

TEST(SimulatedBoardTest, ADescriptionWithoutANodeTurnsThatSectionOnly) {
    const std::string board = changed_board("<module name=\"barcode\" remove=\"yes\"/>");
    expect_identity(run_board({"--board", board, "--state", new_scratch_dir()}),
                    "Error: barcode_ xml get entry num fail.\r\n", master_macs());
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
    const process_result result = run_board({"--board", changed_board(changes), "--state", new_scratch_dir()});
    expect_identity(result, "Error: barcode_ xml get entry num fail.\r\n", "Error: mac xml get entry num fail.\r\n");
    const std::string management = section_of(result.out, "board mng");
    for (const char *line :
         {"Info   : card is on slot.\r\n", "Info   : board is not support board epld power.\r\n",
          "Success: board not support weld sts check.\r\n", "Success: board not support corrosion sts check.\r\n",
          "Info   : not support dimm info.\r\n"}) {
        EXPECT_NE(management.find(line), std::string::npos) << line << management;
    }
    const std::pair<const char *, const char *> sections[] = {
        {"voltage", "Info   : voltage get value is not support.\r\nInfo   : voltage set value is not support.\r\n"
                    "Info   : voltage avs alert check is not support.\r\nSuccess: voltage power and avs dump pass\r\n"
                    "Info   : voltage power check is not support.\r\n"},
        {"temperature", "Error: temperature xml get entry num fail.\r\n"},
        {"woffline", "Info: woffline xml get no entry num.\r\n"},
        {"digital", "Info: digital in num is not support.\r\n"},
        {"board capability", "Info: board capability xml is not support.\r\n"},
        {"soft-reset", "Info: ptn soft reset is not support.\r\n"},
        {"sub-board", "Info: sub board is not support.\r\n"},
        {"dyinggasp", "Info: dyinggasp simulation is not support.\r\nInfo: dyinggasp card enable is not support.\r\n"},
        {"cpld", "Error: cpld xml get entry num fail.\r\n"},
        {"i2c", "Error: i2c xml get i2c_dev entry num fail.\r\n"},
        {"lbc bus", "Error: lbc xml get lbc_dev entry num fail.\r\n"},
        {"mdio", "Info   : mdio bus is not support.\r\n"},
        {"pci", "Info: pci bus is not support.\r\n"},
        {"chip9555", "No pca9555.\r\n"},
        {"rtc", "Error: rtc xml get entry num fail.\r\n"},
        {"msc", ""},
        {"power", "Info: power is not support.\r\n"},
    };
    for (const auto &[name, lines] : sections) {
        EXPECT_EQ(section_of(result.out, name), lines) << name;
    }
    EXPECT_TRUE(section_of(result.out, "intr").starts_with("Error  : intr get xml irq_combiner fail 0x"));
    EXPECT_TRUE(section_of(result.out, "backplane").starts_with("Success: board not support back plane check. ret 0x"));
}

TEST(SimulatedBoardTest, AMissingSpareTurnsThatTypeOnly) {
    const std::string board =
        changed_board("<module name=\"mac_mng\"><node name=\"mac_storage_spare\"><entry name=\"entry0\">"
                      "<element name=\"id\" remove=\"yes\"/><element name=\"other\" value=\"0\"/>"
                      "</entry></node></module>");
    std::string macs = master_macs();
    const std::string passed = "Success: mac type 0 meth-mac test pass.\r\n";
    macs.insert(macs.find(passed) + passed.size(), "Error: mac 0 has no spare.\r\n");
    expect_identity(run_board({"--board", board, "--state", new_scratch_dir()}), three_barcodes(), macs);
}

TEST(SimulatedBoardTest, AStateThatCannotBeReadLeavesTheAddressesOfTheChassisAlone) {
    const std::string script = scratch_file("script", "drv_msc_get_state = 0x15\n");
    expect_identity(run_board({"--state", new_scratch_dir(), "--script", script}), three_barcodes(),
                    mac_pass(0, "meth-mac", 2, "0x2-0xa0-0xc0-0x9-0x0-0x0") +
                        mac_pass(3, "corvex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x40") +
                        mac_pass(5, "eth-ex-mac", 1, "0x2-0xa0-0xc0-0x9-0x0-0x80"));
}

// What is described and what is there agree, whatever the seat; the second run finds what the first one left.
TEST(SimulatedBoardTest, NoSeatOfTheDeliveredChassisHasAnErrorLine) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const std::string state = new_scratch_dir();
        for (int run = 0; run < 2; ++run) {
            const process_result result = run_board({"--board", seat, "--state", state});
            EXPECT_EQ(result.out.find("Error"), std::string::npos) << seat << "\n" << result.out;
            EXPECT_EQ(result.err, "") << seat;
            EXPECT_EQ(result.status, 0) << seat;
        }
    }
}
