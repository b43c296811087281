// The numbered properties and alarms of a supply: what each is read from, and which the simple protocol has as well.
#include "sim/core/catalogue.h"
#include "sim/devices/power/power_state.h"
#include "sim/devices/power/power_supply.h"

namespace kestro_sim {

namespace {

using one = power_supply::one;

device_of<power_build::family> build_of(const one &which) {
    return {{which.instance, &power_build::family, which.id}};
}

// What the supply has at its input now; what takes AC and high DC alike gets AC here.
uint32_t input_format(board &b, const one &which, const power_state &now) {
    constexpr uint32_t nothing = 3;
    constexpr uint32_t last_plain_type = 2;
    if (!now.has_input) {
        return nothing;
    }
    const uint32_t type = b.get(which, power_supply::type);
    return type <= last_plain_type ? type : 0;
}

enum class spoken : uint8_t {
    on_pmbus,
    by_all,
    by_all_with_input, // without input the simple protocol has no figures of it
};

struct property_row {
    uint32_t number;
    spoken how;
    uint32_t (*read)(board &b, const one &which, const power_state &now);
};

uint32_t required(board &b, const device &which, const reg &name) {
    const auto value = b.value(which, name);
    refuse_if(!value, error::not_supported);
    return static_cast<uint32_t>(*value);
}

template <const reg &Register> uint32_t from_supply(board &b, const one &which, const power_state &) {
    static_assert(power_supply::family.has(Register) && !Register.is_text() && !Register.is_wide());
    return required(b, which, Register);
}

template <const reg &Register> uint32_t from_build(board &b, const one &which, const power_state &) {
    static_assert(power_build::family.has(Register) && !Register.is_text() && !Register.is_wide());
    return required(b, build_of(which), Register);
}

template <uint32_t power_state::*Figure> uint32_t from_state(board &, const one &, const power_state &now) {
    return now.*Figure;
}

constexpr property_row property_rows[] = {
    {1, spoken::by_all, [](board &, const one &, const power_state &now) { return now.has_alarm() ? 1U : 0U; }},
    {2, spoken::by_all, [](board &, const one &, const power_state &now) { return now.is_output_on ? 0U : 1U; }},
    {3, spoken::by_all, from_build<power_build::rating>},
    {4, spoken::on_pmbus, from_supply<power_supply::current_limit>},
    {5, spoken::by_all, from_supply<power_supply::temp_limit>},
    {6, spoken::on_pmbus, [](board &, const one &, const power_state &now) { return status_word(now); }},
    {7, spoken::on_pmbus, from_state<&power_state::status_vout>},
    {8, spoken::on_pmbus, from_state<&power_state::status_iout>},
    {9, spoken::on_pmbus, from_state<&power_state::status_input>},
    {10, spoken::by_all, from_state<&power_state::status_temperature>},
    {11, spoken::on_pmbus, from_state<&power_state::status_cml>},
    {12, spoken::on_pmbus, from_state<&power_state::status_specific>},
    {13, spoken::by_all, from_state<&power_state::status_fans>},
    {14, spoken::by_all_with_input, from_supply<power_supply::feed>},
    {15, spoken::by_all, from_state<&power_state::output_mv>},
    {16, spoken::by_all, from_state<&power_state::output_ma>},
    {17, spoken::by_all, from_state<&power_state::celsius>},
    {18, spoken::by_all, from_state<&power_state::fan_speed>},
    {19, spoken::by_all, from_state<&power_state::output_watts>},
    {20, spoken::by_all_with_input, from_state<&power_state::input_watts>},
    {21, spoken::on_pmbus, from_supply<power_supply::pmbus>},
    {22, spoken::by_all, from_supply<power_supply::type>},
    {23, spoken::on_pmbus, from_build<power_build::protocol>},
    {24, spoken::by_all, from_supply<power_supply::latch>},
    {25, spoken::on_pmbus, from_supply<power_supply::off_at>},
    {26, spoken::by_all, from_supply<power_supply::enabled>},
    {27, spoken::on_pmbus, from_supply<power_supply::delay>},
    {28, spoken::on_pmbus,
     [](board &b, const one &which, const power_state &) { return power_supply::clock(b, which); }},
    {30, spoken::on_pmbus, from_build<power_build::pfc>},
    {31, spoken::on_pmbus, from_build<power_build::converter>},
    {32, spoken::on_pmbus, from_state<&power_state::fan_percent>},
    {33, spoken::by_all, from_build<power_build::hardware>},
    {34, spoken::on_pmbus, from_supply<power_supply::temp_mode>},
    {35, spoken::by_all_with_input, from_state<&power_state::input_ma>},
    {36, spoken::by_all, from_build<power_build::device_type>},
    {37, spoken::on_pmbus, from_build<power_build::holdup>},
    {38, spoken::on_pmbus, from_build<power_build::shutdown>},
    {39, spoken::on_pmbus,
     [](board &b, const one &which, const power_state &) { return 1U - b.get(which, power_supply::latch); }},
    {40, spoken::by_all, input_format},
    {41, spoken::on_pmbus, from_build<power_build::panel_switch>},
    {42, spoken::on_pmbus, from_build<power_build::airflow>},
    {43, spoken::by_all, from_supply<power_supply::alarm_kept>},
    {44, spoken::on_pmbus, from_supply<power_supply::bad_kept>},
    {46, spoken::on_pmbus, [](board &, const one &, const power_state &now) { return now.is_input_low ? 1U : 0U; }},
    {47, spoken::on_pmbus, from_supply<power_supply::low_kept>},
};

struct alarm_row {
    uint32_t number;
    spoken how;
    uint32_t power_state::*status;
    uint32_t bits;
};

constexpr uint32_t whole_byte = 0xFF;

constexpr alarm_row alarm_rows[] = {
    {1, spoken::on_pmbus, &power_state::status_cml, whole_byte},
    {2, spoken::by_all, &power_state::status_temperature, whole_byte},
    {3, spoken::on_pmbus, &power_state::status_input, power_status::input_fault},
    {4, spoken::on_pmbus, &power_state::status_iout, power_status::fault},
    {5, spoken::on_pmbus, &power_state::status_vout, power_status::fault},
    {6, spoken::on_pmbus, &power_state::status_input, power_status::fault},
    {7, spoken::on_pmbus, &power_state::status_input, power_status::input_off},
    {9, spoken::on_pmbus, &power_state::status_specific, whole_byte},
    {10, spoken::by_all, &power_state::status_fans, whole_byte},
    {13, spoken::on_pmbus, &power_state::status_input, whole_byte},
    {14, spoken::on_pmbus, &power_state::status_iout, whole_byte},
    {15, spoken::on_pmbus, &power_state::status_vout, whole_byte},
};

template <typename Row, size_t N> const Row &row_of(board &b, const one &which, const Row (&rows)[N], uint32_t number) {
    for (const Row &row : rows) {
        if (row.number == number) {
            refuse_if(row.how == spoken::on_pmbus && !power_supply::is_on_pmbus(b, which), error::not_supported);
            return row;
        }
    }
    refuse(error::not_supported);
}

// The controller of the supply notes what is wrong whenever it is spoken to.
void keep_history(board &b, const one &which, const power_state &now) {
    change writes;
    const auto keep = [&](bool is_now, written_of<power_supply::family> kept) {
        if (is_now && b.value(which, *kept).value_or(0) == 0) {
            b.put(writes, which, kept, 1);
        }
    };
    keep(now.has_alarm(), power_supply::alarm_kept);
    keep(now.is_lost_to_fault, power_supply::bad_kept);
    keep(now.is_input_low, power_supply::low_kept);
    if (!writes.items().empty()) {
        b.commit(writes);
    }
}

} // namespace

uint32_t power_supply::property(board &b, const one &which, uint32_t number) {
    const property_row &row = row_of(b, which, property_rows, number);
    const power_state now = state_of(b, which);
    refuse_if(row.how == spoken::by_all_with_input && !now.has_input && !is_on_pmbus(b, which), error::not_ready);
    keep_history(b, which, now);
    return row.read(b, which, now);
}

uint32_t power_supply::alarm_bits(board &b, const one &which, uint32_t number) {
    const alarm_row &row = row_of(b, which, alarm_rows, number);
    const power_state now = state_of(b, which);
    keep_history(b, which, now);
    return now.*row.status & row.bits;
}

device_list devices_of_power_property() {
    return {};
}

} // namespace kestro_sim
