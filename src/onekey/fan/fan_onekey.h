// The one-key tests of fan trays: what they tell is shown, what can be set is set, and their driver goes down and up.
//
// Result: 0 when nothing is wrong, else the sum of the driver codes and failures that were met, which names none of
// them. What a fan does not support is no failure. The tests run one at a time.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// All trays: presence, version of the board and direction of the air, then a row per fan.
uint32_t fan_check_get_info_one_key_test(report_sink sink);

// All trays: a row per fan with its alarms. Only a slot list that cannot be had fails it: the rows are for reading.
uint32_t fan_get_alarm_info(report_sink sink);

// All trays: label, ability file and expanded label. It fails for want of a slot list or of memory.
uint32_t fan_get_elabel_info(report_sink sink);

// All trays: the shift of each fan, and what its shifts allow.
uint32_t fan_get_all_shift_info(report_sink sink);

// All trays: the lamp is set to each of its colours and is left at the last one.
uint32_t fan_led_one_key_test(report_sink sink);

// Whether each fan of the tray has done what it was last told to.
uint32_t fan_get_init_status(uint32_t slot_id, report_sink sink);

// The tray's label is written over itself and read back.
uint32_t fan_elabel_test(uint32_t slot_id, uint32_t times, report_sink sink);

// Each fan is made faster or slower; that its speed moves is enough. The fan monitor ends.
uint32_t fan_speed_test(uint32_t slot_id, uint32_t times, report_sink sink);

// The whole tray is put into another shift, which each fan must reach.
uint32_t fan_shift_test(uint32_t slot_id, uint32_t times, report_sink sink);

// The driver of the tray is brought up again and again; taken down again and again, then brought up; or both in turns.
uint32_t fan_multi_init_test(uint32_t slot_id, uint32_t times, report_sink sink);
uint32_t fan_multi_deinit_test(uint32_t slot_id, uint32_t times, report_sink sink);
uint32_t fan_init_deinit_test(uint32_t slot_id, uint32_t times, report_sink sink);

// All of it, twice where there are rounds. The results are joined bit by bit.
uint32_t fan_check_one_key(report_sink sink);
