// The words and the port of optical_test, where no command line leads: without a list, and without a selector.
#include <gtest/gtest.h>

#include "modules/optical_test/port.h"
#include "tests/support/capture.h"

#include <string>
#include <vector>

using namespace kestro_tests;
using namespace optical_commands;

namespace {

// The eight words of these as a list, of which only the first so many count.
std::vector<uint32_t> read_first(int count) {
    std::vector<std::string> texts = {"0x11", "0x12", "0x13", "0x14", "0x115", "0x116", "0x117", "0x118", "0x119"};
    std::vector<char *> pointers;
    for (std::string &text : texts) {
        pointers.push_back(text.data());
    }
    optical_words words = {};
    EXPECT_EQ(printed_by([&] { words = read_words(count, pointers.data()); }), "");
    return {words.inst_id, words.port,  words.package, words.lanebitmap,
            words.fifth,   words.sixth, words.seventh, words.eighth};
}

} // namespace

TEST(OpticalWordsTest, EachWordHasItsPlaceAndMissingOnesAreZero) {
    EXPECT_EQ(read_first(0), (std::vector<uint32_t>{0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(read_first(1), (std::vector<uint32_t>{0x11, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(read_first(2), (std::vector<uint32_t>{0x11, 0x12, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(read_first(3), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0, 0, 0, 0, 0}));
    EXPECT_EQ(read_first(4), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0, 0, 0, 0}));
    EXPECT_EQ(read_first(5), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0x15, 0, 0, 0}));
    EXPECT_EQ(read_first(6), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0, 0}));
    EXPECT_EQ(read_first(7), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x117, 0}));
    EXPECT_EQ(read_first(8), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x117, 0x118}));
    EXPECT_EQ(read_first(9), (std::vector<uint32_t>{0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x117, 0x118}));
}

TEST(OpticalWordsTest, AMissingListIsReportedAndAllWordsAreZero) {
    optical_words words = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(printed_by([&] { words = read_words(8, nullptr); }), "input error : ppcargv is null .\n");
    const optical_words none = {};
    EXPECT_EQ(words.inst_id, none.inst_id);
    EXPECT_EQ(words.port, none.port);
    EXPECT_EQ(words.package, none.package);
    EXPECT_EQ(words.lanebitmap, none.lanebitmap);
    EXPECT_EQ(words.fifth, none.fifth);
    EXPECT_EQ(words.sixth, none.sixth);
    EXPECT_EQ(words.seventh, none.seventh);
    EXPECT_EQ(words.eighth, none.eighth);
}

TEST(OpticalWordsTest, AMissingSelectorIsReportedAndIsNoFailure) {
    int result = -1;
    EXPECT_EQ(printed_by([&] { result = select_port({}, nullptr); }), "input error : ppcargv is null\n");
    EXPECT_EQ(result, 0);
}
