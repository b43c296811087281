// Threads come and go, and wait for each other's end. A new one counts as running from the moment it is made.
#include "sim/world/scheduler.h"
#include "sim/world/timers.h"
#include "sim/world/world.h"

#include <climits>
#include <cstdlib>

namespace kestro_sim {

namespace {

struct thread_record {
    void *(*routine)(void *);
    void *argument;
    pthread_t id;
    bool is_known; // the id is: the one who makes the thread learns it last
    bool is_ended;
    int owners; // the thread itself, and the one who makes it
    thread_record *next;
};

thread_record *records = nullptr; // touched within a turn
thread_record nobody_waits{};     // for threads that are not in the list
pthread_key_t end_key;

void unlink(thread_record *gone) {
    for (thread_record **place = &records; *place != nullptr; place = &(*place)->next) {
        if (*place == gone) {
            *place = gone->next;
            return;
        }
    }
}

// Within a turn. The one of the two that comes last frees.
bool disown(thread_record *record) {
    if (--record->owners != 0) {
        return false;
    }
    unlink(record);
    return true;
}

void end_record(thread_record *record) {
    bool is_free = false;
    {
        const turn own;
        record->is_ended = true;
        wake_all(record);
        is_free = disown(record);
    }
    if (is_free) {
        free(record);
    }
}

// Called when the thread ends, however it ends. The destructors of others may still wait for something: this one lets
// them go first, as often as the C library allows.
void at_thread_end(void *value) {
    auto *record = static_cast<thread_record *>(value);
    static __thread int rounds = 0;
    if (++rounds < PTHREAD_DESTRUCTOR_ITERATIONS) {
        pthread_setspecific(end_key, value);
        return;
    }
    if (record != &nobody_waits) {
        end_record(record);
    }
    count_thread_out();
}

void *run_thread(void *value) {
    auto *record = static_cast<thread_record *>(value);
    start_counting_this_thread();
    pthread_setspecific(end_key, record);
    return record->routine(record->argument);
}

thread_record *new_record(void *(*routine)(void *), void *argument) {
    auto *record = static_cast<thread_record *>(calloc(1, sizeof(thread_record)));
    if (record != nullptr) {
        record->routine = routine;
        record->argument = argument;
        record->owners = 2;
        const turn own;
        record->next = records;
        records = record;
    }
    return record;
}

void forget_record(thread_record *record) {
    {
        const turn own;
        unlink(record);
    }
    free(record);
}

void learn_id(thread_record *record, pthread_t id) {
    bool is_free = false;
    {
        const turn own;
        record->id = id;
        record->is_known = true;
        is_free = disown(record);
    }
    if (is_free) {
        free(record);
    }
}

// Gives the record to wait for, or null when that thread has ended, or is none of these.
thread_record *living(pthread_t id) {
    for (thread_record *record = records; record != nullptr; record = record->next) {
        if (record->is_known && !record->is_ended && pthread_equal(record->id, id) != 0) {
            return record;
        }
    }
    return nullptr;
}

void wait_for_end(pthread_t id) {
    for (;;) {
        turn own;
        thread_record *record = living(id);
        if (record == nullptr) {
            return;
        }
        waiter who{{never, record}};
        enlist(who);
        block(who, own, signals::ignored);
    }
}

void start_alone_after_fork() {
    records = nullptr;
    forget_timers_lock();
    count_this_thread_alone();
    pthread_setspecific(end_key, &nobody_waits);
}

} // namespace

void keep_watch_on_end() {
    if (pthread_getspecific(end_key) == nullptr) {
        pthread_setspecific(end_key, &nobody_waits);
    }
}

void start_scheduling() {
    pthread_key_create(&end_key, at_thread_end);
    start_counting_this_thread();
    pthread_atfork(nullptr, nullptr, start_alone_after_fork);
}

WORLD_EXPORT int world_pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*routine)(void *),
                                      void *argument) __asm__("pthread_create");
int world_pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*routine)(void *),
                         void *argument) {
    static next_function<int(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *)> next{"pthread_create"};
    if (!settings.virtual_clock || thread == nullptr) {
        return next.get()(thread, attributes, routine, argument);
    }
    can_wait();
    thread_record *const record = new_record(routine, argument);
    if (record == nullptr) {
        return EAGAIN;
    }
    count_new_thread();
    const int result = next.get()(thread, attributes, run_thread, record);
    if (result != 0) {
        forget_record(record);
        uncount_new_thread();
        return result;
    }
    learn_id(record, *thread);
    return 0;
}

WORLD_EXPORT int world_pthread_join(pthread_t thread, void **result) __asm__("pthread_join");
int world_pthread_join(pthread_t thread, void **result) {
    static next_function<int(pthread_t, void **)> next{"pthread_join"};
    if (settings.virtual_clock && has_threads() && can_wait() && pthread_equal(thread, pthread_self()) == 0) {
        wait_for_end(thread);
    }
    return next.get()(thread, result);
}

} // namespace kestro_sim
