// Makes driver calls, one per argument ("mac_get_num 0xffffffff 1"), and prints the result code and the answers of
// each on a line of its own. "null_" before a name makes the call once for each of its pointers, with that one missing.
// An area that was written beyond its end shows as OVERRUN, an answer that comes with an error as TOUCHED.
#include "tests/sim/call_arguments.h"
#include "tests/sim/special_calls.h"

#include "drv_basic/environment/drv_avs.h"
#include "drv_basic/environment/drv_voltage.h"
#include "drv_basic/identity/drv_barcode.h"
#include "drv_basic/identity/drv_elabel.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_led.h"
#include "drv_basic/management/drv_msc.h"
#include "drv_basic/management/drv_pic.h"
#include "drv_basic/management/drv_reset.h"
#include "drv_basic/management/drv_slot.h"
#include "drv_basic/management/drv_smb.h"
#include "drv_basic/management/drv_subboard.h"
#include "drv_basic/storage/drv_eeprom.h"
#include "nb_bsp/nb_bsp.h"
#include "nb_ctl/board_xml.h"

#include <cstdio>
#include <map>
#include <string>

namespace kestro_tests {

namespace {

class call_table {
  public:
    call_table() {
        add_identity_areas(calls_);
        add_listeners(calls_);
        add_other_specials(calls_);
    }
    template <typename... Parameters> void add(const std::string &name, uint32_t (*operation)(Parameters...)) {
        calls_[name] = call_of(operation);
        calls_["null_" + name] = nulls_of(operation);
    }
    bool make(const std::string &text) const {
        words call(text);
        const auto found = calls_.find(call.next());
        if (found == calls_.end()) {
            return false;
        }
        found->second(call);
        return true;
    }

