// Temperature detector chips, by chip and channel.
#include "drv_basic/environment/drv_tempdetec.h"

#include "sim/devices/environment/detector.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_tempdetec_get_temperature(uint32_t inst_id, uint32_t chip_id, uint32_t channel, int32_t *temperature) {
    return operate([&](board &b) {
        refuse_null(temperature);
        const auto chip = b.find<temperature_detector::family>(inst_id, chip_id);
        *temperature = sensor::celsius(b, temperature_detector::wired_to(b, chip, channel));
    });
}
