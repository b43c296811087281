// How a real operation is called with arguments whose addresses stand in a row.
#pragma once

#include <cstdint>

namespace kestro_probe {

// Gives the result; a signed one sign-extended, 0 where there is none.
using real_call = uint64_t (*)(void *real, void *const *arguments);

// In the order of the table of operations; generated.
extern const real_call real_calls[];

} // namespace kestro_probe
