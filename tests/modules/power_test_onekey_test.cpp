// power_test: the one-key tests, with the driver scripted.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/modules/power_rows.h"
#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string master_rule = "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0\n";
const std::string master_line = "Info   : current board is master. power test now...\r\n";
const std::string no_supply_rules = master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n"
                                                  "drv_power_get_property(slot_id=13, power_id=0, type=0) = 0 value=1\n"
                                                  "drv_power_init(slot_id=13, power_id=0) = 0x84\n"
                                                  "drv_power_get_property(slot_id=13, power_id=0) = 0x811101a4\n"
                                                  "drv_power_set_property(slot_id=13, power_id=0) = 0x811101a4\n"
                                                  "drv_power_get_software_info(slot_id=13, power_id=0) = 0x83";

const std::string absent_display = "Info   : slot 13 power 0 display test begin. \r\n"
                                   "Info   :slot 13 power 0 is not online.\r\n";
const std::string absent_init = "Info   : slot 13 power 0 init and deinit test begin. \r\n"
                                "Info   : slot 13 power 0 is not online.\r\n";
const std::string lacking_config = "Info   : slot 13 power 0 set and get test begin. \r\n"
                                   "Info   : slot 13 power 0 get POWER_TEMP_LIMIT 0x5 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_LATCH_STATE 0x18 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_TEMP_MODE 0x22 is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_CLEAR_FAULT 0x1d is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_ENABLE_CTRL 0x1a is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n"
                                   "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n";
const std::string unlisted_software = "Info   : slot 13 power 0 software test begin. \r\n"
                                      "Error  : slot 13 power 0 get software info fail. ret 0x83\r\n";

std::string rules_with(const std::vector<std::string> &operations) {
    std::string rules = master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n";
    std::istringstream all(no_supply_rules);
    for (std::string rule; std::getline(all, rule);) {
        for (const std::string &operation : operations) {
            rules += rule.starts_with(operation) ? rule + "\n" : "";
        }
    }
    return rules;
}

} // namespace

// A place without a supply, whose driver does not list programs either.
TEST(PowerTestOnekey, OnekeyTestsByMode) {
    expect_failure("power_test power_onekey_test_all 13", no_supply_rules,
                   master_line + absent_display + absent_init + lacking_config + unlisted_software);
    expect_success("power_test power_onekey_test_display 0xd 2",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0, type=0)"}),
                   master_line + absent_display);
    expect_success("power_test power_onekey_test_config 13",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0)", "drv_power_set_property"}),
                   master_line + lacking_config);
    expect_success("power_test power_onekey_test_init 13",
                   rules_with({"drv_power_get_property(slot_id=13, power_id=0, type=0)", "drv_power_init"}),
                   master_line + absent_init);
    expect_failure("power_test power_onekey_test_software 13", rules_with({"drv_power_get_software_info"}),
                   master_line + unlisted_software);
}

TEST(PowerTestOnekey, OnekeyTestsOfAFrameThatIsNone) {
    for (const std::string mode : {"all", "display", "config", "init", "software"}) {
        const std::string name = "power_onekey_test_" + mode;
        expect_failure("power_test " + name + " frame", master_rule + "drv_power_get_num(slot_id=0) = 0x81110103",
                       master_line + "Error  : slot 0 get power num fail. ret 0x81110103\r\n");
        expect_success("power_test " + name + " 13 14",
                       "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x85\n"
                       "drv_power_get_num(slot_id=13) = 0",
                       "Error  : drv_msc_get_state fail, default master, power test now...\r\n");
        expect_success("power_test " + name + " 13", "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1",
                       "Info    : current board is slave, hardware not support power test\r\n");
        expect_silent_refusal(name, {});
    }
}

namespace {

std::string zero_property(int type) {
    return std::string("Success: slot 13 power 0 get ") + power_property_names[type - 1].name + " " + hex_text(type) +
           ": 0x0\r\n";
}

std::string zero_properties() {
    std::string lines;
    for (const int type : {1, 2, 9, 43, 7, 8, 10, 13, 24, 44}) {
        lines += zero_property(type);
    }
    for (int type = 3; type <= 48; ++type) {
        lines += zero_property(type);
    }
    return lines;
}

std::string quiet_alarms() {
    std::string lines;
    for (const char *alarm :
         {"POWER_ALARM_CMD 0x1", "POWER_ALARM_TEMPERATURE 0x2", "POWER_ALARM_VIN_UV_FAULT 0x3",
          "POWER_ALARM_IOUT_OC_FAULT 0x4", "POWER_ALARM_VOUT_OV_FAULT 0x5", "POWER_ALARM_VIN_OV_DETECT 0x6",
          "POWER_ALARM_VIN_UNIT_OFF 0x7", "POWER_ALARM_INPUT 0xd", "POWER_ALARM_OTHER 0x9", "POWER_ALARM_FAN 0xa",
          "POWER_ALARM_IOUT_POUT 0xe", "POWER_ALARM_VOUT 0xf"}) {
        lines += std::string("Success: slot 13 power 0 get ") + alarm + ": alarms 0x0 sub_alarm 0x0\r\n";
    }
    return lines;
}

std::string empty_black_box() {
    std::string numbers;
    for (int i = 0; i < 4096; ++i) {
        numbers += "0 ";
    }
    return "Success: slot 13 power 0 get bbox info return length 0 \r\n" + numbers +
           "\r\nSuccess: slot 13 power 0 get bbox info  \r\n";
}

} // namespace

