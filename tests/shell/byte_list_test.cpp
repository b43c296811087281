// Lists of bytes on the command line: items, how many of them are taken, and what is printed about each.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/byte_list.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct parsed {
    std::vector<uint8_t> bytes;
    std::string printed;
};

// The area holds other bytes before, and one more than it is said to have.
parsed parse(const std::string &text, uint32_t length, const byte_list_words &words = {"Bytes", "b", " is "}) {
    parsed result{std::vector<uint8_t>(length + 1, 0xEE), ""};
    result.printed = printed_by([&] { parse_byte_list(text.c_str(), length, result.bytes.data(), words); });
    EXPECT_EQ(result.bytes.back(), 0xEE);
    result.bytes.pop_back();
    return result;
}

using bytes = std::vector<uint8_t>;

} // namespace

TEST(ByteListTest, ItemsAreHexadecimalWithOrWithoutPrefix) {
    EXPECT_EQ(parse("0x12,0x34,56,67", 4).bytes, (bytes{0x12, 0x34, 0x56, 0x67}));
    EXPECT_EQ(parse("a,0B,0Xc,010", 4).bytes, (bytes{0x0A, 0x0B, 0x0C, 0x10}));
    EXPECT_EQ(parse(" 1,\t2,+3", 3).bytes, (bytes{1, 2, 3}));
}

TEST(ByteListTest, AValueIsCutTo8Bits) {
    EXPECT_EQ(parse("100,1ff,12345678,ffffffff", 4).bytes, (bytes{0x00, 0xFF, 0x78, 0xFF}));
    EXPECT_EQ(parse("-1,-0x1fe", 2).bytes, (bytes{0xFF, 0x02}));
}

TEST(ByteListTest, WhatIsNoNumberIs0) {
    EXPECT_EQ(parse("x,0x,g1,,1g", 5).bytes, (bytes{0, 0, 0, 0, 1}));
    EXPECT_EQ(parse("", 1).bytes, (bytes{0}));
    EXPECT_EQ(parse(",", 2).bytes, (bytes{0, 0}));
    EXPECT_EQ(parse("1;2,3", 2).bytes, (bytes{1, 3}));
}

TEST(ByteListTest, ItemsBeyondTheLengthAreIgnored) {
    EXPECT_EQ(parse("0x12,0x34,56,67", 2).bytes, (bytes{0x12, 0x34}));
    EXPECT_EQ(parse("0x12,0x34,56,67", 1).bytes, (bytes{0x12}));
    EXPECT_EQ(parse("0x12,", 1).bytes, (bytes{0x12}));
}

TEST(ByteListTest, MissingItemsAre0) {
    EXPECT_EQ(parse("0x12,0x34", 5).bytes, (bytes{0x12, 0x34, 0, 0, 0}));
    EXPECT_EQ(parse("7", 256).bytes.size(), 256U);
    EXPECT_EQ(parse("7", 3).bytes, (bytes{7, 0, 0}));
    EXPECT_EQ(parse("7,", 3).bytes, (bytes{7, 0, 0}));
    EXPECT_EQ(parse("", 2).bytes, (bytes{0, 0}));
}

TEST(ByteListTest, EachItemIsPrintedAsItIsTaken) {
    EXPECT_EQ(parse("0x12,0x34", 2).printed, "\r\nBytes:0x12,0x34\r\nb[0] is =[0x12]\r\nb[1] is =[0x34]\r\n");
    EXPECT_EQ(parse("0x12,0x34", 1).printed, "\r\nBytes:0x12,0x34\r\nb[0] is =[0x12]\r\n");
    EXPECT_EQ(parse("f", 1, {"Input str", "str", ", value"}).printed, "\r\nInput str:f\r\nstr[0], value=[0xf]\r\n");
    EXPECT_EQ(parse("f", 1, {"Input string", "string", ""}).printed, "\r\nInput string:f\r\nstring[0]=[0xf]\r\n");
}

// Where no comma follows, the search for one ends, and the same item is the last.
TEST(ByteListTest, TheLastItemOfAShortListIsPrintedTwice) {
    EXPECT_EQ(parse("0x12,0x34", 4).printed,
              "\r\nBytes:0x12,0x34\r\nb[0] is =[0x12]\r\nb[1] is =[0x34]\r\nb[1] is =[0x34]\r\n");
    EXPECT_EQ(parse("7,", 3).printed, "\r\nBytes:7,\r\nb[0] is =[0x7]\r\nb[1] is =[0x0]\r\nb[1] is =[0x0]\r\n");
    EXPECT_EQ(parse("", 2).printed, "\r\nBytes:\r\nb[0] is =[0x0]\r\nb[0] is =[0x0]\r\n");
}

// A percent sign is no format.
TEST(ByteListTest, TheTextIsShownAsItStands) {
    EXPECT_EQ(parse("%s%n", 1).printed, "\r\nBytes:%s%n\r\nb[0] is =[0x0]\r\n");
}

TEST(ByteListTest, NoByteAtAll) {
    const parsed none = parse("1,2", 0);
    EXPECT_EQ(none.bytes, bytes{});
    EXPECT_EQ(none.printed, "\r\nBytes:1,2\r\n");
}

// What a 32-bit board makes of a number beyond 32 bits is its greatest.
TEST(ByteListTest, NumbersAreThoseOfTheBoard) {
    EXPECT_EQ(parse("100000000,123456789abcdef012345", 2).bytes, (bytes{0xFF, 0xFF}));
}
