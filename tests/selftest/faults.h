// System calls that fail, for unit tests of the self-test and of what reads files; and after every test a count of what
// it left behind: open descriptors, loaded objects and allocated blocks.
#pragma once

namespace kestro_tests {

struct system_faults {
    bool no_memory = false;    // the next calloc fails
    bool no_child = false;     // fork fails with EAGAIN
    bool no_timer = false;     // timerfd_create fails with EMFILE
    bool file_shrinks = false; // the next file whose end is looked for loses its last byte then
    int interrupted_waits = 0; // so many waits for a child are broken off by a signal
};

// What fails from now on; every test starts with nothing failing.
system_faults &faults();

} // namespace kestro_tests
