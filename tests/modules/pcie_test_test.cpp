// pcie_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(PcieTest, UsageListsTheSubCommandsInOrder) {
    expect_run("pcie_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " pci_config_read32\n"
               " pci_config_write32\n"
               " pci_device_probe\n"
               " pci_hotplug_remove_device\n"
               " pci_get_device_bar\n"
               " pci_get_dfx_info\n",
               0);
}

TEST(PcieTest, ConfigRead32) {
    expect_success("pcie_test pci_config_read32 1 0x1f 7 0x10",
                   "drv_pci_config_read32(bus=1, device=31, function=7, offset=16) = 0 data=305419896",
                   "drv_pci_config_read32:[ret]:0\r\n data=305419896\r\n");
    expect_success("pcie_test pci_config_read32 2 3 4 5 6",
                   "drv_pci_config_read32(bus=2, device=3, function=4, offset=5) = 0 data=0xffffffff",
                   "drv_pci_config_read32:[ret]:0\r\n data=-1\r\n");
    expect_success("pcie_test pci_config_read32 a b c d",
                   "drv_pci_config_read32(bus=0, device=0, function=0, offset=0) = 0 data=0",
                   "drv_pci_config_read32:[ret]:0\r\n data=0\r\n");
    expect_failure("pcie_test pci_config_read32 1 0 0 4",
                   "drv_pci_config_read32(bus=1, device=0, function=0, offset=4) = 0x811101a4",
                   "drv_pci_config_read32:[ret]:-2129591900\r\n data=0\r\n");
}

TEST(PcieTest, ConfigWrite32) {
    expect_success("pcie_test pci_config_write32 1 2 3 0x14 0xffffffff",
                   "drv_pci_config_write32(bus=1, device=2, function=3, offset=20, data=0xffffffff) = 0",
                   "drv_pci_config_write32:[ret]:0\r\n data=-1\r\n");
    expect_success("pcie_test pci_config_write32 1 2 3 4 5 6",
                   "drv_pci_config_write32(bus=1, device=2, function=3, offset=4, data=5) = 0",
                   "drv_pci_config_write32:[ret]:0\r\n data=5\r\n");
    expect_success("pcie_test pci_config_write32 a b c d e",
                   "drv_pci_config_write32(bus=0, device=0, function=0, offset=0, data=0) = 0",
                   "drv_pci_config_write32:[ret]:0\r\n data=0\r\n");
    expect_failure("pcie_test pci_config_write32 1 2 3 4 010",
                   "drv_pci_config_write32(bus=1, device=2, function=3, offset=4, data=8) = 0x12",
                   "drv_pci_config_write32:[ret]:18\r\n data=8\r\n");
}

TEST(PcieTest, DeviceProbe) {
    expect_success("pcie_test pci_device_probe 0xff 2 3", "drv_pci_device_probe(bus=255, device=2, function=3) = 0",
                   "drv_pci_device_probe:[ret]:0\r\n");
    expect_success("pcie_test pci_device_probe 1 2 3 4", "drv_pci_device_probe(bus=1, device=2, function=3) = 0",
                   "drv_pci_device_probe:[ret]:0\r\n");
    expect_success("pcie_test pci_device_probe a b c", "drv_pci_device_probe(bus=0, device=0, function=0) = 0",
                   "drv_pci_device_probe:[ret]:0\r\n");
    expect_failure("pcie_test pci_device_probe 1 0 0", "drv_pci_device_probe(bus=1, device=0, function=0) = 0x811101a4",
                   "drv_pci_device_probe:[ret]:-2129591900\r\n");
}

TEST(PcieTest, HotplugRemoveDevice) {
    expect_success("pcie_test pci_hotplug_remove_device 0xff 2 3",
                   "drv_pci_hotplug_remove_device(bus=255, device=2, function=3) = 0",
                   "drv_pci_hotplug_remove_device:[ret]:0\r\n");
    expect_success("pcie_test pci_hotplug_remove_device 1 2 3 4",
                   "drv_pci_hotplug_remove_device(bus=1, device=2, function=3) = 0",
                   "drv_pci_hotplug_remove_device:[ret]:0\r\n");
    expect_success("pcie_test pci_hotplug_remove_device a b c",
                   "drv_pci_hotplug_remove_device(bus=0, device=0, function=0) = 0",
                   "drv_pci_hotplug_remove_device:[ret]:0\r\n");
    expect_failure("pcie_test pci_hotplug_remove_device 1 0 0",
                   "drv_pci_hotplug_remove_device(bus=1, device=0, function=0) = 7",
                   "drv_pci_hotplug_remove_device:[ret]:7\r\n");
}

