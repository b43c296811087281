// Driver calls as the probe sees them: what is shown, what matches, what is written and never beyond.
#include "probe/call.h"
#include "sample.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

rule rule_of(const std::string &line) {
    const script read = parse_script("s", line);
    EXPECT_EQ(read.faults, std::vector<std::string>());
    return read.rules.at(0);
}

call call_of(const char *operation, void *const *arguments) {
    return make_call(find_operation(operation), arguments);
}

std::string shown(const call &made) {
    return print_call(made.operation, shown_inputs(made));
}

std::string shown_outputs(const call &made) {
    rule line;
    line.operation = made.operation;
    line.any_input = true;
    line.outputs = read_outputs(made);
    return print_rule(line);
}

// sample_text(name, answer, both, size)
struct text_call {
    const char *name = "lpu";
    char answer_area[20] = {};
    char both_area[12] = {};
    char *answer = answer_area;
    char *both = both_area;
    uint16_t size = 8;
    void *arguments[4] = {&name, &answer, &both, &size};
    call made;

    text_call() : made() {
        memset(answer_area, 'e', sizeof(answer_area));
        memset(both_area, 'e', sizeof(both_area));
        memcpy(both_area, "fade", 5);
        made = call_of("sample_text", arguments);
    }
};

// sample_state_set(state, old)
struct state_call {
    sample_state given{};
    sample_state before{};
    const sample_state *state = &given;
    sample_state *old = &before;
    void *arguments[2] = {&state, &old};
    call made;

    state_call() : made() {
        given.small = -1;
        given.total = 0x123456789;
        given.ratio = 0.5F;
        memcpy(given.name, "fan", 3);
        given.steps[1] = 7;
        given.word = 0x01020304;
        made = call_of("sample_state_set", arguments);
    }
};

} // namespace

TEST(CallTest, InputsAreShownInTheOrderOfTheDeclaration) {
    uint32_t inst_id = 5;
    int32_t offset = -2;
    uint64_t address = 0x1122334455667788;
    float gain = 0.1F;
    char letter = 'A';
    int8_t step = -128;
    int16_t trim = -300;
    void *arguments[] = {&inst_id, &offset, &address, &gain, &letter, &step, &trim};
    EXPECT_EQ(shown(call_of("sample_wide", arguments)),
              "sample_wide(inst_id=0x5, offset=-2, address=0x1122334455667788, gain=0.1, letter=65, step=-128, "
              "trim=-300)");
}

TEST(CallTest, AVariadicCallShowsItsTextInPlaceOfItsFormat) {
    uint32_t level = 1;
    const char *format = "chip %d";
    const char *text = "chip 3";
    void *arguments[] = {&level, &format, &text};
    const call made = call_of("sample_print", arguments);
    EXPECT_EQ(shown(made), "sample_print(level=1, text=\"chip 3\")");
    EXPECT_TRUE(matches(rule_of("sample_print(format=\"chip %d\", text=\"chip 3\") = 0"), made));
    EXPECT_FALSE(matches(rule_of("sample_print(text=\"chip 4\") = 0"), made));
}

TEST(CallTest, TextMatchesUpToItsEnd) {
    const text_call text;
    EXPECT_EQ(shown(text.made), "sample_text(name=\"lpu\", both=\"fade\", size=8)");
    EXPECT_TRUE(matches(rule_of("sample_text(name=\"lpu\", both=\"fade\") = 0"), text.made));
    EXPECT_TRUE(matches(rule_of("sample_text(name=[6c 70 75]) = 0"), text.made));
    EXPECT_TRUE(matches(rule_of("sample_text = 0"), text.made));
    EXPECT_FALSE(matches(rule_of("sample_text(name=\"lp\") = 0"), text.made));
    EXPECT_FALSE(matches(rule_of("sample_text(name=\"lpus\") = 0"), text.made));
    EXPECT_FALSE(matches(rule_of("sample_text(name=null) = 0"), text.made));
    EXPECT_FALSE(matches(rule_of("sample_stop = 0"), text.made));
}

TEST(CallTest, RecordsMatchInTheFieldsThatAreNamed) {
    const state_call state;
    const auto matched = [&](const std::string &fields) {
        return matches(rule_of("sample_state_set(state=" + fields + ") = 0"), state.made);
    };
    EXPECT_TRUE(matched("{}"));
    EXPECT_TRUE(matched("{small=-1 total=0x123456789 ratio=0.5 name=\"fan\" steps=[0 7]}"));
    EXPECT_FALSE(matched("{small=1}"));
    EXPECT_FALSE(matched("{ratio=0.25}"));
    EXPECT_FALSE(matched("{name=\"fa\"}"));
    EXPECT_FALSE(matched("{steps=[0 8]}"));
    EXPECT_FALSE(matched("{steps=[0 7 0 0]}"));
    EXPECT_FALSE(matched("null"));
}

