// eeprom_test: every sub-command on the real program, with the driver scripted. Two handlers are in no table: the
// program unlisted_command calls them.
#include <gtest/gtest.h>

#include "tests/modules/unlisted.h"
#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string sections_line = "card eeprom section id: 0-ELABLE 1-ELABLE_BAK 6-HEADER 7-ICT 8-MAC 9-MAC_BAK "
                                  "10-CARD_TYPE 11-LOG 12-PUBLIC_KEY 15-BLACK_BOX \r\n";

// Full-width colons in GBK.
const std::string read_usage = "parameter\xA3\xBAinst_id section_id offset len\r\n";
const std::string write_usage = "parameter\xA3\xBAinst_id section_id offset value len, for example: 0xff000005 10 0 "
                                "0x12,0x34,56,67 4 \r\n";

const std::string four_bytes = "\r\nbuff:0x12,0x34,56,67\r\nbuff[0],value=[0x12]\r\nbuff[1],value=[0x34]\r\n"
                               "buff[2],value=[0x56]\r\nbuff[3],value=[0x67]\r\n";

// A card that keeps addresses and nothing else, and keeps none at present.
const std::string kv_card = "get_card_id(inst_id=0xff000004) = 0 card_id=4\n"
                            "drv_board_get_online_status(inst_id=0xff000004) = 0 status=0\n"
                            "drv_board_get_type(inst_id=0xff000004) = 0 type=0x2302301\n"
                            "drv_init_entry(slot=0xff000004) = 0x5\n"
                            "find_section_info_by_section(inst_id=0xff000004, section_id=6) = 0x81110104\n"
                            "find_section_info_by_section(inst_id=0xff000004, section_id=0) = 0x81110104\n"
                            "find_section_info_by_section(inst_id=0xff000004, section_id=8) = 0 offset=2544 size=128\n"
                            "find_section_info_by_section(inst_id=0xff000004, section_id=9) = 0 offset=2672 size=128\n"
                            "drv_mac_get_num(inst_id=0xff000004, type_id=2, reserved=0) = 0x811101a4";

} // namespace

TEST(EepromTest, UsageListsTheSubCommandsInOrder) {
    expect_run("eeprom_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " eeprom_read                inst_id section_id offset len\n"
               " eeprom_write               inst_id section_id offset buffer len\n"
               " marlow_card_one_key_test   inst_id\n"
               " nvram_read                 inst_id chip_id offset len\n"
               " nvram_write                inst_id chip_id offset buffer len\n"
               " nvram_get_sync_status      null\n",
               0);
}

TEST(EepromTest, ReadShowsCharactersAndBytes) {
    expect_success("eeprom_test eeprom_read 0xff000005 10 2 5",
                   "drv_eeprom_read_data(inst_id=0xff000005, section_id=10, offset=2, len=5) = 0 "
                   "buffer=[4b 54 2d 31 0a]",
                   sections_line + "KT-1\n\r\ndrv_eeprom_read:[ret]:0\r\n4b 54 2d 31 0a\r\n");
}

TEST(EepromTest, ReadWithoutAnInstanceIsTheBoardsOwn) {
    expect_success("eeprom_test eeprom_read 10 0 4",
                   "drv_eeprom_read_data(inst_id=0xffffffff, section_id=10, offset=0, len=4) = 0 buffer=[41 42 43 44]",
                   sections_line + "ABCD\r\ndrv_eeprom_read:[ret]:0\r\n41 42 43 44\r\n");
}

// Erased bytes alone have no character: a zero byte has one too, and so has one beyond ASCII.
TEST(EepromTest, EachByteBelowTheErasedOneIsACharacter) {
    expect_success(
        "eeprom_test eeprom_read 0 1 0x10 010",
        "drv_eeprom_read_data(inst_id=0, section_id=1, offset=16, len=8) = 0 buffer=[41 00 ff 42 fe ff 80 ff]",
        sections_line + std::string("A\0B\xfe\x80", 5) + "\r\ndrv_eeprom_read:[ret]:0\r\n41 00 ff 42 fe ff 80 ff\r\n");
}

TEST(EepromTest, ReadOfOneByteHasNoBlank) {
    expect_success("eeprom_test eeprom_read 1 2 3 1",
                   "drv_eeprom_read_data(inst_id=1, section_id=2, offset=3, len=1) = 0 buffer=[0c]",
                   sections_line + "\x0c\r\ndrv_eeprom_read:[ret]:0\r\n0c\r\n");
}

