#include "tests/selftest/power_calls.h"

#include <gtest/gtest.h>
#include <regex>
#include <sstream>

#include "tests/selftest/part.h"

namespace kestro_tests {

namespace {

std::vector<std::string> calls_in(const std::string &trace) {
    static const std::regex call(R"(^drv_power_(\w+)\(slot_id=13, power_id=0(?:, type=(\d+))?(?:, value=(\d+))?.*)");
    std::vector<std::string> calls;
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (std::regex_match(line, found, call)) {
            calls.push_back(found[1].str() + (found[2].matched ? " " + found[2].str() : "") +
                            (found[3].matched ? " " + found[3].str() : ""));
        }
    }
    return calls;
}

} // namespace

void expect_calls(const std::string &name, const std::string &script, const std::vector<std::string> &calls) {
    const std::string trace = new_scratch_dir() + "/trace";
    const process_result run =
        run_part({"--strict", "--script", scratch_file("script", script), "--trace", trace}, name);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(calls_in(read_file(trace)), calls);
}

} // namespace kestro_tests
