// Serial management bus: frames that were sent or received with errors, by slot. Reading does not clear the counters.
#include "drv_basic/management/drv_smb.h"

#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr device_kind links{"sim_smb", "link"};

uint32_t read_counter(uint32_t inst_id, uint32_t slot_id, const char *name, uint32_t *count) {
    return operate([&](board &b) {
        refuse_null(count);
        *count = b.get(b.find(inst_id, links, slot_id), name);
    });
}

} // namespace

uint32_t drv_smb_get_tx_err_count(uint32_t inst_id, uint32_t slot_id, uint32_t *count) {
    return read_counter(inst_id, slot_id, "tx_errors", count);
}

uint32_t drv_smb_get_rx_err_count(uint32_t inst_id, uint32_t slot_id, uint32_t *count) {
    return read_counter(inst_id, slot_id, "rx_errors", count);
}
