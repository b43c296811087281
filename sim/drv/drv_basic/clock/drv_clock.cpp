// Clocks: their detectors, the synchronous clock, the references of synthesisers and of the stratum 3 clock.
#include "drv_basic/clock/drv_clock.h"

#include "sim/devices/clock/clock_source.h"
#include "sim/devices/clock/pll.h"
#include "sim/devices/clock/register_dump.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_clk_init(uint32_t inst_id) {
    return operate([&](board &b) { clock_source::start_detectors(b, b.find<clock_unit::family>(inst_id)); });
}

uint32_t drv_clk_deinit(uint32_t inst_id) {
    return operate([&](board &b) { clock_source::stop_detectors(b, b.find<clock_unit::family>(inst_id)); });
}

uint32_t drv_clk_check_init(uint32_t inst_id, uint32_t clock_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        const auto which = b.find<clock_source::family>(inst_id, clock_id);
        *status = b.get(b.find_at<clock_unit::family>(which.instance), clock_unit::watching);
    });
}

uint32_t drv_clk_detect_check_id(uint32_t inst_id, uint32_t clock_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        const auto which = b.find<clock_source::family>(inst_id, clock_id);
        *status = b.get(which, clock_source::identity) == clock_source::detector_identity ? 0 : 1;
    });
}

uint32_t drv_clk_detect_get_status(uint32_t inst_id, uint32_t clock_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = clock_source::look_for_loss(b, b.find<clock_source::family>(inst_id, clock_id)) ? 1 : 0;
    });
}

uint32_t drv_clk_detect_get_status_history(uint32_t inst_id, uint32_t clock_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = clock_source::take_history(b, b.find<clock_source::family>(inst_id, clock_id)) ? 1 : 0;
    });
}

uint32_t drv_clk_detect_dump_reg(uint32_t inst_id, uint32_t clock_id, char *buffer, uint32_t size) {
    return operate([&](board &b) {
        const auto which = b.find<clock_source::family>(inst_id, clock_id);
        const register_space &detector = clock_source::detector;
        write_text(buffer, size, register_dump(b, detector, which, 0, detector.size));
    });
}

// Only a clock that is recovered from a line can be followed.
uint32_t drv_board_set_synclk_source(uint32_t inst_id, uint32_t channel) {
    return operate([&](board &b) {
        const auto which = b.find<synclk::family>(inst_id);
        const auto followed = b.find<clock_source::family>(inst_id, channel);
        refuse_if(!b.has(followed, clock_source::port), error::bad_value);
        synclk::settings to = synclk::now_of(b, which.instance);
        to.channel = channel;
        synclk::change_to(b, which, to);
    });
}

uint32_t drv_board_get_synclk_source(uint32_t inst_id, uint32_t *channel) {
    return operate([&](board &b) {
        refuse_null(channel);
        *channel = b.get(b.find<synclk::family>(inst_id), synclk::channel);
    });
}

uint32_t drv_board_set_synclk_enable(uint32_t inst_id, uint32_t enable) {
    return operate([&](board &b) {
        const auto which = b.find<synclk::family>(inst_id);
        refuse_if(enable > 1, error::bad_value);
        synclk::settings to = synclk::now_of(b, which.instance);
        to.enable = enable;
        synclk::change_to(b, which, to);
    });
}

// Only ports that a clock is recovered from have a signal to lose.
uint32_t drv_board_set_synclk_los(uint32_t inst_id, uint32_t port) {
    return operate([&](board &b) {
        const auto which = b.find<synclk::family>(inst_id);
        bool is_known = false;
        for (const auto &source : b.all_at<clock_source::family>(which.instance)) {
            is_known = is_known || (b.has(source, clock_source::port) && b.get(source, clock_source::port) == port);
        }
        refuse_if(!is_known, error::no_such_device);
        synclk::settings to = synclk::now_of(b, which.instance);
        to.los_port = port;
        synclk::change_to(b, which, to);
    });
}

uint32_t drv_clock_set_timestamp_source(uint32_t inst_id, uint32_t np_id) {
    return operate([&](board &b) {
        const auto which = b.find<timestamp::family>(inst_id);
        refuse_if(np_id >= b.get(which, timestamp::np_count), error::no_such_device);
        b.put(which, timestamp::np, np_id);
    });
}

uint32_t drv_clock_set_pll_source(uint32_t inst_id, uint32_t pll_id, uint32_t ref_mode) {
    return operate([&](board &b) { pll::set_ref_mode(b, b.find<pll::family>(inst_id, pll_id), ref_mode); });
}

uint32_t drv_board_get_3clk_status(uint32_t inst_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = static_cast<uint32_t>(stratum3::state_of(b, b.find<stratum3::family>(inst_id)));
    });
}

// The source is read only where it counts, but its area must be there.
uint32_t drv_board_set_3clk_source(uint32_t inst_id, uint32_t sel_en, const uint32_t *l3clk_src) {
    return operate([&](board &b) {
        refuse_null(l3clk_src);
        const auto which = b.find<stratum3::family>(inst_id);
        refuse_if(sel_en > 1, error::bad_value);
        if (sel_en == 1) {
            stratum3::select(b, which, *l3clk_src);
        } else {
            stratum3::select_by_itself(b, which);
        }
    });
}

uint32_t drv_board_get_3clk_source_mode(uint32_t inst_id, uint32_t *sel_en) {
    return operate([&](board &b) {
        refuse_null(sel_en);
        const auto chip = stratum3::synthesiser(b, b.find<stratum3::family>(inst_id));
        *sel_en = b.get(chip, pll::ref_mode) == 0 ? 0 : 1;
    });
}
