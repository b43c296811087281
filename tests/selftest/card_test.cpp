// The card test: presence and type, the layout of the EEPROM, and what is tested of a card of each layout.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/selftest/part.h"
#include "tests/support/driver_calls.h"

using namespace kestro_tests;

namespace {

const std::string no_section = "0x81110104";
const std::string not_supported = "0x811101a4";

const std::string no_mac_line = "Info   : card mac is not support.\r\n";
const std::string no_temperature_line = "card is not support temperature access from board.\r\n";
const std::string no_voltage_line = "card is not support voltage access from board.\r\n";
const std::string type_line = "Success: card type is 0x2302201 \r\n";

std::string call(const std::string &operation, const std::string &inputs, const std::string &answer) {
    return operation + "(inst_id=0xff000005" + (inputs.empty() ? "" : ", " + inputs) + ") = " + answer + "\n";
}

// ---- the steps before the layout

std::string found_card() {
    return call("get_card_id", "", "0 card_id=5") + call("drv_board_get_online_status", "", "0 status=0") +
           call("drv_board_get_type", "", "0 type=0x02302201");
}

std::string init(const std::string &answer) {
    return "drv_init_entry(slot=0xff000005) = " + answer + "\n";
}

// ---- layouts

std::string section(int id, const std::string &answer) {
    return call("find_section_info_by_section", "section_id=" + std::to_string(id), answer);
}

std::string section_at(int id, int offset, int size) {
    return section(id, "0 device_id=2 offset=" + std::to_string(offset) + " size=" + std::to_string(size));
}

const std::string next_generation = section_at(6, 0, 16) + section_at(0, 16, 1200) + section_at(1, 1216, 1200) +
                                    section_at(7, 2416, 128) + section_at(8, 2544, 128) + section_at(9, 2672, 128) +
                                    section_at(10, 2800, 24) + section_at(2, 3072, 5120);
const std::string router_old = section(6, no_section) + section_at(0, 0, 1024) + section_at(8, 2048, 4096) +
                               section_at(1, 6144, 1024) + section_at(7, 7168, 64) + section_at(12, 7232, 300) +
                               section_at(14, 7532, 600);
const std::string qrm_old = section(6, no_section) + section_at(0, 0, 1024) + section_at(7, 2048, 128) +
                            section_at(11, 2240, 1536) + section_at(12, 3776, 300) + section_at(13, 7296, 64) +
                            section_at(8, 8016, 176);
const std::string kv_lpu =
    section(6, no_section) + section(0, no_section) + section_at(8, 2544, 128) + section_at(9, 2672, 128);

std::string divided(const std::string &name) {
    return "Success: card eeprom divide is " + name + " \r\n";
}

const std::string no_layout_lines = "Error: card eeprom divide is not match any format \r\n"
                                    "next generation card format: \r\n"
                                    "section id: 6 offset 0 size 16 \r\n"
                                    "section id: 0 offset 16 size 1200 \r\n"
                                    "section id: 1 offset 1216 size 1200 \r\n"
                                    "section id: 7 offset 2416 size 128 \r\n"
                                    "section id: 8 offset 2544 size 128 \r\n"
                                    "section id: 9 offset 2672 size 128 \r\n"
                                    "section id: 10 offset 2800 size 24 \r\n"
                                    "section id: 2 offset 3072 size 5120 \r\n"
                                    "router old card format: \r\n"
                                    "section id: 0 offset 0 size 1024 \r\n"
                                    "section id: 8 offset 2048 size 4096 \r\n"
                                    "section id: 1 offset 6144 size 1024 \r\n"
                                    "section id: 7 offset 7168 size 64 \r\n"
                                    "section id: 12 offset 7232 size 300 \r\n"
                                    "section id: 14 offset 7532 size 600 \r\n"
                                    "qrm old card format: \r\n"
                                    "section id: 0 offset 0 size 1024 \r\n"
                                    "section id: 7 offset 2048 size 128 \r\n"
                                    "section id: 11 offset 2240 size 1536 \r\n"
                                    "section id: 12 offset 3776 size 300 \r\n"
                                    "section id: 13 offset 7296 size 64 \r\n"
                                    "section id: 8 offset 8016 size 176 \r\n";

// ---- identity storage

std::string section_content(int id, int size, const std::string &text) {
    return call("drv_eeprom_read_data", "section_id=" + std::to_string(id) + ", offset=0, len=" + std::to_string(size),
                "0 buffer=\"" + text + "\" x1");
}

const std::string same_labels = section_content(0, 1200, "LABEL") + section_content(1, 1200, "LABEL");
const std::string same_labels_lines = "Success: master elabel read test pass.\r\n"
                                      "Success: backup elabel read test pass.\r\n"
                                      "Success: master and backup elabel uniformity check pass.\r\n";
const std::string same_macs = section_content(8, 128, "MAC") + section_content(9, 128, "MAC");
const std::string same_macs_lines = "Success: master mac read test pass.\r\n"
                                    "Success: master and backup mac uniformity check pass. \r\n";

std::string mac_count(const std::string &answer) {
    return call("drv_mac_get_num", "type_id=2, reserved=0", answer);
}

// One step of the card MAC: the question whether there is any, then the write test on its one address.
std::string good_mac() {
    const auto addresses = [](const std::string &bytes) {
        return call("drv_mac_get_addr_num", "type_id=2, num=1, size=6", "0 buffer=" + bytes + " x1");
    };
    const auto write = [](const std::string &bytes) {
        return call("drv_mac_set_num", "type_id=2, num=1, reserved=0", "0 x1") +
               call("drv_mac_set_addr_num", "type_id=2, num=1, addr=" + bytes, "0 x1");
    };
    const std::string saved = "[10 11 12 13 14 15]";
    const std::string test = "[20 02 03 04 05 06]";
    return mac_count("0 num=1 x1") + mac_count("0 num=1 x1") + addresses(saved) + write(test) +
           mac_count("0 num=1 x1") + addresses(test) + write(saved);
}

const std::string good_mac_lines = "Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n"
                                   "Success: write mac num 1 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
                                   "Success: read mac num 1 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
                                   "Success: mac read and write num and value match test pass.\r\n";

// The count that fails in the write test: for the step itself it is no answer either, but not "not supported".
const std::string bad_mac = mac_count("0x31 x1") + mac_count("0x31 x1");
const std::string bad_mac_lines = "Error: mac num read fail, inst_id=0xff000005, mac_type=0x2 card-mac, ret=0x31.\r\n"
                                  "Error: orignal mac read fail.ret =0x31 original_mac_num = 0\r\n";

const std::string no_mac = mac_count(not_supported + " x1") + mac_count(not_supported + " x1");

// The label's write test, with the built-in text.
std::string good_label() {
    const auto read = [](const std::string &text) {
        return call("drv_elabel_read", "elabel_id=0, len=1200", "0 area=\"" + text + "\" x1");
    };
    const auto write = [](const std::string &text) {
        return call("drv_elabel_write", "elabel_id=0, area=\"" + text + "\", len=1200", "0 x1");
    };
    const std::string test = "elable test test test test ...";
    return read("SAVED") + write(test) + read(test) + write("SAVED");
}

const std::string good_label_lines =
    "open file[/opt/hostx/home/elabel.txt] fail\r\n"
    "there is no such file: /opt/hostx/home/elabel.txt. so load test info :elable test test test test ...\r\n"
    "Success: elabel read and write match test pass.\r\n";

std::string good_barcode() {
    const auto read = [](const std::string &text) {
        return call("drv_barcode_read", "barcode_id=0, len=128", "0 area=\"" + text + "\" x1");
    };
    const auto write = [](const std::string &text) {
        return call("drv_barcode_write", "barcode_id=0, area=\"" + text + "\", len=128", "0 x1");
    };
    const std::string test = "Hello test now...";
    return read("CODE") + write(test) + read(test) + write("CODE");
}

const std::string good_barcode_lines = "Success: barcode read and write match test pass.\r\n";
const std::string no_barcode = call("drv_barcode_read", "barcode_id=0, len=128", not_supported);
const std::string no_barcode_line = "Info   : barcode is not support.\r\n";

std::string power(const std::string &answer) {
    return call("drv_board_get_power", "", answer);
}

const std::string power_line = "Success: card get power pass power = 0x12. \r\n";

void expect_card(const std::string &script, const std::string &lines, int result) {
    expect_part("card_in_slot_5", script, lines, result);
}

// ---- a card without addresses and bar code, in a layout whose sensors the board does not read

std::string short_card(const std::string &before, const std::string &behind = power("0 power=18")) {
    return before + no_mac + same_labels + good_label() + no_barcode + behind;
}

std::string short_card_lines(const std::string &before, const std::string &behind = power_line) {
    return before + no_mac_line + same_labels_lines + good_label_lines + no_barcode_line + no_mac_line +
           no_temperature_line + no_voltage_line + behind;
}

} // namespace

