// The sub-commands of board_test, by subject, and what their handlers share.
#pragma once

#include <cstdint>

namespace board_commands {

// Prints the usage line of a sub-command, the text standing between the brackets, and gives -1.
int usage(const char *name, const char *words);

int board_init(int count, char **args);
int board_deinit(int count, char **args);
int board_get_type(int count, char **args);
int board_set_type(int count, char **args);
int board_get_pcb_ver(int count, char **args);
int board_get_usr_pcb_ver(int count, char **args);
int board_get_soft_pcb_ver(int count, char **args);
int board_get_bom_ver(int count, char **args);
int board_get_power(int count, char **args);
int board_get_online_status(int count, char **args);
int board_get_online_status_ex(int count, char **args);
int board_set_online_status(int count, char **args);
int board_get_self_online_status(int count, char **args);
int board_get_peer_online_status(int count, char **args);
int board_get_fullin_status(int count, char **args);
int board_check_fullin_status(int count, char **args);
int board_get_self_slotid(int count, char **args);
int board_get_peer_slotid(int count, char **args);
int board_get_self_logic_slotid(int count, char **args);
int board_get_peer_logic_slotid(int count, char **args);
int board_check_slotid(int count, char **args);
int board_get_bootrom_size(int count, char **args);
int board_get_flash_size(int count, char **args);
int board_get_nandflash_size(int count, char **args);
int board_get_nvram_size(int count, char **args);
int board_get_sdram_size(int count, char **args);
int board_get_dimm_info(int count, char **args);
int board_get_dimm_temperature(int count, char **args);
int board_get_cpld_ver(int count, char **args);
int board_get_cpld_num(int count, char **args);
int board_get_ctrl_fpga_num(int count, char **args);
int board_get_bios_ver(int count, char **args);
int board_get_area(int count, char **args);
int board_check_bios(int count, char **args);
int board_get_capability(int count, char **args);
int board_set_power_on(int count, char **args);
int board_set_power_off(int count, char **args);
int board_get_power_status(int count, char **args);
int board_get_four_corner_status(int count, char **args);
int board_check_four_corner_status(int count, char **args);
int board_get_card_ok(int count, char **args);
int board_get_card_list(int count, char **args);
int board_get_mpu_status(int count, char **args);
int board_check_mpu_status(int count, char **args);
int board_check_int_status(int count, char **args);
int board_get_check_low_voltage(int count, char **args);
int board_get_tx_err_count(int count, char **args);
int board_get_rx_err_count(int count, char **args);
int subboard_get_type(int count, char **args);
int subboard_get_pcb_ver(int count, char **args);
int subboard_get_bom_ver(int count, char **args);
int subboard_get_online_status(int count, char **args);
int subboard_get_online_status_ex(int count, char **args);
int board_check_corrosion_status(int count, char **args);
int board_get_peer_bootstep(int count, char **args);
int board_get_self_bootstep(int count, char **args);
int board_set_self_bootstep(int count, char **args);
int board_set_sfu_isolate(int count, char **args);
int board_get_sfu_isolate(int count, char **args);
int board_pic_xml_load(int count, char **args);
int board_pic_xml_unload(int count, char **args);
int board_set_bbox_enable(int count, char **args);
int board_set_bbox_time(int count, char **args);
int board_in_out_reg(int count, char **args);
int board_in_out_unreg(int count, char **args);
int board_set_sfu_fullin_isolate_en(int count, char **args);
int board_get_sfu_fullin_isolate_en(int count, char **args);
int board_get_factory_reset_flag(int count, char **args);
int board_get_ddr_event(int count, char **args);
int board_check_dimm_bus_status(int count, char **args);
int board_check_smi_crc(int count, char **args);
int board_check_smi_los(int count, char **args);
int board_set_backup_smi_en(int count, char **args);
int board_get_tpm_online_status(int count, char **args);
int board_get_tpm_active_status(int count, char **args);
int board_onekey_test(int count, char **args);
int board_check_smi(int count, char **args);
int board_set_smi_source(int count, char **args);
int board_get_smi_source(int count, char **args);
int board_get_bom_id(int count, char **args);
int subboard_get_bom_id(int count, char **args);

} // namespace board_commands
