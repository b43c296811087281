// sata_test: the disks in the board's SATA bays. A bay has a power switch; what the disk itself is asked (property,
// capacity, wear) it answers only while it is on line. No banners and no instance here: disks are the own board's.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/storage/drv_sata.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr uint32_t report_size = 8192;

int sata_get_partition_num(int count, char **args) {
    uint32_t num = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_partition_num(sata_id, &num);
    printf("sata%u, partition num:%u\r\n", sata_id, num);
    return static_cast<int>(ret);
}

int sata_get_online_status(int count, char **args) {
    uint32_t status = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_online_status(sata_id, &status);
    printf("sata%u, status:%u\r\n", sata_id, status);
    return static_cast<int>(ret);
}

// Alone among these it says nothing when the driver fails: a count of 0 would read as a board without disks.
int sata_get_num(int count, char ** /*args*/) {
    uint32_t num = 0;
    if (count < 0) {
        return -1;
    }
    const uint32_t ret = drv_sata_get_num(&num);
    if (ret == 0) {
        printf("online num:%u\r\n", num);
    }
    return static_cast<int>(ret);
}

int sata_get_property(int count, char **args) {
    uint32_t vendor = 0;
    uint32_t speed = 0;
    constexpr uint32_t size = 64;
    // A terminator stands behind each area, should the driver fill it to the last byte.
    char firm[size + 1] = {};
    char serial[size + 1] = {};
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_property(sata_id, &vendor, &speed, firm, size, serial, size);
    printf("sata%u, vendor:%u, speed:%u, firm:%s, serial:%s\r\n", sata_id, vendor, speed, firm, serial);
    return static_cast<int>(ret);
}

int sata_get_capacity(int count, char **args) {
    uint32_t capacity = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_capacity(sata_id, &capacity);
    printf("sata%u, capacity:%uKB\r\n", sata_id, capacity);
    return static_cast<int>(ret);
}

int sata_get_remaining_life(int count, char **args) {
    uint32_t remaining_life = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_remaining_life(sata_id, &remaining_life);
    printf("sata%u, remaining_life:%u%%\r\n", sata_id, remaining_life);
    return static_cast<int>(ret);
}

int sata_get_power_status(int count, char **args) {
    uint32_t status = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_get_power_status(sata_id, &status);
    printf("sata%u, status:%u\r\n", sata_id, status);
    return static_cast<int>(ret);
}

int sata_power_on(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_power_on(sata_id);
    printf("sata%u, power on\r\n", sata_id);
    return static_cast<int>(ret);
}

int sata_power_off(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    const uint32_t ret = drv_sata_power_off(sata_id);
    printf("sata%u, power off\r\n", sata_id);
    return static_cast<int>(ret);
}

int sata_get_smartinfo(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    char *buf = new_text_area(report_size);
    if (buf == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_sata_get_smartinfo(sata_id, buf, report_size);
    printf("sata%u, buf:%s, buf_len:%d\r\n", sata_id, buf, static_cast<int>(report_size));
    free(buf);
    return static_cast<int>(ret);
}

int sata_get_fullin_status(int count, char **args) {
    uint32_t status = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t sata_id = word_to_u32(args[0]);
    char *buf = new_text_area(report_size);
    if (buf == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_sata_check_fullin_status(sata_id, &status, buf, report_size);
    printf("sata%u, status%u, buf:%s, buf_len:%d\r\n", sata_id, status, buf, static_cast<int>(report_size));
    free(buf);
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"sata_get_partition_num", sata_get_partition_num, "sata_get_partition_num sata_id"},
    command_row{"sata_get_online_status", sata_get_online_status, "sata_get_online_status sata_id"},
    command_row{"sata_get_num", sata_get_num, "sata_get_num"},
    command_row{"sata_get_property", sata_get_property, "sata_get_property sata_id"},
    command_row{"sata_get_capacity", sata_get_capacity, "sata_get_capacity sata_id"},
    command_row{"sata_get_remaining_life", sata_get_remaining_life, "sata_get_remaining_life sata_id"},
    command_row{"sata_get_power_status", sata_get_power_status, "sata_get_power_status sata_id"},
    command_row{"sata_power_on", sata_power_on, "sata_power_on sata_id"},
    command_row{"sata_power_off", sata_power_off, "sata_power_off sata_id"},
    command_row{"sata_get_smartinfo", sata_get_smartinfo, "sata_get_smartinfo sata_id"},
    command_row{"sata_get_fullin_status", sata_get_fullin_status, "sata_get_fullin_status sata_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int sata_test(int count, char **args) {
    return run_module(rows, count, args);
}
