// The lock and the begun line are shared with forked children, which write to the same file.
#include "probe/trace.h"

#include "probe/report.h"
#include "probe/script.h"

#include <cerrno>
#include <cstring>
#include <pthread.h>
#include <sys/mman.h>

namespace kestro_probe {

namespace {

struct shared_state {
    pthread_mutex_t lock;
    uint64_t open;  // the line that is begun and not closed, 0 for none
    uint64_t begun; // how many were begun so far
};

shared_state *state = nullptr;
int trace_file = -1;
const std::string *trace_name = nullptr; // kept: the trace begins before this file's own objects are made

// A child that is killed with the lock held leaves it to the next.
class lock_held {
  public:
    lock_held() {
        if (pthread_mutex_lock(&state->lock) == EOWNERDEAD) {
            pthread_mutex_consistent(&state->lock);
        }
    }
    lock_held(const lock_held &) = delete;
    lock_held &operator=(const lock_held &) = delete;
    ~lock_held() {
        pthread_mutex_unlock(&state->lock);
    }
};

void make_lock() {
    pthread_mutexattr_t kind;
    pthread_mutexattr_init(&kind);
    pthread_mutexattr_setpshared(&kind, PTHREAD_PROCESS_SHARED);
    pthread_mutexattr_setrobust(&kind, PTHREAD_MUTEX_ROBUST);
    if (pthread_mutex_init(&state->lock, &kind) != 0) {
        // Emulators without robust locks.
        pthread_mutexattr_setrobust(&kind, PTHREAD_MUTEX_STALLED);
        pthread_mutex_init(&state->lock, &kind);
    }
    pthread_mutexattr_destroy(&kind);
}

// A trace that has a gap is none: after the first failure nothing more is written.
void put(const std::string &text) {
    if (trace_file >= 0 && !write_whole(trace_file, text)) {
        trace_file = -1;
        report_finding(*trace_name + ": " + strerror(errno) + "; the trace ends here, although the run went on");
    }
}

std::string closing() {
    return state->open != 0 ? std::string(begun_mark) + "\n" : std::string();
}

} // namespace

void start_trace(int file, const std::string &name) {
    void *page = mmap(nullptr, sizeof(shared_state), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED) {
        report_finding(name + ": " + strerror(errno) + "; the trace is not written");
        return;
    }
    state = static_cast<shared_state *>(page);
    make_lock();
    trace_name = new std::string(name);
    trace_file = file;
}

bool is_tracing() {
    return trace_file >= 0;
}

uint64_t begin_line(const std::string &head) {
    const lock_held held;
    const std::string before = closing();
    state->open = ++state->begun;
    put(before + head);
    return state->open;
}

void end_line(uint64_t begun, const std::string &head, const std::string &tail) {
    const lock_held held;
    const bool still_open = state->open == begun;
    const std::string before = still_open ? std::string() : closing() + head;
    state->open = 0;
    put(before + tail + "\n");
}

void write_line(const std::string &text) {
    const lock_held held;
    const std::string before = closing();
    state->open = 0;
    put(before + text + "\n");
}

} // namespace kestro_probe
