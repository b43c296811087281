#include "tests/sweep/sweep.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <sstream>

#include "tests/support/board_copy.h"

namespace kestro_tests {

namespace {

bool is_comment(const std::string &line) {
    return line.starts_with("#");
}

driver_call call_of(const std::string &trace_line) {
    const size_t end = trace_line.find(") = ");
    return {trace_line.substr(0, end + 1), trace_line.substr(end + 1)};
}

std::vector<driver_call> calls_in(const std::string &trace) {
    std::vector<driver_call> calls;
    std::istringstream lines(trace);
    for (std::string line; std::getline(lines, line);) {
        if (!is_comment(line)) {
            calls.push_back(call_of(line));
        }
    }
    return calls;
}

// A script that crashes or hangs by itself leaves no run to compare with.
bool ends_well(const test_line &line) {
    return line.script.find("= crash") == std::string::npos && line.script.find("= hang") == std::string::npos;
}

// The operations that a line's script answers in their order, each of a row of the same ones once.
std::vector<std::string> steps_of(const test_line &line) {
    std::vector<std::string> steps;
    for (const std::string &operation : operations_in(line.script)) {
        if (steps.empty() || steps.back() != operation) {
            steps.push_back(operation);
        }
    }
    return steps;
}

bool begins_with(const std::vector<std::string> &steps, const std::vector<std::string> &first) {
    return first.size() <= steps.size() && std::equal(first.begin(), first.end(), steps.begin());
}

std::vector<test_line> differing_lines(const std::vector<test_line> &lines) {
    std::vector<test_line> kept;
    std::vector<std::vector<std::string>> known;
    for (const test_line &line : lines) {
        const std::vector<std::string> steps = steps_of(line);
        const bool adds = std::none_of(known.begin(), known.end(), [&](const std::vector<std::string> &other) {
            return begins_with(other, steps);
        });
        if (adds) {
            known.push_back(steps);
            kept.push_back(line);
        }
    }
    return kept;
}

const std::string &trace_path() {
    static const std::string path = new_scratch_dir() + "/trace";
    return path;
}

std::vector<good_run> find_swept_runs(const sub_command &command) {
    std::vector<test_line> lines = test_lines_of(command);
    std::erase_if(lines, [](const test_line &line) { return !ends_well(line); });
    if (lines.empty()) {
        lines.push_back({{command.module, command.name}, ""});
    }
    std::stable_sort(lines.begin(), lines.end(), [](const test_line &a, const test_line &b) {
        return operations_in(a.script).size() > operations_in(b.script).size();
    });
    std::vector<good_run> runs;
    for (const test_line &line : everything_is_tried() ? lines : differing_lines(lines)) {
        runs.push_back(run_well(line));
    }
    return runs;
}

// Output and trace of a run without buffer, in one text as they came.
std::string interleaved(const good_run &run) {
    process_options unbuffered;
    unbuffered.environment = {"LD_PRELOAD=" + build_dir() + "/tests/libunbuffered.so"};
    const process_result result =
        run_with({"--script", script_file(run.line.script), "--trace", "/proc/self/fd/1"}, run.line.words, unbuffered);
    return result.out;
}

} // namespace

const std::vector<sub_command> &sub_commands_that_wait() {
    static const std::vector<sub_command> waiting{{"log_test", "log_test_hook"}, {"watchdog_test", "auto_feed"}};
    return waiting;
}

bool waits_for_operator(const std::string &module, const std::string &name) {
    const std::vector<sub_command> &waiting = sub_commands_that_wait();
    return std::any_of(waiting.begin(), waiting.end(),
                       [&](const sub_command &command) { return command.module == module && command.name == name; });
}

std::vector<sub_command> sub_commands_swept_here() {
    std::vector<sub_command> chosen;
    for (const sub_command &command : all_sub_commands()) {
        if (is_tried_here(command.module + " " + command.name) && !waits_for_operator(command.module, command.name)) {
            chosen.push_back(command);
        }
    }
    return chosen;
}

const std::string &new_board() {
    static const board_copy board(board_used());
    return board.restored();
}

const std::string &board_used() {
    static const std::string state = [] {
        std::string made = new_scratch_dir();
        run_launcher({"--state", made}, {"-h"});
        return made;
    }();
    return state;
}

process_result run_with(std::vector<std::string> options, const std::vector<std::string> &words,
                        const process_options &process) {
    options.insert(options.end(), {"--state", new_board(), "--clock", "virtual"});
    return run_sim(options, words, process);
}

const std::string &script_file(const std::string &text) {
    static const std::string path = new_scratch_dir() + "/script";
    write_file(path, text + "\n");
    return path;
}

const std::string &trace_file() {
    write_file(trace_path(), "");
    return trace_path();
}

size_t calls_traced() {
    return calls_in(read_file(trace_path())).size();
}

good_run run_well(const test_line &line) {
    const process_result result = run_with({"--script", script_file(line.script), "--trace", trace_file()}, line.words);
    expect_clean_end(result, joined(line.words));
    return {line, calls_in(read_file(trace_path())), result.out, result.status};
}

const std::vector<good_run> &swept_runs(const sub_command &command) {
    static std::map<std::string, std::vector<good_run>> found;
    const auto [entry, is_new] = found.try_emplace(command.module + " " + command.name);
    if (is_new) {
        entry->second = find_swept_runs(command);
    }
    return entry->second;
}

std::vector<size_t> faulted_calls(const good_run &run) {
    // The whole-board run makes a thousand calls, most of them many times with another number.
    constexpr size_t many_calls = 200;
    const bool by_operation = run.calls.size() > many_calls;
    std::vector<size_t> faulted;
    std::set<std::string> seen;
    for (size_t n = 1; n <= run.calls.size(); ++n) {
        const std::string &made = run.calls[n - 1].made;
        if (seen.insert(by_operation ? operation_of(made) : made).second || everything_is_tried()) {
            faulted.push_back(n);
        }
    }
    return faulted;
}

std::vector<std::string> printed_before_calls(const good_run &run) {
    const std::string all = interleaved(run);
    std::vector<std::string> printed;
    std::string so_far;
    size_t at = 0;
    const auto pass = [&](const std::string &part) {
        const size_t found = all.find(part, at);
        if (found == std::string::npos) {
            ADD_FAILURE() << joined(run.line.words) << ": a call is missing without a buffer: " << part << "\n" << all;
            return;
        }
        so_far += all.substr(at, found - at);
        at = found + part.size();
    };
    for (const driver_call &call : run.calls) {
        pass(call.made);
        printed.push_back(so_far);
        pass(call.answered + "\n");
    }
    EXPECT_EQ(so_far + all.substr(std::min(at, all.size())), run.output) << joined(run.line.words);
    return printed;
}

std::string operation_of(const std::string &line) {
    return line.substr(0, line.find_first_of("( ="));
}

std::vector<std::string> operations_in(const std::string &script) {
    std::vector<std::string> operations;
    std::istringstream lines(script);
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, line.find_first_not_of(' '));
        if (!line.empty() && !is_comment(line)) {
            operations.push_back(operation_of(line));
        }
    }
    return operations;
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

// Its place in the list keeps names apart that differ in other signs than letters and digits.
std::string name_of_command(const testing::TestParamInfo<sub_command> &named) {
    std::string name = named.param.module + "_" + named.param.name + "_" + std::to_string(named.index);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char sign) { return isalnum(sign) == 0; }, '_');
    return name;
}

} // namespace kestro_tests
