// phy_test: the Ethernet PHYs behind the SMI buses, which connect the board to the management network: link, speed,
// loopback and medium of each port, its registers, and the mark by which the driver notices that a chip was reset.
// Words are taken in order, without an instance: PHYs are always those of the own board. No banners and no result
// print here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/network/drv_phy.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int phy_init(int count, char **args) {
    if (count < 2) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t ret = drv_phy_port_initialization(chip_id, port_id);
    printf("drv_phy_port_initialization:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

// The only code of this module that is shown in hexadecimal.
int phy_checkid(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t ret = drv_phy_check_deviceid(chip_id);
    printf("phy_test_check_id:[ret]:%x\r\n", ret);
    return static_cast<int>(ret);
}

int phy_link(int count, char **args) {
    uint32_t link_status = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_port_link(chip_id, port_id, port_mode, &link_status);
    printf("drv_phy_get_port_link:[ret]:%d, link_status = %d\r\n", static_cast<int>(ret),
           static_cast<int>(link_status));
    return static_cast<int>(ret);
}

// Several lines carry the name of another operation, or of another value; what reads the console knows them so.
int phy_set_lp(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t loopback = word_to_u32(args[3]);
    const uint32_t ret = drv_phy_set_port_loopback(chip_id, port_id, port_mode, loopback);
    printf("drv_phy_get_port_loopback:[ret]:%d, loopback = %d\r\n", static_cast<int>(ret), static_cast<int>(loopback));
    return static_cast<int>(ret);
}

int phy_get_lp(int count, char **args) {
    uint32_t loopback = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_port_loopback(chip_id, port_id, port_mode, &loopback);
    printf("drv_phy_get_port_loopback:[ret]:%d, loopback = %d\r\n", static_cast<int>(ret), static_cast<int>(loopback));
    return static_cast<int>(ret);
}

int phy_set_speed(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t speed = word_to_u32(args[3]);
    const uint32_t ret = drv_phy_set_port_speed(chip_id, port_id, port_mode, speed);
    printf("drv_phy_set_port_speed:[ret]:%d, speed = %d\r\n", static_cast<int>(ret), static_cast<int>(speed));
    return static_cast<int>(ret);
}

int phy_get_speed(int count, char **args) {
    uint32_t speed = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_port_speed(chip_id, port_id, port_mode, &speed);
    printf("drv_phy_get_port_speed:[ret]:%d, speed = %d\r\n", static_cast<int>(ret), static_cast<int>(speed));
    return static_cast<int>(ret);
}

int phy_set_mode(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_set_port_mode(chip_id, port_id, port_mode);
    printf("drv_phy_set_port_speed:[ret]:%d, port_mode = %d\r\n", static_cast<int>(ret), static_cast<int>(port_mode));
    return static_cast<int>(ret);
}

int phy_get_mode(int count, char **args) {
    uint32_t port_mode = 0;
    if (count < 2) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t ret = drv_phy_get_port_mode(chip_id, port_id, &port_mode);
    printf("drv_phy_get_port_mode:[ret]:%d, loopback = %d\r\n", static_cast<int>(ret), static_cast<int>(port_mode));
    return static_cast<int>(ret);
}

int phy_read_reg(int count, char **args) {
    uint32_t value = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t reg = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_reg(chip_id, port_id, reg, &value);
    printf("drv_phy_get_reg:[ret]:%d, value = %x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int phy_write_reg(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t reg = word_to_u32(args[2]);
    const uint32_t value = word_to_u32(args[3]);
    const uint32_t ret = drv_phy_set_reg(chip_id, port_id, reg, value);
    printf("drv_phy_set_reg:[ret]:%d, value = %x\r\n", static_cast<int>(ret), value);
    return static_cast<int>(ret);
}

int phy_set_port_en(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t enable = word_to_u32(args[3]);
    const uint32_t ret = drv_phy_set_port_status(chip_id, port_id, port_mode, enable);
    printf("phy_test_set_port_en:[ret]:%d, enable = %x\r\n", static_cast<int>(ret), enable);
    return static_cast<int>(ret);
}

int phy_get_port_en(int count, char **args) {
    uint32_t enable = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_port_status(chip_id, port_id, port_mode, &enable);
    printf("drv_phy_get_port_status:[ret]:%d, enable = %x\r\n", static_cast<int>(ret), enable);
    return static_cast<int>(ret);
}

int phy_get_config_speed(int count, char **args) {
    uint32_t speed = 0;
    if (count < 3) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t port_id = word_to_u32(args[1]);
    const uint32_t port_mode = word_to_u32(args[2]);
    const uint32_t ret = drv_phy_get_port_config_speed(chip_id, port_id, port_mode, &speed);
    printf("drv_phy_get_port_config_speed:[ret]:%d, speed = %d\r\n", static_cast<int>(ret), static_cast<int>(speed));
    return static_cast<int>(ret);
}

int phy_set_nick_value(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t ret = drv_phy_nick(chip_id);
    printf("drv_phy_nick:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int phy_check_nick_value(int count, char **args) {
    uint32_t check_result = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t chip_id = word_to_u32(args[0]);
    const uint32_t ret = drv_phy_check_nick(chip_id, &check_result);
    printf("drv_phy_nick:[ret]:%d check_result:%d\r\n", static_cast<int>(ret), static_cast<int>(check_result));
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"phy_init", phy_init, "phy_init"},
    command_row{"phy_checkid", phy_checkid, "phy_checkid chip_id"},
    command_row{"phy_link", phy_link, "phy_link chip_id port_id port_mode"},
    command_row{"phy_set_lp", phy_set_lp, "phy_set_lp chip_id port_id port_mode loopback"},
    command_row{"phy_get_lp", phy_get_lp, "phy_get_lp chip_id port_id port_mode"},
    command_row{"phy_set_speed", phy_set_speed, "phy_set_speed chip_id port_id port_mode speed"},
    command_row{"phy_get_speed", phy_get_speed, "phy_get_speed chip_id port_id port_mode"},
    command_row{"phy_set_mode", phy_set_mode, "phy_set_mode chip_id port_id port_mode"},
    command_row{"phy_get_mode", phy_get_mode, "phy_get_mode chip_id port_id"},
    command_row{"phy_read_reg", phy_read_reg, "phy_read_reg chip_id port_id reg"},
    command_row{"phy_write_reg", phy_write_reg, "phy_write_reg chip_id port_id reg value"},
    command_row{"phy_set_port_en", phy_set_port_en, "phy_set_port_en chip_id port_id port_mode en"},
    command_row{"phy_get_port_en", phy_get_port_en, "phy_get_port_en chip_id port_id port_mode"},
    command_row{"phy_get_config_speed", phy_get_config_speed, "phy_get_config_speed chip_id port_id port_mode"},
    command_row{"phy_set_nick_value", phy_set_nick_value, "phy_set_nick_value chip_id"},
    command_row{"phy_check_nick_value", phy_check_nick_value, "phy_check_nick_value chip_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int phy_test(int count, char **args) {
    return run_module(rows, count, args);
}
