// Voltage rails: what the monitor measures, its two pairs of thresholds, and the findings of regulators and power
// stages. Only rails behind an adjustable regulator have a range to set them in; the measured value follows at once.
#include "drv_basic/environment/drv_voltage.h"

#include "sim/drv/drv_basic/management/board/unit.h"

#include <algorithm>
#include <span>

using namespace kestro_sim;

namespace {

constexpr device_kind rails{"sim_voltage", "rail"};
constexpr device_kind regulators{"sim_voltage", "vrm"};
constexpr device_kind stages{"sim_voltage", "power"};

struct status_bit {
    uint32_t mask;
    const char *meaning;
};

constexpr status_bit regulator_bits[] = {
    {0x20, "output over-voltage"}, {0x10, "output over-current"}, {0x08, "input under-voltage"},
    {0x04, "over-temperature"},    {0x02, "communication fault"},
};
constexpr status_bit stage_bits[] = {
    {0x01, "power not good"},
    {0x02, "output short"},
    {0x04, "over-temperature"},
};

// The names of a pair of thresholds.
struct threshold_pair {
    const char *low;
    const char *high;
};

constexpr threshold_pair warning{"warning_low", "warning_high"};
constexpr threshold_pair alarm_limits{"alarm_low", "alarm_high"};

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { refuse_if(b.ids(b.instance(inst_id), rails).empty(), error::not_supported); });
}

uint32_t get_thresholds(uint32_t inst_id, uint32_t voltage_id, const threshold_pair &pair, uint32_t *low_th,
                        uint32_t *high_th) {
    return operate([&](board &b) {
        refuse_null(low_th, high_th);
        const device rail = b.find(inst_id, rails, voltage_id);
        const uint32_t low = b.get(rail, pair.low);
        *high_th = b.get(rail, pair.high);
        *low_th = low;
    });
}

uint32_t set_thresholds(uint32_t inst_id, uint32_t voltage_id, const threshold_pair &pair, uint32_t low_th,
                        uint32_t high_th) {
    return operate([&](board &b) {
        const device rail = b.find(inst_id, rails, voltage_id);
        refuse_if(!b.has(rail, pair.low) || !b.has(rail, pair.high), error::not_supported);
        refuse_if(low_th > high_th, error::bad_value);
        b.put_all(rail, {{pair.low, low_th}, {pair.high, high_th}});
    });
}

// The peaks that were kept, and the present value: it is kept as soon as it gives way to another.
uint32_t highest(board &b, const device &rail, uint32_t value) {
    return std::max(b.get(rail, "history_max", value), value);
}

uint32_t lowest(board &b, const device &rail, uint32_t value) {
    return std::min(b.get(rail, "history_min", value), value);
}

std::string in_millivolts(uint32_t value) {
    return std::to_string(value) + " mV";
}

finding judge(uint32_t value, uint32_t low, uint32_t high) {
    if (value < low) {
        return {1, in_millivolts(value) + " is below " + in_millivolts(low)};
    }
    if (value > high) {
        return {2, in_millivolts(value) + " is above " + in_millivolts(high)};
    }
    return {0, in_millivolts(value) + " is within " + in_millivolts(low) + " to " + in_millivolts(high)};
}

uint32_t check_status(uint32_t inst_id, const device_kind &kind, uint32_t id, std::span<const status_bit> bits,
                      uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const uint32_t status = b.get(b.find(inst_id, kind, id), "status");
        uint32_t known = 0;
        finding found;
        for (const status_bit &bit : bits) {
            known |= bit.mask;
            if ((status & bit.mask) != 0) {
                add_fault(found, bit.meaning);
            }
        }
        if ((status & ~known) != 0) {
            add_fault(found, "unknown fault");
        }
        tell(found, result, buffer, len);
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
        *value = b.get(b.find(inst_id, rails, voltage_id), "millivolts");
    });
}

uint32_t drv_voltage_set_value(uint32_t inst_id, uint32_t voltage_id, uint32_t value) {
    return operate([&](board &b) {
        const device rail = b.find(inst_id, rails, voltage_id);
        refuse_if(value < b.get(rail, "set_low") || value > b.get(rail, "set_high"), error::bad_value);
        const uint32_t before = b.get(rail, "millivolts");
        b.put_all(rail, {{"millivolts", value},
                         {"history_max", highest(b, rail, before)},
                         {"history_min", lowest(b, rail, before)}});
    });
}

uint32_t drv_voltage_get_warning_th(uint32_t inst_id, uint32_t voltage_id, uint32_t *low_th, uint32_t *high_th) {
    return get_thresholds(inst_id, voltage_id, warning, low_th, high_th);
}

uint32_t drv_voltage_set_warning_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th) {
    return set_thresholds(inst_id, voltage_id, warning, low_th, high_th);
}

uint32_t drv_voltage_get_alarm_th(uint32_t inst_id, uint32_t voltage_id, uint32_t *low_th, uint32_t *high_th) {
    return get_thresholds(inst_id, voltage_id, alarm_limits, low_th, high_th);
}

uint32_t drv_voltage_set_alarm_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th) {
    return set_thresholds(inst_id, voltage_id, alarm_limits, low_th, high_th);
}

// A value on the threshold itself is still good.
uint32_t drv_voltage_get_alarm(uint32_t inst_id, uint32_t voltage_id, uint32_t alarm_type, uint32_t *alarm_status,
                               char *buffer, uint32_t len) {
    return operate([&](board &b) {
        const device rail = b.find(inst_id, rails, voltage_id);
        refuse_if(alarm_type > 1, error::bad_value);
        const threshold_pair &pair = alarm_type == 0 ? alarm_limits : warning;
        tell(judge(b.get(rail, "millivolts"), b.get(rail, pair.low), b.get(rail, pair.high)), alarm_status, buffer,
             len);
    });
}

uint32_t drv_voltage_get_history_value(uint32_t inst_id, uint32_t voltage_id, uint32_t *max_value,
                                       uint32_t *min_value) {
    return operate([&](board &b) {
        refuse_null(max_value, min_value);
        const device rail = b.find(inst_id, rails, voltage_id);
        const uint32_t value = b.get(rail, "millivolts");
        *max_value = highest(b, rail, value);
        *min_value = lowest(b, rail, value);
    });
}

uint32_t drv_voltage_check_vrm_alert(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *buffer, uint32_t len) {
    return check_status(inst_id, regulators, chip_id, regulator_bits, result, buffer, len);
}

uint32_t drv_voltage_check_power(uint32_t inst_id, uint32_t power_id, uint32_t *result, char *buffer, uint32_t len) {
    return check_status(inst_id, stages, power_id, stage_bits, result, buffer, len);
}

uint32_t drv_voltage_get_node_desc(uint32_t inst_id, uint32_t voltage_id, char *desc, uint32_t size) {
    return operate([&](board &b) { write_text(desc, size, b.text(b.find(inst_id, rails, voltage_id), "desc")); });
}
