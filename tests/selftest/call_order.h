// In which order a part makes its driver calls: a script says what each one answers, not which comes first.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

namespace kestro_tests {

// The driver calls of a part, without results: "drv_board_get_type(inst_id=0xffffffff)". Those that only read the board
// description are left out.
inline std::vector<std::string> calls_of(const std::vector<std::string> &options, const std::string &name) {
    const std::string trace = new_scratch_dir() + "/trace";
    std::vector<std::string> all = options;
    all.insert(all.end(), {"--trace", trace});
    run_part(all, name);
    std::vector<std::string> calls;
    std::istringstream lines(read_file(trace));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("drv_")) {
            calls.push_back(line.substr(0, line.find(" = ")));
        }
    }
    return calls;
}

// The same under a strict script, a line per call.
inline std::string driver_calls(const std::string &name, const std::string &script) {
    std::string calls;
    for (const std::string &call : calls_of({"--strict", "--script", scratch_file("script", script)}, name)) {
        calls += call + "\n";
    }
    return calls;
}

} // namespace kestro_tests
