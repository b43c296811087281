// board_test: the one-key self-test as a sub-command; tests/selftest tells what its sections do.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

constexpr const char *script =
    "xml_get_entry_num(inst_id=0xffffffff, module=\"barcode\", node=\"barcode_attr\") = 1\n"
    "drv_elabel_read(inst_id=0xffffffff, elabel_id=0, len=1200) = 2\n"
    "xml_get_entry_num(inst_id=0xffffffff, module=\"mac_mng\", node=\"mac_storage_main\") = 3\n"
    "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 4";

constexpr const char *lines = "\r\n##### board mng test begin \r\n"
                              "\r\n##### voltage test begin \r\n"
                              "\r\n##### temperature test begin \r\n"
                              "\r\n##### barcode test begin \r\n"
                              "Error: barcode_ xml get entry num fail.\r\n"
                              "\r\n##### elabel test begin \r\n"
                              "drv_elabel_read fail, inst_id=0xffffffff, elabel_id=0x0, ret=0x2.\r\n"
                              "\r\n##### mac test begin \r\n"
                              "Error: mac xml get entry num fail.\r\n"
                              "\r\n##### woffline test begin \r\n"
                              "\r\n##### slot test begin \r\n"
                              "\r\n##### digital test begin \r\n"
                              "\r\n##### board capability test begin \r\n"
                              "\r\n##### soft-reset test begin \r\n"
                              "\r\n##### sub-board test begin \r\n"
                              "\r\n##### dyinggasp test begin \r\n"
                              "\r\n##### intr test begin \r\n"
                              "\r\n##### cpld test begin \r\n"
                              "\r\n##### i2c test begin \r\n"
                              "\r\n##### lbc bus test begin \r\n"
                              "\r\n##### mdio test begin \r\n"
                              "\r\n##### pci test begin \r\n"
                              "\r\n##### chip9555 test begin \r\n"
                              "\r\n##### rtc test begin \r\n"
                              "\r\n##### msc test begin \r\n";

} // namespace

TEST(BoardOnekeyTest, SucceedsEvenWhenSectionsFail) {
    expect_success("board_test board_onekey_test", script, lines);
}

TEST(BoardOnekeyTest, IgnoresItsWords) {
    expect_success("board_test board_onekey_test 1 two 3", script, lines);
}
