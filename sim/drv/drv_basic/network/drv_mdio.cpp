// The SMI bus: the PHYs' registers without what their own driver knows of them.
#include "drv_basic/network/drv_mdio.h"

#include "sim/devices/network/phy.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

// Devices within a PHY are a matter of clause 45.
phy::one phy_at(board &b, uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, uint8_t dev_addr) {
    phy::one port = phy::find_at(b, b.instance(inst_id), chip_id, phy_addr);
    refuse_if(dev_addr != 0, error::bad_value);
    return port;
}

// Every board has the bus, whatever is on it, and it needs no bringing up.
uint32_t accept_instance_with_smi(uint32_t inst_id) {
    return operate([&](board &b) { b.instance(inst_id); });
}

} // namespace

uint32_t drv_mdio_init(uint32_t inst_id) {
    return accept_instance_with_smi(inst_id);
}

uint32_t drv_mdio_exit(uint32_t inst_id) {
    return accept_instance_with_smi(inst_id);
}

uint32_t drv_mdio_read(uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, uint8_t dev_addr, uint16_t offset,
                       uint16_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const phy::one port = phy_at(b, inst_id, chip_id, phy_addr, dev_addr);
        *value = static_cast<uint16_t>(read_space(b, phy::registers, port, offset));
    });
}

uint32_t drv_mdio_write(uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, uint8_t dev_addr, uint16_t offset,
                        uint16_t value) {
    return operate([&](board &b) {
        write_space(b, phy::registers, phy_at(b, inst_id, chip_id, phy_addr, dev_addr), offset, value);
    });
}
