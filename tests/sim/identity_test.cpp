// Labels, bar codes, MAC addresses and EEPROM sections: read-back, limits, and what the images hold.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string no_such_section = "0x81110104\n";
const std::string out_of_range = "0x81110107\n";
const std::string damaged = "0x81110109\n";

test_board new_master() {
    return new_delivered("mpu_master");
}

std::string image(const test_board &board, const std::string &name) {
    return read_file(board.state + "/images/" + name);
}

} // namespace

TEST(Elabel, IsReadBackByAnotherProcess) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"elabel_write" + self + "0 1200 freshly_written"}), ok);
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "0 1200"}), "0x0 \"freshly_written\"\n");
}

TEST(Elabel, BothCopiesStandInTheImage) {
    const test_board board = new_master();
    calls_print(board, {"elabel_write" + self + "0 1200 two_copies"});
    const std::string area = "two_copies" + std::string(1190, '\0');
    const std::string bytes = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(bytes.size(), 8192U);
    EXPECT_EQ(bytes.substr(16, 1200), area);
    EXPECT_EQ(bytes.substr(1216, 1200), area);
}

TEST(Elabel, NewBoardHasTheDescribedLabel) {
    EXPECT_EQ(calls_print(new_master(), {"elabel_read" + self + "0 29"}), "0x0 \"[board]\\0akind=main processing \"\n");
}

TEST(Elabel, EachInstanceHasItsOwn) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"elabel_write 0xff000005 0 1200 card", "elabel_read 0xff000005 0 4",
                                  "elabel_read" + self + "0 7", "elabel_read 0xff000009 0 7"}),
              "0x0\n0x0 \"card\"\n0x0 \"[board]\"\n0x0 \"[board]\"\n");
}

TEST(Elabel, WritesNoMoreThanTheGivenLength) {
    EXPECT_EQ(calls_print(new_master(), {"elabel_write" + self + "0 4 ABCD", "elabel_read" + self + "0 9"}),
              "0x0\n0x0 \"ABCDrd]\\0ak\"\n");
}

TEST(Elabel, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "0 1201"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"elabel_write" + self + "0 1201 x"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "0 0"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "0 0xffffffff"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"elabel_read" + self + "1 1200"}), no_such_device);
    EXPECT_EQ(calls_print(board, {"elabel_write 0xff000006 0 1200 x"}), no_such_instance);
    EXPECT_EQ(calls_print(board, {"elabel_read 7 0 1200"}), no_such_instance);
}

TEST(Elabel, OldCardsKeep1024Bytes) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"elabel_write 0xff000002 0 1200 short_one", "elabel_read 0xff000002 0 1200",
                                  "elabel_write 0xff000002 0 1200 " + std::string(1024, 'f'),
                                  "elabel_write 0xff000002 0 1200 " + std::string(1025, 'f')}),
              "0x0\n0x0 \"short_one\"\n0x0\n" + out_of_range);
}

TEST(Elabel, CardsWithoutLabel) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"elabel_read 0xff000004 0 1200"}), not_supported);
    EXPECT_EQ(calls_print(board, {"elabel_init 0xff000004", "elabel_deinit 0xff000004"}),
              not_supported + not_supported);
    EXPECT_EQ(calls_print(board, {"elabel_init" + self, "elabel_deinit 0xff000005", "elabel_init 0xff000006"}),
              ok + ok + no_such_instance);
}

TEST(Barcode, ReadBackAndLimits) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"barcode_write" + self + "2 128 written", "barcode_write" + self + "0 128 first"}),
              ok + ok);
    EXPECT_EQ(calls_print(board, {"barcode_read" + self + "2 128", "barcode_read" + self + "0 128",
                                  "barcode_read" + self + "1 128"}),
              "0x0 \"written\"\n0x0 \"first\"\n0x0 \"KT-MPU-1251104008001\"\n");
    EXPECT_EQ(image(board, "eeprom-slot9.bin").substr(3072 + 256, 8), std::string("written\0", 8));
    EXPECT_EQ(calls_print(board, {"barcode_read" + self + "3 128"}), no_such_device);
    EXPECT_EQ(calls_print(board, {"barcode_read" + self + "0 129"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"barcode_write" + self + "0 129 x"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"barcode_write" + self + "0 0 x"}), out_of_range);
}

TEST(Barcode, OldCardsHaveNone) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"barcode_read 0xff000002 0 128", "barcode_write 0xff000003 0 128 x",
                                  "barcode_init 0xff000004", "barcode_deinit 0xff000004"}),
              not_supported + not_supported + not_supported + not_supported);
    EXPECT_EQ(calls_print(board, {"barcode_init" + self, "barcode_deinit" + self}), ok + ok);
}

