// flash_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(FlashTest, UsageListsTheSubCommandsInOrder) {
    expect_run("flash_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " flash_read\n flash_write\n mtd_read\n mtd_write\n get_nand_is_exist\n get_nand_part_num\n",
               0);
}

TEST(FlashTest, Read) {
    expect_success("flash_test flash_read 0xff000007 8 0x10 4",
                   "drv_flash_read(inst_id=0xff000007, section_id=8, offset=16, len=4) = 0 buffer=[00 01 7f ff]",
                   "buff:0x0 0x1 0x7f 0xff \r\n");
    expect_success("flash_test flash_read 8 010 1",
                   "drv_flash_read(inst_id=0xffffffff, section_id=8, offset=8, len=1) = 0 buffer=[a5]",
                   "buff:0xa5 \r\n");
    expect_success("flash_test flash_read 1 2 3 4 5",
                   "drv_flash_read(inst_id=1, section_id=2, offset=3, len=4) = 0 buffer=[01 02 03 04]",
                   "buff:0x1 0x2 0x3 0x4 \r\n");
    expect_success("flash_test flash_read board section offset 2",
                   "drv_flash_read(inst_id=0, section_id=0, offset=0, len=2) = 0 buffer=[10 20]",
                   "buff:0x10 0x20 \r\n");
    expect_success("flash_test flash_read 8 4294967296 none",
                   "drv_flash_read(inst_id=0xffffffff, section_id=8, offset=0xffffffff, len=0) = 0 buffer=[]",
                   "buff:\r\n");
}

TEST(FlashTest, ReadThatFailsShowsTheZeroedArea) {
    expect_failure("flash_test flash_read 8 0x100000 3",
                   "drv_flash_read(inst_id=0xffffffff, section_id=8, offset=0x100000, len=3) = 0x81110107",
                   "buff:0x0 0x0 0x0 \r\n");
    expect_failure("flash_test flash_read 8 0 2",
                   "drv_flash_read(inst_id=0xffffffff, section_id=8, offset=0, len=2) = 0x12 buffer=[55 66]",
                   "buff:0x55 0x66 \r\n");
}

TEST(FlashTest, ReadWithTooFewWords) {
    const std::string usage = "./kestro_test flash_test flash_read [inst_id] [section_id] [offset] [len]\r\n";
    expect_failure("flash_test flash_read", "", usage);
    expect_failure("flash_test flash_read 8", "", usage);
    expect_failure("flash_test flash_read 8 0", "", usage);
}

TEST(FlashTest, Write) {
    expect_success("flash_test flash_write 0xff000007 8 0x10 0x12,0x34,56,67 4",
                   "drv_flash_write(inst_id=0xff000007, section_id=8, offset=16, buffer=[12 34 56 67], len=4) = 0",
                   "\r\nbuff:0x12,0x34,56,67\r\n"
                   "buff[0],value=[0x12]\r\nbuff[1],value=[0x34]\r\nbuff[2],value=[0x56]\r\nbuff[3],value=[0x67]\r\n");
    expect_success("flash_test flash_write 8 0 0x12,0x34,56,67 2",
                   "drv_flash_write(inst_id=0xffffffff, section_id=8, offset=0, buffer=[12 34], len=2) = 0",
                   "\r\nbuff:0x12,0x34,56,67\r\nbuff[0],value=[0x12]\r\nbuff[1],value=[0x34]\r\n");
    expect_success("flash_test flash_write 1 2 3 1ff 1 9",
                   "drv_flash_write(inst_id=1, section_id=2, offset=3, buffer=[ff], len=1) = 0",
                   "\r\nbuff:1ff\r\nbuff[0],value=[0xff]\r\n");
    expect_success("flash_test flash_write board section offset list 1",
                   "drv_flash_write(inst_id=0, section_id=0, offset=0, buffer=[00], len=1) = 0",
                   "\r\nbuff:list\r\nbuff[0],value=[0x0]\r\n");
}

TEST(FlashTest, WriteOfAListThatEndsEarly) {
    expect_success("flash_test flash_write 8 0 7,8 4",
                   "drv_flash_write(inst_id=0xffffffff, section_id=8, offset=0, buffer=[07 08 00 00], len=4) = 0",
                   "\r\nbuff:7,8\r\nbuff[0],value=[0x7]\r\nbuff[1],value=[0x8]\r\nbuff[1],value=[0x8]\r\n");
    expect_success("flash_test flash_write 8 0 7,8 none",
                   "drv_flash_write(inst_id=0xffffffff, section_id=8, offset=0, buffer=[], len=0) = 0",
                   "\r\nbuff:7,8\r\n");
    expect_success("flash_test flash_write 8 0 '' 1",
                   "drv_flash_write(inst_id=0xffffffff, section_id=8, offset=0, buffer=[00], len=1) = 0",
                   "\r\nbuff:\r\nbuff[0],value=[0x0]\r\n");
}

TEST(FlashTest, WriteThatFailsOrLacksWords) {
    expect_failure("flash_test flash_write 9 0 1 1",
                   "drv_flash_write(inst_id=0xffffffff, section_id=9, offset=0, buffer=[01], len=1) = 0x81110103",
                   "\r\nbuff:1\r\nbuff[0],value=[0x1]\r\n");
    const std::string usage = "./kestro_test flash_test flash_write [inst_id] [section_id] [offset] [buffer] [len]\r\n";
    expect_failure("flash_test flash_write", "", usage);
    expect_failure("flash_test flash_write 8 0 1", "", usage);
}