  private:
    std::map<std::string, handler> calls_;
};

void add_identity(call_table &calls) {
    calls.add("elabel_init", drv_elabel_init);
    calls.add("elabel_deinit", drv_elabel_deinit);
    calls.add("barcode_init", drv_barcode_init);
    calls.add("barcode_deinit", drv_barcode_deinit);
    calls.add("mac_init", drv_mac_init);
    calls.add("mac_deinit", drv_mac_deinit);
    calls.add("mac_get_num", drv_mac_get_num);
    calls.add("mac_get_addr_num", drv_mac_get_addr_num);
    calls.add("mac_set_num", drv_mac_set_num);
    calls.add("msc_get_state", drv_msc_get_state);
    calls.add("eeprom_read", drv_eeprom_read_data);
    calls.add("gpio_read", nb_gpio_read);
    calls.add("gpio_write", nb_gpio_write);
    calls.add("card_id", get_card_id);
    calls.add("find_section", find_section_info_by_section);
}

void add_description(call_table &calls) {
    calls.add("load", xml_load);
    calls.add("unload", xml_unload);
    calls.add("entry_num", xml_get_entry_num);
    calls.add("node_num", xml_get_node_num);
    calls.add("specified_node_num", xml_get_specified_node_num);
    calls.add("string", xml_get_element_string);
    calls.add("u32", xml_get_element_value_u32);
    calls.add("u64", xml_get_element_value_u64);
    calls.add("module_exist", xml_is_module_exist);
    calls.add("node_exist", xml_is_node_exist);
    calls.add("entry_exist", xml_is_entry_exist);
    calls.add("element_exist", xml_is_element_exist);
}

void add_board_identity(call_table &calls) {
    calls.add("board_init", drv_board_init);
    calls.add("board_deinit", drv_board_deinit);
    calls.add("board_get_type", drv_board_get_type);
    calls.add("board_set_type", drv_board_set_type);
    calls.add("board_get_pcb_ver", drv_board_get_pcb_ver);
    calls.add("board_get_usr_pcb_ver", drv_board_get_usr_pcb_ver);
    calls.add("board_get_soft_pcb_ver", drv_board_get_soft_pcb_ver);
    calls.add("board_get_bom_ver", drv_board_get_bom_ver);
    calls.add("board_get_bom_id", drv_board_get_bom_id);
    calls.add("board_get_power", drv_board_get_power);
    calls.add("board_get_capability", drv_board_get_capability);
    calls.add("board_get_online_status", drv_board_get_online_status);
    calls.add("board_get_online_status_ex", drv_board_get_online_status_ex);
    calls.add("board_set_online_status", drv_board_set_online_status);
    calls.add("board_get_self_online_status", drv_board_get_self_online_status);
    calls.add("board_get_peer_online_status", drv_board_get_peer_online_status);
}

void add_board_places(call_table &calls) {
    calls.add("board_get_fullin_status", drv_board_get_fullin_status);
    calls.add("board_check_fullin_status", drv_board_check_fullin_status);
    calls.add("board_get_self_slotid", drv_board_get_self_slotid);
    calls.add("board_get_peer_slotid", drv_board_get_peer_slotid);
    calls.add("board_get_self_logic_slotid", drv_board_get_self_logic_slotid);
    calls.add("board_get_peer_logic_slotid", drv_board_get_peer_logic_slotid);
    calls.add("board_check_slotid", drv_board_check_slotid);
    calls.add("board_get_card_ok", drv_board_get_card_ok);
    calls.add("board_get_card_list", drv_board_get_card_list);
    calls.add("board_get_mpu_status", drv_board_get_mpu_status);
    calls.add("board_check_mpu_status", drv_board_check_mpu_status);
    calls.add("board_check_int_status", drv_board_check_int_status);
}

void add_board_devices(call_table &calls) {
    calls.add("board_get_bootrom_size", drv_board_get_bootrom_size);
    calls.add("board_get_flash_size", drv_board_get_flash_size);
    calls.add("board_get_nandflash_size", drv_board_get_nandflash_size);
    calls.add("board_get_nvram_size", drv_board_get_nvram_size);
    calls.add("board_get_sdram_size", drv_board_get_sdram_size);
    calls.add("board_get_dimm_info", drv_board_get_dimm_info);
    calls.add("board_get_dimm_temperature", drv_board_get_dimm_temperature);
    calls.add("board_check_dimm_bus_status", drv_board_check_dimm_bus_status);
    calls.add("board_get_ddr_event", drv_board_get_ddr_event);
    calls.add("board_get_cpld_ver", drv_board_get_cpld_ver);
    calls.add("board_get_cpld_num", drv_board_get_cpld_num);
    calls.add("board_get_ctrl_fpga_num", drv_board_get_ctrl_fpga_num);
    calls.add("board_get_bios_ver", drv_board_get_bios_ver);
    calls.add("board_get_area", drv_board_get_area);
    calls.add("board_check_bios", drv_board_check_bios);
    calls.add("board_get_peer_bootstep", drv_board_get_peer_bootstep);
    calls.add("board_get_self_bootstep", drv_board_get_self_bootstep);
    calls.add("board_set_self_bootstep", drv_board_set_self_bootstep);
    calls.add("board_get_factory_reset_flag", drv_board_get_factory_reset_flag);
}

void add_board_health(call_table &calls) {
    calls.add("board_set_power_on", drv_board_set_power_on);
    calls.add("board_set_power_off", drv_board_set_power_off);
    calls.add("board_get_power_status", drv_board_get_power_status);
    calls.add("board_check_low_voltage", drv_board_check_low_voltage);
    calls.add("board_get_four_corner_status", drv_board_get_four_corner_status);
    calls.add("board_check_four_corner_status", drv_board_check_four_corner_status);
    calls.add("board_check_corrosion_status", drv_board_check_corrosion_status);
    calls.add("board_set_sfu_isolate", drv_board_set_sfu_isolate);
    calls.add("board_get_sfu_isolate", drv_board_get_sfu_isolate);
    calls.add("board_set_sfu_fullin_isolate_en", drv_board_set_sfu_fullin_isolate_en);
    calls.add("board_get_sfu_fullin_isolate_en", drv_board_get_sfu_fullin_isolate_en);
    calls.add("board_set_bbox_enable", drv_board_set_bbox_enable);
    calls.add("board_set_bbox_time", drv_board_set_bbox_time);
    calls.add("board_check_smi", drv_board_check_smi);
    calls.add("board_check_smi_crc", drv_board_check_smi_crc);
    calls.add("board_check_smi_los", drv_board_check_smi_los);
    calls.add("board_set_backup_smi_en", drv_board_set_backup_smi_en);
    calls.add("board_set_smi_source", drv_board_set_smi_source);
    calls.add("board_get_smi_source", drv_board_get_smi_source);
    calls.add("board_get_tpm_online_status", drv_board_get_tpm_online_status);
    calls.add("board_get_tpm_active_status", drv_board_get_tpm_active_status);
}

void add_other_families(call_table &calls) {
    calls.add("subboard_get_type", drv_subboard_get_type);
    calls.add("subboard_get_pcb_ver", drv_subboard_get_pcb_ver);
    calls.add("subboard_get_bom_ver", drv_subboard_get_bom_ver);
    calls.add("subboard_get_bom_id", drv_subboard_get_bom_id);
    calls.add("subboard_get_online_status", drv_subboard_get_online_status);
    calls.add("subboard_get_online_status_ex", drv_subboard_get_online_status_ex);
    calls.add("smb_get_tx_err_count", drv_smb_get_tx_err_count);
    calls.add("smb_get_rx_err_count", drv_smb_get_rx_err_count);
    calls.add("pic_xml_load", drv_pic_xml_load);
    calls.add("pic_xml_unload", drv_pic_xml_unload);
}

void add_slots_and_voltages(call_table &calls) {
    calls.add("slot_get_type", drv_slot_get_type);
    calls.add("slot_get_range", drv_slot_get_range);
    calls.add("slot_get_num", drv_slot_get_num);
    calls.add("slot_get_start_num", drv_slot_get_start_num);
    calls.add("slot_get_list", drv_slot_get_list);
    calls.add("voltage_init", drv_voltage_init);
    calls.add("voltage_exit", drv_voltage_exit);
    calls.add("voltage_get_value", drv_voltage_get_value);
    calls.add("voltage_set_value", drv_voltage_set_value);
    calls.add("voltage_get_warning_th", drv_voltage_get_warning_th);
    calls.add("voltage_set_warning_th", drv_voltage_set_warning_th);
    calls.add("voltage_get_alarm_th", drv_voltage_get_alarm_th);
    calls.add("voltage_set_alarm_th", drv_voltage_set_alarm_th);
    calls.add("voltage_get_alarm", drv_voltage_get_alarm);
    calls.add("voltage_get_history_value", drv_voltage_get_history_value);
    calls.add("voltage_check_vrm_alert", drv_voltage_check_vrm_alert);
    calls.add("voltage_check_power", drv_voltage_check_power);
    calls.add("voltage_get_node_desc", drv_voltage_get_node_desc);
    calls.add("avs_dump_dfx_info", drv_avs_dump_dfx_info);
}

void add_lamps(call_table &calls) {
    calls.add("led_patch_func1", drv_led_patch_func1);
    calls.add("led_patch_func2", drv_led_patch_func2);
    calls.add("led_set_lamptest_enable", drv_led_set_lamptest_enable);
    calls.add("led_get_lamptest_enable", drv_led_get_lamptest_enable);
    calls.add("led_set_lamptest_ctrl_enable", drv_led_set_lamptest_ctrl_enable);
    calls.add("led_get_lamptest_ctrl_enable", drv_led_get_lamptest_ctrl_enable);
    calls.add("led_get_lamptest_support", drv_led_get_lamptest_support);
    calls.add("led_get_lamptest_status", drv_led_get_lamptest_status);
    calls.add("led_get_color", drv_led_get_color);
    calls.add("led_set_color", drv_led_set_color);
    calls.add("led_get_mode", drv_led_get_mode);
}

void add_resets(call_table &calls) {
    calls.add("reset_init", drv_reset_init);
    calls.add("reset_deinit", drv_reset_deinit);
    calls.add("reset_chip", drv_reset_chip);
    calls.add("reset_board", drv_reset_board);
    calls.add("reset_self_board", drv_reset_self_board);
    calls.add("reset_self_board_without_reboot", drv_reset_self_board_without_reboot);
    calls.add("reset_peer_board", drv_reset_peer_board);
    calls.add("reset_get_code", drv_reset_get_code);
    calls.add("reset_get_reason", drv_reset_get_reason);
    calls.add("reset_get_mode", drv_reset_get_mode);
    calls.add("reset_sync_file_system", drv_reset_sync_file_system);
    calls.add("reset_get_button_status", drv_reset_get_button_status);
    calls.add("reset_set_self_sys_ready", drv_reset_set_self_sys_ready);
    calls.add("reset_get_peer_sys_ready", drv_reset_get_peer_sys_ready);
    calls.add("reset_set_soft_start_ok_flag", drv_reset_set_soft_start_ok_flag);
    calls.add("reset_get_soft_start_ok_flag", drv_reset_get_soft_start_ok_flag);
}

} // namespace

} // namespace kestro_tests

int main(int count, char **arguments) {
    kestro_tests::call_table calls;
    kestro_tests::add_identity(calls);
    kestro_tests::add_description(calls);
    kestro_tests::add_board_identity(calls);
    kestro_tests::add_board_places(calls);
    kestro_tests::add_board_devices(calls);
    kestro_tests::add_board_health(calls);
    kestro_tests::add_other_families(calls);
    kestro_tests::add_slots_and_voltages(calls);
    kestro_tests::add_lamps(calls);
    kestro_tests::add_resets(calls);
    for (int i = 1; i < count; ++i) {
        if (!calls.make(arguments[i])) {
            fprintf(stderr, "no such call: %s\n", arguments[i]);
            return 2;
        }
        fflush(stdout);
    }
    return 0;
}
