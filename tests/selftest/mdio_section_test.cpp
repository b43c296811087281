// The mdio section: the control register of every described PHY is read and written back.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string described(int entries) {
    return entry_count("smi", "smi_dev", entries);
}

std::string entry(int index, int chip, int phy) {
    return element("smi", "smi_dev", index, "chip_id", "0 value=" + std::to_string(chip)) +
           element("smi", "smi_dev", index, "phy_addr", "0 value=" + std::to_string(phy));
}

std::string reg(int chip, int phy) {
    return "inst_id=0xffffffff, chip_id=" + std::to_string(chip) + ", phy_addr=" + std::to_string(phy) +
           ", dev_addr=0, offset=0";
}

std::string read_rule(int chip, int phy, const std::string &answer) {
    return "drv_mdio_read(" + reg(chip, phy) + ") = " + answer + "\n";
}

std::string write_rule(int chip, int phy, const std::string &value, const std::string &answer) {
    return "drv_mdio_write(" + reg(chip, phy) + ", value=" + value + ") = " + answer + "\n";
}

void expect_mdio(const std::string &script, const std::string &lines, int result) {
    expect_part("mdio", script, lines, result);
}

} // namespace

TEST(MdioSectionTest, WritesBackWhatItReadFromEveryPhy) {
    expect_mdio(described(2) + entry(0, 0, 31) + entry(1, 10, 4) + read_rule(0, 31, "0 value=0x1140") +
                    write_rule(0, 31, "0x1140", "0") + read_rule(10, 4, "0 value=0xffff") +
                    write_rule(10, 4, "0xffff", "0"),
                "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x1140 \r\n"
                "Success: mdio chip 0xa mdio read write pass. address 0x0 value 0xffff \r\n",
                0);
}

TEST(MdioSectionTest, ADriverThatWritesNothingGivesZero) {
    expect_mdio(described(1) + entry(0, 1, 2) + read_rule(1, 2, "0") + write_rule(1, 2, "0", "0"),
                "Success: mdio chip 0x1 mdio read write pass. address 0x0 value 0x0 \r\n", 0);
}

TEST(MdioSectionTest, WithoutPhysItPasses) {
    expect_mdio(described(0), "Info   : mdio bus is not support.\r\n", 0);
    expect_mdio(no_entry_count("smi", "smi_dev", "0x51 count=3"), "Info   : mdio bus is not support.\r\n", 0);
}

// The prefix says "Info", the section fails all the same.
TEST(MdioSectionTest, AFailedReadWritesNothing) {
    expect_mdio(described(2) + entry(0, 0, 1) + entry(1, 0, 2) + read_rule(0, 1, "0x21 value=5") +
                    read_rule(0, 2, "0 value=0x10") + write_rule(0, 2, "0x10", "0"),
                "Info   : mdio chip 0x0 mdio read fail 0x21.\r\n"
                "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x10 \r\n",
                -1);
}

TEST(MdioSectionTest, AFailedWrite) {
    expect_mdio(described(2) + entry(0, 0, 1) + entry(1, 3, 2) + read_rule(0, 1, "0 value=0x1940") +
                    write_rule(0, 1, "0x1940", "0x811101a4") + read_rule(3, 2, "0 value=1") +
                    write_rule(3, 2, "1", "0"),
                "Info   : mdio chip 0x0 mdio write fail 0x811101a4. address 0x0 value 0x1940 \r\n"
                "Success: mdio chip 0x3 mdio read write pass. address 0x0 value 0x1 \r\n",
                -1);
}

// To this bus nothing is "not supported": a PHY that is described is there.
TEST(MdioSectionTest, ARegisterThatIsNotSupportedFails) {
    expect_mdio(described(1) + entry(0, 0, 1) + read_rule(0, 1, "0x811101a4"),
                "Info   : mdio chip 0x0 mdio read fail 0x811101a4.\r\n", -1);
}

TEST(MdioSectionTest, AnUnreadableElementIsNamedAndTheNextPhyTested) {
    expect_mdio(described(3) + element("smi", "smi_dev", 0, "chip_id", "0x52") +
                    element("smi", "smi_dev", 1, "chip_id", "0 value=1") +
                    element("smi", "smi_dev", 1, "phy_addr", "0x53") + entry(2, 2, 9) +
                    read_rule(2, 9, "0 value=0x1140") + write_rule(2, 9, "0x1140", "0"),
                "Error: mdio xml get chip_id fail 0x52.\r\n"
                "Error: mdio xml get phy_addr fail 0x53.\r\n"
                "Success: mdio chip 0x2 mdio read write pass. address 0x0 value 0x1140 \r\n",
                -1);
}

// The links of the healthy boards stay up: nothing but what stood in the register was written.
TEST(MdioSectionTest, AHealthyBoardPasses) {
    const process_result master = run_part({"--board", "mpu_master"}, "mdio");
    EXPECT_EQ(master.out, "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x1140 \r\n"
                          "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x1140 \r\n"
                          "Success: mdio chip 0x1 mdio read write pass. address 0x0 value 0x1140 \r\n"
                          "result 0\n");
    const process_result line_card = run_part({"--board", "lpu"}, "mdio");
    EXPECT_EQ(line_card.out, "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x1140 \r\n"
                             "Success: mdio chip 0x0 mdio read write pass. address 0x0 value 0x1140 \r\n"
                             "result 0\n");
}
