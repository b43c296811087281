// Packets of a management port: sent, received, and counted.
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "modules/meth_test/handlers.h"
#include "shell/console.h"
#include "shell/standard_streams.h"
#include "shell/words.h"

namespace meth_commands {

namespace {

// The driver has no way to unregister: it writes into this area, and calls back, for as long as the process lives,
// after its library has been closed, too. So the area is never given back, and nobody here touches it once it is
// registered.
constexpr uint32_t receive_size = 2048;
uint8_t receive_area[receive_size];

// Called on a thread of the driver while the main one prints its own lines, each a call; so the block is printed under
// the stream's lock. The end of a packet ends no line: only a full one does.
uint32_t print_received(uint32_t /*port*/, void *data, void * /*reserved*/, uint32_t length) {
    constexpr uint32_t bytes_a_line = 16;
    const auto *bytes = static_cast<const uint8_t *>(data);
    if (!hold_output()) {
        return length;
    }
    puts("test:\r");
    for (uint32_t i = 0; i < length; ++i) {
        printf("0x%x", bytes[i]);
        if ((i + 1) % bytes_a_line == 0) {
            puts("\r");
        }
    }
    flush_partial_line();
    release_output();
    return length;
}

// What it takes to send. Nothing is open unless all of it is there.
struct sender {
    void *library;
    decltype(drv_meth_init) *init;
    decltype(drv_meth_register_callback) *register_callback;
    decltype(drv_meth_tx_pkt) *send;
};

sender open_sender() {
    constexpr failure_line line = failure_line::brief;
    sender meth{};
    meth.library = open_library(library_file, line);
    if (meth.library == nullptr) {
        return meth;
    }
    meth.init = find_operation<decltype(drv_meth_init)>(meth.library, "drv_meth_init", line);
    if (meth.init == nullptr) {
        return meth;
    }
    meth.register_callback =
        find_operation<decltype(drv_meth_register_callback)>(meth.library, "drv_meth_register_callback", line);
    if (meth.register_callback == nullptr) {
        return meth;
    }
    meth.send = find_operation<decltype(drv_meth_tx_pkt)>(meth.library, "drv_meth_tx_pkt", line);
    return meth;
}

// How many packets a port has received or sent, as the label says.
template <typename operation> int get_packets(const char *name, const char *label, int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<operation>(name, failure_line::with_reasons);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    uint64_t packets = 0;
    printf("port:%u\n\n", port);
    const uint32_t ret = meth.call(port, &packets);
    if (ret == 0) {
        printf("%s packets:%" PRIu64 " \n\n", label, packets);
    } else {
        print_operation(name, ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

struct counter {
    const char *name;
    uint64_t drv_meth_statistic::*value;
};

constexpr std::array counters = {
    counter{"rx_bytes_ok", &drv_meth_statistic::rx_bytes_ok},
    counter{"rx_bytes_err", &drv_meth_statistic::rx_bytes_err},
    counter{"rx_unicast", &drv_meth_statistic::rx_unicast},
    counter{"rx_multicast", &drv_meth_statistic::rx_multicast},
    counter{"rx_broadcast", &drv_meth_statistic::rx_broadcast},
    counter{"rx_pkt_64", &drv_meth_statistic::rx_pkt_64},
    counter{"rx_pkt_127", &drv_meth_statistic::rx_pkt_127},
    counter{"rx_pkt_255", &drv_meth_statistic::rx_pkt_255},
    counter{"rx_pkt_511", &drv_meth_statistic::rx_pkt_511},
    counter{"rx_pkt_1023", &drv_meth_statistic::rx_pkt_1023},
    counter{"rx_pkt_1518", &drv_meth_statistic::rx_pkt_1518},
    counter{"rx_pkt_max", &drv_meth_statistic::rx_pkt_max},
    counter{"rx_fcs", &drv_meth_statistic::rx_fcs},
    counter{"rx_tagged", &drv_meth_statistic::rx_tagged},
    counter{"rx_pkt_err", &drv_meth_statistic::rx_pkt_err},
    counter{"rx_align_err", &drv_meth_statistic::rx_align_err},
    counter{"rx_long_err", &drv_meth_statistic::rx_long_err},
    counter{"rx_jabber_err", &drv_meth_statistic::rx_jabber_err},
    counter{"rx_pause", &drv_meth_statistic::rx_pause},
    counter{"rx_unknown", &drv_meth_statistic::rx_unknown},
    counter{"rx_too_long", &drv_meth_statistic::rx_too_long},
    counter{"rx_runt_err", &drv_meth_statistic::rx_runt_err},
    counter{"rx_short_err", &drv_meth_statistic::rx_short_err},
    counter{"rx_filt_pkts", &drv_meth_statistic::rx_filt_pkts},
    counter{"rx_filt_bytes", &drv_meth_statistic::rx_filt_bytes},
    counter{"tx_bytes_ok", &drv_meth_statistic::tx_bytes_ok},
    counter{"tx_bytes_err", &drv_meth_statistic::tx_bytes_err},
    counter{"tx_unicast", &drv_meth_statistic::tx_unicast},
    counter{"tx_multicast", &drv_meth_statistic::tx_multicast},
    counter{"tx_broadcast", &drv_meth_statistic::tx_broadcast},
    counter{"tx_pkt_64", &drv_meth_statistic::tx_pkt_64},
    counter{"tx_pkt_127", &drv_meth_statistic::tx_pkt_127},
    counter{"tx_pkt_255", &drv_meth_statistic::tx_pkt_255},
    counter{"tx_pkt_511", &drv_meth_statistic::tx_pkt_511},
    counter{"tx_pkt_1023", &drv_meth_statistic::tx_pkt_1023},
    counter{"tx_pkt_1518", &drv_meth_statistic::tx_pkt_1518},
    counter{"tx_pkt_max", &drv_meth_statistic::tx_pkt_max},
    counter{"tx_exce_drop", &drv_meth_statistic::tx_exce_drop},
    counter{"tx_under_run", &drv_meth_statistic::tx_under_run},
    counter{"tx_tagged", &drv_meth_statistic::tx_tagged},
    counter{"tx_crc_err", &drv_meth_statistic::tx_crc_err},
    counter{"tx_pause_frame", &drv_meth_statistic::tx_pause_frame},
};

// The last counter of the record is not used.
static_assert((counters.size() + 1) * sizeof(uint64_t) == sizeof(drv_meth_statistic));

} // namespace

int meth_get_rx_pkt(int count, char **args) {
    if (count != 2) {
        puts("invalid arg num [port] [buf_len]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_rx_pkt)>("drv_meth_get_rx_pkt");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t buf_len = word_to_u32(args[1]);
    uint32_t read_len = 0;
    printf("port:%u  buf_len:%u\n\n", port, buf_len);
    char *packet = new_text_area(buf_len);
    if (packet == nullptr) {
        close_library(meth.library);
        return -1;
    }
    const uint32_t ret = meth.call(port, reinterpret_cast<uint8_t *>(packet), buf_len, &read_len);
    if (ret == 0) {
        printf("read_len:%u\nrx_buf:%s\n\n", read_len, packet);
    } else {
        print_operation("drv_meth_get_rx_pkt", ret);
    }
    free(packet);
    close_library(meth.library);
    return static_cast<int>(ret);
}

// The word is sent with zeros up to the length, or cut to it. What the initialisation answers is not looked at: a port
// that is up already may refuse it, and sends all the same.
int meth_tx_pkt(int count, char **args) {
    if (count != 3) {
        puts("invalid arg num [port] [tx_buf] [buf_len]");
        return -1;
    }
    const sender meth = open_sender();
    if (meth.send == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t buf_len = word_to_u32(args[2]);
    char *packet = new_text_area(buf_len);
    meth.init(port);
    if (packet == nullptr) {
        printf("malloc len:%u failure\r\n", buf_len);
        close_library(meth.library);
        return -1;
    }
    memcpy(packet, args[1], strnlen(args[1], buf_len));
    printf("port:%u  buf_len:%u\ntx_buf:%s\r\n", port, buf_len, packet);
    puts("recv_buf:\r");
    meth.register_callback(port, print_received, receive_area, receive_size);
    const uint32_t ret = meth.send(port, reinterpret_cast<const uint8_t *>(packet), buf_len);
    print_operation("drv_meth_tx_pkt", ret);
    close_library(meth.library);
    free(packet);
    return static_cast<int>(ret);
}

int meth_get_rx_packets(int count, char **args) {
    return get_packets<decltype(drv_meth_get_rx_packets)>("drv_meth_get_rx_packets", "rx", count, args);
}

int meth_get_tx_packets(int count, char **args) {
    return get_packets<decltype(drv_meth_get_tx_packets)>("drv_meth_get_tx_packets", "tx", count, args);
}

int meth_get_statistic(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_statistic)>("drv_meth_get_statistic", failure_line::with_reasons);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    drv_meth_statistic statistic{};
    const uint32_t ret = meth.call(port, &statistic);
    if (ret == 0) {
        printf("meth port%u stat:\n", port);
        for (const counter &each : counters) {
            printf("%s is %" PRIu64 "\n", each.name, statistic.*each.value);
        }
    } else {
        print_operation("drv_meth_get_statistic", ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

} // namespace meth_commands
