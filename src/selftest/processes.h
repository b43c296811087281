// Child programs and shared objects of the self-test.
#pragma once

#include <cstdint>

// Runs a program and waits for it. 0 whatever became of the program; what keeps it from starting is logged.
int run_program(const char *path, char *const argv[], char *const environment[]);

// The board's install script: the first of its two places that exists, else null.
const char *find_install_script();
int install_script_present();

// Runs the install script with the number of a test. A missing script is logged.
void run_install_script(uint32_t test_number);

// Opens a shared object lazily and for all to see, and looks a symbol up. The handle is the caller's to close; null,
// with the reason logged, when either fails.
void *load_symbol(const char *symbol, const char *file, void **handle);

// A periodic timer on the monotonic clock whose first expiry is one period away; non-blocking, closed on exec.
// -1 when there is no timer, -2 when it cannot be armed.
int timer_fd_create(long seconds, long nanoseconds);
