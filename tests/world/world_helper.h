// A program that makes each of the calls the world library stands in front of and prints what came of them.
#pragma once

// Each prints a line per call, "name: result", and takes the words after its own name.
int show_files(int count, char **words);
int show_status(int count, char **words);
int show_realpath(int count, char **words);
int show_directory(int count, char **words);
int change_entries(int count, char **words);
int run_script(int count, char **words);
int run_command(int count, char **words);
int show_environment(int count, char **words);
int use_watchdog(int count, char **words);
int show_clocks(int count, char **words);
int show_sleeps(int count, char **words);
int wait_for_signal(int count, char **words);
int show_timers(int count, char **words);
int show_waits(int count, char **words);
int sleep_in_threads(int count, char **words);
int show_threads(int count, char **words);
int allocate(int count, char **words);
