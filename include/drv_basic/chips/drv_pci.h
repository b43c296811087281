/* PCI Express: configuration space of the devices, hot plug, and what the processor's cores tell of their links. These
 * are those of the processor that the program runs on, so no operation names an instance. */
#ifndef DRV_PCI_H
#define DRV_PCI_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_PCI_CORES 8

/* speed: the generation, 0 while the link is down. mode: 0 root complex, 1 end point. Sizes in bytes; dllp_err and
 * tlp_err count broken packets of the link and of the transaction layer. */
struct drv_pci_core_info {
    uint32_t link;
    uint32_t speed;
    uint32_t mode;
    uint32_t max_payload;
    uint32_t max_read_request;
    uint32_t dllp_err;
    uint32_t tlp_err;
};

struct drv_pci_dfx_info {
    uint32_t core_num;
    struct drv_pci_core_info core[DRV_PCI_CORES];
};

DRV_STATIC_ASSERT(sizeof(struct drv_pci_dfx_info) == 228, "the record crosses the driver interface");

/* bus: 0 to 255, device: 0 to 31, function: 0 to 7. offset: into the 256 bytes of configuration space, a multiple of 4.
 * A device that was removed reads as all ones, and what is written to it is lost. */
uint32_t drv_pci_config_read32(uint32_t bus, uint32_t device, uint32_t function, uint32_t offset,
                               DRV_OUT uint32_t *data);
uint32_t drv_pci_config_write32(uint32_t bus, uint32_t device, uint32_t function, uint32_t offset, uint32_t data);

/* Looks for a device that was removed, and brings it up; one that is there is left as it is. */
uint32_t drv_pci_device_probe(uint32_t bus, uint32_t device, uint32_t function);
uint32_t drv_pci_hotplug_remove_device(uint32_t bus, uint32_t device, uint32_t function);

/* bdf: bus in bits 8 to 15, device in 3 to 7, function in 0 to 2. bar: 0 to 5; the address is that of a 64-bit register
 * with its upper half in the next one. */
uint32_t drv_pci_get_device_bar(uint32_t bdf, uint32_t bar, DRV_OUT uint64_t *address, DRV_OUT uint32_t *size);

/* core_num: how many cores there are, also where the record holds fewer. */
uint32_t drv_pci_get_dfx_info(DRV_OUT struct drv_pci_dfx_info *info);

/* The status register of one core: bit 0 its link is up, bits 4 to 7 the speed. */
uint32_t drv_pci_get_status(uint32_t core_num, DRV_OUT uint32_t *status);

DRV_END_DECLS

#endif
