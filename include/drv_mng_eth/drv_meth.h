/* Management Ethernet ports: those on the front of a main processing unit. A library that a board may lack. */
#ifndef DRV_METH_H
#define DRV_METH_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_METH_MAC_SIZE 6

/* Since the port was initialised. The last counter is not used. */
struct drv_meth_statistic {
    uint64_t rx_bytes_ok;
    uint64_t rx_bytes_err;
    uint64_t rx_unicast;
    uint64_t rx_multicast;
    uint64_t rx_broadcast;
    uint64_t rx_pkt_64;
    uint64_t rx_pkt_127;
    uint64_t rx_pkt_255;
    uint64_t rx_pkt_511;
    uint64_t rx_pkt_1023;
    uint64_t rx_pkt_1518;
    uint64_t rx_pkt_max;
    uint64_t rx_fcs;
    uint64_t rx_tagged;
    uint64_t rx_pkt_err;
    uint64_t rx_align_err;
    uint64_t rx_long_err;
    uint64_t rx_jabber_err;
    uint64_t rx_pause;
    uint64_t rx_unknown;
    uint64_t rx_too_long;
    uint64_t rx_runt_err;
    uint64_t rx_short_err;
    uint64_t rx_filt_pkts;
    uint64_t rx_filt_bytes;
    uint64_t tx_bytes_ok;
    uint64_t tx_bytes_err;
    uint64_t tx_unicast;
    uint64_t tx_multicast;
    uint64_t tx_broadcast;
    uint64_t tx_pkt_64;
    uint64_t tx_pkt_127;
    uint64_t tx_pkt_255;
    uint64_t tx_pkt_511;
    uint64_t tx_pkt_1023;
    uint64_t tx_pkt_1518;
    uint64_t tx_pkt_max;
    uint64_t tx_exce_drop;
    uint64_t tx_under_run;
    uint64_t tx_tagged;
    uint64_t tx_crc_err;
    uint64_t tx_pause_frame;
    uint64_t reserved;
};

DRV_STATIC_ASSERT(sizeof(struct drv_meth_statistic) == 344, "43 counters cross the driver interface");

/* Called by a thread of the driver for each packet that a port received; data is valid until it returns. Returns how
 * many bytes it took. */
typedef uint32_t (*drv_meth_rx_callback)(uint32_t port, void *data, void *reserved, uint32_t length);

uint32_t drv_meth_init(uint32_t port);
uint32_t drv_meth_exit(uint32_t port);
uint32_t drv_meth_get_port_num(DRV_OUT uint32_t *number);

/* flag: 1 joins the port to the switch of the board, 0 takes it out. */
uint32_t drv_meth_set_switch_flag(uint32_t port, uint32_t flag);

/* readable: 1 when a received packet waits. */
uint32_t drv_meth_is_readable(uint32_t port, DRV_OUT uint32_t *readable);

/* The packet that waits longest, cut to the area. */
uint32_t drv_meth_get_rx_pkt(uint32_t port, DRV_OUT_BYTES(buf_len, read_len) uint8_t *buffer, uint32_t buf_len,
                             DRV_INOUT uint32_t *read_len);

/* The driver writes what the port receives into the area of so many bytes, for as long as it stays registered: longer
 * than this call. It is never unregistered. */
uint32_t drv_meth_register_callback(uint32_t port, drv_meth_rx_callback callback, void *buffer, uint32_t size);

uint32_t drv_meth_tx_pkt(uint32_t port, DRV_IN_BYTES(buf_len) const uint8_t *buffer, uint32_t buf_len);

/* enable: 1 when speed and duplex are negotiated. */
uint32_t drv_meth_get_autonego(uint32_t port, DRV_OUT uint32_t *enable);

/* In Mbit/s. */
uint32_t drv_meth_get_speed(uint32_t port, DRV_OUT uint32_t *speed);

/* media_type: 0 copper, 1 fibre. */
uint32_t drv_meth_get_media_type(uint32_t port, DRV_OUT uint32_t *media_type);

/* status: 1 when the link is up. */
uint32_t drv_meth_get_link_status(uint32_t port, DRV_OUT uint32_t *status);
uint32_t drv_meth_get_mac(uint32_t port, DRV_OUT_BYTES(DRV_METH_MAC_SIZE) uint8_t *mac);

/* flag: 1 when the board is the active one of two and its port is the one in use. */
uint32_t drv_meth_set_active_ornot(uint32_t port, uint32_t flag);

/* flag: 1 shuts the port, 0 opens it. */
uint32_t drv_meth_set_shutdown(uint32_t port, uint32_t flag);

/* result: 0 when the PHY is well; the text says what was found. */
uint32_t drv_meth_get_phy_test(uint32_t port, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *buffer, uint32_t size);

/* mac_phy: 0 a register of the MAC, 1 of the PHY. */
uint32_t drv_meth_read_reg(uint32_t port, uint32_t mac_phy, uint32_t addr, DRV_OUT uint32_t *val);
uint32_t drv_meth_write_reg(uint32_t port, uint32_t mac_phy, uint32_t addr, uint32_t val);

/* oper_type: 0 off, 1 on, 2 blinking, 3 as the link says. */
uint32_t drv_meth_set_led(uint32_t port, uint32_t oper_type);

uint32_t drv_meth_get_rx_packets(uint32_t port, DRV_OUT uint64_t *packets);
uint32_t drv_meth_get_tx_packets(uint32_t port, DRV_OUT uint64_t *packets);
uint32_t drv_meth_get_statistic(uint32_t port, DRV_OUT struct drv_meth_statistic *statistic);

/* The registers of the MAC or the PHY as text, cut to the area. */
uint32_t drv_meth_dump_info(uint32_t port, uint32_t mac_phy, DRV_OUT_TEXT(size) char *buffer, uint32_t size);

DRV_END_DECLS

#endif
