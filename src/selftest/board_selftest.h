// The one-key board self-test: all checks of the board in one fixed order.
#pragma once

#include <cstdint>
#include <span>

#include "selftest/report.h"

// Checks one subject of the board: 0 when every item passed or is not supported.
using selftest_step = int (*)(uint32_t inst_id, report_sink sink);

// A step that formats into a report buffer itself, from the fill length on, bounded by the capacity.
using buffered_step = int (*)(uint32_t inst_id, char *buffer, uint32_t capacity, uint32_t *fill);

// One section: its banner's name and its step, of one kind or the other. A section without a step prints its banner.
struct selftest_section {
    const char *name;
    selftest_step step;
    buffered_step buffered;
};

// Prints each section's banner and runs its step; the OR of the results. A failing section never stops the others.
int run_sections(std::span<const selftest_section> sections, uint32_t inst_id, report_sink sink);

// The whole board: the common sections, then those of a master or of a slave board. Always 0: the lines tell.
int board_selftest_run(uint32_t inst_id, report_sink sink);
