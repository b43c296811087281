// A management port: bringing it up and down, what it is set to, and what it tells about its link and itself.
#include <array>
#include <cstdint>
#include <cstdio>

#include "modules/meth_test/handlers.h"
#include "shell/words.h"

namespace meth_commands {

namespace {

// An operation that takes the port alone and gives nothing.
template <typename operation> int run_on_port(const char *name, int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<operation>(name);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    printf("port:%u \n\n", port);
    const uint32_t ret = meth.call(port);
    print_operation(name, ret);
    close_library(meth.library);
    return static_cast<int>(ret);
}

// A query for one number, which is shown under its label.
template <typename operation> int get_number(const char *name, const char *label, int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<operation>(name);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    uint32_t number = 0;
    printf("port:%u\n\n", port);
    const uint32_t ret = meth.call(port, &number);
    if (ret == 0) {
        printf("%s:%u\n\n", label, number);
    } else {
        print_operation(name, ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

// A setting of one number; the label names it in the usage line and in the echo.
template <typename operation> int set_number(const char *name, const char *label, int count, char **args) {
    if (count != 2) {
        printf("invalid arg num [port] [%s]\n", label);
        return -1;
    }
    const auto meth = open_for<operation>(name);
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    const uint32_t number = word_to_u32(args[1]);
    printf("port:%u  %s:%u\n\n", port, label, number);
    const uint32_t ret = meth.call(port, number);
    print_operation(name, ret);
    close_library(meth.library);
    return static_cast<int>(ret);
}

} // namespace

int meth_init(int count, char **args) {
    return run_on_port<decltype(drv_meth_init)>("drv_meth_init", count, args);
}

int meth_exit(int count, char **args) {
    return run_on_port<decltype(drv_meth_exit)>("drv_meth_exit", count, args);
}

int meth_get_port_num(int count, char ** /*args*/) {
    if (count != 0) {
        puts("invalid arg num");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_port_num)>("drv_meth_get_port_num");
    if (meth.call == nullptr) {
        return -1;
    }
    uint32_t number = 0;
    puts("no arg ");
    const uint32_t ret = meth.call(&number);
    if (ret == 0) {
        printf("port number:%u\n\n", number);
    } else {
        print_operation("drv_meth_get_port_num", ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

int meth_set_switch_flag(int count, char **args) {
    return set_number<decltype(drv_meth_set_switch_flag)>("drv_meth_set_switch_flag", "flag", count, args);
}

int meth_is_readable(int count, char **args) {
    return get_number<decltype(drv_meth_is_readable)>("drv_meth_is_readable", "readable", count, args);
}

// Scripts look for the label as it is spelt.
int meth_get_autonego(int count, char **args) {
    return get_number<decltype(drv_meth_get_autonego)>("drv_meth_get_autonego", "enbale", count, args);
}

int meth_get_speed(int count, char **args) {
    return get_number<decltype(drv_meth_get_speed)>("drv_meth_get_speed", "speed", count, args);
}

int meth_get_media_type(int count, char **args) {
    return get_number<decltype(drv_meth_get_media_type)>("drv_meth_get_media_type", "media_type", count, args);
}

// The one query whose lines have a blank at their end.
int meth_get_link_status(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_link_status)>("drv_meth_get_link_status");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    uint32_t status = 0;
    printf("port:%u \n\n", port);
    const uint32_t ret = meth.call(port, &status);
    if (ret == 0) {
        printf("link_status:%u \n\n", status);
    } else {
        print_operation("drv_meth_get_link_status", ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

int meth_get_mac(int count, char **args) {
    if (count != 1) {
        puts("invalid arg num [port]");
        return -1;
    }
    const auto meth = open_for<decltype(drv_meth_get_mac)>("drv_meth_get_mac");
    if (meth.call == nullptr) {
        return -1;
    }
    const uint32_t port = word_to_u32(args[0]);
    std::array<uint8_t, DRV_METH_MAC_SIZE> mac{};
    printf("port:%u \r\n", port);
    const uint32_t ret = meth.call(port, mac.data());
    if (ret == 0) {
        printf("mac:%02X%02X-%02X%02X-%02X%02X.\n\n", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
    } else {
        print_operation("drv_meth_get_mac", ret);
    }
    close_library(meth.library);
    return static_cast<int>(ret);
}

int meth_set_active_ornot(int count, char **args) {
    return set_number<decltype(drv_meth_set_active_ornot)>("drv_meth_set_active_ornot", "flag", count, args);
}

int meth_set_shutdown(int count, char **args) {
    return set_number<decltype(drv_meth_set_shutdown)>("drv_meth_set_shutdown", "flag", count, args);
}

int meth_set_led(int count, char **args) {
    return set_number<decltype(drv_meth_set_led)>("drv_meth_set_led", "oper_type", count, args);
}

} // namespace meth_commands
