// The SMI bus. A PHY's control register is read and written back as it was: the bits that reset it or begin its link
// anew read as 0, so the links stay up.
#include "selftest/chips/mdio_bus.h"

#include "drv_basic/network/drv_mdio.h"
#include "selftest/entry_walk.h"

namespace {

// Clause 22 has no devices within a PHY.
constexpr uint8_t no_device = 0;
constexpr uint16_t control_register = 0;

// What fails here is an "Info" line and a failure all the same.
int check_phy(uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, report_sink sink) {
    uint16_t value = 0;
    uint32_t ret = drv_mdio_read(inst_id, chip_id, phy_addr, no_device, control_register, &value);
    if (ret != 0) {
        report_append(sink, "Info   : mdio chip 0x%x mdio read fail 0x%x.\r\n", chip_id, ret);
        return -1;
    }
    ret = drv_mdio_write(inst_id, chip_id, phy_addr, no_device, control_register, value);
    if (ret != 0) {
        report_append(sink, "Info   : mdio chip 0x%x mdio write fail 0x%x. address 0x%x value 0x%x \r\n", chip_id, ret,
                      control_register, value);
        return -1;
    }
    report_append(sink, "Success: mdio chip 0x%x mdio read write pass. address 0x%x value 0x%x \r\n", chip_id,
                  control_register, value);
    return 0;
}

bool read_required(const entry_walk &walk, const char *name, uint32_t *value, report_sink sink) {
    const uint32_t ret = read_element(walk, name, value);
    if (ret != 0) {
        report_append(sink, "Error: mdio xml get %s fail 0x%x.\r\n", name, ret);
    }
    return ret == 0;
}

} // namespace

int mdio_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "smi", "smi_dev");
    if (!has_entries(walk)) {
        report_append(sink, "Info   : mdio bus is not support.\r\n");
        return 0;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip_id = 0;
        uint32_t phy_addr = 0;
        if (!read_required(walk, "chip_id", &chip_id, sink) || !read_required(walk, "phy_addr", &phy_addr, sink)) {
            result = -1;
            continue;
        }
        result |= check_phy(inst_id, chip_id, static_cast<uint8_t>(phy_addr), sink);
    }
    return result;
}
