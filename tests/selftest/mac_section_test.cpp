// The mac section: count and addresses of every described type are saved, overwritten, read back and restored.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *test_address = "[20 02 03 04 05 06]";
constexpr const char *match_line = "Success: mac read and write num and value match test pass.\r\n";
constexpr const char *test_mac_text = "mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n";

// Every line that begins with "Error: " fails the section.
void expect_mac(const std::string &script, const std::string &lines) {
    expect_part("mac", script, lines, lines.find("Error: ") == std::string::npos ? 0 : -1);
}

std::string described(const std::vector<int> &types) {
    std::string script = entry_count("mac_mng", "mac_storage_main", static_cast<int>(types.size()));
    for (size_t i = 0; i < types.size(); ++i) {
        script +=
            element("mac_mng", "mac_storage_main", static_cast<int>(i), "id", "0 value=" + std::to_string(types[i]));
    }
    return script;
}

std::string spare(int entry, const std::string &answer) {
    return element("mac_mng", "mac_storage_spare", entry, "id", answer);
}

std::string num_rule(int type, int num) {
    return "drv_mac_get_num(inst_id=0xffffffff, type_id=" + std::to_string(type) +
           ", reserved=0) = 0 num=" + std::to_string(num) + " x1\n";
}

std::string addresses_rule(int type, int num, const std::string &bytes) {
    return "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=" + std::to_string(type) + ", num=" + std::to_string(num) +
           ", size=" + std::to_string(6 * num) + ") = 0 buffer=" + bytes + " x1\n";
}

std::string write_rules(int type, int num, const std::string &address) {
    const std::string of_type = "inst_id=0xffffffff, type_id=" + std::to_string(type) + ", num=" + std::to_string(num);
    return "drv_mac_set_num(" + of_type + ", reserved=0) = 0 x1\ndrv_mac_set_addr_num(" + of_type +
           ", addr=" + address + ") = 0 x1\n";
}

// A type with one stored address whose storage works.
std::string good_type(int type) {
    return num_rule(type, 1) + addresses_rule(type, 1, "[10 11 12 13 14 15]") + write_rules(type, 1, test_address) +
           num_rule(type, 1) + addresses_rule(type, 1, test_address) + write_rules(type, 1, "[10 11 12 13 14 15]");
}

std::string good_type_lines(int type, const std::string &name) {
    return std::string("Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
           "Success: write mac num 1 " + test_mac_text + "Success: read mac num 1 " + test_mac_text + match_line +
           "Success: mac type " + std::to_string(type) + " " + name + " test pass.\r\n";
}

} // namespace

TEST(MacSectionTest, ATypeWithOneAddressIsWrittenBackWithCountOne) {
    expect_mac(described({0}) + good_type(0) + spare(0, "0 value=0"), good_type_lines(0, "meth-mac"));
}