// A supply that has all there is, and the image of the delivered board.
TEST(PowerTestOnekey, OnekeyTestOfASupplyThatHasAll) {
    const std::string unit = "slot_id=13, power_id=0";
    const std::string programs = "Success: slot 13 power 0 get software info. soft_cnt 1 \r\n"
                                 "soft_id 0x1 module_num 0xff\r\n"
                                 "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 204\r\n";
    expect_success(
        "power_test power_onekey_test_all 13",
        master_rule + "drv_power_get_num(slot_id=13) = 0 num=1\n" + "drv_power_get_property(" + unit +
            ", type=24) = 0 value=0 x3\n" + "drv_power_get_property(" + unit + ", type=24) = 0 value=1\n" +
            "drv_power_get_property(" + unit + ", type=34) = 0 value=0 x2\n" + "drv_power_get_property(" + unit +
            ", type=34) = 0 value=1\n" + "drv_power_get_property(" + unit + ") = 0 value=0\n" +
            "drv_power_set_property(" + unit + ") = 0\n" + "drv_power_get_bbox_info(" + unit + ", len=4096) = 0\n" +
            "drv_power_get_board_property(" + unit + ", type=0, len=1026) = 0 buffer=\"label\" len=5\n" +
            "drv_power_get_board_property(" + unit + ", len=5) = 0x811101a4 x4\n" + "drv_power_get_alarm(" + unit +
            ") = 0\n" + "drv_power_init(" + unit + ") = 0 x6\n" + "drv_power_deinit(" + unit + ") = 0 x4\n" +
            "drv_power_get_software_info(" + unit +
            ") = 0 info={soft_cnt=1 software=[{soft_id=1 module_num=255}]} x2\n" + "drv_power_get_softver(" + unit +
            ", soft_id=1, module_id=0) = 0 version=204 x2\n" + "drv_power_load_app(" + unit +
            ", reserved=0, len=264) = 0",
        master_line + "Info   : slot 13 power 0 display test begin. \r\n" + empty_black_box() +
            "Success: slot 13 power 0 input format 0 ac and dc_ac_type 0 ac is match \r\n" + zero_properties() +
            "Success: slot 13 power 0 len 5 POWER_BOARD_ELABLE: label\r\n \r\n"
            "Success: slot 13 power 0 not support get POWER_BOARD_SOFT_VER info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_BOARD_HW_VER info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_MODULE_FEATURE info. ret 0x811101a4\r\n"
            "Success: slot 13 power 0 not support get POWER_CHIP_FEATURE info. ret 0x811101a4\r\n" +
            quiet_alarms() +
            "Info   : slot 13 power 0 init and deinit test begin. \r\n"
            "Success: slot 13 power 0 init and deinit success. times 0\r\n"
            "Success: slot 13 power 0 init and deinit success. times 1\r\n"
            "Success: slot 13 power 0 init and deinit success. times 2\r\n"
            "Success: slot 13 power 0 duplicate init success\r\n"
            "Info   : slot 13 power 0 set and get test begin. \r\n"
            "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 0\r\n"
            "Success: slot 13 power 0 set POWER_LATCH_STATE 0x18 pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_TEMP_MODE 0x22 pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_CLEAR_FAULT 0x1d pass. value 0\r\n"
            "Success: slot 13 power 0 set POWER_ENABLE_CTRL 0x1a pass. value 1\r\n"
            "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 10\r\n"
            "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 1\r\n"
            "Info   : slot 13 power 0 software test begin. \r\n" +
            programs +
            "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n"
            "Info   : file head soft_id 0x1 rsv 0x0 crc[0] 0x3e crc[1] 0x6\r\n"
            "Success: slot 13 power 0 load file /opt/hostx/home/power_app.bin success. len 0x108\r\n" +
            programs);
}
