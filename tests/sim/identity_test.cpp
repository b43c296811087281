// Labels, bar codes, MAC addresses and EEPROM sections: read-back, limits, and what the images hold.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

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
    EXPECT_EQ(answers(board, {"drv_elabel_write(elabel_id=0, area=\"freshly_written\", len=1200)"}), ok);
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=0, len=1200)"}),
              "0x0 area=" + bytes("freshly_written", 1200) + "\n");
}

TEST(Elabel, BothCopiesStandInTheImage) {
    const test_board board = new_master();
    answers(board, {"drv_elabel_write(elabel_id=0, area=\"two_copies\", len=1200)"});
    const std::string area = "two_copies" + std::string(1190, '\0');
    const std::string bytes = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(bytes.size(), 8192U);
    EXPECT_EQ(bytes.substr(16, 1200), area);
    EXPECT_EQ(bytes.substr(1216, 1200), area);
}

TEST(Elabel, NewBoardHasTheDescribedLabel) {
    EXPECT_EQ(answers(new_master(), {"drv_elabel_read(elabel_id=0, len=29)"}),
              "0x0 area=" + bytes("[board]\nkind=main processing ") + "\n");
}

TEST(Elabel, EachInstanceHasItsOwn) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board,
                      {"drv_elabel_write(inst_id=0xff000005, elabel_id=0, area=\"card\", len=1200)",
                       "drv_elabel_read(inst_id=0xff000005, elabel_id=0, len=4)", "drv_elabel_read(elabel_id=0, len=7)",
                       "drv_elabel_read(inst_id=0xff000009, elabel_id=0, len=7)"}),
              "0x0\n0x0 area=" + bytes("card") + "\n0x0 area=" + bytes("[board]") + "\n0x0 area=" + bytes("[board]") +
                  "\n");
}

TEST(Elabel, WritesNoMoreThanTheGivenLength) {
    EXPECT_EQ(answers(new_master(),
                      {"drv_elabel_write(elabel_id=0, area=\"ABCD\", len=4)", "drv_elabel_read(elabel_id=0, len=9)"}),
              "0x0\n0x0 area=" + bytes("ABCDrd]\nk") + "\n");
}

TEST(Elabel, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=0, len=1201)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_elabel_write(elabel_id=0, area=\"x\", len=1201)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=0, len=0)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=0, len=0xffffffff)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_elabel_read(elabel_id=1, len=1200)"}), no_such_device);
    EXPECT_EQ(answers(board, {"drv_elabel_write(inst_id=0xff000006, elabel_id=0, area=\"x\", len=1200)"}),
              no_such_instance);
    EXPECT_EQ(answers(board, {"drv_elabel_read(inst_id=7, elabel_id=0, len=1200)"}), no_such_instance);
}

TEST(Elabel, OldCardsKeep1024Bytes) {
    const test_board board = new_master();
    const std::string write = "drv_elabel_write(inst_id=0xff000002, elabel_id=0, len=1200, area=";
    EXPECT_EQ(
        answers(board, {write + "\"short_one\")", "drv_elabel_read(inst_id=0xff000002, elabel_id=0, len=1200)",
                        write + "\"" + std::string(1024, 'f') + "\")", write + "\"" + std::string(1025, 'f') + "\")"}),
        "0x0\n0x0 area=" + bytes("short_one", 1200) + "\n0x0\n" + out_of_range);
}

TEST(Elabel, CardsWithoutLabel) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_elabel_read(inst_id=0xff000004, elabel_id=0, len=1200)"}), not_supported);
    EXPECT_EQ(answers(board, {"drv_elabel_init(inst_id=0xff000004)", "drv_elabel_deinit(inst_id=0xff000004)"}),
              not_supported + not_supported);
    EXPECT_EQ(answers(board, {"drv_elabel_init()", "drv_elabel_deinit(inst_id=0xff000005)",
                              "drv_elabel_init(inst_id=0xff000006)"}),
              ok + ok + no_such_instance);
}