TEST(FlashTest, MtdRead) {
    expect_success("flash_test mtd_read env 0x20 3",
                   "drv_flash_mtd_read(mtd_name=\"env\", offset=32, len=3) = 0 buffer=[4b 45 4e]",
                   "buff:0x4b 0x45 0x4e \r\n");
    expect_success("flash_test mtd_read 'two words' 1 1 more",
                   "drv_flash_mtd_read(mtd_name=\"two words\", offset=1, len=1) = 0 buffer=[00]", "buff:0x0 \r\n");
    expect_success("flash_test mtd_read '' offset len",
                   "drv_flash_mtd_read(mtd_name=\"\", offset=0, len=0) = 0 buffer=[]", "buff:\r\n");
    expect_failure("flash_test mtd_read nothing 0 2",
                   "drv_flash_mtd_read(mtd_name=\"nothing\", offset=0, len=2) = 0x81110103", "buff:0x0 0x0 \r\n");
}

TEST(FlashTest, MtdReadWithTooFewWords) {
    const std::string usage = "./kestro_test flash_test mtd_read [mtd_name] [offset] [len]\r\n";
    expect_failure("flash_test mtd_read", "", usage);
    expect_failure("flash_test mtd_read env", "", usage);
    expect_failure("flash_test mtd_read env 0", "", usage);
}

TEST(FlashTest, MtdWrite) {
    expect_success("flash_test mtd_write log 0x20 0xde,ad 2",
                   "drv_flash_mtd_write(mtd_name=\"log\", offset=32, buffer=[de ad], len=2) = 0",
                   "\r\nbuff:0xde,ad\r\nbuff[0],value=[0xde]\r\nbuff[1],value=[0xad]\r\n");
    expect_success("flash_test mtd_write log offset 1 1 more",
                   "drv_flash_mtd_write(mtd_name=\"log\", offset=0, buffer=[01], len=1) = 0",
                   "\r\nbuff:1\r\nbuff[0],value=[0x1]\r\n");
    expect_failure("flash_test mtd_write log 0 1,2 3",
                   "drv_flash_mtd_write(mtd_name=\"log\", offset=0, buffer=[01 02 00], len=3) = 0x811101a4",
                   "\r\nbuff:1,2\r\nbuff[0],value=[0x1]\r\nbuff[1],value=[0x2]\r\nbuff[1],value=[0x2]\r\n");
    const std::string usage = "./kestro_test flash_test mtd_write [mtd_name] [offset] [buffer] [len]\r\n";
    expect_failure("flash_test mtd_write", "", usage);
    expect_failure("flash_test mtd_write log 0 1", "", usage);
}

TEST(FlashTest, AreasThatCannotBeHad) {
    const auto silent = [](const std::string &line, const std::string &row, const std::string &operation) {
        expect_without_text_area(line, operation + " = 0",
                                 timing_lines + operate_fail(row) + operate_fail("flash_test"), 255);
    };
    silent("flash_test flash_read 8 0 3", "flash_read", "drv_flash_read");
    silent("flash_test flash_write 8 0 1 3", "flash_write", "drv_flash_write");
    silent("flash_test mtd_read env 0 3", "mtd_read", "drv_flash_mtd_read");
    silent("flash_test mtd_write env 0 1 3", "mtd_write", "drv_flash_mtd_write");
}

TEST(FlashTest, LengthsThatNoAreaHas) {
    for (const std::string len : {"4294967295", "0xffffffff", "-1", "2147483647"}) {
        expect_failure("flash_test flash_read 8 0 " + len, "", "");
        expect_failure("flash_test flash_write 8 0 1 " + len, "", "");
        expect_failure("flash_test mtd_read env 0 " + len, "", "");
        expect_failure("flash_test mtd_write env 0 1 " + len, "", "");
    }
}

TEST(FlashTest, NandIsExist) {
    expect_success("flash_test get_nand_is_exist", "drv_flash_get_nand_is_exist() = 0 is_exist=1",
                   "drv_flash_get_nand_is_exist:[ret]:0x0\r\n is_exist:1\r\n");
    expect_success("flash_test get_nand_is_exist 7", "drv_flash_get_nand_is_exist() = 0 is_exist=0xffffffff",
                   "drv_flash_get_nand_is_exist:[ret]:0x0\r\n is_exist:-1\r\n");
    expect_failure("flash_test get_nand_is_exist", "drv_flash_get_nand_is_exist() = 0x811101a4",
                   "drv_flash_get_nand_is_exist:[ret]:0x811101a4\r\n is_exist:0\r\n");
}

TEST(FlashTest, NandPartNum) {
    expect_success("flash_test get_nand_part_num", "drv_flash_get_nand_part_num() = 0 num=2",
                   "drv_flash_get_nand_part_num:[ret]:0x0\r\n num:2\r\n");
    expect_success("flash_test get_nand_part_num 7", "drv_flash_get_nand_part_num() = 0 num=0x80000000",
                   "drv_flash_get_nand_part_num:[ret]:0x0\r\n num:-2147483648\r\n");
    expect_failure("flash_test get_nand_part_num", "drv_flash_get_nand_part_num() = 0x12",
                   "drv_flash_get_nand_part_num:[ret]:0x12\r\n num:0\r\n");
}