TEST(MacSectionTest, OfFiveAddressesFourAreWritten) {
    const std::string saved =
        "[10 11 12 13 14 15 10 11 12 13 14 16 10 11 12 13 14 17 10 11 12 13 14 18 10 11 12 13 14 19]";
    expect_mac(described({5}) + num_rule(5, 5) + addresses_rule(5, 5, saved) + write_rules(5, 4, test_address) +
                   num_rule(5, 4) + addresses_rule(5, 4, test_address) + write_rules(5, 5, "[10 11 12 13 14 15]") +
                   spare(0, "0 value=5"),
               std::string("Success: orignal mac read num 5 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 4 " + test_mac_text + "Success: read mac num 4 " + test_mac_text +
                   match_line + "Success: mac type 5 eth-ex-mac test pass.\r\n");
}

TEST(MacSectionTest, TypesOfTheChassisAreTestedOnAMasterOnly) {
    expect_mac(described({1, 2, 64, 79, 3}) + "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=2 x4\n" +
                   good_type(3) + spare(4, "0 value=3"),
               good_type_lines(3, "corvex-mac"));
    expect_mac(described({1, 64, 79}) + good_type(1) + good_type(64) + good_type(79) + spare(0, "0 value=1") +
                   spare(1, "0 value=64") + spare(2, "0 value=79") +
                   "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0 x3\n",
               good_type_lines(1, "system-mac") + good_type_lines(64, "bkp-flexe-mac") +
                   good_type_lines(79, "bkp-flexe-mac"));
}

TEST(MacSectionTest, AFailedStateQuerySkipsTheTypesOfTheChassis) {
    expect_mac(described({2, 79}) + "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x34 x2\n", "");
}

TEST(MacSectionTest, ThreeTypesAreNeverTested) {
    expect_mac(described({72, 73, 4}), "");
}

TEST(MacSectionTest, TypesOutsideTheListAreNamedOther) {
    expect_mac(described({6, 63, 80}) + good_type(6) + good_type(63) + good_type(80) + spare(0, "0 value=6") +
                   spare(1, "0 value=63") + spare(2, "0 value=80"),
               good_type_lines(6, "other") + good_type_lines(63, "other") + good_type_lines(80, "other"));
}

TEST(MacSectionTest, AMissingSpareFailsTheType) {
    expect_mac(described({0}) + good_type(0) + spare(0, "0x51"),
               good_type_lines(0, "meth-mac") + "Error: mac 0 has no spare.\r\n");
}

TEST(MacSectionTest, ATypeWithoutAddressesCannotBeTested) {
    expect_mac(described({3}) + num_rule(3, 0) + "drv_mac_get_addr_num(type_id=3, num=0, size=0) = 0\n",
               "Error: orignal mac read fail.ret =0x0 original_mac_num = 0\r\n");
}

TEST(MacSectionTest, AFailedReadOfTheAddresses) {
    expect_mac(described({3}) + num_rule(3, 2) + "drv_mac_get_addr_num = 0x61\n",
               "Error: mac addr read fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, mac_num=0x2 ret=0x61.\r\n"
               "Error: orignal mac read fail.ret =0x61 original_mac_num = 2\r\n");
}

TEST(MacSectionTest, ACountThatNoStorageHoldsGetsNoArea) {
    expect_mac(described({3}) + "drv_mac_get_num = 0 num=0x10001\n",
               "Error: mac num read fail, len = 393222.\r\n"
               "Error: orignal mac read fail.ret =0xffffffff original_mac_num = 65537\r\n");
}

TEST(MacSectionTest, AFailedWriteOfCountOrAddress) {
    const std::string read = num_rule(3, 1) + addresses_rule(3, 1, "[10 11 12 13 14 15]");
    const std::string read_line = "Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n";
    expect_mac(described({3}) + read + "drv_mac_set_num = 0x62\n",
               read_line + "Error: mac num write fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, ret=0x62.\r\n"
                           "Error: write mac fail.\r\n");
    expect_mac(described({3}) + read + "drv_mac_set_num = 0\ndrv_mac_set_addr_num = 0x63\n",
               read_line + "Error: mac addr write fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, mac_num=0x1 "
                           "ret=0x63.\r\n"
                           "Error: write mac fail.\r\n");
}

TEST(MacSectionTest, AFailedReadBackLeavesTheTestAddress) {
    expect_mac(described({3}) + num_rule(3, 1) + addresses_rule(3, 1, "[10 11 12 13 14 15]") +
                   write_rules(3, 1, test_address) + "drv_mac_get_num = 0x64\n",
               std::string("Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 1 " + test_mac_text +
                   "Error: mac num read fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, ret=0x64.\r\n"
                   "Error: read mac after write fail.\r\n");
}

TEST(MacSectionTest, AFailedRestore) {
    expect_mac(described({3}) + num_rule(3, 1) + addresses_rule(3, 1, "[10 11 12 13 14 15]") +
                   write_rules(3, 1, test_address) + num_rule(3, 1) + addresses_rule(3, 1, test_address) +
                   "drv_mac_set_num = 0x65\n",
               std::string("Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 1 " + test_mac_text + "Success: read mac num 1 " + test_mac_text +
                   "Error: mac num write fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, ret=0x65.\r\n"
                   "Error: final write original mac fail.\r\n");
}

TEST(MacSectionTest, ACountThatDoesNotMatch) {
    expect_mac(described({3}) + num_rule(3, 2) + addresses_rule(3, 2, "[10 11 12 13 14 15 10 11 12 13 14 16]") +
                   write_rules(3, 1, test_address) + num_rule(3, 2) + addresses_rule(3, 2, test_address) +
                   write_rules(3, 2, "[10 11 12 13 14 15]"),
               std::string("Success: orignal mac read num 2 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 1 " + test_mac_text + "Success: read mac num 2 " + test_mac_text +
                   "Error: mac read and write num match test fail. write_num 1 read_num 2\r\n");
}

TEST(MacSectionTest, ACountThatIsReadBackAsZero) {
    expect_mac(described({3}) + num_rule(3, 1) + addresses_rule(3, 1, "[10 11 12 13 14 15]") +
                   write_rules(3, 1, test_address) + num_rule(3, 0) +
                   "drv_mac_get_addr_num(type_id=3, num=0, size=0) = 0 x1\n" + write_rules(3, 1, "[10 11 12 13 14 15]"),
               std::string("Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 1 " + test_mac_text +
                   "Success: read mac num 0 mac:0x0-0x0-0x0-0x0-0x0-0x0\r\n"
                   "Error: mac read and write num match test fail. write_num 1 read_num 0\r\n");
}

TEST(MacSectionTest, AddressesAreShownInLowerCase) {
    expect_mac(described({3}) + num_rule(3, 1) + addresses_rule(3, 1, "[ab cd ef 0a fb c0]") +
                   "drv_mac_set_num = 0x62\n",
               "Success: orignal mac read num 1 mac:0xab-0xcd-0xef-0xa-0xfb-0xc0\r\n"
               "Error: mac num write fail, inst_id=0xffffffff, mac_type=0x3 corvex-mac, ret=0x62.\r\n"
               "Error: write mac fail.\r\n");
}

TEST(MacSectionTest, AnAddressThatDoesNotMatch) {
    expect_mac(described({3}) + num_rule(3, 1) + addresses_rule(3, 1, "[10 11 12 13 14 15]") +
                   write_rules(3, 1, test_address) + num_rule(3, 1) + addresses_rule(3, 1, "[20 02 03 04 05 07]") +
                   write_rules(3, 1, "[10 11 12 13 14 15]"),
               std::string("Success: orignal mac read num 1 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n") +
                   "Success: write mac num 1 " + test_mac_text +
                   "Success: read mac num 1 mac:0x20-0x2-0x3-0x4-0x5-0x7\r\n"
                   "Error: mac read and write value match test fail\r\n");
}
