// The one-key tests of power supplies: who may run them, on which supplies, and which tests a mode has.
#include <filesystem>
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_script.h"

using namespace kestro_tests;

namespace {

const std::string master = "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0\n";
const std::string master_line = "Info   : current board is master. power test now...\r\n";
const std::string slave_line = "Info    : current board is slave, hardware not support power test\r\n";
const std::string unknown_line = "Error  : drv_msc_get_state fail, default master, power test now...\r\n";

// Supplies that are not there, or lack all that a test asks for.
std::string nothing_of(int slot, int power) {
    const std::string unit = "slot_id=" + std::to_string(slot) + ", power_id=" + std::to_string(power);
    return "drv_power_get_property(" + unit + ", type=0) = 0 value=1\n";
}

std::string on(int slot, int power) {
    return "slot " + std::to_string(slot) + " power " + std::to_string(power);
}

std::string display_lines(int slot, int power) {
    return "Info   : " + on(slot, power) + " display test begin. \r\nInfo   :" + on(slot, power) +
           " is not online.\r\n";
}

std::string init_lines(int slot, int power) {
    return "Info   : " + on(slot, power) + " init and deinit test begin. \r\nInfo   : " + on(slot, power) +
           " is not online.\r\n";
}

std::string config_lines(int slot, int power) {
    std::string lines = "Info   : " + on(slot, power) + " set and get test begin. \r\n";
    for (const char *name :
         {"POWER_TEMP_LIMIT 0x5", "POWER_LATCH_STATE 0x18", "POWER_TEMP_MODE 0x22", "POWER_CLEAR_FAULT 0x1d",
          "POWER_ENABLE_CTRL 0x1a", "POWER_STARTUP_DELAY 0x1b", "POWER_STARTUP_DELAY 0x1b"}) {
        lines += "Info   : " + on(slot, power) + " get " + name + " is not support. \r\n";
    }
    return lines;
}

// The software test ends here when the programs cannot be listed.
std::string software_lines(int slot, int power) {
    return "Info   : " + on(slot, power) + " software test begin. \r\nError  : " + on(slot, power) +
           " get software info fail. ret 0x83\r\n";
}

const std::string lacking = "drv_power_get_property = 0x811101a4\ndrv_power_set_property = 0x811101a4\n";
const std::string no_init = "drv_power_init = 0x84\n";
const std::string no_programs = "drv_power_get_software_info = 0x83\n";
const std::string two_supplies = "drv_power_get_num(slot_id=13) = 0 num=2 x1\n";

} // namespace

TEST(PowerOnekeyTest, OnASlaveNothingIsTested) {
    for (const char *mode : {"all", "display", "config", "init", "software"}) {
        expect_part(std::string("power_onekey_") + mode,
                    "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1\n", slave_line, 0);
    }
    expect_part("power_onekey_all", "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=2\n", slave_line, 0);
    expect_part("power_single", "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1\n", slave_line, 0);
}

TEST(PowerOnekeyTest, ABoardThatDoesNotKnowItsStateTests) {
    expect_part("power_onekey_all",
                "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x85 state=1\ndrv_power_get_num = 0 num=0\n",
                unknown_line, 0);
    expect_part("power_onekey_all",
                "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0\ndrv_power_get_num = 0 num=0\n", master_line, 0);
}

TEST(PowerOnekeyTest, AFrameThatDoesNotTellHowManySuppliesItHas) {
    expect_part("power_onekey_all", master + "drv_power_get_num(slot_id=13) = 0x86\n",
                master_line + "Error  : slot 13 get power num fail. ret 0x86\r\n", -1);
    expect_part("power_onekey_all", master + "drv_power_get_num(slot_id=13) = 0\n", master_line, 0);
}

TEST(PowerOnekeyTest, AllTestsOnAllSupplies) {
    expect_part("power_onekey_all",
                master + two_supplies + nothing_of(13, 0) + nothing_of(13, 1) + lacking + no_init + no_programs,
                master_line + display_lines(13, 0) + init_lines(13, 0) + config_lines(13, 0) + software_lines(13, 0) +
                    display_lines(13, 1) + init_lines(13, 1) + config_lines(13, 1) + software_lines(13, 1),
                0x83);
}

