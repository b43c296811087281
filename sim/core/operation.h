// The frame of every simulated driver operation.
#pragma once

#include "sim/core/board.h"

#include <memory>
#include <type_traits>

namespace kestro_sim {

// Runs one driver operation: finds the board from the environment, holds the lock, and gives the result code: 0, the
// code the operation refused with, or no_board when there is nothing to run on (said once on standard error).
// Nothing is ever thrown out of it. Operations do not call each other: the lock is not taken twice, and the driver
// probe would count the inner call as one of the product's.
uint32_t run_operation(void (*body)(void *, board &), void *context) noexcept;

// operate([&](board &b) { ... }) : what the drivers' functions consist of.
template <typename Body> uint32_t operate(Body &&body) noexcept {
    using body_type = std::remove_reference_t<Body>;
    return run_operation([](void *context, board &b) { (*static_cast<body_type *>(context))(b); },
                         std::addressof(body));
}

// In a forked child: operations of the parent's other threads are not its own.
void forget_other_threads();

} // namespace kestro_sim
