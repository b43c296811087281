// Records within records, arrays in and out, pointers in records, results of other types: how they are shown, matched
// and written, and never beyond their areas.
#include "probe/call.h"
#include "sample.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

rule rule_of(const std::string &line) {
    const script read = parse_script("s", line + "\n");
    EXPECT_EQ(read.faults, std::vector<std::string>());
    return read.rules.at(0);
}

void expect_same(const std::string &line) {
    EXPECT_EQ(print_rule(rule_of(line)), line);
}

void expect_fault(const std::string &line, const std::string &fault) {
    const script read = parse_script("s", line + "\n");
    EXPECT_EQ(read.faults, std::vector<std::string>{"s:1:" + fault}) << line;
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
    line.outputs = read_outputs(made);
    return print_answer(line);
}

using misfits = std::vector<std::string>;

// sample_transfer(request)
struct transfer_call {
    uint8_t data[3] = {1, 2, 0xff};
    uint8_t answer[6] = {9, 9, 9, 9, 9, 9};
    sample_request made_of{7, 3, 4, data, answer, "slow", nullptr, this};
    sample_request *request = &made_of;
    void *arguments[1] = {&request};
    call made = call_of("sample_transfer", arguments);
};

// sample_lanes(wanted, count, lanes, filled)
struct lanes_call {
    sample_lane given[2] = {{1, 0.5F}, {0x10000, -1}};
    sample_lane area[4] = {};
    uint32_t number = 0;
    const sample_lane *wanted = given;
    uint32_t count = 2;
    sample_lane *lanes = area;
    uint32_t *filled = &number;
    void *arguments[4] = {&wanted, &count, &lanes, &filled};
    call made = call_of("sample_lanes", arguments);
};

// sample_words(words, count, wide, scales)
struct words_call {
    uint16_t area[4] = {1, 2, 3, 0xeeee};
    uint32_t wide_area[3] = {5, 6, 7};
    double scale_area[2] = {0.1, 1e300};
    uint16_t *words = area;
    uint32_t count = 3;
    uint32_t *wide = wide_area;
    const double *scales = scale_area;
    void *arguments[4] = {&words, &count, &wide, &scales};
    call made = call_of("sample_words", arguments);
};

} // namespace

TEST(ShapesTest, LinesReadAndPrintTheSame) {
    expect_same("sample_port_get(port=1) = 0x0 found={number=1 first={power=2 gain=0.5} lanes=[{power=1} {gain=2}] "
                "table=[[1 2 3] [4 5 6]] keys=[[01 02] [03 04]] names=[\"ab\" \"cd\"] scale=0.1}");
    expect_same("sample_lanes(wanted=[{power=1 gain=2}], count=1) = 0x0 lanes=[] filled=0");
    expect_same("sample_words(words=[1 65535], scales=[0.1 1e+300]) = 0x0 words=[] wide=[0x10000 2]");
    expect_same("sample_transfer(request={length=2 data=[01 02] label=\"x\" done=callback context=null}) = 0x0 "
                "request={answer=[00] length=1}");
    expect_same("sample_commands(list=[{text=\"a b\" log=null codes=[1 2]} {text=null}]) = 0x1");
    expect_same("sample_packet() = 0x0 packet=[01] length=1 key=[ff]");
}

TEST(ShapesTest, ResultsKeepTheirType) {
    expect_same("sample_balance(left=-1) = -5");
    expect_same("sample_balance = 0x7fffffff");
    expect_same("sample_total() = 0x1122334455667788");
    expect_same("sample_delay(count=1) = void");
    expect_same("sample_delay(count=1) = hang");
    EXPECT_EQ(static_cast<int64_t>(rule_of("sample_balance = 0xffffffff").code), -1);
    expect_fault("sample_total = void", "16: sample_total returns a number; write it, as in = 0");
    expect_fault("sample_delay = 0", "16: sample_delay returns nothing; write void, pass, crash or hang");
    expect_fault("sample_stop = 0x100000000", "15: '0x100000000' is too large; write a number of 32 bits");
}

TEST(ShapesTest, MistakesNameWhatWouldFit) {
    expect_fault("sample_words(words=5) = 0", "20: '5' does not fit here; write [1 2 3] or null");
    expect_fault("sample_words(words=[70000]) = 0", "21: '70000' is too large; write a number of 16 bits");
    expect_fault("sample_lanes(wanted=[1]) = 0", "22: '1' does not fit here; write {field=value field=value}");
    expect_fault("sample_port_get = 0 found={table=[1]}", "35: '1' does not fit here; write [1 2 3]");
    expect_fault("sample_port_get = 0 found={table=1}", "34: '1' does not fit here; write [[1 2] [3 4]]");
    expect_fault("sample_port_get = 0 found={lanes=1}",
                 "34: '1' does not fit here; write [{field=value} {field=value}]");
    expect_fault("sample_port_get = 0 found={first={pwer=1}}", "35: sample_lane has no field 'pwer'; nearest: 'power'");
    expect_fault("sample_transfer(request={answer=[01]}) = 0",
                 "26: what 'answer' points to is written by the driver; name it behind the result");
    expect_fault("sample_transfer = 0 request={label=\"a\"}",
                 "30: what 'label' points to is read by the driver; name it in the parentheses");
    expect_fault("sample_words(words=[1 2", "20: list without an end; close it with ]");
}

