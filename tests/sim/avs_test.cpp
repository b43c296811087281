// The dump of the scaling controllers: one line each, with the value of the rail that it trims.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string first_line = "avs 0: rail 2, target 1000 mV, measured 1004 mV, status 0x00\\r\\n";
const std::string second_line = "avs 1: rail 3, target 900 mV, measured 903 mV, status 0x00\\r\\n";

} // namespace

TEST(AvsDriver, DumpsEveryController) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=1200)"}), "0x0 buffer=\"" + first_line + second_line + "\"\n");
}

TEST(AvsDriver, MeasuresWhatTheRailWasSetTo) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=1, value=890)"}), ok);
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=1200)"}),
              "0x0 buffer=\"avs 0: rail 1, target 900 mV, measured 890 mV, status 0x00\\r\\n\"\n");
}

TEST(AvsDriver, DumpIsWholeOrRefused) {
    const test_board board = new_delivered("mpu_master");
    // Line ends are two bytes each, and show as four characters.
    const size_t length = first_line.size() - 2 + second_line.size() - 2;
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=" + std::to_string(length + 1) + ")",
                              "drv_avs_dump_dfx_info(len=" + std::to_string(length) + ")",
                              "drv_avs_dump_dfx_info(len=0)", "drv_avs_dump_dfx_info(buffer=null, len=64)"}),
              "0x0 buffer=\"" + first_line + second_line + "\"\n" + too_small + too_small + null_pointer);
}

TEST(AvsDriver, CardsWithoutControllers) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(inst_id=0xff000002)", "drv_avs_dump_dfx_info(inst_id=0xff000006)",
                              "drv_avs_dump_dfx_info(inst_id=7)"}),
              not_supported + no_such_instance + no_such_instance);
}

} // namespace kestro_tests
