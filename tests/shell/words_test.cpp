// Words as values, and the argument check in both variants.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/words.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct words {
    explicit words(std::vector<std::string> texts) : storage(std::move(texts)) {
        for (std::string &text : storage) {
            pointers.push_back(text.data());
        }
    }
    int count() const {
        return static_cast<int>(storage.size());
    }
    char **args() {
        return pointers.data();
    }
    std::vector<std::string> storage;
    std::vector<char *> pointers;
};

struct checked {
    uint32_t inst_id = 0xFFFFFFFF;
    uint32_t a = 77;
    uint32_t b = 88;
    std::string printed;
};

checked check(int expected, std::vector<std::string> texts) {
    words given(std::move(texts));
    checked result;
    result.printed =
        printed_by([&] { check_args(expected, given.count(), given.args(), &result.inst_id, &result.a, &result.b); });
    return result;
}

} // namespace

TEST(WordTest, BaseIsAutomatic) {
    EXPECT_EQ(word_to_u32("0x10"), 16U);
    EXPECT_EQ(word_to_u32("16"), 16U);
    EXPECT_EQ(word_to_u32("010"), 8U);
    EXPECT_EQ(word_to_u32("0xff000005"), 0xff000005U);
}

TEST(WordTest, WhatIsNoNumberIsZeroOrItsLeadingNumber) {
    EXPECT_EQ(word_to_u32(""), 0U);
    EXPECT_EQ(word_to_u32("board"), 0U);
    EXPECT_EQ(word_to_u32("12abc"), 12U);
    EXPECT_EQ(word_to_u32("0x"), 0U);
}

