// The board of this process, and the frame that keeps exceptions away from the product.
#include "sim/core/operation.h"

#include "sim/core/bite_watch.h"
#include "sim/core/state_dir.h"
#include "sim/core/time.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>
#include <set>

namespace kestro_sim {

namespace {

std::string wanted_variable(const char *name) {
    const char *value = getenv(name);
    if (value == nullptr || *value == '\0') {
        throw store_error(std::string(name) + ": is not set; start the program through kestro_sim");
    }
    return value;
}

// Kept to the end of the process: drivers are called from exit handlers and other threads too.
std::atomic<board *> own{nullptr};
std::atomic<int> running_operations{0};

board &board_of_this_process(const std::string &state_dir) {
    if (own == nullptr) {
        own =
            std::make_unique<board>(wanted_variable("KESTRO_SIM_BOARD"), state_dir, wanted_variable("KESTRO_SIM_SEAT"))
                .release();
    }
    return *own;
}

// Between two driver calls no descriptor of the simulator's is open in the product.
class operation_on {
  public:
    explicit operation_on(board &used) : used_(used) {
    }
    operation_on(const operation_on &) = delete;
    operation_on &operator=(const operation_on &) = delete;
    ~operation_on() {
        used_.end_operation();
    }

  private:
    board &used_;
};

struct counted_operation {
    counted_operation() {
        ++running_operations;
    }
    ~counted_operation() {
        --running_operations;
    }
};

// The end of the process. Within an operation (a signal handler that leaves) the lock may be this thread's own.
__attribute__((destructor)) void note_last_moment() {
    if (running_operations != 0) {
        return;
    }
    try {
        if (own == nullptr) {
            note_time_taken(wanted_variable("KESTRO_SIM_STATE"));
            return;
        }
        const state_lock lock(wanted_variable("KESTRO_SIM_STATE"));
        const operation_on last(*own.load());
        if (own.load()->begin_operation()) {
            own.load()->note_time();
        }
    } catch (const std::exception &) {
        // The state is gone, and its time with it.
    }
}

// Each line once: a damaged register is read again and again. Kept to the end of the process, as the board is.
void complain_once(const char *what) {
    static std::mutex one_at_a_time;
    static auto *const said = new std::set<std::string>;
    const std::lock_guard guard(one_at_a_time);
    if (said->insert(what).second) {
        fprintf(stderr, "kestro_sim: %s\n", what);
    }
}

} // namespace

void forget_other_threads() {
    running_operations = 0;
}

uint32_t run_operation(void (*body)(void *, board &), void *context) noexcept {
    const counted_operation counted;
    try {
        // Read once: a thread of the drivers must not look into the environment while the program changes it. Never
        // freed: exit handlers call drivers, too.
        static const std::string &state_dir = *new std::string(wanted_variable("KESTRO_SIM_STATE"));
        const state_lock lock(state_dir);
        board &used = board_of_this_process(state_dir);
        const operation_on running(used);
        if (!used.begin_operation()) {
            throw store_error(state_dir + ": was made new while this program ran; start the program again");
        }
        used.note_time_now_and_then();
        end_with_bitten_board(used);
        watch_for_bite(used);
        body(context, used);
        watch_for_bite(used);
        return 0;
    } catch (const refusal &refused) {
        return static_cast<uint32_t>(refused.code);
    } catch (const std::bad_alloc &) {
        return static_cast<uint32_t>(error::out_of_memory);
    } catch (const store_error &problem) {
        complain_once(problem.what());
        return static_cast<uint32_t>(problem.code);
    } catch (const std::exception &problem) {
        complain_once(problem.what());
        return static_cast<uint32_t>(error::no_board);
    }
}

} // namespace kestro_sim