TEST(ShapesTest, RecordsWithinRecordsAreShownWhole) {
    sample_port port{};
    port.number = 3;
    port.first = {1, 0.5F};
    port.lanes[2] = {0x12345, 2};
    port.table[1][2] = 9;
    port.keys[1][0] = 0xab;
    memcpy(port.names[0], "abcd", 4);
    memcpy(port.names[1], "x", 2);
    port.scale = 0.1;
    uint32_t number = 1;
    sample_port *found = &port;
    void *arguments[] = {&number, &found};
    const call made = call_of("sample_port_get", arguments);
    const std::string line = " = 0x0 found={number=3 first={power=1 gain=0.5} lanes=[{power=0 gain=0} "
                             "{power=0 gain=0} {power=0x12345 gain=2}] table=[[0 0 0] [0 0 9]] "
                             "keys=[[00 00] [ab 00]] names=[\"abcd\" \"x\"] scale=0.1}";
    EXPECT_EQ(shown_outputs(made), line);
    port = {};
    EXPECT_EQ(write_outputs(rule_of("sample_port_get" + line), made), misfits());
    EXPECT_EQ(shown_outputs(made), line);
}

TEST(ShapesTest, WhatIsLongerThanItsRowIsCut) {
    sample_port port{};
    uint32_t number = 1;
    sample_port *found = &port;
    void *arguments[] = {&number, &found};
    const call made = call_of("sample_port_get", arguments);
    const misfits cut{"found is longer than its record; it was cut"};
    EXPECT_EQ(write_outputs(rule_of("sample_port_get = 0 found={table=[[1 2 3 4]]}"), made), cut);
    EXPECT_EQ(port.table[0][2], 3);
    EXPECT_EQ(port.table[1][0], 0);
    EXPECT_EQ(write_outputs(rule_of("sample_port_get = 0 found={keys=[[01] [02] [03]]}"), made), cut);
    EXPECT_EQ(port.names[0][0], 0);
    EXPECT_EQ(write_outputs(rule_of("sample_port_get = 0 found={lanes=[{} {} {} {power=1}]}"), made), cut);
    EXPECT_EQ(port.table[0][0], 1);
}

TEST(ShapesTest, ArraysOfRecordsGoInAndOut) {
    lanes_call lanes;
    EXPECT_EQ(shown(lanes.made), "sample_lanes(wanted=[{power=1 gain=0.5} {power=0x10000 gain=-1}], count=2)");
    EXPECT_TRUE(matches(rule_of("sample_lanes(wanted=[{power=1} {gain=-1}]) = 0"), lanes.made));
    EXPECT_FALSE(matches(rule_of("sample_lanes(wanted=[{power=1}]) = 0"), lanes.made));
    EXPECT_FALSE(matches(rule_of("sample_lanes(wanted=[{power=1} {gain=1}]) = 0"), lanes.made));
    EXPECT_FALSE(matches(rule_of("sample_lanes(wanted=null) = 0"), lanes.made));
    EXPECT_EQ(write_outputs(rule_of("sample_lanes = 0 lanes=[{power=1} {power=2 gain=3}] filled=2"), lanes.made),
              misfits());
    EXPECT_EQ(shown_outputs(lanes.made), " = 0x0 lanes=[{power=1 gain=0} {power=2 gain=3}] filled=2");
    EXPECT_EQ(write_outputs(rule_of("sample_lanes = 0 lanes=[{} {} {} {power=9}]"), lanes.made),
              misfits{"lanes is longer than its area of 3 elements; it was cut"});
    EXPECT_EQ(lanes.area[3].power, 0U);
    lanes.number = 50;
    EXPECT_EQ(shown_outputs(lanes.made), " = 0x0 lanes=[{power=1 gain=0} {power=2 gain=3} {power=0 gain=0}] filled=50");
}

TEST(ShapesTest, WideWordsKeepToTheirArea) {
    words_call words;
    EXPECT_EQ(shown(words.made), "sample_words(words=[1 2 3], count=3, scales=[0.1 1e+300])");
    EXPECT_TRUE(matches(rule_of("sample_words(words=[1 2 3], scales=[0.1 1e300]) = 0"), words.made));
    EXPECT_FALSE(matches(rule_of("sample_words(scales=[0.1 1e301]) = 0"), words.made));
    EXPECT_EQ(write_outputs(rule_of("sample_words = 0 words=[7 8 9 10] wide=[1 2 3]"), words.made),
              (misfits{"words is longer than its area of 3 elements; it was cut",
                       "wide is longer than its area of 2 elements; it was cut"}));
    EXPECT_EQ(words.area[2], 9);
    EXPECT_EQ(words.area[3], 0xeeee);
    EXPECT_EQ(words.wide_area[2], 7U);
    EXPECT_EQ(shown_outputs(words.made), " = 0x0 words=[7 8 9] wide=[1 2]");
}

