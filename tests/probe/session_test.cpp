// Which rule answers which call.
#include "probe/session.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

using namespace kestro_probe;

namespace {

// sample_wide with an offset; its other inputs stay the same.
decision decide(session &running, int32_t offset) {
    uint32_t inst_id = 1;
    uint64_t address = 0;
    float gain = 0;
    char letter = 0;
    int8_t step = 0;
    int16_t trim = 0;
    void *arguments[] = {&inst_id, &offset, &address, &gain, &letter, &step, &trim};
    return running.decide(make_call(find_operation("sample_wide"), arguments));
}

script rules(const std::string &text) {
    script read = parse_script("s", text);
    EXPECT_EQ(read.faults, std::vector<std::string>());
    return read;
}

} // namespace

TEST(SessionTest, TheFirstRuleThatMatchesAndIsNotUsedUpWins) {
    session running({}, rules("sample_wide(offset=2) = 20 x1\nsample_wide(offset=1) = 1\nsample_wide = 3 x2\n"));
    EXPECT_EQ(decide(running, 2).code, 20U);
    EXPECT_EQ(decide(running, 2).code, 3U);
    EXPECT_EQ(decide(running, 1).code, 1U);
    EXPECT_EQ(decide(running, 1).code, 1U);
    EXPECT_EQ(decide(running, 7).code, 3U);
    EXPECT_TRUE(decide(running, 7).real);
}

TEST(SessionTest, WithoutARuleTheRealDriverAnswers) {
    session running({}, rules("sample_stop = 1\n"));
    EXPECT_TRUE(decide(running, 1).real);
    EXPECT_TRUE(running.names(find_operation("sample_stop")));
    EXPECT_FALSE(running.names(find_operation("sample_wide")));
}

TEST(SessionTest, TheCallThatFailsUsesNoRuleUp) {
    settings asked;
    asked.failing = {2, false, 0xbad};
    session running(asked, rules("sample_wide = 1 x1\nsample_wide = 2 x1\n"));
    EXPECT_EQ(decide(running, 1).code, 1U);
    const decision failed = decide(running, 1);
    EXPECT_FALSE(failed.real);
    EXPECT_EQ(failed.code, 0xbadU);
    EXPECT_EQ(failed.by, nullptr);
    EXPECT_EQ(decide(running, 1).code, 2U);
}

TEST(SessionTest, EveryCallAfterMayFailAsWell) {
    settings asked;
    asked.failing = {2, true, 0xdead};
    session running(asked, {});
    EXPECT_TRUE(decide(running, 1).real);
    EXPECT_EQ(decide(running, 1).code, 0xdeadU);
    EXPECT_EQ(decide(running, 1).code, 0xdeadU);
}

TEST(SessionTest, ARecordingServesItsLinesInOrder) {
    settings asked;
    asked.replay = "s";
    session running(asked, rules("sample_wide(offset=1) = 1\nsample_wide(offset=1) = 2 x2\nsample_wide = 3\n"));
    EXPECT_EQ(decide(running, 1).code, 1U);
    EXPECT_EQ(decide(running, 1).code, 2U);
    EXPECT_EQ(decide(running, 1).code, 2U);
    EXPECT_EQ(decide(running, 1).code, 3U);
}

TEST(SessionTest, ThreadsUseARuleUpTogether) {
    session running({}, rules("sample_wide = 1 x2000\n"));
    std::atomic<int> served{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int call = 0; call < 1000; ++call) {
                served += decide(running, call).real ? 0 : 1;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(served, 2000);
}
