// board_test: isolation of switch fabrics, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardIsolationTest, SetSfuIsolate) {
    expect_success("board_test board_set_sfu_isolate 2 1",
                   "drv_board_set_sfu_isolate(inst_id=0xffffffff, id=2, enable=1) = 0",
                   "set sfu isolate success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_isolate 0x10 3 1",
                   "drv_board_set_sfu_isolate(inst_id=16, id=3, enable=1) = 0",
                   "set sfu isolate success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_isolate 4 5 6 7",
                   "drv_board_set_sfu_isolate(inst_id=4, id=5, enable=6) = 0",
                   "set sfu isolate success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_isolate sfu on",
                   "drv_board_set_sfu_isolate(inst_id=0xffffffff, id=0, enable=0) = 0",
                   "set sfu isolate success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_sfu_isolate 2 1",
                   "drv_board_set_sfu_isolate(inst_id=0xffffffff, id=2, enable=1) = 0xdead",
                   "para[0]=0xdead "s + result_end);
}

TEST(BoardIsolationTest, SetSfuIsolateWithTooFewWords) {
    expect_failure("board_test board_set_sfu_isolate", "",
                   "./kestro_test board_test board_set_sfu_isolate [inst_id id enable]\r\n");
    expect_failure("board_test board_set_sfu_isolate 2", "",
                   "./kestro_test board_test board_set_sfu_isolate [inst_id id enable]\r\n");
}

TEST(BoardIsolationTest, GetSfuIsolate) {
    expect_success("board_test board_get_sfu_isolate 2",
                   "drv_board_get_sfu_isolate(inst_id=0xffffffff, id=2) = 0 value=1",
                   "sfu isolate:1\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_get_sfu_isolate 0x10 3", "drv_board_get_sfu_isolate(inst_id=16, id=3) = 0",
                   "sfu isolate:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_sfu_isolate 4 5 6",
                   "drv_board_get_sfu_isolate(inst_id=4, id=5) = 0 value=0xffffffff",
                   "sfu isolate:-1\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_get_sfu_isolate sfu", "drv_board_get_sfu_isolate(inst_id=0xffffffff, id=0) = 0",
                   "sfu isolate:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_sfu_isolate 2",
                   "drv_board_get_sfu_isolate(inst_id=0xffffffff, id=2) = 5 value=1",
                   "para[0]=0x5 para[1]=0x1 "s + result_end);
    expect_failure("board_test board_get_sfu_isolate", "",
                   "./kestro_test board_test board_get_sfu_isolate [inst_id id]\r\n");
}

TEST(BoardIsolationTest, SetSfuFullinIsolateEn) {
    expect_success("board_test board_set_sfu_fullin_isolate_en 2 1",
                   "drv_board_set_sfu_fullin_isolate_en(inst_id=0xffffffff, id=2, enable=1) = 0",
                   "set sfu fullin isolate en success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_fullin_isolate_en 0x10 3 1",
                   "drv_board_set_sfu_fullin_isolate_en(inst_id=16, id=3, enable=1) = 0",
                   "set sfu fullin isolate en success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_fullin_isolate_en 4 5 6 7",
                   "drv_board_set_sfu_fullin_isolate_en(inst_id=4, id=5, enable=6) = 0",
                   "set sfu fullin isolate en success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_sfu_fullin_isolate_en sfu on",
                   "drv_board_set_sfu_fullin_isolate_en(inst_id=0xffffffff, id=0, enable=0) = 0",
                   "set sfu fullin isolate en success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_sfu_fullin_isolate_en 2 1",
                   "drv_board_set_sfu_fullin_isolate_en(inst_id=0xffffffff, id=2, enable=1) = 0xdead",
                   "para[0]=0xdead "s + result_end);
}

TEST(BoardIsolationTest, SetSfuFullinIsolateEnWithTooFewWords) {
    expect_failure("board_test board_set_sfu_fullin_isolate_en", "",
                   "./kestro_test board_test board_set_sfu_fullin_isolate_en [inst_id id enable]\r\n");
    expect_failure("board_test board_set_sfu_fullin_isolate_en 2", "",
                   "./kestro_test board_test board_set_sfu_fullin_isolate_en [inst_id id enable]\r\n");
}

TEST(BoardIsolationTest, GetSfuFullinIsolateEn) {
    expect_success("board_test board_get_sfu_fullin_isolate_en 2",
                   "drv_board_get_sfu_fullin_isolate_en(inst_id=0xffffffff, id=2) = 0 value=1",
                   "sfu fullin isolate en:1\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_get_sfu_fullin_isolate_en 0x10 3",
                   "drv_board_get_sfu_fullin_isolate_en(inst_id=16, id=3) = 0",
                   "sfu fullin isolate en:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_sfu_fullin_isolate_en 4 5 6",
                   "drv_board_get_sfu_fullin_isolate_en(inst_id=4, id=5) = 0 value=0xffffffff",
                   "sfu fullin isolate en:-1\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_get_sfu_fullin_isolate_en sfu",
                   "drv_board_get_sfu_fullin_isolate_en(inst_id=0xffffffff, id=0) = 0",
                   "sfu fullin isolate en:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_sfu_fullin_isolate_en 2",
                   "drv_board_get_sfu_fullin_isolate_en(inst_id=0xffffffff, id=2) = 5 value=1",
                   "para[0]=0x5 para[1]=0x1 "s + result_end);
    expect_failure("board_test board_get_sfu_fullin_isolate_en", "",
                   "./kestro_test board_test board_get_sfu_fullin_isolate_en [inst_id id]\r\n");
}
