// Whether a state that was made is still whole, and taking in what was changed in it by hand.
#pragma once

#include <filesystem>
#include <string>

namespace kestro_sim {

class store;

// Throws store_error that names the first part that is missing or damaged. What the images hold is not looked at here:
// that is checked where a driver reads it. The lock is held.
void check_state(const store &opened, const std::filesystem::path &state_dir);

// The folders of the board at a place: its files and its logs.
void check_folders_of(const std::string &place, const std::filesystem::path &state_dir);

// Takes the raw images as they now are, so that one may be changed by hand: for the launcher.
void accept_images(const std::filesystem::path &state_dir);

} // namespace kestro_sim
