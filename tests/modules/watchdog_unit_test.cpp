// watchdog_test on a device, a driver and a clock of the test's own: what is opened, asked and closed in which order,
// and signals at moments that no script can name.
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

#include "drv_basic/management/drv_watchdog.h"
#include "modules/modules.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

constexpr int device_number = 77; // stands for a descriptor; nothing is open there

struct watched {
    std::string calls;
    int open_error = 0;
    int request_error = 0;
    int request_result = 0;
    std::function<void()> in_sleep;
    std::function<void()> in_feed;
    std::function<void()> before_handler;
};

watched *observed = nullptr;

struct module_run {
    int status = 0;
    std::string out;
    std::string calls;
};

int run_words(std::vector<std::string> words) {
    std::vector<char *> pointers;
    for (std::string &word : words) {
        pointers.push_back(word.data());
    }
    return watchdog_test(static_cast<int>(pointers.size()), pointers.data());
}

// What is printed up to the lines about the time, which is not the test's own.
module_run run_module_with(watched &board, const std::vector<std::string> &words) {
    module_run run;
    observed = &board;
    run.out = printed_by([&] {
        setvbuf(stdout, nullptr, _IOLBF, 0);
        run.status = run_words(words);
    });
    observed = nullptr;
    run.out.erase(std::min(run.out.size(), run.out.find("cmd_exec")));
    run.calls = board.calls;
    return run;
}

void note(const std::string &call) {
    observed->calls += call + "; ";
}

