// Flash by section and by partition: what is written through one view is read through the others.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";

std::string read_section(uint32_t id, const std::string &offset, uint32_t len) {
    return "drv_flash_read(section_id=" + std::to_string(id) + ", offset=" + offset + ", len=" + std::to_string(len) +
           ")";
}

std::string write_section(uint32_t id, const std::string &offset, const std::string &buffer) {
    return "drv_flash_write(section_id=" + std::to_string(id) + ", offset=" + offset + ", buffer=" + buffer + ")";
}

std::string read_mtd(const std::string &name, const std::string &offset, uint32_t len) {
    return "drv_flash_mtd_read(mtd_name=\"" + name + "\", offset=" + offset + ", len=" + std::to_string(len) + ")";
}

std::string write_mtd(const std::string &name, const std::string &offset, const std::string &buffer) {
    return "drv_flash_mtd_write(mtd_name=\"" + name + "\", offset=" + offset + ", buffer=" + buffer + ")";
}

std::string gives(const std::string &buffer) {
    return "0x0 buffer=" + buffer + "\n";
}

// 512 bytes, a page of the NAND.
std::string page_of(const std::string &byte) {
    std::string page = "[" + byte;
    for (int i = 1; i < 512; ++i) {
        page += " " + byte;
    }
    return page + "]";
}

test_board master() {
    return new_delivered("mpu_master");
}

} // namespace

TEST(Flash, BootSectionsHoldStartUpSoftware) {
    EXPECT_EQ(answers(master(), {read_section(0, "0", 12), read_section(1, "0", 12), read_mtd("boot", "0x20000", 12),
                                 read_section(0, "12", 2), read_section(4, "0", 2)}),
              gives(bytes("BIOS 2.04.11")) + gives(bytes("BIOS 2.04.11")) + gives(bytes("BIOS 2.04.11")) +
                  gives("[ff ff]") + gives("[ff ff]"));
}

TEST(Flash, SectionsAndPartitionsAreTheSameBytes) {
    EXPECT_EQ(answers(master(), {write_section(4, "0x100", "[12 34 56]"), read_mtd("log", "0x100", 3),
                                 read_mtd("flash", "0x48100", 3), write_mtd("flash", "0x48200", "[a5 5a]"),
                                 read_section(4, "0x200", 2), read_mtd("log", "0x1ff", 4)}),
              ok + gives("[12 34 56]") + gives("[12 34 56]") + ok + gives("[a5 5a]") + gives("[ff a5 5a ff]"));
}

TEST(Flash, ASectionIsErasedOnTheWayAndAPartitionIsNot) {
    EXPECT_EQ(answers(master(),
                      {write_section(2, "0", "[0f 00]"), write_section(2, "0", "[f0 ff]"), read_section(2, "0", 3)}),
              ok + ok + gives("[f0 ff ff]"));
    EXPECT_EQ(answers(master(), {write_mtd("log", "0", "[f3 00]"), write_mtd("log", "0", "[3c ff]"),
                                 read_mtd("log", "0", 3), write_section(4, "0", "[ff]"), read_mtd("log", "0", 3)}),
              ok + ok + gives("[30 00 ff]") + ok + gives("[ff 00 ff]"));
}

TEST(Flash, KeepsItsBytes) {
    const test_board board = master();
    EXPECT_EQ(answers(board, {write_section(2, "0x7ffe", "[01 02]")}), ok);
    EXPECT_EQ(
        answers(board, {"drv_reset_self_board(code={code=1 year=2026 month=1 day=1})", read_section(2, "0x7ffe", 2)}),
        ok + gives("[01 02]"));
}

TEST(Flash, EndsOfSectionsAndPartitions) {
    EXPECT_EQ(
        answers(master(),
                {read_section(2, "0x7fff", 1), read_section(2, "0x7fff", 2), read_section(2, "0x8000", 0),
                 read_section(2, "0x8001", 0), read_section(2, "0xffffffff", 2), write_section(2, "0x7fff", "[01 02]"),
                 read_section(2, "0x7fff", 1), read_section(8, "0xfffff", 1), read_section(8, "0x100000", 1)}),
        gives("[ff]") + out_of_range + gives("[]") + out_of_range + out_of_range + out_of_range + gives("[ff]") +
            gives("[ff]") + out_of_range);
    EXPECT_EQ(answers(master(), {read_mtd("env", "0x7ffff", 1), read_mtd("env", "0x7ffff", 2),
                                 write_mtd("env", "0x7ffff", "[01 02]"), read_mtd("flash", "0x17ffff", 2),
                                 read_mtd("flash", "0xffffffff", 1)}),
              gives("[ff]") + out_of_range + out_of_range + out_of_range + out_of_range);
}

