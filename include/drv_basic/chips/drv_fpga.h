/* The configuration of programmable logic while it runs. */
#ifndef DRV_FPGA_H
#define DRV_FPGA_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Single event upsets: bits of the configuration that particles turned. result: 0 when there are none. msg: what was
 * found, in an area of size bytes. */
uint32_t drv_fpga_check_seu(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *msg,
                            uint32_t size);

DRV_END_DECLS

#endif
