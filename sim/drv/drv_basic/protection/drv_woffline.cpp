// The watch over the power lines of a main processing unit, and what that of its peer finds.
#include "drv_basic/protection/drv_woffline.h"

#include "sim/devices/protection/line_watch.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { b.find<line_watch::family>(inst_id); });
}

template <const device_family &Family>
uint32_t set_enable(uint32_t inst_id, written_of<Family> name, word_of<Family> stuck, uint32_t enable) {
    return operate([&](board &b) {
        const auto which = b.find<Family>(inst_id);
        refuse_if(enable > 1, error::bad_value);
        if (b.get(which, stuck) == 0) {
            b.put(which, name, enable);
        }
    });
}

template <const device_family &Family> uint32_t get_enable(uint32_t inst_id, word_of<Family> name, uint32_t *enable) {
    return operate([&](board &b) {
        refuse_null(enable);
        *enable = b.get(b.find<Family>(inst_id), name);
    });
}

// A peer that is pulled out, or taken for absent, tells nothing.
std::string peer_of(board &b, uint32_t inst_id) {
    std::string peer = slot_place(peer_slot(b, inst_id));
    refuse_if(!presence::is_there(b, peer), error::no_such_instance);
    return peer;
}

} // namespace

uint32_t drv_woffline_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_woffline_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_woffline_set_en_state(uint32_t inst_id, uint32_t enable) {
    return set_enable<line_watch::family>(inst_id, line_watch::enable, line_watch::stuck, enable);
}

uint32_t drv_woffline_get_en_state(uint32_t inst_id, uint32_t *enable) {
    return get_enable<line_watch::family>(inst_id, line_watch::enable, enable);
}

uint32_t drv_woffline_get_state(uint32_t inst_id, uint32_t chip_id, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        *state = line_watch::is_lost(b, b.find<power_line::family>(inst_id, chip_id)) ? 1 : 0;
    });
}

uint32_t drv_woffline_get_peer_state(uint32_t inst_id, uint32_t chip_id, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        *state = line_watch::is_lost(b, b.find_at<power_line::family>(peer_of(b, inst_id), chip_id)) ? 1 : 0;
    });
}

uint32_t drv_woffline_set_irq_enable(uint32_t inst_id, uint32_t enable) {
    return set_enable<line_interrupt::family>(inst_id, line_interrupt::enable, line_interrupt::stuck, enable);
}

uint32_t drv_woffline_get_irq_enable(uint32_t inst_id, uint32_t *enable) {
    return get_enable<line_interrupt::family>(inst_id, line_interrupt::enable, enable);
}

uint32_t drv_woffline_get_irq_state(uint32_t inst_id, uint32_t chip_id, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        *state = line_interrupt::is_raised(b, b.find<power_line::family>(inst_id, chip_id)) ? 1 : 0;
    });
}

uint32_t drv_woffline_set_sfu_isolate_en(uint32_t inst_id, uint32_t enable) {
    return set_enable<fabric_isolation::family>(inst_id, fabric_isolation::enable, fabric_isolation::stuck, enable);
}

uint32_t drv_woffline_get_sfu_isolate_en(uint32_t inst_id, uint32_t *enable) {
    return get_enable<fabric_isolation::family>(inst_id, fabric_isolation::enable, enable);
}
