/* Diagnose commands: a line of text in, a text out. Which commands there are is the drivers' own. */
#ifndef DRV_DIAG_CMD_H
#define DRV_DIAG_CMD_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Before it there are no commands. A second call changes nothing. */
uint32_t drv_diag_cmd_init(void);

uint32_t drv_diag_cmd_process(DRV_IN_TEXT const char *command, DRV_OUT_TEXT(size) char *output, uint32_t size);

DRV_END_DECLS

#endif
