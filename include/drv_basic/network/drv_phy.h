/* Ethernet PHYs of the management network, by chip and port: a port is known by its address on the SMI bus.
 *
 * port_mode names the medium that an operation is meant for: 0 copper, 1 fibre. A port that is in the other mode
 * refuses it. Speeds are in Mbit/s. */
#ifndef DRV_PHY_H
#define DRV_PHY_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Resets the port: it negotiates its link anew, without loopback, and is on afterwards. */
uint32_t drv_phy_port_initialization(uint32_t chip_id, uint32_t port_id);

/* 0 when every port of the chip bears the identifier of the chip that belongs there. */
uint32_t drv_phy_check_deviceid(uint32_t chip_id);

/* link_status: 1 when the link is up. */
uint32_t drv_phy_get_port_link(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, DRV_OUT uint32_t *link_status);

/* loopback: 1 sends back what the processor sends. */
uint32_t drv_phy_set_port_loopback(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t loopback);
uint32_t drv_phy_get_port_loopback(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, DRV_OUT uint32_t *loopback);

/* speed: 10, 100 or 1000 without negotiation, 0 to negotiate. What is read is the speed of the link, 0 without one. */
uint32_t drv_phy_set_port_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t speed);
uint32_t drv_phy_get_port_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, DRV_OUT uint32_t *speed);

/* The speed as it was set; 0 when it is negotiated. */
uint32_t drv_phy_get_port_config_speed(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, DRV_OUT uint32_t *speed);

uint32_t drv_phy_set_port_mode(uint32_t chip_id, uint32_t port_id, uint32_t port_mode);
uint32_t drv_phy_get_port_mode(uint32_t chip_id, uint32_t port_id, DRV_OUT uint32_t *port_mode);

/* reg: 0 to 31; values have 16 bits. */
uint32_t drv_phy_get_reg(uint32_t chip_id, uint32_t port_id, uint32_t reg, DRV_OUT uint32_t *value);
uint32_t drv_phy_set_reg(uint32_t chip_id, uint32_t port_id, uint32_t reg, uint32_t value);

/* enable: 0 powers the port down, 1 powers it up. */
uint32_t drv_phy_set_port_status(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, uint32_t enable);
uint32_t drv_phy_get_port_status(uint32_t chip_id, uint32_t port_id, uint32_t port_mode, DRV_OUT uint32_t *enable);

/* Leaves the driver's mark, the nick value, in a register of each port that a reset clears. */
uint32_t drv_phy_nick(uint32_t chip_id);

/* check_result: 0 when all ports of the chip still bear the mark, 1 when one was reset meanwhile. */
uint32_t drv_phy_check_nick(uint32_t chip_id, DRV_OUT uint32_t *check_result);

DRV_END_DECLS

#endif
