// The SMI bus: the same registers of the same PHYs as their own driver has, of every board in reach.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";

std::string words(uint32_t chip, uint32_t phy, uint32_t offset) {
    return "chip_id=" + std::to_string(chip) + ", phy_addr=" + std::to_string(phy) +
           ", offset=" + std::to_string(offset);
}

std::string read_at(uint32_t chip, uint32_t phy, uint32_t offset) {
    return "drv_mdio_read(" + words(chip, phy, offset) + ")";
}

std::string write_at(uint32_t chip, uint32_t phy, uint32_t offset, const std::string &value) {
    return "drv_mdio_write(" + words(chip, phy, offset) + ", value=" + value + ")";
}

} // namespace

TEST(MdioDriver, ReadsTheRegistersOfEveryPhy) {
    EXPECT_EQ(
        answers(new_delivered("mpu_master"), {read_at(0, 0, 0), read_at(0, 1, 3), read_at(1, 4, 2), read_at(1, 4, 3)}),
        "0x0 value=4416\n0x0 value=289\n0x0 value=2691\n0x0 value=338\n");
}

TEST(MdioDriver, SharesTheRegistersWithThePhyDriver) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {write_at(0, 1, 0, "0x1940"), "drv_phy_get_port_status(chip_id=0, port_id=1, port_mode=0)",
                        "drv_phy_get_port_status(chip_id=0, port_id=0, port_mode=0)", read_at(0, 1, 0),
                        "drv_phy_set_port_status(chip_id=0, port_id=1, port_mode=0, enable=1)", read_at(0, 1, 0)}),
        "0x0\n0x0 enable=0\n0x0 enable=1\n0x0 value=6464\n0x0\n0x0 value=4416\n");
}

// The driver's mark stands in register 30.
TEST(MdioDriver, TheMarkIsARegister) {
    EXPECT_EQ(
        answers(new_delivered("mpu_master"),
                {"drv_phy_nick(chip_id=1)", read_at(1, 4, 30), "drv_phy_check_nick(chip_id=1)", write_at(1, 4, 30, "0"),
                 "drv_phy_check_nick(chip_id=1)", write_at(1, 4, 30, "0x4b54"), "drv_phy_check_nick(chip_id=1)"}),
        "0x0\n0x0 value=19284\n0x0 check_result=0\n0x0\n0x0 check_result=1\n0x0\n0x0 check_result=0\n");
}

// The link is up, and stays so when the control register gets what it holds.
TEST(MdioDriver, WritingBackTheControlRegisterKeepsTheLink) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {write_at(0, 0, 0, "0x1140"), "drv_phy_get_port_link(chip_id=0, port_id=0, port_mode=0)"}),
              "0x0\n0x0 link_status=1\n");
}

TEST(MdioDriver, ReachesTheBoardsThatTheInstanceNames) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_mdio_read(inst_id=0xff000007, chip_id=0, phy_addr=8)",
                       "drv_mdio_read(inst_id=0xff000007, chip_id=1, phy_addr=4)", "drv_mdio_read(inst_id=0xff000005)",
                       "drv_mdio_read(inst_id=0xff000006)"}),
              "0x0 value=4416\n" + no_such_device + not_supported + no_such_instance);
}

TEST(MdioDriver, LimitsAndUnknowns) {
    EXPECT_EQ(
        answers(new_delivered("mpu_master"),
                {read_at(0, 2, 0), read_at(2, 0, 0), write_at(0, 2, 0, "0"), read_at(0, 0, 32), write_at(0, 0, 32, "0"),
                 "drv_mdio_read(dev_addr=1)", "drv_mdio_write(dev_addr=1)", "drv_mdio_read(value=null)"}),
        no_such_device + no_such_device + no_such_device + out_of_range + out_of_range + bad_value + bad_value +
            null_pointer);
}

} // namespace kestro_tests
