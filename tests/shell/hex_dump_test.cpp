// The dump of a file's bytes, at every alignment of offset and length.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "modules/env_test/hex_dump.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

std::string dump(uint64_t offset, const std::string &bytes) {
    return printed_by([&] {
        print_hex_dump(offset, reinterpret_cast<const uint8_t *>(bytes.data()), static_cast<uint32_t>(bytes.size()));
    });
}

// What a reader makes of a dump: its bytes, and the address of the first and the last of them.
struct read_back {
    std::string bytes;
    std::vector<uint64_t> addresses;
};

// Rows are "0xAAAAAAAA~AAAAAAAA: ", cells of three characters, two blanks, the text.
read_back read_dump(const std::string &text) {
    constexpr size_t cells_at = 21;
    constexpr size_t text_at = cells_at + 16 * 3 + 2;
    constexpr size_t row_size = text_at + 16 + 1;
    read_back found;
    EXPECT_EQ(text.size() % row_size, 0U);
    for (size_t row = 0; row + row_size <= text.size(); row += row_size) {
        const uint64_t first = std::stoull(text.substr(row, 10), nullptr, 16);
        EXPECT_EQ(first % 16, 0U);
        EXPECT_EQ(std::stoull(text.substr(row + 11, 8), nullptr, 16), first + 15);
        EXPECT_EQ(text.substr(row + 19, 2), ": ");
        EXPECT_EQ(text.substr(row + text_at - 2, 2), "  ");
        EXPECT_EQ(text[row + row_size - 1], '\n');
        for (size_t i = 0; i < 16; ++i) {
            const std::string cell = text.substr(row + cells_at + 3 * i, 3);
            const char shown = text[row + text_at + i];
            EXPECT_EQ(cell[2], ' ');
            if (cell == "-- ") {
                EXPECT_EQ(shown, '-');
                continue;
            }
            const auto byte = static_cast<char>(std::stoul(cell.substr(0, 2), nullptr, 16));
            EXPECT_EQ(shown, byte >= ' ' && byte <= '~' ? byte : '.');
            found.bytes += byte;
            found.addresses.push_back(first + i);
        }
    }
    return found;
}

std::string all_kinds_of_bytes(size_t length) {
    std::string bytes;
    for (size_t i = 0; i < length; ++i) {
        bytes += static_cast<char>(i * 37 + 11);
    }
    return bytes;
}

} // namespace

TEST(HexDump, FiveBytesInTheMiddleOfARow) {
    EXPECT_EQ(dump(0x13, "abc\x01\xff"),
              "0x00000010~0000001f: -- -- -- 61 62 63 01 ff -- -- -- -- -- -- -- --   ---abc..--------\n");
}

TEST(HexDump, WholeRows) {
    EXPECT_EQ(dump(0, "0123456789abcdef"),
              "0x00000000~0000000f: 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66   0123456789abcdef\n");
    EXPECT_EQ(dump(0x7fffffe0, std::string(16, ' ') + std::string(16, '~')),
              "0x7fffffe0~7fffffef: 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20                   \n"
              "0x7ffffff0~7fffffff: 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e 7e   ~~~~~~~~~~~~~~~~\n");
}

TEST(HexDump, AFewBytesAcrossTwoRows) {
    EXPECT_EQ(dump(0x1f, "yz"),
              "0x00000010~0000001f: -- -- -- -- -- -- -- -- -- -- -- -- -- -- -- 79   ---------------y\n"
              "0x00000020~0000002f: 7a -- -- -- -- -- -- -- -- -- -- -- -- -- -- --   z---------------\n");
}

TEST(HexDump, WhatIsPrintableIsPlainAscii) {
    EXPECT_EQ(dump(4, std::string("\x1f\x20\x7e\x7f\x80\xe4\x00%n\\", 10)),
              "0x00000000~0000000f: -- -- -- -- 1f 20 7e 7f 80 e4 00 25 6e 5c -- --   ----. ~....%n\\--\n");
}

TEST(HexDump, NoBytes) {
    EXPECT_EQ(dump(0x20, ""), "");
    EXPECT_EQ(dump(0x21, ""),
              "0x00000020~0000002f: -- -- -- -- -- -- -- -- -- -- -- -- -- -- -- --   ----------------\n");
}

TEST(HexDump, OffsetsShowTheirLow32Bits) {
    EXPECT_EQ(dump(0x1fffffffe, "abc"),
              "0xfffffff0~ffffffff: -- -- -- -- -- -- -- -- -- -- -- -- -- -- 61 62   --------------ab\n"
              "0x00000000~0000000f: 63 -- -- -- -- -- -- -- -- -- -- -- -- -- -- --   c---------------\n");
}

TEST(HexDump, UpToTheLastOffset) {
    EXPECT_EQ(dump(0xffffffffffffffff, "ab"),
              "0xfffffff0~ffffffff: -- -- -- -- -- -- -- -- -- -- -- -- -- -- -- 61   ---------------a\n"
              "0x00000000~0000000f: 62 -- -- -- -- -- -- -- -- -- -- -- -- -- -- --   b---------------\n");
}

TEST(HexDump, EveryAlignmentShowsEachByteAtItsPlace) {
    for (uint64_t offset = 0x100; offset < 0x110; ++offset) {
        for (size_t length = 1; length <= 34; ++length) {
            SCOPED_TRACE(testing::Message() << "offset " << offset << ", length " << length);
            const std::string bytes = all_kinds_of_bytes(length);
            const read_back found = read_dump(dump(offset, bytes));
            EXPECT_EQ(found.bytes, bytes);
            ASSERT_EQ(found.addresses.size(), length);
            EXPECT_EQ(found.addresses.front(), offset);
            EXPECT_EQ(found.addresses.back(), offset + length - 1);
        }
    }
}
