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
    EXPECT_EQ(calls_print(board, {"avs_dump_dfx_info 0xffffffff 1200"}), "0x0 \"" + first_line + second_line + "\"\n");
}

TEST(AvsDriver, MeasuresWhatTheRailWasSetTo) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(calls_print(board, {"voltage_set_value 0xffffffff 1 890"}), ok);
    EXPECT_EQ(calls_print(board, {"avs_dump_dfx_info 0xffffffff 1200"}),
              "0x0 \"avs 0: rail 1, target 900 mV, measured 890 mV, status 0x00\\r\\n\"\n");
}

TEST(AvsDriver, DumpIsWholeOrRefused) {
    const test_board board = new_delivered("mpu_master");
    // Line ends are two bytes each, and show as four characters.
    const size_t length = first_line.size() - 2 + second_line.size() - 2;
    EXPECT_EQ(calls_print(board, {"avs_dump_dfx_info 0xffffffff " + std::to_string(length + 1),
                                  "avs_dump_dfx_info 0xffffffff " + std::to_string(length),
                                  "avs_dump_dfx_info 0xffffffff 0", "avs_dump_dfx_info 0xffffffff null 64"}),
              "0x0 \"" + first_line + second_line + "\"\n" + too_small + too_small + null_pointer);
}

TEST(AvsDriver, CardsWithoutControllers) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"avs_dump_dfx_info 0xff000002 1200", "avs_dump_dfx_info 0xff000006 1200",
                                  "avs_dump_dfx_info 7 1200"}),
              not_supported + no_such_instance + no_such_instance);
}

} // namespace kestro_tests
