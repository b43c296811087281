// Child programs, shared objects and timers of the self-test.
#include "selftest/processes.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <initializer_list>
#include <sys/stat.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include "bounds/bounds.h"
#include "selftest/selftest_log.h"

namespace {

constexpr const char *log_tag = "base";

[[noreturn]] void become_program(const char *path, char *const argv[], char *const environment[]) {
    execve(path, argv, environment);
    selftest_log(log_tag, 0, log_error, "Failed to run cmd %s(errno=%d).", path, errno);
    fflush(stdout);
    // No exit handlers: what the parent has buffered and registered is the parent's.
    _exit(1);
}

} // namespace

int run_program(const char *path, char *const argv[], char *const environment[]) {
    fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        become_program(path, argv, environment);
    }
    if (child < 0) {
        selftest_log(log_tag, 0, log_error, "Failed to run cmd %s(errno=%d).", path, errno);
        return 0;
    }
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return 0;
}

const char *find_install_script() {
    for (const char *path : {"/etc/install_itp.sh", "/etc/init.d/install_itp.sh"}) {
        struct stat status {};
        if (stat(path, &status) == 0) {
            return path;
        }
    }
    return nullptr;
}

int install_script_present() {
    return find_install_script() != nullptr ? 1 : 0;
}

void run_install_script(uint32_t test_number) {
    char number[64] = {};
    sprintf_s(number, sizeof(number), "%u", test_number);
    const char *path = find_install_script();
    if (path == nullptr) {
        selftest_log(log_tag, 0, log_error, "Failed to run test script:file not found.");
        return;
    }
    char name[] = "install_itp.sh";
    char *const argv[] = {name, number, nullptr};
    char *const environment[] = {nullptr};
    run_program(path, argv, environment);
}

void *load_symbol(const char *symbol, const char *file, void **handle) {
    void *object = dlopen(file, RTLD_LAZY | RTLD_GLOBAL);
    if (object == nullptr) {
        const char *system_text = strerror(errno);
        selftest_log(log_tag, 0, log_error, "open so %s fail,error:%s %s", file, system_text, dlerror());
        return nullptr;
    }
    void *address = dlsym(object, symbol);
    if (address == nullptr) {
        selftest_log(log_tag, 0, log_error, "api %s not found in so %s, error:%s", symbol, file, dlerror());
        dlclose(object);
        return nullptr;
    }
    *handle = object;
    return address;
}

int timer_fd_create(long seconds, long nanoseconds) {
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    if (timer < 0) {
        return -1;
    }
    const timespec period = {seconds, nanoseconds};
    const itimerspec schedule = {period, period};
    if (timerfd_settime(timer, 0, &schedule, nullptr) != 0) {
        close(timer);
        return -2;
    }
    return timer;
}
