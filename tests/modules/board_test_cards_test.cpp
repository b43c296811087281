// board_test: card list, plug-in cards' descriptions and the in/out notice, on the real program with the driver
// scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardCardsTest, CardListWithoutCards) {
    expect_success("board_test board_get_card_list", "drv_board_get_card_list(inst_id=0xffffffff) = 0",
                   "card list num is 0\npara[0]=0x0 para[1]=0x0 "s + result_end);
}

TEST(BoardCardsTest, CardListShowsTheSlotNumbers) {
    expect_success("board_test board_get_card_list",
                   "drv_board_get_card_list(inst_id=0xffffffff) = 0 list={count=2 slot_id=[3 17]}",
                   "card list num is 2\n"
                   "card_list[0]:3\n"
                   "card_list[1]:17\n"
                   "para[0]=0x0 para[1]=0x2 "s +
                       result_end);
}

TEST(BoardCardsTest, CardListShowsAllEightSlots) {
    expect_success("board_test board_get_card_list",
                   "drv_board_get_card_list(inst_id=0xffffffff) = 0 list={count=8 slot_id=[1 2 3 4 5 6 7 8]}",
                   "card list num is 8\n"
                   "card_list[0]:1\n"
                   "card_list[1]:2\n"
                   "card_list[2]:3\n"
                   "card_list[3]:4\n"
                   "card_list[4]:5\n"
                   "card_list[5]:6\n"
                   "card_list[6]:7\n"
                   "card_list[7]:8\n"
                   "para[0]=0x0 para[1]=0x8 "s +
                       result_end);
}

TEST(BoardCardsTest, CardListEndsWithTheRecordWhateverTheCount) {
    expect_success("board_test board_get_card_list",
                   "drv_board_get_card_list(inst_id=0xffffffff) = 0 list={count=9 slot_id=[1 2 3 4 5 6 7 0xffffffff]}",
                   "card list num is 9\n"
                   "card_list[0]:1\n"
                   "card_list[1]:2\n"
                   "card_list[2]:3\n"
                   "card_list[3]:4\n"
                   "card_list[4]:5\n"
                   "card_list[5]:6\n"
                   "card_list[6]:7\n"
                   "card_list[7]:-1\n"
                   "para[0]=0x0 para[1]=0x9 "s +
                       result_end);
}

TEST(BoardCardsTest, CardListIgnoresWords) {
    expect_success("board_test board_get_card_list 5 slots 7",
                   "drv_board_get_card_list(inst_id=0xffffffff) = 0 list={count=1 slot_id=[4]}",
                   "card list num is 1\ncard_list[0]:4\npara[0]=0x0 para[1]=0x1 "s + result_end);
}

TEST(BoardCardsTest, CardListFailure) {
    expect_failure("board_test board_get_card_list", "drv_board_get_card_list(inst_id=0xffffffff) = 0x811101a4",
                   "para[0]=0x811101a4 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_card_list",
                   "drv_board_get_card_list(inst_id=0xffffffff) = 6 list={count=2 slot_id=[3 4]}",
                   "para[0]=0x6 para[1]=0x2 "s + result_end);
}

TEST(BoardCardsTest, PicXmlLoad) {
    expect_success("board_test board_pic_xml_load 0x13", "drv_pic_xml_load(inst_id=0x13) = 0",
                   "board pic xml load success\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_pic_xml_load 2 3 4", "drv_pic_xml_load(inst_id=2) = 0",
                   "board pic xml load success\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_pic_xml_load card", "drv_pic_xml_load(inst_id=0) = 0",
                   "board pic xml load success\r\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_pic_xml_load 1", "drv_pic_xml_load(inst_id=1) = 0xdead",
                   "board pic xml load failed, ret:0xdead\r\npara[0]=0xdead "s + result_end);
    expect_failure("board_test board_pic_xml_load", "", "./kestro_test board_test board_pic_xml_load [inst_id]\r\n");
}

TEST(BoardCardsTest, PicXmlUnload) {
    expect_success("board_test board_pic_xml_unload 0x13", "drv_pic_xml_unload(inst_id=0x13) = 0",
                   "board pic xml unload success\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_pic_xml_unload 2 3 4", "drv_pic_xml_unload(inst_id=2) = 0",
                   "board pic xml unload success\r\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_pic_xml_unload card", "drv_pic_xml_unload(inst_id=0) = 0",
                   "board pic xml unload success\r\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_pic_xml_unload 1", "drv_pic_xml_unload(inst_id=1) = 0xdead",
                   "board pic xml unload failed, ret:0xdead\r\npara[0]=0xdead "s + result_end);
    expect_failure("board_test board_pic_xml_unload", "",
                   "./kestro_test board_test board_pic_xml_unload [inst_id]\r\n");
}

TEST(BoardCardsTest, InOutRegPassesNoHandler) {
    const std::string call = "drv_board_in_out_reg(handler=null, user_data=null, name=\"stub_string\", flag=0) = ";
    expect_success("board_test board_in_out_reg", call + "0", "success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_in_out_reg 1 two 3", call + "0", "success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_in_out_reg", call + "0x22", "failed, ret:0x22\npara[0]=0x22 "s + result_end);
}

TEST(BoardCardsTest, InOutUnregPassesNoHandler) {
    expect_success("board_test board_in_out_unreg", "drv_board_in_out_unreg(handler=null) = 0",
                   "success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_in_out_unreg 1 two 3", "drv_board_in_out_unreg(handler=null) = 0",
                   "success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_in_out_unreg", "drv_board_in_out_unreg(handler=null) = 0x22",
                   "failed, ret:0x22\npara[0]=0x22 "s + result_end);
}
