// A desk does not reboot: a reset is noted as the board would find it after starting again.
#include "sim/devices/management/restart.h"

#include "sim/core/catalogue.h"
#include "sim/devices/chips/logic_load.h"
#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/health.h"
#include "sim/devices/management/startup.h"
#include "sim/devices/management/watchdog.h"
#include "sim/devices/storage/flash_environment.h"
#include "sim/devices/storage/memory_environment.h"

namespace kestro_sim {

namespace {

// What start-up software writes down. It leaves hard_reset_init_flag as it is: hardware that a soft start keeps was
// brought up by the hard one before.
void note_start(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind) {
    const bool is_soft = reason != restart_reason::power_on && kind == restart_kind::warm;
    note_start_in_memory(b, writes, place, reason, is_soft);
    note_start_in_flash(b, writes, place, reason, is_soft);
    note_start_of_files(b, writes, place);
}

// The reset line reaches what interrupts go through: nothing is raised or let through until software does so anew.
void quieten_interrupts(board &b, change &writes, const std::string &place) {
    for (const auto &source : b.all_at<test_interrupt::family>(place)) {
        test_interrupt::reset(b, writes, source);
    }
    for (const auto &line : b.all_at<interrupt_line::family>(place)) {
        if (b.get(line, interrupt_line::enabled) != 0) {
            b.put(writes, line, interrupt_line::enabled, 0);
        }
    }
}

// The start has come as far as it comes by itself.
void note_boot_step(board &b, change &writes, const std::string &place) {
    const auto unit = board::at<board_unit::family>(place);
    const auto last = b.described_value(unit, board_unit::bootstep);
    if (last && b.get(unit, board_unit::bootstep) != *last) {
        b.put(writes, unit, board_unit::bootstep, *last);
    }
}

void count_start(board &b, change &writes, const device_of<reset_control::family> &control) {
    if (b.is_described(control)) {
        b.put(writes, control, reset_control::starts, b.get(control, reset_control::starts) + 1U);
    }
}

} // namespace

// The reason register shifts: the latest comes in at 0, the oldest falls out.
void note_restart(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind) {
    auto newer = static_cast<uint32_t>(reason);
    for (const auto &past : b.all_at<reset_reason::family>(place)) {
        b.put(writes, past, reset_reason::reason, newer);
        newer = b.get(past, reset_reason::reason);
    }
    const auto control = board::at<reset_control::family>(place);
    if (b.has(control, reset_control::cool)) {
        b.put(writes, control, reset_control::cool, static_cast<uint32_t>(kind));
    }
    if (kind == restart_kind::cold) {
        logic_load::start_logic(b, writes, place);
    }
    quieten_interrupts(b, writes, place);
    count_start(b, writes, control);
    note_boot_step(b, writes, place);
    stop_watchdogs(b, writes, place);
    note_start(b, writes, place, reason, kind);
}

device_list devices_of_restart() {
    static constexpr const device_family *families[]{&reset_control::family, &reset_chip::family,
                                                     &reset_reason::family};
    return {families, {}};
}

} // namespace kestro_sim
