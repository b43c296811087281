#include "selftest/power/power_reports.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "selftest/result_code.h"

int power_number_report(uint32_t slot_id, report_sink sink) {
    uint32_t num = 0;
    const uint32_t ret = drv_power_get_num(slot_id, &num);
    if (ret != 0) {
        report_append(sink, "Error  : get num fail. ret 0x%x\r\n", ret);
        return static_cast<int>(ret);
    }
    report_append(sink, "Success: slot %u power num %u \r\n", slot_id, num);
    return 0;
}

int power_version_report(const power_unit &unit, uint32_t soft_id, uint32_t module_id, report_sink sink) {
    uint32_t version = 0;
    const uint32_t ret = drv_power_get_softver(unit.slot_id, unit.power_id, soft_id, module_id, &version);
    if (is_not_supported(ret)) {
        report_append(sink, "Success: slot %u power %u not support get software version. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u get software version fail. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
        return static_cast<int>(ret);
    }
    report_append(sink, "Success: slot %u power %u get software version. %u \r\n", unit.slot_id, unit.power_id,
                  version);
    return 0;
}

namespace {

constexpr uint32_t record_size = 8;

// A byte takes at least two characters, so a report has no room for more.
constexpr uint32_t bbox_size_max = report_capacity / 2;

// The whole area is shown, not only what the driver filled: what stands behind the records is looked at as well.
void show_bbox(const power_unit &unit, const uint8_t *buffer, uint32_t len, uint32_t filled, report_sink sink) {
    report_append(sink, "Success: slot %u power %u get bbox info return length %u \r\n", unit.slot_id, unit.power_id,
                  filled);
    for (uint32_t i = 0; i < len; ++i) {
        report_append(sink, "%d ", buffer[i]);
    }
    report_append(sink, "\r\n");
    report_append(sink, "Success: slot %u power %u get bbox info %s \r\n", unit.slot_id, unit.power_id,
                  reinterpret_cast<const char *>(buffer));
}

int read_bbox(const power_unit &unit, uint8_t *buffer, uint32_t len, report_sink sink) {
    uint32_t filled = 0;
    const uint32_t ret = drv_power_get_bbox_info(unit.slot_id, unit.power_id, buffer, len, &filled);
    if (is_not_supported(ret)) {
        report_append(sink, "Success: slot %u power %u not support get bbox info. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u get bbox info fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
                      ret);
        return static_cast<int>(ret);
    }
    if (filled % record_size != 0) {
        report_append(sink, "Error  : slot %u power %u get bbox info return length fail. length 0x%x\r\n", unit.slot_id,
                      unit.power_id, filled);
        return -1;
    }
    show_bbox(unit, buffer, len, filled, sink);
    return 0;
}

} // namespace

int power_bbox_report(const power_unit &unit, uint32_t len, report_sink sink) {
    // One byte more than the driver knows of ends the text.
    auto *buffer = len > bbox_size_max ? nullptr : static_cast<uint8_t *>(calloc(len + 1, 1));
    if (buffer == nullptr) {
        report_append(sink, "malloc fail.\r\n");
        return -1;
    }
    const int result = read_bbox(unit, buffer, len, sink);
    free(buffer);
    return result;
}

namespace {

constexpr uint32_t one_module = 255;

void show_versions(const power_unit &unit, const drv_power_software &software, report_sink sink) {
    report_append(sink, "soft_id 0x%x module_num 0x%x\r\n", software.soft_id, software.module_num);
    const uint32_t modules = software.module_num == one_module ? 1 : software.module_num;
    for (uint32_t module_id = 0; module_id < modules; ++module_id) {
        uint32_t version = 0;
        const uint32_t ret = drv_power_get_softver(unit.slot_id, unit.power_id, software.soft_id, module_id, &version);
        if (ret == 0) {
            report_append(sink, "Success: slot %u power %u soft_id 0x%x module_id 0x%x version %u\r\n", unit.slot_id,
                          unit.power_id, software.soft_id, module_id, version);
        } else {
            report_append(sink, "Error  : slot %u power %u soft_id 0x%x module_id 0x%x get version fail. ret 0x%x\r\n",
                          unit.slot_id, unit.power_id, software.soft_id, module_id, ret);
        }
    }
}

} // namespace

int power_software_report(const power_unit &unit, report_sink sink, drv_power_software_info *info) {
    *info = {};
    const uint32_t ret = drv_power_get_software_info(unit.slot_id, unit.power_id, info);
    if (is_not_supported(ret)) {
        report_append(sink, "Success: slot %u power %u not support get software info. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u get software info fail. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
        return static_cast<int>(ret);
    }
    report_append(sink, "Success: slot %u power %u get software info. soft_cnt %u \r\n", unit.slot_id, unit.power_id,
                  info->soft_cnt);
    const uint32_t entries = std::min(info->soft_cnt, DRV_POWER_SOFTWARE_MAX);
    for (uint32_t i = 0; i < entries; ++i) {
        show_versions(unit, info->software[i], sink);
    }
    return 0;
}
