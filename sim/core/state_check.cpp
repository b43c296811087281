// What is missing from a state is named, not made anew: a store made anew would be a chassis that forgot its settings.
#include "sim/core/state_check.h"

#include "sim/core/state_dir.h"
#include "sim/core/store.h"

#include <sys/stat.h>

namespace kestro_sim {

namespace {

void check_directory(const std::filesystem::path &directory) {
    struct stat status {};
    if (lstat(directory.c_str(), &status) != 0) {
        throw store_error(directory.string() + ": is missing; make the chassis new with --reset");
    }
    if (S_ISLNK(status.st_mode)) {
        fail_on_link(directory);
    }
    if (!S_ISDIR(status.st_mode)) {
        throw store_error(directory.string() + ": is no directory; make the chassis new with --reset");
    }
}

} // namespace

void check_state(const store &opened, const std::filesystem::path &state_dir) {
    for (const char *part : {"images", "root", "log"}) {
        check_directory(state_dir / part);
    }
    opened.check_images();
    opened.check_registers();
}

void check_folders_of(const std::string &place, const std::filesystem::path &state_dir) {
    check_directory(state_dir / "root" / place);
    check_directory(state_dir / "log" / place);
}

void accept_images(const std::filesystem::path &state_dir) {
    const state_lock lock(state_dir);
    store(state_dir).accept_images();
}

} // namespace kestro_sim