TEST(EepromTest, ReadOfNoByte) {
    expect_success("eeprom_test eeprom_read one two three four",
                   "drv_eeprom_read_data(inst_id=0, section_id=0, offset=0, len=0) = 0",
                   sections_line + "\r\ndrv_eeprom_read:[ret]:0\r\n\r\n");
}

TEST(EepromTest, ReadOfALongSection) {
    std::string hex = "41";
    for (int i = 1; i < 1200; ++i) {
        hex += " 41";
    }
    expect_success("eeprom_test eeprom_read 0 0 1200",
                   "drv_eeprom_read_data(inst_id=0xffffffff, section_id=0, offset=0, len=1200) = 0 buffer=[" + hex +
                       "]",
                   sections_line + std::string(1200, 'A') + "\r\ndrv_eeprom_read:[ret]:0\r\n" + hex + "\r\n");
}

TEST(EepromTest, WhatADriverLeavesOutIsZero) {
    expect_success("eeprom_test eeprom_read 0 0 6",
                   "drv_eeprom_read_data(inst_id=0xffffffff, section_id=0, offset=0, len=6) = 0",
                   sections_line + std::string(6, '\0') + "\r\ndrv_eeprom_read:[ret]:0\r\n00 00 00 00 00 00\r\n");
}

TEST(EepromTest, ReadFailureShowsNoBytes) {
    expect_failure("eeprom_test eeprom_read 0xff000006 10 0 2",
                   "drv_eeprom_read_data(inst_id=0xff000006, section_id=10, offset=0, len=2) = 0x81110102 "
                   "buffer=[41 42]",
                   sections_line + "drv_eeprom_read fail. [ret]:0x81110102\r\n");
}

TEST(EepromTest, ReadWithOtherWordCounts) {
    for (const std::string words : {"", " 10", " 10 0"}) {
        expect_failure("eeprom_test eeprom_read" + words, "", read_usage);
    }
    expect_success("eeprom_test eeprom_read 1 2 3 1 9 9",
                   "drv_eeprom_read_data(inst_id=1, section_id=2, offset=3, len=1) = 0 buffer=[30]",
                   sections_line + "0\r\ndrv_eeprom_read:[ret]:0\r\n30\r\n");
}

TEST(EepromTest, AnAreaThatCannotBeHad) {
    for (const std::string line :
         {"eeprom_read 10 0 ", "eeprom_write 10 0 1 ", "nvram_read 0 0 ", "nvram_write 0 0 1 "}) {
        for (const std::string len : {"4294967295", "0x80000000", "-1"}) {
            expect_failure("eeprom_test " + line + len, "", "");
        }
    }
}

TEST(EepromTest, WriteOfAByteList) {
    expect_success(
        "eeprom_test eeprom_write 0xff000005 10 0 0x12,0x34,56,67 4",
        "drv_eeprom_write_data(inst_id=0xff000005, section_id=10, offset=0, len=4, buffer=[12 34 56 67]) = 0",
        four_bytes + "drv_eeprom_read:[ret]:0\r\n");
    expect_success("eeprom_test eeprom_write 10 0x20 0x12,0x34,56,67 4",
                   "drv_eeprom_write_data(inst_id=0xffffffff, section_id=10, offset=32, len=4, buffer=[12 34 56 67]) "
                   "= 0",
                   four_bytes + "drv_eeprom_read:[ret]:0\r\n");
}

TEST(EepromTest, WriteOfMoreAndFewerItems) {
    expect_success("eeprom_test eeprom_write 8 0 1,2,3 2",
                   "drv_eeprom_write_data(inst_id=0xffffffff, section_id=8, offset=0, len=2, buffer=[01 02]) = 0",
                   "\r\nbuff:1,2,3\r\nbuff[0],value=[0x1]\r\nbuff[1],value=[0x2]\r\ndrv_eeprom_read:[ret]:0\r\n");
    expect_success("eeprom_test eeprom_write 8 0 1fe 3",
                   "drv_eeprom_write_data(inst_id=0xffffffff, section_id=8, offset=0, len=3, buffer=[fe 00 00]) = 0",
                   "\r\nbuff:1fe\r\nbuff[0],value=[0xfe]\r\nbuff[0],value=[0xfe]\r\ndrv_eeprom_read:[ret]:0\r\n");
    expect_success("eeprom_test eeprom_write 8 0 none 0",
                   "drv_eeprom_write_data(inst_id=0xffffffff, section_id=8, offset=0, len=0) = 0",
                   "\r\nbuff:none\r\ndrv_eeprom_read:[ret]:0\r\n");
}

