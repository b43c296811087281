// Resets. A desk does not reboot: a reset is noted as the board would find it after starting again (reason, cold or
// warm start), and the call comes back with 0 where hardware would not.
#include "drv_basic/management/drv_reset.h"

#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/restart.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

using control_of = device_of<reset_control::family>;

control_of own_control(board &b) {
    return b.find_at<reset_control::family>(b.self());
}

// Reset lines of the cards in slots end at the master.
template <const device_family &Family> device_of<Family> reachable(board &b, uint32_t inst_id, uint32_t id = 0) {
    refuse_if(!b.is_seen(b.instance(inst_id)), error::not_supported);
    return b.find<Family>(inst_id, id);
}

// An empty peer slot has nobody to reset or to ask.
control_of peer_control(board &b) {
    const std::string peer = place_of_slot(b, peer_slot(b, DRV_INST_SELF));
    refuse_if(!b.is_present(peer), error::no_such_instance);
    return b.find_at<reset_control::family>(peer);
}

void reset(board &b, const control_of &control) {
    change writes;
    note_restart(b, writes, control.instance, restart_reason::command, restart_kind::cold);
    b.commit(writes);
}

// The record stands in memory that survives a reset; it takes any date.
void keep_code(board &b, change &writes, const control_of &control, const drv_reset_code &code) {
    b.keep(writes, control, reset_control::code, code.code);
    b.keep(writes, control, reset_control::year, code.year);
    b.keep(writes, control, reset_control::month, code.month);
    b.keep(writes, control, reset_control::day, code.day);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { reachable<reset_control::family>(b, inst_id); });
}

uint32_t read_own(word_of<reset_control::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(own_control(b), name);
    });
}

uint32_t write_own_flag(written_of<reset_control::family> name, uint32_t flag) {
    return operate([&](board &b) { b.put(own_control(b), name, flag); });
}

} // namespace

uint32_t drv_reset_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_reset_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

// The chip is back at once, and its driver sets it up again as it was.
uint32_t drv_reset_chip(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { reachable<reset_chip::family>(b, inst_id, chip_id); });
}

// The reset line of a whole board restarts its power sequence: a cold start.
uint32_t drv_reset_board(uint32_t inst_id) {
    return operate([&](board &b) { reset(b, reachable<reset_control::family>(b, inst_id)); });
}

// The board restarts its processor alone: a warm start.
uint32_t drv_reset_self_board(const drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        const control_of control = own_control(b);
        change writes;
        keep_code(b, writes, control, *code);
        note_restart(b, writes, control.instance, restart_reason::command, restart_kind::warm);
        b.commit(writes);
    });
}

uint32_t drv_reset_self_board_without_reboot(const drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        change writes;
        keep_code(b, writes, own_control(b), *code);
        b.commit(writes);
    });
}

uint32_t drv_reset_peer_board(void) {
    return operate([&](board &b) { reset(b, peer_control(b)); });
}

uint32_t drv_reset_get_code(drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        const control_of control = own_control(b);
        *code = {b.get(control, reset_control::code), static_cast<uint16_t>(b.get(control, reset_control::year)),
                 static_cast<uint8_t>(b.get(control, reset_control::month)),
                 static_cast<uint8_t>(b.get(control, reset_control::day))};
    });
}

uint32_t drv_reset_get_reason(uint32_t inst_id, uint32_t index, uint32_t *reason) {
    return operate([&](board &b) {
        refuse_null(reason);
        *reason = b.get(reachable<reset_reason::family>(b, inst_id, index), reset_reason::reason);
    });
}

uint32_t drv_reset_get_mode(uint32_t *cool) {
    return read_own(reset_control::cool, cool);
}

// Every write to the board's state is complete when its call returns: there is nothing left to wait for.
uint32_t drv_reset_sync_file_system(void) {
    return operate([&](board &b) { own_control(b); });
}

uint32_t drv_reset_get_button_status(uint32_t *status) {
    return read_own(reset_control::button, status);
}

uint32_t drv_reset_set_self_sys_ready(uint32_t mode) {
    return write_own_flag(reset_control::sys_ready, mode);
}

uint32_t drv_reset_get_peer_sys_ready(uint32_t *mode) {
    return operate([&](board &b) {
        refuse_null(mode);
        *mode = b.get(peer_control(b), reset_control::sys_ready);
    });
}

uint32_t drv_reset_set_soft_start_ok_flag(uint32_t flag) {
    return write_own_flag(reset_control::soft_start_ok, flag);
}

uint32_t drv_reset_get_soft_start_ok_flag(uint32_t *flag) {
    return read_own(reset_control::soft_start_ok, flag);
}
