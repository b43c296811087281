// What the board says that it is: type, bill of materials, power, and the versions of its printed circuit board.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

struct identity {
    std::string type = "0 type=0x02302311";
    std::string bom_id = "0 bom_id=3";
    std::string bom_ver = "0 ver=1";
    std::string power = "0 power=95";
    std::string no_domain = "0x81110103";
};

// The queries in the order of their lines; the state decides what comes behind them.
std::string queries(const identity &of, const std::string &state) {
    return "drv_board_get_type(inst_id=0xffffffff) = " + of.type + "\n" +
           "drv_board_get_bom_id(inst_id=0xffffffff) = " + of.bom_id + "\n" +
           "drv_board_get_bom_ver(inst_id=0xffffffff) = " + of.bom_ver + "\n" +
           "drv_board_get_power(inst_id=0xffffffff) = " + of.power + "\n" +
           "drv_board_get_power_status(inst_id=0xffffffff, type=34) = " + of.no_domain + "\n" +
           "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = " + state + "\n";
}

std::string peer_power(const std::string &answer) {
    return "drv_board_get_power_status(inst_id=0xffffffff, type=10) = " + answer + "\n";
}

constexpr const char *master = "0 state=0";
constexpr const char *slave = "0 state=1";
constexpr const char *identity_line = "Info : board type 0x2302311 bom_id 3 bom_ver 1 power 0x5f \r\n";

void expect_master(const identity &of, const std::string &lines, int result) {
    expect_part("hardware_identity", queries(of, master), lines, result);
}

void expect_pcb(const std::string &user, const std::string &own, const std::string &lines, int result) {
    expect_part("pcb_version",
                "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = " + user +
                    "\ndrv_board_get_pcb_ver(inst_id=0xffffffff) = " + own + "\n",
                lines, result);
}

} // namespace

TEST(HardwareIdentityTest, AMasterDoesNotAskForThePowerOfItsPeer) {
    expect_master({}, identity_line, 0);
}

// A driver that answers and writes nothing leaves the state of a master.
TEST(HardwareIdentityTest, AStateThatIsNotWrittenIsThatOfAMaster) {
    expect_part("hardware_identity", queries({}, "0"), identity_line, 0);
}

TEST(HardwareIdentityTest, EveryOtherBoardShowsThePowerOfItsPeer) {
    for (const char *state : {slave, "0 state=2", "0x34", "0x34 state=0"}) {
        expect_part("hardware_identity", queries({}, state) + peer_power("0 status=1"),
                    std::string(identity_line) + "Info : peer power sts 0x1.\r\n", 0);
    }
}

TEST(HardwareIdentityTest, PeerPowerThatIsOffIsNoFault) {
    expect_part("hardware_identity", queries({}, slave) + peer_power("0"),
                std::string(identity_line) + "Info : peer power sts 0x0.\r\n", 0);
}

TEST(HardwareIdentityTest, ABoardWithoutAPeerPasses) {
    for (const char *code : {"0x811101a4", "0xa4", "0x1a4"}) {
        expect_part("hardware_identity", queries({}, slave) + peer_power(code),
                    std::string(identity_line) + "Info : peer power sts 0x0.\r\n", 0);
    }
}

TEST(HardwareIdentityTest, PeerPowerThatCannotBeRead) {
    expect_part("hardware_identity", queries({}, slave) + peer_power("0xa5 status=7"),
                std::string(identity_line) + "Error  : get peer power stats fail 0xa5. power 0x7\r\n", -1);
}

TEST(HardwareIdentityTest, AFailureBeforeThePeerIsNotForgotten) {
    identity sick;
    sick.bom_ver = "0x21";
    expect_part("hardware_identity", queries(sick, slave) + peer_power("0 status=1"),
                "Error  : get bom version fail 0x21. bom_ver 0xffffffff\r\n"
                "Info : board type 0x2302311 bom_id 3 bom_ver 4294967295 power 0x5f \r\n"
                "Info : peer power sts 0x1.\r\n",
                -1);
}

