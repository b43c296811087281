// Power supplies: figures that agree with each other, alarms that follow from them, what drivers set, and images.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string ac = "slot_id=13, power_id=0";
const std::string dc = "slot_id=13, power_id=1";
const std::string simple = "slot_id=14, power_id=0";
const std::string empty = "slot_id=14, power_id=1";
const std::string damaged = "0x81110109\n";
const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

std::string get(const std::string &unit, int type) {
    return "drv_power_get_property(" + unit + ", type=" + std::to_string(type) + ")";
}

std::string set(const std::string &unit, int type, int value) {
    return "drv_power_set_property(" + unit + ", type=" + std::to_string(type) + ", value=" + std::to_string(value) +
           ")";
}

std::string alarm(const std::string &unit, int type) {
    return "drv_power_get_alarm(" + unit + ", type=" + std::to_string(type) + ")";
}

std::string call(const std::string &operation, const std::string &unit) {
    return "drv_power_" + operation + "(" + unit + ")";
}

// kestro_call shows numbers of more than 16 bits in hexadecimal.
std::string value(uint32_t number) {
    char text[16];
    snprintf(text, sizeof(text), number > 0xFFFF ? "0x%x" : "%u", number);
    return std::string("0x0 value=") + text + "\n";
}

std::string values(std::initializer_list<uint32_t> numbers) {
    std::string lines;
    for (const uint32_t number : numbers) {
        lines += value(number);
    }
    return lines;
}

std::vector<std::string> gets(const std::string &unit, std::initializer_list<int> types) {
    std::vector<std::string> lines;
    for (const int type : types) {
        lines.push_back(get(unit, type));
    }
    return lines;
}

std::string alarm_answer(uint32_t bits) {
    return "0x0 alarms=" + std::to_string(bits) + " sub_alarm=" + (bits != 0 ? "1" : "0") + "\n";
}

// A chassis whose supplies a technician changes between runs, on the virtual clock.
class PowerSupply : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        for (const std::string &setting : by_hand) {
            options.insert(options.end(), {"--set", "chassis/power/" + setting});
        }
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(PowerSupply, FramesAndTheirPlaces) {
    EXPECT_EQ(answers({"drv_power_get_num(slot_id=13)", "drv_power_get_num(slot_id=14)", "drv_power_get_num(slot_id=9)",
                       "drv_power_get_num(slot_id=99)", "drv_power_get_num(slot_id=13, num=null)"}),
              "0x0 num=2\n0x0 num=2\n" + no_such_device + no_such_device + null_pointer);
    EXPECT_EQ(answers({get(ac, 0), get(dc, 0), get(simple, 0), get(empty, 0), get("slot_id=13, power_id=2", 0),
                       get("slot_id=13, power_id=10", 0), get("slot_id=15, power_id=0", 0)}),
              values({0, 0, 0, 1}) + no_such_device + no_such_device + no_such_device);
}

TEST_F(PowerSupply, BothMainProcessingUnitsSeeThem) {
    const test_board board = new_delivered("mpu_slave");
    EXPECT_EQ(kestro_tests::answers(board, {get(ac, 14)}), value(230000));
    EXPECT_EQ(kestro_tests::answers(seen_from(board, "lpu"), {get(ac, 0), "drv_power_get_num(slot_id=13)"}),
              not_supported + not_supported);
}

// 642 W leave, 668 W come in at an efficiency of 96 %.
TEST_F(PowerSupply, FiguresAgree) {
    EXPECT_EQ(answers(gets(ac, {14, 35, 20, 15, 16, 19, 17, 18, 32})),
              values({230000, 2904, 668, 53500, 12000, 642, 36, 9000, 50}));
    EXPECT_EQ(answers(gets(ac, {15, 16, 19, 20, 17, 18}), {"supply/130/load=2200"}),
              values({53500, 41121, 2200, 2291, 65, 18000}));
    EXPECT_EQ(answers(gets(ac, {16, 19, 20, 35, 17, 32}), {"supply/130/load=0"}), values({0, 0, 0, 0, 25, 30}));
}

