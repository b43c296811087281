// Chips on the buses of the base board: the way to each, and that it leads to the same chip as others do.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

#include <regex>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

struct chip_address {
    int bus;
    int channel;
    int slave_addr;
    int reg_addr_width = 8;
    int slave_addr_width = 7;
};

std::string request_to(const chip_address &at, int64_t offset, const std::string &rest) {
    return "bus_id=" + std::to_string(at.bus) + ", request={channel=" + std::to_string(at.channel) +
           " slave_addr=" + std::to_string(at.slave_addr) + " offset=" + std::to_string(offset) +
           " reg_addr_width=" + std::to_string(at.reg_addr_width) +
           " slave_addr_width=" + std::to_string(at.slave_addr_width) + " " + rest + "})";
}

std::string read_at(const chip_address &at, int64_t offset, int length) {
    return "drv_i2c_read_basebus(" + request_to(at, offset, "direction=1 length=" + std::to_string(length));
}

// list: as in brackets, "12 34".
std::string write_at(const chip_address &at, int64_t offset, const std::string &list) {
    return "drv_i2c_write_basebus(" +
           request_to(at, offset,
                      "direction=0 length=" + std::to_string((list.size() + 1) / 3) + " data=[" + list + "]");
}

// Of the requests that come back, the bytes alone: "0x0 [12 34]".
std::string bytes_read(const test_board &board, const std::vector<std::string> &lines) {
    return std::regex_replace(answers(board, lines), std::regex(" request=\\{[^}]* data=(\\[[^}]*\\])\\}"), " $1");
}

constexpr chip_address eeprom{0, 0, 0x50, 16};
constexpr chip_address spd{0, 0, 0x51, 16};
constexpr chip_address first_thermometer{0, 1, 0x48};
constexpr chip_address first_pll{1, 0, 0x68};
constexpr chip_address second_pll{1, 1, 0x68};
constexpr chip_address second_expander{1, 3, 0x21};

} // namespace

// Each of them shows what its number on the I2C buses shows.
TEST(BaseBusDriver, EveryChipIsThatOfTheI2cBuses) {
    const std::pair<chip_address, int> chips[]{
        {eeprom, 32},       {spd, 48},          {first_thermometer, 64}, {{0, 1, 0x40}, 72}, {{0, 1, 0x41}, 73},
        {{0, 2, 0x44}, 80}, {{0, 2, 0x45}, 81}, {first_pll, 16},         {second_pll, 17},   {{1, 2, 0x6f}, 104}};
    for (const char *seat : {"mpu_master", "lpu"}) {
        const test_board board = new_altered(seat, {});
        for (const auto &[at, number] : chips) {
            SCOPED_TRACE(seat + std::to_string(number));
            // Below the registers that count by themselves.
            const std::string there = bytes_read(board, {read_at(at, 5, 2)});
            EXPECT_TRUE(there.starts_with("0x0 [")) << there;
            EXPECT_EQ(there, std::regex_replace(answers(board, {"drv_i2c_read(chip_id=" + std::to_string(number) +
                                                                ", address=5, length=2)"}),
                                                std::regex("buffer="), ""));
        }
    }
}

TEST(BaseBusDriver, WhatIsWrittenIsReadByTheOtherFamilies) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(bytes_read(board, {write_at(second_expander, 2, "78"), "drv_chip9555_get_reg(chip_id=1, offset=2)",
                                 "drv_chip9555_set_reg(chip_id=1, offset=2, value=0x56)",
                                 read_at(second_expander, 2, 1), "drv_i2c_read(chip_id=1, address=2, length=1)"}),
              "0x0 [78]\n0x0 value=120\n0x0\n0x0 [56]\n0x0 buffer=[56]\n");
    EXPECT_EQ(bytes_read(board, {write_at(eeprom, 16, "41 42"), "drv_elabel_read(elabel_id=0, len=3)",
                                 "drv_elabel_write(elabel_id=0, area=\"XYZ\", len=3)", read_at(eeprom, 15, 5)}),
              "0x0 [41 42]\n0x0 area=" + bytes("ABo") + "\n0x0\n0x0 [00 58 59 5a 61]\n");
}

// 11980 mV at the first channel; its registers have two bytes, and a write of one is none.
TEST(BaseBusDriver, WideRegisters) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(bytes_read(board, {read_at({0, 1, 0x40}, 0, 2), write_at({0, 1, 0x40}, 0, "00")}),
              "0x0 [2e cc]\n" + bad_value);
}

// Behind two channels of a bus the same address is two chips.
TEST(BaseBusDriver, ChannelsTellChipsApart) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(bytes_read(board, {"drv_pll_set_reg(chip_id=0, reg=15, value=0x21)",
                                 "drv_pll_set_reg(chip_id=1, reg=15, value=0x43)", read_at(first_pll, 15, 1),
                                 read_at(second_pll, 15, 1), write_at(second_pll, 15, "65"),
                                 "drv_pll_get_reg(chip_id=0, reg=15)", "drv_pll_get_reg(chip_id=1, reg=15)"}),
              "0x0\n0x0\n0x0 [21]\n0x0 [43]\n0x0 [65]\n0x0 value=33\n0x0 value=101\n");
}