TEST(PowerOnekeyTest, AModeIsOneTest) {
    expect_part("power_onekey_display", master + two_supplies + nothing_of(13, 0) + nothing_of(13, 1),
                master_line + display_lines(13, 0) + display_lines(13, 1), 0);
    expect_part("power_onekey_config", master + two_supplies + lacking,
                master_line + config_lines(13, 0) + config_lines(13, 1), 0);
    expect_part("power_onekey_init", master + two_supplies + nothing_of(13, 0) + nothing_of(13, 1) + no_init,
                master_line + init_lines(13, 0) + init_lines(13, 1), 0);
    expect_part("power_onekey_software", master + two_supplies + no_programs,
                master_line + software_lines(13, 0) + software_lines(13, 1), 0x83);
}

// Codes are put together: 0x83 of the first supply and 0x11c of the second.
TEST(PowerOnekeyTest, ResultsOfSuppliesArePutTogether) {
    expect_part("power_onekey_software",
                master + two_supplies + "drv_power_get_software_info(slot_id=13, power_id=0) = 0x83\n" +
                    "drv_power_get_software_info(slot_id=13, power_id=1) = 0x11c\n",
                master_line + software_lines(13, 0) +
                    "Info   : slot 13 power 1 software test begin. \r\n"
                    "Error  : slot 13 power 1 get software info fail. ret 0x11c\r\n",
                0x19f);
}

// A supply that is there is brought up and down three times, the most that any line of a round counts.
TEST(PowerOnekeyTest, TheInitTestHasThreeRounds) {
    expect_part("power_onekey_init",
                master + "drv_power_get_num(slot_id=13) = 0 num=1 x1\n" + power_get(0, "0 value=0") +
                    power_get(21, "0x87") + power_call("init", "0 x6") + power_call("deinit", "0 x4"),
                master_line + "Info   : slot 13 power 0 init and deinit test begin. \r\n"
                              "Success: slot 13 power 0 init and deinit success. times 0\r\n"
                              "Success: slot 13 power 0 init and deinit success. times 1\r\n"
                              "Success: slot 13 power 0 init and deinit success. times 2\r\n"
                              "Success: slot 13 power 0 duplicate init success\r\n",
                0);
}

TEST(PowerOnekeyTest, EachTestFailsTheRun) {
    const std::string one = master + "drv_power_get_num(slot_id=13) = 0 num=1 x1\n";
    expect_part("power_onekey_display", one + power_get(0, "0x21"),
                master_line + "Info   : slot 13 power 0 display test begin. \r\n"
                              "Error  : slot 13 power 0 get online fail. ret 0x21\r\n",
                0x21);
    expect_part("power_onekey_init", one + power_get(0, "0 value=1") + power_call("init", "0 x1"),
                master_line + init_lines(13, 0) + "Error  : slot 13 power 0 is not online, but init success.\r\n", -1);
    const std::string all = config_lines(13, 0);
    const std::string last = "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n";
    expect_part("power_onekey_config",
                one + power_set(27, 1, "0x22 x1") + "drv_power_set_property = 0x811101a4 x3\n" +
                    "drv_power_get_property = 0x811101a4 x3\n",
                master_line + all.substr(0, all.size() - last.size()) +
                    "Error  : slot 13 power 0 set POWER_STARTUP_DELAY 0x1b fail. value 1 ret 0x22\r\n",
                -1);
}

namespace {

std::string root_with_image() {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/opt/hostx/home");
    write_file(root + "/opt/hostx/home/power_app.bin", "1");
    return root;
}

// Of a supply that lists no programs and takes the image.
std::string loaded_lines(int slot, int power) {
    const std::string no_list = "Success: " + on(slot, power) + " not support get software info. ret 0x811101a4\r\n";
    return "Info   : " + on(slot, power) + " software test begin. \r\n" + no_list +
           "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n"
           "Info   : file head soft_id 0x31 rsv 0x0 crc[0] 0x0 crc[1] 0x0\r\n"
           "Success: " +
           on(slot, power) + " load file /opt/hostx/home/power_app.bin success. len 0x1\r\n" + no_list;
}

} // namespace

