// The pci section: the links of the processor's cores, and whether each tells its status.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string described = entry_count("pci", "pci_attr", 1);

std::string info_rule(int cores, const std::string &each) {
    return "drv_pci_get_dfx_info() = 0 info={core_num=" + std::to_string(cores) + " core=" + each + "}\n";
}

std::string status_rule(int core, const std::string &answer) {
    return "drv_pci_get_status(core_num=" + std::to_string(core) + ") = " + answer + "\n";
}

void expect_pci(const std::string &script, const std::string &lines, int result) {
    expect_part("pci", script, lines, result);
}

} // namespace

// The node says that there are cores; which they are the driver knows, so it is asked once.
TEST(PciSectionTest, TellsEveryLink) {
    expect_pci(entry_count("pci", "pci_attr", 3) +
                   info_rule(2, "[{link=1 speed=3 mode=0 max_payload=256} {link=0 speed=0 mode=1 tlp_err=9}]") +
                   status_rule(0, "0 status=0x31") + status_rule(1, "0 status=0"),
               "Success: pci get dfx info pass. num 2 \r\n"
               "pci 0 : link 1 (0: down 1:up) speed 3 mode 0\r\n"
               "pci 1 : link 0 (0: down 1:up) speed 0 mode 1\r\n"
               "Success: pci get pci status pass. \r\n",
               0);
}

TEST(PciSectionTest, ABoardWithoutPciPasses) {
    expect_pci(entry_count("pci", "pci_attr", 0), "Info: pci bus is not support.\r\n", 0);
    expect_pci(no_entry_count("pci", "pci_attr", "0x51"), "Info: pci bus is not support.\r\n", 0);
}

TEST(PciSectionTest, WithoutTheRecordNothingIsAsked) {
    expect_pci(described + "drv_pci_get_dfx_info() = 0x21 info={core_num=1}\n",
               "Error  : pci get dfx info fail 0x21.\r\n", -1);
    expect_pci(described + "drv_pci_get_dfx_info() = 0x811101a4\n", "Error  : pci get dfx info fail 0x811101a4.\r\n",
               -1);
}

TEST(PciSectionTest, ADriverThatWritesNothingHasNoCores) {
    expect_pci(described + "drv_pci_get_dfx_info() = 0\n",
               "Success: pci get dfx info pass. num 0 \r\nSuccess: pci get pci status pass. \r\n", 0);
}

TEST(PciSectionTest, AStatusThatFailsIsNamedAndTheNextOneAsked) {
    expect_pci(described + info_rule(3, "[{link=1 speed=1}]") + status_rule(0, "0x22") + status_rule(1, "0") +
                   status_rule(2, "0x23"),
               "Success: pci get dfx info pass. num 3 \r\n"
               "pci 0 : link 1 (0: down 1:up) speed 1 mode 0\r\n"
               "pci 1 : link 0 (0: down 1:up) speed 0 mode 0\r\n"
               "pci 2 : link 0 (0: down 1:up) speed 0 mode 0\r\n"
               "Error  : pci get pci status fail 0x22. core_num 0\r\n"
               "Error  : pci get pci status fail 0x23. core_num 2\r\n",
               -1);
}

// The record holds eight cores, whatever number stands in it.
TEST(PciSectionTest, NoMoreCoresThanTheRecordHolds) {
    std::string lines = "Success: pci get dfx info pass. num 9 \r\n";
    std::string script = described + info_rule(9, "[{link=1}]");
    for (int core = 0; core < 8; ++core) {
        script += status_rule(core, "0");
        lines +=
            "pci " + std::to_string(core) + " : link " + (core == 0 ? "1" : "0") + " (0: down 1:up) speed 0 mode 0\r\n";
    }
    expect_pci(script, lines + "Success: pci get pci status pass. \r\n", 0);
}

TEST(PciSectionTest, AHealthyBoardPasses) {
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "pci").out, "Success: pci get dfx info pass. num 2 \r\n"
                                                             "pci 0 : link 1 (0: down 1:up) speed 3 mode 0\r\n"
                                                             "pci 1 : link 1 (0: down 1:up) speed 2 mode 0\r\n"
                                                             "Success: pci get pci status pass. \r\n"
                                                             "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "pci").out, "Info: pci bus is not support.\r\nresult 0\n");
}