TEST(ShapesTest, ASizeOfNothingIsShownAsNothing) {
    words_call words;
    words.count = 0;
    words.wide = nullptr;
    const call made = call_of("sample_words", words.arguments);
    EXPECT_EQ(shown(made), "sample_words(words=[], count=0, scales=[0.1 1e+300])");
    EXPECT_EQ(shown_outputs(made), " = 0x0 words=[] wide=null");
    EXPECT_EQ(write_outputs(rule_of("sample_words = 0 wide=[1]"), made), misfits{"the call gives no area for wide"});
}

TEST(ShapesTest, PointersInRecordsShowWhatTheyLeadTo) {
    transfer_call transfer;
    EXPECT_EQ(shown(transfer.made), "sample_transfer(request={channel=7 length=3 room=4 data=[01 02 ff] label=\"slow\" "
                                    "done=null context=callback})");
    EXPECT_EQ(shown_outputs(transfer.made), " = 0x0 request={channel=7 length=3 room=4 answer=[09 09 09 09]}");
    EXPECT_TRUE(matches(rule_of("sample_transfer(request={data=[01 02 ff] label=\"slow\"}) = 0"), transfer.made));
    EXPECT_FALSE(matches(rule_of("sample_transfer(request={data=[01 02]}) = 0"), transfer.made));
    EXPECT_FALSE(matches(rule_of("sample_transfer(request={done=callback}) = 0"), transfer.made));
}

TEST(ShapesTest, WhatARecordPointsToIsWrittenWithinItsLength) {
    transfer_call transfer;
    EXPECT_EQ(write_outputs(rule_of("sample_transfer = 0 request={room=9 answer=[01 02 03 04 05]}"), transfer.made),
              misfits{"request is longer than its record; it was cut"});
    EXPECT_EQ(transfer.answer[3], 4);
    EXPECT_EQ(transfer.answer[4], 9);
    EXPECT_EQ(transfer.made_of.room, 9U);
}

TEST(ShapesTest, NullPointersInRecordsAreShownAndLeftAlone) {
    transfer_call transfer;
    transfer.made_of.data = nullptr;
    transfer.made_of.answer = nullptr;
    transfer.made_of.label = nullptr;
    EXPECT_EQ(shown(transfer.made),
              "sample_transfer(request={channel=7 length=3 room=4 data=null label=null done=null context=callback})");
    EXPECT_EQ(shown_outputs(transfer.made), " = 0x0 request={channel=7 length=3 room=4 answer=null}");
    EXPECT_EQ(write_outputs(rule_of("sample_transfer = 0 request={answer=[01]}"), transfer.made).size(), 1U);
    EXPECT_EQ(write_outputs(rule_of("sample_transfer = 0 request={answer=null channel=1}"), transfer.made), misfits());
    EXPECT_EQ(transfer.made_of.channel, 1);
    transfer.request = nullptr;
    EXPECT_EQ(shown(transfer.made), "sample_transfer(request=null)");
}

TEST(ShapesTest, ListsOfRecordsWithTextsAndHandlers) {
    const uint16_t codes[] = {1, 65535};
    const sample_command commands[] = {{"show", nullptr, 2, codes}, {nullptr, nullptr, 0, nullptr}};
    const sample_command *list = commands;
    uint32_t number = 2;
    void *arguments[] = {&list, &number};
    EXPECT_EQ(shown(call_of("sample_commands", arguments)),
              "sample_commands(list=[{text=\"show\" log=null count=2 codes=[1 65535]} "
              "{text=null log=null count=0 codes=null}], number=2)");
}

TEST(ShapesTest, OnlyWhatWasWrittenIsShown) {
    uint8_t area[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    uint8_t key_area[4] = {4, 3, 2, 1};
    uint8_t *packet = area;
    uint8_t *key = key_area;
    uint32_t size = 8;
    uint32_t length = 3;
    uint32_t *length_at = &length;
    void *arguments[] = {&packet, &size, &length_at, &key};
    const call made = call_of("sample_packet", arguments);
    EXPECT_EQ(shown(made), "sample_packet(size=8, key=[04 03 02 01])");
    EXPECT_EQ(shown_outputs(made), " = 0x0 packet=[01 02 03] length=3 key=[04 03 02 01]");
    length_at = nullptr;
    EXPECT_EQ(shown_outputs(made), " = 0x0 packet=[01 02 03 04 05 06 07 08] length=null key=[04 03 02 01]");
}
