// A Ctrl-C while the clock or a relay holds a value of the test waits until the board has its own again. Each driver
// call around the test value is let hang in turn: what the first Ctrl-C does then tells whether it waits.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr int limit_ms = 30000;
constexpr int step_ms = 20;

bool within(int milliseconds, const std::function<bool()> &happens) {
    for (int waited = 0; waited < milliseconds; waited += step_ms) {
        if (happens()) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(step_ms));
    }
    return false;
}

int count_of(const std::string &text, const std::string &part) {
    int found = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++found;
    }
    return found;
}

// How many Ctrl-C it takes to end the part while it hangs in a call for the time given; 0 when it does not come there.
int interrupts_to_end(const std::string &part, const std::string &call, int time) {
    const std::string trace = new_scratch_dir() + "/trace";
    const std::string before = time > 1 ? call + " = pass x" + std::to_string(time - 1) + "\n" : "";
    const std::string script = scratch_file("script", before + call + " = hang\n");
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const pid_t pid = spawn({launcher(), "--state", new_scratch_dir(), "--clock", "virtual", "--script", script,
                             "--trace", trace, "--run", build_dir() + "/tests/selftest_part", "--", part},
                            merged_environment({}), "", {nowhere, nowhere});
    close(nowhere);
    const std::string name = call.back() == ')' ? call.substr(0, call.size() - 1) : call;
    int sent = 0;
    int status = 0;
    const auto has_ended = [&] { return waitpid(pid, &status, WNOHANG) == pid; };
    if (within(limit_ms, [&] { return count_of(read_file(trace), name) == time; })) {
        do {
            kill(pid, SIGINT);
            ++sent;
        } while (!within(sent == 1 ? 300 : limit_ms, has_ended) && sent < 2);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    } else {
        kill(pid, SIGKILL);
        waitpid(pid, &status, 0);
    }
    return sent;
}

} // namespace

TEST(HeldSignalTest, WhileTheClockHoldsTheTestTime) {
    EXPECT_EQ(interrupts_to_end("rtc", "drv_rtc_read_time", 1), 1);
    EXPECT_EQ(interrupts_to_end("rtc", "drv_rtc_write_time", 1), 2);
    EXPECT_EQ(interrupts_to_end("rtc", "drv_rtc_read_time", 2), 2);
    EXPECT_EQ(interrupts_to_end("rtc", "drv_rtc_write_time", 2), 2);
    EXPECT_EQ(interrupts_to_end("rtc", "drv_rtc_dump_info", 1), 1);
}

TEST(HeldSignalTest, WhileARelayIsSwitchedOver) {
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_get_status(inst_id=0xffffffff, chip_id=100)", 1), 1);
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_set_status(inst_id=0xffffffff, chip_id=100, status=1)", 1), 2);
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_get_status(inst_id=0xffffffff, chip_id=100)", 2), 2);
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_set_status(inst_id=0xffffffff, chip_id=100, status=0)", 1), 2);
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_get_status(inst_id=0xffffffff, chip_id=101)", 1), 1);
    EXPECT_EQ(interrupts_to_end("digital", "drv_digital_set_mode(inst_id=0xffffffff, chip_id=1, mode=1)", 1), 1);
}
