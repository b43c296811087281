// mac_test: MAC address storage. A type (management port, system, card, ...) has a count of consecutive addresses and
// a base address; on the command line an address is one number of which the low 48 bits count.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/identity/drv_mac.h"
#include "modules/modules.h"
#include "selftest/identity/mac_storage.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::narrow;

struct mac_address {
    uint8_t byte[DRV_MAC_SIZE];
};

mac_address address_of(uint64_t number) {
    mac_address address{};
    for (size_t i = 0; i < DRV_MAC_SIZE; ++i) {
        address.byte[i] = static_cast<uint8_t>(number >> (8 * (DRV_MAC_SIZE - 1 - i)));
    }
    return address;
}

int test_mac_init(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_mac_init");
    check_args_u64(1, count, args, &inst_id, nullptr, nullptr, nullptr);
    const uint32_t ret = drv_mac_init(inst_id);
    printf("drv_mac_init::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_mac_init");
    return static_cast<int>(ret);
}

int test_mac_deinit(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    print_begin_banner(style, "test_mac_deinit");
    check_args_u64(1, count, args, &inst_id, nullptr, nullptr, nullptr);
    const uint32_t ret = drv_mac_deinit(inst_id);
    printf("drv_mac_deinit::inst_id:0x%x ret:0x%x\n", inst_id, ret);
    print_result("%x", ret);
    print_end_banner(style, "test_mac_deinit");
    return static_cast<int>(ret);
}

int test_mac_set_addr(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    uint64_t number = 0;
    print_begin_banner(style, "test_mac_set_addr");
    check_args_u64(3, count, args, &inst_id, &type_id, &number, nullptr);
    const mac_address mac = address_of(number);
    const uint32_t ret = drv_mac_set_addr(inst_id, type_id, mac.byte);
    printf("drv_mac_set_addr::inst_id:0x%x type:%d mac[%02x-%02x-%02x-%02x-%02x-%02x] ret:0x%x\n", inst_id,
           static_cast<int>(type_id), mac.byte[0], mac.byte[1], mac.byte[2], mac.byte[3], mac.byte[4], mac.byte[5],
           ret);
    print_result("%x", ret);
    print_end_banner(style, "test_mac_set_addr");
    return static_cast<int>(ret);
}

int test_mac_get_addr(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    // A terminator stands behind the address: the result print shows it as text.
    uint8_t mac[DRV_MAC_SIZE + 1] = {};
    print_begin_banner(style, "test_mac_get_addr");
    check_args_u64(2, count, args, &inst_id, &type_id, nullptr, nullptr);
    const uint32_t ret = drv_mac_get_addr(inst_id, type_id, mac);
    printf("drv_mac_get_addr::inst_id:0x%x type:%d mac[%02x-%02x-%02x-%02x-%02x-%02x] ret:0x%x\n", inst_id,
           static_cast<int>(type_id), mac[0], mac[1], mac[2], mac[3], mac[4], mac[5], ret);
    print_result("%x %s", ret, reinterpret_cast<const char *>(mac));
    print_end_banner(style, "test_mac_get_addr");
    return static_cast<int>(ret);
}

int test_mac_set_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    uint64_t number = 0;
    print_begin_banner(style, "test_mac_set_num");
    check_args_u64(3, count, args, &inst_id, &type_id, &number, nullptr);
    const uint32_t num = static_cast<uint32_t>(number);
    const uint32_t ret = drv_mac_set_num(inst_id, type_id, num, 0);
    printf("drv_mac_set_num::inst_id:0x%x type:%d num:%d ret:0x%x\n", inst_id, static_cast<int>(type_id),
           static_cast<int>(num), ret);
    print_result("%x", ret);
    print_end_banner(style, "test_mac_set_num");
    return static_cast<int>(ret);
}

int test_mac_get_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    uint32_t num = 0;
    print_begin_banner(style, "test_mac_get_num");
    check_args_u64(2, count, args, &inst_id, &type_id, nullptr, nullptr);
    const uint32_t ret = drv_mac_get_num(inst_id, type_id, &num, 0);
    printf("drv_mac_get_num::inst_id:0x%x type:%d num:%d ret:0x%x\n", inst_id, static_cast<int>(type_id),
           static_cast<int>(num), ret);
    print_result("%x %x", ret, num);
    print_end_banner(style, "test_mac_get_num");
    return static_cast<int>(ret);
}

