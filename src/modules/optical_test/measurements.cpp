// optical_test: what a module measures, and which of it is beyond a limit. Values that do not exist are shown as the
// library marks them, most often as "nan".
#include "modules/optical_test/measurements.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <type_traits>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"

namespace optical_commands {

namespace {

// Warnings and alarms alike: what each item is called, and the lines of its bitmaps and values.
struct limit_text {
    const char *title;
    const char *high;
    const char *low;
    const char *value;
    std::array<const char *, 7> names;
};

constexpr uint32_t first_limit_item = 0x50000;

constexpr limit_text warning_text = {
    "ddm_warning_info",
    "ddm_warning_value.warning_bit_map.highWarning_bit_map",
    "ddm_warning_value.warning_bit_map.lowWarning_bit_map",
    "ddm_warning_value.realtime_value.value",
    {"WARNING_TEMP", "WARNING_VOLTAGE", "WARNING_BIAS", "WARNING_TXPOWER", "WARNING_RXPOWER", "WARNING_LASER_TEMP",
     "WARNING_TEC_CURRENT"},
};

constexpr limit_text alarm_text = {
    "ddm_alarm_info",
    "ddm_alarm_value.alarm_bit_map.highAlarm_bit_map",
    "ddm_alarm_value.alarm_bit_map.lowAlarm_bit_map",
    "ddm_alarm_value.realtime_value.value",
    {"ALARM_TEMP", "ALARM_VOLTAGE", "ALARM_BIAS", "ALARM_TXPOWER", "ALARM_RXPOWER", "ALARM_LASER_TEMP",
     "ALARM_TEC_CURRENT"},
};

using limit_operation = decltype(drv_opt_get_ddm_warning_info);
static_assert(std::is_same_v<limit_operation, decltype(drv_opt_get_ddm_alarm_info)>);

// The outcome is that of the last item; what became of the others is in their lines.
int show_limits(const char *operation, const limit_text &text, int count, char **args) {
    const auto get_limit = find<limit_operation>(operation);
    if (get_limit == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    uint32_t ret = 0;
    for (uint32_t i = 0; i < text.names.size(); ++i) {
        drv_opt_ddm_warning limit = {};
        ret = get_limit(port.words.inst_id, &port.selector, first_limit_item + i, 0, &limit);
        printf("show %s %s,ret = 0x%x\n", text.names[i], text.title, ret);
        printf("%s :0x%x\n", text.high, limit.high_bit_map);
        printf("%s :0x%x\n", text.low, limit.low_bit_map);
        for (uint32_t n = 0; n < value_count(limit.realtime_value); ++n) {
            printf("%s[%d]           :%.2f\n", text.value, static_cast<int>(n),
                   static_cast<double>(limit.realtime_value.value[n]));
        }
    }
    return static_cast<int>(ret);
}

} // namespace

int get_optical_ddm_info(int count, char **args) {
    const auto get_ddm = find<decltype(drv_opt_get_ddm_info)>("drv_opt_get_ddm_info");
    if (get_ddm == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    const auto read = [&](uint32_t item, drv_opt_ddm_value &values) {
        return get_ddm(port.words.inst_id, &port.selector, item, &values);
    };
    drv_opt_ddm_value tx_power = {};
    drv_opt_ddm_value rx_power = {};
    drv_opt_ddm_value temperature = {};
    drv_opt_ddm_value bias = {};
    drv_opt_ddm_value voltage = {};
    read(ddm_tx_power, tx_power);
    read(ddm_rx_power, rx_power);
    read(ddm_temperature, temperature);
    read(ddm_bias, bias);
    const uint32_t ret = read(ddm_voltage, voltage);
    puts("Realtime information:");
    printf("realtime temperature            :%.2f\n", static_cast<double>(temperature.value[0]));
    printf("realtime voltage                :%.2f\n", static_cast<double>(voltage.value[0]));
    for (uint32_t i = 0; i < value_count(tx_power); ++i) {
        const int lane = static_cast<int>(i);
        printf("realtime Lane[%d] bias           :%.2f\n", lane, static_cast<double>(bias.value[i]));
        printf("realtime Lane[%d] txpower        :%.2f\n", lane, static_cast<double>(tx_power.value[i]));
        printf("realtime Lane[%d] rxpower        :%.2f\n", lane, static_cast<double>(rx_power.value[i]));
    }
    return static_cast<int>(ret);
}

int get_optical_ddm_warning_info(int count, char **args) {
    return show_limits("drv_opt_get_ddm_warning_info", warning_text, count, args);
}

int get_optical_ddm_alarm_info(int count, char **args) {
    return show_limits("drv_opt_get_ddm_alarm_info", alarm_text, count, args);
}

} // namespace optical_commands