TEST(Mac, AddressesFollowOnTheBase) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"mac_get_num" + self + "1 0", "mac_get_addr" + self + "1",
                                  "mac_get_addr_num" + self + "1 3 18"}),
              "0x0 16\n0x0 [02 a0 c0 09 00 20]\n"
              "0x0 [02 a0 c0 09 00 20 02 a0 c0 09 00 21 02 a0 c0 09 00 22]\n");
}

TEST(Mac, AddressesCarryIntoAllBytes) {
    EXPECT_EQ(calls_print(new_master(),
                          {"mac_set_addr_num" + self + "1 2 0x0200ffffffff", "mac_get_addr_num" + self + "1 2 12"}),
              "0x0\n0x0 [02 00 ff ff ff ff 02 01 00 00 00 00]\n");
}

TEST(Mac, IsReadBackByAnotherProcess) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"mac_set_num" + self + "1 15", "mac_set_addr" + self + "64 0x200203040506",
                                  "mac_set_addr_num" + self + "0 1 0x200203040507"}),
              ok + ok + ok);
    EXPECT_EQ(
        calls_print(board, {"mac_get_num" + self + "1 0", "mac_get_addr" + self + "1", "mac_get_num" + self + "64 0",
                            "mac_get_addr" + self + "64", "mac_get_num" + self + "0 0", "mac_get_addr" + self + "0"}),
        "0x0 15\n0x0 [02 a0 c0 09 00 20]\n0x0 8\n0x0 [20 02 03 04 05 06]\n0x0 1\n0x0 [20 02 03 04 05 07]\n");
}

TEST(Mac, BothCopiesStandInTheImage) {
    const test_board board = new_master();
    const std::string bytes = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(bytes.substr(2544, 18), std::string("MAC\x01\x08\0\0\0\0\0\0\x02\x02\xa0\xc0\x09\0\0", 18));
    EXPECT_EQ(bytes.substr(2672, 128), bytes.substr(2544, 128));
    calls_print(board, {"mac_set_addr_num" + self + "0 7 0x200203040506"});
    const std::string after = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(after.substr(2544, 18), std::string("MAC\x01\x08\0\0\0\0\0\0\x07\x20\x02\x03\x04\x05\x06", 18));
    EXPECT_EQ(after.substr(2672, 128), after.substr(2544, 128));
}

TEST(Mac, BackupServesWhenTheMasterIsLost) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"eeprom_write" + self + "8 0 128 0xff", "mac_get_num" + self + "1 0",
                                  "mac_set_num" + self + "1 9", "eeprom_read" + self + "8 0 4",
                                  "eeprom_write" + self + "8 0 128 0xff", "eeprom_write" + self + "9 0 128 0xff"}),
              "0x0\n0x0 16\n0x0\n0x0 [4d 41 43 01]\n0x0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"mac_get_num" + self + "1 0", "mac_set_num" + self + "1 2", "mac_init" + self}),
              damaged + damaged + damaged);
}

TEST(Mac, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"mac_get_num" + self + "2 0"}), no_such_device);
    EXPECT_EQ(calls_print(board, {"mac_set_addr" + self + "99 1"}), no_such_device);
    EXPECT_EQ(calls_print(board, {"mac_get_num" + self + "257 0"}), no_such_device);
    EXPECT_EQ(calls_print(board, {"mac_get_num" + self + "1 1"}), bad_value);
    EXPECT_EQ(calls_print(board, {"mac_get_addr_num" + self + "1 17 240"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"mac_get_addr_num" + self + "1 3 17"}), too_small);
    EXPECT_EQ(calls_print(board, {"mac_get_addr_num" + self + "1 0xffffffff 240"}), out_of_range);
    EXPECT_EQ(calls_print(board, {"mac_set_num" + self + "1 65536"}), bad_value);
    EXPECT_EQ(calls_print(board, {"mac_get_num 0xff000001 1 0"}), no_such_instance);
}

TEST(Mac, CardsWithAndWithout) {
    const test_board board = new_master();
    EXPECT_EQ(
        calls_print(board, {"mac_get_num 0xff000005 2 0", "mac_get_num 0xff000004 2 0", "mac_get_num 0xff000002 2 0",
                            "mac_init 0xff000003", "mac_init 0xff000004", "mac_deinit" + self}),
        "0x0 8\n0x0 4\n" + not_supported + not_supported + ok + ok);
}

TEST(Eeprom, ReadBackWithinASection) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"eeprom_write" + self + "7 124 4 0x5a"}), ok);
    EXPECT_EQ(calls_print(board, {"eeprom_read" + self + "7 123 5", "eeprom_read" + self + "8 0 3",
                                  "eeprom_read" + self + "10 0 8", "eeprom_read" + self + "2 5119 1"}),
              "0x0 [00 5a 5a 5a 5a]\n0x0 [4d 41 43]\n0x0 [4b 54 2d 4d 50 55 2d 31]\n0x0 [ff]\n");
}

