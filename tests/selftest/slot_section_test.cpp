// The slot section: range, types with their count, first number and list, and the type of each slot.
#include <gtest/gtest.h>

#include <vector>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *names[] = {"", "mpu", "lpu", "sfu", "cmu", "fan", "power", "pic", "cxp", "clk", "lcd", "hdd"};

// Every type has no slot unless a rule in front says otherwise.
constexpr const char *no_others = "drv_slot_get_num = 0 num=0\n"
                                  "drv_slot_get_start_num = 0 start_num=0\n"
                                  "drv_slot_get_list = 0 list={num=0}\n";

std::string range(int first, int last) {
    return "drv_slot_get_range() = 0 slot_min=" + std::to_string(first) + " slot_max=" + std::to_string(last) + "\n";
}

std::string num_rule(int type, const std::string &answer) {
    return "drv_slot_get_num(type=" + std::to_string(type) + ") = " + answer + "\n";
}

std::string start_rule(int type, const std::string &answer) {
    return "drv_slot_get_start_num(type=" + std::to_string(type) + ") = " + answer + "\n";
}

std::string list_rule(int type, const std::string &answer) {
    return "drv_slot_get_list(type=" + std::to_string(type) + ") = " + answer + "\n";
}

std::string type_rules(const std::vector<int> &slots, int type) {
    std::string rules;
    for (const int slot : slots) {
        rules += "drv_slot_get_type(slot_id=" + std::to_string(slot) + ") = 0 type=" + std::to_string(type) + " x1\n";
    }
    return rules;
}

std::string type_lines(const std::vector<int> &slots, int type) {
    std::string lines;
    for (const int slot : slots) {
        lines += "Slot " + std::to_string(slot) + " is " + names[type] + " " + std::to_string(type) + ".\r\n";
    }
    return lines;
}

std::string empty_type(int type) {
    const std::string which = "Slot type " + std::to_string(type) + " " + names[type];
    return which + " num is 0.\r\n" + which + " start num is 0.\r\n" + which + " list num 0 list:\r\n";
}

std::string empty_types(int first, int last) {
    std::string lines;
    for (int type = first; type <= last; ++type) {
        lines += empty_type(type);
    }
    return lines;
}

// The units of type 1 fare as the rules say; no other type has a slot, and the one slot is a line card's.
void expect_mpu(const std::string &rules, const std::string &lines, int result) {
    expect_part("slot", range(4, 4) + rules + no_others + type_rules({4}, 2),
                "Success: slot range [4-4].\r\n" + lines + empty_types(2, 11) + "Slot 4 is lpu 2.\r\n", result);
}

} // namespace

TEST(SlotSectionTest, ARangeThatCannotBeReadEndsTheSection) {
    expect_part("slot", "drv_slot_get_range() = 0x1f\n", "Error: get slot range fail 0x1f.\r\n", -1);
}

TEST(SlotSectionTest, ADriverThatWritesNothing) {
    expect_part("slot",
                "drv_slot_get_range = 0\ndrv_slot_get_num = 0\ndrv_slot_get_start_num = 0\ndrv_slot_get_list = 0\n"
                "drv_slot_get_type(slot_id=0) = 0\n",
                "Success: slot range [0-0].\r\n" + empty_types(1, 11) + "Slot 0 is unknown 0.\r\n", 0);
}

TEST(SlotSectionTest, AChassisWithoutFabricsShowsEverySlotAndAllTypesByName) {
    std::string rules;
    for (int slot = 1; slot <= 12; ++slot) {
        rules += type_rules({slot}, slot);
    }
    expect_part("slot", range(1, 12) + no_others + rules,
                "Success: slot range [1-12].\r\n" + empty_types(1, 11) +
                    "Slot 1 is mpu 1.\r\n"
                    "Slot 2 is lpu 2.\r\n"
                    "Slot 3 is sfu 3.\r\n"
                    "Slot 4 is cmu 4.\r\n"
                    "Slot 5 is fan 5.\r\n"
                    "Slot 6 is power 6.\r\n"
                    "Slot 7 is pic 7.\r\n"
                    "Slot 8 is cxp 8.\r\n"
                    "Slot 9 is clk 9.\r\n"
                    "Slot 10 is lcd 10.\r\n"
                    "Slot 11 is hdd 11.\r\n"
                    "Slot 12 is unknown 12.\r\n",
                0);
}

TEST(SlotSectionTest, ATypeWithSlots) {
    expect_mpu(num_rule(1, "0 num=2") + start_rule(1, "0 start_num=9") + list_rule(1, "0 list={num=2 slot_id=[09 ff]}"),
               "Slot type 1 mpu num is 2.\r\n"
               "Slot type 1 mpu start num is 9.\r\n"
               "Slot type 1 mpu list num 2 list: 9  255 \r\n",
               0);
}

