// Every register of the chassis with its path, in the order of the description.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

// A register of a family, or one of a register space.
struct inventory_item {
    std::string path;
    device which;
    const reg *name = nullptr;
    const register_space *space = nullptr;
    uint32_t address = 0;
};

std::vector<inventory_item> take_inventory(board &b);

bool is_at_or_below(std::string_view path, std::string_view top);

// What is known of a path that is not there: "the nearest is 'slot9/voltage/rail'".
std::string nearest_path(std::span<const inventory_item> items, std::string_view path);

// "1004", "0x0102", "1V0 core": the value alone.
std::string plain_value(board &b, const inventory_item &item);

// "1004 mV", "0x0102", "\"1V0 core\"", "1 (green)".
std::string shown_value(board &b, const inventory_item &item);

} // namespace kestro_sim
