// The rtc section's own way into the report buffer: from the fill length on, and never beyond the capacity.
#include <gtest/gtest.h>

#include <string>

#include "selftest/chips/rtc.h"
#include "tests/selftest/fake_drivers.h"

using namespace kestro_tests;

namespace {

// The line of a board without a clock, into an area of x of which the section is told a part.
struct written {
    int result;
    uint32_t fill;
    std::string area;
};

written write_line(uint32_t capacity, uint32_t fill) {
    drivers() = {};
    written done{0, fill, std::string(40, 'x')};
    done.result = rtc_section(0xffffffff, done.area.data(), capacity, &done.fill);
    return done;
}

} // namespace

TEST(RtcUnitTest, LinesBeginAtTheFillLength) {
    const written done = write_line(40, 3);
    EXPECT_EQ(done.result, -1);
    EXPECT_EQ(done.fill, 39U);
    EXPECT_EQ(done.area, std::string("xxxError: rtc xml get entry num fail.\r\n") + '\0');
}

TEST(RtcUnitTest, ALineIsCutAtTheCapacity) {
    const written done = write_line(10, 3);
    EXPECT_EQ(done.result, -1);
    EXPECT_EQ(done.fill, 9U);
    EXPECT_EQ(done.area, std::string("xxxError:") + '\0' + std::string(30, 'x'));
}

TEST(RtcUnitTest, AFullBufferStaysAsItIs) {
    for (const uint32_t fill : {10U, 11U, 0xffffffffU}) {
        const written done = write_line(10, fill);
        EXPECT_EQ(done.result, -1);
        EXPECT_EQ(done.fill, fill);
        EXPECT_EQ(done.area, std::string(40, 'x'));
    }
}
