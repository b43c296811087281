// Runs the helper program in a world.
#pragma once

#include "tests/support/process.h"

#include <string>
#include <vector>

namespace kestro_tests {

// Runs a program in a directory with changes to the environment.
inline process_result run_with(const std::vector<std::string> &line, const std::vector<std::string> &environment,
                               const std::string &directory = "") {
    process_options options;
    options.environment = environment;
    options.directory = directory;
    return run_process(line, options);
}

inline process_result run_in_world(std::vector<std::string> words, std::vector<std::string> environment) {
    words.insert(words.begin(), build_dir() + "/tests/world/world_helper");
    environment.push_back("LD_PRELOAD=" + build_dir() + "/sim/libkestro_world.so");
    return run_with(words, environment);
}

// Each name with the same result.
inline std::string lines(const std::vector<std::string> &names, const std::string &result) {
    std::string text;
    for (const std::string &name : names) {
        text += name + ": " + result + "\n";
    }
    return text;
}

} // namespace kestro_tests
