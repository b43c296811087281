// The backplane, as far as the own board has a port to it.
#include "drv_basic/management/drv_backplane.h"

#include "sim/devices/chassis/backplane.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

device_of<backplane::family> readable_backplane(board &b) {
    b.find<backplane_port::family>(DRV_INST_SELF);
    return b.find_at<backplane::family>(board::chassis());
}

uint32_t read(word_of<backplane::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(readable_backplane(b), name);
    });
}

} // namespace

uint32_t drv_backplane_get_type(uint32_t *type) {
    return read(backplane::type, type);
}

uint32_t drv_backplane_get_pcb_ver(uint32_t *pcb_ver) {
    return read(backplane::pcb_ver, pcb_ver);
}

uint32_t drv_backplane_get_serdes_speed(uint32_t *speed) {
    return read(backplane::serdes_speed, speed);
}

uint32_t drv_backplane_check_id(uint32_t *check) {
    return operate([&](board &b) {
        refuse_null(check);
        *check = backplane::check_pins(b, readable_backplane(b)).status;
    });
}

uint32_t drv_backplane_fmea_check_id(uint32_t *check_result, char *dfx, uint32_t size) {
    return operate([&](board &b) { tell(backplane::check_pins(b, readable_backplane(b)), check_result, dfx, size); });
}