TEST_F(PowerSupply, KindsAndInputs) {
    EXPECT_EQ(answers({get(ac, 22), get(ac, 40), get(dc, 22), get(dc, 40), get(simple, 22), get(simple, 40)}),
              values({0, 0, 1, 1, 0, 0}));
    EXPECT_EQ(answers(gets(ac, {22, 40}), {"supply/130/type=2"}), values({2, 2}));
    EXPECT_EQ(answers(gets(ac, {22, 40}), {"supply/130/type=3"}), values({3, 0}));
}

TEST_F(PowerSupply, ACableThatIsPulled) {
    EXPECT_EQ(answers(gets(ac, {1, 2, 9, 40, 14, 35, 20, 15, 16, 19, 17, 18, 6, 44, 43}), {"supply/130/feed=0"}),
              values({1, 1, 8, 3, 0, 0, 0, 0, 0, 0, 25, 0, 0x2840, 0, 1}));
    EXPECT_EQ(answers({alarm(ac, 7), alarm(ac, 13), alarm(ac, 3), alarm(ac, 6), call("init", ac)}),
              alarm_answer(8) + alarm_answer(8) + alarm_answer(0) + alarm_answer(0) + ok);
    EXPECT_EQ(answers(gets(ac, {1, 2, 43}), {"supply/130/feed=230000"}), values({0, 0, 1}));
    EXPECT_EQ(answers({set(ac, 29, 0), get(ac, 43)}), ok + value(0));
}

TEST_F(PowerSupply, AnInputThatIsTooLowOrTooHigh) {
    EXPECT_EQ(answers({get(ac, 9), alarm(ac, 3), get(ac, 2), get(ac, 46)}, {"supply/130/feed=89999"}),
              value(0x18) + alarm_answer(0x10) + values({1, 0}));
    EXPECT_EQ(answers({get(ac, 9), alarm(ac, 3), alarm(ac, 13), get(ac, 2), get(ac, 46)}, {"supply/130/feed=99999"}),
              value(0x20) + alarm_answer(0) + alarm_answer(0x20) + values({0, 1}));
    EXPECT_EQ(answers(gets(ac, {9, 46, 47}), {"supply/130/feed=100000"}), values({0, 0, 1}));
    EXPECT_EQ(answers({get(ac, 9), alarm(ac, 6), get(ac, 2), get(ac, 44)}, {"supply/130/feed=290001"}),
              value(0x80) + alarm_answer(0x80) + values({1, 1}));
    EXPECT_EQ(answers({set(ac, 29, 0), get(ac, 44), get(ac, 47)}, {"supply/130/feed=230000"}), ok + values({0, 0}));
}