TEST(CardTest, ANextGenerationCard) {
    expect_card(found_card() + init("0") + next_generation + same_macs + good_mac() + same_labels + good_label() +
                    good_barcode() + same_macs + good_mac() + power("0 power=18"),
                type_line + divided("next generation card format") + same_macs_lines + good_mac_lines +
                    same_labels_lines + good_label_lines + good_barcode_lines + same_macs_lines + good_mac_lines +
                    no_temperature_line + no_voltage_line + power_line,
                0);
}

TEST(CardTest, ANumberThatCannotBeHadEndsTheTest) {
    expect_card(call("get_card_id", "", "0x31 card_id=255"), "card get card id, invalid inst_id:0xff000005", 0x31);
    expect_card(call("get_card_id", "", "2 card_id=0"), "card get card id, invalid inst_id:0xff000005", 2);
}

TEST(CardTest, AFailureThatGivesNoNumberDoesNot) {
    const std::string absent = call("drv_board_get_online_status", "", "0 status=1");
    const std::string absent_line = "Success: card is not present \r\n";
    for (const std::string answer : {"0x31", "0x31 card_id=256", "1 card_id=5", "1", "0"}) {
        expect_card(call("get_card_id", "", answer) + absent, absent_line, 0);
    }
}

TEST(CardTest, AnUnknownPresenceEndsTheTest) {
    expect_card(call("get_card_id", "", "0 card_id=5") + call("drv_board_get_online_status", "", "0x32 status=1"),
                "Error: get present fail :0x32", 0x32);
}

