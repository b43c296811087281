// The sub-commands of meth_test, by subject, and what their handlers share.
#pragma once

#include <cstdint>

#include "drv_mng_eth/drv_meth.h"
#include "shell/driver_library.h"

namespace meth_commands {

constexpr const char *library_file = "libdrv_mng_eth.so";

// The library, open for one sub-command, and the operation that it is for. Where there is none that has been said, and
// nothing is open.
template <typename operation> struct opened {
    void *library;
    operation *call;
};

template <typename operation> opened<operation> open_for(const char *name, failure_line line = failure_line::brief) {
    void *library = open_library(library_file, line);
    return {library, library != nullptr ? find_operation<operation>(library, name, line) : nullptr};
}

// The operation and what it returned.
void print_operation(const char *name, uint32_t ret);

int meth_init(int count, char **args);
int meth_exit(int count, char **args);
int meth_get_port_num(int count, char **args);
int meth_set_switch_flag(int count, char **args);
int meth_is_readable(int count, char **args);
int meth_get_rx_pkt(int count, char **args);
int meth_tx_pkt(int count, char **args);
int meth_get_autonego(int count, char **args);
int meth_get_speed(int count, char **args);
int meth_get_media_type(int count, char **args);
int meth_get_link_status(int count, char **args);
int meth_get_mac(int count, char **args);
int meth_set_active_ornot(int count, char **args);
int meth_set_shutdown(int count, char **args);
int meth_get_phy_test(int count, char **args);
int meth_set_led(int count, char **args);
int meth_get_rx_packets(int count, char **args);
int meth_get_tx_packets(int count, char **args);
int meth_get_statistic(int count, char **args);
int meth_dump_info(int count, char **args);

// Kept for bring-up, and in no table: a register written by mistake takes the port that the operator came in by.
int meth_read_reg(int count, char **args);
int meth_write_reg(int count, char **args);

} // namespace meth_commands
