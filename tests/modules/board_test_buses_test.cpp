// board_test: error counters of the management bus and the SMI buses, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardBusesTest, TxErrCount) {
    expect_success("board_test board_get_tx_err_count 3",
                   "drv_smb_get_tx_err_count(inst_id=0xffffffff, slot_id=3) = 0 count=18",
                   "success, status:0x00000012 \r\npara[0]=0x0 para[1]=0x12 "s + result_end);
    expect_success("board_test board_get_tx_err_count 0x10 4", "drv_smb_get_tx_err_count(inst_id=16, slot_id=4) = 0",
                   "success, status:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_tx_err_count 5 6 7",
                   "drv_smb_get_tx_err_count(inst_id=5, slot_id=6) = 0 count=0xfedcba98",
                   "success, status:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test board_get_tx_err_count slot",
                   "drv_smb_get_tx_err_count(inst_id=0xffffffff, slot_id=0) = 0",
                   "success, status:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_tx_err_count 3",
                   "drv_smb_get_tx_err_count(inst_id=0xffffffff, slot_id=3) = 0x811101a4",
                   "failed, status:0x00000000 ret:0x811101a4\r\npara[0]=0x811101a4 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_tx_err_count", "",
                   "./kestro_test board_test board_get_tx_err_count [inst_id slot_id]\r\n");
}

TEST(BoardBusesTest, RxErrCount) {
    expect_success("board_test board_get_rx_err_count 3",
                   "drv_smb_get_rx_err_count(inst_id=0xffffffff, slot_id=3) = 0 count=18",
                   "success, status:0x00000012 \r\npara[0]=0x0 para[1]=0x12 "s + result_end);
    expect_success("board_test board_get_rx_err_count 0x10 4", "drv_smb_get_rx_err_count(inst_id=16, slot_id=4) = 0",
                   "success, status:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_rx_err_count 5 6 7",
                   "drv_smb_get_rx_err_count(inst_id=5, slot_id=6) = 0 count=0xfedcba98",
                   "success, status:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test board_get_rx_err_count slot",
                   "drv_smb_get_rx_err_count(inst_id=0xffffffff, slot_id=0) = 0",
                   "success, status:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_rx_err_count 3",
                   "drv_smb_get_rx_err_count(inst_id=0xffffffff, slot_id=3) = 5 count=7",
                   "failed, status:0x00000007 ret:0x5\r\npara[0]=0x5 para[1]=0x7 "s + result_end);
    expect_failure("board_test board_get_rx_err_count", "",
                   "./kestro_test board_test board_get_rx_err_count [inst_id slot_id]\r\n");
}

TEST(BoardBusesTest, SmiCrc) {
    expect_success("board_test board_check_smi_crc 2",
                   "drv_board_check_smi_crc(inst_id=0xffffffff, bus_id=2, size=128) = 0 dfx=\"clean\"",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_smi_crc 0x10 1",
                   "drv_board_check_smi_crc(inst_id=16, bus_id=1, size=128) = 0 result=11",
                   "result:11\r\npara[0]=0x0 para[1]=0xb "s + result_end);
    expect_success("board_test board_check_smi_crc 5 6 7",
                   "drv_board_check_smi_crc(inst_id=5, bus_id=6, size=128) = 0 result=0xffffffff",
                   "result:-1\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_check_smi_crc bus",
                   "drv_board_check_smi_crc(inst_id=0xffffffff, bus_id=0, size=128) = 0",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_smi_crc 2",
                   "drv_board_check_smi_crc(inst_id=0xffffffff, bus_id=2, size=128) = 0x71 result=4 dfx=\"4 errors\"",
                   "failed, result:4 dfx:4 errors ret:0x71\r\npara[0]=0x71 para[1]=0x4 "s + result_end);
    expect_failure("board_test board_check_smi_crc", "",
                   "./kestro_test board_test board_check_smi_crc [inst_id bus_id]\r\n");
}

TEST(BoardBusesTest, SmiLos) {
    expect_success("board_test board_check_smi_los 2",
                   "drv_board_check_smi_los(inst_id=0xffffffff, bus_id=2, size=128) = 0 dfx=\"clean\"",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_smi_los 0x10 1",
                   "drv_board_check_smi_los(inst_id=16, bus_id=1, size=128) = 0 result=11",
                   "result:11\r\npara[0]=0x0 para[1]=0xb "s + result_end);
    expect_success("board_test board_check_smi_los 5 6 7",
                   "drv_board_check_smi_los(inst_id=5, bus_id=6, size=128) = 0 result=0xffffffff",
                   "result:-1\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_check_smi_los bus",
                   "drv_board_check_smi_los(inst_id=0xffffffff, bus_id=0, size=128) = 0",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_smi_los 2",
                   "drv_board_check_smi_los(inst_id=0xffffffff, bus_id=2, size=128) = 0x71 result=4 dfx=\"no clock\"",
                   "failed, result:4 dfx:no clock ret:0x71\r\npara[0]=0x71 para[1]=0x4 "s + result_end);
    expect_failure("board_test board_check_smi_los", "",
                   "./kestro_test board_test board_check_smi_los [inst_id bus_id]\r\n");
}

