// What the one-key tests of fan trays have in common: which trays and fans there are, the frame of a test's lines, and
// how rounds are counted.
#pragma once

#include <cstdint>
#include <sys/time.h>

#include "drv_basic/management/drv_slot.h"
#include "selftest/report.h"

struct fan_unit {
    uint32_t slot_id; // of its tray
    uint32_t fan_id;
};

// Results of the tests that no driver gave.
constexpr uint32_t fan_label_error = 0x811101b1;
constexpr uint32_t fan_memory_error = 0x811104aa;

// What a driver code adds to the result of a test: what a fan does not support is no failure.
uint32_t fan_failure(uint32_t ret);

// What stands in the place of a value that could not be had.
const char *fan_no_value(uint32_t ret);

// The slots of fan trays, as many as the record holds, whatever the driver says. 0 or its code.
uint32_t get_fan_slots(drv_slot_list *list);

// The same, and how many fans a tray has, with a line where that cannot be had.
uint32_t list_fan_slots(drv_slot_list *list, report_sink sink);
uint32_t count_fans(uint32_t slot_id, uint32_t *num, report_sink sink);

// The line in front of a test, and behind some.
void report_rule(report_sink sink);

// The line behind a test: its time in whole seconds, then all of it in milliseconds. Tests of labels, tests with rounds
// and those that show values write the numbers each in their own width.
enum class fan_time_style { labels, rounds, values };
timeval fan_time();
void report_fan_time(fan_time_style style, const timeval &start, report_sink sink);

void sleep_milliseconds(uint32_t milliseconds);

// A round that failed, and what it adds to the result, which may be nothing.
struct round_outcome {
    bool is_good;
    uint32_t code;
};

struct round_sum {
    uint32_t good;
    uint32_t bad;
    uint32_t result;
};

void count_round(round_sum *sum, const round_outcome &round);
void report_rounds(const round_sum &sum, uint32_t times, report_sink sink);
