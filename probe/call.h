// One driver call of the main program: what it passes in, and the areas it gives for what comes out.
#pragma once

#include "probe/script.h"

namespace kestro_probe {

struct call {
    uint32_t operation;
    void *const *arguments;         // the address of each argument
    uint32_t thread;                // numbered from 1; 0: a thread of the drivers
    std::vector<size_t> capacities; // of the areas and arrays, as they were when the call was made
};

call make_call(uint32_t operation, void *const *arguments, uint32_t thread = 1);

// All inputs that are shown, in the order of the declaration.
std::vector<named_value> shown_inputs(const call &made);

// What stands in the output areas now.
std::vector<named_value> read_outputs(const call &made);

// Whether the call is one that the rule answers.
bool matches(const rule &wanted, const call &made);

// Writes the outputs that the rule names. Says what did not fit, a sentence each.
std::vector<std::string> write_outputs(const rule &answering, const call &made);

// Whether an area of the call is longer than what is shown of it.
bool shown_in_part(const call &made);

} // namespace kestro_probe
