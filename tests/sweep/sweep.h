// Runs for the sweeps: one command line, one fault.
#pragma once

#include <string>
#include <vector>

#include "tests/support/command.h"
#include "tests/support/command_list.h"

namespace kestro_tests {

// Words for a sub-command: none, too few, fitting, and too many for most.
extern const std::vector<std::vector<std::string>> word_sets;

std::vector<std::string> command_line(const sub_command &command, const std::vector<std::string> &words);

// The state directory of this test program.
const std::string &sweep_state();

process_result run_with(std::vector<std::string> options, const std::vector<std::string> &line,
                        const process_options &process = {});

// A run on a new board without any fault.
struct good_run {
    std::vector<std::string> calls; // the operations called, in order
    std::string trace;              // the same with inputs and outputs
    std::string output;
};

// Made once for each command line.
const good_run &good_run_of(const std::vector<std::string> &line);

// The sub-command with those of the word sets that lead it to the most driver calls.
std::vector<std::string> most_calling_line(const sub_command &command);

// The sub-command with each word set that makes it do something else than those before: words that are ignored, or
// missing in the same way, need no sweep of their own.
std::vector<std::vector<std::string>> differing_lines(const sub_command &command);

// A script that lets the calls before the n-th (from 1) pass and answers that one so.
std::string fault_at(const std::vector<std::string> &calls, size_t n, const std::string &fault);

// What must hold of every run, whatever the fault: it ends by itself with one of the program's exit statuses and
// reports nothing on standard error.
void expect_clean_end(const process_result &result, const std::string &what);

std::string joined(const std::vector<std::string> &words);

} // namespace kestro_tests
