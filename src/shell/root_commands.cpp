// The root command table.
#include "shell/root_commands.h"

#include <array>

#include "modules/modules.h"

namespace {

constexpr std::array rows = {
    command_row{"alg_test", alg_test, "kestro_test alg_test"},
    command_row{"xml_test", xml_test, "kestro_test xml_test"},
    command_row{"log_test", log_test, "kestro_test log_test"},
    command_row{"env_test", env_test, "kestro_test env_test"},
    command_row{"flash_test", flash_test, "kestro_test flash_test"},
    command_row{"cpld_test", cpld_test, "kestro_test cpld_test"},
    command_row{"board_test", board_test, "kestro_test board_test"},
    command_row{"load_test", load_test, "kestro_test load_test"},
    command_row{"voltage_test", voltage_test, "kestro_test voltage_test"},
    command_row{"temp_test", temp_test, "kestro_test temp_test"},
    command_row{"clock_test", clock_test, "kestro_test clock_test"},
    command_row{"msc_test", msc_test, "kestro_test msc_test"},
    command_row{"reset_test", reset_test, "kestro_test reset_test"},
    command_row{"digital_test", digital_test, "kestro_test digital_test"},
    command_row{"woffline_test", woffline_test, "kestro_test woffline_test"},
    command_row{"mac_test", mac_test, "kestro_test mac_test"},
    command_row{"usb_test", usb_test, "kestro_test digital_test"},
    command_row{"dyinggasp_test", dyinggasp_test, "kestro_test dyinggasp_test"},
    command_row{"slot_test", slot_test, "kestro_test slot_test"},
    command_row{"init_test", init_test, "kestro_test init_test"},
    command_row{"chip9555_test", chip9555_test, "kestro_test chip9555_test"},
    command_row{"powerdetec_test", powerdetec_test, "kestro_test powerdetec_test"},
    command_row{"tempdetec_test", tempdetec_test, "kestro_test tempdetec_test"},
    command_row{"voltdetec_test", voltdetec_test, "kestro_test voltdetec_test"},
    command_row{"eeprom_test", eeprom_test, "kestro_test eeprom_test"},
    command_row{"spi_test", spi_test, "kestro_test spi_test"},
    command_row{"pcie_test", pcie_test, "kestro_test pcie_test"},
    command_row{"pll_test", pll_test, "kestro_test pll_test"},
    command_row{"rtc_test", rtc_test, "kestro_test rtc_test"},
    command_row{"fan_test", fan_test, "kestro_test fan_test"},
    command_row{"update_test", update_test, "kestro_test update_test"},
    command_row{"phy_test", phy_test, "kestro_test phy_test"},
    command_row{"backplane_test", backplane_test, "kestro_test backplane_test"},
    command_row{"sata_test", sata_test, "kestro_test sata_test"},
    command_row{"board_capability_test", board_capability_test, "kestro_test board_capability_test"},
    command_row{"avs_test", avs_test, "kestro_test avs_test"},
    command_row{"device_test", device_test, "kestro_test device_test"},
    command_row{"elabel_test", elabel_test, "kestro_test elabel_test"},
    command_row{"barcode_test", barcode_test, "kestro_test barcode_test"},
    command_row{"highmem_test", highmem_test, "kestro_test highmem_test"},
    command_row{"watchdog_test", watchdog_test, "kestro_test watchdog_test"},
    command_row{"power_test", power_test, "kestro_test power_test"},
    command_row{"meth_test", meth_test, "kestro_test meth_test"},
    command_row{"bus_test", bus_test, "kestro_test bus_test"},
    command_row{"optical_test", optical_test, "kestro_test optical_test"},
    command_row{"cdr_test", cdr_test, "kestro_test cdr_test"},
    command_row{"clusterport_test", clusterport_test, "kestro_test clusterport_test"},
    command_row{"softreset_test", softreset_test, "kestro_test softreset_test"},
    command_row{"console_redirect_test", console_redirect_test, "kestro_test console_redirect_test"},
    command_row{"diagnose_cmd_test", diagnose_cmd_test, "kestro_test diagnose_cmd_test"},
    command_row{"led_test", led_test, "kestro_test led_test"},
    command_row{"i2c_test", i2c_test, "kestro_test i2c_test"},
    command_row{"lbc_test", lbc_test, "kestro_test lbc_test"},
    command_row{"smi_test", smi_test, "kestro_test smi_test"},
    command_row{"ieth_test", ieth_test, "kestro_test ieth_test"},
    command_row{"intr_test", intr_test, "kestro_test intr_test"},
    command_row{"diag_test", diag_test, "kestro_test diag_test"},
};

static_assert(rows_are_sound(rows));

} // namespace

std::span<const command_row> root_commands() {
    return rows;
}
