/* Inner Ethernet ports: those by which the boards of the chassis talk to each other. A library that a board may lack.
 */
#ifndef DRV_IETH_H
#define DRV_IETH_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Since the board was started. */
struct drv_ieth_statistic {
    uint64_t rx_packets;
    uint64_t tx_packets;
    uint64_t rx_bytes;
    uint64_t tx_bytes;
    uint64_t rx_errors;
    uint64_t tx_errors;
    uint64_t rx_dropped;
    uint64_t tx_dropped;
    uint64_t multicast;
    uint64_t collisions;
    uint64_t rx_length_errors;
    uint64_t rx_over_errors;
    uint64_t rx_crc_errors;
    uint64_t rx_frame_errors;
    uint64_t rx_fifo_errors;
    uint64_t rx_missed_errors;
    uint64_t tx_aborted_errors;
    uint64_t tx_carrier_errors;
    uint64_t tx_fifo_errors;
    uint64_t tx_heartbeat_errors;
    uint64_t tx_window_errors;
    uint64_t rx_compressed;
    uint64_t tx_compressed;
};

DRV_STATIC_ASSERT(sizeof(struct drv_ieth_statistic) == 184, "23 counters cross the driver interface");

/* status: 1 when the link is up. */
uint32_t drv_ieth_get_link_status(uint32_t port, DRV_OUT uint32_t *status);

/* mac_phy: 0 at the MAC, 1 at the PHY. mode: 1 loops the port back, 0 ends it. */
uint32_t drv_ieth_set_loopback(uint32_t port, uint32_t mac_phy, uint32_t mode);

uint32_t drv_ieth_get_rx_packets(uint32_t port, DRV_OUT uint64_t *packets);
uint32_t drv_ieth_get_tx_packets(uint32_t port, DRV_OUT uint64_t *packets);

/* The registers of the MAC or the PHY as text, cut to the area. */
uint32_t drv_ieth_dump_info(uint32_t port, uint32_t mac_phy, DRV_OUT_TEXT(buf_len) char *buffer, uint32_t buf_len);

uint32_t drv_ieth_get_statistic(uint32_t port, DRV_OUT struct drv_ieth_statistic *statistic);

DRV_END_DECLS

#endif
