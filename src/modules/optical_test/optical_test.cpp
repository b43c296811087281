// optical_test: optical transceivers in the ports of a board or card, through a driver library that a board may lack.
// The driver is brought up for one instance around each sub-command, and says then which ports there are.
#include <array>
#include <cstdio>

#include "modules/modules.h"
#include "modules/optical_test/handlers.h"
#include "modules/optical_test/port.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

using namespace optical_commands;

constexpr std::array rows = {
    command_row{"get_optical_present_status", get_optical_present_status, "get_optical_present_status"},
    command_row{"get_optical_physical_present_status", get_optical_physical_present_status,
                "get_optical_physical_present_status"},
    command_row{"get_optical_common_info", get_optical_common_info, "get_optical_common_info"},
    command_row{"get_optical_trans_distance", get_optical_trans_distance, "get_optical_trans_distance"},
    command_row{"get_optical_los_status", get_optical_los_status, "get_optical_los_status"},
    command_row{"get_optical_tx_fault_status", get_optical_tx_fault_status, "get_optical_tx_fault_status"},
    command_row{"get_optical_ddm_info", get_optical_ddm_info, "get_optical_ddm_info"},
    command_row{"get_optical_ddm_warning_info", get_optical_ddm_warning_info, "get_optical_ddm_warning_info"},
    command_row{"get_optical_ddm_alarm_info", get_optical_ddm_alarm_info, "get_optical_ddm_alarm_info"},
    command_row{"get_optical_threshold_info", get_optical_threshold_info, "get_optical_threshold_info"},
    command_row{"test_optical_disable_status", test_optical_disable_status, "test_optical_disable_status"},
    command_row{"get_optical_physical_pull_status", get_optical_physical_pull_status,
                "get_optical_physical_pull_status"},
    command_row{"get_optical_encode_type", get_optical_encode_type, "get_optical_encode_type"},
    command_row{"get_optical_type", get_optical_type, "get_optical_type"},
    command_row{"get_optical_diag_info_support_flag", get_optical_diag_info_support_flag,
                "get_optical_diag_info_support_flag"},
    command_row{"get_optical_linear_attr", get_optical_linear_attr, "get_optical_linear_attr"},
    command_row{"get_optical_lane_num", get_optical_lane_num, "get_optical_lane_num"},
    command_row{"get_optical_common_register_info", get_optical_common_register_info,
                "get_optical_common_register_info"},
    command_row{"set_optical_rate", set_optical_rate, "set_optical_rate"},
    command_row{"get_optical_bus_status", get_optical_bus_status, "get_optical_bus_status"},
    command_row{"set_optical_bus_status_recovery", set_optical_bus_status_recovery, "set_optical_bus_status_recovery"},
    command_row{"get_optical_dfx_info", get_optical_dfx_info, "get_optical_dfx_info"},
    command_row{"read_optical_register", read_optical_register, "read_optical_register"},
    command_row{"write_optical_register", write_optical_register, "write_optical_register"},
};

static_assert(rows_are_sound(rows));

// Time for modules that the driver has just taken out of reset.
constexpr uint32_t settle_us = 5000000;

int show_port_row(int index, const drv_opt_port_row &row) {
    const auto get_name =
        find<decltype(drv_cbb_optical_get_port_type_str_from_value)>("drv_cbb_optical_get_port_type_str_from_value");
    if (get_name == nullptr) {
        return -1;
    }
    constexpr uint32_t name_size = 16;
    char name[name_size + 1] = {};
    const uint32_t ret = get_name(row.package_type, name, name_size);
    if (ret != 0) {
        printf("Failed to get port type string for node of %d!\r\n", index);
        return static_cast<int>(ret);
    }
    printf("package_type:%-10s, package_type_value:%d, number:%3d, start_id:%3d\n", name,
           static_cast<int>(row.package_type), static_cast<int>(row.number), static_cast<int>(row.start_id));
    return 0;
}

int show_port_map(const card_ports &map) {
    int index = 0;
    for (const drv_opt_port_row &row : map) {
        if (row.package_type == DRV_OPT_NO_PACKAGE) {
            break;
        }
        const int result = show_port_row(index, row);
        if (result != 0) {
            return result;
        }
        ++index;
    }
    return 0;
}

int bring_up(uint32_t inst_id) {
    // A library that cannot be opened has no operations: the next step reports that and ends the run.
    open_held_library(library());
    const auto init = find<decltype(drv_opt_init)>("drv_opt_init");
    if (init == nullptr) {
        return -1;
    }
    const uint32_t ret = init(inst_id);
    if (ret != 0) {
        printf("optical init failed, inst_id:0x%x.\r\n", inst_id);
        return static_cast<int>(ret);
    }
    const auto get_map = find<decltype(drv_opt_get_card_port_map)>("drv_opt_get_card_port_map");
    if (get_map == nullptr) {
        return -1;
    }
    // A driver that does not answer leaves a map of empty rows without an end marker, and all of them are shown.
    card_ports &map = port_map();
    map = {};
    get_map(inst_id & 0xFFFF, inst_id >> 24, map.data(), sizeof map);
    const int shown = show_port_map(map);
    if (shown != 0) {
        return shown;
    }
    const auto delay = find<decltype(drv_cbb_optical_delay_nointerupt)>("drv_cbb_optical_delay_nointerupt");
    if (delay == nullptr) {
        return -1;
    }
    puts("##########################opitcal init success##########################");
    delay(settle_us);
    return 0;
}

void shut_down(uint32_t inst_id) {
    const auto exit_driver = find<decltype(drv_opt_exit)>("drv_opt_exit");
    if (exit_driver != nullptr) {
        const uint32_t ret = exit_driver(inst_id);
        if (ret != 0) {
            printf("inst_id = 0x%x, opitcal exit fail, ret = 0x%x\n", inst_id, ret);
        }
    }
    close_held_library(library());
}

} // namespace

int optical_test(int count, char **args) {
    const uint32_t inst_id = count > 1 ? word_to_u32(args[1]) : 0;
    const command_table table = new_command_table();
    if (table.empty()) {
        return -1;
    }
    register_rows(rows, table);
    int result = bring_up(inst_id);
    if (result == 0) {
        result = dispatch(count, args, table, timing_on);
    }
    shut_down(inst_id);
    free_command_table(table);
    return result;
}
