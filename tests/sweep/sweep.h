// Runs for the sweeps: one command line, one fault.
//
// Every sub-command is swept with the lines of its own command tests and with their scripts: such a line is known to
// reach its driver calls behind names, files and eight words, whether or not the simulated chassis has the device. The
// simulated chassis answers what a script does not foresee, which is what comes after a fault; and it answers one line
// of each sub-command all alone, so that a fault meets drivers with a state, too.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/command.h"
#include "tests/support/command_list.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

namespace kestro_tests {

// Those that wait for Ctrl-C, whatever is typed: they have no line that ends by itself, and tests of their own.
const std::vector<sub_command> &sub_commands_that_wait();
bool waits_for_operator(const std::string &module, const std::string &name);

// Those that this build sweeps (thoroughness.h), without those that wait.
std::vector<sub_command> sub_commands_swept_here();

// The state of a board that nothing has been written to. The runs of this test program have it one after the other.
const std::string &new_board();

// The same state as the last run left it.
const std::string &board_used();

// On a new board: an identity test that is cut short leaves its test values behind.
process_result run_with(std::vector<std::string> options, const std::vector<std::string> &words,
                        const process_options &process = {});

// A file of this test program with this text, until the next one.
const std::string &script_file(const std::string &text);

struct driver_call {
    std::string made;     // operation and inputs, as a trace shows them
    std::string answered; // what a trace shows behind that
};

// A run without any fault.
struct good_run {
    test_line line;
    std::vector<driver_call> calls;
    std::string output;
    int status = 0;
};

good_run run_well(const test_line &line);

// A file for the trace of the next run, empty.
const std::string &trace_file();

// How many driver calls the run made that wrote that file.
size_t calls_traced();

// The runs that a sub-command is swept with, the one with most calls first: of the lines whose scripts answer the same
// operations in the same order one, and none whose operations another's begin with. All lines when all is swept.
const std::vector<good_run> &swept_runs(const sub_command &command);

// The calls of a run that are faulted, counted from 1: the first of those that are the same in operation and inputs (of
// a run with very many calls: in operation), or all of them.
std::vector<size_t> faulted_calls(const good_run &run);

// What the run had printed when it made each of its calls. Needs a run more, whose output is not buffered.
std::vector<std::string> printed_before_calls(const good_run &run);

// The name of the operation that a trace line or a line of a script begins with.
std::string operation_of(const std::string &line);

// The operations that a script answers, in its order.
std::vector<std::string> operations_in(const std::string &script);

// What must hold of every run, whatever the fault: it ends by itself with one of the program's exit statuses and
// reports nothing on standard error.
void expect_clean_end(const process_result &result, const std::string &what);

std::string joined(const std::vector<std::string> &words);

// What a sub-command's tests are called.
std::string name_of_command(const testing::TestParamInfo<sub_command> &named);

} // namespace kestro_tests
