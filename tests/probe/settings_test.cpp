// The words that say which driver calls are to fail.
#include "probe/settings.h"

#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

void expect_failing(const std::string &text, uint64_t first, bool all_after, uint32_t code) {
    fail_call failing;
    EXPECT_TRUE(parse_fail_call(text, failing)) << text;
    EXPECT_EQ(failing.first, first) << text;
    EXPECT_EQ(failing.all_after, all_after) << text;
    EXPECT_EQ(failing.code, code) << text;
}

} // namespace

TEST(FailCallTest, NumbersACallAndItsCode) {
    expect_failing("3", 3, false, 0xdead);
    expect_failing("3=0x811101a4", 3, false, 0x811101a4);
    expect_failing("12+", 12, true, 0xdead);
    expect_failing("1+=-1", 1, true, 0xffffffff);
}

TEST(FailCallTest, RefusesEverythingElse) {
    for (const char *text : {"", "0", "x", "-1", "3=", "3=x", "3++", "3 ", "+", "3=1 2", "3=0x1ffffffff"}) {
        fail_call failing;
        EXPECT_FALSE(parse_fail_call(text, failing)) << text;
    }
}
