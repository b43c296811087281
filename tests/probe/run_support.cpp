// The tiny program with the probe's library preloaded, through the emulator where the build needs one.
#include "tests/probe/run_support.h"

namespace kestro_tests {

process_result run_tiny(const std::vector<std::string> &words, std::vector<std::string> environment,
                        int time_limit_ms) {
    std::vector<std::string> argv{build_dir() + "/tests/tiny/tiny_program"};
    argv.insert(argv.end(), words.begin(), words.end());
    process_options options;
    options.environment = std::move(environment);
    options.environment.push_back("LD_PRELOAD=" + build_dir() + "/probe/libkestro_probe.so");
    options.time_limit_ms = time_limit_ms;
    return run_process(argv, options);
}

process_result run_script(const std::vector<std::string> &words, const std::string &script,
                          std::vector<std::string> environment, int time_limit_ms) {
    environment.push_back("KESTRO_PROBE_SCRIPT=" + scratch_file("rules", script));
    return run_tiny(words, std::move(environment), time_limit_ms);
}

recording record(const std::vector<std::string> &words, const std::string &script) {
    const std::string file = new_scratch_dir() + "/trace";
    std::vector<std::string> environment{"KESTRO_PROBE_TRACE=" + file};
    if (!script.empty()) {
        environment.push_back("KESTRO_PROBE_SCRIPT=" + scratch_file("rules", script));
    }
    const process_result run = run_tiny(words, environment);
    return {file, run, read_file(file)};
}

} // namespace kestro_tests
