// How a board with soft resets started last.
#include "drv_basic/management/drv_softreset.h"

#include "sim/devices/management/soft_reset.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_softreset_get_reset_type(uint32_t inst_id, uint32_t *reset_type) {
    return operate([&](board &b) {
        refuse_null(reset_type);
        *reset_type = soft_reset::last(b, b.find<soft_reset::family>(inst_id));
    });
}
