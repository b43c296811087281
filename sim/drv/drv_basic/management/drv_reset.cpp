// Resets. A desk does not reboot: a reset is noted as the board would find it after starting again (reason, cold or
// warm start), and the call comes back with 0 where hardware would not.
#include "drv_basic/management/drv_reset.h"

#include "sim/core/restart.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind controls{"sim_reset", "board"};
constexpr device_kind chips{"sim_reset", "chip"};
constexpr device_kind reasons{"sim_reset", "reason"};

device own_control(board &b) {
    return b.find_at(b.self(), controls, 0);
}

// Reset lines of the cards in slots end at the master.
device reachable(board &b, uint32_t inst_id, const device_kind &kind, uint32_t id) {
    refuse_if(!b.is_seen(b.instance(inst_id)), error::not_supported);
    return b.find(inst_id, kind, id);
}

// An empty peer slot has nobody to reset or to ask.
device peer_control(board &b) {
    const std::string peer = place_of_slot(b, peer_slot(b, DRV_INST_SELF));
    refuse_if(!b.is_present(peer), error::no_such_instance);
    return b.find_at(peer, controls, 0);
}

void reset(board &b, const device &control) {
    change writes;
    note_restart(b, writes, control.instance, restart_reason::command, restart_kind::cold);
    b.commit(writes);
}

// The record stands in memory that survives a reset; it takes any date.
void keep_code(change &writes, const device &control, const drv_reset_code &code) {
    writes.put(cell_key(control, "code"), code.code);
    writes.put(cell_key(control, "year"), code.year);
    writes.put(cell_key(control, "month"), code.month);
    writes.put(cell_key(control, "day"), code.day);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { reachable(b, inst_id, controls, 0); });
}

uint32_t read_own(const char *name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(own_control(b), name);
    });
}

uint32_t write_own_flag(const char *name, uint32_t flag) {
    return operate([&](board &b) {
        const device control = own_control(b);
        b.get(control, name);
        refuse_if(flag > 1, error::bad_value);
        b.put(control, name, flag);
    });
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
    return operate([&](board &b) { reachable(b, inst_id, chips, chip_id); });
}

// The reset line of a whole board restarts its power sequence: a cold start.
uint32_t drv_reset_board(uint32_t inst_id) {
    return operate([&](board &b) { reset(b, reachable(b, inst_id, controls, 0)); });
}

// The board restarts its processor alone: a warm start.
uint32_t drv_reset_self_board(const drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        const device control = own_control(b);
        change writes;
        keep_code(writes, control, *code);
        note_restart(b, writes, control.instance, restart_reason::command, restart_kind::warm);
        b.commit(writes);
    });
}

uint32_t drv_reset_self_board_without_reboot(const drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        change writes;
        keep_code(writes, own_control(b), *code);
        b.commit(writes);
    });
}

uint32_t drv_reset_peer_board(void) {
    return operate([&](board &b) { reset(b, peer_control(b)); });
}

uint32_t drv_reset_get_code(drv_reset_code *code) {
    return operate([&](board &b) {
        refuse_null(code);
        const device control = own_control(b);
        *code = {b.get(control, "code"), static_cast<uint16_t>(b.get(control, "year")),
                 static_cast<uint8_t>(b.get(control, "month")), static_cast<uint8_t>(b.get(control, "day"))};
    });
}

uint32_t drv_reset_get_reason(uint32_t inst_id, uint32_t index, uint32_t *reason) {
    return operate([&](board &b) {
        refuse_null(reason);
        *reason = b.get(reachable(b, inst_id, reasons, index), "reason");
    });
}

uint32_t drv_reset_get_mode(uint32_t *cool) {
    return read_own("cool", cool);
}

// Every write to the board's state is complete when its call returns: there is nothing left to wait for.
uint32_t drv_reset_sync_file_system(void) {
    return operate([&](board &b) { own_control(b); });
}

uint32_t drv_reset_get_button_status(uint32_t *status) {
    return read_own("button", status);
}

uint32_t drv_reset_set_self_sys_ready(uint32_t mode) {
    return write_own_flag("sys_ready", mode);
}

uint32_t drv_reset_get_peer_sys_ready(uint32_t *mode) {
    return operate([&](board &b) {
        refuse_null(mode);
        *mode = b.get(peer_control(b), "sys_ready");
    });
}

uint32_t drv_reset_set_soft_start_ok_flag(uint32_t flag) {
    return write_own_flag("soft_start_ok", flag);
}

uint32_t drv_reset_get_soft_start_ok_flag(uint32_t *flag) {
    return read_own("soft_start_ok", flag);
}
