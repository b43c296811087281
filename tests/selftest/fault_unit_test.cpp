// The self-test's functions when the system refuses what they ask for, or gives descriptor 0.
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "selftest/board_selftest.h"
#include "selftest/files.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/processes.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/selftest/faults.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

constexpr const char *label_path = "/opt/hostx/home/elabel.txt";

class FaultTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
    }
    void TearDown() override {
        drivers() = {};
    }
};

std::string run_true(const char *path = "/bin/true") {
    char name[] = "program";
    char *const argv[] = {name, nullptr};
    char *const environment[] = {nullptr};
    return printed_by([&] { EXPECT_EQ(run_program(path, argv, environment), 0); });
}

bool has_children() {
    return waitpid(-1, nullptr, WNOHANG) >= 0 || errno != ECHILD;
}

// Descriptor 0 is free while the function runs.
template <typename function> void with_closed_input(function run) {
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    run();
    if (input >= 0) {
        dup2(input, STDIN_FILENO);
        close(input);
    }
}

int fill_report(uint32_t, char *buffer, uint32_t, uint32_t *fill) {
    strcpy(buffer + *fill, "filled");
    *fill += 6;
    return 0;
}

} // namespace

TEST_F(FaultTest, WithoutATimerThereIsNone) {
    faults().no_timer = true;
    EXPECT_EQ(timer_fd_create(1, 0), -1);
}

TEST_F(FaultTest, ATimerMayHaveDescriptorZero) {
    with_closed_input([] {
        EXPECT_EQ(timer_fd_create(1, 0), 0);
        close(0);
        EXPECT_EQ(timer_fd_create(-1, 0), -2);
        EXPECT_EQ(fcntl(0, F_GETFD), -1);
    });
}

TEST_F(FaultTest, AChildThatCannotBeMadeIsLogged) {
    faults().no_child = true;
    EXPECT_EQ(run_true("/sbin/check"),
              "\r\n[base][error]:Failed to run cmd /sbin/check(errno=" + std::to_string(EAGAIN) + ").");
    EXPECT_EQ(drivers().log_lines, (std::vector<std::string>{"0/1/0: [base]:Failed to run cmd /sbin/check(errno=" +
                                                             std::to_string(EAGAIN) + ")."}));
}

TEST_F(FaultTest, ASignalDoesNotEndTheWaitForAChild) {
    faults().interrupted_waits = 2;
    EXPECT_EQ(run_true(), "");
    EXPECT_EQ(faults().interrupted_waits, 0);
    EXPECT_FALSE(has_children());
}

TEST_F(FaultTest, AChildThatNobodyKeepsIsNotWaitedForTwice) {
    // The system drops children by itself then, and the wait fails for another reason than a signal.
    const auto before = signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(run_true(), "");
    signal(SIGCHLD, before);
    EXPECT_FALSE(has_children());
}

TEST_F(FaultTest, WithoutMemoryNoFileIsSearched) {
    const std::string path = scratch_file("text", "needle\n");
    uint32_t found = 9;
    faults().no_memory = true;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(grep_file(path.c_str(), "needle", &found, console_sink), -1); }), "");
    EXPECT_EQ(found, 0U);
}

TEST_F(FaultTest, WithoutMemoryTheBuiltInLabelServes) {
    drivers().files[label_path] = scratch_file("label", "LABEL-1");
    elabel_area area = {};
    uint32_t length = 0;
    faults().no_memory = true;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(get_test_label(area, &length, console_sink), 0); }),
              "set pic elabel malloc image buffer failed\r\n"
              "there is no such file: /opt/hostx/home/elabel.txt. so load test info :elable test test test test "
              "...\r\n");
    EXPECT_STREQ(area, "elable test test test test ...");
    EXPECT_EQ(length, 30U);
}

TEST_F(FaultTest, WithoutMemoryABufferedSectionFailsAndTheOthersRun) {
    constexpr std::array sections = {selftest_section{"one", nullptr, fill_report},
                                     selftest_section{"two", nullptr, fill_report}};
    faults().no_memory = true;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(run_sections(sections, 5, console_sink), -1); }),
              "\r\n##### one test begin \r\n\r\n##### two test begin \r\nfilled");
}

TEST_F(FaultTest, ALabelFileMayHaveDescriptorZero) {
    drivers().files[label_path] = scratch_file("label", "LABEL-1");
    with_closed_input([] {
        elabel_area area = {};
        uint32_t length = 0;
        printed_by([&] { EXPECT_EQ(get_test_label(area, &length, console_sink), 0); });
        EXPECT_STREQ(area, "LABEL-1");
        EXPECT_EQ(length, 7U);
    });
}

TEST_F(FaultTest, ALabelFileIsClosedHoweverItEnds) {
    elabel_area area = {};
    uint32_t length = 0;
    drivers().files[label_path] = scratch_file("label", std::string(1201, 'x'));
    printed_by([&] { EXPECT_EQ(get_test_label(area, &length, console_sink), 0); });
    drivers().files[label_path] = scratch_file("label", "LABEL-1");
    drivers().short_reads = true;
    printed_by([&] { EXPECT_EQ(get_test_label(area, &length, console_sink), 0); });
    // The listener counts the descriptors.
    EXPECT_STREQ(area, "elable test test test test ...");
}
