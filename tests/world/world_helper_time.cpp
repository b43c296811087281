// The helper program's calls on clocks, sleeps, timers and waits.
#include "tests/world/world_helper.h"

#include <cerrno>
#include <chrono>
#include <cinttypes>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/select.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace {

void show_clock(const char *name, clockid_t clock) {
    timespec now{};
    const int result = clock_gettime(clock, &now);
    printf("%s: %d %lld.%09ld\n", name, result, static_cast<long long>(now.tv_sec), now.tv_nsec);
}

void show_now(const char *name, long long result) {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    printf("%s: %lld at %lld.%09ld\n", name, result, static_cast<long long>(now.tv_sec), now.tv_nsec);
}

void show_read(const char *name, int timer) {
    uint64_t expirations = 0;
    const ssize_t length = read(timer, &expirations, sizeof(expirations));
    if (length < 0) {
        printf("%s: %s\n", name, strerror(errno));
    } else {
        show_now(name, static_cast<long long>(expirations));
    }
}

itimerspec timer_of(time_t first, time_t period) {
    itimerspec value{};
    value.it_value.tv_sec = first;
    value.it_interval.tv_sec = period;
    return value;
}

volatile sig_atomic_t signalled = 0;

void note_signal(int) {
    signalled = 1;
}

void *sleep_often(void *) {
    for (int i = 0; i < 1000; ++i) {
        usleep(1000);
    }
    return nullptr;
}

} // namespace

int show_clocks(int, char **) {
    show_clock("realtime", CLOCK_REALTIME);
    show_clock("realtime coarse", CLOCK_REALTIME_COARSE);
    show_clock("monotonic", CLOCK_MONOTONIC);
    show_clock("monotonic raw", CLOCK_MONOTONIC_RAW);
    show_clock("monotonic coarse", CLOCK_MONOTONIC_COARSE);
    show_clock("boot", CLOCK_BOOTTIME);
    show_clock("process", CLOCK_PROCESS_CPUTIME_ID);
    show_clock("thread", CLOCK_THREAD_CPUTIME_ID);
    timespec ignored{};
    printf("unknown: %d\n", clock_gettime(77, &ignored));
    time_t stored = 0;
    printf("time: %lld", static_cast<long long>(time(&stored)));
    printf(" %lld\n", static_cast<long long>(stored));
    timeval day{};
    const int result = gettimeofday(&day, nullptr);
    printf("gettimeofday: %d %lld.%06ld\n", result, static_cast<long long>(day.tv_sec), static_cast<long>(day.tv_usec));
    const timespec zero{};
    timespec utc = zero;
    printf("timespec_get: %d", timespec_get(&utc, TIME_UTC));
    printf(" %lld\n", static_cast<long long>(utc.tv_sec));
    printf("clock: %ld\n", static_cast<long>(clock()));
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    printf("chrono: %lld\n", static_cast<long long>(std::chrono::duration_cast<std::chrono::seconds>(since).count()));
    return 0;
}

int show_sleeps(int, char **) {
    show_now("start", 0);
    show_now("sleep", sleep(30));
    show_now("usleep", usleep(500000));
    const timespec asked{2, 250000000};
    show_now("nanosleep", nanosleep(&asked, nullptr));
    show_now("clock_nanosleep", clock_nanosleep(CLOCK_REALTIME, 0, &asked, nullptr));
    const timespec moment{1000, 5};
    show_now("until monotonic", clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr));
    const timespec day{1768464000 + 200, 0};
    show_now("until realtime", clock_nanosleep(CLOCK_REALTIME, TIMER_ABSTIME, &day, nullptr));
    show_now("until the past", clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &moment, nullptr));
    const timespec wrong{0, 1000000000};
    show_now("nanosleep wrong", nanosleep(&wrong, nullptr));
    show_now("clock_nanosleep wrong", clock_nanosleep(CLOCK_MONOTONIC, 0, &wrong, nullptr) == EINVAL);
    show_now("year", sleep(31536000));
    printf("time: %lld\n", static_cast<long long>(time(nullptr)));
    return 0;
}

// Ends only when the signal that comes from outside, or from the alarm clock, is delivered between two sleeps.
int wait_for_signal(int, char **) {
    signal(SIGALRM, note_signal);
    itimerval soon{};
    soon.it_value.tv_usec = 20000;
    setitimer(ITIMER_REAL, &soon, nullptr);
    while (signalled == 0) {
        sleep(1);
    }
    puts("signal");
    return 0;
}

