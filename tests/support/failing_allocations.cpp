#include "tests/support/failing_allocations.h"

#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

namespace kestro_tests {

namespace {

// What a run prints when its N-th allocation fails, or none for 0. The script is not strict: the driver is not reached.
process_result run_with_failing_allocation(const std::string &line, const std::string &script, int n) {
    static const std::string state = new_scratch_dir();
    static const std::string script_file = new_scratch_dir() + "/script";
    write_file(script_file, script + "\n");
    std::vector<std::string> options = {"--state", state, "--clock", "virtual", "--script", script_file};
    if (n > 0) {
        options.insert(options.end(), {"--fail-alloc", std::to_string(n)});
    }
    return run_sim(options, split_words(line));
}

} // namespace

// A failure of any allocation before the last shows in the output, one behind it never comes; so the last is found by
// halving.
void expect_without_text_area(const std::string &line, const std::string &script, const std::string &output,
                              int status) {
    if (lists_lines()) {
        return;
    }
    SCOPED_TRACE("kestro_test " + line);
    const std::string healthy = run_with_failing_allocation(line, script, 0).out;
    ASSERT_NE(healthy, "");
    int last_seen = 1;
    int first_unseen = 1024;
    ASSERT_NE(run_with_failing_allocation(line, script, last_seen).out, healthy);
    ASSERT_EQ(run_with_failing_allocation(line, script, first_unseen).out, healthy);
    while (first_unseen - last_seen > 1) {
        const int middle = (last_seen + first_unseen) / 2;
        (run_with_failing_allocation(line, script, middle).out == healthy ? first_unseen : last_seen) = middle;
    }
    const process_result result = run_with_failing_allocation(line, script, last_seen);
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
}

} // namespace kestro_tests
