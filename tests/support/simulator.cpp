#include "tests/support/simulator.h"

#include "sim/launcher/launch.h"
#include "tests/support/fork_server/client.h"
#include "tests/support/test_lines.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <unistd.h>

namespace kestro_tests {

namespace {

using kestro_sim::launch_options;
using texts = std::vector<std::string>;

struct text_option {
    const char *name;
    std::string launch_options::*value;
};

constexpr std::array<text_option, 10> text_options{{
    {"--board", &launch_options::board},
    {"--clock", &launch_options::clock},
    {"--state", &launch_options::state},
    {"--root", &launch_options::root},
    {"--script", &launch_options::script},
    {"--trace", &launch_options::trace},
    {"--replay", &launch_options::replay},
    {"--fail-call", &launch_options::fail_call},
    {"--signal-call", &launch_options::signal_call},
    {"--run", &launch_options::run},
}};

bool take_flag(const std::string &name, launch_options &taken) {
    if (name == "--strict") {
        taken.strict = true;
    } else if (name == "--reset") {
        taken.reset = true;
    } else {
        return false;
    }
    return true;
}

std::string *value_of(const std::string &name, launch_options &taken) {
    if (name == "--fail-alloc") {
        return &taken.fail_alloc;
    }
    for (const text_option &known : text_options) {
        if (name == known.name) {
            return &(taken.*known.value);
        }
    }
    return nullptr;
}

// The options as kestro_sim::read_options takes them, for what the tests write; nothing when that has to judge.
std::optional<launch_options> plain_options(const texts &options) {
    launch_options taken;
    for (size_t i = 0; i < options.size(); ++i) {
        if (take_flag(options[i], taken)) {
            continue;
        }
        std::string *value = value_of(options[i], taken);
        if (value == nullptr || i + 1 == options.size()) {
            return std::nullopt;
        }
        *value = options[++i];
    }
    return taken;
}

// The environment of the test program, lent to the launcher's functions and put back as it was.
class lent_environment {
  public:
    explicit lent_environment(const texts &changes) : before_(merged_environment({})) {
        set_all(merged_environment(changes));
    }
    lent_environment(const lent_environment &) = delete;
    lent_environment &operator=(const lent_environment &) = delete;
    ~lent_environment() {
        set_all(before_);
    }

  private:
    static void set_all(const texts &wanted) {
        clearenv();
        for (const std::string &variable : wanted) {
            const size_t name = variable.find('=');
            setenv(variable.substr(0, name).c_str(), variable.c_str() + name + 1, 1);
        }
    }

    texts before_;
};

process_result run_from_server(const launch_options &options, const texts &words, const process_options &process) {
    texts argv;
    texts environment;
    {
        const lent_environment lent(process.environment);
        argv = {kestro_sim::make_ready(options, build_dir()).value().string()};
        environment = merged_environment({});
    }
    argv.insert(argv.end(), words.begin(), words.end());
    return run_forked(argv, environment, process);
}

// Every 25th command line, the same ones each time, whatever the directories of the run.
bool is_in_sample(const texts &words) {
    constexpr uint32_t one_in = 25;
    uint32_t hash = 2166136261U;
    for (const std::string &word : words) {
        for (const char c : word + ' ') {
            hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
        }
    }
    return hash % one_in == 0;
}

bool all_are_started() {
    static const char *const asked = getenv("KESTRO_TESTS_STARTED");
    return asked != nullptr && std::string(asked) == "1";
}

} // namespace

namespace {

std::string own_launcher() {
    return build_dir() + "/kestro_sim";
}

process_result run_through(const std::string &launcher, const texts &options, const texts &words,
                           const process_options &process) {
    texts argv = {launcher};
    argv.insert(argv.end(), options.begin(), options.end());
    argv.emplace_back("--");
    argv.insert(argv.end(), words.begin(), words.end());
    return run_process(argv, process);
}

} // namespace

process_result run_launcher(const texts &options, const texts &words, const process_options &process) {
    // What is preloaded is of the build under test.
    const bool preloads = std::any_of(process.environment.begin(), process.environment.end(),
                                      [](const std::string &variable) { return variable.starts_with("LD_PRELOAD="); });
    return run_through(preloads ? own_launcher() : launcher(), options, words, process);
}

process_result run_forked_always(const texts &options, const texts &words, const process_options &process) {
    return run_from_server(plain_options(options).value(), words, process);
}

process_result run_sim(const texts &options, const texts &words, const process_options &process) {
    if (lists_lines()) {
        return {};
    }
    const std::optional<launch_options> plain = plain_options(options);
    if (is_in_sample(words)) {
        return run_through(own_launcher(), options, words, process);
    }
    if (all_are_started() || !process.directory.empty() || !plain) {
        return run_launcher(options, words, process);
    }
    try {
        return run_from_server(*plain, words, process);
    } catch (const kestro_sim::launch_error &) {
        return run_launcher(options, words, process);
    }
}

} // namespace kestro_tests