TEST(BaseBusDriver, WhereNothingIs) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(bytes_read(board, {read_at({2, 0, 0x50, 16}, 0, 1), read_at({0, 3, 0x50, 16}, 0, 1),
                                 read_at({0, 65535, 0x50, 16}, 0, 1), read_at({0, 0, 0x52, 16}, 0, 1),
                                 read_at({0, 1, 0x50, 16}, 0, 1), write_at({2, 0, 0x50, 16}, 0, "00"),
                                 write_at({0, 0, 0x52, 16}, 0, "00")}),
              no_such_device + no_such_device + no_such_device + not_ready + not_ready + no_such_device + not_ready);
    EXPECT_EQ(bytes_read(new_delivered("lpu"), {read_at(second_expander, 0, 1)}), no_such_device);
}

TEST(BaseBusDriver, WidthsAreChecked) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(bytes_read(board, {read_at({0, 0, 0x50, 8}, 0, 1), read_at({0, 0, 0x50, 0}, 0, 1),
                                 read_at({1, 0, 0x68, 16}, 0, 1), read_at({0, 0, 0x50, 16, 8}, 0, 1),
                                 read_at({0, 0, 0x50, 16, 0}, 0, 1), read_at({0, 0, 0xd0, 16}, 0, 1),
                                 read_at({0, 0, 0x450, 16, 10}, 0, 1), read_at({0, 0, 0x50, 16, 10}, 0, 1),
                                 write_at({0, 0, 0x50, 8}, 0, "00")}),
              bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + not_ready +
                  bad_value);
}

TEST(BaseBusDriver, AnAddressOfTenBits) {
    const test_board board = new_altered("mpu_master", {{"self/sim_basebus/chip/0/slave_addr_width", "10"},
                                                        {"self/sim_basebus/chip/0/slave_addr", "0x250"}});
    EXPECT_EQ(bytes_read(board, {read_at({0, 0, 0x250, 16, 10}, 0, 4), read_at({0, 0, 0x250, 16}, 0, 4),
                                 read_at({0, 0, 0x50, 16}, 0, 4)}),
              "0x0 [" + bytes("EEPR").substr(1) + "\n" + bad_value + not_ready);
}

TEST(BaseBusDriver, RegistersHaveLimits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(bytes_read(board, {read_at(first_pll, 256, 1), read_at(first_pll, 4294967295, 1),
                                 read_at(eeprom, 8192, 1), read_at(eeprom, 65536, 1), read_at(eeprom, 0, 257),
                                 read_at(eeprom, 0, 0), write_at(eeprom, 8192, "00"), write_at(eeprom, 0, "")}),
              out_of_range + out_of_range + out_of_range + out_of_range + out_of_range + out_of_range + out_of_range +
                  out_of_range);
    EXPECT_TRUE(bytes_read(board, {read_at(eeprom, 8191, 256)}).starts_with("0x0 [ff 45 45 50 52"));
}

TEST(BaseBusDriver, ASilentChip) {
    const test_board board = new_altered("mpu_master", {{"self/sim_i2c/chip/17/silent", "1"}});
    EXPECT_EQ(bytes_read(board, {read_at(second_pll, 8, 1), write_at(second_pll, 8, "00")}), not_ready + not_ready);
    EXPECT_TRUE(bytes_read(board, {read_at(first_pll, 8, 1)}).starts_with("0x0 ["));
}

TEST(BaseBusDriver, RequestsThatAreNone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        bytes_read(board, {"drv_i2c_read_basebus(" + request_to(eeprom, 0, "direction=0 length=1"),
                           "drv_i2c_read_basebus(" + request_to(eeprom, 0, "direction=2 length=1"),
                           "drv_i2c_read_basebus(" + request_to(eeprom, 0, "direction=1 reserved=1 length=1"),
                           "drv_i2c_read_basebus(" + request_to(eeprom, 0, "direction=1 length=1 data=null"),
                           "drv_i2c_write_basebus(" + request_to(eeprom, 0, "direction=1 length=1 data=[00]"),
                           "drv_i2c_write_basebus(" + request_to(eeprom, 0, "direction=0 length=1 data=null"),
                           "drv_i2c_read_basebus(request=null)", "drv_i2c_write_basebus(request=null)",
                           "drv_i2c_read_basebus(inst_id=0xff000005, " + request_to(eeprom, 0, "direction=1 length=1"),
                           "drv_i2c_write_basebus(inst_id=0xff000006, " + request_to(eeprom, 0, "length=1 data=[00]")}),
        bad_value + bad_value + bad_value + null_pointer + bad_value + null_pointer + null_pointer + null_pointer +
            not_supported + no_such_instance);
}

} // namespace kestro_tests
