// Plug-in cards: their part of the description is loaded for cards and for nothing else.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";

} // namespace

TEST(Pic, LoadAndUnloadOfCards) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"),
                          {"pic_xml_load" + card5, "pic_xml_unload" + card5, "board_get_type" + card5,
                           "pic_xml_load" + self, "pic_xml_unload" + self, "pic_xml_load 0xff000007",
                           "pic_xml_load 0xff000006", "pic_xml_unload 0xff000011"}),
              ok + ok + "0x0 36708865\n" + not_supported + not_supported + not_supported + no_such_instance +
                  no_such_instance);
    EXPECT_EQ(calls_print(new_delivered("lpu"),
                          {"pic_xml_load 0x0100ffff", "pic_xml_unload 0x0200ffff", "pic_xml_load 0x0300ffff"}),
              ok + ok + no_such_instance);
}

} // namespace kestro_tests