TEST(EepromTest, WriteFailureKeepsItsLine) {
    expect_failure("eeprom_test eeprom_write 1 2 3 4 1 9",
                   "drv_eeprom_write_data(inst_id=1, section_id=2, offset=3, len=1, buffer=[04]) = 0x81110104",
                   "\r\nbuff:4\r\nbuff[0],value=[0x4]\r\ndrv_eeprom_read:[ret]:0x81110104\r\n");
    expect_success("eeprom_test eeprom_write a b c d e",
                   "drv_eeprom_write_data(inst_id=0, section_id=0, offset=0, len=0) = 0",
                   "\r\nbuff:d\r\ndrv_eeprom_read:[ret]:0\r\n");
}

TEST(EepromTest, WriteWithTooFewWords) {
    for (const std::string words : {"", " 10", " 10 0", " 10 0 1"}) {
        expect_failure("eeprom_test eeprom_write" + words, "", write_usage);
    }
}

TEST(EepromTest, CardTestOfACardThatIsAbsent) {
    expect_success("eeprom_test marlow_card_one_key_test 0xff000005",
                   "get_card_id(inst_id=0xff000005) = 0 card_id=5\n"
                   "drv_board_get_online_status(inst_id=0xff000005) = 0 status=1",
                   "Success: card is not present \r\n");
    expect_success("eeprom_test marlow_card_one_key_test card 5",
                   "get_card_id(inst_id=0) = 0 card_id=5\n"
                   "drv_board_get_online_status(inst_id=0) = 0 status=1",
                   "Success: card is not present \r\n");
}

TEST(EepromTest, CardTestThatRecognisesTheCard) {
    expect_success("eeprom_test marlow_card_one_key_test 0xff000004", kv_card,
                   "Success: card type is 0x2302301 \r\n"
                   "Success: card eeprom divide is kv lpu card format \r\n"
                   "Info   : card mac is not support.\r\n");
}

TEST(EepromTest, CardTestThatFails) {
    expect_failure("eeprom_test marlow_card_one_key_test 0xff000005",
                   "get_card_id(inst_id=0xff000005) = 0 card_id=5\n"
                   "drv_board_get_online_status(inst_id=0xff000005) = 0x12",
                   "Error: get present fail :0x12");
    expect_failure("eeprom_test marlow_card_one_key_test 0xff000005", "get_card_id(inst_id=0xff000005) = 2 card_id=5",
                   "card get card id, invalid inst_id:0xff000005");
    expect_failure("eeprom_test marlow_card_one_key_test", "", "kestro_test card_eeprom_test inst_id\r\n");
}

TEST(EepromTest, NvramRead) {
    expect_success("eeprom_test nvram_read 0xff00000a 1 0x10 3",
                   "drv_nvram_read(inst_id=0xff00000a, chip_id=1, offset=16, len=3) = 0 buffer=[41 0b ff]",
                   "drv_nvram_read:[ret]:0\r\n41 0b ff\r\n");
    expect_success("eeprom_test nvram_read 1 16 1",
                   "drv_nvram_read(inst_id=0xffffffff, chip_id=1, offset=16, len=1) = 0 buffer=[7f]",
                   "drv_nvram_read:[ret]:0\r\n7f\r\n");
    expect_success("eeprom_test nvram_read 1 2 4294967295 0 5",
                   "drv_nvram_read(inst_id=1, chip_id=2, offset=0xffffffff, len=0) = 0",
                   "drv_nvram_read:[ret]:0\r\n\r\n");
    expect_success("eeprom_test nvram_read one two three four",
                   "drv_nvram_read(inst_id=0, chip_id=0, offset=0, len=0) = 0", "drv_nvram_read:[ret]:0\r\n\r\n");
}

