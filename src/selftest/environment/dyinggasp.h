// Dying gasp: the simulated power failure, and the lines by which cards are told of it.
#pragma once

#include <cstdint>

#include "selftest/report.h"

int check_dyinggasp_simulation(uint32_t inst_id, report_sink sink);
int check_dyinggasp_cards(uint32_t inst_id, report_sink sink);
int dyinggasp_section(uint32_t inst_id, report_sink sink);
