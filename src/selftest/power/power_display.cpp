// A supply without input is not faulty: what it cannot know or must complain of then is neither asked nor judged.
#include "selftest/power/power_display.h"

#include <algorithm>
#include <cstring>

#include "drv_basic/power/drv_power.h"
#include "selftest/power/power_input.h"
#include "selftest/power/power_names.h"
#include "selftest/power/power_reports.h"
#include "selftest/result_code.h"

namespace {

enum class good_value { any, zero };

int show_property(const power_unit &unit, uint32_t type, good_value good, report_sink sink) {
    const power_value read = read_power_property(unit, type);
    const char *name = power_property_name(type);
    if (is_not_supported(read.ret)) {
        report_append(sink, "Success: slot %u power %u not support get %s 0x%x. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, name, type, read.ret);
        return 0;
    }
    if (read.ret != 0) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
                      name, type, read.ret);
        return -1;
    }
    if (good == good_value::zero && read.value != 0) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%x fail. result 0x%x\r\n", unit.slot_id, unit.power_id,
                      name, type, read.value);
        return -1;
    }
    report_append(sink, "Success: slot %u power %u get %s 0x%x: 0x%x\r\n", unit.slot_id, unit.power_id, name, type,
                  read.value);
    return 0;
}

// What every supply must have; whether it can be read is judged where it is shown.
int check_must_support(const power_unit &unit, report_sink sink) {
    constexpr uint32_t types[] = {property_rated_power, property_temperature, property_input_vol,
                                  property_input_power, property_dc_ac_type,  property_input_format};
    int result = 0;
    for (const uint32_t type : types) {
        const power_value read = read_power_property(unit, type);
        if (is_not_supported(read.ret)) {
            report_append(sink, "Error  : slot %u power %u get %s 0x%x should be support. ret 0x%x\r\n", unit.slot_id,
                          unit.power_id, power_property_name(type), type, read.ret);
            result = -1;
        }
    }
    return result;
}

// Both are read back as known values; 3 is a supply that has no input now. That an AC supply has AC at its input is not
// compared: some kinds take either.
int check_input_match(const power_unit &unit, report_sink sink) {
    constexpr uint32_t formats = 4;
    constexpr uint32_t types = 6;
    const power_value type = read_power_property(unit, property_dc_ac_type);
    const power_value format = read_power_property(unit, property_input_format);
    if (type.ret != 0 || format.ret != 0) {
        return 0;
    }
    const bool is_match = format.value < formats && type.value < types;
    report_append(sink, "Success: slot %u power %u input format %u %s and dc_ac_type %u %s is %s \r\n", unit.slot_id,
                  unit.power_id, format.value, power_input_format_name(format.value), type.value,
                  power_dc_ac_type_name(type.value), is_match ? "match" : "unmatch");
    return is_match ? 0 : -1;
}

int check_zero_values(const power_unit &unit, const power_input &input, report_sink sink) {
    constexpr uint32_t with_input[] = {property_alarm, property_good, property_input_state, property_alarm_history};
    constexpr uint32_t always[] = {property_output_vol_info, property_output_current_info, property_temp_state,
                                   property_fan_state,       property_latch_state,         property_good_history};
    int result = 0;
    if (!input.no_input) {
        for (const uint32_t type : with_input) {
            result |= show_property(unit, type, good_value::zero, sink);
        }
    }
    for (const uint32_t type : always) {
        result |= show_property(unit, type, good_value::zero, sink);
    }
    return result;
}

// Alarm and output, below the first that is shown, are not asked either.
bool is_left_out(uint32_t type, const power_input &input) {
    if (!input.no_input) {
        return false;
    }
    if (input.pmbus) {
        return type == property_input_state;
    }
    return type == property_input_power || type == property_input_vol || type == property_input_current ||
           type == property_alarm_history;
}

int show_values(const power_unit &unit, const power_input &input, report_sink sink) {
    constexpr uint32_t first = property_rated_power;
    constexpr uint32_t last = 48; // one more than there are: drivers must refuse what they do not know
    int result = 0;
    for (uint32_t type = first; type <= last; ++type) {
        if (!is_left_out(type, input)) {
            result |= show_property(unit, type, good_value::any, sink);
        }
    }
    return result;
}

} // namespace

int power_property_display(const power_unit &unit, report_sink sink) {
    const power_input input = detect_power_input(unit, sink);
    int result = check_must_support(unit, sink);
    result |= check_input_match(unit, sink);
    result |= check_zero_values(unit, input, sink);
    result |= show_values(unit, input, sink);
    return result;
}