int test_mac_read_write(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    print_begin_banner(style, "test_mac_read_write");
    check_args_u64(2, count, args, &inst_id, &type_id, nullptr, nullptr);
    const int result = mac_write_test(inst_id, type_id, console_sink);
    print_result("%x", static_cast<uint32_t>(result));
    print_end_banner(style, "test_mac_read_write");
    return result;
}

int test_mac_set_addr_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    uint64_t num_word = 0;
    uint64_t number = 0;
    print_begin_banner(style, "test_mac_set_addr_num");
    check_args_u64(4, count, args, &inst_id, &type_id, &num_word, &number);
    const uint32_t num = static_cast<uint32_t>(num_word);
    const mac_address mac = address_of(number);
    const uint32_t ret = drv_mac_set_addr_num(inst_id, type_id, num, mac.byte);
    printf("drv_mac_set_addr_num::inst_id:0x%x type:%d num:%d mac[%02x-%02x-%02x-%02x-%02x-%02x] ret:0x%x\n", inst_id,
           static_cast<int>(type_id), static_cast<int>(num), mac.byte[0], mac.byte[1], mac.byte[2], mac.byte[3],
           mac.byte[4], mac.byte[5], ret);
    print_result("%x", ret);
    print_end_banner(style, "test_mac_set_addr_num");
    return static_cast<int>(ret);
}

// Room for this many addresses; a larger num is the driver's to refuse, and only these are printed.
constexpr uint32_t listed_addresses = 40;

void print_addresses(const uint8_t *addresses, uint32_t num) {
    for (uint32_t i = 0; i < num && i < listed_addresses; ++i) {
        const uint8_t *mac = addresses + size_t{i} * DRV_MAC_SIZE;
        printf("mac[%2d] : mac[%02x-%02x-%02x-%02x-%02x-%02x]\n", static_cast<int>(i), mac[0], mac[1], mac[2], mac[3],
               mac[4], mac[5]);
    }
}

int test_mac_get_addr_num(int count, char **args) {
    uint32_t inst_id = DRV_INST_SELF;
    uint32_t type_id = 0;
    uint64_t num_word = 0;
    constexpr uint32_t size = listed_addresses * DRV_MAC_SIZE;
    uint8_t buffer[size + 1] = {};
    print_begin_banner(style, "test_mac_get_addr_num");
    check_args_u64(3, count, args, &inst_id, &type_id, &num_word, nullptr);
    const uint32_t num = static_cast<uint32_t>(num_word);
    const uint32_t ret = drv_mac_get_addr_num(inst_id, type_id, num, buffer, size);
    printf("drv_mac_get_addr_num::inst_id:0x%x type:%d num:%d ret:0x%x\n", inst_id, static_cast<int>(type_id),
           static_cast<int>(num), ret);
    if (ret == 0) {
        print_addresses(buffer, num);
    }
    print_result("%x %s", ret, reinterpret_cast<const char *>(buffer));
    print_end_banner(style, "test_mac_get_addr_num");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_mac_init", test_mac_init, "drv_mac_init          inst_id"},
    command_row{"drv_mac_deinit", test_mac_deinit, "drv_mac_deinit        inst_id"},
    command_row{"drv_mac_set_addr", test_mac_set_addr, "drv_mac_set_addr      inst_id type_id addr"},
    command_row{"drv_mac_get_addr", test_mac_get_addr, "drv_mac_get_addr      inst_id type_id"},
    command_row{"drv_mac_set_num", test_mac_set_num, "drv_mac_set_num       inst_id type_id num"},
    command_row{"drv_mac_get_num", test_mac_get_num, "drv_mac_get_num       inst_id type_id"},
    command_row{"test_mac_read_write", test_mac_read_write, "test_mac_read_write   inst_id type_id"},
    command_row{"drv_mac_set_addr_num", test_mac_set_addr_num, "drv_mac_set_addr_num  inst_id type_id num addr"},
    command_row{"drv_mac_get_addr_num", test_mac_get_addr_num, "drv_mac_get_addr_num  inst_id type_id num"},
};

static_assert(rows_are_sound(rows));

} // namespace

int mac_test(int count, char **args) {
    return run_module(rows, count, args);
}
