// Child programs, shared objects and timers of the self-test.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include "selftest/processes.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

std::string run(const std::string &path) {
    char name[] = "program";
    char *const argv[] = {name, nullptr};
    char *const environment[] = {nullptr};
    return printed_by([&] {
        fputs("before ", stdout);
        EXPECT_EQ(run_program(path.c_str(), argv, environment), 0);
    });
}

std::string script(const std::string &text) {
    const std::string path = scratch_file("script", "#!/bin/sh\n" + text);
    chmod(path.c_str(), 0755);
    return path;
}

std::string plain_object() {
    return build_dir() + "/tests/libplain_object.so";
}

bool is_loaded(const std::string &object) {
    void *handle = dlopen(object.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

} // namespace

TEST(RunProgramTest, WaitsAndIgnoresTheExitStatus) {
    EXPECT_EQ(run(script("echo ran; exit 3\n")), "before ran\n");
}

TEST(RunProgramTest, AProgramThatCannotRunIsLoggedOnce) {
    drivers() = {};
    EXPECT_EQ(run("/nonexistent/program"),
              "before \r\n[base][error]:Failed to run cmd /nonexistent/program(errno=" + std::to_string(ENOENT) + ").");
    EXPECT_TRUE(drivers().log_lines.empty()) << "the child logs, not the parent";
}

// Whatever this machine has at the two places, the board of the test has these.
class InstallScriptTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
        drivers().files = {{first, "/nonexistent/first"}, {second, "/nonexistent/second"}};
    }
    static constexpr const char *first = "/etc/install_itp.sh";
    static constexpr const char *second = "/etc/init.d/install_itp.sh";
};

TEST_F(InstallScriptTest, AMissingScriptIsLogged) {
    EXPECT_EQ(find_install_script(), nullptr);
    EXPECT_EQ(install_script_present(), 0);
    EXPECT_EQ(printed_by([] { run_install_script(7); }), "\r\n[base][error]:Failed to run test script:file not found.");
    EXPECT_EQ(drivers().log_lines,
              (std::vector<std::string>{"0/1/0: [base]:Failed to run test script:file not found."}));
}

TEST_F(InstallScriptTest, TheFirstOfTwoPlacesServes) {
    drivers().files[second] = script("echo second\n");
    EXPECT_STREQ(find_install_script(), second);
    drivers().files[first] = script("echo first\n");
    EXPECT_STREQ(find_install_script(), first);
    EXPECT_EQ(install_script_present(), 1);
}

TEST_F(InstallScriptTest, RunsWithTheTestNumberAndAnEmptyEnvironment) {
    setenv("KESTRO_MARK", "set", 1);
    drivers().files[second] = script("echo \"$# $1 [$KESTRO_MARK]\"\n");
    EXPECT_EQ(printed_by([] { run_install_script(4294967295U); }), "1 4294967295 []\n");
    unsetenv("KESTRO_MARK");
    EXPECT_TRUE(drivers().log_lines.empty());
}

TEST(LoadSymbolTest, GivesTheSymbolAndLeavesTheHandleToTheCaller) {
    void *handle = nullptr;
    void *symbol = load_symbol("plain_symbol", plain_object().c_str(), &handle);
    EXPECT_NE(symbol, nullptr);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(dlsym(handle, "plain_symbol"), symbol);
    EXPECT_TRUE(is_loaded(plain_object()));
    dlclose(handle);
}

TEST(LoadSymbolTest, LogsAnObjectThatCannotBeOpened) {
    void *handle = nullptr;
    const std::string printed =
        printed_by([&] { EXPECT_EQ(load_symbol("x", "libkestro_absent.so", &handle), nullptr); });
    EXPECT_EQ(printed.find("\r\n[base][error]:open so libkestro_absent.so fail,error:"), 0U);
    EXPECT_NE(printed.find(" libkestro_absent.so: cannot open shared object file"), std::string::npos);
    EXPECT_EQ(handle, nullptr);
}

TEST(LoadSymbolTest, LogsASymbolThatIsMissing) {
    void *handle = nullptr;
    const std::string printed =
        printed_by([&] { EXPECT_EQ(load_symbol("kestro_absent", plain_object().c_str(), &handle), nullptr); });
    EXPECT_EQ(printed.find("\r\n[base][error]:api kestro_absent not found in so " + plain_object() + ", error:"), 0U);
    EXPECT_NE(printed.find("undefined symbol: kestro_absent"), std::string::npos);
    EXPECT_EQ(handle, nullptr);
    EXPECT_FALSE(is_loaded(plain_object())) << "an object without the symbol is of no use";
}

TEST(TimerTest, IsPeriodicWithItsFirstExpiryOnePeriodAway) {
    const int timer = timer_fd_create(30, 500);
    ASSERT_GE(timer, 0);
    itimerspec schedule{};
    ASSERT_EQ(timerfd_gettime(timer, &schedule), 0);
    EXPECT_EQ(schedule.it_interval.tv_sec, 30);
    EXPECT_EQ(schedule.it_interval.tv_nsec, 500);
    EXPECT_GT(schedule.it_value.tv_sec, 0);
    EXPECT_LE(schedule.it_value.tv_sec, 30);
    EXPECT_NE(fcntl(timer, F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_NE(fcntl(timer, F_GETFL) & O_NONBLOCK, 0);
    close(timer);
}

TEST(TimerTest, RefusesAPeriodThatIsNoTime) {
    EXPECT_EQ(timer_fd_create(0, 2000000000), -2);
    EXPECT_EQ(timer_fd_create(-1, 0), -2);
}
