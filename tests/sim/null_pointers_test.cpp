// Every pointer of a call in turn is missing: the driver says so and does not write there.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

void expect_null_refused(const std::vector<std::string> &calls) {
    std::string refused;
    for (size_t i = 0; i < calls.size(); ++i) {
        refused += null_pointer;
    }
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), refused);
}

} // namespace

TEST(NullPointers, OfTheBoardAreRefused) {
    expect_null_refused({"drv_board_get_type(type=null)",
                         "drv_board_get_pcb_ver(ver=null)",
                         "drv_board_get_usr_pcb_ver(ver=null)",
                         "drv_board_get_soft_pcb_ver(ver=null)",
                         "drv_board_get_bom_ver(ver=null)",
                         "drv_board_get_bom_id(bom_id=null)",
                         "drv_board_get_power(power=null)",
                         "drv_board_get_online_status(status=null)",
                         "drv_board_get_online_status_ex(status=null)",
                         "drv_board_get_fullin_status(status=null)",
                         "drv_board_get_card_list(list=null)",
                         "drv_board_get_bootrom_size(size=null)",
                         "drv_board_get_cpld_num(num=null)",
                         "drv_board_get_ctrl_fpga_num(num=null)",
                         "drv_board_get_area(area=null)",
                         "drv_board_get_peer_bootstep(step=null)",
                         "drv_board_get_self_bootstep(step=null)",
                         "drv_board_get_factory_reset_flag(flag=null)",
                         "drv_board_get_smi_source(source=null)",
                         "drv_board_get_tpm_online_status(status=null)",
                         "drv_board_get_tpm_active_status(status=null)",
                         "drv_board_get_self_online_status(status=null)",
                         "drv_board_get_peer_online_status(status=null)",
                         "drv_board_get_self_slotid(slot_id=null)",
                         "drv_board_get_peer_slotid(slot_id=null)",
                         "drv_board_get_self_logic_slotid(slot_id=null)",
                         "drv_board_get_peer_logic_slotid(slot_id=null)",
                         "drv_board_check_bios(area=1, result=null)"});
}

TEST(NullPointers, OfNumberedDevicesAreRefused) {
    expect_null_refused(
        {"drv_board_get_capability(type=0, capability=null)",
         "drv_board_get_dimm_temperature(dimm_id=0, temperature=null)", "drv_board_get_cpld_ver(cpld_id=0, ver=null)",
         "drv_board_get_four_corner_status(chip_id=0, status=null)", "drv_board_get_sfu_isolate(id=0, value=null)",
         "drv_board_get_sfu_fullin_isolate_en(id=0, value=null)", "drv_subboard_get_type(subboard_id=0, type=null)",
         "drv_subboard_get_online_status(subboard_id=0, status=null)",
         "drv_smb_get_tx_err_count(slot_id=0, count=null)", "drv_smb_get_rx_err_count(slot_id=0, count=null)",
         "drv_board_get_power_status(type=3, status=null)", "drv_board_get_card_ok(slot_id=5, ok=null)",
         "drv_board_get_dimm_info(size=127, buffer=null)", "drv_board_get_bios_ver(size=127, text=null)"});
}

TEST(NullPointers, OfChecksAreRefused) {
    expect_null_refused({"drv_board_check_fullin_status(size=128, status=null)",
                         "drv_board_check_fullin_status(size=128, dfx=null)",
                         "drv_board_check_slotid(size=128, result=null)",
                         "drv_board_check_slotid(size=128, dfx=null)",
                         "drv_board_check_low_voltage(size=128, status=null)",
                         "drv_board_check_low_voltage(size=128, dfx=null)",
                         "drv_board_check_corrosion_status(size=128, status=null)",
                         "drv_board_check_corrosion_status(size=128, dfx=null)",
                         "drv_board_get_mpu_status(size=128, status=null)",
                         "drv_board_get_mpu_status(size=128, dfx=null)",
                         "drv_board_check_mpu_status(size=128, result=null)",
                         "drv_board_check_mpu_status(size=128, dfx=null)",
                         "drv_board_check_dimm_bus_status(dimm_no=0, size=128, status=null)",
                         "drv_board_check_dimm_bus_status(dimm_no=0, size=128, dfx=null)",
                         "drv_board_get_ddr_event(cpu_chip_no=0, size=128, state=null)",
                         "drv_board_get_ddr_event(cpu_chip_no=0, size=128, dfx=null)",
                         "drv_board_check_four_corner_status(chip_id=0, size=128, status=null)",
                         "drv_board_check_four_corner_status(chip_id=0, size=128, dfx=null)",
                         "drv_board_check_smi(bus_id=0, size=128, result=null)",
                         "drv_board_check_smi(bus_id=0, size=128, dfx=null)",
                         "drv_board_check_smi_crc(bus_id=0, size=128, result=null)",
                         "drv_board_check_smi_crc(bus_id=0, size=128, dfx=null)",
                         "drv_board_check_smi_los(bus_id=0, size=128, result=null)",
                         "drv_board_check_smi_los(bus_id=0, size=128, dfx=null)",
                         "drv_subboard_get_online_status_ex(subboard_id=0, size=128, status=null)",
                         "drv_subboard_get_online_status_ex(subboard_id=0, size=128, dfx=null)",
                         "drv_board_check_int_status(index_id=0, type=1, size=128, result=null)",
                         "drv_board_check_int_status(index_id=0, type=1, size=128, dfx=null)"});
}

