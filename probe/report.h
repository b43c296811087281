// What the probe has to say on standard error, and how often it had to.
#pragma once

#include <string>

namespace kestro_probe {

// A deviation from the script or recording: makes the exit status 99. A child that the program forked keeps silent,
// so that its copy of the script is not judged a second time.
void report_finding(const std::string &text);

// Worth saying, but no deviation. What cannot be written to standard error counts as one.
void report_note(const std::string &text);

size_t findings();

// From here on this process is a forked child.
void become_child();
bool is_child();

// All of it, past interruptions; false when that cannot be.
bool write_whole(int file, const std::string &text);

} // namespace kestro_probe