TEST(CallTest, RecordsAreShownWhole) {
    const state_call state;
    EXPECT_EQ(shown(state.made), "sample_state_set(state={small=-1 level=0 total=0x123456789 ratio=0.5 name=\"fan\" "
                                 "steps=[0 7 0] curve=[0 0] word=0x1020304 part=[04 03 02 01]})");
}

TEST(CallTest, CharactersBehindTheEndOfATextFieldAreNotLost) {
    state_call state;
    memcpy(state.given.name, "fan\0xyz", 8);
    EXPECT_NE(shown(state.made).find("name=[66 61 6e 00 78 79 7a 00]"), std::string::npos);
}

TEST(CallTest, OutputsAreWrittenAndOthersLeftAlone) {
    state_call state;
    state.before.level = 9;
    EXPECT_EQ(
        write_outputs(rule_of("sample_state_set = 0 old={small=-5 name=\"cmu\" steps=[4] ratio=1.5}"), state.made),
        std::vector<std::string>());
    EXPECT_EQ(state.before.small, -5);
    EXPECT_EQ(state.before.level, 9);
    EXPECT_STREQ(state.before.name, "cmu");
    EXPECT_EQ(state.before.steps[0], 4);
    EXPECT_EQ(state.before.ratio, 1.5F);
}

TEST(CallTest, TextThatFillsItsAreaHasNoTerminator) {
    text_call text;
    EXPECT_TRUE(write_outputs(rule_of("sample_text = 0 both=\"12345678\" answer=\"V1\""), text.made).empty());
    EXPECT_EQ(std::string(text.both_area, 12), "12345678eeee");
    EXPECT_EQ(std::string(text.answer_area, 5), std::string("V1\0ee", 5));
    EXPECT_EQ(shown_outputs(text.made), "sample_text = 0x0 answer=\"V1\" both=\"12345678\"");
}

TEST(CallTest, WhatIsTooLongIsCutAndSaid) {
    text_call text;
    const std::vector<std::string> misfits = write_outputs(
        rule_of("sample_text = 0 answer=\"12345678901234567\" both=[31 32 33 34 35 36 37 38 39]"), text.made);
    EXPECT_EQ(misfits, (std::vector<std::string>{"answer is longer than its area of 16 bytes; it was cut",
                                                 "both is longer than its area of 8 bytes; it was cut"}));
    EXPECT_EQ(std::string(text.answer_area, 20), "1234567890123456eeee");
    EXPECT_EQ(std::string(text.both_area, 12), "12345678eeee");
}

TEST(CallTest, AListThatIsTooLongStaysWithinItsField) {
    state_call state;
    state.before.curve[0] = 2;
    EXPECT_EQ(write_outputs(rule_of("sample_state_set = 0 old={steps=[1 2 3 4]}"), state.made),
              std::vector<std::string>{"old is longer than its record; it was cut"});
    EXPECT_EQ(state.before.steps[2], 3);
    EXPECT_EQ(state.before.curve[0], 2);
}

TEST(CallTest, AnOutputWithoutAnAreaIsSaid) {
    text_call text;
    text.answer = nullptr;
    EXPECT_EQ(write_outputs(rule_of("sample_text = 0 answer=\"V1\""), text.made),
              std::vector<std::string>{"the call gives no area for answer"});
    EXPECT_TRUE(write_outputs(rule_of("sample_text = 0 answer=null"), text.made).empty());
    EXPECT_EQ(shown_outputs(text.made), "sample_text = 0x0 answer=null both=\"fade\"");
}

TEST(CallTest, ASizeThatIsPassedByAddressMayComeBackSmaller) {
    uint32_t inst_id = 1;
    uint8_t area[] = {1, 2, 3, 4, 5, 6};
    uint8_t *data = area;
    uint32_t room = 5;
    uint32_t *length = &room;
    void *arguments[] = {&inst_id, &data, &length};
    const call made = call_of("sample_read", arguments);
    EXPECT_EQ(shown_outputs(made), "sample_read = 0x0 data=[01 02 03 04 05] length=5");
    room = 2;
    EXPECT_EQ(shown_outputs(made), "sample_read = 0x0 data=[01 02] length=2");
    room = 6;
    EXPECT_EQ(write_outputs(rule_of("sample_read = 0 data=[a1 a2 a3 a4 a5 a6]"), made).size(), 1U);
    EXPECT_EQ(area[4], 0xa5);
    EXPECT_EQ(area[5], 6);
}

TEST(CallTest, HandlesAreGivenOrNot) {
    sample_handler handler = [](uint32_t) {};
    void *context = nullptr;
    void *arguments[] = {&handler, &context};
    const call made = call_of("sample_watch", arguments);
    EXPECT_EQ(shown(made), "sample_watch(handler=callback, context=null)");
    EXPECT_TRUE(matches(rule_of("sample_watch(handler=callback, context=null) = 0"), made));
    EXPECT_FALSE(matches(rule_of("sample_watch(handler=null) = 0"), made));
    EXPECT_FALSE(matches(rule_of("sample_watch(context=callback) = 0"), made));
}
