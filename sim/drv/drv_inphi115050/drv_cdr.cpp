// Clock-and-data-recovery chips.
#include "drv_inphi115050/drv_cdr.h"

#include "sim/devices/network/cdr.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <chrono>
#include <thread>

using namespace kestro_sim;

namespace {

// So long the driver waits for an interface that it sets up, and no longer.
constexpr int64_t patience = 500 * nanoseconds_per_millisecond;

cdr_interface::one interface_at(board &b, uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector) {
    refuse_null(selector);
    return cdr::running_interface(b, b.instance(inst_id), chip_id, selector->inf_id);
}

// One that was set up for the rate that the selector names.
cdr_interface::one set_up_interface_at(board &b, uint32_t inst_id, uint32_t chip_id,
                                       const drv_cdr_interface *selector) {
    cdr_interface::one which = interface_at(b, inst_id, chip_id, selector);
    cdr::need_rate(b, which, selector->chl_rate);
    return which;
}

uint32_t tell(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector, char *area, uint32_t size,
              std::string (*text)(board &, const cdr_interface::one &)) {
    return operate([&](board &b) {
        refuse_null(area);
        write_text(area, size, text(b, set_up_interface_at(b, inst_id, chip_id, selector)));
    });
}

} // namespace

uint32_t drv_cdr_soft_init(uint32_t inst_id) {
    return operate([&](board &b) { cdr::prepare(b, b.instance(inst_id)); });
}

uint32_t drv_cdr_init_chip(uint32_t inst_id) {
    return operate([&](board &b) { cdr::start(b, b.instance(inst_id)); });
}

uint32_t drv_cdr_destroy_chip(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { cdr::stop(b, b.instance(inst_id), chip_id); });
}

uint32_t drv_cdr_init_interface(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector) {
    int64_t left = 0;
    const uint32_t result = operate([&](board &b) {
        const cdr_interface::one which = interface_at(b, inst_id, chip_id, selector);
        left = cdr::set_up(b, which, selector->chl_rate);
    });
    if (left > 0) {
        std::this_thread::sleep_for(std::chrono::nanoseconds(std::min(left, patience)));
    }
    return result;
}

uint32_t drv_cdr_destroy_interface(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector) {
    return operate([&](board &b) {
        const cdr_interface::one which = interface_at(b, inst_id, chip_id, selector);
        cdr::take_down(b, which, selector->chl_rate);
    });
}

uint32_t drv_cdr_reg_read(uint32_t inst_id, uint32_t chip_id, uint32_t sub_chip_id, uint32_t reg_addr,
                          uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const cdr_part::one part = cdr::running_part(b, b.instance(inst_id), chip_id, sub_chip_id);
        *value = read_space(b, cdr::registers, part, reg_addr);
    });
}

uint32_t drv_cdr_reg_write(uint32_t inst_id, uint32_t chip_id, uint32_t sub_chip_id, uint32_t reg_addr,
                           uint32_t value) {
    return operate([&](board &b) {
        const cdr_part::one part = cdr::running_part(b, b.instance(inst_id), chip_id, sub_chip_id);
        refuse_if(value > 0xFFFF, error::bad_value);
        write_space(b, cdr::registers, part, reg_addr, value);
    });
}

uint32_t drv_cdr_get_interface_config(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector, char *text,
                                      uint32_t size) {
    return tell(inst_id, chip_id, selector, text, size, cdr::config_text);
}

uint32_t drv_cdr_get_interface_status(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector, char *text,
                                      uint32_t size) {
    return tell(inst_id, chip_id, selector, text, size, cdr::status_text);
}

uint32_t drv_cdr_get_digit_eye(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector, char *text,
                               uint32_t size) {
    return tell(inst_id, chip_id, selector, text, size, cdr::eye_text);
}

uint32_t drv_cdr_get_interface_link(uint32_t inst_id, uint32_t chip_id, const drv_cdr_interface *selector, uint32_t dir,
                                    uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        const cdr_interface::one which = set_up_interface_at(b, inst_id, chip_id, selector);
        refuse_if(dir > 1, error::bad_value);
        const bool up = cdr::is_up(b, which, dir == 0 ? cdr::side::line : cdr::side::host);
        *status = up ? 1 : 0;
        refuse_if(!up, error::not_ready);
    });
}
