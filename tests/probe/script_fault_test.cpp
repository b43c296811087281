// Every fault in a script is named with its place, with what is wrong and what would be right.
#include "probe/names.h"
#include "probe/script.h"

#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

void expect_fault(const std::string &line, const std::string &fault) {
    const script read = parse_script("s", line);
    EXPECT_EQ(read.faults, std::vector<std::string>{"s:1:" + fault}) << line;
    EXPECT_TRUE(read.rules.empty()) << line;
}

} // namespace

TEST(ScriptFaultTest, UnknownNamesComeWithTheNearestKnown) {
    expect_fault("  sample_stpo = 0", "3: no operation is called 'sample_stpo'; nearest: 'sample_stop'");
    expect_fault("sample_levels() = 0 lwo=1", "21: sample_levels has no output 'lwo'; nearest: 'low'");
    expect_fault("sample_read(inst_ix=1) = 0", "13: sample_read has no input 'inst_ix'; nearest: 'inst_id'");
    expect_fault("sample_stop(a=1) = 0", "13: sample_stop has no input 'a'; it has no inputs");
    expect_fault("sample_state_swap(state={smal=1}) = 0", "26: sample_state has no field 'smal'; nearest: 'small'");
}

TEST(ScriptFaultTest, ParametersBelongToOneSide) {
    expect_fault("sample_levels(low=1) = 0",
                 "15: 'low' is written by the driver; name it behind the result, as in = 0 low=...");
    expect_fault("sample_wide() = 0 offset=1", "19: 'offset' is read by the driver; name it in the parentheses");
}

TEST(ScriptFaultTest, NothingIsNamedTwice) {
    expect_fault("sample_wide(offset=1, offset=2) = 0", "23: 'offset' stands here twice; name it once");
    expect_fault("sample_levels = 0 low=1 low=2", "25: 'low' stands here twice; name it once");
    expect_fault("sample_state_swap(state={small=1 small=2}) = 0", "34: 'small' stands here twice; name a field once");
}

TEST(ScriptFaultTest, NumbersFitTheirPlace) {
    const std::string right = " is no number; write it decimal (10), hexadecimal (0x0a) or negative (-1)";
    expect_fault("sample_wide(offset=4x) = 0", "20: '4x'" + right);
    expect_fault("sample_wide(offset=0x) = 0", "20: '0x'" + right);
    expect_fault("sample_wide(offset=--1) = 0", "20: '--1'" + right);
    expect_fault("sample_wide(step=256) = 0", "18: '256' is too large; write a number of 8 bits");
    expect_fault("sample_wide(step=-129) = 0", "18: '-129' is too large; write a number of 8 bits");
    expect_fault("sample_wide(offset=0x100000000) = 0", "20: '0x100000000' is too large; write a number of 32 bits");
    expect_fault("sample_wide(gain=fast) = 0", "18: 'fast' is no number; write it as 3.25, -1e-3, inf or nan");
}

TEST(ScriptFaultTest, ValuesHaveTheFormOfTheirPlace) {
    expect_fault("sample_wide(offset=\"1\") = 0", "20: '\"' does not fit here; write a number");
    expect_fault("sample_levels = 0 low=[1]", "23: '[' does not fit here; write a number or null");
    expect_fault("sample_text(name=5) = 0", "18: '5' does not fit here; write \"text\", [20 02 ff] or null");
    expect_fault("sample_state_swap(state=5) = 0",
                 "25: '5' does not fit here; write {field=value field=value} or null");
    expect_fault("sample_state_swap(state={steps=5}) = 0", "32: '5' does not fit here; write [1 2 3]");
    expect_fault("sample_watch(handler=5) = 0", "22: '5' does not fit here; write callback or null");
    expect_fault("sample_levels = 0 low=", "23: the end of the line does not fit here; write a number or null");
    expect_fault("sample_read = 0 data=[2 00]", "23: '2' is no byte; write two hex digits, as in [20 02 ff]");
    expect_fault("sample_read = 0 data=[0x20]", "23: '0x20' is no byte; write two hex digits, as in [20 02 ff]");
}

TEST(ScriptFaultTest, WhatIsOpenedIsClosed) {
    expect_fault("sample_text = 0 answer=\"abc", "24: text without an end; close it with \"");
    expect_fault("sample_read = 0 data=[20 02 # ]", "22: list without an end; close it with ]");
    expect_fault("sample_state_swap(state={steps=[1 2", "32: list without an end; close it with ]");
    expect_fault("sample_state_swap(state={small=1", "25: record without an end; close it with }");
    expect_fault("sample_wide(offset=1 = 0",
                 "22: '=' where ')' was expected; write op(name=value, name=value) = result");
    expect_fault("sample_wide(offset 1) = 0", "20: '1' where '=' was expected; write name=value");
}

