// A power supply at one moment: what goes in, what comes out, and its status bytes. Properties and alarms are read from
// the same state, so they never contradict each other.
#pragma once

#include "sim/devices/power/power_supply.h"

namespace kestro_sim {

// Status bytes are laid out as those of the PMBus.
struct power_state {
    bool has_input;
    bool is_input_low;
    bool is_output_on;
    bool is_lost_to_fault; // there is input and it is switched on, and still there is no output

    uint32_t output_mv;
    uint32_t output_ma;
    uint32_t output_watts;
    uint32_t input_ma;
    uint32_t input_watts;
    uint32_t celsius;
    uint32_t fan_percent;
    uint32_t fan_speed;

    uint32_t status_vout;
    uint32_t status_iout;
    uint32_t status_input;
    uint32_t status_temperature;
    uint32_t status_cml;
    uint32_t status_specific;
    uint32_t status_fans;

    bool has_alarm() const {
        return (status_vout | status_iout | status_input | status_temperature | status_cml | status_specific |
                status_fans) != 0;
    }
};

namespace power_status {
inline constexpr uint32_t fault = 0x80; // in the bytes of output, temperature and fans; input over-voltage
inline constexpr uint32_t input_warning = 0x20;
inline constexpr uint32_t input_fault = 0x10; // under-voltage
inline constexpr uint32_t input_off = 0x08;   // too low to work with
inline constexpr uint32_t communication = 0x02;
inline constexpr uint32_t something = 0x01;
} // namespace power_status

power_state state_of(board &b, const power_supply::one &which);

// The status word: a summary of the bytes.
uint32_t status_word(const power_state &state);

} // namespace kestro_sim
