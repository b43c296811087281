// Power detector chips.
#include "drv_basic/environment/drv_powerdetec.h"

#include "sim/devices/environment/power_monitor.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_powerdetec_init_chip(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { power_monitor::start(b, b.find<power_monitor::family>(inst_id, chip_id)); });
}

uint32_t drv_powerdetec_exit_chip(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { power_monitor::stop(b, b.find<power_monitor::family>(inst_id, chip_id)); });
}

uint32_t drv_powerdetec_get_power(uint32_t inst_id, uint32_t chip_id, uint32_t *power) {
    return operate([&](board &b) {
        refuse_null(power);
        const auto chip = b.find<power_monitor::family>(inst_id, chip_id);
        *power = power_monitor::milliwatts(power_monitor::measured(b, chip));
    });
}

uint32_t drv_powerdetec_get_shuntvoltage(uint32_t inst_id, uint32_t chip_id, uint32_t *voltage) {
    return operate([&](board &b) {
        refuse_null(voltage);
        *voltage = power_monitor::shunt_microvolts(b, b.find<power_monitor::family>(inst_id, chip_id));
    });
}

uint32_t drv_powerdetec_get_busvoltage(uint32_t inst_id, uint32_t chip_id, uint32_t *voltage) {
    return operate([&](board &b) {
        refuse_null(voltage);
        *voltage = power_monitor::measured(b, b.find<power_monitor::family>(inst_id, chip_id)).millivolts;
    });
}

uint32_t drv_powerdetec_get_chiptype(uint32_t inst_id, uint32_t chip_id, uint32_t *chiptype) {
    return operate([&](board &b) {
        refuse_null(chiptype);
        *chiptype = b.get(b.find<power_monitor::family>(inst_id, chip_id), power_monitor::type);
    });
}