TEST(Eeprom, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"eeprom_read" + self + "3 0 4"}), no_such_section);
    EXPECT_EQ(calls_print(board, {"eeprom_write" + self + "11 0 4 0"}), no_such_section);
    for (const char *range :
         {"7 0 129", "7 128 1", "7 129 0", "7 124 5", "7 0xffffffff 2", "7 4 0xffffffff", "7 0 0"}) {
        EXPECT_EQ(calls_print(board, {"eeprom_read" + self + range}), out_of_range) << range;
        EXPECT_EQ(calls_print(board, {"eeprom_write" + self + range + " 0"}), out_of_range) << range;
    }
    EXPECT_EQ(calls_print(board, {"eeprom_read 0xff000006 0 0 4"}), no_such_instance);
}

TEST(Bsp, SectionsOfCards) {
    const test_board board = new_master();
    EXPECT_EQ(
        calls_print(board, {"find_section 0xff000005 6", "find_section 0xff000005 9", "find_section 0xff000002 14",
                            "find_section 0xff000003 11", "find_section 0xff000004 8"}),
        "0x0 2 0 16\n0x0 2 2672 128\n0x0 2 7532 600\n0x0 2 2240 1536\n0x0 2 2544 128\n");
    EXPECT_EQ(calls_print(board, {"find_section 0xff000004 0", "find_section 0xff000006 0"}),
              no_such_section + no_such_instance);
}

TEST(Bsp, CardNumbers) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(calls_print(lpu, {"card_id 0xff000005", "card_id 0x0100ffff", "card_id 0x0300ffff"}),
              "0x0 5\n0x0 1\n0x0 3\n");
    EXPECT_EQ(calls_print(lpu, {"card_id 0xffffffff", "card_id 0x0400ffff", "card_id 0xff000011", "card_id 9"}),
              no_such_instance + no_such_instance + no_such_instance + no_such_instance);
}

TEST(Bsp, CardsOnTheBoard) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(calls_print(lpu, {"elabel_write 0x0100ffff 0 1200 one", "elabel_write 0x0200ffff 0 1200 two",
                                "elabel_read 0x0100ffff 0 9", "elabel_read 0x0300ffff 0 9"}),
              "0x0\n0x0\n0x0 \"one\"\n" + no_such_instance);
}

TEST(Bsp, Pins) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"gpio_read 5", "gpio_write 5 1"}), "0x0 0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"gpio_read 5", "gpio_read 0", "gpio_read 16"}), "0x0 1\n0x0 1\n0x0 0\n");
    EXPECT_EQ(calls_print(board, {"gpio_write 0 0", "gpio_write 5 2", "gpio_read 6", "gpio_write 6 1"}),
              bad_value + bad_value + no_such_device + no_such_device);
}

TEST(Bsp, ReservedMemory) {
    EXPECT_EQ(calls_print(new_master(), {"himem"}), "0x0 0x70000000 0x10000000\n");
}

TEST(Msc, StateOfEachBoard) {
    EXPECT_EQ(calls_print(new_master(), {"msc_get_state" + self + "0", "msc_get_state" + self + "2"}),
              "0x0 0\n0x0 0\n");
    EXPECT_EQ(calls_print(new_delivered("mpu_slave"), {"msc_get_state" + self + "0"}), "0x0 1\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"msc_get_state" + self + "0"}), not_supported);
    EXPECT_EQ(calls_print(new_master(),
                          {"msc_get_state" + self + "3", "msc_get_state 0xff000005 0", "msc_get_state 0xff000006 0"}),
              bad_value + not_supported + no_such_instance);
}

TEST(Log, LinesAreKeptPerLog) {
    const test_board board = new_master();
    EXPECT_EQ(calls_print(board, {"log 62 2 one", "log 0 1 two", "log 62 3 three"}), ok + ok + ok);
    EXPECT_EQ(read_file(board.state + "/log/slot9/62.log"), "2 one\n3 three\n");
    EXPECT_EQ(read_file(board.state + "/log/slot9/0.log"), "1 two\n");
    EXPECT_EQ(calls_print(board, {"log 256 1 x", "log 1 4 x", "log_without_format"}),
              bad_value + bad_value + "0x81110101\n");
}

TEST(Log, OldLinesMakeRoom) {
    const test_board board = new_master();
    write_file(board.state + "/log/slot9/5.log", std::string(65536, 'o'));
    EXPECT_EQ(calls_print(board, {"log 5 2 new"}), ok);
    EXPECT_EQ(read_file(board.state + "/log/slot9/5.log"), "2 new\n");
    EXPECT_EQ(read_file(board.state + "/log/slot9/5.old"), std::string(65536, 'o'));
}

TEST(Drivers, NullPointersAreRefused) {
    const std::string answers = calls_print(new_master(), {"null_pointers"});
    std::string expected;
    for (int i = 0; i < 34; ++i) {
        expected += "0x81110101\n";
    }
    EXPECT_EQ(answers, expected);
}

} // namespace kestro_tests
