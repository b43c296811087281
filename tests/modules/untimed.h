// Modules that dispatch without timing: their sub-commands print no lines about the time they took.
#pragma once

#include <string>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

namespace kestro_tests {

inline void expect_untimed_success(const std::string &line, const std::string &script, const std::string &body) {
    expect_run(line, script, body, 0);
}

inline void expect_untimed_failure(const std::string &line, const std::string &script, const std::string &body) {
    const std::vector<std::string> words = split_words(line);
    expect_run(line, script, body + operate_fail(words.at(1)) + operate_fail(words.at(0)), 255);
}

// The names of the driver operations in the order of the calls, a blank behind each. A script does not judge the order.
inline std::string calls_in_order(const std::string &line, const std::string &script) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--script", scratch_file("script", script + "\n"),
             "--trace", trace},
            split_words(line));
    std::string names;
    const std::string calls = read_file(trace);
    for (size_t at = 0; at < calls.size(); at = calls.find('\n', at) + 1) {
        names += calls.substr(at, calls.find('(', at) - at) + " ";
    }
    return names;
}

} // namespace kestro_tests
