#include "tests/support/test_lines.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>

#include "tests/support/cached.h"
#include "tests/support/command.h"

namespace kestro_tests {

namespace {

constexpr char list_variable[] = "KESTRO_TESTS_LINES";

// Asks the command tests for their lines. Their checks fail, for nothing is run; that is no matter here.
std::string ask_for_lines() {
    const std::string list = scratch_file("lines", "");
    process_options options;
    options.environment = {std::string(list_variable) + "=" + list, "GTEST_TOTAL_SHARDS", "GTEST_SHARD_INDEX",
                           "GTEST_FILTER"};
    run_process({test_program("command_tests"), "--gtest_brief=1"}, options);
    return read_file(list);
}

// A NUL stands behind each line and behind each script.
std::vector<std::string> texts_of(const std::string &list) {
    std::vector<std::string> texts;
    for (size_t at = 0; at < list.size();) {
        const size_t end = list.find('\0', at);
        texts.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return texts;
}

using lines_by_command = std::map<std::pair<std::string, std::string>, std::vector<test_line>>;

bool is_among(const std::vector<test_line> &lines, const test_line &line) {
    return std::any_of(lines.begin(), lines.end(), [&](const test_line &other) {
        return other.words == line.words && other.script == line.script;
    });
}

lines_by_command read_lines() {
    const std::vector<std::string> texts =
        texts_of(cached("command_lines", test_program("command_tests"), ask_for_lines));
    if (texts.empty() || texts.size() % 2 != 0) {
        throw std::runtime_error("the command tests gave no lines");
    }
    lines_by_command lines;
    for (size_t i = 0; i < texts.size(); i += 2) {
        const test_line line = {split_words(texts[i]), texts[i + 1]};
        if (line.words.size() < 2) {
            continue;
        }
        std::vector<test_line> &known = lines[{line.words[0], line.words[1]}];
        if (!is_among(known, line)) {
            known.push_back(line);
        }
    }
    return lines;
}

} // namespace

bool lists_lines() {
    return getenv(list_variable) != nullptr;
}

void list_line(const std::string &line, const std::string &script) {
    std::ofstream list(getenv(list_variable), std::ios::binary | std::ios::app);
    list << line << '\0' << script << '\0';
}

std::vector<test_line> test_lines_of(const sub_command &command) {
    static const lines_by_command lines = read_lines();
    const auto found = lines.find({command.module, command.name});
    return found != lines.end() ? found->second : std::vector<test_line>();
}

} // namespace kestro_tests
