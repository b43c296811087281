// PCI Express of the processor that the program runs on.
#include "drv_basic/chips/drv_pci.h"

#include "sim/devices/chips/pci.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

constexpr uint32_t bus_max = 0xFF;
constexpr uint32_t device_max = 0x1F;
constexpr uint32_t function_max = 7;

// Where nothing was ever plugged is an unknown device, removed or not.
pci_device::one find_device(board &b, uint32_t bus, uint32_t device, uint32_t function) {
    const auto all = b.all_at<pci_device::family>(b.self());
    refuse_if(all.empty(), error::not_supported);
    refuse_if(bus > bus_max || device > device_max || function > function_max, error::bad_value);
    const auto found = std::find_if(all.begin(), all.end(), [&](const pci_device::one &which) {
        return b.get(which, pci_device::bus) == bus && b.get(which, pci_device::number) == device &&
               b.get(which, pci_device::function) == function;
    });
    refuse_if(found == all.end(), error::no_such_device);
    return *found;
}

void require_double_word(uint32_t offset) {
    refuse_if(offset % sizeof(uint32_t) != 0, error::bad_value);
}

drv_pci_core_info info_of(board &b, const pci_core::one &core) {
    return {pci_core::is_up(b, core) ? 1U : 0U,
            pci_core::speed_now(b, core),
            b.get(core, pci_core::mode),
            b.get(core, pci_core::max_payload),
            b.get(core, pci_core::max_read_request),
            b.get(core, pci_core::dllp_err),
            b.get(core, pci_core::tlp_err)};
}

} // namespace

uint32_t drv_pci_config_read32(uint32_t bus, uint32_t device, uint32_t function, uint32_t offset, uint32_t *data) {
    return operate([&](board &b) {
        refuse_null(data);
        const auto which = find_device(b, bus, device, function);
        require_double_word(offset);
        *data = pci_device::read_config(b, which, offset);
    });
}

uint32_t drv_pci_config_write32(uint32_t bus, uint32_t device, uint32_t function, uint32_t offset, uint32_t data) {
    return operate([&](board &b) {
        const auto which = find_device(b, bus, device, function);
        require_double_word(offset);
        pci_device::write_config(b, which, offset, data);
    });
}

uint32_t drv_pci_device_probe(uint32_t bus, uint32_t device, uint32_t function) {
    return operate([&](board &b) { pci_device::bring_back(b, find_device(b, bus, device, function)); });
}

uint32_t drv_pci_hotplug_remove_device(uint32_t bus, uint32_t device, uint32_t function) {
    return operate([&](board &b) { pci_device::remove(b, find_device(b, bus, device, function)); });
}

uint32_t drv_pci_get_device_bar(uint32_t bdf, uint32_t bar, uint64_t *address, uint32_t *size) {
    return operate([&](board &b) {
        refuse_null(address);
        refuse_null(size);
        const auto which = find_device(b, bdf >> 8, bdf >> 3 & device_max, bdf & function_max);
        const auto [at, bytes] = pci_device::window_at(b, which, bar);
        *address = at;
        *size = bytes;
    });
}

uint32_t drv_pci_get_dfx_info(drv_pci_dfx_info *info) {
    return operate([&](board &b) {
        refuse_null(info);
        const auto cores = b.all_at<pci_core::family>(b.self());
        refuse_if(cores.empty(), error::not_supported);
        drv_pci_dfx_info told{};
        told.core_num = static_cast<uint32_t>(cores.size());
        for (size_t i = 0; i < cores.size() && i < DRV_PCI_CORES; ++i) {
            told.core[i] = info_of(b, cores[i]);
        }
        *info = told;
    });
}

uint32_t drv_pci_get_status(uint32_t core_num, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = pci_core::status(b, b.find_at<pci_core::family>(b.self(), core_num));
    });
}
