// Chips on the I2C buses: their registers as bytes, agreement with the other families, and chips that do not answer.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

std::string read_of(int chip, int address, int length) {
    return "drv_i2c_read(chip_id=" + std::to_string(chip) + ", address=" + std::to_string(address) +
           ", length=" + std::to_string(length) + ")";
}

} // namespace

// Behind the eighth register of an expander comes its first.
TEST(I2cDriver, RegistersAreBytes) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {read_of(0, 0, 10), read_of(1, 7, 2), read_of(16, 0, 4), read_of(16, 15, 1),
                              "drv_i2c_read_u32(chip_id=0, address=2)", "drv_i2c_read_u32(chip_id=0, address=6)"}),
              "0x0 buffer=[0f a5 0f ff 00 00 00 ff 0f a5]\n0x0 buffer=[ff 7e]\n0x0 buffer=[9c 02 01 00]\n"
              "0x0 buffer=[a5]\n0x0 value=65295\n0x0 value=0xa50fff00\n");
}

// Registers of 16 bits come with their higher byte first: 11980 mV at the first channel.
TEST(I2cDriver, WideRegisters) {
    const test_board board = new_altered("lpu", {});
    EXPECT_EQ(answers(board, {read_of(72, 0, 2), read_of(72, 0, 1), read_of(72, 15, 3)}),
              "0x0 buffer=[2e cc]\n0x0 buffer=[2e]\n0x0 buffer=[ff ff 2e]\n");
    EXPECT_EQ(answers(board, {"drv_i2c_write_u32(chip_id=72, address=0, value=0)", read_of(72, 0, 2)}),
              ok + "0x0 buffer=[2e cc]\n");
}

TEST(I2cDriver, WhatIsWrittenIsReadByTheOtherFamilies) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_i2c_write_u32(chip_id=1, address=2, value=0x34125678)",
                              "drv_chip9555_get_reg(chip_id=1, offset=2)", "drv_chip9555_get_reg(chip_id=1, offset=3)",
                              "drv_chip9555_get_reg(chip_id=1, offset=4)", "drv_chip9555_get_reg(chip_id=1, offset=5)",
                              "drv_chip9555_get_reg(chip_id=0, offset=4)",
                              "drv_chip9555_set_reg(chip_id=1, offset=2, value=0x11)",
                              "drv_i2c_read_u32(chip_id=1, address=2)"}),
              "0x0\n0x0 value=120\n0x0 value=86\n0x0 value=18\n0x0 value=52\n0x0 value=0\n0x0\n0x0 value=0x34125611\n");
}

// Any number of bytes, through each of the chips that software writes.
TEST(I2cDriver, BytesThatAreWrittenAreReadByTheOtherFamilies) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=0, address=2, buffer=[5a a5 0f], length=3)",
                              "drv_chip9555_get_reg(chip_id=0, offset=2)", "drv_chip9555_get_reg(chip_id=0, offset=3)",
                              "drv_chip9555_get_reg(chip_id=0, offset=4)"}),
              ok + "0x0 value=90\n0x0 value=165\n0x0 value=15\n");
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=17, address=3, buffer=[01], length=1)",
                              "drv_pll_get_reg(chip_id=1, reg=3)", "drv_pll_get_reg(chip_id=0, reg=3)",
                              "drv_pll_set_reg(chip_id=1, reg=3, value=2)", read_of(17, 3, 1)}),
              ok + "0x0 value=1\n0x0 value=0\n0x0\n0x0 buffer=[02]\n");
    const std::string time = answers(
        board, {"drv_i2c_write(chip_id=104, address=2, buffer=[34 12], length=2)", "drv_rtc_read_time(time={})"});
    EXPECT_TRUE(time.starts_with("0x0\n0x0 ")) << time;
    EXPECT_NE(time.find("minute=34 hour=12 "), std::string::npos) << time;
}

// A section of the EEPROM lies where the layout says: bar code 0 in section 7, from byte 2416 on.
TEST(I2cDriver, SectionsOfTheEepromAreBytesOfTheChip) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_i2c_write(chip_id=32, address=2416, buffer=[41 42 43], length=3)",
                        "drv_eeprom_read_data(section_id=7, len=3)",
                        "drv_eeprom_write_data(section_id=7, offset=1, buffer=[58 59], len=2)", read_of(32, 2416, 3)}),
        ok + "0x0 buffer=[41 42 43]\n0x0\n0x0 buffer=[41 58 59]\n");
}

// Thermometers and voltmeters measure; nothing that is written changes that.
TEST(I2cDriver, WhatASensorMeasuresIsNotWritten) {
    const test_board board = new_delivered("lpu");
    const std::string before = answers(board, {read_of(72, 0, 8)});
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=72, address=0, buffer=[00 00 11 11 22 22 33 33], length=8)",
                              read_of(72, 0, 8)}),
              ok + before);
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=72, address=0, buffer=[00 00 11], length=3)"}), bad_value);
}

