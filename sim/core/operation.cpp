// The board of this process, and the frame that keeps exceptions away from the product.
#include "sim/core/operation.h"

#include "sim/core/state_dir.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>

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
board &board_of_this_process(const std::string &state_dir) {
    static board *own = nullptr;
    if (own == nullptr) {
        own =
            std::make_unique<board>(wanted_variable("KESTRO_SIM_BOARD"), state_dir, wanted_variable("KESTRO_SIM_SEAT"))
                .release();
    }
    if (!own->begin_operation()) {
        throw store_error(state_dir + ": was made new while this program ran; start the program again");
    }
    return *own;
}

void complain_once(const char *what) {
    static std::atomic<bool> said{false};
    if (!said.exchange(true)) {
        fprintf(stderr, "kestro_sim: %s\n", what);
    }
}

} // namespace

uint32_t run_operation(void (*body)(void *, board &), void *context) noexcept {
    try {
        const std::string state_dir = wanted_variable("KESTRO_SIM_STATE");
        const state_lock lock(state_dir);
        body(context, board_of_this_process(state_dir));
        return 0;
    } catch (const refusal &refused) {
        return static_cast<uint32_t>(refused.code);
    } catch (const std::bad_alloc &) {
        return static_cast<uint32_t>(error::out_of_memory);
    } catch (const std::exception &problem) {
        complain_once(problem.what());
        return static_cast<uint32_t>(error::no_board);
    }
}

} // namespace kestro_sim