TEST(BoardBusesTest, Smi) {
    expect_success("board_test board_check_smi 2",
                   "drv_board_check_smi(inst_id=0xffffffff, bus_id=2, size=128) = 0 dfx=\"clean\"",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_smi 0x10 1",
                   "drv_board_check_smi(inst_id=16, bus_id=1, size=128) = 0 result=11",
                   "result:11\r\npara[0]=0x0 para[1]=0xb "s + result_end);
    expect_success("board_test board_check_smi 5 6 7",
                   "drv_board_check_smi(inst_id=5, bus_id=6, size=128) = 0 result=0xffffffff",
                   "result:-1\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test board_check_smi bus", "drv_board_check_smi(inst_id=0xffffffff, bus_id=0, size=128) = 0",
                   "result:0\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_smi 2", "drv_board_check_smi(inst_id=0xffffffff, bus_id=2, size=128) = 0x71",
                   "failed, result:0 dfx: ret:0x71\r\npara[0]=0x71 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_smi", "", "./kestro_test board_test board_check_smi [inst_id bus_id]\r\n");
}

TEST(BoardBusesTest, BackupSmiEn) {
    expect_success("board_test board_set_backup_smi_en 1",
                   "drv_board_set_backup_smi_en(inst_id=0xffffffff, en_flag=1) = 0",
                   "set backup smi success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_backup_smi_en 0x10 2",
                   "drv_board_set_backup_smi_en(inst_id=16, en_flag=2) = 0",
                   "set backup smi success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_backup_smi_en 5 6 7", "drv_board_set_backup_smi_en(inst_id=5, en_flag=6) = 0",
                   "set backup smi success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_backup_smi_en on",
                   "drv_board_set_backup_smi_en(inst_id=0xffffffff, en_flag=0) = 0",
                   "set backup smi success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_backup_smi_en 1",
                   "drv_board_set_backup_smi_en(inst_id=0xffffffff, en_flag=1) = 0xdead",
                   "set backup smi failed, ret:0xdead\r\npara[0]=0xdead "s + result_end);
    expect_failure("board_test board_set_backup_smi_en", "",
                   "./kestro_test board_test board_set_backup_smi_en [inst_id en_flag]\r\n");
}

TEST(BoardBusesTest, SetSmiSource) {
    expect_success("board_test board_set_smi_source 1", "drv_board_set_smi_source(inst_id=0xffffffff, source=1) = 0",
                   "set smi source success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_smi_source 0x10 2", "drv_board_set_smi_source(inst_id=16, source=2) = 0",
                   "set smi source success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_smi_source 5 6 7", "drv_board_set_smi_source(inst_id=5, source=6) = 0",
                   "set smi source success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_smi_source main", "drv_board_set_smi_source(inst_id=0xffffffff, source=0) = 0",
                   "set smi source success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_smi_source 1",
                   "drv_board_set_smi_source(inst_id=0xffffffff, source=1) = 0xdead",
                   "set smi source failed, ret:0xdead\r\npara[0]=0xdead "s + result_end);
    expect_failure("board_test board_set_smi_source", "",
                   "./kestro_test board_test board_set_smi_source [inst_id source]\r\n");
}

TEST(BoardBusesTest, GetSmiSource) {
    expect_success("board_test board_get_smi_source", "drv_board_get_smi_source(inst_id=0xffffffff) = 0 source=1",
                   "get smi sourece success, source:1\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_get_smi_source 0x3", "drv_board_get_smi_source(inst_id=3) = 0 source=0xffffffff",
                   "get smi sourece success, source:4294967295\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_get_smi_source 1 2 3", "drv_board_get_smi_source(inst_id=1) = 0",
                   "get smi sourece success, source:0\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_get_smi_source board", "drv_board_get_smi_source(inst_id=0) = 0",
                   "get smi sourece success, source:0\r\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_get_smi_source", "drv_board_get_smi_source(inst_id=0xffffffff) = 9 source=1",
                   "get smi sourece failed, ret:0x9\r\npara[0]=0x9 "s + result_end);
}
