// Whether a part that stands in a driver call lets an operator's signal end it.
#pragma once

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/selftest/part.h"

namespace kestro_tests {

// A part under a script whose last call hangs.
class hanging_part {
  public:
    hanging_part(const std::string &name, const std::string &script) {
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        run_ = spawn({launcher(), "--state", new_scratch_dir(), "--root", new_scratch_dir(), "--script",
                      scratch_file("script", script), "--trace", trace_, "--run", build_dir() + "/tests/selftest_part",
                      "--", name},
                     merged_environment({}), "", {nowhere, nowhere});
        close(nowhere);
    }
    hanging_part(const hanging_part &) = delete;
    hanging_part &operator=(const hanging_part &) = delete;
    ~hanging_part() {
        if (!has_ended_) {
            kill(run_, SIGKILL);
            waitpid(run_, nullptr, 0);
        }
    }

    // It is in that call: the trace shows a call before the driver is entered.
    bool is_in_call(const std::string &call, size_t number) {
        for (int tries = 0; tries < 6000; ++tries) {
            if (begun_calls() == number && last_line_.starts_with(call)) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return false;
    }

    // How many interrupts it takes to end it; 0 when it goes on all the same.
    int interrupts_to_end() {
        for (int sent = 1; sent <= 2; ++sent) {
            kill(run_, SIGINT);
            for (int tries = 0; tries < 30; ++tries) {
                int status = 0;
                if (waitpid(run_, &status, WNOHANG) == run_) {
                    has_ended_ = true;
                    return WIFSIGNALED(status) && WTERMSIG(status) == SIGINT ? sent : 0;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
        }
        return 0;
    }

  private:
    // Of the drivers, the description left out.
    size_t begun_calls() {
        const std::string text = read_file(trace_);
        size_t count = 0;
        for (size_t at = 0; at < text.size();) {
            const size_t end = std::min(text.find('\n', at), text.size());
            last_line_ = text.substr(at, end - at);
            count += last_line_.starts_with("drv_") ? 1 : 0;
            at = end + 1;
        }
        return count;
    }

    std::string trace_ = scratch_file("trace", "");
    std::string last_line_;
    pid_t run_ = -1;
    bool has_ended_ = false;
};

inline void expect_interrupts(const std::string &name, const std::string &script, const std::string &call,
                              size_t number, int interrupts) {
    hanging_part part(name, script);
    ASSERT_TRUE(part.is_in_call(call, number)) << number << ": " << call;
    EXPECT_EQ(part.interrupts_to_end(), interrupts) << number << ": " << call;
}

} // namespace kestro_tests
