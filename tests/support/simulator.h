// Runs of kestro_test on a simulated board.
//
// A run is forked from a kestro_test that is already loaded (fork_server/), which costs a sixth of a start. What the
// launcher would do, the test program does itself, with the launcher's own functions. A sample of the runs, told by
// their command lines, goes the whole way through kestro_sim all the same, and so does every run when
// KESTRO_TESTS_STARTED=1, which scripts/test --full sets.
#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

namespace kestro_tests {

// Runs kestro_sim of this build with these options, then "--" and the words.
process_result run_sim(const std::vector<std::string> &options, const std::vector<std::string> &words,
                       const process_options &process = {});

// The same, always as a process of its own.
process_result run_launcher(const std::vector<std::string> &options, const std::vector<std::string> &words,
                            const process_options &process = {});

// The same, always forked; throws for options that the launcher has to judge.
process_result run_forked_always(const std::vector<std::string> &options, const std::vector<std::string> &words,
                                 const process_options &process = {});

} // namespace kestro_tests
