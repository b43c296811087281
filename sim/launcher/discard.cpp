// The copy is removed by a process of its own, for the launcher becomes kestro_test and kestro_test knows nothing of
// it. That process waits at a pipe whose other end the run holds open: whichever way the run ends, the pipe closes.
#include "sim/launcher/discard.h"

#include "sim/core/open_file.h"
#include "sim/launcher/options.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestro_sim {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void refuse(const fs::path &path, const std::string &wrong) {
    throw launch_error(path.string(), wrong, "--discard needs room for a copy of the state; TMPDIR says where");
}

fs::path new_place() {
    std::error_code error;
    const fs::path shared = fs::temp_directory_path(error);
    if (error) {
        const char *named = getenv("TMPDIR");
        refuse(named != nullptr ? named : "/tmp", error.message());
    }
    std::string name = (shared / "kestro_sim-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        refuse(name, strerror(errno));
    }
    return name;
}

// Pipes and devices that somebody put among the board's files hold nothing: the copy has a pipe in their place.
void copy_folder(const fs::path &from, const fs::path &to, std::error_code &error) {
    fs::create_directory(to, from, error);
    for (auto entry = fs::directory_iterator(from, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const fs::path place = to / entry->path().filename();
        const fs::file_status status = entry->symlink_status(error);
        if (error) {
            return;
        }
        if (fs::is_directory(status)) {
            copy_folder(entry->path(), place, error);
        } else if (fs::is_other(status)) {
            if (mkfifo(place.c_str(), S_IRUSR | S_IWUSR) != 0) {
                error.assign(errno, std::generic_category());
            }
        } else {
            fs::copy(entry->path(), place, fs::copy_options::copy_symlinks, error);
        }
        if (error) {
            return;
        }
    }
}

// Other runs may be at work on the state; a driver call of theirs is in the copy whole or not at all.
void copy_state(const fs::path &state, const fs::path &copy) {
    const open_file lock(open((state / "kestro_sim.lock").c_str(), O_RDWR | O_CLOEXEC));
    flock(lock.get(), LOCK_EX);
    std::error_code error;
    copy_folder(state, copy, error);
    if (error) {
        std::error_code none;
        fs::remove_all(copy, none);
        refuse(copy, error.message());
    }
}

// Apart from the run's terminal, output and directory, so that nobody waits for this process or ends it.
[[noreturn]] void clean_up(const fs::path &copy, int pipe_end) {
    setsid();
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard) {
        dup2(nowhere, standard);
    }
    std::error_code none;
    fs::current_path("/", none);
    char nothing = 0;
    while (read(pipe_end, &nothing, 1) < 0 && errno == EINTR) {
    }
    fs::remove_all(copy, none);
    _exit(0);
}

// Forked twice: kestro_test must not find a child that it did not start.
void start_cleaner(const fs::path &copy, const std::array<int, 2> &pipe_ends) {
    const pid_t between = fork();
    if (between == 0) {
        close(pipe_ends[1]);
        if (fork() == 0) {
            clean_up(copy, pipe_ends[0]);
        }
        _exit(0);
    }
    close(pipe_ends[0]);
    waitpid(between, nullptr, 0);
}

} // namespace

fs::path copy_to_discard(const fs::path &state) {
    // The run's end stays open when the launcher becomes kestro_test.
    std::array<int, 2> pipe_ends{};
    if (pipe(pipe_ends.data()) != 0) {
        refuse(state, strerror(errno));
    }
    fs::path copy = new_place();
    copy_state(state, copy);
    start_cleaner(copy, pipe_ends);
    return copy;
}

} // namespace kestro_sim
