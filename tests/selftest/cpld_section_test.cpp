// The cpld section: each described chip for itself, then its links to what is around it.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string described_chip(int entry, const std::string &chip, const std::string &type) {
    return element("cpld", "cpld_cfg", entry, "chip_id", "0 value=" + chip) +
           element("cpld", "cpld_cfg", entry, "chip_type", "0 value=" + type);
}

std::string of_chip(const std::string &chip) {
    return "(inst_id=0xffffffff, chip_id=" + chip;
}

std::string asks(const std::string &operation, const std::string &chip, const std::string &answer) {
    return operation + of_chip(chip) + ", size=256) = " + answer + " x1\n";
}

std::string asks_channel(const std::string &operation, const std::string &chip, int channel,
                         const std::string &answer) {
    return operation + of_chip(chip) + ", channel=" + std::to_string(channel) + ", size=256) = " + answer + " x1\n";
}

std::string selftest(const std::string &chip, const std::string &answer) {
    return asks("drv_cpld_selftest", chip, answer);
}

std::string dump(const std::string &chip, const std::string &answer) {
    return "drv_cpld_reg_dump" + of_chip(chip) + ", start=0, num=16, size=256) = " + answer + " x1\n";
}

std::string upsets(const std::string &chip, const std::string &answer) {
    return asks("drv_fpga_check_seu", chip, answer);
}

std::string build_time(const std::string &chip, const std::string &answer) {
    return "drv_cpld_get_build_time" + of_chip(chip) + ") = " + answer + " x1\n";
}

std::string version(const std::string &chip, const std::string &answer) {
    return "drv_cpld_get_version" + of_chip(chip) + ") = " + answer + " x1\n";
}

std::string repeated_load(const std::string &chip, const std::string &answer) {
    return asks("drv_cpld_check_repeat_load", chip, answer);
}

std::string chip_link(const std::string &chip, const std::string &answer) {
    return asks("drv_cpld_check_chip_link", chip, answer);
}

std::string uart(const std::string &chip, int channel, const std::string &answer) {
    return asks_channel("drv_cpld_uart_get_recv_alarm", chip, channel, answer);
}

std::string agent(const std::string &chip, const std::string &answer) {
    return asks_channel("drv_cpld_check_agent_spi_status", chip, 0, answer);
}

std::string pcie(const std::string &chip, int channel, const std::string &answer) {
    return asks_channel("drv_cpld_check_pcie_link_status", chip, channel, answer);
}

// A chip that can tell nothing but that it is well.
const std::string lacking = "0x811101a4";

std::string good_itself(const std::string &chip) {
    return selftest(chip, "0") + dump(chip, "0") + upsets(chip, "0") + build_time(chip, lacking) +
           version(chip, lacking);
}

std::string good_itself_lines(const std::string &chip) {
    return "Success: cpld " + chip + " self test pass. msg \r\nSuccess: cpld " + chip +
           " reg dump pass. msg \r\nInfo: cpld " + chip + " seu is not support.\r\n";
}

std::string no_links(const std::string &chip) {
    return chip_link(chip, lacking) + uart(chip, 0, lacking) + uart(chip, 1, lacking) + agent(chip, lacking) +
           pcie(chip, 0, lacking) + pcie(chip, 1, lacking);
}

// Chip 3 of a type alone.
void expect_chip(const std::string &type, const std::string &script, const std::string &lines, int result) {
    expect_part("cpld", entry_count("cpld", "cpld_cfg", 1) + described_chip(0, "3", type) + script, lines, result);
}

// One of the steps behind the self-test, the others as a good chip answers.
void expect_itself(const std::string &instead_of, const std::string &step, const std::string &lines, int result) {
    std::string script = good_itself("3");
    script.replace(script.find(instead_of), instead_of.size(), step);
    expect_chip("1", script + no_links("3"), lines, result);
}