// The tests behind one that fails are run, and pass, without making it good.
TEST(PowerOnekeyTest, OneTestThatFailsFailsTheSupply) {
    const std::string begin = master + "drv_power_get_software_info = 0x811101a4\ndrv_power_load_app = 0\n";
    const std::string config = config_lines(13, 0);
    const std::string last = "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n";
    const struct {
        std::string script;
        std::string lines;
        int result;
    } cases[] = {
        {nothing_of(13, 0) + lacking + no_init, display_lines(13, 0) + init_lines(13, 0) + config, 0},
        {power_get(0, "0x21 x1") + nothing_of(13, 0) + lacking + no_init,
         "Info   : slot 13 power 0 display test begin. \r\n"
         "Error  : slot 13 power 0 get online fail. ret 0x21\r\n" +
             init_lines(13, 0) + config,
         0x21},
        {nothing_of(13, 0) + lacking + "drv_power_init = 0\n",
         display_lines(13, 0) + init_lines(13, 0) + "Error  : slot 13 power 0 is not online, but init success.\r\n" +
             config,
         -1},
        {nothing_of(13, 0) + power_set(27, 1, "0x22 x1") + lacking + no_init,
         display_lines(13, 0) + init_lines(13, 0) + config.substr(0, config.size() - last.size()) +
             "Error  : slot 13 power 0 set POWER_STARTUP_DELAY 0x1b fail. value 1 ret 0x22\r\n",
         -1},
    };
    for (const auto &each : cases) {
        expect_part_on(root_with_image(), "power_single", begin + each.script,
                       master_line + each.lines + loaded_lines(13, 0), each.result);
        expect_part_on(root_with_image(), "power_onekey_all",
                       begin + "drv_power_get_num(slot_id=13) = 0 num=1 x1\n" + each.script,
                       master_line + each.lines + loaded_lines(13, 0), each.result);
    }
}

TEST(PowerOnekeyTest, OneSupplyByItself) {
    expect_part("power_single", master + nothing_of(13, 0) + lacking + no_init + no_programs,
                master_line + display_lines(13, 0) + init_lines(13, 0) + config_lines(13, 0) + software_lines(13, 0),
                0x83);
}

namespace {

std::string described(const std::vector<std::pair<int, int>> &supplies) {
    std::string script = entry_count("power_mng", "power_capbility", static_cast<int>(supplies.size()));
    for (size_t i = 0; i < supplies.size(); ++i) {
        const int entry = static_cast<int>(i);
        script +=
            element("power_mng", "power_capbility", entry, "slot_id", "0 value=" + std::to_string(supplies[i].first)) +
            element("power_mng", "power_capbility", entry, "power_id", "0 value=" + std::to_string(supplies[i].second));
    }
    return script;
}

// Online to the section; then, as the two tests that ask find it, not there any more.
std::string online_once(int slot, int power, const std::string &answer = "0 value=0") {
    return "drv_power_get_property(slot_id=" + std::to_string(slot) + ", power_id=" + std::to_string(power) +
           ", type=0) = " + answer + " x1\n";
}

std::string banner(int slot, int power) {
    return "\r\n##### " + on(slot, power) + " test begin\r\n";
}

std::string all_lines(int slot, int power) {
    return banner(slot, power) + master_line + display_lines(slot, power) + init_lines(slot, power) +
           config_lines(slot, power) + software_lines(slot, power);
}

} // namespace

TEST(PowerSectionTest, ABoardWithoutPowerSupplies) {
    expect_part("power", no_entry_count("power_mng", "power_capbility", "0x51"), "Info: power is not support.\r\n", 0);
    expect_part("power", entry_count("power_mng", "power_capbility", 0), "Info: power is not support.\r\n", 0);
}

TEST(PowerSectionTest, EachSupplyThatIsOnlineIsTested) {
    expect_part("power",
                described({{13, 1}, {14, 0}}) + online_once(13, 1) + online_once(14, 0, "0") + nothing_of(13, 1) +
                    nothing_of(14, 0) + master + lacking + no_init + no_programs,
                all_lines(13, 1) + all_lines(14, 0), 0x83);
}

