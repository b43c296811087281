// Voltage rails: what the monitor measures, its two pairs of thresholds, and the findings of regulators and power
// stages.
#include "drv_basic/environment/drv_voltage.h"

#include "sim/devices/environment/rail.h"
#include "sim/devices/environment/temperature.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<rail::family>(b.instance(inst_id)).empty(), error::not_supported); });
}

uint32_t get_thresholds(uint32_t inst_id, uint32_t voltage_id, rail::limits pair, uint32_t *low_th, uint32_t *high_th) {
    return operate([&](board &b) {
        refuse_null(low_th, high_th);
        const auto [low, high] = rail::thresholds(b, b.find<rail::family>(inst_id, voltage_id), pair);
        *low_th = low;
        *high_th = high;
    });
}

uint32_t set_thresholds(uint32_t inst_id, uint32_t voltage_id, rail::limits pair, uint32_t low_th, uint32_t high_th) {
    return operate([&](board &b) {
        rail::set_thresholds(b, b.find<rail::family>(inst_id, voltage_id), pair, {low_th, high_th});
    });
}

} // namespace

uint32_t drv_voltage_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_voltage_exit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_voltage_get_value(uint32_t inst_id, uint32_t voltage_id, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(b.find<rail::family>(inst_id, voltage_id), rail::millivolts);
    });
}

// More volts are more heat, and that shows by and by.
uint32_t drv_voltage_set_value(uint32_t inst_id, uint32_t voltage_id, uint32_t value) {
    return operate([&](board &b) {
        const auto which = b.find<rail::family>(inst_id, voltage_id);
        change writes;
        rail::set_millivolts(b, writes, which, value);
        sensor::keep_course(b, writes, which.instance);
        b.commit(writes);
    });
}

uint32_t drv_voltage_get_warning_th(uint32_t inst_id, uint32_t voltage_id, uint32_t *low_th, uint32_t *high_th) {
    return get_thresholds(inst_id, voltage_id, rail::limits::warning, low_th, high_th);
}

uint32_t drv_voltage_set_warning_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th) {
    return set_thresholds(inst_id, voltage_id, rail::limits::warning, low_th, high_th);
}

uint32_t drv_voltage_get_alarm_th(uint32_t inst_id, uint32_t voltage_id, uint32_t *low_th, uint32_t *high_th) {
    return get_thresholds(inst_id, voltage_id, rail::limits::alarm, low_th, high_th);
}

uint32_t drv_voltage_set_alarm_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th) {
    return set_thresholds(inst_id, voltage_id, rail::limits::alarm, low_th, high_th);
}

// Alarm type 0 asks for alarms, 1 for warnings.
uint32_t drv_voltage_get_alarm(uint32_t inst_id, uint32_t voltage_id, uint32_t alarm_type, uint32_t *alarm_status,
                               char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const auto which = b.find<rail::family>(inst_id, voltage_id);
        refuse_if(alarm_type > 1, error::bad_value);
        const rail::limits pair = alarm_type == 0 ? rail::limits::alarm : rail::limits::warning;
        tell(rail::judge(b, which, pair), alarm_status, buffer, len);
    });
}

uint32_t drv_voltage_get_history_value(uint32_t inst_id, uint32_t voltage_id, uint32_t *max_value,
                                       uint32_t *min_value) {
    return operate([&](board &b) {
        refuse_null(max_value, min_value);
        const auto [low, high] = rail::history(b, b.find<rail::family>(inst_id, voltage_id));
        *max_value = high;
        *min_value = low;
    });
}

uint32_t drv_voltage_check_vrm_alert(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *buffer, uint32_t len) {
    return operate(
        [&](board &b) { tell(regulator::check(b, b.find<regulator::family>(inst_id, chip_id)), result, buffer, len); });
}

uint32_t drv_voltage_check_power(uint32_t inst_id, uint32_t power_id, uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        tell(power_stage::check(b, b.find<power_stage::family>(inst_id, power_id)), result, buffer, len);
    });
}

// As with the scaling controllers: what does not fit is refused.
uint32_t drv_voltage_dump_power(uint32_t inst_id, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const auto stages = b.all_at<power_stage::family>(b.instance(inst_id));
        refuse_if(stages.empty(), error::not_supported);
        std::string dump;
        for (const auto &stage : stages) {
            dump += power_stage::dump_line(b, stage);
        }
        write_text(buffer, len, dump);
    });
}

uint32_t drv_voltage_get_node_desc(uint32_t inst_id, uint32_t voltage_id, char *desc, uint32_t size) {
    return operate(
        [&](board &b) { write_text(desc, size, b.text(b.find<rail::family>(inst_id, voltage_id), rail::desc)); });
}
