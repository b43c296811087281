// What a test program and the fork server say to each other on their socket. Widths are fixed: the server may be a
// 32-bit program under emulation.
//
// Test program to server: a head, with the two descriptors of the run's standard output and standard error; then `size`
// bytes of texts, each with its NUL: the working directory (empty: the server's own), the words, the environment.
// Server to test program: the new process's id, and when it has ended, its status as waitpid gives it. Of a rehearsal
// (rehearsal.h): 0 and 0, when it is over.
#pragma once

#include <cstdint>

namespace kestro_tests {

struct run_request {
    uint32_t size;
    uint32_t words;
    uint32_t variables;
    uint32_t is_rehearsal;
};

constexpr int descriptors_of_run = 2;

// Names the server's end of the socket, a descriptor.
constexpr char server_variable[] = "KESTRO_TESTS_FORK_SERVER";

} // namespace kestro_tests
