// Writes the lines of a trace, each at once: a call's line is begun before the driver is entered and ended when it came
// back, so a driver that crashes leaves its call as the last thing that stands there.
//
// Where another line comes in between (of another thread, of a callback, of a forked child), the begun one is closed
// with begun_mark, and stands there again as a whole when its call has come back.
#pragma once

#include <cstdint>
#include <string>

namespace kestro_probe {

// file: open for appending. name: what reports call it.
void start_trace(int file, const std::string &name);
bool is_tracing();

// Gives what end_line needs to know its line again.
uint64_t begin_line(const std::string &head);
void end_line(uint64_t begun, const std::string &head, const std::string &tail);

void write_line(const std::string &text);

} // namespace kestro_probe
