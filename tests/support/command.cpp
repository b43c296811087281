#include "tests/support/command.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "tests/support/test_lines.h"

namespace kestro_tests {

const char *const timing_lines = "cmd_exec used second:0\r\ncmd_exec used millisecond:0\r\n";
const char *const result_end = "\r\n----kestro_test std result print end----\n";

std::string printed(const std::string &lines, const std::string &items) {
    return lines + items + result_end;
}

namespace {

std::string banner(banners width, const std::string &text) {
    const std::string line = "*********   " + text + ":  ********\n";
    switch (width) {
    case banners::bare:
        return line;
    case banners::narrow:
        return "\n" + line;
    case banners::wide:
        break;
    }
    return "\n\n" + line + "\n\n";
}

} // namespace

std::string begin_banner(banners width, const std::string &test) {
    return banner(width, test + " test begin");
}

std::string framed(banners width, const std::string &test, const std::string &lines) {
    const char *const end = width == banners::bare ? " test end" : " test   end";
    return begin_banner(width, test) + lines + banner(width, test + end);
}

std::string framed(banners width, const std::string &test, const std::string &lines, const std::string &items) {
    return framed(width, test, printed(lines, items));
}

std::string operate_fail(const std::string &name) {
    return "kestro_test operate " + name + " fail! \n";
}

std::vector<std::string> split_words(const std::string &line) {
    std::vector<std::string> words;
    std::string word;
    bool quoted = false;
    bool in_word = false;
    for (const char c : line) {
        if (c == '\'') {
            quoted = !quoted;
            in_word = true;
        } else if (c == ' ' && !quoted) {
            if (in_word) {
                words.push_back(word);
            }
            word.clear();
            in_word = false;
        } else {
            word += c;
            in_word = true;
        }
    }
    if (in_word) {
        words.push_back(word);
    }
    return words;
}

namespace {

std::string &state_of_runs() {
    static std::string state = new_scratch_dir();
    return state;
}

// An emulator has something to say itself about a program that crashes.
std::string errors_of_run(const process_result &result) {
    const bool is_emulator = getenv("KESTRO_EMULATOR") != nullptr && result.status > 128 &&
                             result.err.starts_with("qemu: uncaught target signal");
    return is_emulator ? "" : result.err;
}

} // namespace

void begin_new_board() {
    if (!lists_lines()) {
        state_of_runs() = new_scratch_dir();
    }
}

void expect_run(const std::string &line, const std::string &script, const std::string &output, int status) {
    if (lists_lines()) {
        list_line(line, script);
        return;
    }
    SCOPED_TRACE("kestro_test " + line);
    static const std::string script_file = new_scratch_dir() + "/script";
    write_file(script_file, script + "\n");
    const process_result result = run_sim(
        {"--state", state_of_runs(), "--clock", "virtual", "--strict", "--script", script_file}, split_words(line));
    EXPECT_EQ(result.out, output);
    EXPECT_EQ(errors_of_run(result), "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

void expect_success(const std::string &line, const std::string &script, const std::string &body) {
    expect_run(line, script, body + timing_lines, 0);
}

void expect_failure(const std::string &line, const std::string &script, const std::string &body) {
    const std::vector<std::string> words = split_words(line);
    expect_run(line, script, body + timing_lines + operate_fail(words.at(1)) + operate_fail(words.at(0)), 255);
}

} // namespace kestro_tests
