// power_test: the power supplies of the chassis, by the slot of their frame and their place in it. Numbered properties
// and alarms, labels and versions, black boxes and programs, and the one-key tests. No banners here; too few words are
// refused without one, and words behind those that are needed are left alone.
#include <array>
#include <cstdint>
#include <cstdio>
#include <unistd.h>

#include "bounds/bounds.h"
#include "drv_basic/power/drv_power.h"
#include "modules/modules.h"
#include "selftest/files.h"
#include "selftest/power/power_names.h"
#include "selftest/power/power_onekey.h"
#include "selftest/power/power_reports.h"
#include "selftest/power/power_software.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"
#include "shell/words.h"

namespace {

// Slot and place, with which the words of nearly all sub-commands begin.
power_unit unit_of(char **args) {
    return {word_to_u32(args[0]), word_to_u32(args[1])};
}

int power_get_property(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t type = word_to_u32(args[2]);
    // A driver that succeeds and writes nothing is caught by a value that few properties have.
    uint32_t value = 10;
    const uint32_t ret = drv_power_get_property(unit.slot_id, unit.power_id, type, &value);
    if (ret == 0) {
        printf("Success: slot %u power %u get %s 0x%x value 0x%x.\r\n", unit.slot_id, unit.power_id,
               power_property_name(type), type, value);
    } else {
        printf("Error  : slot %u power %u get %s 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
               power_property_name(type), type, ret);
    }
    print_result("%x %x", ret, value);
    return static_cast<int>(ret);
}

int power_set_property(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t type = word_to_u32(args[2]);
    constexpr uint32_t value_without_word = 255;
    const uint32_t value = count > 3 ? word_to_u32(args[3]) : value_without_word;
    const uint32_t ret = drv_power_set_property(unit.slot_id, unit.power_id, type, value);
    if (ret == 0) {
        printf("Success: slot %u power %u set %s 0x%x value 0x%x.\r\n", unit.slot_id, unit.power_id,
               power_property_name(type), type, value);
    } else {
        printf("Error  : slot %u power %u set %s 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
               power_property_name(type), type, ret);
    }
    return static_cast<int>(ret);
}

int power_get_num(int count, char **args) {
    return count < 1 ? -1 : power_number_report(word_to_u32(args[0]), console_sink);
}

constexpr uint32_t board_property_size = DRV_POWER_LABEL_SIZE;

// A zero behind the area ends the text of a driver, or a file, that fills it.
using board_property_area = char[board_property_size + 1];

uint8_t *bytes(char *area) {
    return reinterpret_cast<uint8_t *>(area);
}

int power_get_board_property(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t type = word_to_u32(args[2]);
    board_property_area area = {};
    uint32_t len = board_property_size;
    const uint32_t ret = drv_power_get_board_property(unit.slot_id, unit.power_id, type, bytes(area), &len);
    if (ret == 0) {
        printf("Success: slot %u power %u get 0x%x value: %s.\r\n", unit.slot_id, unit.power_id, type, area);
    } else {
        printf("Error  : slot %u power %u get 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id, type, ret);
    }
    print_result("%x %s %x", ret, area, len);
    return static_cast<int>(ret);
}

constexpr const char *board_property_file = "/home/1";

// A file that cannot be read is not taken for an empty one, which would blank the label of the supply.
int read_board_property(char *area) {
    const int file = open_regular_file(board_property_file);
    if (file < 0) {
        printf("can't open %s\n", board_property_file);
        return -1;
    }
    const ssize_t got = read(file, area, board_property_size);
    close(file);
    if (got < 0) {
        printf("can't read %s\n", board_property_file);
        return -1;
    }
    return 0;
}

// The file begins with the checksum, two bytes, as the driver takes it; the text behind them is shown. The whole area
// is handed over, with zeros behind a file that is shorter.
int power_set_board_property(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t type = word_to_u32(args[2]);
    board_property_area area = {};
    if (read_board_property(area) != 0) {
        return -1;
    }
    constexpr size_t checksum_size = 2;
    const uint32_t ret =
        drv_power_set_board_property(unit.slot_id, unit.power_id, type, bytes(area), board_property_size);
    if (ret == 0) {
        printf("Success: slot %u power %u set 0x%x value: %s.\r\n", unit.slot_id, unit.power_id, type,
               area + checksum_size);
    } else {
        printf("Error  : slot %u power %u set 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id, type, ret);
    }
    print_result("%x %s %x", ret, area, board_property_size);
    return static_cast<int>(ret);
}

int power_get_alarm(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t type = word_to_u32(args[2]);
    uint32_t result = 0;
    uint32_t sub_result = 0;
    const uint32_t ret = drv_power_get_alarm(unit.slot_id, unit.power_id, type, &result, &sub_result);
    if (ret == 0) {
        printf("Success: slot %u power %u get %s 0x%x result 0x%x sub_result 0x%x.\r\n", unit.slot_id, unit.power_id,
               power_alarm_name(type), type, result, sub_result);
    } else {
        printf("Error  : slot %u power %u get %s 0x%x fail. ret 0x%x\r\n", unit.slot_id, unit.power_id,
               power_alarm_name(type), type, ret);
    }
    print_result("%x %x %x", ret, result, sub_result);
    return static_cast<int>(ret);
}

int power_get_softver(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t soft_id = word_to_u32(args[2]);
    const uint32_t module_id = word_to_u32(args[3]);
    return power_version_report(unit_of(args), soft_id, module_id, console_sink);
}

int power_get_bbox_info(int count, char **args) {
    return count < 3 ? -1 : power_bbox_report(unit_of(args), word_to_u32(args[2]), console_sink);
}

int power_get_software_info(int count, char **args) {
    drv_power_software_info info{};
    return count < 2 ? -1 : power_software_report(unit_of(args), console_sink, &info);
}

int power_init(int count, char **args) {
    if (count < 2) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t ret = drv_power_init(unit.slot_id, unit.power_id);
    if (ret == 0) {
        printf("Success: slot %u power %u init success. \r\n", unit.slot_id, unit.power_id);
    } else {
        printf("Error  : slot %u power %u init fail . ret = 0x%x \r\n", unit.slot_id, unit.power_id, ret);
    }
    return static_cast<int>(ret);
}

int power_deinit(int count, char **args) {
    if (count < 2) {
        return -1;
    }
    const power_unit unit = unit_of(args);
    const uint32_t ret = drv_power_deinit(unit.slot_id, unit.power_id);
    if (ret == 0) {
        printf("Success: slot %u power %u deinit success. \r\n", unit.slot_id, unit.power_id);
    } else {
        printf("Error  : slot %u power %u deinit fail . ret = 0x%x \r\n", unit.slot_id, unit.power_id, ret);
    }
    return static_cast<int>(ret);
}

// What a hook does is the correction's own, and so is what it tells.
int power_patch_func1(int, char **) {
    drv_power_patch_func1("test start 1", 12);
    return 0;
}

int power_patch_func2(int, char **) {
    drv_power_patch_func2("test start 2", 12);
    return 0;
}

template <power_test_mode mode> int power_onekey_test_of(int count, char **args) {
    return count < 1 ? -1 : power_onekey_test(word_to_u32(args[0]), mode, console_sink);
}

constexpr std::array rows = {
    command_row{"power_get_property", power_get_property, "power_get_property          slot_id power_id type"},
    command_row{"power_set_property", power_set_property, "power_set_property          slot_id power_id type value"},
    command_row{"power_get_num", power_get_num, "power_get_num               slot_id"},
    command_row{"power_get_board_property", power_get_board_property,
                "power_get_board_property    slot_id power_id type"},
    command_row{"power_set_board_property", power_set_board_property,
                "power_set_board_property    slot_id power_id type"},
    command_row{"power_get_alarm", power_get_alarm, "power_get_alarm             slot_id power_id type"},
    command_row{"power_get_softver", power_get_softver,
                "power_get_softver           slot_id power_id soft_id module_id"},
    command_row{"power_get_bbox_info", power_get_bbox_info, "power_get_bbox_info         slot_id power_id len"},
    command_row{"power_get_software_info", power_get_software_info, "power_get_software_info     slot_id power_id"},
    command_row{"power_init", power_init, "power_init                  slot_id power_id"},
    command_row{"power_deinit", power_deinit, "power_deinit                slot_id power_id"},
    command_row{"power_patch_func1", power_patch_func1, "power_patch_func1           null"},
    command_row{"power_patch_func2", power_patch_func2, "power_patch_func2           null"},
    command_row{"power_onekey_test_all", power_onekey_test_of<power_test_all>, "power_onekey_test_all       slot_id"},
    command_row{"power_onekey_test_display", power_onekey_test_of<power_test_display>,
                "power_onekey_test_display   slot_id"},
    command_row{"power_onekey_test_config", power_onekey_test_of<power_test_config>,
                "power_onekey_test_config    slot_id"},
    command_row{"power_onekey_test_init", power_onekey_test_of<power_test_init>, "power_onekey_test_init      slot_id"},
    // The help text of a run names the file as well.
    command_row{"power_onekey_test_software", power_onekey_test_of<power_test_software>,
                "power_onekey_test_software  slot_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int power_test(int count, char **args) {
    char software_help[512] = {};
    sprintf_s(software_help, sizeof(software_help), "power_onekey_test_software  slot_id (load file:%s)",
              power_image_file);
    std::array rows_of_run = rows;
    rows_of_run.back().help = software_help;
    return run_module(rows_of_run, count, args);
}