TEST_F(PowerSupply, FaultsAndTheirAlarms) {
    const struct {
        uint32_t fault;
        int property;
        int alarm;
        uint32_t bits;
        uint32_t word;
        uint32_t not_good;
    } cases[] = {
        {0x01, 13, 10, 0x80, 0x0400, 0}, {0x02, 11, 1, 0x02, 0x0002, 0}, {0x04, 7, 5, 0x80, 0x8860, 1},
        {0x08, 8, 4, 0x80, 0x4850, 1},   {0x10, 12, 9, 0x01, 0x1000, 0},
    };
    for (const auto &each : cases) {
        EXPECT_EQ(answers({get(ac, each.property), alarm(ac, each.alarm), get(ac, 6), get(ac, 1), get(ac, 2)},
                          {"supply/130/faults=" + std::to_string(each.fault)}),
                  value(each.bits) + alarm_answer(each.bits) + values({each.word, 1, each.not_good}));
    }
    EXPECT_EQ(answers({alarm(ac, 14), alarm(ac, 15)}, {"supply/130/faults=0x0c"}),
              alarm_answer(0x80) + alarm_answer(0x80));
    EXPECT_EQ(answers({alarm(ac, 8), alarm(ac, 11), alarm(ac, 12), alarm(ac, 0), alarm(ac, 16)}),
              not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST_F(PowerSupply, TooWarmForItsLimit) {
    EXPECT_EQ(answers({set(ac, 5, 36), alarm(ac, 2), set(ac, 5, 35), alarm(ac, 2), get(ac, 10), get(ac, 5)}),
              ok + alarm_answer(0) + ok + alarm_answer(0x80) + values({0x80, 35}));
    EXPECT_EQ(answers({set(ac, 5, 201), get(ac, 5)}), bad_value + value(35));
}

TEST_F(PowerSupply, TheOutputIsSwitchedOffAndComesBackAfterItsDelay) {
    EXPECT_EQ(answers({set(ac, 27, 10), set(ac, 26, 0), get(ac, 2), get(ac, 15), get(ac, 1), set(ac, 26, 1),
                       "wait 9.999", get(ac, 2), "wait 0.001", get(ac, 2), get(ac, 15), get(ac, 44)}),
              ok + ok + values({1, 0, 0}) + ok + value(1) + values({0, 53500, 0}));
    EXPECT_EQ(answers({set(ac, 26, 2), set(ac, 26, 1), get(ac, 2)}), bad_value + ok + value(0));
}

TEST_F(PowerSupply, ItsClockStandsUntilItIsSet) {
    EXPECT_EQ(answers({"wait 5", get(ac, 28), set(ac, 28, 1000), "wait 2.5", get(ac, 28), set(ac, 26, 0), "wait 1",
                       get(ac, 25), get(ac, 28)}),
              value(0) + ok + value(1002) + ok + values({1002, 1003}));
}

TEST_F(PowerSupply, FlagsThatDriversSet) {
    EXPECT_EQ(answers({set(ac, 24, 1), get(ac, 24), get(ac, 39), set(ac, 34, 1), get(ac, 34), set(ac, 24, 2),
                       set(ac, 34, 2), get(ac, 24)}),
              ok + values({1, 0}) + ok + value(1) + bad_value + bad_value + value(1));
    EXPECT_EQ(answers({set(dc, 24, 1), get(dc, 24)}, {"supply/131/latch_stuck=1"}), ok + value(0));
}

TEST_F(PowerSupply, WhatCannotBeReadOrSet) {
    EXPECT_EQ(answers({get(ac, 29), get(ac, 45), get(ac, 48), set(ac, 0, 0), set(ac, 14, 1), get(dc, 30),
                       "drv_power_get_property(" + ac + ", type=0, value=null)"}),
              not_supported + not_supported + not_supported + not_supported + not_supported + not_supported +
                  null_pointer);
}

TEST_F(PowerSupply, TheSimpleProtocol) {
    EXPECT_EQ(answers(gets(simple, {14, 20, 16, 1, 43})), values({231000, 352, 6000, 0, 0}));
    for (const int type : {4, 6, 7, 8, 9, 11, 12, 21, 23, 27, 28, 30, 32, 34, 37, 38, 39, 41, 42, 44, 46, 47}) {
        EXPECT_EQ(answers({get(simple, type)}), not_supported) << type;
    }
    EXPECT_EQ(answers({alarm(simple, 10), alarm(simple, 2), alarm(simple, 13), set(simple, 27, 1), set(simple, 28, 1),
                       set(simple, 34, 1), set(simple, 24, 1)}),
              alarm_answer(0) + alarm_answer(0) + not_supported + not_supported + not_supported + not_supported + ok);
}

// Without input there are no figures of it, and the driver does not come up.
TEST_F(PowerSupply, TheSimpleProtocolWithoutInput) {
    EXPECT_EQ(answers(gets(simple, {14, 20, 35, 1, 2, 15, 43, 21}), {"supply/140/feed=0"}),
              not_ready + not_ready + not_ready + values({1, 1, 0, 1}) + not_supported);
    EXPECT_EQ(answers({call("deinit", simple), call("init", simple)}), ok + not_ready);
    EXPECT_EQ(answers({call("init", simple), call("init", simple)}, {"supply/140/feed=231000"}), ok + ok);
}

TEST_F(PowerSupply, AnEmptyPlaceAnswersNothing) {
    EXPECT_EQ(answers({call("init", empty), call("deinit", empty), get(empty, 1), set(empty, 29, 0), alarm(empty, 1),
                       call("get_software_info", empty), "drv_power_get_bbox_info(" + empty + ", len=8)"}),
              not_ready + not_ready + not_ready + not_ready + not_ready + not_ready + not_ready);
}

// Hands that plug supplies, and a line that breaks.
TEST_F(PowerSupply, PresenceIsALineOfItsOwn) {
    EXPECT_EQ(answers({get(empty, 0), call("init", empty)}, {"supply/141/present=1", "supply/141/feed=230000"}),
              value(0) + ok);
    EXPECT_EQ(answers({get(dc, 0), call("init", dc), get(dc, 2)}, {"supply/131/line_broken=1"}),
              value(1) + ok + value(0));
    EXPECT_EQ(answers({get(dc, 0), call("init", dc)}, {"supply/131/present=0"}), value(1) + not_ready);
}

// kestro_call gives areas of 5a: the driver writes no more than it has.
TEST_F(PowerSupply, TheBlackBoxHoldsRecordsOfEightBytes) {
    EXPECT_EQ(answers({"drv_power_get_bbox_info(" + dc + ", len=16)", "drv_power_get_bbox_info(" + ac + ", len=23)",
                       "drv_power_get_bbox_info(" + simple + ", len=16)"}),
              "0x0 buffer=[00 01 60 62 00 01 02 1c 5a 5a 5a 5a 5a 5a 5a 5a] retlen=8\n"
              "0x0 buffer=[00 01 51 8c 00 01 08 fd 00 34 bc 07 00 02 03 2c 5a 5a 5a 5a 5a 5a 5a] retlen=16\n" +
                  not_supported);
    EXPECT_EQ(answers({"drv_power_get_bbox_info(" + dc + ", len=16)"}, {"record/1310/is_torn=1"}),
              "0x0 buffer=[00 01 60 62 00 01 5a 5a 5a 5a 5a 5a 5a 5a 5a 5a] retlen=6\n");
}

namespace {

std::string board_property(const std::string &unit, int type, uint32_t len) {
    return "drv_power_get_board_property(" + unit + ", type=" + std::to_string(type) + ", len=" + std::to_string(len) +
           ")";
}

std::string set_label(const std::string &area, uint32_t len, int type = 0) {
    return "drv_power_set_board_property(" + ac + ", type=" + std::to_string(type) + ", buffer=[" + area +
           "], len=" + std::to_string(len) + ")";
}

} // namespace

TEST_F(PowerSupply, VersionsAndFeatures) {
    EXPECT_EQ(answers({board_property(ac, 1, 4), board_property(ac, 2, 4), board_property(ac, 3, 4)}),
              "0x0 buffer=[cc 00 00 00] len=4\n0x0 buffer=[03 00 00 00] len=4\n0x0 buffer=[13 00 00 00] len=4\n");
    EXPECT_EQ(answers({board_property(ac, 1, 3), board_property(ac, 0, 61), board_property(ac, 5, 99),
                       board_property(simple, 3, 99), board_property(simple, 4, 99)}),
              too_small + too_small + not_supported + not_supported + not_supported);
}

// 29 b1 is the CRC-16 of "123456789"; an area with one zero behind it has another.
TEST_F(PowerSupply, ALabelIsTakenWithItsChecksum) {
    EXPECT_EQ(answers({set_label("29 b1 31 32 33 34 35 36 37 38 39", 11), board_property(ac, 0, 12)}),
              ok + "0x0 buffer=[31 32 33 34 35 36 37 38 39] len=9\n");
    EXPECT_EQ(answers({set_label("29 b2 31 32 33 34 35 36 37 38 39", 11), set_label("29", 1),
                       set_label("29 b1 31 32 33 34 35 36 37 38 39", 11, 1)}),
              damaged + too_small + not_supported);
    EXPECT_EQ(answers({board_property(ac, 0, 12)}), "0x0 buffer=[31 32 33 34 35 36 37 38 39] len=9\n");
}

namespace {

std::string load(const std::string &unit, const std::string &image, int len, int reserved = 0) {
    return "drv_power_load_app(" + unit + ", reserved=" + std::to_string(reserved) + ", data=[" + image +
           "], len=" + std::to_string(len) + ")";
}

std::string version(const std::string &unit, int soft_id, int module_id) {
    return "drv_power_get_softver(" + unit + ", soft_id=" + std::to_string(soft_id) +
           ", module_id=" + std::to_string(module_id) + ")";
}

// Version 0x31323334 and the code "56789".
const std::string image_of_1 = "01 00 29 b1 31 32 33 34 35 36 37 38 39";
const std::string image_of_2 = "02 00 29 b1 31 32 33 34 35 36 37 38 39";

} // namespace

TEST_F(PowerSupply, ProgramsAndTheirModules) {
    EXPECT_EQ(answers({call("get_software_info", ac), version(ac, 1, 0), version(ac, 2, 1)}),
              "0x0 info={soft_cnt=2 software=[{soft_id=1 module_num=255} {soft_id=2 module_num=2} {soft_id=0 "
              "module_num=0}]}\n0x0 version=204\n0x0 version=117\n");
    EXPECT_EQ(answers({version(ac, 1, 1), version(ac, 2, 2), version(ac, 3, 0)}),
              no_such_device + no_such_device + no_such_device);
}

TEST_F(PowerSupply, AnImageBringsItsVersion) {
    EXPECT_EQ(answers({load(ac, image_of_2, 13), version(ac, 2, 0), version(ac, 2, 1), version(ac, 1, 0)}),
              ok + "0x0 version=0x31323334\n0x0 version=0x31323334\n0x0 version=204\n");
    EXPECT_EQ(answers({load(simple, image_of_1, 13), version(simple, 1, 0), version(ac, 1, 0)}),
              ok + "0x0 version=0x31323334\n0x0 version=204\n");
}

TEST_F(PowerSupply, ImagesThatAreRefused) {
    EXPECT_EQ(answers({load(dc, image_of_2, 13), load(dc, "01 00 29 b2 31 32 33 34 35 36 37 38 39", 13),
                       load(dc, image_of_1, 12), load(dc, image_of_1, 7), load(dc, image_of_1, 13, 1),
                       load(empty, image_of_1, 13), version(dc, 1, 0)}),
              no_such_device + damaged + damaged + too_small + bad_value + not_ready + "0x0 version=204\n");
}

TEST_F(PowerSupply, AProgramThatIsLostByALoad) {
    EXPECT_EQ(answers({load(ac, image_of_1, 13), call("get_software_info", ac), version(ac, 2, 0)},
                      {"program/1301/is_fragile=1"}),
              ok +
                  "0x0 info={soft_cnt=1 software=[{soft_id=1 module_num=255} {soft_id=0 module_num=0} {soft_id=0 "
                  "module_num=0}]}\n" +
                  no_such_device);
}

TEST_F(PowerSupply, NullPointersAreRefused) {
    const std::vector<std::string> lines = {
        "drv_power_get_num(slot_id=13, num=null)",
        "drv_power_get_property(" + ac + ", type=1, value=null)",
        "drv_power_get_alarm(" + ac + ", type=1, alarms=null)",
        "drv_power_get_alarm(" + ac + ", type=1, sub_alarm=null)",
        "drv_power_get_board_property(" + ac + ", type=0, buffer=null, len=9)",
        "drv_power_get_board_property(" + ac + ", type=0, len=null)",
        "drv_power_set_board_property(" + ac + ", type=0, buffer=null, len=9)",
        "drv_power_get_bbox_info(" + ac + ", buffer=null, len=9)",
        "drv_power_get_bbox_info(" + ac + ", len=9, retlen=null)",
        "drv_power_get_software_info(" + ac + ", info=null)",
        "drv_power_get_softver(" + ac + ", soft_id=1, module_id=0, version=null)",
        "drv_power_load_app(" + ac + ", reserved=0, data=null, len=9)",
    };
    std::string refused;
    for (size_t i = 0; i < lines.size(); ++i) {
        refused += null_pointer;
    }
    EXPECT_EQ(answers(lines), refused);
}

TEST_F(PowerSupply, TheHooksForCorrections) {
    EXPECT_EQ(answers({"drv_power_patch_func1(text=\"test start 1\", len=12)",
                       "drv_power_patch_func2(text=\"test start 2\", len=12)", "drv_power_patch_func1(len=0)"}),
              ok + ok + null_pointer);
}

} // namespace kestro_tests