TEST(SlotSectionTest, ACountThatIsNotThatOfTheList) {
    expect_mpu(num_rule(1, "0 num=3") + start_rule(1, "0 start_num=9") + list_rule(1, "0 list={num=2 slot_id=[09 0a]}"),
               "Slot type 1 mpu num is 3.\r\n"
               "Slot type 1 mpu start num is 9.\r\n"
               "Slot type 1 mpu list num 2 list: 9  10 \r\n"
               "Error: slot 1 mpu num is not match num 3 list.num 2.\r\n",
               -1);
}

TEST(SlotSectionTest, AStartNumberThatIsNotTheFirstOfTheList) {
    expect_mpu(num_rule(1, "0 num=2") + start_rule(1, "0 start_num=10") +
                   list_rule(1, "0 list={num=2 slot_id=[09 0a]}"),
               "Slot type 1 mpu num is 2.\r\n"
               "Slot type 1 mpu start num is 10.\r\n"
               "Slot type 1 mpu list num 2 list: 9  10 \r\n"
               "Error: slot 1 mpu start num is not match start_num 10 list.num[0] 9.\r\n",
               -1);
}

TEST(SlotSectionTest, BothMismatches) {
    expect_mpu(num_rule(1, "0 num=1") + start_rule(1, "0 start_num=8") + list_rule(1, "0 list={num=0}"),
               "Slot type 1 mpu num is 1.\r\n"
               "Slot type 1 mpu start num is 8.\r\n"
               "Slot type 1 mpu list num 0 list:\r\n"
               "Error: slot 1 mpu num is not match num 1 list.num 0.\r\n"
               "Error: slot 1 mpu start num is not match start_num 8 list.num[0] 0.\r\n",
               -1);
}

TEST(SlotSectionTest, ACountThatCannotBeReadIsNotCompared) {
    expect_mpu(num_rule(1, "0x1f") + start_rule(1, "0 start_num=9") + list_rule(1, "0 list={num=1 slot_id=[09]}"),
               "Error: get slot type mpu num fail 0x1f.\r\n"
               "Slot type 1 mpu start num is 9.\r\n"
               "Slot type 1 mpu list num 1 list: 9 \r\n",
               -1);
}

TEST(SlotSectionTest, AStartNumberThatCannotBeReadIsNotCompared) {
    expect_mpu(num_rule(1, "0 num=1") + start_rule(1, "0x2f") + list_rule(1, "0 list={num=1 slot_id=[09]}"),
               "Slot type 1 mpu num is 1.\r\n"
               "Error: get slot type mpu start num fail 0x2f.\r\n"
               "Slot type 1 mpu list num 1 list: 9 \r\n",
               -1);
}

TEST(SlotSectionTest, AListThatCannotBeReadIsNotCompared) {
    expect_mpu(num_rule(1, "0 num=1") + start_rule(1, "0 start_num=9") + list_rule(1, "0x3f"),
               "Slot type 1 mpu num is 1.\r\n"
               "Slot type 1 mpu start num is 9.\r\n"
               "Error: get slot type mpu list fail 0x3f.\r\n",
               -1);
}

TEST(SlotSectionTest, AnErrorNamesItsType) {
    std::string lines = "Success: slot range [1-1].\r\n";
    for (int type = 1; type <= 11; ++type) {
        lines += std::string("Error: get slot type ") + names[type] + " num fail 0x1f.\r\n" + "Error: get slot type " +
                 names[type] + " start num fail 0x2f.\r\n" + "Error: get slot type " + names[type] +
                 " list fail 0x3f.\r\n";
    }
    expect_part("slot",
                range(1, 1) + "drv_slot_get_num = 0x1f\ndrv_slot_get_start_num = 0x2f\ndrv_slot_get_list = 0x3f\n" +
                    "drv_slot_get_type(slot_id=1) = 0x4f\n",
                lines + "Error: get slot 1 type fail 0x4f.\r\n", -1);
}

TEST(SlotSectionTest, ASlotWithoutTypeIsFollowedByTheNext) {
    expect_part("slot", range(1, 2) + no_others + "drv_slot_get_type(slot_id=1) = 0x4f\n" + type_rules({2}, 6),
                "Success: slot range [1-2].\r\n" + empty_types(1, 11) +
                    "Error: get slot 1 type fail 0x4f.\r\n"
                    "Slot 2 is power 6.\r\n",
                -1);
}

