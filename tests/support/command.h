// Command tests: one command line of the real program, the driver calls it must make with what they answer, every byte
// it must print and its exit status.
//
// The script is the driver probe's language, one call a line, and it is strict: a call without a line, or a line
// without a call, fails the test. The clock is virtual, so nothing takes time.
#pragma once

#include <string>
#include <vector>

#include "tests/support/simulator.h"

namespace kestro_tests {

// The words of a command line, split at blanks; a word in single quotes may hold blanks or be empty.
std::vector<std::string> split_words(const std::string &line);

// Expects exactly this output and exit status, nothing on standard error.
void expect_run(const std::string &line, const std::string &script, const std::string &output, int status);

// The runs that follow are on a board that nobody has run anything on: its clock stands where a new one's does.
void begin_new_board();

// A sub-command that succeeds: prints the body, then the dispatcher its timing lines; status 0.
void expect_success(const std::string &line, const std::string &script, const std::string &body);

// A sub-command that fails: the body, the timing lines, the failure lines of sub-command and module; status 255.
void expect_failure(const std::string &line, const std::string &script, const std::string &body);

// The dispatcher's lines behind a sub-command that took no time.
extern const char *const timing_lines;

// The end line of the standard result print.
extern const char *const result_end;

// What a sub-command with a result print prints: its own lines, the items of the result print, and its end line.
std::string printed(const std::string &lines, const std::string &items);

// The banners around a test come in three widths: a line alone, with one line end in front, or with more around.
enum class banners { bare, narrow, wide };
std::string begin_banner(banners width, const std::string &test);
std::string framed(banners width, const std::string &test, const std::string &lines);
std::string framed(banners width, const std::string &test, const std::string &lines, const std::string &items);

// "kestro_test operate <name> fail! " with its line end.
std::string operate_fail(const std::string &name);

} // namespace kestro_tests
