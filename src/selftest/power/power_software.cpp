#include "selftest/power/power_software.h"

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

#include "bounds/bounds.h"
#include "selftest/files.h"
#include "selftest/power/power_reports.h"

namespace {

struct image {
    uint8_t *bytes;
    uint32_t size;
};

constexpr uint32_t head_size = 4;

// More than the memory of any supply holds. An image beyond it gets no area.
constexpr off_t image_size_max = off_t{16} * 1024 * 1024;

// An image that was copied to the board may have come without the right to be read.
int make_readable(report_sink sink) {
    char command[512] = {};
    sprintf_s(command, sizeof(command), "chmod 755 %s", power_image_file);
    report_append(sink, "Info   : %s.\r\n", command);
    return system(command) == -1 ? -1 : 0;
}

// The caller frees the image's bytes, whatever the result.
int read_image(const power_unit &unit, int file, image *read_in, report_sink sink) {
    const off_t end = lseek(file, 0, SEEK_END);
    if (end < 0 || end > image_size_max) {
        return -1;
    }
    read_in->size = static_cast<uint32_t>(end);
    // The head of an image that is shorter than that is shown with zeros.
    read_in->bytes = static_cast<uint8_t *>(calloc(std::max(read_in->size, head_size), 1));
    if (read_in->bytes == nullptr) {
        return -1;
    }
    lseek(file, 0, SEEK_SET);
    const auto got = static_cast<uint32_t>(std::max<ssize_t>(read(file, read_in->bytes, read_in->size), 0));
    if (got != read_in->size) {
        report_append(sink, "Error  : slot %u power %u read file %s len fail. len 0x%x readlen 0x%x\r\n", unit.slot_id,
                      unit.power_id, power_image_file, read_in->size, got);
        return -1;
    }
    return 0;
}

int send_image(const power_unit &unit, const image &read_in, report_sink sink) {
    const uint8_t *head = read_in.bytes;
    report_append(sink, "Info   : file head soft_id 0x%x rsv 0x%x crc[0] 0x%x crc[1] 0x%x\r\n", head[0], head[1],
                  head[2], head[3]);
    const uint32_t ret = drv_power_load_app(unit.slot_id, unit.power_id, 0, read_in.bytes, read_in.size);
    if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u load file %s fail. ret=0x%x len 0x%x\r\n", unit.slot_id,
                      unit.power_id, power_image_file, ret, read_in.size);
        return -1;
    }
    report_append(sink, "Success: slot %u power %u load file %s success. len 0x%x\r\n", unit.slot_id, unit.power_id,
                  power_image_file, read_in.size);
    return 0;
}

int load_image(const power_unit &unit, report_sink sink) {
    if (make_readable(sink) != 0) {
        return -1;
    }
    const int file = open_regular_file(power_image_file);
    if (file < 0) {
        report_append(sink,
                      "Info   : slot %u power %u open file %s fail, cannot test. please copy load file first.\r\n",
                      unit.slot_id, unit.power_id, power_image_file);
        return 0;
    }
    image read_in{};
    int result = read_image(unit, file, &read_in, sink);
    close(file);
    if (result == 0) {
        result = send_image(unit, read_in, sink);
    }
    free(read_in.bytes);
    return result;
}

int compare_programs(const power_unit &unit, const drv_power_software_info &before,
                     const drv_power_software_info &after, report_sink sink) {
    if (before.soft_cnt != after.soft_cnt) {
        report_append(sink, "Error  : slot %u power %u after load file %s soft_cnt change.\r\n", unit.slot_id,
                      unit.power_id, power_image_file);
        return -1;
    }
    const uint32_t entries = std::min(before.soft_cnt, DRV_POWER_SOFTWARE_MAX);
    for (uint32_t i = 0; i < entries; ++i) {
        if (before.software[i].soft_id != after.software[i].soft_id) {
            report_append(sink, "Error  : slot %u power %u after load file %s soft_id change.\r\n", unit.slot_id,
                          unit.power_id, power_image_file);
            return -1;
        }
    }
    return 0;
}

} // namespace

int power_software_test(const power_unit &unit, report_sink sink) {
    report_append(sink, "Info   : slot %u power %u software test begin. \r\n", unit.slot_id, unit.power_id);
    drv_power_software_info before{};
    int result = power_software_report(unit, sink, &before);
    if (result != 0) {
        return result;
    }
    result = load_image(unit, sink);
    if (result != 0) {
        return result;
    }
    drv_power_software_info after{};
    result = power_software_report(unit, sink, &after);
    return result != 0 ? result : compare_programs(unit, before, after, sink);
}
