// Command lines whose handler cannot have its text area.
#pragma once

#include <string>

namespace kestro_tests {

// Expects this output and exit status when the text area, the last thing that the run allocates, cannot be had. The
// driver is not reached; the script is for the run that has it.
void expect_without_text_area(const std::string &line, const std::string &script, const std::string &output,
                              int status);

} // namespace kestro_tests