TEST(CardTest, ACardWithoutATypeEndsTheTest) {
    const std::string before = call("get_card_id", "", "0 card_id=5") + call("drv_board_get_online_status", "", "0");
    const auto type = [&](const std::string &answer) { return before + call("drv_board_get_type", "", answer); };
    expect_card(type("0x33"), "Error: get type fail :0x33 type 0x0", -1);
    expect_card(type("0x33 type=5"), "Error: get type fail :0x33 type 0x5", -1);
    expect_card(type("0"), "Error: get type fail :0x0 type 0x0", -1);
    expect_card(type("0 type=0xffffffff"), "Error: get type fail :0x0 type 0xffffffff", -1);
}

TEST(CardTest, AnInitThatFailsIsTheResultOfACardThatPasses) {
    const std::string lines = short_card_lines(type_line + divided("next generation card format"));
    const std::string mac_copies_untouched = short_card(found_card() + init("6") + next_generation);
    expect_card(mac_copies_untouched, lines, 6);
}

TEST(CardTest, AKvLineCardStopsBehindItsAddresses) {
    const std::string before = found_card() + init("0") + kv_lpu;
    const std::string lines = type_line + divided("kv lpu card format");
    expect_card(before + good_mac(), lines + good_mac_lines, 0);
    expect_card(before + mac_count(not_supported), lines + no_mac_line, 0);
}

TEST(CardTest, AKvLineCardPassesWhateverWasFound) {
    expect_card(found_card() + init("0x41") + kv_lpu + bad_mac,
                type_line + divided("kv lpu card format") + bad_mac_lines, 0);
}

// A foreign card is tested as far as can be: it has neither copies of its addresses nor sensors for the board.
TEST(CardTest, AForeignLayoutIsComparedWithThoseThatAreListed) {
    const std::string sections = section(6, no_section) + section(0, no_section) + section(8, no_section);
    expect_card(short_card(found_card() + init("0") + sections), short_card_lines(type_line + no_layout_lines), 0);
    expect_card(found_card() + init("0") + sections + good_mac() + same_labels + good_label() + no_barcode +
                    good_mac() + power("0 power=18"),
                type_line + no_layout_lines + good_mac_lines + same_labels_lines + good_label_lines + no_barcode_line +
                    good_mac_lines + no_temperature_line + no_voltage_line + power_line,
                0);
}

