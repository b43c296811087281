// backplane_test: the one backplane of the chassis, as a main processing unit reads it: what it is, what its traces
// are made for, and whether the pins that identify it are sound. The sub-commands take no words, and the value is shown
// whatever the driver returned. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/management/drv_backplane.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"

namespace {

constexpr uint32_t dfx_size = 256;

int backplane_get_type(int, char **) {
    uint32_t type = 0;
    puts("start to get backplane type ......");
    const uint32_t ret = drv_backplane_get_type(&type);
    printf("backplane_type hex:0x%08x dec:%08d\r\n", type, static_cast<int>(type));
    return static_cast<int>(ret);
}

int backplane_get_sds_spd(int, char **) {
    uint32_t speed = 0;
    puts("start to get backplane serdes speed ......");
    const uint32_t ret = drv_backplane_get_serdes_speed(&speed);
    printf("serdes speed hex:0x%08x dec:%08d\r\n", speed, static_cast<int>(speed));
    return static_cast<int>(ret);
}

int backplane_get_pcb_ver(int, char **) {
    uint32_t pcb_ver = 0;
    puts("start to get backplane pcb version ......");
    const uint32_t ret = drv_backplane_get_pcb_ver(&pcb_ver);
    printf("pcb_ver hex:0x%08x dec:%08d\r\n", pcb_ver, static_cast<int>(pcb_ver));
    return static_cast<int>(ret);
}

int backplane_check_id(int, char **) {
    uint32_t check = 0;
    puts("start to get backplane checkid ......");
    const uint32_t ret = drv_backplane_check_id(&check);
    printf("check id hex:0x%08x dec:%08d\r\n", check, static_cast<int>(check));
    return static_cast<int>(ret);
}

// The same check, with findings: its first line ends with a carriage return, the other's does not.
int backplane_fmea_check_id(int, char **) {
    uint32_t check_result = 0;
    // A terminator stands behind the area, should the driver fill it to the last byte.
    char dfx[dfx_size + 1] = {};
    puts("start to get backplane checkid ......\r");
    const uint32_t ret = drv_backplane_fmea_check_id(&check_result, dfx, dfx_size);
    if (ret == 0) {
        printf("success, check_result:%d dfx:%s\r\n", static_cast<int>(check_result), dfx);
    } else {
        printf("failed, check_result:%d dfx:%s ret:0x%x\r\n", static_cast<int>(check_result), dfx, ret);
    }
    print_result("%x %x", ret, check_result);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"backplane_get_type", backplane_get_type, "backplane_get_type"},
    command_row{"backplane_get_sds_spd", backplane_get_sds_spd, "backplane_get_sds_spd"},
    command_row{"backplane_get_pcb_ver", backplane_get_pcb_ver, "backplane_get_pcb_ver"},
    command_row{"backplane_check_id", backplane_check_id, "backplane_check_id"},
    command_row{"backplane_fmea_check_id", backplane_fmea_check_id, "backplane_fmea_check_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int backplane_test(int count, char **args) {
    return run_module(rows, count, args);
}
