// Ethernet PHYs of the own board.
#include "drv_basic/network/drv_phy.h"

#include "sim/devices/network/phy.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

// An operation that names a medium is not meant for a port that uses the other one.
phy::one port_on(board &b, uint32_t chip_id, uint32_t port_id, uint32_t port_mode) {
    phy::one port = phy::find(b, chip_id, port_id);
    refuse_if(port_mode != b.get(port, phy::medium), error::bad_value);
    return port;
}

bool as_flag(uint32_t word) {
    refuse_if(word > 1, error::bad_value);
    return word == 1;
}

} // namespace

uint32_t drv_phy_port_initialization(uint32_t chip_id, uint32_t port_id) {
    return operate([&](board &b) { phy::reset(b, phy::find(b, chip_id, port_id)); });
}

// A port that bears another identifier is another chip than the one that belongs there.
uint32_t drv_phy_check_deviceid(uint32_t chip_id) {
    return operate([&](board &b) {
        const uint32_t expected = b.get(b.find_at<phy_chip::family>(b.self(), chip_id), phy_chip::identifier);
        for (const phy::one &port : phy::ports_of(b, chip_id)) {
            refuse_if(b.get(port, phy::identifier) != expected, error::no_such_device);
        }
    });
}

uint32_t drv_phy_get_port_link(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t *link_status) {
    return operate([&](board &b) {
        refuse_null(link_status);
        *link_status = phy::is_up(b, port_on(b, chip_id, port_id, port_mode)) ? 1 : 0;
    });
}

uint32_t drv_phy_set_port_loopback(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t loopback) {
    return operate([&](board &b) { phy::set_loopback(b, port_on(b, chip_id, port_id, port_mode), as_flag(loopback)); });
}

uint32_t drv_phy_get_port_loopback(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t *loopback) {
    return operate([&](board &b) {
        refuse_null(loopback);
        *loopback = phy::is_looped(b, port_on(b, chip_id, port_id, port_mode)) ? 1 : 0;
    });
}

uint32_t drv_phy_set_port_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t speed) {
    return operate([&](board &b) { phy::set_speed(b, port_on(b, chip_id, port_id, port_mode), speed); });
}

uint32_t drv_phy_get_port_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t *speed) {
    return operate([&](board &b) {
        refuse_null(speed);
        *speed = phy::speed(b, port_on(b, chip_id, port_id, port_mode));
    });
}

uint32_t drv_phy_get_port_config_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t *speed) {
    return operate([&](board &b) {
        refuse_null(speed);
        *speed = phy::configured_speed(b, port_on(b, chip_id, port_id, port_mode));
    });
}

uint32_t drv_phy_set_port_mode(uint32_t chip_id, uint32_t port_id, uint32_t port_mode) {
    return operate([&](board &b) { phy::set_medium(b, phy::find(b, chip_id, port_id), port_mode); });
}

uint32_t drv_phy_get_port_mode(uint32_t chip_id, uint32_t port_id, uint32_t *port_mode) {
    return operate([&](board &b) {
        refuse_null(port_mode);
        *port_mode = b.get(phy::find(b, chip_id, port_id), phy::medium);
    });
}

uint32_t drv_phy_get_reg(uint32_t chip_id, uint32_t port_id, uint32_t reg, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = read_space(b, phy::registers, phy::find(b, chip_id, port_id), reg);
    });
}

uint32_t drv_phy_set_reg(uint32_t chip_id, uint32_t port_id, uint32_t reg, uint32_t value) {
    return operate([&](board &b) {
        const phy::one port = phy::find(b, chip_id, port_id);
        refuse_if(value > 0xFFFF, error::bad_value);
        write_space(b, phy::registers, port, reg, value);
    });
}

uint32_t drv_phy_set_port_status(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t enable) {
    return operate([&](board &b) { phy::switch_to(b, port_on(b, chip_id, port_id, port_mode), as_flag(enable)); });
}

uint32_t drv_phy_get_port_status(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t *enable) {
    return operate([&](board &b) {
        refuse_null(enable);
        *enable = phy::is_on(b, port_on(b, chip_id, port_id, port_mode)) ? 1 : 0;
    });
}

uint32_t drv_phy_nick(uint32_t chip_id) {
    return operate([&](board &b) { phy::leave_mark(b, chip_id); });
}

uint32_t drv_phy_check_nick(uint32_t chip_id, uint32_t *check_result) {
    return operate([&](board &b) {
        refuse_null(check_result);
        *check_result = phy::bears_mark(b, chip_id) ? 0 : 1;
    });
}
