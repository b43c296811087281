// The directory that holds the state of one chassis: whose it is, its lock, making and resetting it.
//
// STATE/kestro_sim.lock  marks the directory as the simulator's, says how far making it came, and is what processes
// lock STATE/store            see store.h STATE/images/          raw images of the storage devices STATE/root/<place>/
// the files of each board STATE/log/<place>/     the driver logs of each board STATE/chassis/         the merged
// chassis, as it was last found good (prepare.h) STATE/new/             the store, images, root and log while they are
// being made
#pragma once

#include "sim/core/description.h"
#include "sim/core/open_file.h"

#include <filesystem>

namespace kestro_sim {

enum class state_phase {
    claimed, // never complete: what lies there is made anew
    moving,  // STATE/new is complete and takes the place of what was there before
    made,
};

// Held by at most one thread of one process. The lock belongs to an open file of its own, so it also keeps threads
// and forked children apart, and the kernel takes it back from a process that is killed. Not to be taken twice.
class state_lock {
  public:
    explicit state_lock(const std::filesystem::path &state_dir); // throws store_error
    state_lock(const state_lock &) = delete;
    state_lock &operator=(const state_lock &) = delete;
    ~state_lock();

    state_phase phase() const;
    void set_phase(state_phase phase); // throws store_error

  private:
    std::filesystem::path path_;
    open_file file_;
};

// Makes the directory when there is none and marks an empty one as the simulator's; throws store_error when it holds
// something else.
void claim_state_dir(const std::filesystem::path &state_dir);

// Makes all boards new. Until all of the new state is written, the old one stays as it is.
void make_state(state_lock &lock, const std::filesystem::path &state_dir, const description &chassis);

// Ends what a killed launcher had begun, and tells whether there is a state now.
bool finish_making(state_lock &lock, const std::filesystem::path &state_dir);

// Changes whenever the file does; 0 when there is none.
uint64_t file_stamp(const std::filesystem::path &file);

} // namespace kestro_sim