// Offset and size count, and so does a section that cannot be found. Sections 8 and 9 alone make a KV line card.
TEST(CardTest, OneSectionThatIsOffMakesAnotherLayout) {
    const std::string before = section_at(6, 0, 16) + section_at(0, 16, 1200) + section_at(1, 1216, 1200) +
                               section_at(7, 2416, 128) + section_at(8, 2544, 128) + section_at(9, 2672, 128) +
                               section_at(10, 2800, 24);
    for (const std::string &last : {section_at(2, 3073, 5120), section_at(2, 3072, 5119), section(2, no_section),
                                    section(2, "0"), section(2, "0x31 offset=3072 size=5120")}) {
        expect_card(found_card() + init("0") + before + last + mac_count(not_supported),
                    type_line + divided("kv lpu card format") + no_mac_line, 0);
    }
}

// No layout asks on behind its first section that is off.
TEST(CardTest, LayoutsEndAtTheFirstSectionThatIsOff) {
    const auto asked = [](int id, const std::string &answer, int times) {
        return section(id, answer + " x" + std::to_string(times));
    };
    expect_card(short_card(found_card() + init("0") + asked(6, no_section, 1) +
                           asked(0, "0 device_id=2 offset=0 size=1024", 2) + asked(8, no_section, 2) +
                           asked(7, no_section, 1)),
                short_card_lines(type_line + no_layout_lines), 0);
}

TEST(CardTest, ASectionOfAKvLineCardThatIsOff) {
    const std::string before = section(6, no_section) + section(0, no_section) + section_at(8, 2544, 128);
    expect_card(short_card(found_card() + init("0") + before + section_at(9, 2672, 127)),
                short_card_lines(type_line + no_layout_lines), 0);
}

TEST(CardTest, AnAddressStorageThatFailsIsTestedTwice) {
    expect_card(found_card() + init("0") + next_generation + same_macs + bad_mac + same_labels + good_label() +
                    good_barcode() + same_macs + bad_mac + power("0 power=18"),
                type_line + divided("next generation card format") + same_macs_lines + bad_mac_lines +
                    same_labels_lines + good_label_lines + good_barcode_lines + same_macs_lines + bad_mac_lines +
                    no_temperature_line + no_voltage_line + power_line,
                -1);
}

// Copies that differ are told by their lines alone.
TEST(CardTest, CopiesThatDiffer) {
    const std::string labels = section_content(0, 1200, "LABEL") + section_content(1, 1200, "LABEL OF ANOTHER");
    const std::string macs = section_content(8, 128, "MAC") + section_content(9, 128, "CAM");
    const std::string label_lines = "Success: master elabel read test pass.\r\n"
                                    "Success: backup elabel read test pass.\r\n"
                                    "Error: master and backup elabel uniformity check fail. \r\n";
    const std::string mac_lines = "Success: master mac read test pass.\r\n"
                                  "Error: master and backup mac uniformity check fail. \r\n";
    expect_card(found_card() + init("0") + next_generation + macs + good_mac() + labels + good_label() + no_barcode +
                    macs + good_mac() + power("0 power=18"),
                type_line + divided("next generation card format") + mac_lines + good_mac_lines + label_lines +
                    good_label_lines + no_barcode_line + mac_lines + good_mac_lines + no_temperature_line +
                    no_voltage_line + power_line,
                0);
}

