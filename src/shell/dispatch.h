// From words to handlers: one dispatcher for both levels of the command line.
#pragma once

#include "shell/command_table.h"

// Timing lines are printed for this value of the flag only.
constexpr int timing_off = 0;
constexpr int timing_on = 1;

// Echoes the words and lists the help text of every entry.
void print_usage(int count, char **args, command_table table);

// Runs the command that args[0] names with the words behind it. 0, also for help and for words that name no command;
// -1 when the handler failed.
int dispatch(int count, char **args, command_table table, int timing);

// A module command from its rows: allocates, registers, dispatches, frees. -1 without a word when memory is out: the
// dispatcher above reports the failed module.
int run_module(std::span<const command_row> rows, int count, char **args, int timing = timing_on);
