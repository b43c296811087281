// The parts of the memory that a board keeps from its kernel. Each board's memory is the image "himem" of its state;
// the bytes of a part begin in it as far behind the memory's start as the part does.
//
// Programs read it where it is mapped; what writes there are the drivers alone, through the journal of the state.
#pragma once

#include "sim/core/board.h"

#include <string>

namespace kestro_sim {

namespace memory_part {
inline constexpr reg start = reg::bits("start", INT64_MAX, "where it starts").required().fixed();
inline constexpr reg length = reg::bits("length", any_u32, "how many bytes it has").required().fixed();
inline constexpr device_family family{
    "sim_himem", "part", "a part of the reserved memory, by its type", {start, length}};
} // namespace memory_part

// Where the bytes of a part stand. Refuses a part that does not lie within the memory (out_of_range), and a board that
// has no such part.
struct part_bytes {
    std::string image;
    uint32_t offset;
    uint32_t length;
};
part_bytes bytes_of_part(board &b, const std::string &place, uint32_t type);

// The memory as this process sees it, for reading; mapped when it is not yet. Refuses a board that has none.
const uint8_t *map_reserved_memory(board &b, const std::string &place);
void unmap_reserved_memory();

} // namespace kestro_sim
