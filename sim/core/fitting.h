// Boards and cards that are pulled out and plugged in again. What is pulled keeps its images and registers.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

bool is_pulled(board &b, const std::string &place);

// The cell that says so, for who has the store alone.
std::string pulled_key(const std::string &place);

// Nothing happens to what is out already, or in. Plugged in, a board or card is switched on, and so are its cards.
void pull(board &b, const std::string &place);
void plug(board &b, const std::string &place);

// How often something went from or came to the place: whoever waits for a change compares.
uint32_t presence_changes(board &b, const std::string &place);

} // namespace kestro_sim