TEST(Barcode, ReadBackAndLimits) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_barcode_write(barcode_id=2, area=\"written\", len=128)",
                              "drv_barcode_write(barcode_id=0, area=\"first\", len=128)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_barcode_read(barcode_id=2, len=128)", "drv_barcode_read(barcode_id=0, len=128)",
                              "drv_barcode_read(barcode_id=1, len=128)"}),
              "0x0 area=" + bytes("written", 128) + "\n0x0 area=" + bytes("first", 128) +
                  "\n0x0 area=" + bytes("KT-MPU-1251104008001", 128) + "\n");
    EXPECT_EQ(image(board, "eeprom-slot9.bin").substr(3072 + 256, 8), std::string("written\0", 8));
    EXPECT_EQ(answers(board, {"drv_barcode_read(barcode_id=3, len=128)"}), no_such_device);
    EXPECT_EQ(answers(board, {"drv_barcode_read(barcode_id=0, len=129)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_barcode_write(barcode_id=0, area=\"x\", len=129)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_barcode_write(barcode_id=0, area=\"x\", len=0)"}), out_of_range);
}

TEST(Barcode, OldCardsHaveNone) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_barcode_read(inst_id=0xff000002, barcode_id=0, len=128)",
                              "drv_barcode_write(inst_id=0xff000003, barcode_id=0, area=\"x\", len=128)",
                              "drv_barcode_init(inst_id=0xff000004)", "drv_barcode_deinit(inst_id=0xff000004)"}),
              not_supported + not_supported + not_supported + not_supported);
    EXPECT_EQ(answers(board, {"drv_barcode_init()", "drv_barcode_deinit()"}), ok + ok);
}

TEST(Mac, AddressesFollowOnTheBase) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_mac_get_num(type_id=1)", "drv_mac_get_addr(type_id=1)",
                              "drv_mac_get_addr_num(type_id=1, num=3, size=18)"}),
              "0x0 num=16\n0x0 addr=[02 a0 c0 09 00 20]\n0x0 buffer=[02 a0 c0 09 00 20 02 a0 c0 09 00 21 02 a0 c0 09 "
              "00 22]\n");
}

TEST(Mac, AddressesCarryIntoAllBytes) {
    EXPECT_EQ(answers(new_master(), {"drv_mac_set_addr_num(type_id=1, num=2, addr=[02 00 ff ff ff ff])",
                                     "drv_mac_get_addr_num(type_id=1, num=2, size=12)"}),
              "0x0\n0x0 buffer=[02 00 ff ff ff ff 02 01 00 00 00 00]\n");
}

TEST(Mac, IsReadBackByAnotherProcess) {
    const test_board board = new_master();
    EXPECT_EQ(
        answers(board, {"drv_mac_set_num(type_id=1, num=15)", "drv_mac_set_addr(type_id=64, addr=[20 02 03 04 05 06])",
                        "drv_mac_set_addr_num(type_id=0, num=1, addr=[20 02 03 04 05 07])"}),
        ok + ok + ok);
    EXPECT_EQ(
        answers(board, {"drv_mac_get_num(type_id=1)", "drv_mac_get_addr(type_id=1)", "drv_mac_get_num(type_id=64)",
                        "drv_mac_get_addr(type_id=64)", "drv_mac_get_num(type_id=0)", "drv_mac_get_addr(type_id=0)"}),
        "0x0 num=15\n0x0 addr=[02 a0 c0 09 00 20]\n0x0 num=8\n0x0 addr=[20 02 03 04 05 06]\n0x0 num=1\n0x0 addr=[20 02 "
        "03 04 05 07]\n");
}

