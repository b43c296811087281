// ieth_test: the inner Ethernet ports, by which the boards of the chassis talk to each other. Their library is one that
// a board may lack; it needs nothing brought up before it is asked. No banners here.
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_inner_eth/drv_ieth.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/driver_library.h"
#include "shell/words.h"

namespace {

// Opens the library for one of its operations; null when either cannot be had, and no library is open then.
template <typename operation> operation *open_operation(const char *name, void **library) {
    *library = open_library("libdrv_inner_eth.so", failure_line::with_reasons);
    if (*library == nullptr) {
        return nullptr;
    }
    return find_operation<operation>(*library, name, failure_line::with_reasons);
}

int ieth_get_link_status(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    void *library = nullptr;
    const auto get_link_status =
        open_operation<decltype(drv_ieth_get_link_status)>("drv_ieth_get_link_status", &library);
    if (get_link_status == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("ieth port:%u \n\n", port);
    uint32_t status = 0;
    const uint32_t ret = get_link_status(port, &status);
    if (ret == 0) {
        printf("ieth port%u link status:%u \n\n", port, status);
    } else {
        printf("drv_ieth_get_link_status ret:%#x\n\n", ret);
    }
    close_library(library);
    return static_cast<int>(ret);
}

int ieth_set_loopback(int count, char **args) {
    if (count != 3) {
        puts("invalid arg num [port][mac_phy][mode]");
        return -1;
    }
    void *library = nullptr;
    const auto set_loopback = open_operation<decltype(drv_ieth_set_loopback)>("drv_ieth_set_loopback", &library);
    if (set_loopback == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t mac_phy = word_to_u32(args[1]);
    const uint32_t mode = word_to_u32(args[2]);
    printf("ieth port:%u mac_phy:%u mode:%u\n\n", port, mac_phy, mode);
    const uint32_t ret = set_loopback(port, mac_phy, mode);
    printf("drv_ieth_set_loopback ret:%#x\n\n", ret);
    close_library(library);
    return static_cast<int>(ret);
}

int ieth_get_rx_packets(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    void *library = nullptr;
    const auto get_rx_packets = open_operation<decltype(drv_ieth_get_rx_packets)>("drv_ieth_get_rx_packets", &library);
    if (get_rx_packets == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("ieth port:%u \n\n", port);
    uint64_t packets = 0;
    const uint32_t ret = get_rx_packets(port, &packets);
    if (ret == 0) {
        printf("ieth port%u rx packets:%" PRIu64 " \n\n", port, packets);
    } else {
        printf("drv_ieth_get_rx_packets ret:%#x\n\n", ret);
    }
    close_library(library);
    return static_cast<int>(ret);
}

int ieth_get_tx_packets(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    void *library = nullptr;
    const auto get_tx_packets = open_operation<decltype(drv_ieth_get_tx_packets)>("drv_ieth_get_tx_packets", &library);
    if (get_tx_packets == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("ieth port:%u \n\n", port);
    uint64_t packets = 0;
    const uint32_t ret = get_tx_packets(port, &packets);
    if (ret == 0) {
        printf("ieth port%u tx packets:%" PRIu64 " \n\n", port, packets);
    } else {
        printf("drv_ieth_get_tx_packets ret:%#x\n\n", ret);
    }
    close_library(library);
    return static_cast<int>(ret);
}

// An area that cannot be had is known by the echo: nothing follows it.
int ieth_dump_info(int count, char **args) {
    if (count != 3) {
        puts("invalid arg num [port] [mac_phy] [buf_len]");
        return -1;
    }
    void *library = nullptr;
    const auto dump_info = open_operation<decltype(drv_ieth_dump_info)>("drv_ieth_dump_info", &library);
    if (dump_info == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t mac_phy = word_to_u32(args[1]);
    const uint32_t buf_len = word_to_u32(args[2]);
    printf("ieth port:%u mac_phy:%u buf_len:%u\n\n", port, mac_phy, buf_len);
    char *buffer = new_text_area(buf_len);
    if (buffer == nullptr) {
        close_library(library);
        return -1;
    }
    const uint32_t ret = dump_info(port, mac_phy, buffer, buf_len);
    if (ret == 0) {
        printf("buff:\n%s \n\n", buffer);
    } else {
        printf("drv_ieth_dump_info ret:%#x\n\n", ret);
    }
    free(buffer);
    close_library(library);
    return static_cast<int>(ret);
}

// In one print, so that no line of a thread of the driver's comes between the counters.
void print_statistic(uint32_t port, const drv_ieth_statistic &counted) {
    printf("ieth port%u stat:\n"
           "rx_packets is %" PRIu64 "\n"
           "tx_packets is %" PRIu64 "\n"
           "rx_bytes is %" PRIu64 "\n"
           "tx_bytes is %" PRIu64 "\n"
           "rx_errors is %" PRIu64 "\n"
           "tx_errors is %" PRIu64 "\n"
           "rx_dropped is %" PRIu64 "\n"
           "tx_dropped is %" PRIu64 "\n"
           "multicast is %" PRIu64 "\n"
           "collisions is %" PRIu64 "\n"
           "rx_length_errors is %" PRIu64 "\n"
           "rx_over_errors is %" PRIu64 "\n"
           "rx_crc_errors is %" PRIu64 "\n"
           "rx_frame_errors is %" PRIu64 "\n"
           "rx_fifo_errors is %" PRIu64 "\n"
           "rx_missed_errors is %" PRIu64 "\n"
           "tx_aborted_errors is %" PRIu64 "\n"
           "tx_carrier_errors is %" PRIu64 "\n"
           "tx_fifo_errors is %" PRIu64 "\n"
           "tx_heartbeat_errors is %" PRIu64 "\n"
           "tx_window_errors is %" PRIu64 "\n"
           "rx_compressed is %" PRIu64 "\n"
           "tx_compressed is %" PRIu64 "\n",
           port, counted.rx_packets, counted.tx_packets, counted.rx_bytes, counted.tx_bytes, counted.rx_errors,
           counted.tx_errors, counted.rx_dropped, counted.tx_dropped, counted.multicast, counted.collisions,
           counted.rx_length_errors, counted.rx_over_errors, counted.rx_crc_errors, counted.rx_frame_errors,
           counted.rx_fifo_errors, counted.rx_missed_errors, counted.tx_aborted_errors, counted.tx_carrier_errors,
           counted.tx_fifo_errors, counted.tx_heartbeat_errors, counted.tx_window_errors, counted.rx_compressed,
           counted.tx_compressed);
}

int ieth_get_statistic(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    void *library = nullptr;
    const auto get_statistic = open_operation<decltype(drv_ieth_get_statistic)>("drv_ieth_get_statistic", &library);
    if (get_statistic == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("ieth port:%u \n\n", port);
    drv_ieth_statistic statistic{};
    const uint32_t ret = get_statistic(port, &statistic);
    if (ret == 0) {
        print_statistic(port, statistic);
    } else {
        printf("drv_ieth_get_statistic ret:%#x\n\n", ret);
    }
    close_library(library);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_ieth_get_link_status", ieth_get_link_status, "drv_ieth_get_link_status port"},
    command_row{"drv_ieth_set_loopback", ieth_set_loopback, "drv_ieth_set_loopback port mac_phy mode"},
    command_row{"drv_ieth_get_rx_packets", ieth_get_rx_packets, "drv_ieth_get_rx_packets port"},
    command_row{"drv_ieth_get_tx_packets", ieth_get_tx_packets, "drv_ieth_get_tx_packets port"},
    command_row{"drv_ieth_dump_info", ieth_dump_info, "drv_ieth_dump_info port mac_phy buf_len"},
    command_row{"drv_ieth_get_statistic", ieth_get_statistic, "drv_ieth_get_statistic port"},
};

static_assert(rows_are_sound(rows));

} // namespace

int ieth_test(int count, char **args) {
    return run_module(rows, count, args);
}
