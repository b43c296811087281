// State directories. A directory is touched only when it is empty or carries the simulator's lock file.
#include "sim/core/state_dir.h"

#include "sim/core/identity_image.h"
#include "sim/core/instance.h"
#include "sim/core/merge.h"
#include "sim/core/state_files.h"
#include "sim/core/store.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sys/file.h>
#include <sys/stat.h>
#include <vector>

namespace kestro_sim {

namespace fs = std::filesystem;

namespace {

constexpr const char *lock_name = "kestro_sim.lock";

// All of one length: to change the mark of a state takes no room on the disk.
constexpr size_t phase_size = 8;
constexpr std::array<const char *, 3> phase_names{"claimed\n", "moving \n", "made   \n"};

// The store first: from then on, programs that still run on the old state see that theirs is gone.
constexpr std::array<const char *, 4> parts{"store", "images", "root", "log"};

bool is_there(const fs::path &file) {
    struct stat status {};
    return lstat(file.c_str(), &status) == 0;
}

std::string first_foreign_file(const fs::path &state_dir) {
    std::vector<std::string> names;
    std::error_code problem;
    for (fs::directory_iterator entry(state_dir, problem); !problem && entry != fs::directory_iterator();
         entry.increment(problem)) {
        names.push_back(entry->path().filename().string());
    }
    if (problem) {
        fail_on(state_dir, "read", problem.value());
    }
    return names.empty() ? std::string() : *std::min_element(names.begin(), names.end());
}

void make_directory(const fs::path &directory) {
    if (mkdir(directory.c_str(), 0777) != 0) {
        fail_on(directory, "made", errno);
    }
}

// Text files name what differs from board to board (${serial}).
void copy_file(const fs::path &from, const fs::path &to, const board_files &board) {
    std::ifstream stream(from, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const std::string own = substituted(content, board.variables);
    fs::remove(to);
    if (own == content) {
        fs::copy_file(from, to);
        return;
    }
    write_new_file(to, {reinterpret_cast<const uint8_t *>(own.data()), own.size()});
    fs::permissions(to, fs::status(from).permissions());
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

void write_new_state(const fs::path &directory, const description &chassis) {
    make_directory(directory);
    for (const char *part : {"images", "root", "log"}) {
        make_directory(directory / part);
    }
    make_directories_of_boards(chassis, directory);
    write_new_images(chassis, directory / "images");
    copy_board_files(chassis, directory / "root");
    store::create(directory, {fingerprint(chassis), 0, chassis.name()});
}

// May be done again from any point on: what has been moved is no longer in the new directory.
void move_new_state(const fs::path &state_dir) {
    for (const char *part : parts) {
        if (is_there(state_dir / "new" / part)) {
            fs::remove_all(state_dir / part);
            fs::rename(state_dir / "new" / part, state_dir / part);
        }
    }
    fs::remove(state_dir / "new");
}

// A state may lie where it can only be read.
open_file open_lock(const fs::path &state_dir) {
    open_file opened = open_of_state(state_dir, lock_name, O_RDWR);
    if (!opened && (errno == EROFS || errno == EACCES || errno == EPERM)) {
        opened = open_of_state(state_dir, lock_name, O_RDONLY);
    }
    return opened;
}

} // namespace

state_lock::state_lock(const fs::path &state_dir) : path_(state_dir / lock_name), file_(open_lock(state_dir)) {
    if (!file_ && errno == ENOENT) {
        throw store_error(path_.string() + ": cannot be opened (" + std::strerror(errno) +
                          "); kestro_sim makes the state directory");
    }
    if (!file_) {
        fail_on(path_, "opened", errno);
    }
    while (flock(file_.get(), LOCK_EX) != 0) {
        if (errno != EINTR) {
            throw store_error(path_.string() + ": cannot be locked (" + std::strerror(errno) +
                              "); choose a state directory on a local file system");
        }
    }
}

state_lock::~state_lock() {
    // A child forked meanwhile shares the open file; closing it here alone would leave the lock with the child.
    flock(file_.get(), LOCK_UN);
}

state_phase state_lock::phase() const {
    std::array<char, phase_size> mark{};
    if (!read_at(file_, mark.data(), mark.size(), 0)) {
        return state_phase::claimed;
    }
    for (size_t i = 0; i < phase_names.size(); ++i) {
        if (std::equal(mark.begin(), mark.end(), phase_names[i])) {
            return static_cast<state_phase>(i);
        }
    }
    return state_phase::claimed;
}

void state_lock::set_phase(state_phase phase) {
    if (!write_at(file_, phase_names[static_cast<size_t>(phase)], phase_size, 0)) {
        // A descriptor that can only read answers EBADF: the state may only be read.
        fail_on(path_, "written", errno == EBADF ? EACCES : errno);
    }
}

void claim_state_dir(const fs::path &state_dir) {
    std::error_code problem;
    std::error_code none;
    fs::create_directories(state_dir, problem);
    if (!fs::is_directory(state_dir, none)) {
        throw store_error(state_dir.string() + ": cannot be made (" +
                          (problem ? problem.message() : std::strerror(ENOTDIR)) +
                          "); choose another directory with --state");
    }
    if (is_there(state_dir / lock_name)) {
        return;
    }
    const std::string foreign = first_foreign_file(state_dir);
    // Another launcher may have claimed the directory while it was being read: its mark comes before its files.
    if (!foreign.empty() && !is_there(state_dir / lock_name)) {
        throw store_error((state_dir / foreign).string() +
                          ": was not made by the simulator; choose an empty or a new directory with --state");
    }
    if (!open_of_state(state_dir, lock_name, O_RDWR | O_CREAT)) {
        fail_on(state_dir / lock_name, "made", errno);
    }
}

void make_state(state_lock &lock, const fs::path &state_dir, const description &chassis) {
    const fs::path fresh = state_dir / "new";
    // The mark takes its room on the disk before anything else does.
    if (lock.phase() == state_phase::claimed) {
        lock.set_phase(state_phase::claimed);
    }
    try {
        fs::remove_all(fresh);
        write_new_state(fresh, chassis);
    } catch (...) {
        // Half a state must not take the room that its maker lacked.
        std::error_code none;
        fs::remove_all(fresh, none);
        throw;
    }
    lock.set_phase(state_phase::moving);
    finish_making(lock, state_dir);
}

bool finish_making(state_lock &lock, const fs::path &state_dir) {
    if (lock.phase() == state_phase::moving) {
        move_new_state(state_dir);
        lock.set_phase(state_phase::made);
    } else if (is_there(state_dir / "new")) {
        // A reset that was killed: it must not go on taking room.
        std::error_code none;
        fs::remove_all(state_dir / "new", none);
    }
    // A state of an older layout has no mark, only a store.
    return lock.phase() == state_phase::made || is_there(state_dir / "store");
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