TEST(HardwareIdentityTest, ATypeThatIsUnreadOrBlank) {
    identity sick;
    sick.type = "0x22";
    expect_master(sick,
                  "Error  : get hard type fail 0x22. type 0x0 \r\n"
                  "Info : board type 0x0 bom_id 3 bom_ver 1 power 0x5f \r\n",
                  -1);
    sick.type = "0x22 type=5";
    expect_master(sick,
                  "Error  : get hard type fail 0x22. type 0x5 \r\n"
                  "Info : board type 0x5 bom_id 3 bom_ver 1 power 0x5f \r\n",
                  -1);
    sick.type = "0";
    expect_master(sick,
                  "Error  : get hard type fail 0x0. type 0x0 \r\n"
                  "Info : board type 0x0 bom_id 3 bom_ver 1 power 0x5f \r\n",
                  -1);
    sick.type = "0 type=0xffffffff";
    expect_master(sick,
                  "Error  : get hard type fail 0x0. type 0xffffffff \r\n"
                  "Info : board type 0xffffffff bom_id 3 bom_ver 1 power 0x5f \r\n",
                  -1);
    sick.type = "0x811101a4";
    expect_master(sick,
                  "Error  : get hard type fail 0x811101a4. type 0x0 \r\n"
                  "Info : board type 0x0 bom_id 3 bom_ver 1 power 0x5f \r\n",
                  -1);
}

TEST(HardwareIdentityTest, ABillOfMaterialsThatIsUnread) {
    identity sick;
    sick.bom_id = "0x23";
    expect_master(sick,
                  "Error  : get bom id fail 0x23. bom_id 0xffffffff\r\n"
                  "Info : board type 0x2302311 bom_id 4294967295 bom_ver 1 power 0x5f \r\n",
                  -1);
    sick.bom_ver = "0x24 ver=6";
    expect_master(sick,
                  "Error  : get bom id fail 0x23. bom_id 0xffffffff\r\n"
                  "Error  : get bom version fail 0x24. bom_ver 0x6\r\n"
                  "Info : board type 0x2302311 bom_id 4294967295 bom_ver 6 power 0x5f \r\n",
                  -1);
}

// Numbers that are blank elsewhere are bills of materials like any other.
TEST(HardwareIdentityTest, AnyNumberIsABillOfMaterials) {
    identity odd;
    odd.bom_id = "0 bom_id=0";
    odd.bom_ver = "0";
    expect_master(odd, "Info : board type 0x2302311 bom_id 0 bom_ver 4294967295 power 0x5f \r\n", 0);
}

TEST(HardwareIdentityTest, APowerThatIsUnreadOrBlank) {
    identity sick;
    sick.power = "0x25";
    expect_master(sick,
                  "Error  : get power fail 0x25. power 0x0\r\n"
                  "Info : board type 0x2302311 bom_id 3 bom_ver 1 power 0x0 \r\n",
                  -1);
    sick.power = "0";
    expect_master(sick,
                  "Error  : get power fail 0x0. power 0x0\r\n"
                  "Info : board type 0x2302311 bom_id 3 bom_ver 1 power 0x0 \r\n",
                  -1);
    sick.power = "0 power=0xffffffff";
    expect_master(sick,
                  "Error  : get power fail 0x0. power 0xffffffff\r\n"
                  "Info : board type 0x2302311 bom_id 3 bom_ver 1 power 0xffffffff \r\n",
                  -1);
}

TEST(HardwareIdentityTest, ADriverThatAnswersForADomainBehindTheLastOne) {
    identity sick;
    sick.no_domain = "0 status=1";
    expect_master(sick, std::string("Error  : get invliad power stats fail 0x0. power 0x1\r\n") + identity_line, -1);
    sick.no_domain = "0";
    expect_master(sick, std::string("Error  : get invliad power stats fail 0x0. power 0x0\r\n") + identity_line, -1);
    sick.no_domain = "0x811101a4 status=1";
    expect_master(sick, identity_line, 0);
}

