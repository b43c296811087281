// pcie_test: PCI Express devices by bus, device and function, and the links of the processor's cores. The words are
// taken in order and none is an instance; no banners here.
#include <array>
#include <cstdint>
#include <cstdio>

#include "drv_basic/chips/drv_pci.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

int pci_config_read32(int count, char **args) {
    if (count < 4) {
        return -1;
    }
    const uint32_t bus = word_to_u32(args[0]);
    const uint32_t device = word_to_u32(args[1]);
    const uint32_t function = word_to_u32(args[2]);
    const uint32_t offset = word_to_u32(args[3]);
    uint32_t data = 0;
    const uint32_t ret = drv_pci_config_read32(bus, device, function, offset, &data);
    printf("drv_pci_config_read32:[ret]:%d\r\n data=%d\r\n", static_cast<int>(ret), static_cast<int>(data));
    return static_cast<int>(ret);
}

int pci_config_write32(int count, char **args) {
    if (count < 5) {
        return -1;
    }
    const uint32_t bus = word_to_u32(args[0]);
    const uint32_t device = word_to_u32(args[1]);
    const uint32_t function = word_to_u32(args[2]);
    const uint32_t offset = word_to_u32(args[3]);
    const uint32_t data = word_to_u32(args[4]);
    const uint32_t ret = drv_pci_config_write32(bus, device, function, offset, data);
    printf("drv_pci_config_write32:[ret]:%d\r\n data=%d\r\n", static_cast<int>(ret), static_cast<int>(data));
    return static_cast<int>(ret);
}

int pci_device_probe(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t bus = word_to_u32(args[0]);
    const uint32_t device = word_to_u32(args[1]);
    const uint32_t function = word_to_u32(args[2]);
    const uint32_t ret = drv_pci_device_probe(bus, device, function);
    printf("drv_pci_device_probe:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int pci_hotplug_remove_device(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t bus = word_to_u32(args[0]);
    const uint32_t device = word_to_u32(args[1]);
    const uint32_t function = word_to_u32(args[2]);
    const uint32_t ret = drv_pci_hotplug_remove_device(bus, device, function);
    printf("drv_pci_hotplug_remove_device:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

// Two words only: bus, device and function are packed into the first.
int pci_get_device_bar(int count, char **args) {
    if (count < 2) {
        return -1;
    }
    const uint32_t bdf = word_to_u32(args[0]);
    const uint32_t bar = word_to_u32(args[1]);
    uint64_t address = 0;
    uint32_t size = 0;
    const uint32_t ret = drv_pci_get_device_bar(bdf, bar, &address, &size);
    printf("drv_pci_get_device_bar:[ret]:%d, baraddr:0x%llx,barsize:0x%x\r\n", static_cast<int>(ret),
           static_cast<unsigned long long>(address), size);
    return static_cast<int>(ret);
}

void print_core(uint32_t index, const drv_pci_core_info &core) {
    printf("***********core_index:%d***********\r\n", static_cast<int>(index));
    printf("link:%d\r\n", static_cast<int>(core.link));
    printf("speed:%d\r\n", static_cast<int>(core.speed));
    printf("mode:%d\r\n", static_cast<int>(core.mode));
    printf("max_payload:%d\r\n", static_cast<int>(core.max_payload));
    printf("max_read_request:%d\r\n", static_cast<int>(core.max_read_request));
    printf("dllp_err:%d\r\n", static_cast<int>(core.dllp_err));
    printf("tlp_err:%d\r\n", static_cast<int>(core.tlp_err));
}

// The number is shown as the driver tells it; cores beyond the record are not there to be shown.
int pci_get_dfx_info(int /*count*/, char ** /*args*/) {
    drv_pci_dfx_info info{};
    const uint32_t ret = drv_pci_get_dfx_info(&info);
    printf("core_num = %d\r\n", static_cast<int>(info.core_num));
    for (uint32_t i = 0; i < info.core_num && i < DRV_PCI_CORES; ++i) {
        print_core(i, info.core[i]);
    }
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"pci_config_read32", pci_config_read32, "pci_config_read32"},
    command_row{"pci_config_write32", pci_config_write32, "pci_config_write32"},
    command_row{"pci_device_probe", pci_device_probe, "pci_device_probe"},
    command_row{"pci_hotplug_remove_device", pci_hotplug_remove_device, "pci_hotplug_remove_device"},
    command_row{"pci_get_device_bar", pci_get_device_bar, "pci_get_device_bar"},
    command_row{"pci_get_dfx_info", pci_get_dfx_info, "pci_get_dfx_info"},
};

static_assert(rows_are_sound(rows));

} // namespace

int pcie_test(int count, char **args) {
    return run_module(rows, count, args);
}
