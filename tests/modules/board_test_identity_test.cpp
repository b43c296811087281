// board_test, identity: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardIdentityTest, Init) {
    expect_success("board_test board_init", "drv_board_init(inst_id=0xffffffff) = 0", printed("", "para[0]=0x0 "));
    expect_success("board_test board_init 0xff000005", "drv_board_init(inst_id=0xff000005) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_init 010 9", "drv_board_init(inst_id=8) = 0", printed("", "para[0]=0x0 "));
    expect_success("board_test board_init board", "drv_board_init(inst_id=0) = 0", printed("", "para[0]=0x0 "));
    expect_failure("board_test board_init", "drv_board_init(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 "));
}

TEST(BoardIdentityTest, Deinit) {
    expect_success("board_test board_deinit", "drv_board_deinit(inst_id=0xffffffff) = 0", printed("", "para[0]=0x0 "));
    expect_success("board_test board_deinit 7", "drv_board_deinit(inst_id=7) = 0", printed("", "para[0]=0x0 "));
    expect_success("board_test board_deinit 7 8 9", "drv_board_deinit(inst_id=7) = 0", printed("", "para[0]=0x0 "));
    expect_success("board_test board_deinit x", "drv_board_deinit(inst_id=0) = 0", printed("", "para[0]=0x0 "));
    expect_failure("board_test board_deinit 7", "drv_board_deinit(inst_id=7) = 0x21", printed("", "para[0]=0x21 "));
}

