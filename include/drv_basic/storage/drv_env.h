/* Variables of the board by name: in flash (env), and in reserved memory that survives a reset (memenv).
 *
 * Both stores are worked on in memory: what is set or cleared is seen by whoever asks next, and is kept over a reset
 * once it has been saved. A name is not empty and holds no '='. */
#ifndef DRV_ENV_H
#define DRV_ENV_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* The area that a listing is written to: a line "name=value" for each variable. */
#define DRV_ENV_PRINT_SIZE 0x80000

/* What save_ok answers while a save is on its way. */
#define DRV_ENV_SAVING 0xFFU

/* The text of a variable in flash; size: of the area, terminator included. */
uint32_t drv_env_get(DRV_IN_TEXT const char *name, DRV_OUT_TEXT(size) char *value, uint32_t size);
uint32_t drv_env_set(DRV_IN_TEXT const char *name, DRV_IN_TEXT const char *value);

/* A variable as a number, written to that base: 2 to 36. */
uint32_t drv_env_num_get(DRV_IN_TEXT const char *name, DRV_OUT uint32_t *value, uint32_t base);
uint32_t drv_env_num_set(DRV_IN_TEXT const char *name, uint32_t value, uint32_t base);

/* Begins to write all variables to flash, the main copy and then the backup, and returns. status: DRV_ENV_SAVING until
 * both are written, then 0. */
uint32_t drv_env_save(void);
uint32_t drv_env_save_ok(DRV_OUT uint8_t *status);

/* Removes a variable, or all of them. */
uint32_t drv_env_clr(DRV_IN_TEXT const char *name);
uint32_t drv_env_clr_all(void);

/* 0, or the result code as a negative number. */
int32_t drv_env_print(DRV_OUT_TEXT(DRV_ENV_PRINT_SIZE) char *text);

/* The same for the variables in reserved memory. Saving them is done when the call returns. */
uint32_t drv_memenv_get(DRV_IN_TEXT const char *name, DRV_OUT_TEXT(size) char *value, uint32_t size);
uint32_t drv_memenv_set(DRV_IN_TEXT const char *name, DRV_IN_TEXT const char *value);
uint32_t drv_memenv_num_get(DRV_IN_TEXT const char *name, DRV_OUT uint32_t *value, uint32_t base);
uint32_t drv_memenv_num_set(DRV_IN_TEXT const char *name, uint32_t value, uint32_t base);
uint32_t drv_memenv_save(void);
uint32_t drv_memenv_clr(DRV_IN_TEXT const char *name);
uint32_t drv_memenv_clr_all(void);
int32_t drv_memenv_print(DRV_OUT_TEXT(DRV_ENV_PRINT_SIZE) char *text);

DRV_END_DECLS

#endif