int show_timers(int, char **) {
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    const itimerspec every_two = timer_of(5, 2);
    itimerspec left{};
    printf("settime: %d\n", timerfd_settime(timer, 0, &every_two, nullptr));
    show_read("early", timer);
    sleep(4);
    printf("gettime: %d", timerfd_gettime(timer, &left));
    printf(" %lld %lld\n", static_cast<long long>(left.it_value.tv_sec),
           static_cast<long long>(left.it_interval.tv_sec));
    sleep(6);
    // At 10 seconds: it went off at 5, 7 and 9.
    show_read("three", timer);
    show_read("none", timer);
    const itimerspec moment = timer_of(900 + 30, 0);
    printf("settime: %d", timerfd_settime(timer, TFD_TIMER_ABSTIME, &moment, &left));
    printf(" %lld %lld\n", static_cast<long long>(left.it_value.tv_sec),
           static_cast<long long>(left.it_interval.tv_sec));
    sleep(20);
    show_read("moment", timer);
    sleep(100);
    show_read("once", timer);
    const itimerspec wrong{{0, 0}, {0, -1}};
    printf("wrong: %d\n", timerfd_settime(timer, 0, &wrong, nullptr));
    close(timer);
    // The number now belongs to another file.
    const int other = open("/dev/zero", O_RDONLY);
    uint64_t zero = 1;
    const ssize_t length = read(other, &zero, sizeof(zero));
    printf("reused: %d %zd %" PRIu64 "\n", other == timer, length, zero);
    const int blocking = timerfd_create(CLOCK_REALTIME, 0);
    const itimerspec hour = timer_of(3600, 60);
    timerfd_settime(blocking, 0, &hour, nullptr);
    show_read("blocking", blocking);
    show_read("blocking again", blocking);
    return 0;
}

int show_waits(int, char **) {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        return 1;
    }
    pollfd ready{ends[0], POLLIN, 0};
    fd_set reads;
    FD_ZERO(&reads);
    FD_SET(ends[0], &reads);
    timeval time{3, 500000};
    const timespec precise{1, 1};
    show_now("poll", poll(&ready, 1, 1500));
    show_now("poll at once", poll(&ready, 1, 0));
    show_now("poll nothing", poll(nullptr, 0, 10));
    show_now("ppoll", ppoll(&ready, 1, &precise, nullptr));
    show_now("select", select(ends[0] + 1, &reads, nullptr, nullptr, &time));
    printf("left %d %lld.%06ld\n", FD_ISSET(ends[0], &reads), static_cast<long long>(time.tv_sec),
           static_cast<long>(time.tv_usec));
    FD_SET(ends[0], &reads);
    show_now("pselect", pselect(ends[0] + 1, &reads, nullptr, nullptr, &precise, nullptr));
    if (write(ends[1], "x", 1) != 1) {
        return 1;
    }
    show_now("poll with data", poll(&ready, 1, 1500));
    FD_SET(ends[0], &reads);
    time = {9, 0};
    show_now("select with data", select(ends[0] + 1, &reads, nullptr, nullptr, &time));
    printf("left %d %lld.%06ld\n", FD_ISSET(ends[0], &reads), static_cast<long long>(time.tv_sec),
           static_cast<long>(time.tv_usec));
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK);
    const itimerspec ten = timer_of(10, 0);
    timerfd_settime(timer, 0, &ten, nullptr);
    pollfd alarm{timer, POLLIN, 0};
    show_now("poll before the timer", poll(&alarm, 1, 4000));
    show_now("poll without an end", poll(&alarm, 1, -1));
    printf("events %d\n", alarm.revents);
    show_read("timer", timer);
    time = {-1, 0};
    show_now("select wrong", select(0, nullptr, nullptr, nullptr, &time));
    FD_ZERO(&reads);
    FD_SET(77, &reads);
    time = {1, 0};
    show_now("select closed", select(78, &reads, nullptr, nullptr, &time));
    printf("errno %d\n", errno == EBADF);
    return 0;
}

int sleep_in_threads(int, char **) {
    pthread_t threads[4];
    for (pthread_t &thread : threads) {
        pthread_create(&thread, nullptr, sleep_often, nullptr);
    }
    for (const pthread_t thread : threads) {
        pthread_join(thread, nullptr);
    }
    show_now("all", 0);
    return 0;
}
