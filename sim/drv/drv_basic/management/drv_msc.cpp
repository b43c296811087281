// Master/slave control of the two main processing units. Line cards have none.
#include "drv_basic/management/drv_msc.h"

#include "sim/devices/management/mastership.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t sw_mode_max = 2;

modes modes_of(uint32_t sw_mode) {
    refuse_if(sw_mode > sw_mode_max, error::bad_value);
    return static_cast<modes>(sw_mode + 1);
}

master_controller controller(board &b, uint32_t inst_id) {
    return {b, b.find<master_control::family>(inst_id).instance};
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { b.find<master_control::family>(inst_id); });
}

uint32_t put(uint32_t inst_id, uint32_t sw_mode, master_controller::setting name, uint32_t value) {
    return operate([&](board &b) {
        const modes which = modes_of(sw_mode);
        controller(b, inst_id).set(which, name, value);
    });
}

} // namespace

uint32_t drv_msc_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_msc_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_msc_set_bond_mode(uint32_t inst_id, uint32_t bond) {
    return operate([&](board &b) { controller(b, inst_id).set_bond(bond); });
}

uint32_t drv_msc_set_switch_en(uint32_t inst_id, uint32_t sw_mode, uint32_t enable) {
    return put(inst_id, sw_mode, switch_channel::enable, enable);
}

uint32_t drv_msc_get_switch_en(uint32_t inst_id, uint32_t sw_mode, uint32_t *enable) {
    return operate([&](board &b) {
        refuse_null(enable);
        const modes which = modes_of(sw_mode);
        *enable = controller(b, inst_id).least(which, switch_channel::enable);
    });
}

uint32_t drv_msc_set_switch_ctrl(uint32_t inst_id, uint32_t sw_mode, uint32_t ctrl) {
    return put(inst_id, sw_mode, switch_channel::control, ctrl);
}

uint32_t drv_msc_get_switch_ctrl(uint32_t inst_id, uint32_t sw_mode, uint32_t *ctrl) {
    return operate([&](board &b) {
        refuse_null(ctrl);
        const modes which = modes_of(sw_mode);
        *ctrl = controller(b, inst_id).most(which, switch_channel::control);
    });
}

uint32_t drv_msc_set_state(uint32_t inst_id, uint32_t sw_mode, uint32_t state) {
    return operate([&](board &b) {
        const modes which = modes_of(sw_mode);
        refuse_if(state > static_cast<uint32_t>(mastery::slave), error::bad_value);
        master_controller self = controller(b, inst_id);
        if (static_cast<mastery>(state) == mastery::master) {
            self.make_master(which);
        } else {
            self.make_slave(which);
        }
    });
}

uint32_t drv_msc_get_state(uint32_t inst_id, uint32_t sw_mode, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        const modes which = modes_of(sw_mode);
        *state = static_cast<uint32_t>(controller(b, inst_id).state(which));
    });
}

uint32_t drv_msc_get_peer_state(uint32_t inst_id, uint32_t sw_mode, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        const modes which = modes_of(sw_mode);
        *state = static_cast<uint32_t>(controller(b, inst_id).peer_state(which));
    });
}

uint32_t drv_msc_set_npu_work_mode(uint32_t inst_id, uint32_t work_mode) {
    return operate(
        [&](board &b) { b.put(b.find<master_control::family>(inst_id), master_control::npu_mode, work_mode); });
}

uint32_t drv_msc_get_npu_work_mode(uint32_t inst_id, uint32_t *work_mode) {
    return operate([&](board &b) {
        refuse_null(work_mode);
        *work_mode = b.get(b.find<master_control::family>(inst_id), master_control::npu_mode);
    });
}

// One board's switch-over is the other's, so both keep the same reason.
uint32_t drv_msc_get_switch_reason(uint32_t inst_id, uint32_t sw_mode, uint32_t *reason) {
    return operate([&](board &b) {
        refuse_null(reason);
        refuse_if(sw_mode > sw_mode_max, error::bad_value);
        b.find<master_control::family>(inst_id);
        *reason = b.get(board::at<switch_over::family>(board::chassis(), sw_mode), switch_over::reason);
    });
}

uint32_t drv_msc_set_int_en(uint32_t inst_id, uint32_t sw_mode, uint32_t enable) {
    return operate([&](board &b) {
        const modes which = modes_of(sw_mode);
        controller(b, inst_id).set_interrupt(which, enable);
    });
}

uint32_t drv_msc_get_int_state(uint32_t inst_id, uint32_t sw_mode, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        const modes which = modes_of(sw_mode);
        *state = controller(b, inst_id).take_interrupt(which) ? 1 : 0;
    });
}

uint32_t drv_msc_get_self_ok(uint32_t sw_mode, uint32_t *self_ok) {
    return operate([&](board &b) {
        refuse_null(self_ok);
        const modes which = modes_of(sw_mode);
        *self_ok = controller(b, DRV_INST_SELF).self_ok(which) ? 1 : 0;
    });
}

uint32_t drv_msc_get_peer_ok(uint32_t sw_mode, uint32_t *peer_ok) {
    return operate([&](board &b) {
        refuse_null(peer_ok);
        const modes which = modes_of(sw_mode);
        *peer_ok = controller(b, DRV_INST_SELF).peer_ok(which) ? 1 : 0;
    });
}

uint32_t drv_msc_set_self_bad(uint32_t sw_mode, uint32_t status) {
    return put(DRV_INST_SELF, sw_mode, switch_channel::self_bad, status);
}

uint32_t drv_msc_set_peer_bad(uint32_t sw_mode, uint32_t status) {
    return operate([&](board &b) {
        const modes which = modes_of(sw_mode);
        controller(b, DRV_INST_SELF).call_peer_bad(which, status);
    });
}

uint32_t drv_msc_set_peer_slave(uint32_t inst_id) {
    return operate([&](board &b) { controller(b, inst_id).hold_peer(); });
}

uint32_t drv_msc_set_peer_slave_cancel(uint32_t inst_id) {
    return operate([&](board &b) { controller(b, inst_id).let_peer_go(); });
}

uint32_t drv_msc_set_soft_ready(uint32_t inst_id, uint32_t sw_mode, uint32_t soft_ready) {
    return put(inst_id, sw_mode, switch_channel::ready, soft_ready);
}

uint32_t drv_msc_force_master(uint32_t inst_id) {
    return operate([&](board &b) { controller(b, inst_id).force(mastery::master); });
}

uint32_t drv_msc_force_standby(uint32_t inst_id) {
    return operate([&](board &b) { controller(b, inst_id).force(mastery::slave); });
}

uint32_t drv_msc_dump_info(uint32_t inst_id, char *buffer, uint32_t size) {
    return operate([&](board &b) { write_text(buffer, size, controller(b, inst_id).dump()); });
}
