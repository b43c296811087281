// Serial management bus: frames that were sent or received with errors, by slot. Reading does not clear the counters.
#include "drv_basic/management/drv_smb.h"

#include "sim/devices/management/bus_links.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

uint32_t read_counter(uint32_t inst_id, uint32_t slot_id, word_of<smb_link::family> name, uint32_t *count) {
    return operate([&](board &b) {
        refuse_null(count);
        *count = b.get(b.find<smb_link::family>(inst_id, slot_id), name);
    });
}

} // namespace

uint32_t drv_smb_get_tx_err_count(uint32_t inst_id, uint32_t slot_id, uint32_t *count) {
    return read_counter(inst_id, slot_id, smb_link::tx_errors, count);
}

uint32_t drv_smb_get_rx_err_count(uint32_t inst_id, uint32_t slot_id, uint32_t *count) {
    return read_counter(inst_id, slot_id, smb_link::rx_errors, count);
}
