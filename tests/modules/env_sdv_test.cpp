// env_sdv_test: the self-test of the store of variables in flash, step by step.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

const std::string env = "env_test env_sdv_test";

// The steps of the test in flash, each as it goes well.
const std::string set = "drv_env_set(name=\"sdv_test\", value=\"kestro_ok\") = 0\n";
const std::string get = "drv_env_get(name=\"sdv_test\", size=128) = 0 value=\"kestro_ok\" x1\n";
const std::string num_set = "drv_env_num_set(name=\"sdv_test_num\", value=8899, base=10) = 0\n";
const std::string num_get = "drv_env_num_get(name=\"sdv_test_num\", base=10) = 0 value=8899 x1\n";
const std::string save = "drv_env_save() = 0\n";
const std::string saved = "drv_env_save_ok() = 0 status=0\n";
const std::string image = "drv_flash_read(inst_id=0xffffffff, section_id=8, offset=0, len=0x100000) = 0\n";
const std::string clear = "drv_env_clr(name=\"sdv_test\") = 0\ndrv_env_clr(name=\"sdv_test_num\") = 0\n";
const std::string gone = "drv_env_get(name=\"sdv_test\", size=128) = 0x81110103\n"
                         "drv_env_num_get(name=\"sdv_test_num\", base=10) = 0x81110103\n";

const std::string text_pass = "Test env set-get..............PASS\n";
const std::string number_pass = "Test env_num set-get..............PASS\n";
const std::string saved_ok = "wait save statusok.\n";
const std::string copies_pass = "Test env save..............PASS\n";
const std::string clear_pass = "Test env clr..............PASS\n";

const std::string to_the_save = set + get + num_set + num_get + save;
const std::string from_the_save = image + clear + gone;
const std::string before_the_save = text_pass + number_pass;
const std::string behind_the_save = copies_pass + clear_pass;

// A store that is asked so many times while it saves, and the seconds that this takes.
std::string saving(int polls) {
    return polls == 0 ? "" : "drv_env_save_ok() = 0 status=255 x" + std::to_string(polls) + "\n";
}

std::string took(int seconds) {
    return "cmd_exec used second:" + std::to_string(seconds) +
           "\r\ncmd_exec used millisecond:" + std::to_string(1000 * seconds) + "\r\n";
}

// A run that gets Ctrl-C just before its n-th driver call, or twice.
struct interrupted_run {
    process_result result;
    std::string calls; // the trace
};

interrupted_run interrupted(const std::string &line, const std::string &script, int call, int times = 1) {
    static const std::string state = new_scratch_dir();
    const std::string trace = scratch_file("trace", "");
    const std::string number = std::to_string(call);
    const process_result result =
        run_sim({"--state", state, "--clock", "virtual", "--script", scratch_file("script", script), "--trace", trace,
                 "--signal-call", times == 2 ? number + "," + number : number},
                split_words(line));
    return {result, read_file(trace)};
}

constexpr int ended_by_interrupt = 130;

