// Handlers that are in no table, called by the program unlisted_command.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

namespace kestro_tests {

inline std::vector<std::string> unlisted_options(const std::string &script) {
    static const std::string state = new_scratch_dir();
    return {"--state",
            state,
            "--clock",
            "virtual",
            "--strict",
            "--script",
            scratch_file("script", script + "\n"),
            "--run",
            build_dir() + "/tests/unlisted_command"};
}

// What it prints, and what it returns.
inline void expect_unlisted(const std::string &line, const std::string &script, const std::string &output,
                            const std::string &result) {
    if (lists_lines()) {
        return;
    }
    SCOPED_TRACE(line);
    const process_result run = run_sim(unlisted_options(script), split_words(line));
    EXPECT_EQ(run.out, output + "result " + result + "\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

} // namespace kestro_tests
