// Voltage detector chips, by chip and channel.
#include "drv_basic/environment/drv_voltdetec.h"

#include "sim/devices/environment/detector.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) {
        refuse_if(b.all_at<voltage_detector::family>(b.instance(inst_id)).empty(), error::not_supported);
    });
}

} // namespace

uint32_t drv_voltdetec_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_voltdetec_exit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_voltdetec_get_voltage(uint32_t inst_id, uint32_t chip_id, uint32_t channel, uint32_t *voltage) {
    return operate([&](board &b) {
        refuse_null(voltage);
        const auto chip = b.find<voltage_detector::family>(inst_id, chip_id);
        *voltage = b.get(voltage_detector::wired_to(b, chip, channel), rail::millivolts);
    });
}