TEST(ScriptFaultTest, EscapesAreKnown) {
    expect_fault(R"(sample_text = 0 answer="a\q")", R"(26: unknown escape; write \n, \r, \t, \\, \" or \x0a)");
    expect_fault(R"(sample_text = 0 answer="a\x4")", R"(26: \x without two hex digits; write \x0a)");
}

TEST(ScriptFaultTest, ResultsAndCountsAreKnown) {
    const std::string right = " is no result; write a number such as 0 or 0xdead, pass, crash or hang";
    expect_fault("sample_stop() = fail", "17: 'fail'" + right);
    expect_fault("sample_stop() =", "16: the end of the line" + right);
    expect_fault("sample_stop", "12: the end of the line where '=' was expected; write op(name=value) = result");
    expect_fault("sample_stop()\n", "14: the end of the line where '=' was expected; write op(name=value) = result");
    expect_fault("sample_stop = 0x1ffffffff", "15: '0x1ffffffff' is too large; write a number of 32 bits");
    expect_fault("sample_stop = 0 x0", "17: 'x0' is no count; write x1, x2, ... for how often the rule serves");
    expect_fault("sample_stop = 0 x2y", "17: 'x2y' is no count; write x1, x2, ... for how often the rule serves");
    expect_fault("sample_levels = 0 x2 low=1", "22: 'low' behind the count; end the rule with the count");
    expect_fault("sample_levels = crash low=1", "23: a call that does not return writes nothing; end the rule here");
    expect_fault("= 0", "1: '=' where a name was expected; write op(name=value) = result name=value");
    expect_fault("sample-stop = 0", "1: 'sample-stop' is no name; write op(name=value) = result name=value");
}

TEST(ScriptFaultTest, EachWrongLineIsNamedAndTheOthersAreRead) {
    const script read = parse_script("dir/rules", "sample_stop = 0\nsample_stop = no\n\nsample_top = 0\n");
    EXPECT_EQ(read.rules.size(), 1U);
    ASSERT_EQ(read.faults.size(), 2U);
    EXPECT_EQ(read.faults[0].substr(0, 15), "dir/rules:2:15:");
    EXPECT_EQ(read.faults[1], "dir/rules:4:1: no operation is called 'sample_top'; nearest: 'sample_stop'");
}

TEST(ScriptFaultTest, ThreadsAreNumberedFromOne) {
    expect_fault("@0 sample_stop = 0", "1: '@0' is no thread; write @1, @2, ...");
    expect_fault(" @two sample_stop = 0", "2: '@two' is no thread; write @1, @2, ...");
}

TEST(ScriptFaultTest, ACallThatNeverCameBackIsNamed) {
    const std::string fault =
        ":1: this call never came back, the recorded run ended in it; write what it is to do behind "
        "it, as in = crash, or take the line out: ";
    const script cut = parse_script("s", "sample_stop = 0\nsample_read(inst_id=0x1, length=4)");
    EXPECT_EQ(cut.faults, std::vector<std::string>{"s:2" + fault + "sample_read(inst_id=0x1, length=4)"});
    const script closed =
        parse_script("s", "sample_read(length=4) ...\n@2 sample_read(length=4) = 0\nsample_stop() = 0\n");
    EXPECT_EQ(closed.faults, std::vector<std::string>{"s:1" + fault + "sample_read(length=4)"});
}

TEST(ScriptFaultTest, ACallThatCameBackLaterStandsThereAsAWhole) {
    const script read = parse_script("s", "sample_stop() ...\nsample_stop() ...\n# callback: sample_total() = 0\n"
                                          "sample_stop() = 1\nsample_stop() = 2\n");
    EXPECT_EQ(read.faults, std::vector<std::string>());
    ASSERT_EQ(read.rules.size(), 2U);
    EXPECT_EQ(read.rules[1].code, 2U);
    const script once = parse_script("s", "sample_stop() ...\nsample_stop() ...\nsample_stop() = 1\n");
    EXPECT_EQ(once.faults.size(), 1U);
}

TEST(NamesTest, DistanceCountsSingleCharacters) {
    EXPECT_EQ(edit_distance("", "abc"), 3U);
    EXPECT_EQ(edit_distance("kitten", "sitting"), 3U);
    EXPECT_EQ(edit_distance("same", "same"), 0U);
}

TEST(NamesTest, NearestAreFirstAndAtMostThree) {
    EXPECT_EQ(nearest_names("nmu", {"reserved", "num"}), "'num'");
    EXPECT_EQ(nearest_names("aa", {"ac", "ab", "aa1", "ad"}), "'ac' or 'ab' or 'aa1'");
    EXPECT_EQ(nearest_names("aa", {}), "");
}
