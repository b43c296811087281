// The watchdogs. Those that are cleared, set and switched are of the own board; another board's can be looked at.
#include "drv_basic/management/drv_watchdog.h"

#include "sim/devices/management/watchdog.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

watchdog::one own(board &b, uint32_t id) {
    return b.find_at<watchdog::family>(b.self(), id);
}

uint32_t clear_own(uint32_t id) {
    return operate([&](board &b) { watchdog::clear(b, own(b, id)); });
}

uint32_t enable_own(uint32_t id, uint32_t enable) {
    return operate([&](board &b) { watchdog::enable(b, own(b, id), enable != 0); });
}

uint32_t set_own_timeout(uint32_t id, uint32_t timeout) {
    return operate([&](board &b) { watchdog::set_seconds(b, own(b, id), timeout); });
}

} // namespace

uint32_t drv_watchdog_clr(void) {
    return clear_own(watchdog::of_system);
}

uint32_t drv_watchdog_enable(uint32_t enable) {
    return enable_own(watchdog::of_system, enable);
}

uint32_t drv_watchdog_is_enable(uint32_t *enable) {
    return operate([&](board &b) {
        refuse_null(enable);
        *enable = watchdog::is_enabled(b, own(b, watchdog::of_system)) ? 1 : 0;
    });
}

uint32_t drv_watchdog_get_timeout(uint32_t *timeout) {
    return operate([&](board &b) {
        refuse_null(timeout);
        *timeout = watchdog::seconds(b, own(b, watchdog::of_system));
    });
}

uint32_t drv_watchdog_set_timeout(uint32_t timeout) {
    return set_own_timeout(watchdog::of_system, timeout);
}

uint32_t drv_hardbad_watchdog_enable(uint32_t enable) {
    return enable_own(watchdog::of_bad_hardware, enable);
}

uint32_t drv_hardbad_watchdog_set_timeout(uint32_t timeout) {
    return set_own_timeout(watchdog::of_bad_hardware, timeout);
}

uint32_t drv_hardbad_watchdog_clr(void) {
    return clear_own(watchdog::of_bad_hardware);
}

uint32_t drv_hardbad_watchdog_dump_reg(uint32_t inst_id, char *buffer, uint32_t len) {
    return operate([&](board &b) {
        write_text(buffer, len, watchdog::dump(b, b.find<watchdog::family>(inst_id, watchdog::of_bad_hardware)));
    });
}
