// optical_test: what a module is made for: how far it reaches, and its thresholds. Both listings have the same frame
// and title.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"

namespace optical_commands {

namespace {

constexpr uint32_t first_threshold = 0x20000;

constexpr std::array threshold_names = {
    "TEMP_HIGH_ALARM",         "TEMP_LOW_ALARM",         "VOLT_HIGH_ALARM",          "VOLT_LOW_ALARM",
    "BIAS_HIGH_ALARM",         "BIAS_LOW_ALARM",         "TXPOWER_HIGH_ALARM",       "TXPOWER_LOW_ALARM",
    "RXPOWER_HIGH_ALARM",      "RXPOWER_LOW_ALARM",      "LASER_TEMP_HIGH_ALARM",    "LASER_TEMP_LOW_ALARM",
    "TEC_CURRENT_HIGH_ALARM",  "TEC_CURRENT_LOW_ALARM",  "TEMP_HIGH_WARNING",        "TEMP_LOW_WARNING",
    "VOLT_HIGH_WARNING",       "VOLT_LOW_WARNING",       "BIAS_HIGH_WARNING",        "BIAS_LOW_WARNING",
    "TXPOWER_HIGH_WARNING",    "TXPOWER_LOW_WARNING",    "RXPOWER_HIGH_WARNING",     "RXPOWER_LOW_WARNING",
    "LASER_TEMP_HIGH_WARNING", "LASER_TEMP_LOW_WARNING", "TEC_CURRENT_HIGH_WARNING", "TEC_CURRENT_LOW_WARNING",
};

void print_dashed_line() {
    puts("-------------------------------------------------------------------");
}

void print_title() {
    print_dashed_line();
    puts("Threshold information:");
}

} // namespace

int get_optical_trans_distance(int count, char **args) {
    const auto get_distance = find<decltype(drv_opt_get_trans_distance)>("drv_opt_get_trans_distance");
    if (get_distance == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    drv_opt_distance distance = {};
    const uint32_t ret = get_distance(port.words.inst_id, &port.selector, &distance);
    print_title();
    printf("om1_distance         :%.2f\n", static_cast<double>(distance.om1));
    printf("om2_distance         :%.2f\n", static_cast<double>(distance.om2));
    printf("om3_distance         :%.2f\n", static_cast<double>(distance.om3));
    printf("om4_distance         :%.2f\n", static_cast<double>(distance.om4));
    printf("sm_distance          :%.2f\n", static_cast<double>(distance.sm));
    printf("sm_fec_distance      :%.2f\n", static_cast<double>(distance.sm_fec));
    printf("sm_no_fec_distance   :%.2f\n", static_cast<double>(distance.sm_no_fec));
    printf("copper_distance      :%.2f\n", static_cast<double>(distance.copper));
    print_dashed_line();
    return static_cast<int>(ret);
}

// A threshold that a module lacks is no failure of the others: the outcome is that of the last one.
int get_optical_threshold_info(int count, char **args) {
    const auto get_threshold = find<decltype(drv_opt_get_threshold_info)>("drv_opt_get_threshold_info");
    if (get_threshold == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    print_title();
    uint32_t ret = 0;
    for (uint32_t i = 0; i < threshold_names.size(); ++i) {
        float threshold = 0;
        ret = get_threshold(port.words.inst_id, &port.selector, first_threshold + i, &threshold);
        printf("%-25s Threshold      :%.2f\n", threshold_names[i], static_cast<double>(threshold));
    }
    print_dashed_line();
    return static_cast<int>(ret);
}

} // namespace optical_commands
