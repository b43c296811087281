// Sections of the identity EEPROM as eeprom_test shows and writes them, and what labels and addresses say of the same
// bytes: both ways, with the real programs on one state.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"
#include "tests/support/simulator.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string sections_line = "card eeprom section id: 0-ELABLE 1-ELABLE_BAK 6-HEADER 7-ICT 8-MAC 9-MAC_BAK "
                                  "10-CARD_TYPE 11-LOG 12-PUBLIC_KEY 15-BLACK_BOX \r\n";

// "41 42" of "AB".
std::string hex_of(const std::string &content) {
    const std::string list = bytes(content);
    return list.substr(1, list.size() - 2);
}

class EepromFaces : public testing::Test {
  protected:
    // What the sub-command prints in front of the timing lines; it has to succeed.
    std::string prints(const std::vector<std::string> &words) const {
        const process_result run = run_sim(options_, words);
        EXPECT_EQ(run.status, 0) << run.out << run.err;
        return run.out.substr(0, run.out.find("cmd_exec used second:"));
    }

    std::string answers(const std::vector<std::string> &lines) const {
        return answers_of(options_, lines);
    }

    std::string state_ = new_scratch_dir() + "/state";

  private:
    std::vector<std::string> options_{"--state", state_, "--clock", "virtual", "--board", "mpu_master"};
};

} // namespace

TEST_F(EepromFaces, ALabelIsInBothSectionsByteForByte) {
    prints({"elabel_test", "elabel_write", "0xffffffff", "0"});
    const std::string label = read_file(state_ + "/root/slot9/opt/hostx/home/elabel.txt");
    ASSERT_GT(label.size(), 100U);
    const std::string area = label + std::string(1200 - label.size(), '\0');
    for (const std::string section : {"0", "1"}) {
        EXPECT_EQ(prints({"eeprom_test", "eeprom_read", section, "0", "1200"}),
                  sections_line + area + "\r\ndrv_eeprom_read:[ret]:0\r\n" + hex_of(area) + "\r\n");
    }
}

TEST_F(EepromFaces, WhatIsWrittenIntoTheLabelIsRead) {
    prints({"eeprom_test", "eeprom_write", "0", "1", "0x42,4f,41", "3"});
    EXPECT_TRUE(prints({"elabel_test", "elabel_read", "0xffffffff", "0"})
                    .starts_with("drv_elabel_read success, inst_id=0xffffffff, elabel_id=0x0.\r\n\r\n[BOArd]\nkind="));
    EXPECT_TRUE(prints({"eeprom_test", "eeprom_read", "1", "0", "7"}).starts_with(sections_line + "[board]\r\n"));
}

// Records of the addresses: type, zero, count and base, behind a head of eight bytes.
TEST_F(EepromFaces, AddressesAreInBothSectionsByteForByte) {
    prints({"mac_test", "drv_mac_set_num", "0xffffffff", "1", "15"});
    prints({"mac_test", "drv_mac_set_addr", "0xffffffff", "1", "0x200203040506"});
    const std::string content("MAC\x01\x08\0\0\0\0\0\0\x02\x02\xa0\xc0\x09\0\0\x01\0\0\x0f\x20\x02\x03\x04\x05\x06",
                              28);
    for (const std::string section : {"8", "9"}) {
        EXPECT_EQ(prints({"eeprom_test", "eeprom_read", section, "0", "28"}),
                  sections_line + content + "\r\ndrv_eeprom_read:[ret]:0\r\n" + hex_of(content) + "\r\n");
    }
}

TEST_F(EepromFaces, WhatIsWrittenIntoTheAddressesIsRead) {
    prints({"eeprom_test", "eeprom_write", "8", "20", "0,3,0x20,02,03,04,05,0x66", "8"});
    EXPECT_EQ(answers({"drv_mac_get_num(type_id=1)", "drv_mac_get_addr(type_id=1)", "drv_mac_get_num(type_id=0)"}),
              "0x0 num=3\n0x0 addr=[20 02 03 04 05 66]\n0x0 num=2\n");
}

// A card's, by its selector, and the same bytes on the base board's bus.
TEST_F(EepromFaces, SectionsOfACardAndOfTheBus) {
    prints({"eeprom_test", "eeprom_write", "0xff000005", "10", "0", "0x12,0x34,56,67", "4"});
    EXPECT_EQ(answers({"drv_eeprom_read_data(inst_id=0xff000005, section_id=10, len=4)",
                       "drv_eeprom_read_data(section_id=10, len=4)"}),
              "0x0 buffer=[12 34 56 67]\n0x0 buffer=" + bytes("KT-M") + "\n");
    EXPECT_EQ(prints({"bus_test", "i2c_read_basebus", "0", "0", "0x50", "2800", "7", "16", "4"}),
              "i2c_bus_read_basebus:[ret]:0\r\n offset = 2800, len:4\r\n4b \r\n54 2d 4d ");
    prints({"bus_test", "i2c_write_basebus", "0", "0", "0x50", "2801", "7", "16", "0x74"});
    EXPECT_EQ(prints({"eeprom_test", "eeprom_read", "10", "0", "4"}),
              sections_line + "Kt-M\r\ndrv_eeprom_read:[ret]:0\r\n4b 74 2d 4d\r\n");
}

// A card of the format that keeps addresses and nothing else: four of them, which the test puts back.
TEST_F(EepromFaces, TheCardTestOfACard) {
    EXPECT_EQ(prints({"eeprom_test", "marlow_card_one_key_test", "0xff000004"}),
              "Success: card type is 0x2302003 \r\n"
              "Success: card eeprom divide is kv lpu card format \r\n"
              "Success: orignal mac read num 4 mac:0x2-0xa0-0xc0-0x4-0x0-0x0\r\n"
              "Success: write mac num 3 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
              "Success: read mac num 3 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
              "Success: mac read and write num and value match test pass.\r\n");
    EXPECT_EQ(answers({"drv_mac_get_num(inst_id=0xff000004, type_id=2)"}), "0x0 num=4\n");
    EXPECT_EQ(prints({"eeprom_test", "marlow_card_one_key_test", "0xff000001"}), "Success: card is not present \r\n");
}

TEST_F(EepromFaces, NvramThroughTheProgram) {
    EXPECT_EQ(prints({"eeprom_test", "nvram_write", "0", "0x100", "41,42", "2"}),
              "\r\nbuff:41,42\r\nbuff[0],value=[0x41]\r\nbuff[1],value=[0x42]\r\ndrv_nvram_write:[ret]:0\r\n");
    EXPECT_EQ(prints({"eeprom_test", "nvram_get_sync_status"}), "drv_nvram_get_sync_status:[ret]:0[status]:1\r\n");
    EXPECT_EQ(answers({"wait 2", "drv_nvram_get_sync_status()"}), "0x0 status=0\n");
    EXPECT_EQ(prints({"eeprom_test", "nvram_read", "1", "0x100", "3"}), "drv_nvram_read:[ret]:0\r\n41 42 00\r\n");
    EXPECT_EQ(prints({"eeprom_test", "nvram_get_sync_status"}), "drv_nvram_get_sync_status:[ret]:0[status]:0\r\n");
}

TEST_F(EepromFaces, InitAndExitAskForAnEeprom) {
    EXPECT_EQ(answers({"drv_eeprom_init()", "drv_eeprom_exit()", "drv_eeprom_init(inst_id=0xff000005)",
                       "drv_eeprom_exit(inst_id=0xff000006)", "drv_eeprom_init(inst_id=0xff000006)"}),
              ok + ok + ok + no_such_instance + no_such_instance);
}

} // namespace kestro_tests
