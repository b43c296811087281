// Plug-in cards: their part of the description is loaded for cards and for nothing else.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(Pic, LoadAndUnloadOfCards) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_pic_xml_load(inst_id=0xff000005)", "drv_pic_xml_unload(inst_id=0xff000005)",
                       "drv_board_get_type(inst_id=0xff000005)", "drv_pic_xml_load", "drv_pic_xml_unload",
                       "drv_pic_xml_load(inst_id=0xff000007)", "drv_pic_xml_load(inst_id=0xff000006)",
                       "drv_pic_xml_unload(inst_id=0xff000011)"}),
              ok + ok + "0x0 type=0x2302201\n" + not_supported + not_supported + not_supported + no_such_instance +
                  no_such_instance);
    EXPECT_EQ(
        answers(new_delivered("lpu"), {"drv_pic_xml_load(inst_id=0x0100ffff)", "drv_pic_xml_unload(inst_id=0x0200ffff)",
                                       "drv_pic_xml_load(inst_id=0x0300ffff)"}),
        ok + ok + no_such_instance);
}

} // namespace kestro_tests