bool ends_with(const std::string &text, const std::string &end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

size_t count_of(const std::string &text, const std::string &part) {
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

const std::string traced_clear = "drv_env_clr(name=\"sdv_test\") = 0x0\ndrv_env_clr(name=\"sdv_test_num\") = 0x0\n";

} // namespace

TEST(EnvSdvTest, AllStepsPass) {
    expect_success(env, to_the_save + saved + from_the_save,
                   "Test env set-get..............PASS\n"
                   "Test env_num set-get..............PASS\n"
                   "wait save statusok.\n"
                   "Test env save..............PASS\n"
                   "Test env clr..............PASS\n");
    expect_success(env + " 1 2 3", to_the_save + saved + from_the_save, before_the_save + saved_ok + behind_the_save);
}

// It ends the test, and is no failure of it.
TEST(EnvSdvTest, AStoreThatTakesNothing) {
    expect_success(env, "drv_env_set(name=\"sdv_test\", value=\"kestro_ok\") = 0x811101a4",
                   "drv env set fail, ret=0x811101a4 \n");
}

TEST(EnvSdvTest, EachDriverFailureEndsIt) {
    expect_failure(env, set + "drv_env_get(name=\"sdv_test\", size=128) = 0x81110103 value=\"x\"",
                   "drv env get fail, ret=0x81110103 \n");
    expect_failure(env, set + get + "drv_env_num_set(name=\"sdv_test_num\", value=8899, base=10) = 0x12",
                   text_pass + "drv env set fail, ret=0x12 \n");
    expect_failure(env, set + get + num_set + "drv_env_num_get(name=\"sdv_test_num\", base=10) = 0x81110103 value=8899",
                   text_pass + "drv env get fail, ret=-2129592061 \n");
    expect_failure(env, set + get + num_set + num_get + "drv_env_save() = 0x8111010d",
                   text_pass + number_pass + "drv env save fail, ret=0x8111010d \n");
    expect_failure(env, to_the_save + "drv_env_save_ok() = 0x811101a4 status=0",
                   before_the_save + "wait save statusdrv env save ok fail, ret=0x811101a4 \n");
    expect_failure(env, to_the_save + saved + "drv_flash_read(section_id=8) = 0x81110107",
                   before_the_save + saved_ok + "falsh read env fail, ret=0x81110107 \n");
    expect_failure(env, to_the_save + saved + image + "drv_env_clr(name=\"sdv_test\") = 0x1",
                   before_the_save + saved_ok + copies_pass + "clr env fail, ret=0x1 \n");
    expect_failure(env,
                   to_the_save + saved + image +
                       "drv_env_clr(name=\"sdv_test\") = 0\ndrv_env_clr(name=\"sdv_test_num\") = 0x811101a4",
                   before_the_save + saved_ok + copies_pass + "clr env fail, ret=0x811101a4 \n");
}

TEST(EnvSdvTest, ASaveStatusThatFailsLater) {
    expect_run(env, to_the_save + saving(2) + "drv_env_save_ok() = 5",
               before_the_save + "wait save status..drv env save ok fail, ret=0x5 \n" + took(2) +
                   operate_fail("env_sdv_test") + operate_fail("env_test"),
               255);
}

TEST(EnvSdvTest, VariablesThatAreStillThere) {
    expect_failure(env,
                   to_the_save + saved + image + clear + "drv_env_get(name=\"sdv_test\", size=128) = 0 value=\"left\"",
                   before_the_save + saved_ok + copies_pass + "clr env fail, get env is {left} \n");
    expect_failure(env, to_the_save + saved + image + clear + "drv_env_get(name=\"sdv_test\", size=128) = 0",
                   before_the_save + saved_ok + copies_pass + "clr env fail, get env is {} \n");
    expect_failure(env,
                   to_the_save + saved + image + clear +
                       "drv_env_get(name=\"sdv_test\", size=128) = 1\n"
                       "drv_env_num_get(name=\"sdv_test_num\", base=10) = 0 value=0xfffffffe",
                   before_the_save + saved_ok + copies_pass + "clr env fail, get env num is {-2} \n");
}

// What differs is told; it does not end the test and is no failure.
TEST(EnvSdvTest, Mismatches) {
    const auto with = [](const std::string &text, const std::string &number) {
        return set + "drv_env_get(name=\"sdv_test\", size=128) = 0" + text + " x1\n" + num_set +
               "drv_env_num_get(name=\"sdv_test_num\", base=10) = 0" + number + " x1\n" + save + saved + from_the_save;
    };
    expect_success(env, with(" value=\"kestro_o\"", " value=8898"),
                   "set value[kestro_ok] and get value[kestro_o], compare fail.\n"
                   "set value[8899] and get value[8898], compare fail.\n" +
                       saved_ok + behind_the_save);
    expect_success(env, with(" value=\"kestro_okay\"", " value=0x80000000"),
                   "set value[kestro_ok] and get value[kestro_okay], compare fail.\n"
                   "set value[8899] and get value[-2147483648], compare fail.\n" +
                       saved_ok + behind_the_save);
    expect_success(env, with("", ""),
                   "set value[kestro_ok] and get value[], compare fail.\n"
                   "set value[8899] and get value[0], compare fail.\n" +
                       saved_ok + behind_the_save);
}

TEST(EnvSdvTest, AValueIsShownToTheLastByteOfItsArea) {
    const std::string value(128, 'V');
    expect_success(env,
                   set + "drv_env_get(name=\"sdv_test\", size=128) = 0 value=\"" + value + "\" x1\n" + num_set +
                       num_get + save + saved + from_the_save,
                   "set value[kestro_ok] and get value[" + value + "], compare fail.\n" + number_pass + saved_ok +
                       behind_the_save);
    expect_failure(env,
                   to_the_save + saved + image + clear + "drv_env_get(name=\"sdv_test\", size=128) = 0 value=\"" +
                       value + "\"",
                   before_the_save + saved_ok + copies_pass + "clr env fail, get env is {" + value + "} \n");
}

// The first byte of either copy, and the last one, which are the only ones that are told here.
TEST(EnvSdvTest, CopiesThatDiffer) {
    const std::string differ = "main area data and backup area data, compare fail.\n";
    const std::string read = "drv_flash_read(section_id=8) = 0 buffer=\"";
    const std::string filler(0x7ffff, 'a');
    expect_success(env, to_the_save + saved + read + "x\"\n" + clear + gone,
                   before_the_save + saved_ok + differ + clear_pass);
    for (const std::string last : {"a", "b"}) {
        expect_success(env, to_the_save + saved + read + filler + "a" + filler + last + "\"\n" + clear + gone,
                       before_the_save + saved_ok + (last == "a" ? copies_pass : differ) + clear_pass);
    }
}

TEST(EnvSdvTest, ASaveThatTakesAWhile) {
    expect_run(env, to_the_save + saving(1) + saved + from_the_save,
               before_the_save + "wait save status.ok.\n" + behind_the_save + took(1), 0);
    expect_run(env, to_the_save + saving(19) + saved + from_the_save,
               before_the_save + "wait save status...................ok.\n" + behind_the_save + took(19), 0);
}

// Behind the twentieth wait it is not asked again, whether it would have been done by then or never is.
TEST(EnvSdvTest, ASaveThatTakesTooLong) {
    for (const std::string &polls : {saving(20), std::string("drv_env_save_ok() = 0 status=255\n")}) {
        expect_run(env, to_the_save + polls,
                   before_the_save + "wait save status....................fail.\n" + took(20) +
                       operate_fail("env_sdv_test") + operate_fail("env_test"),
                   255);
    }
}

TEST(EnvSdvTest, AnyOtherStatusIsTakenAsDone) {
    for (const std::string status : {"1", "254", "128"}) {
        expect_success(env, to_the_save + "drv_env_save_ok() = 0 status=" + status + "\n" + from_the_save,
                       before_the_save + saved_ok + behind_the_save);
    }
}

// A driver that answers without a status says done, until it said that it saves.
TEST(EnvSdvTest, AStatusThatIsNotWritten) {
    expect_success(env, to_the_save + "drv_env_save_ok() = 0\n" + from_the_save,
                   before_the_save + saved_ok + behind_the_save);
    expect_run(env, to_the_save + saving(1) + "drv_env_save_ok() = 0 x2\n" + saved + from_the_save,
               before_the_save + "wait save status...ok.\n" + behind_the_save + took(3), 0);
}

TEST(EnvSdvTest, WithoutMemoryForTheCopies) {
    expect_without_text_area(env, to_the_save + saved + from_the_save,
                             before_the_save + saved_ok + "malloc 1M buff fail\n" + timing_lines +
                                 operate_fail("env_sdv_test") + operate_fail("env_test"),
                             255);
}

// Whatever it does when Ctrl-C comes, the variables are cleared once, and then it ends by it.
TEST(EnvSdvTest, AnInterruptEndsItWhenTheVariablesAreGone) {
    if (lists_lines()) {
        return;
    }
    constexpr int first_clear = 8;
    for (int call = 1; call <= 11; ++call) {
        SCOPED_TRACE(call);
        const interrupted_run run = interrupted(env, to_the_save + saved + from_the_save, call);
        EXPECT_EQ(run.result.status, ended_by_interrupt);
        EXPECT_EQ(count_of(run.calls, traced_clear), 1U);
        EXPECT_EQ(ends_with(run.calls, traced_clear), call < first_clear) << run.calls;
        EXPECT_EQ(count_of(run.result.out, clear_pass), call < first_clear ? 0U : 1U);
        EXPECT_EQ(run.result.out.find("cmd_exec"), std::string::npos);
    }
}

// The store would go on saving for ever.
TEST(EnvSdvTest, AnInterruptEndsTheWaitForTheSave) {
    if (lists_lines()) {
        return;
    }
    const interrupted_run run = interrupted(env, to_the_save + "drv_env_save_ok() = 0 status=255\n" + clear, 8);
    EXPECT_EQ(run.result.status, ended_by_interrupt);
    EXPECT_EQ(run.result.out, before_the_save + "wait save status...fail.\n");
    EXPECT_EQ(count_of(run.calls, "drv_env_save_ok"), 3U);
    EXPECT_TRUE(ends_with(run.calls, traced_clear)) << run.calls;
}

// What is saved would be on the board again after its next start.
TEST(EnvSdvTest, AnInterruptBeforeTheSaveLeavesItOut) {
    if (lists_lines()) {
        return;
    }
    for (int call = 1; call <= 4; ++call) {
        SCOPED_TRACE(call);
        const interrupted_run run = interrupted(env, to_the_save + saved + from_the_save, call);
        EXPECT_EQ(run.result.status, ended_by_interrupt);
        EXPECT_EQ(run.result.out, before_the_save);
        EXPECT_EQ(count_of(run.calls, "drv_env_save"), 0U);
        EXPECT_TRUE(ends_with(run.calls, traced_clear)) << run.calls;
    }
}

// A wait that is not begun when it is known that the run is to end.
TEST(EnvSdvTest, AnInterruptDuringTheSaveLeavesOutTheWait) {
    if (lists_lines()) {
        return;
    }
    const interrupted_run run = interrupted(env, to_the_save + saved + from_the_save, 5);
    EXPECT_EQ(run.result.status, ended_by_interrupt);
    EXPECT_EQ(run.result.out, before_the_save + "wait save statusfail.\n");
    EXPECT_EQ(count_of(run.calls, "drv_env_save_ok"), 0U);
    EXPECT_TRUE(ends_with(run.calls, traced_clear)) << run.calls;
}

TEST(EnvSdvTest, AnInterruptOfATestThatFails) {
    if (lists_lines()) {
        return;
    }
    const interrupted_run run = interrupted(env, set + "drv_env_get = 0x81110103\n" + clear, 2);
    EXPECT_EQ(run.result.status, ended_by_interrupt);
    EXPECT_EQ(run.result.out, "drv env get fail, ret=0x81110103 \n");
    EXPECT_TRUE(ends_with(run.calls, traced_clear)) << run.calls;
}

// For a driver that hangs.
TEST(EnvSdvTest, TheSecondInterruptEndsItAtOnce) {
    if (lists_lines()) {
        return;
    }
    const interrupted_run run = interrupted(env, to_the_save + saved + from_the_save, 4, 2);
    EXPECT_EQ(run.result.status, ended_by_interrupt);
    EXPECT_EQ(run.result.out, text_pass);
    EXPECT_EQ(count_of(run.calls, "drv_env_clr"), 0U);
}

// A test that failed leaves its variables to be looked at.
TEST(EnvSdvTest, AFailedTestClearsNothing) {
    expect_failure(env, set + get + num_set + num_get + "drv_env_save() = 1",
                   before_the_save + "drv env save fail, ret=0x1 \n");
}
