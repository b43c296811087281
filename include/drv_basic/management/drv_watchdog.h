/* The watchdogs of a board. The system watchdog resets a board whose software does not clear it in time; it is also
 * Linux's /dev/watchdog. The hardware-bad watchdog watches over hardware that is still well enough to clear it. */
#ifndef DRV_WATCHDOG_H
#define DRV_WATCHDOG_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Begins the time to the reset anew. */
uint32_t drv_watchdog_clr(void);

/* enable: 0 off, else on, beginning anew. */
uint32_t drv_watchdog_enable(uint32_t enable);
uint32_t drv_watchdog_is_enable(DRV_OUT uint32_t *enable);

/* timeout: seconds without a clear after which the board is reset. */
uint32_t drv_watchdog_get_timeout(DRV_OUT uint32_t *timeout);
uint32_t drv_watchdog_set_timeout(uint32_t timeout);

/* The same of the hardware-bad watchdog. */
uint32_t drv_hardbad_watchdog_enable(uint32_t enable);
uint32_t drv_hardbad_watchdog_set_timeout(uint32_t timeout);
uint32_t drv_hardbad_watchdog_clr(void);

/* Its registers as text, at most len bytes. */
uint32_t drv_hardbad_watchdog_dump_reg(uint32_t inst_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

DRV_END_DECLS

#endif
