#include "tests/selftest/fan_run.h"

#include <gtest/gtest.h>
#include <vector>

#include "tests/support/simulator.h"

namespace kestro_tests {

void expect_fan_part(const std::string &name, const std::string &script, const std::string &lines, int result) {
    const std::string script_file = scratch_file("script", script);
    for (const std::vector<std::string> &words : {std::vector<std::string>{name}, {name, "report"}}) {
        const process_result run = run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--strict", "--script",
                                            script_file, "--run", build_dir() + "/tests/selftest_part"},
                                           words);
        EXPECT_EQ(run.out, lines + "result " + std::to_string(result) + "\n") << words.back();
        EXPECT_EQ(run.err, "") << words.back();
        EXPECT_EQ(run.status, 0) << words.back();
    }
}

} // namespace kestro_tests
