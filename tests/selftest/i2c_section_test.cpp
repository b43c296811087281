// The I2C section: a chip that answers is read the same each time, takes back what it holds, and still holds it.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string chip_id(int entry, const std::string &answer) {
    return element("i2c", "i2c_dev", entry, "chip_id", answer);
}

std::string of_chip(const std::string &chip) {
    return "(inst_id=0xffffffff, chip_id=" + chip + ", address=0";
}

std::string reads_bytes(const std::string &chip, const std::string &answer = "0") {
    return "drv_i2c_read" + of_chip(chip) + ", length=10) = " + answer + " x1\n";
}

std::string reads(const std::string &chip, const std::string &answer, int times = 1) {
    return "drv_i2c_read_u32" + of_chip(chip) + ") = " + answer + " x" + std::to_string(times) + "\n";
}

std::string writes(const std::string &chip, const std::string &value, const std::string &code = "0") {
    return "drv_i2c_write_u32" + of_chip(chip) + ", value=" + value + ") = " + code + " x1\n";
}

std::string good_chip(const std::string &chip, const std::string &value) {
    return reads_bytes(chip) + reads(chip, "0 value=" + value, 12) + writes(chip, value);
}

// Chip 0x52 alone.
void expect_chip(const std::string &script, const std::string &lines, int result) {
    expect_part("i2c", entry_count("i2c", "i2c_dev", 1) + chip_id(0, "0 value=0x52") + script, lines, result);
}

} // namespace

TEST(I2cSectionTest, TheNodeIsRequired) {
    const std::string line = "Error: i2c xml get i2c_dev entry num fail.\r\n";
    expect_part("i2c", no_entry_count("i2c", "i2c_dev", "0x51"), line, -1);
    expect_part("i2c", entry_count("i2c", "i2c_dev", 0), line, -1);
    expect_part("i2c", no_entry_count("i2c", "i2c_dev", "0x51 count=2"), line, -1);
}

TEST(I2cSectionTest, AnEntryWithoutChipFailsAndTheNextIsTested) {
    expect_part("i2c",
                entry_count("i2c", "i2c_dev", 2) + chip_id(0, "0x8111b5") + chip_id(1, "0 value=0x11") +
                    good_chip("0x11", "0x0403"),
                "Error: i2c xml get chip_id fail. 0x8111b5  \r\n"
                "Success: i2c chip 0x11 i2c read write pass. address 0x0 set_value 0x403 get_value 0x403\r\n",
                -1);
}

TEST(I2cSectionTest, AChipThatIsReadTheSameEachTime) {
    expect_chip(good_chip("0x52", "0xdeadbeef"),
                "Success: i2c chip 0x52 i2c read write pass. address 0x0 set_value 0xdeadbeef get_value 0xdeadbeef\r\n",
                0);
}

TEST(I2cSectionTest, AChipThatDoesNotAnswerPasses) {
    expect_chip(reads_bytes("0x52", "0x811101a4"), "Info   : i2c chip 0x52 i2c read fail 0x811101a4.\r\n", 0);
    expect_part("i2c",
                entry_count("i2c", "i2c_dev", 2) + chip_id(0, "0 value=0xa0") + chip_id(1, "0 value=0xffffffff") +
                    reads_bytes("0xa0", "0x61") + good_chip("0xffffffff", "7"),
                "Info   : i2c chip 0xa0 i2c read fail 0x61.\r\n"
                "Success: i2c chip 0xffffffff i2c read write pass. address 0x0 set_value 0x7 get_value 0x7\r\n",
                0);
}

TEST(I2cSectionTest, TheFirstNumberCannotBeRead) {
    expect_chip(reads_bytes("0x52") + reads("0x52", "0x62"),
                "Error: i2c chip 0x52 i2c read u32 fail 0x62. address 0x0 value 0x0 \r\n", -1);
    expect_chip(reads_bytes("0x52") + reads("0x52", "0x62 value=0xab"),
                "Error: i2c chip 0x52 i2c read u32 fail 0x62. address 0x0 value 0xab \r\n", -1);
}

TEST(I2cSectionTest, ARepeatedReadFails) {
    expect_chip(reads_bytes("0x52") + reads("0x52", "0 value=9") + reads("0x52", "0x63"),
                "Error: i2c chip 0x52 i2c repeated read u32 fail 0x63. times 0 address 0x0 read value 0x0 expect value "
                "0x9\r\n",
                -1);
    // With the right value, too.
    expect_chip(reads_bytes("0x52") + reads("0x52", "0 value=9", 10) + reads("0x52", "0x63 value=9"),
                "Error: i2c chip 0x52 i2c repeated read u32 fail 0x63. times 9 address 0x0 read value 0x9 expect value "
                "0x9\r\n",
                -1);
}

