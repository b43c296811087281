// smi_test: registers of the Ethernet PHYs as the SMI bus reaches them. No banners and no result print. The bus is
// opened for each sub-command and closed whatever became of the transfer. The lines about a bus that cannot be opened
// call it the local bus.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/network/drv_mdio.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

// Words are cut to what the bus has: 8 bits for an address, 16 for a register and its value.
uint8_t word_to_u8(const char *word) {
    return static_cast<uint8_t>(word_to_u32(word));
}

uint16_t word_to_u16(const char *word) {
    return static_cast<uint16_t>(word_to_u32(word));
}

int smi_read(int count, char **args) {
    if (count < 5) {
        printf("smi_read parameter number %d is invalid.\r\n", count);
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint8_t phy_addr = word_to_u8(args[2]);
    const uint8_t dev_addr = word_to_u8(args[3]);
    const uint16_t offset = word_to_u16(args[4]);
    uint16_t value = 0;
    uint32_t ret = drv_mdio_init(inst_id);
    if (ret != 0) {
        printf("smi_read local bus init failed, errorCode:%#x.\r\n", ret);
        return -1;
    }
    ret = drv_mdio_read(inst_id, chip_id, phy_addr, dev_addr, offset, &value);
    if (ret == 0) {
        printf("smi_read phy_addr:[0x%x], dev_addr:[0x%x], offset:[0x%x], value:[0x%x].\r\n", phy_addr, dev_addr,
               offset, value);
    } else {
        printf("smi_read fail, errorCode:%#x.\r\n", ret);
    }
    drv_mdio_exit(inst_id);
    return static_cast<int>(ret);
}

// Without its last word, the value, it writes 0.
int smi_write(int count, char **args) {
    if (count < 5) {
        printf("smi_write parameter number %u is invalid.\r\n", static_cast<unsigned>(count));
        return -1;
    }
    const uint32_t inst_id = word_to_u32(args[0]);
    const uint32_t chip_id = word_to_u32(args[1]);
    const uint8_t phy_addr = word_to_u8(args[2]);
    const uint8_t dev_addr = word_to_u8(args[3]);
    const uint16_t offset = word_to_u16(args[4]);
    const uint16_t data = count > 5 ? word_to_u16(args[5]) : uint16_t{0};
    uint32_t ret = drv_mdio_init(inst_id);
    if (ret != 0) {
        printf("smi_write local bus init failed, errorCode:%#x.\r\n", ret);
        return -1;
    }
    ret = drv_mdio_write(inst_id, chip_id, phy_addr, dev_addr, offset, data);
    if (ret == 0) {
        printf("smi_write phy_addr:[0x%x], dev_addr:[0x%x], offset:[0x%x], value:[0x%x].\r\n", phy_addr, dev_addr,
               offset, data);
    } else {
        printf("smi_write fail, errorCode:%#x.\r\n", ret);
    }
    drv_mdio_exit(inst_id);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"smi_read", smi_read, "smi_read inst_id chip_id phy_addr dev_addr offset"},
    command_row{"smi_write", smi_write, "smi_write inst_id chip_id phy_addr dev_addr offset data"},
};

static_assert(rows_are_sound(rows));

} // namespace

int smi_test(int count, char **args) {
    return run_module(rows, count, args, timing_off);
}
