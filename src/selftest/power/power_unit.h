// One power supply, and what it is asked for.
#pragma once

#include <cstdint>

struct power_unit {
    uint32_t slot_id;  // of its power frame
    uint32_t power_id; // its place there
};

// Values are 0 where the driver writes none.
struct power_value {
    uint32_t ret;
    uint32_t value;
};

struct power_alarm {
    uint32_t ret;
    uint32_t alarms;
    uint32_t sub_alarm;
};

power_value read_power_property(const power_unit &unit, uint32_t type);
power_alarm read_power_alarm(const power_unit &unit, uint32_t type);