void expect_link(const std::string &instead_of, const std::string &link, const std::string &line, int result) {
    std::string script = no_links("3");
    script.replace(script.find(instead_of), instead_of.size(), link);
    expect_chip("1", good_itself("3") + script, good_itself_lines("3") + line, result);
}

constexpr const char *selftest_line = "Success: cpld 3 self test pass. msg \r\n";
constexpr const char *dump_line = "Success: cpld 3 reg dump pass. msg \r\n";
constexpr const char *upsets_line = "Info: cpld 3 seu is not support.\r\n";

// As long as its area, so that there is no room for a terminator.
const std::string full(256, 'F');

} // namespace

TEST(CpldSectionTest, TheNodeIsRequired) {
    const std::string line = "Error: cpld xml get entry num fail.\r\n";
    expect_part("cpld", no_entry_count("cpld", "cpld_cfg", "0x51"), line, -1);
    expect_part("cpld", entry_count("cpld", "cpld_cfg", 0), line, -1);
}

TEST(CpldSectionTest, AnEntryThatCannotBeReadFailsAndTheNextIsTested) {
    const std::string good = described_chip(1, "3", "1") + good_itself("3") + no_links("3");
    expect_part("cpld",
                entry_count("cpld", "cpld_cfg", 2) + element("cpld", "cpld_cfg", 0, "chip_id", "0x8111b5") + good,
                "Error: cpld xml get chip_id fail. 0x8111b5  \r\n" + good_itself_lines("3"), -1);
    expect_part("cpld",
                entry_count("cpld", "cpld_cfg", 2) + element("cpld", "cpld_cfg", 0, "chip_id", "0 value=1") +
                    element("cpld", "cpld_cfg", 0, "chip_type", "0x8111b6") + good,
                "Error: cpld xml get chip_type fail. 0x8111b6  \r\n" + good_itself_lines("3"), -1);
}

TEST(CpldSectionTest, AnFpgaThatHasEverything) {
    expect_chip("2",
                selftest("3", "0 msg=\"scratch\"") + dump("3", "0 buffer=\"000: 5a\"") + upsets("3", "0") +
                    build_time("3", "0 year=2025 month=6 day=2") + version("3", "0 version=515") +
                    repeated_load("3", "0 msg=\"once\"") + chip_link("3", "0 msg=\"both\"") +
                    uart("3", 0, "0 msg=\"u0\"") + uart("3", 1, "0 msg=\"u1\"") + agent("3", "0 msg=\"a0\"") +
                    pcie("3", 0, "0 msg=\"p0\"") + pcie("3", 1, "0 msg=\"p1\""),
                "Success: cpld 3 self test pass. msg scratch\r\n"
                "Success: cpld 3 reg dump pass. msg 000: 5a\r\n"
                "Info: cpld 3 seu is not support.\r\n"
                "Success: cpld 3 build time 2025/6/2.\r\n"
                "Success: cpld 3 version 515.\r\n"
                "Success: cpld 3 load sts test pass. msg once\r\n"
                "Info   : cpld 3 chip link test end. result 0x0 msg both\r\n"
                "Success: cpld 3 uart get recv alarm test pass. msg u0\r\n"
                "Success: cpld 3 uart get recv alarm test pass. msg u1\r\n"
                "Success: cpld 3 check agent spi pass. msg a0\r\n"
                "Success: cpld 3 check pcie link pass. msg p0\r\n"
                "Success: cpld 3 check pcie link pass. msg p1\r\n",
                0);
}

TEST(CpldSectionTest, AFailedSelfTestEndsTheFirstGroupOnly) {
    expect_chip("2", selftest("3", "0x61") + no_links("3"), "Error  : cpld 3 self test fail 0x61. result 0x0 msg \r\n",
                -1);
    expect_chip("2", selftest("3", "0 result=0x1f msg=\"stuck\"") + no_links("3"),
                "Error  : cpld 3 self test fail 0x0. result 0x1f msg stuck\r\n", -1);
    expect_chip("2",
                selftest("3", lacking) + chip_link("3", "0") + no_links("3").substr(chip_link("3", lacking).size()),
                "Error  : cpld 3 self test fail 0x811101a4. result 0x0 msg \r\n"
                "Info   : cpld 3 chip link test end. result 0x0 msg \r\n",
                -1);
}

