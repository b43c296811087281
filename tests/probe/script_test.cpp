// The language of scripts and traces: what is read, and that what is printed reads the same again.
#include "probe/script.h"

#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

rule only_rule(const std::string &line) {
    const script read = parse_script("s", line);
    EXPECT_EQ(read.faults, std::vector<std::string>());
    EXPECT_EQ(read.rules.size(), 1U) << line;
    return read.rules.empty() ? rule() : read.rules[0];
}

// The line as the trace writes it.
void expect_same(const std::string &line) {
    EXPECT_EQ(print_rule(only_rule(line)), line);
}

void expect_printed(const std::string &line, const std::string &printed) {
    EXPECT_EQ(print_rule(only_rule(line)), printed);
    expect_same(printed);
}

std::string text_of(const std::string &line) {
    return only_rule(line).outputs.at(0).content.bytes;
}

} // namespace

TEST(ScriptTest, CanonicalLinesReadAndPrintTheSame) {
    expect_same("sample_stop() = 0x0");
    expect_same("sample_stop = 0x811101a4");
    expect_same("sample_stop = crash");
    expect_same("sample_stop = hang x2");
    expect_same("sample_levels() = pass low=-5");
    expect_same("sample_wide(inst_id=0xffffffff, offset=-1, address=0x1122334455667788, gain=3.25, letter=65) = 0x1");
    expect_same("sample_text(name=\"a b\", both=\"\", size=8) = 0x0 answer=\"V1.02\" both=[20 00 ff] x3");
    expect_same("sample_state_set(state={small=-1 name=\"lpu\"}) = 0x0 old={total=0x100000000 steps=[1 65535]}");
    expect_same("sample_watch(handler=callback, context=null) = 0x0");
    expect_same("sample_read(inst_id=0x5, length=240) = 0x0 data=[] length=0");
    expect_same("@3 sample_stop() = 0x0");
    expect_same("sample_print(level=2, text=\"100% of 5\") = 0x0");
}

TEST(ScriptTest, NumbersAreDecimalBelow65536AndHexadecimalAbove) {
    expect_printed("sample_wide(offset=65535) = 0", "sample_wide(offset=65535) = 0x0");
    expect_printed("sample_wide(offset=65536) = 0", "sample_wide(offset=0x10000) = 0x0");
    expect_printed("sample_wide(inst_id=16) = 57005", "sample_wide(inst_id=0x10) = 0xdead");
    expect_printed("sample_wide(inst_id=-1) = -1", "sample_wide(inst_id=0xffffffff) = 0xffffffff");
    expect_printed("sample_wide(offset=0xffffffff) = 0", "sample_wide(offset=-1) = 0x0");
    expect_printed("sample_wide(offset=-70000) = 0", "sample_wide(offset=-70000) = 0x0");
    expect_printed("sample_wide(step=0x80, trim=0xFFFE) = 0", "sample_wide(step=-128, trim=-2) = 0x0");
    expect_printed("sample_wide(address=18446744073709551615) = 0", "sample_wide(address=0xffffffffffffffff) = 0x0");
}

TEST(ScriptTest, FloatsKeepTheirValue) {
    expect_printed("sample_wide(gain=0.1) = 0", "sample_wide(gain=0.1) = 0x0");
    expect_printed("sample_wide(gain=-2) = 0", "sample_wide(gain=-2) = 0x0");
    expect_same("sample_wide(gain=nan) = 0x0");
    expect_same("sample_wide(gain=-inf) = 0x0");
    EXPECT_EQ(only_rule("sample_wide(gain=1e-3) = 0").inputs.at(0).content.real, 0.001F);
}

TEST(ScriptTest, EscapesStandForOneByteEach) {
    EXPECT_EQ(text_of(R"(sample_text() = 0 answer="a\n\r\t\\\"\x00\xfFz")"), std::string("a\n\r\t\\\"\0\xffz", 9));
    expect_same(R"(sample_text() = 0x0 answer="a\n\r\t\\\"\x00\xffz")");
    expect_same(R"(sample_text() = 0x0 answer="# no comment x3 {[")");
}

TEST(ScriptTest, BytesMayBeGivenAsTextAndTextAsBytes) {
    expect_same("sample_read() = 0x0 data=\"AB\"");
    EXPECT_EQ(text_of("sample_text() = 0 answer=[41 0a FF]"), "A\n\xff");
}

TEST(ScriptTest, CommentsAndBlanksAreLeftOut) {
    const script read = parse_script("s", "# all of it\n\n   \t\r\n  sample_stop ( ) = 0  x3 # so often\r\n"
                                          "sample_stop=1#at once");
    EXPECT_EQ(read.faults, std::vector<std::string>());
    ASSERT_EQ(read.rules.size(), 2U);
    EXPECT_EQ(read.rules[0].line, 4U);
    EXPECT_EQ(read.rules[0].times, 3U);
    EXPECT_EQ(read.rules[0].source, "sample_stop ( ) = 0  x3");
    EXPECT_EQ(read.rules[1].line, 5U);
    EXPECT_EQ(read.rules[1].code, 1U);
    EXPECT_EQ(read.rules[1].source, "sample_stop=1");
}

TEST(ScriptTest, NullStandsForAPointerThatIsNotGiven) {
    expect_same("sample_text(name=null) = 0x0 answer=null");
    expect_same("sample_levels(limit=null) = 0x0 low=null");
}

TEST(ScriptTest, EveryKindOfFieldIsRead) {
    expect_same("sample_state_swap(state={small=-3 level=-300 total=0x123456789 ratio=0.5 name=\"fan\" steps=[1 2 3] "
                "curve=[0.5 -1] word=0x1020304 part=[04 03 02 01]}) = 0x0");
}
