#include "tests/support/failing_allocations.h"

#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

namespace kestro_tests {

namespace {

// A run whose N-th allocation fails, or none for 0.
starved_run run_with_failing_allocation(const std::string &line, const std::string &script, int n) {
    static const std::string state = new_scratch_dir();
    static const std::string script_file = new_scratch_dir() + "/script";
    static const std::string trace = new_scratch_dir() + "/trace";
    write_file(script_file, script + "\n");
    write_file(trace, "");
    std::vector<std::string> options = {"--state",  state,       "--clock", "virtual",
                                        "--script", script_file, "--trace", trace};
    if (n > 0) {
        options.insert(options.end(), {"--fail-alloc", std::to_string(n)});
    }
    const process_result result = run_sim(options, split_words(line));
    return {result, read_file(trace)};
}

} // namespace

// A failure of any allocation before the last shows in the output, one behind it never comes; so the last is found by
// halving.
starved_run run_without_text_area(const std::string &line, const std::string &script) {
    const std::string healthy = run_with_failing_allocation(line, script, 0).result.out;
    const auto shows = [&](int n) { return run_with_failing_allocation(line, script, n).result.out != healthy; };
    int last_seen = 1;
    int first_unseen = 1024;
    EXPECT_NE(healthy, "");
    EXPECT_TRUE(shows(last_seen));
    EXPECT_FALSE(shows(first_unseen));
    while (first_unseen - last_seen > 1) {
        const int middle = (last_seen + first_unseen) / 2;
        (shows(middle) ? last_seen : first_unseen) = middle;
    }
    return run_with_failing_allocation(line, script, last_seen);
}

void expect_without_text_area(const std::string &line, const std::string &script, const std::string &output,
                              int status) {
    if (lists_lines()) {
        return;
    }
    SCOPED_TRACE("kestro_test " + line);
    const process_result result = run_without_text_area(line, script).result;
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
}

} // namespace kestro_tests
