// Runs a program to its end and keeps what it printed and how it ended.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace kestro_tests {

struct process_result {
    std::string out;
    std::string err;
    int status = 0;         // exit status; 128 + signal number when a signal ended it
    bool timed_out = false; // killed by the time limit
};

struct process_options {
    std::vector<std::string> environment; // NAME=VALUE, added to the test's own; NAME alone removes it
    std::string directory;                // working directory; empty keeps the test's own
    int time_limit_ms = 60000;            // a hang ends the run instead of the test suite
    int kill_after_ms = -1;               // ends the run after that long; -1 never
    std::function<bool()> kill_when;      // ends the run as soon as this tells so
    int kill_signal = 9;                  // by SIGKILL or another signal
    // Sends SIGINT when standard output has the first of these texts, another one when it has the second behind it, ...
    std::vector<std::string> interrupt_at;
};

// Where a run's standard output and standard error go: descriptors.
struct output_pair {
    int out;
    int err;
};

// How a run comes about, and how its end is learnt: a status as waitpid gives it.
struct started_program {
    std::function<pid_t(const output_pair &)> start;
    std::function<int(pid_t)> end;
};

process_result run_to_end(const started_program &program, const process_options &options);

// The test's own environment with these changes, NAME=VALUE or NAME alone.
std::vector<std::string> merged_environment(const std::vector<std::string> &changes);

// A new process, through the emulator of the build under test where the program needs it.
pid_t spawn(std::vector<std::string> argv, std::vector<std::string> environment, const std::string &directory,
            const output_pair &output);

// argv[0] is a path. A program built for the board is started through that emulator, if there is one.
process_result run_process(const std::vector<std::string> &argv, const process_options &options = {});

// Where the programs and libraries under test lie: those of this test's own build, or of another one.
std::string build_dir();

// The launcher of the build under test, for tests of what it starts. Where the build is emulated and this program is
// not, the desk's own, which does the same in a twentieth of the time; not in the full tier.
std::string launcher();

// The path of another test program of this test's own build.
std::string test_program(const std::string &name);

// Where this source tree lies.
std::string source_dir();

// A new, empty directory that lasts until the test program ends.
std::string new_scratch_dir();

// Writes a file below a scratch directory and gives its path.
std::string scratch_file(const std::string &name, const std::string &content);

std::string read_file(const std::string &path);
void write_file(const std::string &path, const std::string &content);

} // namespace kestro_tests
