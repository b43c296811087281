// In which order a part makes its driver calls: a script says what each one answers, not which comes first.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tests/selftest/part.h"

namespace kestro_tests {

// The driver calls of a part on a simulated board, without results: "drv_board_get_type(inst_id=0xffffffff)".
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
// The driver calls of one part of the self-test in the order in which they are made.
#pragma once

#include <fstream>
#include <string>

#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

namespace kestro_tests {

// A line per call, without its result; calls that only read the board description are left out.
inline std::string driver_calls(const std::string &name, const std::string &script) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_part({"--strict", "--script", scratch_file("script", script), "--trace", trace}, name);
    std::ifstream lines(trace);
    std::string calls;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("drv_")) {
            calls += line.substr(0, line.find(')') + 1) + "\n";
        }
    }
    return calls;
}

} // namespace kestro_tests
