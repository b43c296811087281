// PCI Express of the processor. A link that is down is told and no fault: a place behind it may be empty.
#include "selftest/chips/pci.h"

#include <algorithm>

#include "drv_basic/chips/drv_pci.h"
#include "selftest/entry_walk.h"

namespace {

// The record has room for this many cores, whatever number it tells.
uint32_t cores_in(const drv_pci_dfx_info &info) {
    return std::min<uint32_t>(info.core_num, DRV_PCI_CORES);
}

void report_links(const drv_pci_dfx_info &info, report_sink sink) {
    report_append(sink, "Success: pci get dfx info pass. num %u \r\n", info.core_num);
    for (uint32_t i = 0; i < cores_in(info); ++i) {
        const drv_pci_core_info &core = info.core[i];
        report_append(sink, "pci %u : link %u (0: down 1:up) speed %u mode %u\r\n", i, core.link, core.speed,
                      core.mode);
    }
}

// What the status says is the link's state of this moment; that it can be read is the test.
int check_status(uint32_t cores, report_sink sink) {
    int result = 0;
    for (uint32_t i = 0; i < cores; ++i) {
        uint32_t status = 0;
        const uint32_t ret = drv_pci_get_status(i, &status);
        if (ret != 0) {
            report_append(sink, "Error  : pci get pci status fail 0x%x. core_num %u\r\n", ret, i);
            result = -1;
        }
    }
    if (result == 0) {
        report_append(sink, "Success: pci get pci status pass. \r\n");
    }
    return result;
}

} // namespace

// The drivers know the processor's own cores alone: the description only says whether there are any.
int pci_section(uint32_t inst_id, report_sink sink) {
    if (!has_entries(open_entry_walk(inst_id, "pci", "pci_attr"))) {
        report_append(sink, "Info: pci bus is not support.\r\n");
        return 0;
    }
    drv_pci_dfx_info info = {};
    const uint32_t ret = drv_pci_get_dfx_info(&info);
    if (ret != 0) {
        report_append(sink, "Error  : pci get dfx info fail 0x%x.\r\n", ret);
        return -1;
    }
    report_links(info, sink);
    return check_status(cores_in(info), sink);
}