TEST(CpldSectionTest, AFailedDump) {
    const std::string others = std::string(selftest_line) + "Error  : cpld 3 reg dump fail 0x62 msg begun\r\n";
    expect_itself(dump("3", "0"), dump("3", "0x62 buffer=\"begun\""), others + upsets_line, -1);
    expect_itself(dump("3", "0"), dump("3", lacking),
                  std::string(selftest_line) + "Error  : cpld 3 reg dump fail 0x811101a4 msg \r\n" + upsets_line, -1);
}

TEST(CpldSectionTest, UpsetsAreJudgedWhereTheyAreNotSupported) {
    const std::string before = std::string(selftest_line) + dump_line;
    for (const std::string answer : {"0 result=5 msg=\"x\"", "0x61", "0x61 result=5", "0xa401", "0xa3"}) {
        expect_itself(upsets("3", "0"), upsets("3", answer), before + upsets_line, 0);
    }
    expect_itself(upsets("3", "0"), upsets("3", "0x811101a4 result=2 msg=\"turned\""),
                  before + "Error  : cpld 3 seu test fail 0x811101a4. result 0x2 msg turned\r\n", -1);
    expect_itself(upsets("3", "0"), upsets("3", "0xa4 msg=\"none\""),
                  before + "Success: cpld 3 seu test pass. msg none\r\n", 0);
}

TEST(CpldSectionTest, BuildTimeAndVersionThatFail) {
    const std::string before = std::string(selftest_line) + dump_line + upsets_line;
    expect_itself(build_time("3", lacking), build_time("3", "0x63 year=1 month=2 day=3"),
                  before + "Error  : cpld 3 get build time fail 0x63.\r\n", -1);
    expect_itself(version("3", lacking), version("3", "0x64 version=7"),
                  before + "Error  : cpld 3 version fail 0x64.\r\n", -1);
}

TEST(CpldSectionTest, PresetsOfBuildTimeAndVersion) {
    const std::string before = std::string(selftest_line) + dump_line + upsets_line;
    expect_itself(build_time("3", lacking), build_time("3", "0"), before + "Success: cpld 3 build time 0/0/0.\r\n", 0);
    expect_itself(version("3", lacking), version("3", "0"), before + "Success: cpld 3 version 0.\r\n", 0);
    expect_itself(version("3", lacking), version("3", "0 version=0xffffffff"),
                  before + "Success: cpld 3 version 4294967295.\r\n", 0);
}

TEST(CpldSectionTest, OnlyChipsOfTypeTwoLoadTheirLogic) {
    for (const std::string type : {"0", "1", "3", "0x102"}) {
        expect_chip(type, good_itself("3") + no_links("3"), good_itself_lines("3"), 0);
    }
    expect_chip("2", good_itself("3") + repeated_load("3", "0 result=2 msg=\"twice\"") + no_links("3"),
                good_itself_lines("3") + "Error  : cpld 3 repeat load test fail 0x0. result 0x2 msg twice\r\n", -1);
    expect_chip("2", good_itself("3") + repeated_load("3", "0x65") + no_links("3"),
                good_itself_lines("3") + "Error  : cpld 3 repeat load test fail 0x65. result 0x0 msg \r\n", -1);
    expect_chip("2", good_itself("3") + repeated_load("3", lacking) + no_links("3"),
                good_itself_lines("3") + "Error  : cpld 3 repeat load test fail 0x811101a4. result 0x0 msg \r\n", -1);
}

