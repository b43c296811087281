// Temperature sensors: what they measure, their two pairs of thresholds, and whether a value is beyond them.
#include "drv_basic/environment/drv_temperature.h"

#include "sim/devices/environment/temperature.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<sensor::family>(b.instance(inst_id)).empty(), error::not_supported); });
}

uint32_t get_thresholds(uint32_t inst_id, uint32_t temperature_id, sensor::limits pair, int32_t *low_th,
                        int32_t *high_th) {
    return operate([&](board &b) {
        refuse_null(low_th, high_th);
        const auto [low, high] = sensor::thresholds(b, b.find<sensor::family>(inst_id, temperature_id), pair);
        *low_th = low;
        *high_th = high;
    });
}

uint32_t set_thresholds(uint32_t inst_id, uint32_t temperature_id, sensor::limits pair, int32_t low_th,
                        int32_t high_th) {
    return operate([&](board &b) {
        sensor::set_thresholds(b, b.find<sensor::family>(inst_id, temperature_id), pair, {low_th, high_th});
    });
}

} // namespace

uint32_t drv_temperature_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_temperature_exit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_temperature_get_value(uint32_t inst_id, uint32_t temperature_id, int32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = sensor::celsius(b, b.find<sensor::family>(inst_id, temperature_id));
    });
}

uint32_t drv_temperature_get_board_value(int32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto sensors = b.all_at<sensor::family>(b.self());
        refuse_if(sensors.empty(), error::not_supported);
        int32_t hottest = INT32_MIN;
        for (const auto &which : sensors) {
            hottest = std::max(hottest, sensor::celsius(b, which));
        }
        *value = hottest;
    });
}

uint32_t drv_temperature_get_warning_th(uint32_t inst_id, uint32_t temperature_id, int32_t *low_th, int32_t *high_th) {
    return get_thresholds(inst_id, temperature_id, sensor::limits::warning, low_th, high_th);
}

uint32_t drv_temperature_set_warning_th(uint32_t inst_id, uint32_t temperature_id, int32_t low_th, int32_t high_th) {
    return set_thresholds(inst_id, temperature_id, sensor::limits::warning, low_th, high_th);
}

uint32_t drv_temperature_get_alarm_th(uint32_t inst_id, uint32_t temperature_id, int32_t *low_th, int32_t *high_th) {
    return get_thresholds(inst_id, temperature_id, sensor::limits::alarm, low_th, high_th);
}

uint32_t drv_temperature_set_alarm_th(uint32_t inst_id, uint32_t temperature_id, int32_t low_th, int32_t high_th) {
    return set_thresholds(inst_id, temperature_id, sensor::limits::alarm, low_th, high_th);
}

uint32_t drv_temperature_get_alarm(uint32_t inst_id, uint32_t temperature_id, uint32_t *alarm_status) {
    return operate([&](board &b) {
        refuse_null(alarm_status);
        *alarm_status = sensor::alarm_status(b, b.find<sensor::family>(inst_id, temperature_id));
    });
}

uint32_t drv_temperature_get_node_desc(uint32_t inst_id, uint32_t temperature_id, char *desc, uint32_t size) {
    return operate([&](board &b) {
        write_text(desc, size, b.text(b.find<sensor::family>(inst_id, temperature_id), sensor::desc));
    });
}