TEST(BoardIdentityTest, GetType) {
    expect_success("board_test board_get_type", "drv_board_get_type(inst_id=0xffffffff) = 0 type=0x1a2b",
                   printed("success, type:0x00001a2b\r\n", "para[0]=0x0 para[1]=0x1a2b "));
    expect_success("board_test board_get_type 0x3", "drv_board_get_type(inst_id=3) = 0 type=0x87654321",
                   printed("success, type:0x87654321\r\n", "para[0]=0x0 para[1]=0x87654321 "));
    expect_success("board_test board_get_type 3 4", "drv_board_get_type(inst_id=3) = 0 type=1",
                   printed("success, type:0x00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_type none", "drv_board_get_type(inst_id=0) = 0 type=1",
                   printed("success, type:0x00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
}

TEST(BoardIdentityTest, GetTypeFailure) {
    expect_failure("board_test board_get_type", "drv_board_get_type(inst_id=0xffffffff) = 0x811101a4",
                   printed("failed, type:0x00000000 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_type 3", "drv_board_get_type(inst_id=3) = 5 type=0x99",
                   printed("failed, type:0x00000099 ret:0x5\r\n", "para[0]=0x5 para[1]=0x99 "));
}

TEST(BoardIdentityTest, SetType) {
    expect_success("board_test board_set_type 5", "drv_board_set_type(inst_id=0xffffffff, type=5) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_type 1 5", "drv_board_set_type(inst_id=1, type=5) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_type 1 5 6", "drv_board_set_type(inst_id=1, type=5) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_type big", "drv_board_set_type(inst_id=0xffffffff, type=0) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_type big 12kg", "drv_board_set_type(inst_id=0, type=12) = 0",
                   printed("", "para[0]=0x0 "));
    expect_failure("board_test board_set_type 1 5", "drv_board_set_type(inst_id=1, type=5) = 0xdead",
                   printed("", "para[0]=0xdead "));
    expect_failure("board_test board_set_type", "", "./kestro_test board_test board_set_type [inst_id type]\r\n");
}

TEST(BoardIdentityTest, GetPcbVer) {
    expect_success("board_test board_get_pcb_ver", "drv_board_get_pcb_ver(inst_id=0xffffffff) = 0 ver=2",
                   printed("success, pcb_ver:0x00000002\r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_success("board_test board_get_pcb_ver 0x10", "drv_board_get_pcb_ver(inst_id=16) = 0 ver=0x12345678",
                   printed("success, pcb_ver:0x12345678\r\n", "para[0]=0x0 para[1]=0x12345678 "));
    expect_success("board_test board_get_pcb_ver q 1", "drv_board_get_pcb_ver(inst_id=0) = 0 ver=2",
                   printed("success, pcb_ver:0x00000002\r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_failure("board_test board_get_pcb_ver", "drv_board_get_pcb_ver(inst_id=0xffffffff) = 0x811101a4",
                   printed("failed, pcb_ver:0x00000000 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_pcb_ver 2", "drv_board_get_pcb_ver(inst_id=2) = 1 ver=3",
                   printed("failed, pcb_ver:0x00000003 ret:0x1\r\n", "para[0]=0x1 para[1]=0x3 "));
}

TEST(BoardIdentityTest, GetUsrPcbVerAlwaysAsksTheBoardItself) {
    expect_success("board_test board_get_usr_pcb_ver", "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = 0 ver=0xb",
                   printed("success, ver:0x000b\r\n", "para[0]=0x0 para[1]=0xb "));
    expect_success("board_test board_get_usr_pcb_ver 3", "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = 0 ver=0x102",
                   printed("success, ver:0x0102\r\n", "para[0]=0x0 para[1]=0x102 "));
    expect_success("board_test board_get_usr_pcb_ver x y z",
                   "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = 0 ver=0x12345",
                   printed("success, ver:0x12345\r\n", "para[0]=0x0 para[1]=0x12345 "));
    expect_failure("board_test board_get_usr_pcb_ver", "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = 0x811101a4",
                   printed("failed, ver:0x0000 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_usr_pcb_ver", "drv_board_get_usr_pcb_ver(inst_id=0xffffffff) = 2 ver=1",
                   printed("failed, ver:0x0001 ret:0x2\r\n", "para[0]=0x2 para[1]=0x1 "));
}

TEST(BoardIdentityTest, GetSoftPcbVer) {
    expect_success("board_test board_get_soft_pcb_ver", "drv_board_get_soft_pcb_ver(inst_id=0xffffffff) = 0 ver=4",
                   printed("success, soft pcb_ver:0x00000004\r\n", "para[0]=0x0 para[1]=0x4 "));
    expect_success("board_test board_get_soft_pcb_ver 6", "drv_board_get_soft_pcb_ver(inst_id=6) = 0 ver=0xff",
                   printed("success, soft pcb_ver:0x000000ff\r\n", "para[0]=0x0 para[1]=0xff "));
    expect_success("board_test board_get_soft_pcb_ver v 1", "drv_board_get_soft_pcb_ver(inst_id=0) = 0 ver=4",
                   printed("success, soft pcb_ver:0x00000004\r\n", "para[0]=0x0 para[1]=0x4 "));
    expect_failure("board_test board_get_soft_pcb_ver", "drv_board_get_soft_pcb_ver(inst_id=0xffffffff) = 0xdead",
                   printed("failed, soft pcb_ver:0x00000000 ret:0xdead\r\n", "para[0]=0xdead para[1]=0x0 "));
    expect_failure("board_test board_get_soft_pcb_ver 6", "drv_board_get_soft_pcb_ver(inst_id=6) = 9 ver=8",
                   printed("failed, soft pcb_ver:0x00000008 ret:0x9\r\n", "para[0]=0x9 para[1]=0x8 "));
}

TEST(BoardIdentityTest, GetBomVerHasABlankBeforeItsLineEndOnSuccess) {
    expect_success("board_test board_get_bom_ver", "drv_board_get_bom_ver(inst_id=0xffffffff) = 0 ver=0x1f",
                   printed("success, bom_ver:0x0000001f \r\n", "para[0]=0x0 para[1]=0x1f "));
    expect_success("board_test board_get_bom_ver 1", "drv_board_get_bom_ver(inst_id=1) = 0 ver=0",
                   printed("success, bom_ver:0x00000000 \r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_bom_ver bom 1", "drv_board_get_bom_ver(inst_id=0) = 0 ver=2",
                   printed("success, bom_ver:0x00000002 \r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_failure("board_test board_get_bom_ver", "drv_board_get_bom_ver(inst_id=0xffffffff) = 0x811101a4",
                   printed("failed, bom_ver:0x00000000 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_bom_ver 1", "drv_board_get_bom_ver(inst_id=1) = 3 ver=0x55",
                   printed("failed, bom_ver:0x00000055 ret:0x3\r\n", "para[0]=0x3 para[1]=0x55 "));
}

TEST(BoardIdentityTest, GetPowerShowsTheValueInBothBases) {
    expect_success("board_test board_get_power", "drv_board_get_power(inst_id=0xffffffff) = 0 power=80",
                   printed("power hex:0x00000050 dec:00000080\r\n", "para[0]=0x0 para[1]=0x50 "));
    expect_success("board_test board_get_power 2", "drv_board_get_power(inst_id=2) = 0 power=123456789",
                   printed("power hex:0x075bcd15 dec:123456789\r\n", "para[0]=0x0 para[1]=0x75bcd15 "));
    expect_success("board_test board_get_power watt 1", "drv_board_get_power(inst_id=0) = 0 power=0xffffffff",
                   printed("power hex:0xffffffff dec:-0000001\r\n", "para[0]=0x0 para[1]=0xffffffff "));
}

TEST(BoardIdentityTest, GetPowerFailurePrintsNoLine) {
    expect_failure("board_test board_get_power", "drv_board_get_power(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_power 2", "drv_board_get_power(inst_id=2) = 6 power=80",
                   printed("", "para[0]=0x6 para[1]=0x50 "));
}
