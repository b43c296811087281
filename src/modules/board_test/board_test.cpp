// board_test: board management (identity, presence, slots, memory sizes, power domains, health checks) and the one-key
// self-test of the whole board. The handlers stand by subject in the files beside this one; each calls its driver
// operation by name, so that a run binds only the operations it calls.
#include <array>
#include <cstdio>

#include "drv_types.h"
#include "modules/board_test/handlers.h"
#include "modules/modules.h"
#include "selftest/board_selftest.h"
#include "shell/dispatch.h"

namespace board_commands {

int usage(const char *name, const char *words) {
    printf("./kestro_test board_test %s [%s]\r\n", name, words);
    return -1;
}

int board_onekey_test(int, char **) {
    return board_selftest_run(DRV_INST_SELF, console_sink);
}

} // namespace board_commands

namespace {

using namespace board_commands;

constexpr std::array rows = {
    command_row{"board_init", board_init, "board_init                        inst_id"},
    command_row{"board_deinit", board_deinit, "board_deinit                      inst_id"},
    command_row{"board_get_type", board_get_type, "board_get_type                    inst_id"},
    command_row{"board_set_type", board_set_type, "board_set_type                    inst_id hard_type"},
    command_row{"board_get_pcb_ver", board_get_pcb_ver, "board_get_pcb_ver                 inst_id"},
    command_row{"board_get_usr_pcb_ver", board_get_usr_pcb_ver, "board_get_usr_pcb_ver             null"},
    command_row{"board_get_soft_pcb_ver", board_get_soft_pcb_ver, "board_get_soft_pcb_ver            inst_id"},
    command_row{"board_get_bom_ver", board_get_bom_ver, "board_get_bom_ver                 inst_id"},
    command_row{"board_get_power", board_get_power, "board_get_power                   inst_id"},
    command_row{"board_get_online_status", board_get_online_status, "board_get_online_status           inst_id"},
    command_row{"board_get_online_status_ex", board_get_online_status_ex, "board_get_online_status_ex        inst_id"},
    command_row{"board_set_online_status", board_set_online_status, "board_set_online_status           inst_id online"},
    command_row{"board_get_self_online_status", board_get_self_online_status, "board_get_self_online_status      null"},
    command_row{"board_get_peer_online_status", board_get_peer_online_status, "board_get_peer_online_status      null"},
    command_row{"board_get_fullin_status", board_get_fullin_status, "board_get_fullin_status           inst_id"},
    command_row{"board_check_fullin_status", board_check_fullin_status, "board_check_fullin_status         inst_id"},
    command_row{"board_get_self_slotid", board_get_self_slotid, "board_get_self_slotid             null"},
    command_row{"board_get_peer_slotid", board_get_peer_slotid, "board_get_peer_slotid             null"},
    command_row{"board_get_self_logic_slotid", board_get_self_logic_slotid, "board_get_self_logic_slotid       null"},
    command_row{"board_get_peer_logic_slotid", board_get_peer_logic_slotid, "board_get_peer_logic_slotid       null"},
    command_row{"board_check_slotid", board_check_slotid, "board_check_slotid                inst_id"},
    command_row{"board_get_bootrom_size", board_get_bootrom_size, "board_get_bootrom_size            inst_id"},
    command_row{"board_get_flash_size", board_get_flash_size, "board_get_flash_size              inst_id"},
    command_row{"board_get_nandflash_size", board_get_nandflash_size, "board_get_nandflash_size          inst_id"},
    command_row{"board_get_nvram_size", board_get_nvram_size, "board_get_nvram_size              inst_id"},
    command_row{"board_get_sdram_size", board_get_sdram_size, "board_get_sdram_size              inst_id"},
    command_row{"board_get_dimm_info", board_get_dimm_info, "board_get_dimm_info               inst_id dimm_id"},
    command_row{"board_get_dimm_temperature", board_get_dimm_temperature,
                "board_get_dimm_temperature        inst_id dimm_id"},
    command_row{"board_get_cpld_ver", board_get_cpld_ver, "board_get_cpld_ver                inst_id cpld_id"},
    command_row{"board_get_cpld_num", board_get_cpld_num, "board_get_cpld_num                inst_id"},
    command_row{"board_get_ctrl_fpga_num", board_get_ctrl_fpga_num, "board_get_ctrl_fpga_num           inst_id"},
    command_row{"board_get_bios_ver", board_get_bios_ver, "board_get_bios_ver                inst_id"},
    command_row{"board_get_area", board_get_area, "board_get_area                    inst_id"},
    command_row{"board_check_bios", board_check_bios, "board_check_bios                  area"},
    command_row{"board_get_capability", board_get_capability,
                "board_get_capability              inst_id capability_type"},
    command_row{"board_set_power_on", board_set_power_on, "board_set_power_on                inst_id volage_type"},
    command_row{"board_set_power_off", board_set_power_off, "board_set_power_off               inst_id volage_type"},
    command_row{"board_get_power_status", board_get_power_status,
                "board_get_power_status            inst_id volage_type"},
    command_row{"board_get_four_corner_status", board_get_four_corner_status,
                "board_get_four_corner_status      inst_id chip_id"},
    command_row{"board_check_four_corner_status", board_check_four_corner_status,
                "board_check_four_corner_status    inst_id chip_id"},
    command_row{"board_get_card_ok", board_get_card_ok, "board_get_card_ok                 slot_id"},
    command_row{"board_get_card_list", board_get_card_list, "board_get_card_list               null"},
    command_row{"board_get_mpu_status", board_get_mpu_status, "board_get_mpu_status              null"},
    command_row{"board_check_mpu_status", board_check_mpu_status, "board_check_mpu_status            null"},
    command_row{"board_check_int_status", board_check_int_status, "board_check_int_status            index_id type"},
    command_row{"board_get_check_low_voltage", board_get_check_low_voltage, "board_get_check_low_voltage       null"},
    command_row{"board_get_tx_err_count", board_get_tx_err_count, "board_get_tx_err_count            inst_id slot_id"},
    command_row{"board_get_rx_err_count", board_get_rx_err_count, "board_get_rx_err_count            inst_id slot_id"},
    command_row{"subboard_get_type", subboard_get_type, "subboard_get_type inst_id         subboard_id"},
    command_row{"subboard_get_pcb_ver", subboard_get_pcb_ver, "subboard_get_pcb_ver              inst_id subboard_id"},
    command_row{"subboard_get_bom_ver", subboard_get_bom_ver, "subboard_get_bom_ver              inst_id subboard_id"},
    command_row{"subboard_get_online_status", subboard_get_online_status,
                "subboard_get_online_status        inst_id subboard_id"},
    command_row{"subboard_get_online_status_ex", subboard_get_online_status_ex,
                "subboard_get_online_status_ex     inst_id subboard_id"},
    command_row{"board_check_corrosion_status", board_check_corrosion_status,
                "board_check_corrosion_status      inst_id"},
    command_row{"board_get_peer_bootstep", board_get_peer_bootstep, "board_get_peer_bootstep           null"},
    command_row{"board_get_self_bootstep", board_get_self_bootstep, "board_get_self_bootstep           null"},
    command_row{"board_set_self_bootstep", board_set_self_bootstep, "board_set_self_bootstep           bootstep"},
    command_row{"board_set_sfu_isolate", board_set_sfu_isolate, "board_set_sfu_isolate             inst_id id enable"},
    command_row{"board_get_sfu_isolate", board_get_sfu_isolate, "board_get_sfu_isolate             inst_id id"},
    command_row{"board_pic_xml_load", board_pic_xml_load, "board_pic_xml_load                inst_id"},
    command_row{"board_pic_xml_unload", board_pic_xml_unload, "board_pic_xml_unload              inst_id"},
    command_row{"board_set_bbox_enable", board_set_bbox_enable, "board_set_bbox_enable             enable"},
    command_row{"board_set_bbox_time", board_set_bbox_time, "board_set_bbox_time               time_value"},
    command_row{"board_in_out_reg", board_in_out_reg, "board_in_out_reg                  null"},
    command_row{"board_in_out_unreg", board_in_out_unreg, "board_in_out_unreg                null"},
    command_row{"board_set_sfu_fullin_isolate_en", board_set_sfu_fullin_isolate_en,
                "board_set_sfu_fullin_isolate_en   inst_id id enable"},
    command_row{"board_get_sfu_fullin_isolate_en", board_get_sfu_fullin_isolate_en,
                "board_get_sfu_fullin_isolate_en   inst_id id"},
    command_row{"board_get_factory_reset_flag", board_get_factory_reset_flag, "board_get_factory_reset_flag      null"},
    command_row{"board_get_ddr_event", board_get_ddr_event, "board_get_ddr_event               inst_id cpu_chip_no"},
    command_row{"board_check_dimm_bus_status", board_check_dimm_bus_status,
                "board_check_dimm_bus_status       inst_id dimm_no"},
    command_row{"board_check_smi_crc", board_check_smi_crc, "board_check_smi_crc               inst_id bus_id"},
    command_row{"board_check_smi_los", board_check_smi_los, "board_check_smi_los               inst_id bus_id "},
    command_row{"board_set_backup_smi_en", board_set_backup_smi_en, "board_set_backup_smi_en           inst_id enable"},
    command_row{"board_get_tpm_online_status", board_get_tpm_online_status,
                "board_get_tpm_online_status       inst_id"},
    command_row{"board_get_tpm_active_status", board_get_tpm_active_status,
                "board_get_tpm_active_status       inst_id"},
    command_row{"board_onekey_test", board_onekey_test, "board_onekey_test null"},
    command_row{"board_check_smi", board_check_smi, "board_check_smi                   inst_id bus_id "},
    command_row{"board_set_smi_source", board_set_smi_source, "board_set_smi_source              inst_id source "},
    command_row{"board_get_smi_source", board_get_smi_source, "board_get_smi_source              inst_id "},
    command_row{"board_get_bom_id", board_get_bom_id, "board_get_bom_id                  inst_id"},
    command_row{"subboard_get_bom_id", subboard_get_bom_id, "subboard_get_bom_id               inst_id"},
};

static_assert(rows_are_sound(rows));

} // namespace

int board_test(int count, char **args) {
    return run_module(rows, count, args);
}