TEST(Mac, BothCopiesStandInTheImage) {
    const test_board board = new_master();
    const std::string bytes = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(bytes.substr(2544, 18), std::string("MAC\x01\x08\0\0\0\0\0\0\x02\x02\xa0\xc0\x09\0\0", 18));
    EXPECT_EQ(bytes.substr(2672, 128), bytes.substr(2544, 128));
    answers(board, {"drv_mac_set_addr_num(type_id=0, num=7, addr=[20 02 03 04 05 06])"});
    const std::string after = image(board, "eeprom-slot9.bin");
    EXPECT_EQ(after.substr(2544, 18), std::string("MAC\x01\x08\0\0\0\0\0\0\x07\x20\x02\x03\x04\x05\x06", 18));
    EXPECT_EQ(after.substr(2672, 128), after.substr(2544, 128));
}

TEST(Mac, BackupServesWhenTheMasterIsLost) {
    const test_board board = new_master();
    const std::string erase = "(len=128, buffer=" + bytes(std::string(128, '\xff')) + ", section_id=";
    EXPECT_EQ(answers(board, {"drv_eeprom_write_data" + erase + "8)", "drv_mac_get_num(type_id=1)",
                              "drv_mac_set_num(type_id=1, num=9)", "drv_eeprom_read_data(section_id=8, len=4)",
                              "drv_eeprom_write_data" + erase + "8)", "drv_eeprom_write_data" + erase + "9)"}),
              "0x0\n0x0 num=16\n0x0\n0x0 buffer=[4d 41 43 01]\n0x0\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_mac_get_num(type_id=1)", "drv_mac_set_num(type_id=1, num=2)", "drv_mac_init()"}),
              damaged + damaged + damaged);
}

TEST(Mac, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_mac_get_num(type_id=2)"}), no_such_device);
    EXPECT_EQ(answers(board, {"drv_mac_set_addr(type_id=99, addr=[00 00 00 00 00 01])"}), no_such_device);
    EXPECT_EQ(answers(board, {"drv_mac_get_num(type_id=257)"}), no_such_device);
    EXPECT_EQ(answers(board, {"drv_mac_get_num(type_id=1, reserved=1)"}), bad_value);
    EXPECT_EQ(answers(board, {"drv_mac_get_addr_num(type_id=1, num=17, size=240)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_mac_get_addr_num(type_id=1, num=3, size=17)"}), too_small);
    EXPECT_EQ(answers(board, {"drv_mac_get_addr_num(type_id=1, num=0xffffffff, size=240)"}), out_of_range);
    EXPECT_EQ(answers(board, {"drv_mac_set_num(type_id=1, num=65536)"}), bad_value);
    EXPECT_EQ(answers(board, {"drv_mac_get_num(inst_id=0xff000001, type_id=1)"}), no_such_instance);
}

TEST(Mac, CardsWithAndWithout) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_mac_get_num(inst_id=0xff000005, type_id=2)",
                              "drv_mac_get_num(inst_id=0xff000004, type_id=2)",
                              "drv_mac_get_num(inst_id=0xff000002, type_id=2)", "drv_mac_init(inst_id=0xff000003)",
                              "drv_mac_init(inst_id=0xff000004)", "drv_mac_deinit()"}),
              "0x0 num=8\n0x0 num=4\n" + not_supported + not_supported + ok + ok);
}

TEST(Eeprom, ReadBackWithinASection) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_eeprom_write_data(section_id=7, offset=124, buffer=[5a 5a 5a 5a], len=4)"}), ok);
    EXPECT_EQ(
        answers(board, {"drv_eeprom_read_data(section_id=7, offset=123, len=5)",
                        "drv_eeprom_read_data(section_id=8, offset=0, len=3)",
                        "drv_eeprom_read_data(section_id=10, offset=0, len=8)",
                        "drv_eeprom_read_data(section_id=2, offset=5119, len=1)"}),
        "0x0 buffer=[00 5a 5a 5a 5a]\n0x0 buffer=[4d 41 43]\n0x0 buffer=[4b 54 2d 4d 50 55 2d 31]\n0x0 buffer=[ff]\n");
}

