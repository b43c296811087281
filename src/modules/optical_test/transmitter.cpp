// optical_test: what is set in a module (its transmitters, its rate) and the recovery of the bus that leads to it.
#include <cstdint>
#include <cstdio>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/measurements.h"
#include "modules/optical_test/port.h"

namespace optical_commands {

namespace {

// A transmitter needs that long until its light, or the lack of it, is measured.
constexpr uint32_t laser_settle_us = 1000000;

struct transmitter_operations {
    decltype(drv_opt_get_disable_status) *get_disabled;
    decltype(drv_opt_set_disable_status) *set_disabled;
    decltype(drv_cbb_optical_delay_nointerupt) *delay;
    decltype(drv_opt_get_ddm_info) *get_ddm;
};

// False at the first one that is missing.
bool find_all(transmitter_operations &driver) {
    driver.get_disabled = find<decltype(drv_opt_get_disable_status)>("drv_opt_get_disable_status");
    if (driver.get_disabled == nullptr) {
        return false;
    }
    driver.set_disabled = find<decltype(drv_opt_set_disable_status)>("drv_opt_set_disable_status");
    if (driver.set_disabled == nullptr) {
        return false;
    }
    driver.delay = find<decltype(drv_cbb_optical_delay_nointerupt)>("drv_cbb_optical_delay_nointerupt");
    if (driver.delay == nullptr) {
        return false;
    }
    driver.get_ddm = find<decltype(drv_opt_get_ddm_info)>("drv_opt_get_ddm_info");
    return driver.get_ddm != nullptr;
}

uint32_t show_powers(const selected_port &port, const transmitter_operations &driver) {
    drv_opt_ddm_value tx_power = {};
    drv_opt_ddm_value rx_power = {};
    uint32_t ret = driver.get_ddm(port.words.inst_id, &port.selector, ddm_tx_power, &tx_power);
    ret |= driver.get_ddm(port.words.inst_id, &port.selector, ddm_rx_power, &rx_power);
    for (uint32_t i = 0; i < value_count(tx_power); ++i) {
        const int lane = static_cast<int>(i);
        printf("realtime Lane[%d] txpower        :%.2f\n", lane, static_cast<double>(tx_power.value[i]));
        printf("realtime Lane[%d] rxpower        :%.2f\n", lane, static_cast<double>(rx_power.value[i]));
    }
    return ret;
}

} // namespace

// Leaves the transmitters as they were asked to be: the line is used to switch them, and shows what came of it.
int test_optical_disable_status(int count, char **args) {
    transmitter_operations driver = {};
    if (!find_all(driver)) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    uint32_t before = 0;
    uint32_t ret = driver.get_disabled(port.words.inst_id, &port.selector, &before);
    printf("tx diable statue: %s\n", before != 0 ? "disable" : "no disable");
    const bool disable = port.words.fifth != 0;
    ret |= driver.set_disabled(port.words.inst_id, &port.selector, disable ? 1 : 0);
    printf("set tx %s\n", disable ? "disable" : "enable");
    driver.delay(laser_settle_us);
    uint32_t after = 0;
    ret |= driver.get_disabled(port.words.inst_id, &port.selector, &after);
    printf("tx diable statue: %s\n", after != 0 ? "disable" : "enable");
    ret |= show_powers(port, driver);
    return static_cast<int>(ret);
}

int set_optical_rate(int count, char **args) {
    const auto set_rate = find<decltype(drv_opt_set_rate)>("drv_opt_set_rate");
    if (set_rate == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    const uint8_t direction = port.words.fifth;
    const uint8_t rate = port.words.sixth;
    const uint32_t ret = set_rate(port.words.inst_id, &port.selector, direction, rate);
    printf("direction = %d (0:TX, 1:RX), set_rate_value = %d, ret = %d\n", direction, rate, static_cast<int>(ret));
    return static_cast<int>(ret);
}

// "ok" says that the recovery was asked for; whether it helped is its result.
int set_optical_bus_status_recovery(int count, char **args) {
    const auto recover = find<decltype(drv_opt_bus_status_recovery)>("drv_opt_bus_status_recovery");
    if (recover == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    const uint32_t ret = recover(port.words.inst_id, &port.selector);
    printf("drv_optical_bus_status_recovery ok, ret = %d\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

} // namespace optical_commands