// Whatever the result says: only a failed query fails the chip.
TEST(CpldSectionTest, ChipLinks) {
    expect_link(chip_link("3", lacking), chip_link("3", "0 result=0xc msg=\"down\""),
                "Info   : cpld 3 chip link test end. result 0xc msg down\r\n", 0);
    expect_link(chip_link("3", lacking), chip_link("3", "0x66 result=1 msg=\"m\""),
                "Error  : cpld 3 chip link test fail 0x66. result 0x1 msg m\r\n", -1);
}

TEST(CpldSectionTest, LinksThatFail) {
    for (const int channel : {0, 1}) {
        expect_link(uart("3", channel, lacking), uart("3", channel, "0x67"),
                    "Error  : cpld 3 uart get recv alarm test fail 0x67. result 0x0 msg \r\n", -1);
        expect_link(uart("3", channel, lacking), uart("3", channel, "0 result=4 msg=\"lost\""),
                    "Error  : cpld 3 uart get recv alarm test fail 0x0. result 0x4 msg lost\r\n", -1);
        expect_link(pcie("3", channel, lacking), pcie("3", channel, "0x68"),
                    "Error  : cpld 3 check pcie link fail 0x68. result 0x0 msg \r\n", -1);
        expect_link(pcie("3", channel, lacking), pcie("3", channel, "0 result=0xb msg=\"down\""),
                    "Error  : cpld 3 check pcie link fail 0x0. result 0xb msg down\r\n", -1);
    }
    expect_link(agent("3", lacking), agent("3", "0x69"),
                "Error  : cpld 3 check agent spi fail 0x69. result 0x0 msg \r\n", -1);
    expect_link(agent("3", lacking), agent("3", "0 result=6 msg=\"mute\""),
                "Error  : cpld 3 check agent spi fail 0x0. result 0x6 msg mute\r\n", -1);
}

TEST(CpldSectionTest, ALinkThatFailsEndsNothing) {
    expect_chip("1",
                good_itself("3") + chip_link("3", "0x71") + uart("3", 0, "0x72") + uart("3", 1, "0") +
                    agent("3", "0x73") + pcie("3", 0, "0x74") + pcie("3", 1, "0"),
                good_itself_lines("3") + "Error  : cpld 3 chip link test fail 0x71. result 0x0 msg \r\n"
                                         "Error  : cpld 3 uart get recv alarm test fail 0x72. result 0x0 msg \r\n"
                                         "Success: cpld 3 uart get recv alarm test pass. msg \r\n"
                                         "Error  : cpld 3 check agent spi fail 0x73. result 0x0 msg \r\n"
                                         "Error  : cpld 3 check pcie link fail 0x74. result 0x0 msg \r\n"
                                         "Success: cpld 3 check pcie link pass. msg \r\n",
                -1);
}

// No byte of one message is left for the next check, and nothing behind the area is shown.
TEST(CpldSectionTest, MessagesThatFillTheirArea) {
    const std::string msg = "0 msg=\"" + full + "\"";
    expect_chip("2",
                selftest("3", msg) + dump("3", "0 buffer=\"" + full + "\"") + upsets("3", "0xa4 msg=\"" + full + "\"") +
                    build_time("3", lacking) + version("3", lacking) + repeated_load("3", msg) + chip_link("3", msg) +
                    uart("3", 0, msg) + uart("3", 1, "0") + agent("3", msg) + pcie("3", 0, msg) + pcie("3", 1, "0"),
                "Success: cpld 3 self test pass. msg " + full + "\r\nSuccess: cpld 3 reg dump pass. msg " + full +
                    "\r\nSuccess: cpld 3 seu test pass. msg " + full + "\r\nSuccess: cpld 3 load sts test pass. msg " +
                    full + "\r\nInfo   : cpld 3 chip link test end. result 0x0 msg " + full +
                    "\r\nSuccess: cpld 3 uart get recv alarm test pass. msg " + full +
                    "\r\nSuccess: cpld 3 uart get recv alarm test pass. msg \r\nSuccess: cpld 3 check agent spi pass. "
                    "msg " +
                    full + "\r\nSuccess: cpld 3 check pcie link pass. msg " + full +
                    "\r\nSuccess: cpld 3 check pcie link pass. msg \r\n",
                0);
    const std::string fault = "0x61 msg=\"" + full + "\"";
    expect_chip("1", selftest("3", fault) + no_links("3"),
                "Error  : cpld 3 self test fail 0x61. result 0x0 msg " + full + "\r\n", -1);
    expect_itself(dump("3", "0"), dump("3", "0x61 buffer=\"" + full + "\""),
                  std::string(selftest_line) + "Error  : cpld 3 reg dump fail 0x61 msg " + full + "\r\n" + upsets_line,
                  -1);
}