// The second one passes, which takes nothing from the first one's failure; and the other way round.
TEST(PowerSectionTest, OneOfTwoThatFails) {
    const std::string script = online_once(13, 0) + online_once(14, 0) + nothing_of(13, 0) + nothing_of(14, 0) +
                               master + lacking + no_init + "drv_power_get_software_info(slot_id=13) = 0x83\n" +
                               "drv_power_get_software_info(slot_id=14) = 0x811101a4 x2\n" +
                               "drv_power_load_app(slot_id=14) = 0\n";
    const std::string root = root_with_image();
    const std::string good = banner(14, 0) + master_line + display_lines(14, 0) + init_lines(14, 0) +
                             config_lines(14, 0) + loaded_lines(14, 0);
    expect_part_on(root, "power", described({{13, 0}, {14, 0}}) + script, all_lines(13, 0) + good, 0x83);
    expect_part_on(root, "power", described({{14, 0}, {13, 0}}) + script, good + all_lines(13, 0), 0x83);
}

TEST(PowerSectionTest, SuppliesThatAreNotOnlineAreSkipped) {
    expect_part("power",
                described({{13, 0}, {13, 1}, {14, 0}, {14, 1}}) + nothing_of(13, 0) +
                    online_once(13, 1, "0x88 value=0") + online_once(14, 0, "0 value=2") +
                    online_once(14, 1, "0x811101a4"),
                "", 0);
}

TEST(PowerSectionTest, EntriesThatCannotBeReadAreSkipped) {
    const auto read = [](int entry, const std::string &name, const std::string &answer) {
        return element("power_mng", "power_capbility", entry, name, answer);
    };
    expect_part("power",
                entry_count("power_mng", "power_capbility", 3) + read(0, "slot_id", "0x52") +
                    read(0, "power_id", "0 value=1") + read(1, "slot_id", "0 value=13") + read(1, "power_id", "0x52") +
                    read(2, "slot_id", "0 value=14") + read(2, "power_id", "0 value=1") + online_once(14, 1) +
                    nothing_of(14, 1) + master + lacking + no_init + no_programs,
                all_lines(14, 1), 0x83);
}

TEST(PowerSectionTest, TheHealthyChassis) {
    const process_result run = run_part({"--board", "mpu_master"}, "power");
    EXPECT_EQ(run.out.find("Error"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("unmatch"), std::string::npos) << run.out;
    EXPECT_EQ(run.out.find("fail"), std::string::npos) << run.out;
    for (const auto &[slot, power] : {std::pair{13, 0}, {13, 1}, {14, 0}}) {
        EXPECT_NE(run.out.find(banner(slot, power) + master_line), std::string::npos);
        EXPECT_NE(run.out.find("Success: " + on(slot, power) +
                               " load file /opt/hostx/home/power_app.bin success. len 0x108\r\n"),
                  std::string::npos);
    }
    EXPECT_EQ(run.out.find(on(14, 1)), std::string::npos);
    EXPECT_TRUE(run.out.ends_with("result 0\n"));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(PowerSectionTest, TheSlaveOfTheChassisAndALineCard) {
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "power").out,
              banner(13, 0) + slave_line + banner(13, 1) + slave_line + banner(14, 0) + slave_line + "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "power").out, "Info: power is not support.\r\nresult 0\n");
}

// A supply whose presence line is broken comes up all the same, which only the tests of the whole frame see: the
// section leaves out what is not online.
TEST(PowerOnekeyTest, ASupplyWithABrokenPresenceLine) {
    const process_result run =
        run_part({"--board", "mpu_master", "--set", "chassis/power/supply/130/line_broken=1"}, "power_onekey_init");
    EXPECT_EQ(run.out, master_line + init_lines(13, 0) +
                           "Error  : slot 13 power 0 is not online, but init success.\r\n"
                           "Info   : slot 13 power 1 init and deinit test begin. \r\n"
                           "Success: slot 13 power 1 init and deinit success. times 0\r\n"
                           "Success: slot 13 power 1 init and deinit success. times 1\r\n"
                           "Success: slot 13 power 1 init and deinit success. times 2\r\n"
                           "Success: slot 13 power 1 duplicate init success\r\n"
                           "result -1\n");
    EXPECT_EQ(run.err, "");
}
