// Command lines whose handler cannot have its text area.
#pragma once

#include <string>

#include "tests/support/process.h"

namespace kestro_tests {

struct starved_run {
    process_result result;
    std::string calls; // the trace
};

// The run whose text area, the last thing that it allocates, cannot be had. The script is not strict: most often the
// driver is not reached.
starved_run run_without_text_area(const std::string &line, const std::string &script);

// Expects this output and exit status of it.
void expect_without_text_area(const std::string &line, const std::string &script, const std::string &output,
                              int status);

} // namespace kestro_tests
