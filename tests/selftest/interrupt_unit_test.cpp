// The handler that the interrupt section leaves at each line.
#include <gtest/gtest.h>

#include "drv_basic/chips/drv_intr.h"
#include "nb_ctl/board_xml.h"
#include "selftest/chips/interrupts.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

struct registration {
    uint32_t count = 0;
    drv_intr_handler handler = nullptr;
    void *user_data = &count;
};

registration last; // NOLINT: what the driver below was told

} // namespace

uint32_t xml_get_node_num(uint32_t, const char *, uint32_t *count) {
    *count = 1;
    return 0;
}

uint32_t drv_intr_set_regist(uint32_t, uint32_t, drv_intr_handler handler, void *user_data) {
    ++last.count;
    last.handler = handler;
    last.user_data = user_data;
    return 0;
}

TEST(InterruptHandlerTest, OnlyWritesToTheDriverLog) {
    last = {};
    drivers() = {};
    drivers().elements = {{"irq_combiner/irq_combiner@0/hwirq_cfg0/hwirq", 33},
                          {"irq_combiner/irq_combiner@0/hwirq_cfg0/type", 13}};
    drivers().proc_interrupts = scratch_file("interrupts", "intr0 33\n");
    EXPECT_EQ(printed_by([] { EXPECT_EQ(intr_section(UINT32_MAX, console_sink), 0); }),
              "Success: irq_combiner@0 regist unregist enable disbale test pass index 0xffffffff type woffline-int "
              "13\r\n");
    EXPECT_EQ(last.count, 2U);
    EXPECT_EQ(last.user_data, nullptr);
    ASSERT_NE(last.handler, nullptr);
    EXPECT_TRUE(drivers().log_lines.empty());
    EXPECT_EQ(printed_by([] { EXPECT_EQ(last.handler(0x64, 0xc8, nullptr), 0U); }), "");
    EXPECT_EQ(drivers().log_lines,
              std::vector<std::string>{"62/2/0: The interrupt check callback start. index 0x64 type 0xc8 \r\n"});
}
