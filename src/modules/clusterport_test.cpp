// clusterport_test: the Ethernet ports by which chassis are joined to a cluster. Their library is one that a board may
// lack. It reaches the ports over the CPLDs and the local bus and knows nothing of an earlier run, so each sub-command
// that asks something of a port first brings up these two and then the library. No banners here.
#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>

#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_localbus.h"
#include "drv_clusterport/drv_clusterport.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/driver_library.h"
#include "shell/words.h"

namespace {

constexpr const char *cluster_file = "libdrv_clusterport.so";

// The basic library is loaded already, as this program is linked with it: opening it by name only counts it once more.
// Both operations are looked up before the first is called, so that a library that lacks one leaves the board alone.
int init_cpld_and_bus() {
    void *library = open_library("libdrv_basic.so", failure_line::with_reasons);
    if (library == nullptr) {
        return -1;
    }
    const auto cpld_init =
        find_operation<decltype(drv_cpld_init)>(library, "drv_cpld_init", failure_line::with_reasons);
    if (cpld_init == nullptr) {
        return -1;
    }
    const auto localbus_init =
        find_operation<decltype(drv_localbus_init)>(library, "drv_localbus_init", failure_line::with_reasons);
    if (localbus_init == nullptr) {
        return -1;
    }
    uint32_t ret = cpld_init(DRV_INST_SELF);
    if (ret != 0) {
        printf("drv_cpld_init ret:%#x\n\n", ret);
    } else {
        ret = localbus_init(DRV_INST_SELF);
        if (ret != 0) {
            printf("drv_localbus_init ret:%#x\n\n", ret);
        }
    }
    close_library(library);
    return static_cast<int>(ret);
}

// Whatever code the bring-up failed with, the sub-command fails with -1.
int clusterport_pre_init() {
    const int ret = init_cpld_and_bus();
    if (ret != 0) {
        printf("clusterport_pre_init ret:%#x\n\n", static_cast<unsigned>(ret));
        return -1;
    }
    return 0;
}

struct cluster_library {
    void *handle; // null when it cannot be had
    decltype(drv_clusterport_init) *init;
};

cluster_library open_cluster(failure_line open_failure) {
    if (clusterport_pre_init() != 0) {
        return {};
    }
    void *handle = open_library(cluster_file, open_failure);
    if (handle == nullptr) {
        return {};
    }
    const auto init =
        find_operation<decltype(drv_clusterport_init)>(handle, "drv_clusterport_init", failure_line::with_reasons);
    if (init == nullptr) {
        return {};
    }
    return {handle, init};
}

// For one operation on the ports; null when it or anything before it cannot be had, and no library is open then.
template <typename operation>
operation *open_operation(const char *name, cluster_library *cluster,
                          failure_line open_failure = failure_line::with_reasons) {
    *cluster = open_cluster(open_failure);
    if (cluster->handle == nullptr) {
        return nullptr;
    }
    return find_operation<operation>(cluster->handle, name, failure_line::brief);
}

// The library is closed when it cannot be brought up.
uint32_t start_cluster(const cluster_library &cluster) {
    const uint32_t ret = cluster.init();
    if (ret != 0) {
        printf("drv_clusterport_init ret:%#x\n\n", ret);
        close_library(cluster.handle);
    }
    return ret;
}

// Once it has been brought up the library is left open: it stays with the ports until the program ends.
int clusterport_init(int count, char **) {
    if (count != 0) {
        puts("invalid arg num");
        return -1;
    }
    const cluster_library cluster = open_cluster(failure_line::with_reasons);
    if (cluster.handle == nullptr) {
        return -1;
    }
    const uint32_t ret = cluster.init();
    printf("drv_clusterport_init ret:%#x\n\n", ret);
    if (ret != 0) {
        close_library(cluster.handle);
    }
    return static_cast<int>(ret);
}

// Nothing is brought up just to be taken down.
int clusterport_exit(int count, char **) {
    if (count != 0) {
        puts("invalid arg num");
        return -1;
    }
    void *library = open_library(cluster_file, failure_line::with_reasons);
    if (library == nullptr) {
        return -1;
    }
    const auto exit_cluster =
        find_operation<decltype(drv_clusterport_exit)>(library, "drv_clusterport_exit", failure_line::brief);
    if (exit_cluster == nullptr) {
        return -1;
    }
    const uint32_t ret = exit_cluster();
    printf("drv_clusterport_exit ret:%u\n\n", ret);
    close_library(library);
    return static_cast<int>(ret);
}

int clusterport_get_phy_test(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    cluster_library cluster{};
    const auto get_phy_test =
        open_operation<decltype(drv_clusterport_get_phy_test)>("drv_clusterport_get_phy_test", &cluster);
    if (get_phy_test == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("clusterport:%u \n\n", port);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    uint32_t result = 0;
    const uint32_t ret = get_phy_test(port, &result);
    if (ret == 0) {
        printf("clusterport:%u selftest result:%u \n\n", port, result);
    } else {
        printf("drv_clusterport_get_phy_test ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_set_shut(int count, char **args) {
    if (count != 2) {
        puts("invalid arg num [port] [flag]");
        return -1;
    }
    cluster_library cluster{};
    const auto set_shut = open_operation<decltype(drv_clusterport_set_shut)>("drv_clusterport_set_shut", &cluster);
    if (set_shut == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t flag = word_to_u32(args[1]);
    printf("clusterport:%u flag:%u\n\n", port, flag);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    const uint32_t ret = set_shut(port, flag);
    if (ret != 0) {
        printf("drv_clusterport_set_shut ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_get_speed(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    cluster_library cluster{};
    const auto get_speed = open_operation<decltype(drv_clusterport_get_speed)>("drv_clusterport_get_speed", &cluster);
    if (get_speed == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("clusterport:%u \n\n", port);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    uint32_t speed = 0;
    const uint32_t ret = get_speed(port, &speed);
    if (ret == 0) {
        printf("clusterport:%u speed:%u \n\n", port, speed);
    } else {
        printf("drv_clusterport_get_speed ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_set_speed(int count, char **args) {
    if (count != 2) {
        puts("invalid arg num [port] [speed]");
        return -1;
    }
    cluster_library cluster{};
    const auto set_speed = open_operation<decltype(drv_clusterport_set_speed)>("drv_clusterport_set_speed", &cluster);
    if (set_speed == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t speed = word_to_u32(args[1]);
    printf("clusterport:%u speed:%u\n\n", port, speed);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    const uint32_t ret = set_speed(port, speed);
    if (ret != 0) {
        printf("drv_clusterport_set_speed ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_get_mode(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    cluster_library cluster{};
    const auto get_mode = open_operation<decltype(drv_clusterport_get_mode)>("drv_clusterport_get_mode", &cluster);
    if (get_mode == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("clusterport:%u \n\n", port);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    uint32_t mode = 0;
    const uint32_t ret = get_mode(port, &mode);
    if (ret == 0) {
        printf("clusterport:%u mode:%u \n\n", port, mode);
    } else {
        printf("drv_clusterport_get_mode ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

// The result line has no colon behind "clusterport"; scripts know it so.
int clusterport_get_link_status(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    cluster_library cluster{};
    const auto get_link_status =
        open_operation<decltype(drv_clusterport_get_link_status)>("drv_clusterport_get_link_status", &cluster);
    if (get_link_status == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("clusterport:%u \n\n", port);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    uint32_t status = 0;
    const uint32_t ret = get_link_status(port, &status);
    if (ret == 0) {
        printf("clusterport%u link status:%u \n\n", port, status);
    } else {
        printf("drv_clusterport_get_link_status ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

// In one print, so that no line of a thread of the driver's comes between the counters. The port is signed here alone.
void print_statistics(uint32_t port, const drv_clusterport_statistics &counted) {
    printf("clusterport:%d stat:\n"
           "in_bytes is %" PRIu64 "\n"
           "in_frames is %" PRIu64 "\n"
           "in_multicast_frames is %" PRIu64 "\n"
           "in_brdcast_frames is %" PRIu64 "\n"
           "in_unicast_frames is %" PRIu64 "\n"
           "in_fcserr_frames is %" PRIu64 "\n"
           "in_oversize_frames is %" PRIu64 "\n"
           "in_jab_frames is %" PRIu64 "\n"
           "in_fragment_frames is %" PRIu64 "\n"
           "in_drop_frames is %" PRIu64 "\n"
           "in_undersize_frames is %" PRIu64 "\n"
           "in_err_frames is %" PRIu64 "\n"
           "in_crc_bad_frames is %" PRIu64 "\n"
           "in_reserved is %" PRIu64 "\n"
           "out_bytes is %" PRIu64 "\n"
           "out_frames is %" PRIu64 "\n"
           "out_multicast_frames is %" PRIu64 "\n"
           "out_brdcast_frames is %" PRIu64 "\n"
           "out_unicast_frames is %" PRIu64 "\n"
           "out_err_frames is %" PRIu64 "\n"
           "out_drop_frames is %" PRIu64 "\n"
           "out_reserved is %" PRIu64 "\n",
           static_cast<int>(port), counted.in_bytes, counted.in_frames, counted.in_multicast_frames,
           counted.in_brdcast_frames, counted.in_unicast_frames, counted.in_fcserr_frames, counted.in_oversize_frames,
           counted.in_jab_frames, counted.in_fragment_frames, counted.in_drop_frames, counted.in_undersize_frames,
           counted.in_err_frames, counted.in_crc_bad_frames, counted.in_reserved, counted.out_bytes, counted.out_frames,
           counted.out_multicast_frames, counted.out_brdcast_frames, counted.out_unicast_frames, counted.out_err_frames,
           counted.out_drop_frames, counted.out_reserved);
}

// How this one reports a library that cannot be opened differs from the others by a blank.
int clusterport_get_statistics(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    cluster_library cluster{};
    const auto get_statistics = open_operation<decltype(drv_clusterport_get_statistics)>(
        "drv_clusterport_get_statistics", &cluster, failure_line::with_reasons_close);
    if (get_statistics == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("clusterport:%u \n\n", port);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    drv_clusterport_statistics statistics{};
    const uint32_t ret = get_statistics(port, &statistics);
    if (ret == 0) {
        print_statistics(port, statistics);
    } else {
        printf("drv_clusterport_get_statistics ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_reset(int count, char **args) {
    if (count != 2) {
        puts("invalid arg num [port] [reset_type]");
        return -1;
    }
    cluster_library cluster{};
    const auto reset = open_operation<decltype(drv_clusterport_reset)>("drv_clusterport_reset", &cluster);
    if (reset == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t reset_type = word_to_u32(args[1]);
    printf("clusterport:%u reset_type:%u\n\n", port, reset_type);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    const uint32_t ret = reset(port, reset_type);
    if (ret != 0) {
        printf("drv_clusterport_reset ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

int clusterport_set_led(int count, char **args) {
    if (count != 2) {
        puts("invalid arg num [port] [oper_type]");
        return -1;
    }
    cluster_library cluster{};
    const auto set_led = open_operation<decltype(drv_clusterport_set_led)>("drv_clusterport_set_led", &cluster);
    if (set_led == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t oper_type = word_to_u32(args[1]);
    printf("clusterport:%u oper_type:%u\n\n", port, oper_type);
    if (const uint32_t started = start_cluster(cluster); started != 0) {
        return static_cast<int>(started);
    }
    const uint32_t ret = set_led(port, oper_type);
    if (ret != 0) {
        printf("drv_clusterport_set_led ret:%#x\n\n", ret);
    }
    close_library(cluster.handle);
    return static_cast<int>(ret);
}

// The library of the service ports, of the same shape, is left out on purpose: no table of its sub-commands was ever
// within reach of a command line.
constexpr std::array rows = {
    command_row{"drv_clusterport_init", clusterport_init, "drv_clusterport_init"},
    command_row{"drv_clusterport_exit", clusterport_exit, "drv_clusterport_exit"},
    command_row{"drv_clusterport_get_phy_test", clusterport_get_phy_test, "drv_clusterport_get_phy_test port"},
    command_row{"drv_clusterport_set_shut", clusterport_set_shut, "drv_clusterport_set_shut port flag"},
    command_row{"drv_clusterport_get_speed", clusterport_get_speed, "drv_clusterport_get_speed port"},
    command_row{"drv_clusterport_set_speed", clusterport_set_speed, "drv_clusterport_set_speed port speed"},
    command_row{"drv_clusterport_get_mode", clusterport_get_mode, "drv_clusterport_get_mode port"},
    command_row{"drv_clusterport_get_link_status", clusterport_get_link_status, "drv_clusterport_get_link_status port"},
    command_row{"drv_clusterport_get_statistics", clusterport_get_statistics, "drv_clusterport_get_statistics port"},
    command_row{"drv_clusterport_reset", clusterport_reset, "drv_clusterport_reset port reset_type"},
    command_row{"drv_clusterport_set_led", clusterport_set_led, "drv_clusterport_set_led port oper_type"},
};

static_assert(rows_are_sound(rows));

} // namespace

int clusterport_test(int count, char **args) {
    return run_module(rows, count, args);
}
