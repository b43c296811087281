/* Cluster ports: the Ethernet ports by which chassis are joined to a cluster. A library that a board may lack.
 *
 * Needs the CPLDs and the local bus, which the caller brings up first. */
#ifndef DRV_CLUSTERPORT_H
#define DRV_CLUSTERPORT_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Since the port was last reset; frames of any size, errors included. */
struct drv_clusterport_statistics {
    uint64_t in_bytes;
    uint64_t in_frames;
    uint64_t in_multicast_frames;
    uint64_t in_brdcast_frames;
    uint64_t in_unicast_frames;
    uint64_t in_fcserr_frames;
    uint64_t in_oversize_frames;
    uint64_t in_jab_frames;
    uint64_t in_fragment_frames;
    uint64_t in_drop_frames;
    uint64_t in_undersize_frames;
    uint64_t in_err_frames;
    uint64_t in_crc_bad_frames;
    uint64_t in_reserved;
    uint64_t out_bytes;
    uint64_t out_frames;
    uint64_t out_multicast_frames;
    uint64_t out_brdcast_frames;
    uint64_t out_unicast_frames;
    uint64_t out_err_frames;
    uint64_t out_drop_frames;
    uint64_t out_reserved;
};

DRV_STATIC_ASSERT(sizeof(struct drv_clusterport_statistics) == 176, "22 counters cross the driver interface");

uint32_t drv_clusterport_init(void);
uint32_t drv_clusterport_exit(void);

/* result: 0 when the PHY is well. */
uint32_t drv_clusterport_get_phy_test(uint32_t port, DRV_OUT uint32_t *result);

/* flag: 1 shuts the port, 0 opens it. */
uint32_t drv_clusterport_set_shut(uint32_t port, uint32_t flag);

/* In Mbit/s. */
uint32_t drv_clusterport_get_speed(uint32_t port, DRV_OUT uint32_t *speed);
uint32_t drv_clusterport_set_speed(uint32_t port, uint32_t speed);

/* mode: 0 half duplex, 1 full duplex. */
uint32_t drv_clusterport_get_mode(uint32_t port, DRV_OUT uint32_t *mode);

/* status: 1 when the link is up. */
uint32_t drv_clusterport_get_link_status(uint32_t port, DRV_OUT uint32_t *status);
uint32_t drv_clusterport_get_statistics(uint32_t port, DRV_OUT struct drv_clusterport_statistics *statistics);

/* reset_type: 0 the MAC and its counters, 1 the PHY. */
uint32_t drv_clusterport_reset(uint32_t port, uint32_t reset_type);

/* oper_type: 0 off, 1 on, 2 blinking, 3 as the link says. */
uint32_t drv_clusterport_set_led(uint32_t port, uint32_t oper_type);

DRV_END_DECLS

#endif