TEST(PcieTest, GetDeviceBar) {
    expect_success("pcie_test pci_get_device_bar 0x108 2",
                   "drv_pci_get_device_bar(bdf=0x108, bar=2) = 0 address=0x80e0000000 size=0x1000000",
                   "drv_pci_get_device_bar:[ret]:0, baraddr:0x80e0000000,barsize:0x1000000\r\n");
    expect_success("pcie_test pci_get_device_bar 1 2 3",
                   "drv_pci_get_device_bar(bdf=1, bar=2) = 0 address=0xfedcba9876543210 size=0xffffffff",
                   "drv_pci_get_device_bar:[ret]:0, baraddr:0xfedcba9876543210,barsize:0xffffffff\r\n");
    expect_success("pcie_test pci_get_device_bar a b", "drv_pci_get_device_bar(bdf=0, bar=0) = 0 address=0 size=0",
                   "drv_pci_get_device_bar:[ret]:0, baraddr:0x0,barsize:0x0\r\n");
    expect_failure("pcie_test pci_get_device_bar 0x100 6", "drv_pci_get_device_bar(bdf=256, bar=6) = 0x811101a4",
                   "drv_pci_get_device_bar:[ret]:-2129591900, baraddr:0x0,barsize:0x0\r\n");
}

// Nothing is printed, and no driver is called.
TEST(PcieTest, MissingWordsFailWithoutALine) {
    expect_failure("pcie_test pci_config_read32", "", "");
    expect_failure("pcie_test pci_config_read32 1 2 3", "", "");
    expect_failure("pcie_test pci_config_write32 1 2 3 4", "", "");
    expect_failure("pcie_test pci_device_probe 1 2", "", "");
    expect_failure("pcie_test pci_hotplug_remove_device 1 2", "", "");
    expect_failure("pcie_test pci_get_device_bar 1", "", "");
}

TEST(PcieTest, GetDfxInfoShowsEachCore) {
    const std::string body = "core_num = 2\r\n"
                             "***********core_index:0***********\r\n"
                             "link:1\r\n"
                             "speed:3\r\n"
                             "mode:0\r\n"
                             "max_payload:256\r\n"
                             "max_read_request:512\r\n"
                             "dllp_err:17\r\n"
                             "tlp_err:18\r\n"
                             "***********core_index:1***********\r\n"
                             "link:0\r\n"
                             "speed:0\r\n"
                             "mode:1\r\n"
                             "max_payload:128\r\n"
                             "max_read_request:4096\r\n"
                             "dllp_err:-1\r\n"
                             "tlp_err:0\r\n";
    const std::string script =
        "drv_pci_get_dfx_info() = 0 info={core_num=2 core=[{link=1 speed=3 mode=0 max_payload=256 "
        "max_read_request=512 dllp_err=17 tlp_err=18} {link=0 speed=0 mode=1 max_payload=128 max_read_request=4096 "
        "dllp_err=0xffffffff tlp_err=0}]}";
    expect_success("pcie_test pci_get_dfx_info", script, body);
    expect_success("pcie_test pci_get_dfx_info 1 x", script, body);
}

TEST(PcieTest, GetDfxInfoOfADriverThatFails) {
    expect_failure("pcie_test pci_get_dfx_info", "drv_pci_get_dfx_info() = 0x811101a4", "core_num = 0\r\n");
}

TEST(PcieTest, GetDfxInfoShowsNoMoreCoresThanTheRecordHolds) {
    const std::string zeros = "link:0\r\nspeed:0\r\nmode:0\r\nmax_payload:0\r\nmax_read_request:0\r\n"
                              "dllp_err:0\r\ntlp_err:0\r\n";
    const std::string cores =
        "***********core_index:0***********\r\n" + zeros + "***********core_index:1***********\r\n" + zeros +
        "***********core_index:2***********\r\n" + zeros + "***********core_index:3***********\r\n" + zeros +
        "***********core_index:4***********\r\n" + zeros + "***********core_index:5***********\r\n" + zeros +
        "***********core_index:6***********\r\n" + zeros + "***********core_index:7***********\r\n" + zeros;
    expect_success("pcie_test pci_get_dfx_info", "drv_pci_get_dfx_info() = 0 info={core_num=8}",
                   "core_num = 8\r\n" + cores);
    expect_success("pcie_test pci_get_dfx_info", "drv_pci_get_dfx_info() = 0 info={core_num=9}",
                   "core_num = 9\r\n" + cores);
    expect_success("pcie_test pci_get_dfx_info", "drv_pci_get_dfx_info() = 0 info={core_num=0xffffffff}",
                   "core_num = -1\r\n" + cores);
}
