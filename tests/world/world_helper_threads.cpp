// The helper program's threads: each scene prints where the clock stands when things happened.
#include "tests/world/world_helper.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <mutex>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <shared_mutex>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

long long milliseconds_since_boot() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

void show_at(const char *what, long long result = 0) {
    printf("%s: %lld at %lld ms\n", what, result, milliseconds_since_boot());
}

// A monitor looks twice a second for half a minute while the main thread works in steps of half a second; a second one
// does so with another period. What they counted does not depend on which of them is quicker.
void monitor_beside_main() {
    std::atomic<int> seen = 0;
    std::thread monitor([&] {
        for (int i = 0; i < 30; ++i) {
            sleep(1);
            ++seen;
        }
        show_at("monitor ends", seen);
    });
    std::thread other([] {
        for (int i = 0; i < 1000; ++i) {
            std::this_thread::sleep_for(7ms);
        }
        show_at("other ends");
    });
    for (int i = 0; i < 20; ++i) {
        usleep(500000);
    }
    show_at("main ends");
    other.join();
    monitor.join();
    show_at("all end", seen);
}

void condition_with_time_out() {
    std::mutex mutex;
    std::condition_variable changed;
    bool ready = false;
    std::thread late([&] {
        std::this_thread::sleep_for(2s);
        const std::lock_guard lock(mutex);
        ready = true;
        changed.notify_one();
    });
    std::unique_lock lock(mutex);
    show_at("too early", changed.wait_for(lock, 1500ms, [&] { return ready; }));
    show_at("in time", changed.wait_for(lock, 1500ms, [&] { return ready; }));
    show_at("until", changed.wait_until(lock, std::chrono::system_clock::now() + 3s) == std::cv_status::timeout);
    lock.unlock();
    late.join();
}

void condition_clocks() {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t of_day = PTHREAD_COND_INITIALIZER;
    pthread_condattr_t attributes;
    pthread_condattr_init(&attributes);
    pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
    pthread_cond_t since_boot;
    pthread_cond_init(&since_boot, &attributes);
    pthread_mutex_lock(&mutex);
    const timespec day{1768464000 + 5, 0};
    show_at("time of day", pthread_cond_timedwait(&of_day, &mutex, &day) == ETIMEDOUT);
    const timespec boot{900 + 8, 0};
    show_at("since boot", pthread_cond_timedwait(&since_boot, &mutex, &boot) == ETIMEDOUT);
    show_at("past", pthread_cond_timedwait(&since_boot, &mutex, &boot) == ETIMEDOUT);
    const timespec wrong{0, -1};
    show_at("wrong", pthread_cond_timedwait(&since_boot, &mutex, &wrong) == EINVAL);
    pthread_mutex_unlock(&mutex);
    show_at("mutex is free", pthread_mutex_trylock(&mutex));
}

// One makes a piece each 100 ms, two take 250 ms for one: the queue grows, and the clock does not run ahead of it.
void producer_and_consumers() {
    std::mutex mutex;
    std::condition_variable changed;
    int waiting = 0;
    int taken = 0;
    bool ended = false;
    const auto consume = [&] {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [&] { return waiting != 0 || ended; });
            if (waiting == 0) {
                return;
            }
            --waiting;
            ++taken;
            lock.unlock();
            std::this_thread::sleep_for(250ms);
            lock.lock();
        }
    };
    std::thread one(consume);
    std::thread two(consume);
    for (int i = 0; i < 20; ++i) {
        std::this_thread::sleep_for(100ms);
        const std::lock_guard lock(mutex);
        ++waiting;
        changed.notify_one();
    }
    {
        const std::lock_guard lock(mutex);
        ended = true;
    }
    changed.notify_all();
    one.join();
    two.join();
    show_at("taken", taken);
}

void mutex_across_a_sleep() {
    std::mutex mutex;
    std::thread owner([&] {
        const std::lock_guard lock(mutex);
        sleep(5);
    });
    sleep(1);
    mutex.lock();
    show_at("mutex");
    mutex.unlock();
    owner.join();
    std::timed_mutex timed;
    std::thread holder([&] {
        const std::lock_guard lock(timed);
        sleep(5);
    });
    sleep(1);
    show_at("not in time", timed.try_lock_for(1s));
    show_at("in time", timed.try_lock_for(10s));
    timed.unlock();
    holder.join();
}

