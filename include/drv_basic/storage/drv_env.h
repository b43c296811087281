/* Variables of the board by name: in flash (env), and in reserved memory that survives a reset (memenv). */
#ifndef DRV_ENV_H
#define DRV_ENV_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* The text of a variable in flash; size: of the area, terminator included. */
uint32_t drv_env_get(DRV_IN_TEXT const char *name, DRV_OUT_TEXT(size) char *value, uint32_t size);

/* A variable in memory as a number, written to that base: 2 to 36. */
uint32_t drv_memenv_num_get(DRV_IN_TEXT const char *name, DRV_OUT uint32_t *value, uint32_t base);

DRV_END_DECLS

#endif