TEST(CardTest, CopiesThatCannotBeRead) {
    const auto fails = [](int id, int size, const std::string &code) {
        return call("drv_eeprom_read_data",
                    "section_id=" + std::to_string(id) + ", offset=0, len=" + std::to_string(size), code + " x1");
    };
    const std::string macs = fails(8, 128, "0x51") + fails(9, 128, "0x52");
    const std::string mac_lines =
        "Error: master mac read fail. please check card is support mac, only eth card is support. [ret]:0x51\r\n"
        "Error: backup mac read fail. need backup mac section. [ret]:0x52\r\n";
    expect_card(found_card() + init("0") + next_generation + macs + good_mac() + fails(0, 1200, "0x53") +
                    fails(1, 1200, "0x54") + good_label() + no_barcode + macs + good_mac() + power("0 power=18"),
                type_line + divided("next generation card format") + mac_lines + good_mac_lines +
                    "Error: master elabel read fail. please check elabel is already load. [ret]:0x53\r\n"
                    "Error: backup elabel read fail. please check card is support back elabel, only qrm old card is "
                    "not support. [ret]:0x54\r\n" +
                    good_label_lines + no_barcode_line + mac_lines + good_mac_lines + no_temperature_line +
                    no_voltage_line + power_line,
                0);
}

// What fails does not keep the rest from being tested.
TEST(CardTest, ALabelAndABarCodeThatFail) {
    const std::string bad_label = call("drv_elabel_read", "elabel_id=0, len=1200", "0x34");
    const std::string bad_barcode = call("drv_barcode_read", "barcode_id=0, len=128", "0x35");
    const std::string bad_label_line = "drv_elabel_read fail, inst_id=0xff000005, elabel_id=0x0, ret=0x34.\r\n";
    const std::string bad_barcode_line = "drv_barcode_read fail, inst_id=0xff000005, barcode_id=0x0, ret=0x35.\r\n";
    const std::string before = found_card() + init("0") + next_generation + no_mac + same_labels;
    const std::string begin = type_line + divided("next generation card format") + no_mac_line + same_labels_lines;
    const std::string end = no_mac_line + no_temperature_line + no_voltage_line + power_line;
    expect_card(before + bad_label + no_barcode + power("0 power=18"), begin + bad_label_line + no_barcode_line + end,
                -1);
    expect_card(before + good_label() + bad_barcode + power("0 power=18"),
                begin + good_label_lines + bad_barcode_line + end, -1);
}

TEST(CardTest, PowerThatIsNotTold) {
    const std::string before = found_card() + init("0") + next_generation;
    const std::string begin = type_line + divided("next generation card format");
    const auto expect_power = [&](const std::string &answer, const std::string &line, int result) {
        expect_card(short_card(before, power(answer)), short_card_lines(begin, line), result);
    };
    expect_power(not_supported, "Info   : card get power is not support.\r\n", 0);
    expect_power("0xa4", "Info   : card get power is not support.\r\n", 0);
    expect_power("0", "Error  : card get power ret = 0x0 power = 0x0.\r\n", -1);
    expect_power("0x36 power=18", "Error  : card get power ret = 0x36 power = 0x12.\r\n", -1);
    expect_power("0 power=0xffffffff", "Success: card get power pass power = 0xffffffff. \r\n", 0);
}

// ---- cards whose sensors the board reads

namespace {

std::string nodes_of_sensors(const std::string &temperature, const std::string &dump = not_supported) {
    const auto missing = [](const std::string &module, const std::string &node) {
        return call("xml_get_entry_num", "module=\"" + module + "\", node=\"" + node + "\"", "0x51");
    };
    return call("xml_get_entry_num", "module=\"temp_mng\", node=\"temp_attr\"", "0 count=1") +
           call("xml_get_element_value_u32",
                "module=\"temp_mng\", node=\"temp_attr\", entry=\"entry0\", element=\"temperature_id\"", "0 value=0") +
           call("drv_temperature_get_value", "temperature_id=0", temperature) +
           call("drv_temperature_get_node_desc", "temperature_id=0, size=64", "0 desc=\"card\"") +
           missing("voltage_mng", "check_attr") + missing("voltage_mng", "set_attr") +
           missing("voltage_mng", "vrm_alert_result") + call("drv_voltage_dump_power", "len=1200", dump) +
           call("drv_avs_dump_dfx_info", "len=1200", not_supported) + missing("voltage_mng", "power_check");
}

const std::string temperature_line = "Success: get temperature_id 0   value is 31. desc: card\r\n";
const std::string voltage_lines = "Info   : voltage get value is not support.\r\n"
                                  "Info   : voltage set value is not support.\r\n"
                                  "Info   : voltage avs alert check is not support.\r\n"
                                  "Info   : voltage power dump is not support\r\n"
                                  "Info   : voltage avs dump is not support\r\n"
                                  "Success: voltage power and avs dump pass\r\n"
                                  "Info   : voltage power check is not support.\r\n";

} // namespace

