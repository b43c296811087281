// What diagnose_cmd_test and diag_test have in common: a small table of their own, without timing.
#pragma once

#include "shell/command_table.h"

// The tag names the module in its lines. Without a table, or without its one row, it says so and goes on: no word leads
// to the row then, and the usage is listed.
int run_diagnose_module(const command_row &row, int count, char **args, const char *tag);