TEST(NullPointers, OfIdentityAndDescriptionAreRefused) {
    const std::string entry = "module=\"i2c\", node=\"i2c_dev\", entry=\"entry0\"";
    expect_null_refused({"drv_elabel_read(len=1200, area=null)",
                         "drv_elabel_write(len=1200, area=null)",
                         "drv_barcode_read(len=128, area=null)",
                         "drv_barcode_write(len=128, area=null)",
                         "drv_mac_set_addr(type_id=1, addr=null)",
                         "drv_mac_get_addr(type_id=1, addr=null)",
                         "drv_mac_get_num(type_id=1, num=null)",
                         "drv_mac_set_addr_num(type_id=1, num=1, addr=null)",
                         "drv_mac_get_addr_num(type_id=1, num=1, size=6, buffer=null)",
                         "drv_eeprom_read_data(len=1, buffer=null)",
                         "drv_eeprom_write_data(len=1, buffer=null)",
                         "drv_msc_get_state(state=null)",
                         "nb_gpio_read(pin=5, level=null)",
                         "drv_highmem_get_base_addr(type=16, base_addr=null)",
                         "drv_highmem_get_len(type=16, len=null)",
                         "drv_highmem_get_phys_addr(type=16, phys_addr=null)",
                         "drv_memenv_get(name=null, size=256)",
                         "drv_memenv_get(name=\"kestro_softreset_mode\", size=256, value=null)",
                         "drv_memenv_set(name=null, value=\"1\")",
                         "drv_memenv_set(name=\"a\", value=null)",
                         "drv_memenv_num_set(name=null, base=10)",
                         "drv_memenv_clr(name=null)",
                         "nb_get_himem_info(start=null)",
                         "nb_get_himem_info(length=null)",
                         "get_card_id(inst_id=0xff000005, card_id=null)",
                         "find_section_info_by_section(device_id=null)",
                         "find_section_info_by_section(offset=null)",
                         "find_section_info_by_section(size=null)",
                         "xml_get_entry_num(node=\"i2c_dev\")",
                         "xml_get_entry_num(module=\"i2c\")",
                         "xml_get_entry_num(module=\"i2c\", node=\"i2c_dev\", count=null)",
                         "xml_get_node_num()",
                         "xml_get_node_num(module=\"i2c\", count=null)",
                         "xml_get_specified_node_num(module=\"i2c\", node=\"i2c_dev\", count=null)",
                         "xml_get_element_string(" + entry + ", element=\"chip_id\", size=8, text=null)",
                         "xml_get_element_string(" + entry + ", size=8)",
                         "xml_get_element_value_u32(module=\"i2c\", node=\"i2c_dev\", element=\"chip_id\")",
                         "xml_get_element_value_u32(" + entry + ", element=\"chip_id\", value=null)",
                         "xml_get_element_value_u64(" + entry + ", element=\"chip_id\", value=null)",
                         "xml_is_module_exist(module=\"i2c\", flag=null)",
                         "xml_is_node_exist(node=\"i2c_dev\")",
                         "xml_is_entry_exist(module=\"i2c\", node=\"i2c_dev\")",
                         "xml_is_element_exist(" + entry + ", element=\"chip_id\", flag=null)"});
}

} // namespace kestro_tests