TEST(CardTest, AnOldRouterCardHasSensorsAndNoCopyOfItsAddresses) {
    expect_card(found_card() + init("0") + router_old + good_mac() + same_labels + good_label() + good_barcode() +
                    good_mac() + nodes_of_sensors("0 value=31") + power("0 power=18"),
                type_line + divided("router old card format") + good_mac_lines + same_labels_lines + good_label_lines +
                    good_barcode_lines + good_mac_lines + temperature_line + voltage_lines + power_line,
                0);
}

TEST(CardTest, AnOldQrmCardHasNoCopyOfItsLabelEither) {
    expect_card(found_card() + init("0") + qrm_old + good_mac() + good_label() + good_barcode() + good_mac() +
                    nodes_of_sensors("0 value=31") + power("0 power=18"),
                type_line + divided("qrm old card format") + good_mac_lines + good_label_lines + good_barcode_lines +
                    good_mac_lines + temperature_line + voltage_lines + power_line,
                0);
}

TEST(CardTest, ASensorThatFailsFailsTheCard) {
    expect_card(found_card() + init("0") + qrm_old + no_mac + good_label() + no_barcode + nodes_of_sensors("0x37") +
                    power("0 power=18"),
                type_line + divided("qrm old card format") + no_mac_line + good_label_lines + no_barcode_line +
                    no_mac_line + "Error: temperature get fail. temperature_id 0 ret 0x37\r\n" +
                    "Success: get temperature_id 0   value is 0. desc: card\r\n" + voltage_lines + power_line,
                -1);
}

TEST(CardTest, AVoltageThatFailsFailsTheCard) {
    expect_card(found_card() + init("0") + router_old + no_mac + same_labels + good_label() + no_barcode +
                    nodes_of_sensors("0 value=31", "0x38") + power("0 power=18"),
                type_line + divided("router old card format") + no_mac_line + same_labels_lines + good_label_lines +
                    no_barcode_line + no_mac_line + temperature_line +
                    "Info   : voltage get value is not support.\r\n"
                    "Info   : voltage set value is not support.\r\n"
                    "Info   : voltage avs alert check is not support.\r\n"
                    "Error  : voltage power dump fail 0x38\r\n"
                    "Info   : voltage avs dump is not support\r\n"
                    "Info   : voltage power check is not support.\r\n" +
                    power_line,
                -1);
}

// ---- the cards of the simulated chassis

namespace {

const std::string file_label_lines = "Now read elabel load info from file\xEF\xBC\x9A/opt/hostx/home/elabel.txt\r\n"
                                     "Success: elabel read and write match test pass.\r\n";

std::string mac_lines_of(int count, const std::string &address) {
    const std::string written = std::to_string(count - 1) + " mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n";
    return "Success: orignal mac read num " + std::to_string(count) + " mac:" + address + "\r\n" +
           "Success: write mac num " + written + "Success: read mac num " + written +
           "Success: mac read and write num and value match test pass.\r\n";
}

// A card of the present format, of 18 W.
struct present_card {
    std::string layout_lines = divided("next generation card format");
    std::string mac_copies = same_macs_lines;
    std::string label_copies = same_labels_lines;
    std::string last_line = power_line;
    std::string address = "0x2-0xa0-0xc0-0x5-0x0-0x0";
};

std::string lines_of(const present_card &card) {
    const std::string mac = mac_lines_of(8, card.address);
    return type_line + card.layout_lines + card.mac_copies + mac + card.label_copies + file_label_lines +
           good_barcode_lines + (card.mac_copies.empty() ? "" : same_macs_lines) + mac + no_temperature_line +
           no_voltage_line + card.last_line;
}

void expect_on_board(const std::vector<std::string> &options, const std::string &name, const std::string &lines,
                     int result) {
    const process_result run = run_part(options, name);
    EXPECT_EQ(run.out, lines + "result " + std::to_string(result) + "\n") << name;
    EXPECT_EQ(run.err, "") << name;
}

// The operations that a trace shows, each with a blank behind it.
std::string operations_in(const std::string &trace) {
    std::istringstream lines(trace);
    std::string names;
    for (std::string line; std::getline(lines, line);) {
        names += line.substr(0, line.find('(')) + " ";
    }
    return names;
}

// The master, with what sits in slot 5 changed.
std::string changed_card(const std::string &changes) {
    return scratch_file("board.xml", "<board name=\"changed\" like=\"mpu\" slot=\"9\"><place name=\"slot5\">" +
                                         changes + "</place></board>");
}

} // namespace

