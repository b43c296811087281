// optical_test: what a module says of itself (vendor and type, what it can measure) and the driver's own state of it.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"
#include "shell/console.h"

namespace optical_commands {

namespace {

constexpr uint32_t largest_info = 128;

// A text of the module, in the order of asking; the listing has another one.
struct info_item {
    uint32_t item;
    uint32_t size;
};

constexpr std::array info_items = {
    info_item{0x10002, 24}, info_item{0x10001, 44}, info_item{0x10004, largest_info}, info_item{0x10006, 16},
    info_item{0x10003, 16}, info_item{0x10007, 8},  info_item{0x10008, 20},           info_item{0x10009, 20},
    info_item{0x1000A, 20}, info_item{0x1000B, 16}, info_item{0x10005, 16},
};

struct info_line {
    const char *name;
    uint32_t item;
};

constexpr std::array info_lines = {
    info_line{"vendor name                     ", 0x10008}, info_line{"vendor PN                       ", 0x10009},
    info_line{"Connect Type                    ", 0x10002}, info_line{"Transceiver Type                ", 0x10001},
    info_line{"Transfer Distance(m)            ", 0x10004}, info_line{"Encoding_type                   ", 0x10005},
    info_line{"Nominal Bitrate                 ", 0x10006}, info_line{"Wavelength(nm)                  ", 0x10003},
    info_line{"Digital Diagnostic Monitoring   ", 0x10007}, info_line{"Manu. Serial Number             ", 0x1000A},
    info_line{"Manufacturing Date              ", 0x1000B},
};

// Where in the order of asking an item stands.
constexpr size_t asked_as(uint32_t item) {
    size_t place = 0;
    while (info_items[place].item != item) {
        ++place;
    }
    return place;
}

// What a module measures, and what it has thresholds for. The line of the voltage's threshold shows whether the voltage
// is measured (2, not 9); it always has, and what reads these lines counts on it.
struct flag_line {
    const char *name;
    size_t flag;
};

constexpr size_t support_flags = 15;

constexpr std::array flag_lines = {
    flag_line{"temp realtime         ", 1},  flag_line{"voltage realtime      ", 2},
    flag_line{"bias realtime         ", 3},  flag_line{"rxpower realtime      ", 4},
    flag_line{"txpower realtime      ", 5},  flag_line{"laser temp realtime   ", 6},
    flag_line{"tecbias realtime      ", 7},  flag_line{"temp threshold        ", 8},
    flag_line{"voltage threshold     ", 2},  flag_line{"bias threshold        ", 10},
    flag_line{"rxpower threshold     ", 11}, flag_line{"txpower threshold     ", 12},
    flag_line{"laser temp threshold  ", 13}, flag_line{"tecbias threshold     ", 14},
};

} // namespace

int get_optical_common_info(int count, char **args) {
    const auto get_info = find<decltype(drv_opt_get_common_info)>("drv_opt_get_common_info");
    if (get_info == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    char texts[info_items.size()][largest_info + 1] = {};
    uint32_t ret = 0;
    for (size_t i = 0; i < info_items.size(); ++i) {
        ret |= get_info(port.words.inst_id, &port.selector, info_items[i].item, texts[i], info_items[i].size);
    }
    puts("Common information:");
    for (const info_line &line : info_lines) {
        printf("%s:%s\n", line.name, texts[asked_as(line.item)]);
    }
    return static_cast<int>(ret);
}

int get_optical_type(int count, char **args) {
    const auto get_type = find<decltype(drv_opt_get_type)>("drv_opt_get_type");
    if (get_type == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    drv_opt_type types[DRV_OPT_TYPES_MAX] = {};
    uint32_t num = 0;
    const uint32_t ret = get_type(port.words.inst_id, &port.selector, types, &num);
    printf("type_nums = %d, ret = %d\n", static_cast<int>(num), static_cast<int>(ret));
    const uint32_t shown = std::min<uint32_t>(num, DRV_OPT_TYPES_MAX);
    for (uint32_t i = 0; i < shown; ++i) {
        const int index = static_cast<int>(i);
        printf("type[%d]attr     :0x%x\n", index, types[i].attr);
        printf("type[%d]mode     :0x%x\n", index, types[i].mode);
        printf("type[%d]speed    :0x%x\n", index, types[i].speed);
        printf("type[%d]extend   :0x%x\n", index, types[i].extend);
        printf("type[%d]reserved :0x%x\n", index, types[i].reserved);
    }
    return static_cast<int>(ret);
}

int get_optical_diag_info_support_flag(int count, char **args) {
    const auto get_flag = find<decltype(drv_opt_get_diag_info_support_flag)>("drv_opt_get_diag_info_support_flag");
    if (get_flag == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    uint32_t flags[support_flags] = {};
    uint32_t ret = 0;
    for (uint32_t item = 0; item < support_flags; ++item) {
        ret |= get_flag(port.words.inst_id, &port.selector, item, &flags[item]);
    }
    printf("diag support status = %d (1:support, 0:not support), ret = %d\n", static_cast<int>(flags[0]),
           static_cast<int>(ret));
    puts("diag_item             support_status");
    for (const flag_line &line : flag_lines) {
        printf("%s%d\n", line.name, static_cast<int>(flags[line.flag]));
    }
    return static_cast<int>(ret);
}

int get_optical_common_register_info(int count, char **args) {
    const auto get_info = find<decltype(drv_opt_get_common_register_info)>("drv_opt_get_common_register_info");
    if (get_info == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    constexpr uint32_t size = 4096;
    char text[size + 1] = {};
    const uint32_t ret = get_info(port.words.inst_id, &port.selector, text, size);
    printf("common register: %s, ret = %d\n", text, static_cast<int>(ret));
    return static_cast<int>(ret);
}

int get_optical_dfx_info(int count, char **args) {
    const auto get_info = find<decltype(drv_opt_get_dfx_info)>("drv_opt_get_dfx_info");
    if (get_info == nullptr) {
        return -1;
    }
    const selected_port port = read_port(count, args);
    constexpr uint32_t size = 100000;
    char *text = new_text_area(size);
    if (text == nullptr) {
        return -1;
    }
    const uint32_t ret = get_info(port.words.inst_id, &port.selector, text, size);
    printf("dfx_buffer(ret = 0x%x):\n%s\n", ret, text);
    free(text);
    return static_cast<int>(ret);
}

} // namespace optical_commands
