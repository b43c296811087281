// What the own board starts with.
#include "drv_basic/management/drv_startup.h"

#include "sim/devices/management/startup.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_update_startup_file(uint32_t file_type, const char *file_name) {
    return operate([&](board &b) {
        refuse_null(file_name);
        startup_file::choose_next(b, b.find_at<startup_file::family>(b.self(), file_type), file_name);
    });
}

uint32_t drv_clear_boot_lockword(uint32_t lock_id) {
    return operate([&](board &b) { boot_lock::clear(b, b.find_at<boot_lock::family>(b.self(), lock_id)); });
}

uint32_t drv_get_boot_lockword_status(uint32_t lock_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = static_cast<uint32_t>(boot_lock::read(b, b.find_at<boot_lock::family>(b.self(), lock_id)));
    });
}