TEST(CardOnABoardTest, PresentCards) {
    const std::vector<std::string> state = {"--state", new_scratch_dir()};
    expect_on_board(state, "card_in_slot_5", lines_of({}), 0);
    // Once more: the first run has left the card as it was.
    expect_on_board(state, "card_in_slot_5", lines_of({}), 0);
    expect_on_board({"--board", "lpu"}, "card_1_on_board", lines_of({.address = "0x2-0xa0-0xc0-0x7-0x10-0x0"}), 0);
}

TEST(CardOnABoardTest, TheOrderOfTheCalls) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_part({"--trace", trace}, "card_in_slot_5");
    const std::string mac = "drv_mac_get_num drv_eeprom_read_data drv_eeprom_read_data "
                            "drv_mac_get_num drv_mac_get_addr_num drv_mac_set_num drv_mac_set_addr_num "
                            "drv_mac_get_num drv_mac_get_addr_num drv_mac_set_num drv_mac_set_addr_num ";
    std::string sections;
    for (int i = 0; i < 8; ++i) {
        sections += "find_section_info_by_section ";
    }
    EXPECT_EQ(operations_in(read_file(trace)),
              "get_card_id drv_board_get_online_status drv_board_get_type drv_init_entry " + sections + mac +
                  "drv_eeprom_read_data drv_eeprom_read_data "
                  "drv_elabel_read drv_elabel_write drv_elabel_read drv_elabel_write "
                  "drv_barcode_read drv_barcode_write drv_barcode_read drv_barcode_write " +
                  mac + "drv_board_get_power ");
}

TEST(CardOnABoardTest, AKvLineCard) {
    expect_on_board({}, "card_in_slot_4",
                    "Success: card type is 0x2302003 \r\n" + divided("kv lpu card format") +
                        mac_lines_of(4, "0x2-0xa0-0xc0-0x4-0x0-0x0"),
                    0);
}

TEST(CardOnABoardTest, EmptyPlacesAndPulledCards) {
    const std::string absent_line = "Success: card is not present \r\n";
    expect_on_board({}, "card_in_slot_1", absent_line, 0);
    expect_on_board({"--pull", "slot5"}, "card_in_slot_5", absent_line, 0);
    expect_on_board({"--set", "slot5/board/presence/0/status=absent"}, "card_in_slot_5", absent_line, 0);
    expect_on_board({"--board", "mpu_slave"}, "card_in_slot_5", absent_line, 0);
}

TEST(CardOnABoardTest, ACardThatTheBoardHasNoPlaceFor) {
    expect_on_board({}, "card_1_on_board", "Error: get present fail :0x81110102", -2129592062);
}

TEST(CardOnABoardTest, ACardWithAnErasedType) {
    expect_on_board({"--set", "slot5/board/unit/0/type=0xffffffff"}, "card_in_slot_5",
                    "Error: get type fail :0x0 type 0xffffffff", -1);
}

TEST(CardOnABoardTest, ACardThatTellsNoPower) {
    expect_on_board({"--set", "slot5/board/unit/0/power_watts=0"}, "card_in_slot_5",
                    lines_of({.last_line = "Error  : card get power ret = 0x0 power = 0x0.\r\n"}), -1);
    expect_on_board({"--board", changed_card("<module name=\"sim_board\"><node name=\"unit\"><entry name=\"0\">"
                                             "<element name=\"power_watts\" remove=\"yes\"/></entry></node></module>")},
                    "card_in_slot_5", lines_of({.last_line = "Info   : card get power is not support.\r\n"}), 0);
}