TEST(WordTest, ThirtyTwoBitsAsOnTheBoard) {
    EXPECT_EQ(word_to_u32("4294967295"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32("4294967296"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32("0x100000005"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32("99999999999999999999999"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32("-1"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32(" -5"), 0xFFFFFFFBU);
    EXPECT_EQ(word_to_u32("-4294967295"), 1U);
    EXPECT_EQ(word_to_u32("-4294967296"), 0xFFFFFFFFU);
    EXPECT_EQ(word_to_u32("-4294967297"), 0xFFFFFFFFU);
}

TEST(WordTest, SixtyFourBits) {
    EXPECT_EQ(word_to_u64("0x200203040506"), 0x200203040506U);
    EXPECT_EQ(word_to_u64("0xffffffffffffffff"), UINT64_MAX);
    EXPECT_EQ(word_to_u64("none"), 0U);
}

TEST(CheckArgsTest, FullFormTakesTheInstance) {
    const checked result = check(3, {"5", "6", "7"});
    EXPECT_EQ(result.printed, "");
    EXPECT_EQ(result.inst_id, 5U);
    EXPECT_EQ(result.a, 6U);
    EXPECT_EQ(result.b, 7U);
}

TEST(CheckArgsTest, ShortFormKeepsTheInstance) {
    const checked result = check(3, {"6", "7"});
    EXPECT_EQ(result.printed, "");
    EXPECT_EQ(result.inst_id, 0xFFFFFFFFU);
    EXPECT_EQ(result.a, 6U);
    EXPECT_EQ(result.b, 7U);
}

TEST(CheckArgsTest, TooFewWordsAreReportedAndNothingIsTaken) {
    const checked result = check(3, {"6"});
    EXPECT_EQ(result.printed, "input error : in_num : 1 over [2-3] .\n");
    EXPECT_EQ(result.inst_id, 0xFFFFFFFFU);
    EXPECT_EQ(result.a, 77U);
    EXPECT_EQ(result.b, 88U);
}

TEST(CheckArgsTest, SurplusWordsPassAndTheFirstIsNoInstance) {
    const checked result = check(3, {"1", "2", "3", "4", "5"});
    EXPECT_EQ(result.printed, "");
    EXPECT_EQ(result.inst_id, 0xFFFFFFFFU);
    EXPECT_EQ(result.a, 1U);
    EXPECT_EQ(result.b, 2U);
}

TEST(CheckArgsTest, ExpectedZeroOrOneNeverFails) {
    EXPECT_EQ(check(1, {}).printed, "");
    EXPECT_EQ(check(0, {}).printed, "");
    EXPECT_EQ(check(-4, {}).printed, "");
    EXPECT_EQ(check(1, {"9"}).inst_id, 9U);
    EXPECT_EQ(check(1, {}).a, 77U);
}

TEST(CheckArgsTest, AMissingWordIsNeverRead) {
    const checked result = check(1, {"4"});
    EXPECT_EQ(result.inst_id, 4U);
    EXPECT_EQ(result.a, 77U);
    EXPECT_EQ(result.b, 88U);
}

TEST(CheckArgsTest, UnwantedSlotsAreSkipped) {
    words given({"1", "2"});
    uint32_t b = 0;
    check_args(2, given.count(), given.args(), nullptr, nullptr, &b);
    EXPECT_EQ(b, 1U);
}

TEST(CheckArgsTest, AThirdValueStandsBehindTheSecond) {
    for (const int count : {3, 4, 5}) {
        words given({"1", "2", "3", "4", "5"});
        uint32_t inst_id = 0xFFFFFFFF;
        uint32_t a = 0;
        uint32_t b = 0;
        uint32_t c = 0;
        EXPECT_EQ(printed_by([&] { check_args(4, count, given.args(), &inst_id, &a, &b, &c); }), "");
        const uint32_t first = count == 4 ? 2 : 1;
        EXPECT_EQ(inst_id, count == 4 ? 1U : 0xFFFFFFFFU);
        EXPECT_EQ(a, first);
        EXPECT_EQ(b, first + 1);
        EXPECT_EQ(c, first + 2);
    }
}

TEST(CheckArgsTest, AThirdValueKeepsItsOwnWithTooFewWords) {
    words given({"1", "2"});
    uint32_t c = 99;
    EXPECT_EQ(printed_by([&] { check_args(4, given.count(), given.args(), nullptr, nullptr, nullptr, &c); }),
              "input error : in_num : 2 over [3-4] .\n");
    EXPECT_EQ(c, 99U);
}

TEST(CheckArgsU64Test, TakesTwoWideValuesBehindTheType) {
    words given({"5", "1", "0x200203040506", "0xffffffffffffffff"});
    uint32_t inst_id = 0xFFFFFFFF;
    uint32_t type = 0;
    uint64_t a = 0;
    uint64_t b = 0;
    check_args_u64(4, given.count(), given.args(), &inst_id, &type, &a, &b);
    EXPECT_EQ(inst_id, 5U);
    EXPECT_EQ(type, 1U);
    EXPECT_EQ(a, 0x200203040506U);
    EXPECT_EQ(b, UINT64_MAX);
}

TEST(CheckArgsU64Test, ReportsTooFewWordsWithTheSameText) {
    words given({"5"});
    uint32_t type = 3;
    EXPECT_EQ(printed_by([&] { check_args_u64(4, 1, given.args(), nullptr, &type, nullptr, nullptr); }),
              "input error : in_num : 1 over [3-4] .\n");
    EXPECT_EQ(type, 3U);
}

TEST(OptionalInstTest, GoesByTheNumberOfWords) {
    words given({"9", "8", "7"});
    uint32_t inst_id = 0;
    EXPECT_EQ(after_optional_inst(1, given.args(), 2, &inst_id), nullptr);
    EXPECT_EQ(after_optional_inst(2, given.args(), 2, &inst_id), given.args());
    EXPECT_EQ(inst_id, 0xFFFFFFFFU);
    EXPECT_EQ(after_optional_inst(3, given.args(), 2, &inst_id), given.args() + 1);
    EXPECT_EQ(inst_id, 9U);
}

TEST(OptionalInstTest, InstOrSelf) {
    words given({"0x3"});
    EXPECT_EQ(inst_or_self(1, given.args()), 3U);
    EXPECT_EQ(inst_or_self(0, nullptr), 0xFFFFFFFFU);
}