TEST(Flash, UnknownNumbersAndNames) {
    EXPECT_EQ(answers(master(), {read_section(3, "0", 1), write_section(9, "0", "[01]"), read_mtd("", "0", 1),
                                 read_mtd("Log", "0", 1), write_mtd("logs", "0", "[01]")}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
}

TEST(Flash, NandIsProgrammedInWholePages) {
    EXPECT_EQ(answers(master(),
                      {write_mtd("user", "0", "[01]"), write_mtd("user", "1", page_of("5a")),
                       write_mtd("user", "512", page_of("5a")), read_mtd("user", "511", 2), read_mtd("user", "1023", 2),
                       write_mtd("user", "512", page_of("c3")), read_mtd("user", "512", 1)}),
              bad_value + bad_value + ok + gives("[ff 5a]") + gives("[5a ff]") + ok + gives("[42]"));
}

// Block 2 is bad, so byte 0x8000 of the partition stands in block 3.
TEST(Flash, NandPassesOverBadBlocks) {
    const test_board board = master();
    EXPECT_EQ(
        answers(board, {write_mtd("system", "0x8000", page_of("11")), write_mtd("system", "0x7e00", page_of("22")),
                        read_mtd("system", "0x7fff", 2), read_mtd("system", "0x13fff", 1),
                        read_mtd("system", "0x14000", 1), write_mtd("system", "0x13e00", page_of("33"))}),
        ok + ok + gives("[22 11]") + gives("[ff]") + out_of_range + ok);
    const std::string image = read_file(board.state + "/images/nand-slot9.bin");
    EXPECT_EQ(image[0x7FFF], '\x22');
    EXPECT_EQ(image[0x8000], '\xFF');
    EXPECT_EQ(image[0xC000], '\x11');
    EXPECT_EQ(image[0x17FFF], '\x33');
    EXPECT_EQ(image[0x18000], '\xFF');
}

// What stood in a block that turned bad is gone, and what came behind it has moved up.
TEST(Flash, ABlockTurnsBad) {
    const std::string state = new_scratch_dir() + "/state";
    const std::string table = "slot9/flash/nand/0/bad_blocks=";
    EXPECT_EQ(
        answers_of({"--state", state}, {write_mtd("system", "0x4000", page_of("11")),
                                        write_mtd("system", "0x8000", page_of("22")), read_mtd("system", "0x4000", 1)}),
        ok + ok + gives("[11]"));
    EXPECT_EQ(answers_of({"--state", state, "--set", table + "0x6"},
                         {read_mtd("system", "0x4000", 1), read_mtd("system", "0x10000", 1)}),
              gives("[22]") + out_of_range);
    EXPECT_EQ(answers_of({"--state", state, "--set", table + "0x3f"}, {read_mtd("system", "0", 1)}), out_of_range);
}

TEST(Flash, NandIsCounted) {
    const std::string exists = "drv_flash_get_nand_is_exist()";
    const std::string number = "drv_flash_get_nand_part_num()";
    EXPECT_EQ(answers(master(), {exists, number}), "0x0 is_exist=1\n0x0 num=2\n");
    EXPECT_EQ(answers(new_delivered("lpu"), {exists, number}), "0x0 is_exist=0\n" + not_supported);
}

TEST(Flash, OfOtherBoards) {
    const test_board board = master();
    const std::string of_slave = "drv_flash_read(inst_id=0xff00000a, section_id=2, offset=0, len=1)";
    EXPECT_EQ(answers(board, {"drv_flash_write(inst_id=0xff00000a, section_id=2, offset=0, buffer=[07])", of_slave,
                              read_section(2, "0", 1)}),
              ok + gives("[07]") + gives("[ff]"));
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {read_section(2, "0", 1)}), gives("[07]"));
    EXPECT_EQ(
        answers(seen_from(board, "lpu"), {read_section(0, "0", 4), read_section(8, "0", 1), read_mtd("log", "0", 1)}),
        gives(bytes("BIOS")) + no_such_device + no_such_device);
    EXPECT_EQ(answers(board, {"drv_flash_read(inst_id=0xff000005, section_id=0, offset=0, len=1)",
                              "drv_flash_read(inst_id=0xff000001, section_id=0, offset=0, len=1)"}),
              not_supported + no_such_instance);
}

TEST(Flash, MissingAreas) {
    EXPECT_EQ(
        answers(master(), {"drv_flash_read(section_id=0, len=1, buffer=null)",
                           "drv_flash_write(section_id=0, len=1, buffer=null)",
                           "drv_flash_mtd_read(mtd_name=\"boot\", len=1, buffer=null)",
                           "drv_flash_mtd_read(mtd_name=null, len=1)",
                           "drv_flash_mtd_write(mtd_name=\"boot\", len=1, buffer=null)",
                           "drv_flash_mtd_write(mtd_name=null, buffer=[01])",
                           "drv_flash_get_nand_is_exist(is_exist=null)", "drv_flash_get_nand_part_num(num=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer);
}

} // namespace kestro_tests