TEST(SlotSectionTest, AListLongerThanItsRecordIsShownAsFarAsItGoes) {
    std::string bytes;
    std::string shown;
    for (int i = 0; i < 128; ++i) {
        bytes += i == 0 ? "07" : " 07";
        shown += " 7 ";
    }
    expect_mpu(num_rule(1, "0 num=129") + start_rule(1, "0 start_num=7") +
                   list_rule(1, "0 list={num=129 slot_id=[" + bytes + "]}"),
               "Slot type 1 mpu num is 129.\r\n"
               "Slot type 1 mpu start num is 7.\r\n"
               "Slot type 1 mpu list num 129 list:" +
                   shown + "\r\n",
               0);
}

namespace {

const std::string with_fabrics = "Slot type 1 mpu num is 2.\r\n"
                                 "Slot type 1 mpu start num is 2.\r\n"
                                 "Slot type 1 mpu list num 2 list: 2  3 \r\n" +
                                 empty_type(2) +
                                 "Slot type 3 sfu num is 1.\r\n"
                                 "Slot type 3 sfu start num is 7.\r\n"
                                 "Slot type 3 sfu list num 1 list: 7 \r\n" +
                                 empty_types(4, 11);
const std::string lists = list_rule(1, "0 list={num=2 slot_id=[02 03]}") + list_rule(3, "0 list={num=1 slot_id=[07]}");

// Units in slots 2 and 3, a fabric in slot 7. The rules answer the questions for the shortened list.
void expect_fabrics(const std::string &rules, const std::vector<int> &slots) {
    expect_part("slot",
                range(1, 8) + num_rule(1, "0 num=2 x1") + num_rule(3, "0 num=1 x1") +
                    start_rule(1, "0 start_num=2 x1") + start_rule(3, "0 start_num=7 x1") + lists + rules +
                    "drv_slot_get_num(type=2) = 0 num=0\n" + no_others + type_rules(slots, 2),
                "Success: slot range [1-8].\r\n" + with_fabrics + type_lines(slots, 2), 0);
}

const std::vector<int> all_slots = {1, 2, 3, 4, 5, 6, 7, 8};

} // namespace

TEST(SlotSectionTest, AChassisWithFabricsLeavesOutTheSlotsBetweenUnitsAndFabrics) {
    expect_fabrics(num_rule(3, "0 num=1 x1") + start_rule(1, "0 start_num=2 x1") + num_rule(1, "0 num=2 x1") +
                       start_rule(3, "0 start_num=7 x1"),
                   {1, 2, 3, 7, 8});
}

TEST(SlotSectionTest, FabricsThatStandBeforeTheUnitsLeaveNothingOut) {
    expect_fabrics(num_rule(3, "0 num=1 x1") + start_rule(1, "0 start_num=6 x1") + num_rule(1, "0 num=2 x1") +
                       start_rule(3, "0 start_num=2 x1"),
                   all_slots);
}

TEST(SlotSectionTest, WithoutAnyOfTheFourAnswersEverySlotIsShown) {
    const std::string fabrics = num_rule(3, "0 num=1 x1");
    const std::string units = start_rule(1, "0 start_num=2 x1");
    expect_fabrics(num_rule(3, "0x1f x1"), all_slots);
    expect_fabrics(num_rule(3, "0 num=0 x1"), all_slots);
    expect_fabrics(fabrics + start_rule(1, "0x1f x1"), all_slots);
    expect_fabrics(fabrics + units + num_rule(1, "0x1f x1"), all_slots);
    expect_fabrics(fabrics + units + num_rule(1, "0 num=2 x1") + start_rule(3, "0x1f x1"), all_slots);
}

TEST(SlotSectionTest, UnitsAtTheEndOfAllNumbersEndWithTheRange) {
    expect_fabrics(num_rule(3, "0 num=1 x1") + start_rule(1, "0 start_num=0xffffffff x1") +
                       num_rule(1, "0 num=0xffffffff x1") + start_rule(3, "0 start_num=0xffffffff x1"),
                   all_slots);
}

TEST(SlotSectionTest, OrderOfCalls) {
    std::string calls = "drv_slot_get_range()\n";
    for (int type = 1; type <= 11; ++type) {
        const std::string which = "(type=" + std::to_string(type) + ")\n";
        calls += "drv_slot_get_num" + which + "drv_slot_get_start_num" + which + "drv_slot_get_list" + which;
    }
    EXPECT_EQ(driver_calls("slot", range(1, 1) + num_rule(3, "0 num=1") + no_others + type_rules({1}, 2)),
              calls + "drv_slot_get_num(type=3)\n"
                      "drv_slot_get_start_num(type=1)\n"
                      "drv_slot_get_num(type=1)\n"
                      "drv_slot_get_start_num(type=3)\n"
                      "drv_slot_get_type(slot_id=1)\n");
}
