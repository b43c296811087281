// Resets. A desk does not reboot: a reset is noted as the board would find it after starting again (reason, cold or
// warm start), and the call comes back with 0 where hardware would not.
#include "drv_reset.h"

#include "sim/drv/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind controls{"sim_reset", "board"};
constexpr device_kind chips{"sim_reset", "chip"};
constexpr device_kind reasons{"sim_reset", "reason"};

// Reasons 1 power-on, 2 button and 3 watchdog come from the description only.
constexpr uint32_t reset_by_command = 4;

enum class start : uint32_t { warm = 0, cold = 1 };

const std::string self{self_instance};

device own_control(board &desk) {
    return desk.find_at(self, controls, 0);
}

// An empty peer slot has nobody to reset or to ask.
device peer_control(board &desk) {
    const std::string peer = place_of_slot(desk, peer_slot(desk, DRV_INST_SELF));
    refuse_if(!desk.is_present(peer), error::no_such_instance);
    return desk.find_at(peer, controls, 0);
}

// The reason register shifts: the latest comes in at 0, the oldest falls out.
void note_reset(board &desk, change &writes, const device &control, start how) {
    uint32_t newer = reset_by_command;
    for (const uint32_t index : desk.ids(control.instance, reasons)) {
        const device reason = desk.find_at(control.instance, reasons, index);
        writes.put(cell_key(reason, "reason"), newer);
        newer = desk.get(reason, "reason");
    }
    if (desk.has(control, "cool")) {
        writes.put(cell_key(control, "cool"), static_cast<uint32_t>(how));
    }
}

void reset(board &desk, const device &control) {
    change writes;
    note_reset(desk, writes, control, start::cold);
    desk.commit(writes);
}

// The record stands in memory that survives a reset; it takes any date.
void keep_code(change &writes, const device &control, const drv_reset_code &code) {
    writes.put(cell_key(control, "code"), code.code);
    writes.put(cell_key(control, "year"), code.year);
    writes.put(cell_key(control, "month"), code.month);
    writes.put(cell_key(control, "day"), code.day);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &desk) { desk.find(inst_id, controls, 0); });
}

uint32_t read_own(const char *name, uint32_t *value) {
    return operate([&](board &desk) {
        refuse_null(value);
        *value = desk.get(own_control(desk), name);
    });
}

uint32_t write_own_flag(const char *name, uint32_t flag) {
    return operate([&](board &desk) {
        const device control = own_control(desk);
        desk.get(control, name);
        refuse_if(flag > 1, error::bad_value);
        desk.put(control, name, flag);
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
    return operate([&](board &desk) { desk.find(inst_id, chips, chip_id); });
}

// The reset line of a whole board restarts its power sequence: a cold start.
uint32_t drv_reset_board(uint32_t inst_id) {
    return operate([&](board &desk) { reset(desk, desk.find(inst_id, controls, 0)); });
}

// The board restarts its processor alone: a warm start.
uint32_t drv_reset_self_board(const drv_reset_code *code) {
    return operate([&](board &desk) {
        refuse_null(code);
        const device control = own_control(desk);
        change writes;
        keep_code(writes, control, *code);
        note_reset(desk, writes, control, start::warm);
        desk.commit(writes);
    });
}

uint32_t drv_reset_self_board_without_reboot(const drv_reset_code *code) {
    return operate([&](board &desk) {
        refuse_null(code);
        change writes;
        keep_code(writes, own_control(desk), *code);
        desk.commit(writes);
    });
}

uint32_t drv_reset_peer_board(void) {
    return operate([&](board &desk) { reset(desk, peer_control(desk)); });
}

uint32_t drv_reset_get_code(drv_reset_code *code) {
    return operate([&](board &desk) {
        refuse_null(code);
        const device control = own_control(desk);
        *code = {desk.get(control, "code"), static_cast<uint16_t>(desk.get(control, "year")),
                 static_cast<uint8_t>(desk.get(control, "month")), static_cast<uint8_t>(desk.get(control, "day"))};
    });
}

uint32_t drv_reset_get_reason(uint32_t inst_id, uint32_t index, uint32_t *reason) {
    return operate([&](board &desk) {
        refuse_null(reason);
        *reason = desk.get(desk.find(inst_id, reasons, index), "reason");
    });
}

uint32_t drv_reset_get_mode(uint32_t *cool) {
    return read_own("cool", cool);
}

// Every write to the board's state is complete when its call returns: there is nothing left to wait for.
uint32_t drv_reset_sync_file_system(void) {
    return operate([&](board &desk) { own_control(desk); });
}

uint32_t drv_reset_get_button_status(uint32_t *status) {
    return read_own("button", status);
}

uint32_t drv_reset_set_self_sys_ready(uint32_t mode) {
    return write_own_flag("sys_ready", mode);
}

uint32_t drv_reset_get_peer_sys_ready(uint32_t *mode) {
    return operate([&](board &desk) {
        refuse_null(mode);
        *mode = desk.get(peer_control(desk), "sys_ready");
    });
}

uint32_t drv_reset_set_soft_start_ok_flag(uint32_t flag) {
    return write_own_flag("soft_start_ok", flag);
}

uint32_t drv_reset_get_soft_start_ok_flag(uint32_t *flag) {
    return read_own("soft_start_ok", flag);
}