TEST(EepromTest, NvramReadFailureShowsWhatThereIs) {
    expect_failure("eeprom_test nvram_read 0 0 3",
                   "drv_nvram_read(inst_id=0xffffffff, chip_id=0, offset=0, len=3) = 0x811101a4 buffer=[41 42]",
                   "drv_nvram_read:[ret]:0x811101a4\r\n41 42 00\r\n");
    for (const std::string words : {"", " 0", " 0 0"}) {
        expect_failure("eeprom_test nvram_read" + words, "", "");
    }
}

TEST(EepromTest, NvramWrite) {
    expect_success("eeprom_test nvram_write 0xff00000a 1 0x10 0x12,0x34,56,67 4",
                   "drv_nvram_write(inst_id=0xff00000a, chip_id=1, offset=16, len=4, buffer=[12 34 56 67]) = 0",
                   four_bytes + "drv_nvram_write:[ret]:0\r\n");
    expect_success("eeprom_test nvram_write 1 16 0x12,0x34,56,67 4",
                   "drv_nvram_write(inst_id=0xffffffff, chip_id=1, offset=16, len=4, buffer=[12 34 56 67]) = 0",
                   four_bytes + "drv_nvram_write:[ret]:0\r\n");
    expect_failure("eeprom_test nvram_write 1 2 3 4 1 9",
                   "drv_nvram_write(inst_id=1, chip_id=2, offset=3, len=1, buffer=[04]) = 0x81110107",
                   "\r\nbuff:4\r\nbuff[0],value=[0x4]\r\ndrv_nvram_write:[ret]:0x81110107\r\n");
    expect_success("eeprom_test nvram_write a b c d e", "drv_nvram_write(inst_id=0, chip_id=0, offset=0, len=0) = 0",
                   "\r\nbuff:d\r\ndrv_nvram_write:[ret]:0\r\n");
    for (const std::string words : {"", " 0", " 0 0", " 0 0 1"}) {
        expect_failure("eeprom_test nvram_write" + words, "", "");
    }
}

TEST(EepromTest, NvramSyncStatus) {
    expect_success("eeprom_test nvram_get_sync_status",
                   "drv_nvram_get_sync_status(inst_id=0xffffffff, pair_id=0) = 0 status=0xabcdef01",
                   "drv_nvram_get_sync_status:[ret]:0[status]:abcdef01\r\n");
    expect_success("eeprom_test nvram_get_sync_status 5 6",
                   "drv_nvram_get_sync_status(inst_id=0xffffffff, pair_id=0) = 0",
                   "drv_nvram_get_sync_status:[ret]:0[status]:0\r\n");
    expect_failure("eeprom_test nvram_get_sync_status",
                   "drv_nvram_get_sync_status(inst_id=0xffffffff, pair_id=0) = 0x811101a4 status=2",
                   "drv_nvram_get_sync_status:[ret]:811101a4[status]:2\r\n");
}

TEST(EepromTest, InitAndExitAreInNoTable) {
    expect_unlisted("eeprom_init 0xff000005", "drv_eeprom_init(inst_id=0xff000005) = 0", "drv_eeprom_init:[ret]:0\r\n",
                    "0");
    expect_unlisted("eeprom_init one 2", "drv_eeprom_init(inst_id=0) = 0x12", "drv_eeprom_init:[ret]:0x12\r\n", "18");
    expect_unlisted("eeprom_init", "", "kestro_test eeprom_test eeprom_init inst_id\r\n", "-1");
    expect_unlisted("eeprom_exit 0xff000005", "drv_eeprom_exit(inst_id=0xff000005) = 0", "drv_eeprom_exit:[ret]:0\r\n",
                    "0");
    expect_unlisted("eeprom_exit one 2", "drv_eeprom_exit(inst_id=0) = 0x811101a4",
                    "drv_eeprom_exit:[ret]:0x811101a4\r\n", "-2129591900");
    expect_unlisted("eeprom_exit", "", "kestro_test eeprom_test eeprom_exit inst_id\r\n", "-1");
    expect_run("eeprom_test eeprom_init 1", "",
               "kestro_test: option eeprom_init not recognised.\n\neeprom_init 1 \nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " eeprom_read                inst_id section_id offset len\n"
               " eeprom_write               inst_id section_id offset buffer len\n"
               " marlow_card_one_key_test   inst_id\n"
               " nvram_read                 inst_id chip_id offset len\n"
               " nvram_write                inst_id chip_id offset buffer len\n"
               " nvram_get_sync_status      null\n",
               0);
}
