// meth_test: the management Ethernet ports, by which a board is reached when nothing else works: their link, lamp and
// counters, packets sent and received, and their registers. Their driver library may be missing; each sub-command opens
// it for itself and takes an exact number of words. The handlers stand by subject in the files beside this one.
#include <array>
#include <cstdio>

#include "modules/meth_test/handlers.h"
#include "modules/modules.h"
#include "shell/dispatch.h"

namespace meth_commands {

void print_operation(const char *name, uint32_t ret) {
    printf("%s ret:%u\n\n", name, ret);
}

} // namespace meth_commands

namespace {

using namespace meth_commands;

constexpr std::array rows = {
    command_row{"drv_meth_init", meth_init, "drv_meth_init port"},
    command_row{"drv_meth_exit", meth_exit, "drv_meth_exit port"},
    command_row{"drv_meth_get_port_num", meth_get_port_num, "drv_meth_get_port_num"},
    command_row{"drv_meth_set_switch_flag", meth_set_switch_flag, "drv_meth_set_switch_flag port flag"},
    command_row{"drv_meth_is_readable", meth_is_readable, "drv_meth_is_readable port"},
    command_row{"drv_meth_get_rx_pkt", meth_get_rx_pkt, "drv_meth_get_rx_pkt port buf_len"},
    command_row{"drv_meth_tx_pkt", meth_tx_pkt, "drv_meth_tx_pkt port tx_buf buf_len"},
    command_row{"drv_meth_get_autonego", meth_get_autonego, "drv_meth_get_autonego port"},
    command_row{"drv_meth_get_speed", meth_get_speed, "drv_meth_get_speed port"},
    command_row{"drv_meth_get_media_type", meth_get_media_type, "drv_meth_get_media_type port"},
    command_row{"drv_meth_get_link_status", meth_get_link_status, "drv_meth_get_link_status port"},
    command_row{"drv_meth_get_mac", meth_get_mac, "drv_meth_get_mac port"},
    command_row{"drv_meth_set_active_ornot", meth_set_active_ornot, "drv_meth_set_active_ornot port flag"},
    command_row{"drv_meth_set_shutdown", meth_set_shutdown, "drv_meth_set_shutdown port flag"},
    command_row{"drv_meth_get_phy_test", meth_get_phy_test, "drv_meth_get_phy_test port"},
    command_row{"drv_meth_set_led", meth_set_led, "drv_meth_set_led port oper_type"},
    command_row{"drv_meth_get_rx_packets", meth_get_rx_packets, "drv_meth_get_rx_packets port"},
    command_row{"drv_meth_get_tx_packets", meth_get_tx_packets, "drv_meth_get_tx_packets port"},
    command_row{"drv_meth_get_statistic", meth_get_statistic, "drv_meth_get_statistic port"},
    command_row{"drv_meth_dump_info", meth_dump_info, "drv_meth_dump_info port mac_phy"},
};

static_assert(rows_are_sound(rows));

} // namespace

int meth_test(int count, char **args) {
    return run_module(rows, count, args);
}