TEST(HardwareIdentityTest, OnTheSimulatedBoards) {
    EXPECT_EQ(run_part({}, "hardware_identity").out, std::string(identity_line) + "result 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "hardware_identity").out,
              std::string(identity_line) + "Info : peer power sts 0x1.\r\nresult 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "hardware_identity").out,
              "Info : board type 0x2302321 bom_id 6 bom_ver 1 power 0xf0 \r\n"
              "Info : peer power sts 0x0.\r\nresult 0\n");
}

TEST(PcbVersionTest, TheSameVersionTwice) {
    expect_pcb("0 ver=0x102", "0 ver=0x102",
               "Success: board pcb version check pass. version 0x102\r\n"
               "Success: board user pcb version check pass. version 0x102\r\n",
               0);
    expect_pcb("0", "0",
               "Success: board pcb version check pass. version 0x0\r\n"
               "Success: board user pcb version check pass. version 0x0\r\n",
               0);
}

TEST(PcbVersionTest, TwoVersions) {
    expect_pcb("0 ver=0x103", "0 ver=0x102",
               "Error  : board pcb version check fail. ret 0x0 pcb_usr_ver 0x103 pcb_ver 0x102.\r\n", -1);
    expect_pcb("0 ver=0x10102", "0 ver=0x102",
               "Error  : board pcb version check fail. ret 0x0 pcb_usr_ver 0x10102 pcb_ver 0x102.\r\n", -1);
}

// Both are read whatever the first one says, and the code is that of the first one that failed.
TEST(PcbVersionTest, AVersionThatCannotBeRead) {
    expect_pcb("0x31 ver=0x102", "0 ver=0x102",
               "Error  : board pcb version check fail. ret 0x31 pcb_usr_ver 0x102 pcb_ver 0x102.\r\n", -1);
    expect_pcb("0 ver=0x102", "0x811101a4",
               "Error  : board pcb version check fail. ret 0x811101a4 pcb_usr_ver 0x102 pcb_ver 0x0.\r\n", -1);
    expect_pcb("0x31", "0x32", "Error  : board pcb version check fail. ret 0x31 pcb_usr_ver 0x0 pcb_ver 0x0.\r\n", -1);
}

TEST(PcbVersionTest, OnTheSimulatedBoards) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(run_part({"--board", seat}, "pcb_version").out,
                  "Success: board pcb version check pass. version 0x102\r\n"
                  "Success: board user pcb version check pass. version 0x102\r\nresult 0\n");
    }
    EXPECT_EQ(run_part({"--board", "lpu"}, "pcb_version").out,
              "Success: board pcb version check pass. version 0x201\r\n"
              "Success: board user pcb version check pass. version 0x201\r\nresult 0\n");
}

TEST(PcbVersionTest, TheVersionForUsersIsReadFirst) {
    EXPECT_EQ(calls_of({}, "pcb_version"), (std::vector<std::string>{"drv_board_get_usr_pcb_ver(inst_id=0xffffffff)",
                                                                     "drv_board_get_pcb_ver(inst_id=0xffffffff)"}));
}

TEST(HardwareIdentityTest, TheOrderOfTheQueries) {
    EXPECT_EQ(calls_of({"--board", "mpu_slave"}, "hardware_identity"),
              (std::vector<std::string>{
                  "drv_board_get_type(inst_id=0xffffffff)", "drv_board_get_bom_id(inst_id=0xffffffff)",
                  "drv_board_get_bom_ver(inst_id=0xffffffff)", "drv_board_get_power(inst_id=0xffffffff)",
                  "drv_board_get_power_status(inst_id=0xffffffff, type=34)",
                  "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0)",
                  "drv_board_get_power_status(inst_id=0xffffffff, type=10)"}));
}
