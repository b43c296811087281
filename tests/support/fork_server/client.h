// Runs kestro_test in processes that are forked from one that has been loaded already (server.cpp).
#pragma once

#include "tests/support/process.h"

namespace kestro_tests {

// The program with exactly this environment. A server is kept for each program and set of loader variables, for the
// loader and the libraries that are started before the fork read these once.
process_result run_forked(const std::vector<std::string> &argv, const std::vector<std::string> &environment,
                          const process_options &options);

} // namespace kestro_tests