TEST(I2cSectionTest, ARepeatedReadGivesAnotherValue) {
    expect_chip(reads_bytes("0x52") + reads("0x52", "0 value=0x19", 4) + reads("0x52", "0 value=0x1b"),
                "Error: i2c chip 0x52 i2c repeated read u32 fail 0x0. times 3 address 0x0 read value 0x1b expect value "
                "0x19\r\n",
                -1);
    // Each read begins with 0: a driver that writes nothing does not repeat the value before.
    expect_chip(reads_bytes("0x52") + reads("0x52", "0 value=0x19", 2) + reads("0x52", "0"),
                "Error: i2c chip 0x52 i2c repeated read u32 fail 0x0. times 1 address 0x0 read value 0x0 expect value "
                "0x19\r\n",
                -1);
}

// The number is read again all the same: it decides.
TEST(I2cSectionTest, ARefusedWriteIsOnlyTold) {
    const std::string read = reads_bytes("0x52") + reads("0x52", "0 value=0x19", 11) + writes("0x52", "0x19", "0x64");
    const std::string told = "Info   : i2c chip 0x52 i2c write u32 fail 0x64. address 0x0 value 0x19 \r\n";
    expect_chip(read + reads("0x52", "0 value=0x19"),
                told + "Success: i2c chip 0x52 i2c read write pass. address 0x0 set_value 0x19 get_value 0x19\r\n", 0);
    expect_chip(read + reads("0x52", "0 value=0x18"),
                told + "Error: i2c chip 0x52 i2c read u32 after write fail 0x0. address 0x0 value 0x18\r\n", -1);
}

TEST(I2cSectionTest, TheNumberAfterTheWrite) {
    const std::string written = reads_bytes("0x52") + reads("0x52", "0 value=0x19", 11) + writes("0x52", "0x19");
    expect_chip(written + reads("0x52", "0 value=0x1a"),
                "Error: i2c chip 0x52 i2c read u32 after write fail 0x0. address 0x0 value 0x1a\r\n", -1);
    expect_chip(written + reads("0x52", "0"),
                "Error: i2c chip 0x52 i2c read u32 after write fail 0x0. address 0x0 value 0x0\r\n", -1);
    expect_chip(written + reads("0x52", "0x65 value=0x19"),
                "Error: i2c chip 0x52 i2c read u32 after write fail 0x65. address 0x0 value 0x19\r\n", -1);
}

TEST(I2cSectionTest, TheFirstChipFailsAndTheSecondIsGood) {
    expect_part("i2c",
                entry_count("i2c", "i2c_dev", 2) + chip_id(0, "0") + chip_id(1, "0 value=1") + reads_bytes("0") +
                    reads("0", "0x66") + good_chip("1", "0"),
                "Error: i2c chip 0x0 i2c read u32 fail 0x66. address 0x0 value 0x0 \r\n"
                "Success: i2c chip 0x1 i2c read write pass. address 0x0 set_value 0x0 get_value 0x0\r\n",
                -1);
}

// What each chip holds at its first registers: the expanders their inputs and outputs, the synthesisers who they are,
// the EEPROM the start of its first section.
TEST(I2cSectionTest, TheDeliveredBoardsPass) {
    const std::string pass = " i2c read write pass. address 0x0 set_value ";
    const auto chip = [&](const std::string &number, const std::string &value) {
        return "Success: i2c chip " + number + pass + value + " get_value " + value + "\r\n";
    };
    const std::string expanders = chip("0x0", "0xff0fa50f") + chip("0x1", "0xffff3c7e");
    const std::string synthesisers = chip("0x10", "0x1029c") + chip("0x11", "0x1029c");
    const process_result master = run_part({}, "i2c");
    EXPECT_EQ(master.out.substr(0, expanders.size() + synthesisers.size()), expanders + synthesisers);
    for (const std::string board : {"mpu_master", "mpu_slave", "lpu"}) {
        const std::string out = run_part({"--board", board}, "i2c").out;
        EXPECT_NE(out.find("Success: i2c chip 0x20" + pass), std::string::npos) << board;
        EXPECT_TRUE(out.ends_with("result 0\n")) << out;
        EXPECT_EQ(out.find("Info"), std::string::npos) << out;
        EXPECT_EQ(out.find("Error"), std::string::npos) << out;
    }
}