// A loop that is over stays over for the process, so each is run in one of its own.
module_run feed_alone(const std::function<void(watched &)> &set_up) {
    const std::string out = scratch_file("out", "");
    const std::string calls = scratch_file("calls", "");
    const pid_t child = fork();
    if (child == 0) {
        const int file = open(out.c_str(), O_WRONLY | O_TRUNC);
        dup2(file, STDOUT_FILENO);
        setvbuf(stdout, nullptr, _IOLBF, 0);
        watched board;
        set_up(board);
        observed = &board;
        const int status = run_words({"auto_feed"});
        write_file(calls, board.calls);
        _exit(status == 0 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    module_run run{status, read_file(out), read_file(calls)};
    run.out.erase(std::min(run.out.size(), run.out.find("cmd_exec")));
    return run;
}

const std::string interrupted = "watchdog_signal_handler exit, sig_no=2\n";

} // namespace

// The linker hands the calls of this program to these; those about other files go on.
extern "C" {

int __real_open(const char *path, int flags, ...);
int __real_ioctl(int device, unsigned long request, ...);
int __real_close(int device);
unsigned __real_sleep(unsigned seconds);
void (*__real_signal(int number, void (*handler)(int)))(int);

int __wrap_open(const char *path, int flags, ...) {
    va_list values;
    va_start(values, flags);
    const int mode = va_arg(values, int);
    va_end(values);
    if (observed == nullptr || strcmp(path, "/dev/watchdog") != 0) {
        return __real_open(path, flags, mode);
    }
    note((flags & O_ACCMODE) == O_RDWR ? "open rw" : "open otherwise");
    errno = observed->open_error;
    return observed->open_error != 0 ? -1 : device_number;
}

int __wrap_ioctl(int device, unsigned long request, ...) {
    va_list values;
    va_start(values, request);
    auto *value = va_arg(values, uint32_t *);
    va_end(values);
    if (observed == nullptr || device != device_number) {
        return __real_ioctl(device, request, value);
    }
    char text[64];
    snprintf(text, sizeof(text), "0x%lx", request & 0xFFFFFFFF);
    note(std::string("ioctl ") + text + (value == nullptr ? " null" : " " + std::to_string(*value)));
    if (request == 0x80045707) {
        *value = 42;
    }
    errno = observed->request_error;
    return observed->request_error != 0 ? -1 : observed->request_result;
}

int __wrap_close(int device) {
    if (observed == nullptr || device != device_number) {
        return __real_close(device);
    }
    note("close");
    errno = EIO;
    return -1;
}

unsigned __wrap_sleep(unsigned seconds) {
    if (observed == nullptr) {
        return __real_sleep(seconds);
    }
    note("sleep " + std::to_string(seconds));
    if (observed->in_sleep) {
        observed->in_sleep();
    }
    return 0;
}

void (*__wrap_signal(int number, void (*handler)(int)))(int) {
    if (observed != nullptr && observed->before_handler) {
        observed->before_handler();
    }
    return __real_signal(number, handler);
}
}

uint32_t drv_watchdog_clr() {
    note("feed");
    if (observed->in_feed) {
        observed->in_feed();
    }
    return 0;
}

TEST(WatchdogDevice, EachRequestIsOneOpenOneRequestOneClose) {
    struct {
        std::vector<std::string> words;
        std::string calls;
        std::string out;
    } const requests[] = {
        {{"watchdog_ioctrl_keepalive"}, "open rw; ioctl 0x80045705 null; close; ", "success\n"},
        {{"watchdog_ioctrl_gettimeout"}, "open rw; ioctl 0x80045707 0; close; ", "timeout=42\nsuccess\n"},
        {{"watchdog_ioctrl_settimeout", "30"}, "open rw; ioctl 0xc0045706 30; close; ", "input timeout=30\nsuccess\n"},
        {{"watchdog_ioctrl_setoptions", "0xffffffff"},
         "open rw; ioctl 0x80045704 4294967295; close; ",
         "options=4294967295\nsuccess\n"},
    };
    for (const auto &request : requests) {
        watched board;
        const module_run run = run_module_with(board, request.words);
        EXPECT_EQ(run.calls, request.calls);
        EXPECT_EQ(run.out, request.out);
        EXPECT_EQ(run.status, 0);
    }
}

TEST(WatchdogDevice, ARequestThatFailsIsClosedAndToldWithItsOwnError) {
    watched board;
    board.request_error = ENOTTY;
    const module_run run = run_module_with(board, {"watchdog_ioctrl_gettimeout"});
    EXPECT_EQ(run.calls, "open rw; ioctl 0x80045707 0; close; ");
    EXPECT_EQ(run.out, "ioctrl fail, cmd=0x80045707, ret=-1, error Inappropriate ioctl for device.\n");
    EXPECT_EQ(run.status, -1);
}

TEST(WatchdogDevice, WithoutTheDeviceThereIsNothingToAskOrClose) {
    watched board;
    board.open_error = EBUSY;
    const module_run run = run_module_with(board, {"watchdog_ioctrl_keepalive"});
    EXPECT_EQ(run.calls, "open rw; ");
    EXPECT_EQ(run.out, "open /dev/watchdog fail, fd 0xffffffff, error Device or resource busy.\n");
    EXPECT_EQ(run.status, -1);
}

// Only a result below 0 is a failure.
TEST(WatchdogDevice, ARequestMayAnswerANumber) {
    watched board;
    board.request_result = 5;
    const module_run run = run_module_with(board, {"watchdog_ioctrl_settimeout", "0x10"});
    EXPECT_EQ(run.out, "input timeout=16\nsuccess\n");
    EXPECT_EQ(run.status, 0);
}

TEST(WatchdogFeeding, ASignalInTheMiddleOfTheSecondIsFollowedByOneMoreFeed) {
    const module_run run = feed_alone([](watched &board) {
        board.in_sleep = [seconds = 0]() mutable {
            if (++seconds == 2) {
                raise(SIGINT);
            }
        };
    });
    EXPECT_EQ(run.calls, "sleep 1; feed; sleep 1; feed; ");
    EXPECT_EQ(run.out, "enter\nwait for ctrl+c\n" + interrupted + "exit\n");
    EXPECT_EQ(run.status, 0);
}

TEST(WatchdogFeeding, ASignalDuringAFeedEndsTheLoopBehindIt) {
    const module_run run = feed_alone([](watched &board) { board.in_feed = [] { raise(SIGINT); }; });
    EXPECT_EQ(run.calls, "sleep 1; feed; ");
    EXPECT_EQ(run.out, "enter\nwait for ctrl+c\n" + interrupted + "exit\n");
    EXPECT_EQ(run.status, 0);
}

TEST(WatchdogFeeding, SignalsThatComeTwice) {
    const module_run run = feed_alone([](watched &board) {
        board.in_sleep = [] {
            raise(SIGINT);
            raise(SIGINT);
        };
        board.in_feed = [] { raise(SIGINT); };
    });
    EXPECT_EQ(run.calls, "sleep 1; feed; ");
    EXPECT_EQ(run.out, "enter\nwait for ctrl+c\n" + interrupted + interrupted + interrupted + "exit\n");
    EXPECT_EQ(run.status, 0);
}

// "enter" is out by then, and the program has no handler yet.
TEST(WatchdogFeeding, ASignalBeforeTheHandlerEndsTheProgram) {
    const module_run run = feed_alone([](watched &board) { board.before_handler = [] { raise(SIGINT); }; });
    EXPECT_TRUE(WIFSIGNALED(run.status));
    EXPECT_EQ(WTERMSIG(run.status), SIGINT);
    EXPECT_EQ(run.out, "enter\n");
    EXPECT_EQ(run.calls, "");
}

TEST(WatchdogFeeding, OverOnceIsOverForTheProcess) {
    const module_run run = feed_alone([](watched &board) {
        board.in_sleep = [] { raise(SIGINT); };
        observed = &board;
        run_words({"auto_feed"});
    });
    EXPECT_EQ(run.calls, "sleep 1; feed; ");
    EXPECT_EQ(run.out, "enter\nwait for ctrl+c\n" + interrupted + "exit\n");
    EXPECT_EQ(run.status, 0);
}