void readers_and_a_writer() {
    std::shared_mutex mutex;
    std::thread writer([&] {
        const std::lock_guard lock(mutex);
        sleep(4);
    });
    sleep(1);
    const auto read = [&] {
        const std::shared_lock lock(mutex);
        sleep(2);
    };
    std::thread one(read);
    std::thread two(read);
    one.join();
    two.join();
    writer.join();
    show_at("readers together");
}

void checked_mutex() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_ERRORCHECK);
    pthread_mutex_t mutex;
    pthread_mutex_init(&mutex, &attributes);
    std::thread sleeper([] { sleep(1); });
    pthread_mutex_lock(&mutex);
    show_at("twice", pthread_mutex_lock(&mutex) == EDEADLK);
    pthread_mutex_unlock(&mutex);
    sleeper.join();
}

// Many threads and one mutex: every release reaches one who waits.
void contended_mutex() {
    std::mutex mutex;
    int sum = 0;
    std::thread threads[8];
    for (std::thread &thread : threads) {
        thread = std::thread([&] {
            for (int i = 0; i < 2000; ++i) {
                const std::lock_guard lock(mutex);
                ++sum;
                if (i % 500 == 0) {
                    std::this_thread::sleep_for(1ms);
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    show_at("sum", sum);
}

void semaphores() {
    sem_t semaphore;
    sem_init(&semaphore, 0, 0);
    timespec soon{};
    clock_gettime(CLOCK_REALTIME, &soon);
    soon.tv_sec += 2;
    show_at("alone", sem_timedwait(&semaphore, &soon) == -1 && errno == ETIMEDOUT);
    std::thread poster([&] {
        sleep(3);
        sem_post(&semaphore);
        sleep(10);
        sem_post(&semaphore);
    });
    show_at("first", sem_wait(&semaphore));
    clock_gettime(CLOCK_REALTIME, &soon);
    soon.tv_sec += 4;
    show_at("not yet", sem_timedwait(&semaphore, &soon) == -1 && errno == ETIMEDOUT);
    show_at("second", sem_wait(&semaphore));
    poster.join();
}

void *end_early(void *) {
    sleep(2);
    pthread_exit(nullptr);
}

void ends_of_threads() {
    pthread_t thread{};
    pthread_create(&thread, nullptr, end_early, nullptr);
    show_at("joined", pthread_join(thread, nullptr));
    std::thread([] { sleep(3); }).detach();
    sleep(1);
    show_at("detached sleeps on");
    sleep(4);
    show_at("detached is gone");
    pthread_create(&thread, nullptr, end_early, nullptr);
    sleep(10);
    show_at("joined late", pthread_join(thread, nullptr));
}

void descriptors_between_threads() {
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0) {
        return;
    }
    std::thread writer([&] {
        sleep(2);
        if (write(ends[1], "x", 1) != 1) {
            perror("write");
        }
        sleep(20);
    });
    pollfd wanted{ends[0], POLLIN, 0};
    show_at("nothing yet", poll(&wanted, 1, 1000));
    show_at("written", poll(&wanted, 1, 5000));
    writer.join();
    show_at("still there", poll(&wanted, 1, 5000));
}

void timers_between_threads() {
    const int timer = timerfd_create(CLOCK_MONOTONIC, 0);
    std::thread reader([&] {
        uint64_t count = 0;
        show_at("read", read(timer, &count, sizeof(count)));
        pollfd wanted{timer, POLLIN, 0};
        show_at("polled", poll(&wanted, 1, -1));
    });
    sleep(1);
    itimerspec value{};
    value.it_value.tv_sec = 60;
    timerfd_settime(timer, 0, &value, nullptr);
    sleep(1);
    value.it_value.tv_sec = 5;
    value.it_interval.tv_sec = 4;
    timerfd_settime(timer, 0, &value, nullptr);
    reader.join();
}

volatile sig_atomic_t signals_seen = 0;

void count_signal(int) {
    signals_seen = signals_seen + 1;
}

void handle(int number, int flags) {
    struct sigaction action {};
    action.sa_handler = count_signal;
    action.sa_flags = flags;
    sigaction(number, &action, nullptr);
}

// A signal that comes before a semaphore is waited for is too early to end that wait.
void really_sleep(long milliseconds) {
    const timespec time{0, milliseconds * 1000000};
    syscall(SYS_nanosleep, &time, nullptr);
}

// The main thread's wait is ended by a signal that another thread sends it after its own sleep. That one does not wait
// itself before the signal has had its effect: until then the main thread counts as waiting.
template <typename wait> void ended_by_signal(const char *what, wait waits, long delay_ms = 0) {
    const pthread_t main_thread = pthread_self();
    std::atomic<bool> is_ended = false;
    std::thread sender([&, main_thread, delay_ms] {
        sleep(2);
        really_sleep(delay_ms);
        pthread_kill(main_thread, SIGUSR1);
        while (!is_ended) {
            sched_yield();
        }
    });
    const long result = waits();
    const int error = errno;
    is_ended = true;
    sender.join();
    printf("%s: %ld %s, %d seen; ", what, result, result < 0 ? strerror(error) : "", static_cast<int>(signals_seen));
    show_at("then");
}

void signals_end_waits() {
    handle(SIGUSR1, SA_RESTART);
    const timespec minute{60, 0};
    timespec left{};
    ended_by_signal("nanosleep", [&] { return nanosleep(&minute, &left); });
    printf("left %d\n", static_cast<int>(left.tv_sec));
    ended_by_signal("poll", [] { return poll(nullptr, 0, 60000); });
    ended_by_signal("pause", [] { return pause(); });
    sigset_t none;
    sigemptyset(&none);
    ended_by_signal("sigsuspend", [&] { return sigsuspend(&none); });
    ended_by_signal("sleep", [] { return static_cast<long>(sleep(60)); });
    handle(SIGUSR1, 0);
    sem_t semaphore;
    sem_init(&semaphore, 0, 0);
    ended_by_signal(
        "sem_wait", [&] { return sem_wait(&semaphore); }, 100);
}

// All wait without an end: nothing moves until the alarm clock of the desk rings.
void nothing_moves() {
    handle(SIGALRM, 0);
    std::mutex mutex;
    std::condition_variable never_signalled;
    bool ended = false;
    std::thread waits([&] {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        std::unique_lock lock(mutex);
        never_signalled.wait(lock, [&] { return ended; });
    });
    ualarm(20000, 0);
    pause();
    show_at("only the alarm", signals_seen);
    {
        const std::lock_guard lock(mutex);
        ended = true;
    }
    never_signalled.notify_all();
    waits.join();
}

// The child has one thread and the clock of its parent at that moment; from then on each has its own.
void fork_among_threads() {
    std::thread monitor([] { sleep(100); });
    sleep(3);
    fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        sleep(50);
        show_at("child alone");
        std::thread other([] { sleep(5); });
        sleep(1);
        other.join();
        show_at("child's own thread");
        fflush(stdout);
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    show_at("parent", status);
    monitor.join();
    show_at("monitor");
}

// The last of the main thread is not the last of the process.
void main_thread_leaves() {
    std::thread([] {
        sleep(7);
        show_at("the other");
        fflush(stdout);
        _exit(0);
    }).detach();
    pthread_exit(nullptr);
}

} // namespace

int show_threads(int count, char **words) {
    static const struct {
        const char *name;
        void (*play)();
    } scenes[] = {
        {"monitor", monitor_beside_main},
        {"condition", condition_with_time_out},
        {"clocks", condition_clocks},
        {"producer", producer_and_consumers},
        {"mutex", mutex_across_a_sleep},
        {"readers", readers_and_a_writer},
        {"checked", checked_mutex},
        {"contended", contended_mutex},
        {"semaphores", semaphores},
        {"ends", ends_of_threads},
        {"descriptors", descriptors_between_threads},
        {"timers", timers_between_threads},
        {"signals", signals_end_waits},
        {"nothing", nothing_moves},
        {"fork", fork_among_threads},
        {"leaving", main_thread_leaves},
    };
    for (const auto &scene : scenes) {
        if (count == 1 && strcmp(words[0], scene.name) == 0) {
            scene.play();
            return 0;
        }
    }
    return 1;
}
