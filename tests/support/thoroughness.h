// How much is tried of what depends on the code alone, not on the processor or the sanitizers: which sub-commands are
// swept, at how many of its writes the store is killed. The desk's build tries all. The sanitized one, which is three
// times as slow, tries every third, the emulated one, five times as slow, every eighth; scripts/test --full tries all
// in each build.
#pragma once

#include <string>

namespace kestro_tests {

// scripts/test --full.
bool everything_is_tried();

// From one place of a row of many that are alike to the next that is tried: 1, 3 or 7. Odd, for such places come in
// pairs.
int stride();

// The same where trying one place takes a new state: 1, 9 or 21.
int long_stride();

// Whether this build tries what has that name. The sanitized and the emulated build choose different ones.
bool is_tried_here(const std::string &name);

} // namespace kestro_tests
