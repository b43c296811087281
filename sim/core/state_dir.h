// The directory that holds the state of one chassis: whose it is, its lock, making and resetting it.
//
// STATE/kestro_sim.lock  marks the directory as the simulator's and is what processes lock
// STATE/store            see store.h; there only when everything else is complete
// STATE/images/          raw images of the storage devices
// STATE/root/<place>/    the files of each board
// STATE/log/<place>/     the driver logs of each board
// STATE/chassis/         the merged chassis, as it was last found good (prepare.h)
#pragma once

#include "sim/core/description.h"
#include "sim/core/open_file.h"

#include <filesystem>

namespace kestro_sim {

// Held by at most one thread of one process. The lock belongs to an open file of its own, so it also keeps threads
// and forked children apart, and the kernel takes it back from a process that is killed. Not to be taken twice.
class state_lock {
  public:
    explicit state_lock(const std::filesystem::path &state_dir); // throws store_error
    state_lock(const state_lock &) = delete;
    state_lock &operator=(const state_lock &) = delete;
    ~state_lock();

  private:
    open_file file_;
};

// Makes the directory when there is none and marks an empty one as the simulator's; throws store_error when it holds
// something else.
void claim_state_dir(const std::filesystem::path &state_dir);

// Makes all boards new: all state is gone, the store appears last. The lock is held.
void make_state(const std::filesystem::path &state_dir, const description &chassis);

// Changes whenever the file does; 0 when there is none.
uint64_t file_stamp(const std::filesystem::path &file);

} // namespace kestro_sim
