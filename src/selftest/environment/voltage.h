// Voltages of a board or card: what the rails measure, whether they take a setting, and what their sources report.
#pragma once

#include <cstdint>

#include "selftest/report.h"

int check_voltage_values(uint32_t inst_id, report_sink sink);

// Sets the rails of the description to the middle of their range and leaves them there.
int check_voltage_setting(uint32_t inst_id, report_sink sink);

int check_vrm_alerts(uint32_t inst_id, report_sink sink);
int check_power_and_avs_dump(uint32_t inst_id, report_sink sink);
int check_power_stages(uint32_t inst_id, report_sink sink);

// All of these, in this order. The selector may be that of a card.
int voltage_section(uint32_t inst_id, report_sink sink);
