// State directories. A directory is touched only when it is empty or carries the simulator's lock file.
#include "sim/core/state_dir.h"

#include "sim/core/identity_image.h"
#include "sim/core/instance.h"
#include "sim/core/merge.h"
#include "sim/core/store.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <vector>

namespace kestro_sim {

namespace fs = std::filesystem;

namespace {

constexpr const char *lock_name = "kestro_sim.lock";

std::string first_foreign_file(const fs::path &state_dir) {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(state_dir)) {
        names.push_back(entry.path().filename().string());
    }
    return names.empty() ? std::string() : *std::min_element(names.begin(), names.end());
}

// Programs that still run on the old board must not write into the new one.
void retire_old_store(const fs::path &state_dir) {
    if (!fs::exists(state_dir / "store")) {
        return;
    }
    try {
        store(state_dir).retire();
    } catch (const std::exception &) {
        // Something else lies there under the store's name: nobody runs on it.
    }
    fs::remove_all(state_dir / "store");
}

// Text files name what differs from board to board (${serial}).
void copy_file(const fs::path &from, const fs::path &to, const board_files &board) {
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
    std::ifstream stream(from, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::string own = substituted(content, board.variables);
    if (own != content) {
        std::ofstream(to, std::ios::binary | std::ios::trunc) << own;
    }
}

void copy_tree(const fs::path &from, const fs::path &to, const board_files &board) {
    fs::create_directories(to);
    for (const fs::directory_entry &entry : fs::directory_iterator(from)) {
        const fs::path target = to / entry.path().filename();
        if (entry.is_directory() && !entry.is_symlink()) {
            copy_tree(entry.path(), target, board);
        } else if (entry.is_regular_file() && !entry.is_symlink()) {
            copy_file(entry.path(), target, board);
        } else {
            fs::copy(entry.path(), target, fs::copy_options::copy_symlinks | fs::copy_options::overwrite_existing);
        }
    }
}

void copy_board_files(const description &chassis, const fs::path &root) {
    for (const board_files &board : chassis.files) {
        for (const fs::path &layer : board.roots) {
            copy_tree(layer, root / board.place, board);
        }
    }
}

// Every board has a place for its files and its logs, cards have none.
void make_directories_of_boards(const description &chassis, const fs::path &state_dir) {
    for (const pugi::xml_node place : chassis.chassis().children("place")) {
        const std::string name = place.attribute("name").value();
        const auto slot = slot_of_place(name);
        if (slot && !card_of_place(name) && type_of_slot(chassis, *slot) != card_slot) {
            fs::create_directories(state_dir / "root" / name);
            fs::create_directories(state_dir / "log" / name);
        }
    }
}

} // namespace

state_lock::state_lock(const fs::path &state_dir) : file_(open((state_dir / lock_name).c_str(), O_RDWR | O_CLOEXEC)) {
    if (!file_) {
        throw store_error((state_dir / lock_name).string() + ": cannot be opened (" + std::strerror(errno) +
                          "); kestro_sim makes the state directory");
    }
    while (flock(file_.get(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            throw store_error((state_dir / lock_name).string() + ": cannot be locked (" + std::strerror(errno) +
                              "); choose a state directory on a local file system");
        }
    }
}

state_lock::~state_lock() {
    // A child forked meanwhile shares the open file; closing it here alone would leave the lock with the child.
    flock(file_.get(), LOCK_UN);
}

void claim_state_dir(const fs::path &state_dir) {
    std::error_code problem;
    fs::create_directories(state_dir, problem);
    if (!fs::is_directory(state_dir)) {
        throw store_error(state_dir.string() + ": cannot be made (" +
                          (problem ? problem.message() : std::strerror(ENOTDIR)) +
                          "); choose another directory with --state");
    }
    const std::string foreign = first_foreign_file(state_dir);
    // Another launcher may have claimed the directory while it was being read: its mark comes before its files.
    if (!foreign.empty() && !fs::exists(state_dir / lock_name)) {
        throw store_error((state_dir / foreign).string() +
                          ": was not made by the simulator; choose an empty or a new directory with --state");
    }
    const open_file mark(open((state_dir / lock_name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!mark) {
        throw store_error((state_dir / lock_name).string() + ": cannot be made (" + std::strerror(errno) +
                          "); choose a directory that can be written with --state");
    }
}

void make_state(const fs::path &state_dir, const description &chassis) {
    retire_old_store(state_dir);
    for (const char *old : {"store.new", "chassis", "images", "root", "log"}) {
        fs::remove_all(state_dir / old);
    }
    fs::create_directory(state_dir / "images");
    make_directories_of_boards(chassis, state_dir);
    write_new_images(chassis, state_dir / "images");
    copy_board_files(chassis, state_dir / "root");
    store::create(state_dir / "store.new", {fingerprint(chassis), 0, chassis.name()});
    fs::rename(state_dir / "store.new", state_dir / "store");
}

uint64_t file_stamp(const fs::path &file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) {
        return 0;
    }
    uint64_t stamp = 1;
    for (const auto part :
         {static_cast<uint64_t>(status.st_dev), static_cast<uint64_t>(status.st_ino),
          static_cast<uint64_t>(status.st_size), static_cast<uint64_t>(status.st_mtim.tv_sec),
          static_cast<uint64_t>(status.st_mtim.tv_nsec), static_cast<uint64_t>(status.st_ctim.tv_nsec)}) {
        stamp = (stamp ^ part) * 0x9E3779B97F4A7C15U;
    }
    return stamp;
}

} // namespace kestro_sim
