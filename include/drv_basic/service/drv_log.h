/* The driver log: one ring of lines per log id. */
#ifndef DRV_LOG_H
#define DRV_LOG_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Records one line. log_id 0 is the base log; level 0 emergency, 1 error, 2 info, 3 debug; flag is 0. */
uint32_t drv_log_record(uint32_t log_id, uint32_t level, uint32_t flag, DRV_IN_TEXT const char *format, ...)
    DRV_PRINTF_LIKE(4, 5);

DRV_END_DECLS

#endif
