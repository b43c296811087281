/* The SMI bus, by which the registers of the Ethernet PHYs are reached as clause 22 lays them out. */
#ifndef DRV_MDIO_H
#define DRV_MDIO_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Before the first and after the last transfer of a program. */
uint32_t drv_mdio_init(uint32_t inst_id);
uint32_t drv_mdio_exit(uint32_t inst_id);

/* phy_addr: 0 to 31. dev_addr: 0, as a PHY has no devices within itself by clause 22. offset: 0 to 31. */
uint32_t drv_mdio_read(uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, uint8_t dev_addr, uint16_t offset,
                       DRV_OUT uint16_t *value);
uint32_t drv_mdio_write(uint32_t inst_id, uint32_t chip_id, uint8_t phy_addr, uint8_t dev_addr, uint16_t offset,
                        uint16_t value);

DRV_END_DECLS

#endif
