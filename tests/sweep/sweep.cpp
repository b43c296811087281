#include "tests/sweep/sweep.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>

namespace kestro_tests {

const std::vector<std::vector<std::string>> word_sets = {
    {}, {"0xffffffff"}, {"0xffffffff", "0"}, {"0xffffffff", "0", "2"}, {"1", "2", "3", "4", "5", "6"},
};

std::vector<std::string> command_line(const sub_command &command, const std::vector<std::string> &words) {
    std::vector<std::string> line = {command.module, command.name};
    line.insert(line.end(), words.begin(), words.end());
    return line;
}

const std::string &sweep_state() {
    static const std::string state = new_scratch_dir();
    return state;
}

process_result run_with(std::vector<std::string> options, const std::vector<std::string> &line,
                        const process_options &process) {
    options.insert(options.end(), {"--state", sweep_state(), "--clock", "virtual"});
    return run_sim(options, line, process);
}

const good_run &good_run_of(const std::vector<std::string> &line) {
    static std::map<std::string, good_run> runs;
    static const std::string trace = new_scratch_dir() + "/trace";
    const auto [entry, is_new] = runs.try_emplace(joined(line));
    good_run &run = entry->second;
    if (!is_new) {
        return run;
    }
    const process_result result = run_with({"--reset", "--trace", trace}, line);
    expect_clean_end(result, joined(line));
    run.output = result.out;
    run.trace = read_file(trace);
    std::istringstream lines(run.trace);
    for (std::string call; std::getline(lines, call);) {
        run.calls.push_back(call.substr(0, call.find('(')));
    }
    return run;
}

std::vector<std::string> most_calling_line(const sub_command &command) {
    std::vector<std::string> best = command_line(command, {});
    size_t most = 0;
    for (const std::vector<std::string> &words : word_sets) {
        const std::vector<std::string> line = command_line(command, words);
        const size_t calls = good_run_of(line).calls.size();
        if (calls > most) {
            most = calls;
            best = line;
        }
    }
    return best;
}

std::vector<std::vector<std::string>> differing_lines(const sub_command &command) {
    std::set<std::string> seen;
    std::vector<std::vector<std::string>> lines;
    for (const std::vector<std::string> &words : word_sets) {
        const std::vector<std::string> line = command_line(command, words);
        const good_run &run = good_run_of(line);
        if (seen.insert(run.trace + run.output).second) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::string fault_at(const std::vector<std::string> &calls, size_t n, const std::string &fault) {
    const std::string &operation = calls.at(n - 1);
    const auto before = std::count(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(n) - 1, operation);
    std::string script;
    if (before > 0) {
        script = operation + " = pass x" + std::to_string(before) + "\n";
    }
    return script + operation + " = " + fault + "\n";
}

void expect_clean_end(const process_result &result, const std::string &what) {
    EXPECT_FALSE(result.timed_out) << what;
    EXPECT_TRUE(result.status == 0 || result.status == 1 || result.status == 255) << what << ": " << result.status;
    EXPECT_EQ(result.err, "") << what;
}

std::string joined(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

} // namespace kestro_tests
