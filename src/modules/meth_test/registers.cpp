// MAC and PHY of a management port: their registers, one by one and as a whole, and the PHY's own test.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "modules/meth_test/handlers.h"
#include "shell/console.h"
#include "shell/words.h"

namespace meth_commands {

// The library is closed before anything is printed about the outcome.
int meth_get_phy_test(int count, char **args) {
    constexpr uint32_t findings_size = 256;
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_phy_test)>("drv_meth_get_phy_test");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    uint32_t result = 0;
    printf("port:%u \n\n", port);
    char *findings = new_text_area(findings_size);
    if (findings == nullptr) {
        close_library(meth.library);
        printf("get phy test malloc buf failure");
        return -1;
    }
    const uint32_t ret = meth.call(port, &result, findings, findings_size);
    close_library(meth.library);
    if (ret == 0) {
        printf("port%d, result%d, buf:%s, buf_len:%d\r\n", static_cast<int>(port), static_cast<int>(result), findings,
               static_cast<int>(findings_size));
    } else {
        print_operation("drv_meth_get_phy_test", ret);
    }
    free(findings);
    return static_cast<int>(ret);
}

// The one operation line with its code in hexadecimal.
int meth_dump_info(int count, char **args) {
    constexpr uint32_t dump_size = 16384;
    if (count != 2) {
        puts("invalid arg num [port] [mac_phy]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_dump_info)>("drv_meth_dump_info", failure_line::with_reasons);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t mac_phy = word_to_u32(args[1]);
    printf("meth port:%u mac_phy:%u \n\n", port, mac_phy);
    char *dump = new_text_area(dump_size);
    if (dump == nullptr) {
        close_library(meth.library);
        printf("meth_dump_info malloc size %u fail.\n\n", dump_size);
        return -1;
    }
    const uint32_t ret = meth.call(port, mac_phy, dump, dump_size);
    if (ret == 0) {
        printf("buff:\n%s \n\n", dump);
    } else {
        printf("drv_meth_dump_info ret:%#x\n\n", ret);
    }
    free(dump);
    close_library(meth.library);
    return static_cast<int>(ret);
}

int meth_read_reg(int count, char **args) {
    if (count != 3) {
        puts("invalid arg num [port] [mac_phy] [addr]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_read_reg)>("drv_meth_read_reg");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t mac_phy = word_to_u32(args[1]);
    const uint32_t addr = word_to_u32(args[2]);
    uint32_t val = 0;
    printf("port:%u  mac_phy:%u  addr:%u\n\n", port, mac_phy, addr);
    const uint32_t ret = meth.call(port, mac_phy, addr, &val);
    if (ret == 0) {
        printf("val:%u\n\n", val);
    } else {
        print_operation("drv_meth_read_reg", ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

int meth_write_reg(int count, char **args) {
    if (count != 4) {
        puts("invalid arg num [port] [mac_phy] [addr] [val]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_write_reg)>("drv_meth_write_reg");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t mac_phy = word_to_u32(args[1]);
    const uint32_t addr = word_to_u32(args[2]);
    const uint32_t val = word_to_u32(args[3]);
    printf("port:%u  mac_phy:%u  addr:%u val:%u\n\n", port, mac_phy, addr, val);
    const uint32_t ret = meth.call(port, mac_phy, addr, val);
    print_operation("drv_meth_write_reg", ret);
    close_library(meth.library);
    return static_cast<int>(ret);
}

} // namespace meth_commands
