// Plays a scene with events on a board and prints what was heard and when. Run on the virtual clock it prints the same
// each time.
#include "sim/core/events.h"
#include "sim/core/operation.h"
#include "sim/core/time.h"

#include "drv_basic/management/drv_board.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <sched.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace kestro_sim;

namespace {

constexpr int64_t ms = nanoseconds_per_millisecond;

int64_t start = 0;

int64_t board_now() {
    int64_t now = 0;
    operate([&](board &b) { now = b.now(); });
    return now;
}

void rest(int64_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void say(const char *what, uint64_t number) {
    printf("%lld ms: %s %llu\n", static_cast<long long>((board_now() - start) / ms), what,
           static_cast<unsigned long long>(number));
}

listener_id hear(const std::string &topic, listener hears) {
    listener_id id = 0;
    operate([&](board &b) { id = listen(b, topic, std::move(hears)); });
    return id;
}

event_id tell(const std::string &topic, uint64_t value, int64_t after_ms = 0) {
    event_id id = 0;
    operate([&](board &b) {
        event what{topic, 0, value, {}};
        id = after_ms == 0 ? post(b, what) : post_at(b.now() + after_ms * ms, what);
    });
    return id;
}

size_t tasks() {
    size_t count = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("/proc/self/task")) {
        ++count;
    }
    return count;
}

// Beside the program's own, an emulator has one of its.
const size_t of_the_emulator = tasks() - 1;

size_t threads() {
    return tasks() - of_the_emulator;
}

// The same behind the end of one: the kernel shows a thread that has been joined for a moment more.
size_t threads_left() {
    constexpr int looks = 20000;
    for (int i = 0; i < looks && threads() > 1; ++i) {
        sched_yield();
    }
    return threads();
}

void in_order() {
    tell("a", 1);       // nobody listens yet
    tell("a", 30, 300); // and this one is still to come
    hear("a", [](const event &what) { say("heard", what.value); });
    hear("b", [](const event &what) { say("other", what.value); });
    tell("a", 20, 200);
    tell("a", 10, 100);
    tell("b", 11, 100);
    tell("a", 12, 100);
    tell("c", 13, 100);
    tell("a", 2);
    const event_id late = tell("a", 250, 250);
    rest(150);
    say("cancelled", cancel(late) ? 1 : 0);
    rest(850);
    say("cancelled", cancel(late) ? 1 : 0);
}

void thread_when_needed() {
    tell("a", 1);
    tell("a", 2, 100);
    say("threads", threads());
    const listener_id who = hear("a", [](const event &what) { say("heard", what.value); });
    say("threads", threads());
    rest(200);
    stop_listening(who);
    tell("a", 3);
    rest(200);
    hear("a", [](const event &what) { say("heard", what.value); });
    hear("a", [](const event &what) { say("heard too", what.value); });
    tell("a", 4);
    rest(200);
    say("threads", threads());
}

// One who stops listening waits for a callback that runs, and hears no more.
void none_after_the_end() {
    const listener_id who = hear("a", [](const event &what) {
        say("begins", what.value);
        rest(100);
        say("ends", what.value);
    });
    tell("a", 1);
    tell("a", 2);
    rest(50);
    stop_listening(who);
    say("no longer listens", 0);
    rest(500);
    stop_listening(who);
    stop_listening(77);
}

void end_within_callback() {
    static listener_id own = 0;
    static listener_id other = 0;
    own = hear("a", [](const event &what) {
        say("once", what.value);
        stop_listening(own);
        stop_listening(other);
        tell("a", what.value + 1);
    });
    other = hear("a", [](const event &what) { say("never", what.value); });
    hear("a", [](const event &what) { say("always", what.value); });
    tell("a", 1);
    rest(100);
}

// A source that is due each 100 ms, as often as its register says; each callback takes one away.
void from_a_source() {
    static int64_t since = 0;
    static uint32_t count = 0;
    operate([&](board &) {
        add_event_source("tick", [](board &, int64_t after) -> std::optional<due_events> {
            if (count == 0) {
                return std::nullopt;
            }
            const int64_t periods = std::max<int64_t>(after - since, 0) / (100 * ms) + 1;
            return due_events{since + periods * 100 * ms, {{"tick", 5, count, {1, 2, 3}}}};
        });
    });
    hear("tick", [](const event &what) {
        say("tick", what.value * 1000 + what.source * 100 + what.bytes.size());
        operate([](board &) { --count; });
    });
    rest(250);
    say("starts", 0);
    operate([](board &b) {
        since = b.now();
        count = 3;
    });
    // Any register that is written has the sources looked at.
    drv_board_set_online_status(0xFF000005U, 1);
    rest(1000);
}

uint32_t come_or_go(uint32_t slot_id, uint32_t in, void *) {
    uint32_t status = 7;
    const uint32_t result = drv_board_get_online_status(0xFF000000U + slot_id, &status);
    say(in != 0 ? "in" : "out", slot_id * 100 + status * 10 + result);
    return 0;
}

void presence_by_driver() {
    drv_board_in_out_reg(come_or_go, nullptr, "scene", 0);
    drv_board_set_online_status(0xFF000005U, 1);
    rest(10);
    drv_board_set_online_status(0xFF000005U, 1);
    drv_board_set_online_status(0xFF000005U, 0);
    rest(10);
    drv_board_in_out_unreg(come_or_go);
    drv_board_set_online_status(0xFF000005U, 1);
    rest(10);
}

// Forks while the thread that listens waits. The sanitizer's allocator keeps its locks in a child as they were at that
// moment, and a thread that was just allocating is not there to open them.
pid_t fork_at_rest() {
    rest(50);
    start = board_now();
    fflush(stdout);
    return fork();
}

// Another process pulls a card; on the real clock that is seen soon. Waits long, but only when it is not seen.
void presence_by_others() {
    static std::atomic<bool> heard{false};
    drv_board_in_out_reg(
        [](uint32_t slot_id, uint32_t in, void *) {
            printf("slot %u in %u\n", slot_id, in);
            heard = true;
            return uint32_t{0};
        },
        nullptr, "scene", 0);
    const pid_t child = fork_at_rest();
    if (child == 0) {
        const bool is_alone = threads() == 1;
        _exit(is_alone && drv_board_set_online_status(0xFF000004U, 1) == 0 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    for (int i = 0; i < 600 && !heard; ++i) {
        rest(50);
    }
    printf("child %d\n", status);
}

// The child of a program that listens does not; it may begin to.
void in_a_child() {
    hear("a", [](const event &what) { say("parent hears", what.value); });
    const pid_t child = fork_at_rest();
    if (child == 0) {
        tell("a", 1);
        rest(50);
        say("child's threads", threads());
        hear("a", [](const event &what) { say("child hears", what.value); });
        tell("a", 2);
        rest(50);
        say("child's threads", threads());
        exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    tell("a", 3);
    rest(50);
    say("child's end", static_cast<uint64_t>(status));
}

struct late_user {
    std::string text = "a text that is too long to lie within the object";
    ~late_user() {
        printf("destroyed: %zu\n", text.size());
        text.clear();
    }
};

// Objects of the program are destroyed when no callback runs any more.
void end_while_called() {
    static late_user user;
    hear("a", [](const event &what) {
        rest(300);
        printf("%zu %llu\n", user.text.size(), static_cast<unsigned long long>(what.value));
    });
    tell("a", 1);
    tell("a", 2);
    rest(100);
    exit(0);
}

void end_with_a_callback_that_stays() {
    hear("a", [](const event &) {
        for (;;) {
            rest(1000);
        }
    });
    tell("a", 1);
    rest(100);
    say("ends", 0);
    exit(0);
}

void end_from_within() {
    hear("a", [](const event &what) {
        say("leaves", what.value);
        exit(5);
    });
    tell("a", 1);
    for (;;) {
        rest(1000);
    }
}

// An exit handler calls drivers: one that was registered later than the thread still hears, an earlier one does not.
void end_with_handlers() {
    atexit([] {
        tell("a", 2);
        rest(50);
        say("earlier handler", threads_left());
    });
    hear("a", [](const event &what) { say("heard", what.value); });
    atexit([] {
        tell("a", 1);
        rest(50);
        say("later handler", threads());
    });
}

// Where board time stands, and where it goes in so many milliseconds.
void show_time(const char *milliseconds) {
    printf("%lld to ", static_cast<long long>(board_now() / ms));
    rest(atoll(milliseconds));
    printf("%lld\n", static_cast<long long>(board_now() / ms));
    fflush(stdout);
}

} // namespace

int main(int count, char **words) {
    if (count >= 3 && strcmp(words[1], "time") == 0) {
        show_time(words[2]);
        return count == 3 ? 0 : raise(SIGKILL);
    }
    static const struct {
        const char *name;
        void (*play)();
    } scenes[] = {
        {"order", in_order},
        {"thread", thread_when_needed},
        {"end", none_after_the_end},
        {"within", end_within_callback},
        {"source", from_a_source},
        {"presence", presence_by_driver},
        {"others", presence_by_others},
        {"child", in_a_child},
        {"called", end_while_called},
        {"stays", end_with_a_callback_that_stays},
        {"leaves", end_from_within},
        {"handlers", end_with_handlers},
    };
    start = board_now();
    for (const auto &scene : scenes) {
        if (count == 2 && strcmp(words[1], scene.name) == 0) {
            scene.play();
            return 0;
        }
    }
    return 1;
}
