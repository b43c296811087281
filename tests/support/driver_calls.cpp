#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>
#include <sstream>

namespace kestro_tests {

process_result make_calls(const std::vector<std::string> &options, const std::vector<std::string> &lines) {
    std::vector<std::string> argv{launcher()};
    argv.insert(argv.end(), options.begin(), options.end());
    argv.insert(argv.end(), {"--run", "kestro_call", "--"});
    argv.insert(argv.end(), lines.begin(), lines.end());
    return run_process(argv);
}

std::string calls_of(const std::vector<std::string> &options, const std::vector<std::string> &lines) {
    const process_result result = make_calls(options, lines);
    EXPECT_LE(result.status, 1);
    EXPECT_EQ(result.err, "");
    return result.out;
}

std::string without_calls(const std::string &printed) {
    std::istringstream lines(printed);
    std::string answers;
    for (std::string line; std::getline(lines, line);) {
        // No value of an input holds a closing bracket and an equals sign in a row, save a text made for it.
        const size_t at = line.starts_with('#') ? std::string::npos : line.find(") = ");
        answers += (at == std::string::npos ? line : line.substr(at + 4)) + "\n";
    }
    return answers;
}

std::string answers_of(const std::vector<std::string> &options, const std::vector<std::string> &lines) {
    return without_calls(calls_of(options, lines));
}

} // namespace kestro_tests
