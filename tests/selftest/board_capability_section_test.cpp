// The board capability section: every described capability is known to the driver.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *module_name = "board_capability_mng";
constexpr const char *node_name = "board_capability_get_type";

std::string described(int entries) {
    return entry_count(module_name, node_name, entries);
}

std::string entry(int index, const std::string &answer) {
    return element(module_name, node_name, index, "id", answer);
}

std::string find_rule(const std::string &id, const std::string &answer) {
    return "drv_board_capability_find(inst_id=0xffffffff, mode_id=" + id + ", size=16) = " + answer + "\n";
}

void expect_capability(const std::string &id, const std::string &line) {
    expect_part("board_capability", described(1) + entry(0, "0 value=" + id) + find_rule(id, "0 name=\"made\""), line,
                0);
}

} // namespace

TEST(BoardCapabilitySectionTest, KindsAreNamedByTheUpperHalf) {
    expect_capability("0", "Success: board capability 0x0      fpga get capability is: made\r\n");
    expect_capability("0xffff", "Success: board capability 0xffff   fpga get capability is: made\r\n");
    expect_capability("0x10000", "Success: board capability 0x10000  tpm get capability is: made\r\n");
    expect_capability("0x1ffff", "Success: board capability 0x1ffff  tpm get capability is: made\r\n");
    expect_capability("0x20001", "Success: board capability 0x20001  pll get capability is: made\r\n");
    expect_capability("0x30002", "Success: board capability 0x30002  freq get capability is: made\r\n");
    expect_capability("0x40000", "Success: board capability 0x40000  avs get capability is: made\r\n");
    expect_capability("0x50000", "Success: board capability 0x50000  unknown get capability is: made\r\n");
    expect_capability("0xfedcba98", "Success: board capability 0xfedcba98 unknown get capability is: made\r\n");
}

TEST(BoardCapabilitySectionTest, AnUnknownOneFailsAndTheNextOneIsLookedUp) {
    expect_part("board_capability",
                described(3) + entry(0, "0 value=0x10000") + entry(1, "0 value=0x90000") + entry(2, "0 value=1") +
                    find_rule("0x10000", "0x21 name=\"half\"") + find_rule("0x90000", "0x811101a4") +
                    find_rule("1", "0 name=\"timing fpga\""),
                "Error: board capability 0x10000  tpm get capability fail 0x21.\r\n"
                "Error: board capability 0x90000  unknown get capability fail 0x811101a4.\r\n"
                "Success: board capability 0x1      fpga get capability is: timing fpga\r\n",
                -1);
}

// An "Info" line, and a failure all the same: no board has nothing.
TEST(BoardCapabilitySectionTest, ABoardWithoutAnyFails) {
    expect_part("board_capability", described(0), "Info: board capability xml is not support.\r\n", -1);
    expect_part("board_capability", no_entry_count(module_name, node_name, "0x51 count=1"),
                "Info: board capability xml is not support.\r\n", -1);
}

TEST(BoardCapabilitySectionTest, AnEntryWithoutItsElementIsSkipped) {
    expect_part("board_capability",
                described(2) + entry(0, "0x51 value=9") + entry(1, "0 value=0x20000") +
                    find_rule("0x20000", "0 name=\"clock pll\""),
                "Success: board capability 0x20000  pll get capability is: clock pll\r\n", 0);
}

// The driver fills all of the 16 bytes, without a terminator; the next one writes nothing.
TEST(BoardCapabilitySectionTest, ANameThatFillsItsAreaIsNotLeftForTheNext) {
    expect_part("board_capability",
                described(2) + entry(0, "0 value=0") + entry(1, "0 value=1") +
                    find_rule("0", "0 name=\"abcdefghijklmnop\"") + find_rule("1", "0"),
                "Success: board capability 0x0      fpga get capability is: abcdefghijklmnop\r\n"
                "Success: board capability 0x1      fpga get capability is: \r\n",
                0);
}

TEST(BoardCapabilitySectionTest, AHealthyBoardPasses) {
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "board_capability").out,
              "Success: board capability 0x0      fpga get capability is: control fpga\r\n"
              "Success: board capability 0x1      fpga get capability is: timing fpga\r\n"
              "Success: board capability 0x10000  tpm get capability is: tpm 2.0\r\n"
              "Success: board capability 0x20000  pll get capability is: clock pll\r\n"
              "Success: board capability 0x30000  freq get capability is: 25 MHz ocxo\r\n"
              "Success: board capability 0x40000  avs get capability is: pmbus avs\r\n"
              "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "board_capability").out,
              "Success: board capability 0x0      fpga get capability is: framer fpga\r\n"
              "Success: board capability 0x20000  pll get capability is: line pll\r\n"
              "Success: board capability 0x40000  avs get capability is: pmbus avs\r\n"
              "result 0\n");
}
