// Runs the tiny program behind the probe.
#pragma once

#include "tests/support/process.h"

#include <string>
#include <vector>

namespace kestro_tests {

// words: what the program is to do. environment: the probe's settings.
process_result run_tiny(const std::vector<std::string> &words, std::vector<std::string> environment = {},
                        int time_limit_ms = 60000);

// The same with a script of this content, in a file called rules.
process_result run_script(const std::vector<std::string> &words, const std::string &script,
                          std::vector<std::string> environment = {}, int time_limit_ms = 60000);

// What a run records.
struct recording {
    std::string file;
    process_result run;
    std::string trace;
};

recording record(const std::vector<std::string> &words, const std::string &script = "");

} // namespace kestro_tests