// The write test of the label mends the backup.
TEST(CardOnABoardTest, ACardWithAnotherLabelInItsBackup) {
    const std::vector<std::string> state = {"--state", new_scratch_dir(), "--clock", "virtual"};
    calls_of(state, {"drv_eeprom_write_data(inst_id=0xff000005, section_id=1, offset=8, buffer=[58], len=1)"});
    expect_on_board(state, "card_in_slot_5",
                    lines_of({.label_copies = "Success: master elabel read test pass.\r\n"
                                              "Success: backup elabel read test pass.\r\n"
                                              "Error: master and backup elabel uniformity check fail. \r\n"}),
                    0);
    expect_on_board(state, "card_in_slot_5", lines_of({}), 0);
}

TEST(CardOnABoardTest, ACardWithOtherAddressesInItsBackup) {
    const std::vector<std::string> state = {"--state", new_scratch_dir(), "--clock", "virtual"};
    calls_of(state, {"drv_eeprom_write_data(inst_id=0xff000005, section_id=9, offset=127, buffer=[58], len=1)"});
    expect_on_board(state, "card_in_slot_5",
                    lines_of({.mac_copies = "Success: master mac read test pass.\r\n"
                                            "Error: master and backup mac uniformity check fail. \r\n"}),
                    0);
}

// All that a present card keeps, its label one byte further: the addresses are where a KV line card has them, and more
// are not looked at.
TEST(CardOnABoardTest, ACardWithAForeignLayout) {
    const auto layout = [](int mac_offset) {
        const std::vector<std::vector<int>> sections = {{6, 0, 16},     {0, 17, 1200},        {1, 1217, 1199},
                                                        {7, 2416, 128}, {8, mac_offset, 128}, {9, 2672, 128},
                                                        {10, 2800, 24}, {2, 3072, 5120}};
        std::string entries;
        for (const std::vector<int> &one : sections) {
            entries += "<entry name=\"" + std::to_string(one[0]) + "\"><element name=\"offset\" value=\"" +
                       std::to_string(one[1]) + "\"/><element name=\"size\" value=\"" + std::to_string(one[2]) +
                       "\"/></entry>";
        }
        return changed_card("<module name=\"sim_eeprom_layout\"><node name=\"foreign\">" + entries +
                            "</node></module><module name=\"sim_identity\"><node name=\"eeprom\"><entry name=\"0\">"
                            "<element name=\"layout\" text=\"foreign\"/></entry></node></module>");
    };
    expect_on_board({"--board", layout(2544)}, "card_in_slot_5",
                    type_line + divided("kv lpu card format") + mac_lines_of(8, "0x2-0xa0-0xc0-0x5-0x0-0x0"), 0);
    expect_on_board({"--board", layout(8192)}, "card_in_slot_5",
                    lines_of({.layout_lines = no_layout_lines, .mac_copies = ""}), 0);
}

// Fans at half speed: a watt lifts the second sensor by twice the 0.5 K that it does at full speed.
TEST(CardOnABoardTest, CardsOfTheOldFormats) {
    const auto sensors = [](const std::string &celsius) {
        return "Success: get temperature_id 0   value is 25. desc: card inlet\r\n"
               "Success: get temperature_id 1   value is " +
               celsius +
               ". desc: card\r\n"
               "Success: get voltage_id 0   value is 3298mv. desc: 3V3 card. max 3308 min 3288\r\n"
               "Success: get voltage_id 1   value is 1001mv. desc: 1V0 card core. max 1005 min 997\r\n"
               "Info   : voltage set value is not support.\r\n"
               "Info   : voltage avs alert check is not support.\r\n"
               "Info   : voltage avs dump is not support\r\n"
               "Success: voltage power and avs dump pass\r\n"
               "Success: voltage power 0 check pass\r\n";
    };
    expect_on_board({}, "card_in_slot_2",
                    "Success: card type is 0x2302001 \r\n" + divided("router old card format") + no_mac_line +
                        same_labels_lines + file_label_lines + no_barcode_line + no_mac_line + sensors("37") +
                        "Success: card get power pass power = 0xc. \r\n",
                    0);
    expect_on_board({}, "card_in_slot_3",
                    "Success: card type is 0x2302002 \r\n" + divided("qrm old card format") + no_mac_line +
                        file_label_lines + no_barcode_line + no_mac_line + sensors("40") +
                        "Success: card get power pass power = 0xf. \r\n",
                    0);
}
