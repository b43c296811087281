#include "selftest/power/power_unit.h"

#include "drv_basic/power/drv_power.h"

power_value read_power_property(const power_unit &unit, uint32_t type) {
    power_value read{};
    read.ret = drv_power_get_property(unit.slot_id, unit.power_id, type, &read.value);
    return read;
}

power_alarm read_power_alarm(const power_unit &unit, uint32_t type) {
    power_alarm read{};
    read.ret = drv_power_get_alarm(unit.slot_id, unit.power_id, type, &read.alarms, &read.sub_alarm);
    return read;
}
