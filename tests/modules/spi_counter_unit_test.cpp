// The counter of spi_pic_cpld_test over its whole range, on a card whose CPLD is the test's own.
#include <gtest/gtest.h>

#include <algorithm>

#include "drv_basic/chips/drv_spi.h"
#include "modules/modules.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

std::vector<uint32_t> values_written;

std::string run_of(std::string times) {
    std::string name = "spi_pic_cpld_test";
    std::string board = "1";
    std::string card = "2";
    char *words[] = {name.data(), board.data(), card.data(), times.data()};
    values_written.clear();
    return printed_by([&] { EXPECT_EQ(spi_test(4, words), 0); });
}

} // namespace

// A scratch register: what was written last is read.
uint32_t drv_spi_write(uint32_t, uint32_t, const uint8_t *frame, uint32_t) {
    values_written.push_back(frame[2] | uint32_t{frame[3]} << 8);
    return 0;
}

uint32_t drv_spi_read(uint32_t, uint32_t, const uint8_t *, uint32_t, uint8_t *buffer, uint32_t) {
    buffer[0] = static_cast<uint8_t>(values_written.back());
    buffer[1] = static_cast<uint8_t>(values_written.back() >> 8);
    return 0;
}

// From 0x1122 it takes 61148 rounds to 0xFFFE; all ones are never written.
TEST(SpiCounterTest, BeginsAgainBelowAllOnes) {
    EXPECT_NE(run_of("61150").find("\ndrv_spi_test:[ret]:0\r\n"), std::string::npos);
    ASSERT_EQ(values_written.size(), 61150U);
    EXPECT_EQ(values_written[0], 0x1123U);
    EXPECT_EQ(values_written[61147], 0xFFFEU);
    EXPECT_EQ(values_written[61148], 0x0000U);
    EXPECT_EQ(values_written[61149], 0x0001U);
    run_of("65536");
    EXPECT_EQ(values_written[65534], 0x1122U);
    EXPECT_EQ(values_written[65535], 0x1123U);
    EXPECT_EQ(*std::max_element(values_written.begin(), values_written.end()), 0xFFFEU);
}
