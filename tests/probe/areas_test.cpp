// What kestro_call lays behind the arguments of a call.
#include "probe/areas.h"
#include "probe/call.h"
#include "sample.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

// The call as the driver would see it.
std::string passed(const std::string &line) {
    const rule asked = parse_call(line);
    const call_areas areas(asked);
    const call made = make_call(asked.operation, areas.arguments());
    return print_call(asked.operation, shown_inputs(made));
}

void expect_passed(const std::string &line, const std::string &seen) {
    EXPECT_EQ(passed(line), seen);
}

template <typename Pointer> Pointer argument(const call_areas &areas, size_t index) {
    Pointer pointer{};
    memcpy(&pointer, areas.arguments()[index], sizeof(pointer));
    return pointer;
}

} // namespace

TEST(AreasTest, WhatIsNotNamedIsZeroOrNull) {
    expect_passed("sample_wide",
                  "sample_wide(inst_id=0xffffffff, offset=0, address=0, gain=0, letter=0, step=0, trim=0)");
    expect_passed("sample_wide(inst_id=0, gain=0.5, step=-1)",
                  "sample_wide(inst_id=0x0, offset=0, address=0, gain=0.5, letter=0, step=-1, trim=0)");
    expect_passed("sample_state_set", "sample_state_set(state=null)");
    expect_passed("sample_watch", "sample_watch(handler=null, context=null)");
    expect_passed("sample_watch(handler=callback, context=callback)",
                  "sample_watch(handler=callback, context=callback)");
}

TEST(AreasTest, ASizeThatIsNotNamedFitsItsArea) {
    expect_passed("sample_lanes(wanted=[{power=1} {gain=2}])",
                  "sample_lanes(wanted=[{power=1 gain=0} {power=0 gain=2}], count=2)");
    expect_passed("sample_read", "sample_read(inst_id=0xffffffff, length=256)");
    expect_passed("sample_read(length=4)", "sample_read(inst_id=0xffffffff, length=4)");
    expect_passed("sample_words(words=[1 2], count=3, scales=[0.5 1])",
                  "sample_words(words=[1 2 0], count=3, scales=[0.5 1])");
    expect_passed("sample_text(both=\"fade\")", "sample_text(name=null, both=\"fade\", size=256)");
}

TEST(AreasTest, WhatARecordPointsToIsLaidAsWell) {
    expect_passed("sample_transfer(request={data=[01 02 03] room=4 label=\"x\" done=callback context=callback})",
                  "sample_transfer(request={channel=0 length=3 room=4 data=[01 02 03] label=\"x\" done=callback "
                  "context=callback})");
    expect_passed("sample_transfer(request={length=1 data=[01 02 03]})",
                  "sample_transfer(request={channel=0 length=1 room=0 data=[01] label=null done=null context=null})");
    expect_passed("sample_commands(list=[{text=\"a b\" codes=[1 2]} {log=callback}])",
                  "sample_commands(list=[{text=\"a b\" log=null count=2 codes=[1 2]} "
                  "{text=null log=callback count=0 codes=null}], number=2)");
}

TEST(AreasTest, RecordsWithinRecordsAndRowsArePassed) {
    const rule asked =
        parse_call("sample_port_get(port=3, found={first={power=7} lanes=[{} {gain=2}] table=[[] [1 2 3]]})");
    const call_areas areas(asked);
    const auto *found = argument<const sample_port *>(areas, 1);
    EXPECT_EQ(found->first.power, 7U);
    EXPECT_EQ(found->lanes[1].gain, 2.0F);
    EXPECT_EQ(found->table[1][2], 3);
    EXPECT_EQ(found->table[0][0], 0);
}

TEST(AreasTest, NullIsPassedForAnyPointer) {
    const rule asked = parse_call("sample_lanes(wanted=null, count=5, lanes=null, filled=null)");
    const call_areas areas(asked);
    for (const size_t index : {0U, 2U, 3U}) {
        EXPECT_EQ(argument<void *>(areas, index), nullptr) << index;
    }
    EXPECT_EQ(argument<uint32_t>(areas, 1), 5U);
}

TEST(AreasTest, AnAreaEndsWhereItsSizeSays) {
    const rule asked = parse_call("sample_transfer(request={room=4})");
    const call_areas areas(asked);
    uint8_t *const answer = argument<sample_request *>(areas, 0)->answer;
    memset(answer, 1, 4);
    EXPECT_EQ(areas.overrun(), std::vector<std::string>());
    answer[4] = 1;
    EXPECT_EQ(areas.overrun(), std::vector<std::string>{"request"});
}

TEST(AreasTest, AFixedSizeAndAWideElementAreCounted) {
    const rule asked = parse_call("sample_words(count=2)");
    const call_areas areas(asked);
    argument<uint32_t *>(areas, 2)[1] = 1;
    argument<uint16_t *>(areas, 0)[1] = 1;
    EXPECT_EQ(areas.overrun(), std::vector<std::string>());
    argument<uint32_t *>(areas, 2)[2] = 1;
    EXPECT_EQ(areas.overrun(), std::vector<std::string>{"wide"});
    argument<uint16_t *>(areas, 0)[2] = 1;
    EXPECT_EQ(areas.overrun(), (std::vector<std::string>{"words", "wide"}));
}