TEST(I2cDriver, WritesHaveLimits) {
    const test_board board = new_altered("mpu_master", {{"self/sim_i2c/chip/17/silent", "1"}});
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=0, address=2, buffer=[], length=0)",
                              "drv_i2c_write(chip_id=0, address=8, buffer=[00], length=1)",
                              "drv_i2c_write(chip_id=0, address=2, buffer=[" +
                                  replaced(bytes("", 257), "[", "").substr(0, 257 * 3 - 1) + "], length=257)",
                              "drv_i2c_write(chip_id=17, address=2, buffer=[00], length=1)",
                              "drv_i2c_write(chip_id=2, address=0, buffer=[00], length=1)",
                              "drv_i2c_write(inst_id=0xff000005, chip_id=0, buffer=[00], length=1)",
                              "drv_i2c_write(inst_id=0xff000006, chip_id=0, buffer=[00], length=1)",
                              "drv_i2c_write(chip_id=0, length=4, buffer=null)"}),
              out_of_range + out_of_range + out_of_range + not_ready + no_such_device + not_supported +
                  no_such_instance + null_pointer);
}

// The first section of the EEPROM begins with a mark; behind its last byte comes the first.
// Behind the last register that is there none is written or read, and none before it either.
TEST(I2cDriver, ATransferBeyondTheRegistersDoesNothing) {
    const test_board board = new_delivered("mpu_master");
    const std::string first = read_of(96, 16, 4);
    EXPECT_EQ(
        answers(board, {first, "drv_i2c_write(chip_id=96, address=16, buffer=[00 00 00 01 00 00 00 02], length=8)",
                        first, read_of(96, 16, 8)}),
        "0x0 buffer=[00 00 00 00]\n" + out_of_range + "0x0 buffer=[00 00 00 00]\n" + out_of_range);
}

TEST(I2cDriver, TheIdentityEeprom) {
    for (const char *seat : {"mpu_master", "lpu"}) {
        const test_board board = new_delivered(seat);
        EXPECT_EQ(answers(board, {read_of(32, 0, 4), "drv_i2c_write_u32(chip_id=32, address=0, value=0x31323334)",
                                  read_of(32, 0, 4), read_of(32, 0x7ffffff, 1)}),
                  "0x0 buffer=" + bytes("EEPR") + "\n0x0\n0x0 buffer=" + bytes("4321") + "\n" + out_of_range);
    }
}

TEST(I2cDriver, EveryChipOfTheMapIsThere) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(seat);
        for (const int chip : {16, 17, 32, 48, 64, 72, 73, 80, 81, 96, 104}) {
            EXPECT_TRUE(answers(board, {read_of(chip, 0, 2)}).starts_with("0x0 buffer=[")) << seat << chip;
        }
    }
    for (const int chip : {0, 1, 49, 65, 82}) {
        EXPECT_TRUE(answers(new_delivered("mpu_slave"), {read_of(chip, 0, 2)}).starts_with("0x0 buffer=[")) << chip;
        EXPECT_EQ(answers(new_delivered("lpu"), {read_of(chip, 0, 2)}), no_such_device) << chip;
    }
}

TEST(I2cDriver, ASilentChip) {
    const test_board board = new_altered("mpu_master", {{"self/sim_i2c/chip/17/silent", "1"}});
    EXPECT_EQ(answers(board, {read_of(17, 0, 1), "drv_i2c_read_u32(chip_id=17, address=0)",
                              "drv_i2c_write_u32(chip_id=17, address=0, value=0)", read_of(16, 0, 1)}),
              not_ready + not_ready + not_ready + "0x0 buffer=[9c]\n");
}

TEST(I2cDriver, AFaceThatTheBoardLacks) {
    const test_board board =
        new_altered("lpu", {{"self/sim_i2c/chip/16/face", "nothing"}, {"self/sim_i2c/chip/17/unit", "7"}});
    EXPECT_EQ(answers(board, {read_of(16, 0, 1), read_of(17, 0, 1)}), not_ready + not_ready);
}

// Every second read of the chip is wrong; what it holds is not.
TEST(I2cDriver, BitsThatFlicker) {
    const test_board board = new_altered("mpu_master", {{"self/sim_i2c/chip/16/flicker", "0x81"}});
    EXPECT_EQ(answers(board, {read_of(16, 0, 2), read_of(16, 0, 2), read_of(16, 0, 2)}),
              "0x0 buffer=[9c 02]\n0x0 buffer=[1d 83]\n0x0 buffer=[9c 02]\n");
    EXPECT_EQ(answers(board, {read_of(16, 0, 1), read_of(17, 0, 1), read_of(17, 0, 1)}),
              "0x0 buffer=[1d]\n0x0 buffer=[9c]\n0x0 buffer=[9c]\n");
}

TEST(I2cDriver, TransfersHaveLimits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {read_of(0, 0, 0), read_of(0, 0, 257), read_of(0, 8, 1), read_of(32, 0, 0),
                        "drv_i2c_read_u32(chip_id=0, address=8)", "drv_i2c_write_u32(chip_id=0, address=8, value=0)"}),
        out_of_range + out_of_range + out_of_range + out_of_range + out_of_range + out_of_range);
    EXPECT_TRUE(answers(board, {read_of(0, 0, 256)}).starts_with("0x0 buffer=["));
    EXPECT_EQ(
        answers(board, {read_of(2, 0, 1), "drv_i2c_read(inst_id=0xff000005, chip_id=0, length=1)",
                        "drv_i2c_read(inst_id=0xff000006, chip_id=0, length=1)",
                        "drv_i2c_read(chip_id=0, length=4, buffer=null)", "drv_i2c_read_u32(chip_id=0, value=null)"}),
        no_such_device + not_supported + no_such_instance + null_pointer + null_pointer);
}

} // namespace kestro_tests
