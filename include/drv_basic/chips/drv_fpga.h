/* The configuration of programmable logic while it runs. */
#ifndef DRV_FPGA_H
#define DRV_FPGA_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Single event upsets: bits of the configuration that particles turned. result: 0 when there are none. msg: what was
 * found, in an area of size bytes. */
uint32_t drv_fpga_check_seu(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *msg,
                            uint32_t size);

/* Forgets the upsets that were counted. */
uint32_t drv_fpga_clr_seu_err(uint32_t inst_id, uint32_t chip_id);

/* Loads an FPGA anew. The image says which part it is for, and has a checksum; another one is refused and changes
 * nothing. The FPGA does not answer while it is loaded, and runs the new logic when this returns: until the next start
 * from power, which takes its logic from flash. A load that was broken off leaves it without logic. */
uint32_t drv_fpga_load(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(length) const uint8_t *buffer, uint32_t length);

DRV_END_DECLS

#endif