TEST(Eeprom, Limits) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_eeprom_read_data(section_id=3, offset=0, len=4)"}), no_such_section);
    EXPECT_EQ(answers(board, {"drv_eeprom_write_data(section_id=11, offset=0, buffer=[00 00 00 00], len=4)"}),
              no_such_section);
    for (const std::string range :
         {"section_id=7, offset=0, len=129", "section_id=7, offset=128, len=1", "section_id=7, offset=129, len=0",
          "section_id=7, offset=124, len=5", "section_id=7, offset=0xffffffff, len=2",
          "section_id=7, offset=4, len=0xffffffff", "section_id=7, offset=0, len=0"}) {
        EXPECT_EQ(answers(board,
                          {"drv_eeprom_read_data(" + range + ")", "drv_eeprom_write_data(" + range + ", buffer=[00])"}),
                  out_of_range + out_of_range)
            << range;
    }
    EXPECT_EQ(answers(board, {"drv_eeprom_read_data(inst_id=0xff000006, section_id=0, offset=0, len=4)"}),
              no_such_instance);
}

// The sections of old cards hold 1024 bytes of the 1200 that a label has.
TEST(Eeprom, LabelsOfShortSectionsAreFilledUp) {
    const test_board master = new_master();
    const std::string read = "drv_eeprom_read_data(inst_id=0xff000002, section_id=";
    const std::string label(1024, 'x');
    EXPECT_EQ(answers(master, {"drv_elabel_write(inst_id=0xff000002, elabel_id=0, area=\"" + label + "\", len=1024)",
                               read + "0, offset=0, len=1200)", read + "1, offset=0, len=1200)",
                               read + "1, offset=1023, len=177)"}),
              ok + "0x0 buffer=" + bytes(label, 1200) + "\n0x0 buffer=" + bytes(label, 1200) +
                  "\n0x0 buffer=" + bytes("x", 177) + "\n");
    EXPECT_EQ(
        answers(master, {read + "0, offset=0, len=1201)", read + "1, offset=1, len=1200)",
                         read + "1, offset=1024, len=1)", read + "0, offset=0, len=0)", read + "7, offset=0, len=65)"}),
        out_of_range + out_of_range + out_of_range + out_of_range + out_of_range);
}

TEST(Bsp, SectionsOfCards) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"find_section_info_by_section(inst_id=0xff000005, section_id=6)",
                              "find_section_info_by_section(inst_id=0xff000005, section_id=9)",
                              "find_section_info_by_section(inst_id=0xff000002, section_id=14)",
                              "find_section_info_by_section(inst_id=0xff000003, section_id=11)",
                              "find_section_info_by_section(inst_id=0xff000004, section_id=8)"}),
              "0x0 device_id=2 offset=0 size=16\n0x0 device_id=2 offset=2672 size=128\n0x0 device_id=2 offset=7532 "
              "size=600\n0x0 device_id=2 offset=2240 size=1536\n0x0 device_id=2 offset=2544 size=128\n");
    EXPECT_EQ(answers(board, {"find_section_info_by_section(inst_id=0xff000004, section_id=0)",
                              "find_section_info_by_section(inst_id=0xff000006, section_id=0)"}),
              no_such_section + no_such_instance);
}

TEST(Bsp, CardNumbers) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(answers(lpu, {"get_card_id(inst_id=0xff000005)", "get_card_id(inst_id=0x0100ffff)",
                            "get_card_id(inst_id=0x0300ffff)"}),
              "0x0 card_id=5\n0x0 card_id=1\n0x0 card_id=3\n");
    EXPECT_EQ(answers(lpu, {"get_card_id()", "get_card_id(inst_id=0x0400ffff)", "get_card_id(inst_id=0xff000011)",
                            "get_card_id(inst_id=9)"}),
              no_such_instance + no_such_instance + no_such_instance + no_such_instance);
}

