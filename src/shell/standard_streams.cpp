// Standard streams that were closed, and output that was lost.
#include "shell/standard_streams.h"

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <initializer_list>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// A descriptor that is closed at the start would go to the first file that anybody opens, and with standard output
// closed the lines of the run would be written into a device or a file of a driver. So its place is taken by one that
// refuses as a closed one does: reading from standard input fails, and so does writing to the others.
void hold_standard_places(int, char **, char **) {
    for (const int place : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(place, F_GETFD) == -1) {
            // The lowest free number is taken, which is this place. Straight to the kernel: nothing that is preloaded
            // has been started yet.
            syscall(SYS_openat, AT_FDCWD, "/dev/null", place == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

// Before main would be too late: driver libraries may open their devices when they are loaded.
[[gnu::section(".preinit_array"), gnu::used]] void (*const before_all_libraries)(int, char **,
                                                                                 char **) = hold_standard_places;

// The C library takes standard output down at the exit without its lock; a driver's thread that printed meanwhile
// would write through a buffer that is not there any more.
std::atomic<bool> output_has_ended;

} // namespace

int end_output(int result) {
    flockfile(stdout);
    // The error mark stays from the first write that failed, also where a later one found room again.
    const bool has_arrived = fflush(stdout) == 0 && ferror(stdout) == 0;
    output_has_ended = true;
    funlockfile(stdout);
    if (has_arrived) {
        return result;
    }
    fputs("kestro_test: standard output cannot be written, and lines of this run are lost\n", stderr);
    return 1;
}

bool hold_output() {
    flockfile(stdout);
    if (output_has_ended) {
        funlockfile(stdout);
        return false;
    }
    return true;
}

void release_output() {
    funlockfile(stdout);
}
