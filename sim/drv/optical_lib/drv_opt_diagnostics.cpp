// What a module measures and what it complains of.
#include "sim/drv/optical_lib/optical_port.h"
#include "sim/drv/optical_lib/optical_readings.h"

#include <limits>

using namespace kestro_sim;
using optical_readings::quantity;

namespace {

constexpr uint32_t first_threshold = 0x20000;
constexpr uint32_t first_value = 0x30000;
constexpr uint32_t first_warning = 0x50000;

quantity quantity_of(uint32_t item, uint32_t first_item) {
    refuse_if(item < first_item || item - first_item >= optical_readings::quantities, error::bad_value);
    return static_cast<quantity>(item - first_item);
}

// Of a module that measures it, and has come up.
optics::memory map_with(board &b, uint32_t inst_id, const drv_opt_port_para *port_para, quantity what) {
    auto module = optical_port::read(b, inst_id, port_para);
    refuse_if(!optical_readings::measures(module.map, what), error::not_supported);
    refuse_if(!optical_readings::is_ready(module.map), error::not_ready);
    return module.map;
}

// The lanes that a value of this kind is given for; a value of the whole module stands in the first place.
uint32_t lanes_for(const optics::memory &map, const drv_opt_port_para *port_para, quantity what) {
    const uint32_t meant = optical_port::meant_lanes(port_para, optical_readings::lanes(map));
    return optical_readings::is_of_each_lane(what) ? meant : 1;
}

// Each lane in its own place; those between that are not asked for have no number.
drv_opt_ddm_value values_of(const optics::memory &map, uint32_t lanes, quantity what) {
    drv_opt_ddm_value values{};
    for (uint32_t lane = 0; lanes >> lane != 0; ++lane) {
        const bool is_meant = (lanes >> lane & 1U) != 0;
        values.value[lane] = is_meant ? static_cast<float>(optical_readings::measured(map, what, lane))
                                      : std::numeric_limits<float>::quiet_NaN();
        values.count = lane + 1;
    }
    return values;
}

// shift: 2 for alarms, 0 for warnings.
uint32_t complaints(uint32_t inst_id, const drv_opt_port_para *port_para, uint32_t item, uint32_t shift,
                    drv_opt_ddm_warning *complaint) {
    return operate([&](board &b) {
        refuse_null(complaint);
        const quantity what = quantity_of(item, first_warning);
        const auto map = map_with(b, inst_id, port_para, what);
        const uint32_t lanes = lanes_for(map, port_para, what);
        drv_opt_ddm_warning found{0, 0, values_of(map, lanes, what)};
        for (uint32_t lane = 0; lanes >> lane != 0; ++lane) {
            if ((lanes >> lane & 1U) != 0) {
                const uint32_t beyond = optical_readings::flags(map, what, lane) >> shift;
                found.high_bit_map |= (beyond >> 1U & 1U) << lane;
                found.low_bit_map |= (beyond & 1U) << lane;
            }
        }
        *complaint = found;
    });
}

// Values and thresholds that the library asks about, in the order of its items from 1 and from 8.
constexpr quantity asked[]{quantity::temperature, quantity::voltage,           quantity::bias,       quantity::rx_power,
                           quantity::tx_power,    quantity::laser_temperature, quantity::tec_current};
constexpr uint32_t items_of_support = 15;

} // namespace

uint32_t drv_opt_get_ddm_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item,
                              struct drv_opt_ddm_value *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const quantity what = quantity_of(item, first_value);
        const auto map = map_with(b, inst_id, port_para, what);
        *value = values_of(map, lanes_for(map, port_para, what), what);
    });
}

uint32_t drv_opt_get_ddm_warning_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item,
                                      uint32_t, struct drv_opt_ddm_warning *warning) {
    return complaints(inst_id, port_para, item, 0, warning);
}

uint32_t drv_opt_get_ddm_alarm_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item,
                                    uint32_t, struct drv_opt_ddm_warning *alarm) {
    return complaints(inst_id, port_para, item, 2, alarm);
}

// First the alarms of all, then the warnings; high before low.
uint32_t drv_opt_get_threshold_info(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item,
                                    float *value) {
    return operate([&](board &b) {
        refuse_null(value);
        constexpr uint32_t of_alarms = 2 * optical_readings::quantities;
        refuse_if(item < first_threshold || item - first_threshold >= 2 * of_alarms, error::bad_value);
        const uint32_t number = item - first_threshold;
        const auto what = static_cast<quantity>(number % of_alarms / 2);
        const auto module = optical_port::read(b, inst_id, port_para);
        refuse_if(!optical_readings::measures(module.map, what), error::not_supported);
        const uint32_t which = (number < of_alarms ? 0 : 2) + number % 2;
        *value = static_cast<float>(optical_readings::limits(module.map, what)[which]);
    });
}

// A module without diagnostics has a pin for it.
uint32_t drv_opt_get_los_status(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto module = optical_port::read(b, inst_id, port_para);
        refuse_if(!optical_module::is_ready(b, module.which), error::not_ready);
        const uint32_t lanes = optical_port::meant_lanes(port_para, optical_readings::lanes(module.map));
        const auto told = optical_readings::dark_lanes(module.map);
        *value = lanes & (told ? *told : optical_module::measure(b, module.which).lanes[0].is_dark ? 1U : 0U);
    });
}

uint32_t drv_opt_get_tx_fault_status(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto module = optical_port::read(b, inst_id, port_para);
        refuse_if(!optical_module::is_ready(b, module.which), error::not_ready);
        const uint32_t lanes = optical_port::meant_lanes(port_para, optical_readings::lanes(module.map));
        const auto told = optical_readings::failed_lanes(module.map);
        *value = (lanes & (told ? *told : b.get(module.which.module, optical_module::tx_fault))) != 0 ? 1 : 0;
    });
}

// Every kind that measures something has thresholds for it.
uint32_t drv_opt_get_diag_info_support_flag(uint32_t inst_id, const struct drv_opt_port_para *port_para, uint32_t item,
                                            uint32_t *flag) {
    return operate([&](board &b) {
        refuse_null(flag);
        refuse_if(item >= items_of_support, error::bad_value);
        const auto module = optical_port::read(b, inst_id, port_para);
        const bool has = item == 0 ? optical_readings::measures(module.map)
                                   : optical_readings::measures(module.map, asked[(item - 1) % std::size(asked)]);
        *flag = has ? 1 : 0;
    });
}