namespace {

constexpr uint32_t area_size = 1026;

// The driver fills one area for all, and the room it is told of is what it said last. A byte behind it ends the text.
struct board_area {
    uint8_t bytes[area_size + 1];
    uint32_t len;
};

enum board_property : uint32_t { board_label, board_soft_ver, board_hw_ver, module_feature, chip_feature };

uint32_t read_board_property(const power_unit &unit, uint32_t type, board_area *area) {
    // More than the area holds is no room.
    area->len = std::min(area->len, area_size);
    return drv_power_get_board_property(unit.slot_id, unit.power_id, type, area->bytes, &area->len);
}

const char *text_of(const board_area &area) {
    return reinterpret_cast<const char *>(area.bytes);
}

void show_label(const power_unit &unit, board_area *area, report_sink sink) {
    const uint32_t ret = read_board_property(unit, board_label, area);
    if (ret == 0) {
        report_append(sink, "Success: slot %u power %u len %u POWER_BOARD_ELABLE: %s\r\n \r\n", unit.slot_id,
                      unit.power_id, area->len, text_of(*area));
    } else {
        report_append(sink, "Error  : slot %u power %u get POWER_BOARD_ELABLE fail. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, ret);
    }
}

struct board_property_row {
    const char *name;
    const char *behind_failure;
    uint32_t type;
    bool is_text;
};

constexpr board_property_row board_property_rows[] = {
    {"POWER_BOARD_SOFT_VER", "", board_soft_ver, false},
    {"POWER_BOARD_HW_VER", "", board_hw_ver, false},
    {"POWER_MODULE_FEATURE", " ", module_feature, false},
    {"POWER_CHIP_FEATURE", "", chip_feature, true},
};

void show_board_property(const power_unit &unit, const board_property_row &row, board_area *area, report_sink sink) {
    const uint32_t ret = read_board_property(unit, row.type, area);
    if (is_not_supported(ret)) {
        report_append(sink, "Success: slot %u power %u not support get %s info. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, row.name, ret);
    } else if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u get %s fail. ret 0x%x%s\r\n", unit.slot_id, unit.power_id,
                      row.name, ret, row.behind_failure);
    } else if (row.is_text) {
        report_append(sink, "Success: slot %u power %u %s: %s\r\n", unit.slot_id, unit.power_id, row.name,
                      text_of(*area));
    } else {
        uint32_t word = 0;
        memcpy(&word, area->bytes, sizeof(word));
        report_append(sink, "Success: slot %u power %u %s: %u\r\n", unit.slot_id, unit.power_id, row.name, word);
    }
}

} // namespace

int power_board_property_display(const power_unit &unit, report_sink sink) {
    board_area area{};
    area.len = area_size;
    show_label(unit, &area, sink);
    for (const board_property_row &row : board_property_rows) {
        show_board_property(unit, row, &area, sink);
    }
    return 0;
}

namespace {

int show_alarm(const power_unit &unit, uint32_t type, report_sink sink) {
    const power_alarm read = read_power_alarm(unit, type);
    const char *name = power_alarm_name(type);
    if (is_not_supported(read.ret)) {
        report_append(sink, "Success: slot %u power %u not support get %s 0x%x info. ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, name, type, read.ret);
        return 0;
    }
    if (read.ret != 0) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
                      name, type, read.ret);
        return -1;
    }
    if (read.sub_alarm > 1) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%x fail. sub_alarm 0x%x should be 0 or 1\r\n",
                      unit.slot_id, unit.power_id, name, type, read.sub_alarm);
        return -1;
    }
    if (read.alarms != 0) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%x fail. alarms 0x%x sub_alarm 0x%x\r\n", unit.slot_id,
                      unit.power_id, name, type, read.alarms, read.sub_alarm);
        return -1;
    }
    report_append(sink, "Success: slot %u power %u get %s 0x%x: alarms 0x%x sub_alarm 0x%x\r\n", unit.slot_id,
                  unit.power_id, name, type, read.alarms, read.sub_alarm);
    return 0;
}

} // namespace

int power_alarm_display(const power_unit &unit, report_sink sink) {
    constexpr uint32_t before_input[] = {1, 2, 3, 4, 5, 6};
    constexpr uint32_t behind_input[] = {9, 10, 14, 15};
    int result = 0;
    for (const uint32_t type : before_input) {
        result |= show_alarm(unit, type, sink);
    }
    // The input may have gone since the properties were read.
    const power_input input = detect_power_input(unit, sink);
    if (!input.no_input || !input.pmbus) {
        result |= show_alarm(unit, alarm_vin_unit_off, sink);
        result |= show_alarm(unit, alarm_input, sink);
    }
    for (const uint32_t type : behind_input) {
        result |= show_alarm(unit, type, sink);
    }
    return result;
}

int power_display_test(const power_unit &unit, report_sink sink) {
    constexpr uint32_t bbox_size = 4096;
    report_append(sink, "Info   : slot %u power %u display test begin. \r\n", unit.slot_id, unit.power_id);
    const power_value absent = read_power_property(unit, property_online);
    if (absent.ret != 0) {
        report_append(sink, "Error  : slot %u power %u get online fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
                      absent.ret);
        return static_cast<int>(absent.ret);
    }
    if (absent.value == 1) {
        report_append(sink, "Info   :slot %u power %u is not online.\r\n", unit.slot_id, unit.power_id);
        return 0;
    }
    int result = power_bbox_report(unit, bbox_size, sink);
    result |= power_property_display(unit, sink);
    result |= power_board_property_display(unit, sink);
    result |= power_alarm_display(unit, sink);
    return result;
}
