// board_test, memory sizes: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardMemoryTest, GetBootromSize) {
    expect_success("board_test board_get_bootrom_size", "drv_board_get_bootrom_size(inst_id=0xffffffff) = 0 size=16",
                   printed("bootrom_size 16M-0G\r\n", "para[0]=0x0 para[1]=0x10 "));
    expect_success("board_test board_get_bootrom_size 2", "drv_board_get_bootrom_size(inst_id=2) = 0 size=2048",
                   printed("bootrom_size 2048M-2G\r\n", "para[0]=0x0 para[1]=0x800 "));
    expect_success("board_test board_get_bootrom_size rom 2", "drv_board_get_bootrom_size(inst_id=0) = 0 size=0",
                   printed("bootrom_size 0M-0G\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("board_test board_get_bootrom_size", "drv_board_get_bootrom_size(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_bootrom_size 2", "drv_board_get_bootrom_size(inst_id=2) = 3 size=16",
                   printed("", "para[0]=0x3 para[1]=0x10 "));
}

TEST(BoardMemoryTest, GetFlashSizeMeansTheNorFlash) {
    expect_success("board_test board_get_flash_size", "drv_board_get_flash_size(inst_id=0xffffffff) = 0 size=64",
                   printed("norflash_size 64M-0G\r\n", "para[0]=0x0 para[1]=0x40 "));
    expect_success("board_test board_get_flash_size 0x5", "drv_board_get_flash_size(inst_id=5) = 0 size=1023",
                   printed("norflash_size 1023M-0G\r\n", "para[0]=0x0 para[1]=0x3ff "));
    expect_success("board_test board_get_flash_size nor 5", "drv_board_get_flash_size(inst_id=0) = 0 size=1024",
                   printed("norflash_size 1024M-1G\r\n", "para[0]=0x0 para[1]=0x400 "));
    expect_failure("board_test board_get_flash_size", "drv_board_get_flash_size(inst_id=0xffffffff) = 0xdead",
                   printed("", "para[0]=0xdead para[1]=0x0 "));
}

TEST(BoardMemoryTest, GetNandflashSize) {
    expect_success("board_test board_get_nandflash_size",
                   "drv_board_get_nandflash_size(inst_id=0xffffffff) = 0 size=4096",
                   printed("nandflash_size 4096M-4G\r\n", "para[0]=0x0 para[1]=0x1000 "));
    expect_success("board_test board_get_nandflash_size 5", "drv_board_get_nandflash_size(inst_id=5) = 0 size=512",
                   printed("nandflash_size 512M-0G\r\n", "para[0]=0x0 para[1]=0x200 "));
    expect_success("board_test board_get_nandflash_size nand 5",
                   "drv_board_get_nandflash_size(inst_id=0) = 0 size=0xffffffff",
                   printed("nandflash_size -1M-4194303G\r\n", "para[0]=0x0 para[1]=0xffffffff "));
    expect_failure("board_test board_get_nandflash_size",
                   "drv_board_get_nandflash_size(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(BoardMemoryTest, GetNvramSize) {
    expect_success("board_test board_get_nvram_size", "drv_board_get_nvram_size(inst_id=0xffffffff) = 0 size=1",
                   printed("nvram_size 1M-0G\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_nvram_size 7", "drv_board_get_nvram_size(inst_id=7) = 0 size=8",
                   printed("nvram_size 8M-0G\r\n", "para[0]=0x0 para[1]=0x8 "));
    expect_success("board_test board_get_nvram_size nv 7", "drv_board_get_nvram_size(inst_id=0) = 0 size=8",
                   printed("nvram_size 8M-0G\r\n", "para[0]=0x0 para[1]=0x8 "));
    expect_failure("board_test board_get_nvram_size 7", "drv_board_get_nvram_size(inst_id=7) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(BoardMemoryTest, GetSdramSizeCutsToWholeGibibytes) {
    expect_success("board_test board_get_sdram_size", "drv_board_get_sdram_size(inst_id=0xffffffff) = 0 size=1536",
                   printed("sdram_size 1536M-1G\r\n", "para[0]=0x0 para[1]=0x600 "));
    expect_success("board_test board_get_sdram_size 1", "drv_board_get_sdram_size(inst_id=1) = 0 size=16384",
                   printed("sdram_size 16384M-16G\r\n", "para[0]=0x0 para[1]=0x4000 "));
    expect_success("board_test board_get_sdram_size ram 1", "drv_board_get_sdram_size(inst_id=0) = 0 size=2047",
                   printed("sdram_size 2047M-1G\r\n", "para[0]=0x0 para[1]=0x7ff "));
    expect_failure("board_test board_get_sdram_size", "drv_board_get_sdram_size(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_sdram_size", "drv_board_get_sdram_size(inst_id=0xffffffff) = 1 size=1536",
                   printed("", "para[0]=0x1 para[1]=0x600 "));
}