TEST(Bsp, CardsOnTheBoard) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(answers(lpu, {"drv_elabel_write(inst_id=0x0100ffff, elabel_id=0, area=\"one\", len=1200)",
                            "drv_elabel_write(inst_id=0x0200ffff, elabel_id=0, area=\"two\", len=1200)",
                            "drv_elabel_read(inst_id=0x0100ffff, elabel_id=0, len=9)",
                            "drv_elabel_read(inst_id=0x0300ffff, elabel_id=0, len=9)"}),
              "0x0\n0x0\n0x0 area=" + bytes("one", 9) + "\n" + no_such_instance);
}

TEST(Bsp, Pins) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"nb_gpio_read(pin=5)", "nb_gpio_write(pin=5, level=1)"}), "0x0 level=0\n0x0\n");
    EXPECT_EQ(answers(board, {"nb_gpio_read(pin=5)", "nb_gpio_read(pin=0)", "nb_gpio_read(pin=16)"}),
              "0x0 level=1\n0x0 level=1\n0x0 level=0\n");
    EXPECT_EQ(answers(board, {"nb_gpio_write(pin=0, level=0)", "nb_gpio_write(pin=5, level=2)", "nb_gpio_read(pin=6)",
                              "nb_gpio_write(pin=6, level=1)"}),
              bad_value + bad_value + no_such_device + no_such_device);
}

TEST(Bsp, ReservedMemory) {
    EXPECT_EQ(answers(new_master(), {"nb_get_himem_info()"}), "0x0 start=0x70000000 length=0x20000\n");
}

TEST(Msc, StateOfEachBoard) {
    EXPECT_EQ(answers(new_master(), {"drv_msc_get_state(sw_mode=0)", "drv_msc_get_state(sw_mode=2)"}),
              "0x0 state=0\n0x0 state=0\n");
    EXPECT_EQ(answers(new_delivered("mpu_slave"), {"drv_msc_get_state(sw_mode=0)"}), "0x0 state=1\n");
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_msc_get_state(sw_mode=0)"}), not_supported);
    EXPECT_EQ(answers(new_master(), {"drv_msc_get_state(sw_mode=3)", "drv_msc_get_state(inst_id=0xff000005, sw_mode=0)",
                                     "drv_msc_get_state(inst_id=0xff000006, sw_mode=0)"}),
              bad_value + not_supported + no_such_instance);
}

TEST(Log, LinesAreKeptPerLog) {
    const test_board board = new_master();
    EXPECT_EQ(answers(board, {"drv_log_record(log_id=62, level=2, text=\"one\\r\\n\")",
                              "drv_log_record(log_id=0, level=1, text=\"two\\r\\n\")",
                              "drv_log_record(log_id=62, level=3, text=\"three\\r\\n\")"}),
              ok + ok + ok);
    EXPECT_EQ(read_file(board.state + "/log/slot9/62.log"), "2 one\n3 three\n");
    EXPECT_EQ(read_file(board.state + "/log/slot9/0.log"), "1 two\n");
    EXPECT_EQ(answers(board, {"drv_log_record(log_id=256, level=1, text=\"x\")",
                              "drv_log_record(log_id=1, level=4, text=\"x\")"}),
              bad_value + bad_value);
    EXPECT_EQ(odd_calls(board, {"log_without_format"}).out, null_pointer);
}

// A log has 128 KiB if nobody says otherwise; of its lines the newer half stays.
TEST(Log, OldLinesMakeRoom) {
    const test_board board = new_master();
    const std::string old_line = std::string(1023, 'o') + "\n";
    std::string full;
    for (int line = 0; line < 128; ++line) {
        full += old_line;
    }
    write_file(board.state + "/log/slot9/1.log", full);
    EXPECT_EQ(answers(board, {"drv_log_record(log_id=1, level=2, text=\"new\\r\\n\")"}), ok);
    EXPECT_EQ(read_file(board.state + "/log/slot9/1.log"), full.substr(65536) + "2 new\n");
}

} // namespace kestro_tests
