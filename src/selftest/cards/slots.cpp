// Slots of the chassis, as the backplane is built.
#include "selftest/cards/slots.h"

#include <algorithm>

#include "drv_basic/management/drv_slot.h"

namespace {

constexpr uint32_t type_mpu = 1;
constexpr uint32_t type_sfu = 3;
constexpr uint32_t type_first = 1;
constexpr uint32_t type_last = 11;

const char *type_name(uint32_t type) {
    constexpr const char *names[] = {"mpu", "lpu", "sfu", "cmu", "fan", "power", "pic", "cxp", "clk", "lcd", "hdd"};
    return type >= type_first && type <= type_last ? names[type - type_first] : "unknown";
}

bool read_num(uint32_t type, uint32_t *num, report_sink sink) {
    const uint32_t ret = drv_slot_get_num(type, num);
    if (ret != 0) {
        report_append(sink, "Error: get slot type %s num fail 0x%x.\r\n", type_name(type), ret);
        return false;
    }
    report_append(sink, "Slot type %u %s num is %u.\r\n", type, type_name(type), *num);
    return true;
}

bool read_start_num(uint32_t type, uint32_t *start_num, report_sink sink) {
    const uint32_t ret = drv_slot_get_start_num(type, start_num);
    if (ret != 0) {
        report_append(sink, "Error: get slot type %s start num fail 0x%x.\r\n", type_name(type), ret);
        return false;
    }
    report_append(sink, "Slot type %u %s start num is %u.\r\n", type, type_name(type), *start_num);
    return true;
}

bool read_list(uint32_t type, drv_slot_list *list, report_sink sink) {
    const uint32_t ret = drv_slot_get_list(type, list);
    if (ret != 0) {
        report_append(sink, "Error: get slot type %s list fail 0x%x.\r\n", type_name(type), ret);
        return false;
    }
    report_append(sink, "Slot type %u %s list num %u list:", type, type_name(type), list->num);
    // A driver may report more slots than its record has room for.
    for (uint32_t i = 0; i < std::min(list->num, DRV_SLOT_LIST_MAX); ++i) {
        report_append(sink, " %u ", static_cast<unsigned>(list->slot_id[i]));
    }
    report_append(sink, "\r\n");
    return true;
}

} // namespace

// Slots count from 1: a type without slots has the start number 0, as its empty list has. What could not be read is not
// compared.
int check_slots_of_type(uint32_t type, report_sink sink) {
    uint32_t num = 0;
    uint32_t start_num = 0;
    drv_slot_list list = {};
    const bool has_num = read_num(type, &num, sink);
    const bool has_start_num = read_start_num(type, &start_num, sink);
    const bool has_list = read_list(type, &list, sink);
    int result = has_num && has_start_num && has_list ? 0 : -1;
    if (has_num && has_list && num != list.num) {
        report_append(sink, "Error: slot %u %s num is not match num %u list.num %u.\r\n", type, type_name(type), num,
                      list.num);
        result = -1;
    }
    if (has_start_num && has_list && start_num != list.slot_id[0]) {
        report_append(sink, "Error: slot %u %s start num is not match start_num %u list.num[0] %u.\r\n", type,
                      type_name(type), start_num, static_cast<unsigned>(list.slot_id[0]));
        result = -1;
    }
    return result;
}

namespace {

int check_slot_type(uint32_t slot, report_sink sink) {
    uint32_t type = 0;
    const uint32_t ret = drv_slot_get_type(slot, &type);
    if (ret != 0) {
        report_append(sink, "Error: get slot %u type fail 0x%x.\r\n", slot, ret);
        return -1;
    }
    report_append(sink, "Slot %u is %s %u.\r\n", slot, type_name(type), type);
    return 0;
}

// Slots that are not asked: from the one behind the last main processing unit up to the first switch fabric.
struct slot_gap {
    uint64_t begin;
    uint64_t end;
};

// In a chassis with switch fabrics the numbers between the main processing units and the fabrics are reserved, and not
// all of them have a slot behind them.
slot_gap reserved_slots() {
    uint32_t sfu_num = 0;
    uint32_t mpu_start = 0;
    uint32_t mpu_num = 0;
    uint32_t sfu_start = 0;
    if (drv_slot_get_num(type_sfu, &sfu_num) != 0 || sfu_num == 0 ||
        drv_slot_get_start_num(type_mpu, &mpu_start) != 0 || drv_slot_get_num(type_mpu, &mpu_num) != 0 ||
        drv_slot_get_start_num(type_sfu, &sfu_start) != 0) {
        return {0, 0};
    }
    return {uint64_t{mpu_start} + mpu_num, sfu_start};
}

} // namespace

int check_slot_types(uint32_t first, uint32_t last, report_sink sink) {
    const slot_gap gap = reserved_slots();
    int result = 0;
    for (uint64_t slot = first; slot <= last; ++slot) {
        if (slot < gap.begin || slot >= gap.end) {
            result |= check_slot_type(static_cast<uint32_t>(slot), sink);
        }
    }
    return result;
}

int slot_section(uint32_t /*inst_id*/, report_sink sink) {
    uint32_t first = 0;
    uint32_t last = 0;
    const uint32_t ret = drv_slot_get_range(&first, &last);
    if (ret != 0) {
        report_append(sink, "Error: get slot range fail 0x%x.\r\n", ret);
        return -1;
    }
    report_append(sink, "Success: slot range [%u-%u].\r\n", first, last);
    int result = 0;
    for (uint32_t type = type_first; type <= type_last; ++type) {
        result |= check_slots_of_type(type, sink);
    }
    result |= check_slot_types(first, last, sink);
    return result;
}
