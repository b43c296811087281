// Stops a process, or lets the disk fill up, at any chosen write that the store makes: stands in front of the C
// library's calls that change files.
#pragma once

#include <functional>
#include <string>

namespace kestro_tests {

enum class fault {
    killed,        // the process ends with half of the write done
    full_once,     // that write has no room, half of it is done
    full_for_good, // that one and all after it
};

// What came of the work.
enum class outcome { done, refused, killed };

// Runs the work in a child with that fault at the n-th change of a file, counted from 1. Refused is work that threw.
outcome run_with_fault(fault kind, int n, const std::function<void()> &work);

} // namespace kestro_tests