TEST(CpldSectionTest, TheFirstChipFailsAndTheSecondIsGood) {
    expect_part("cpld",
                entry_count("cpld", "cpld_cfg", 2) + described_chip(0, "0", "1") +
                    described_chip(1, "0xffffffff", "1") + selftest("0", "0x61") + no_links("0") +
                    good_itself("0xffffffff") + no_links("0xffffffff"),
                "Error  : cpld 0 self test fail 0x61. result 0x0 msg \r\n" + good_itself_lines("4294967295"), -1);
}

// The CPLD of the main processing unit has no logic to load and no PCIe, the FPGAs no serial receivers.
TEST(CpldSectionTest, TheDeliveredBoardsPass) {
    const std::string ones = " ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff ffff 005a\n\r\n";
    const auto links = [](const std::string &chip) {
        const std::string success = "Success: cpld " + chip;
        return "Info   : cpld " + chip + " chip link test end. result 0x0 msg \r\n" + success +
               " check agent spi pass. msg \r\n" + success + " check pcie link pass. msg \r\n" + success +
               " check pcie link pass. msg \r\n";
    };
    const std::string master = run_part({}, "cpld").out;
    EXPECT_EQ(master, "Success: cpld 0 self test pass. msg \r\n"
                      "Success: cpld 0 reg dump pass. msg 000: c5 07 01 ff ff ff ff ff ff ff ff ff ff ff ff 5a\n\r\n"
                      "Info: cpld 0 seu is not support.\r\n"
                      "Success: cpld 0 build time 2025/3/14.\r\n"
                      "Success: cpld 0 version 263.\r\n"
                      "Info   : cpld 0 chip link test end. result 0x0 msg \r\n"
                      "Success: cpld 0 uart get recv alarm test pass. msg \r\n"
                      "Success: cpld 0 uart get recv alarm test pass. msg \r\n"
                      "Success: cpld 0 check agent spi pass. msg \r\n"
                      "Success: cpld 1 self test pass. msg \r\n"
                      "Success: cpld 1 reg dump pass. msg 000: f9a1 0203 07e9 0602" +
                          ones +
                          "Info: cpld 1 seu is not support.\r\n"
                          "Success: cpld 1 build time 2025/6/2.\r\n"
                          "Success: cpld 1 version 515.\r\n"
                          "Success: cpld 1 load sts test pass. msg \r\n" +
                          links("1") +
                          "Success: cpld 2 self test pass. msg \r\n"
                          "Success: cpld 2 reg dump pass. msg 000: f9a2 0204 07e9 0b1b" +
                          ones +
                          "Info: cpld 2 seu is not support.\r\n"
                          "Success: cpld 2 build time 2025/11/27.\r\n"
                          "Success: cpld 2 version 516.\r\n"
                          "Success: cpld 2 load sts test pass. msg \r\n" +
                          links("2") + "result 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "cpld").out, master);
    const std::string line_card = run_part({"--board", "lpu"}, "cpld").out;
    EXPECT_EQ(line_card.find("Error"), std::string::npos) << line_card;
    EXPECT_NE(line_card.find("Success: cpld 1 load sts test pass. msg \r\n"), std::string::npos);
    EXPECT_TRUE(line_card.ends_with(links("1") + "result 0\n")) << line_card;
}
