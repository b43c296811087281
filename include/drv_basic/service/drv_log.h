/* The driver log: one ring of lines per log id, and the security log beside it. The ring of a log is also read as
 * /dev/kestro_log/<name>. A log is registered before it is written or read; the drivers' own logs always are. */
#ifndef DRV_LOG_H
#define DRV_LOG_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Records one line. log_id 0 is the base log; level 0 emergency, 1 error, 2 info, 3 debug; flag is 0. */
uint32_t drv_log_record(uint32_t log_id, uint32_t level, uint32_t flag, DRV_IN_TEXT const char *format, ...)
    DRV_PRINTF_LIKE(4, 5);

/* Lines of a log, the oldest first: as many whole ones as fit into len bytes beside a terminator, counted in lines. The
 * second one takes these lines out of the log. */
uint32_t drv_log_read(uint32_t log_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len, DRV_OUT uint32_t *lines);
uint32_t drv_log_read_clr(uint32_t log_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len, DRV_OUT uint32_t *lines);

/* A log of size bytes; the oldest lines make room for new ones. Registered again under its name it has the new size.
 * Taking it back forgets its lines. */
uint32_t drv_log_register(uint32_t log_id, DRV_IN_TEXT const char *name, uint32_t size);
uint32_t drv_log_deregister(uint32_t log_id);

/* Moves the lines of all logs of a core into a file, as long as this process lives: one log in each time_slice, in
 * milliseconds. path is absolute, and the file grows to at most max_size bytes. */
uint32_t drv_log_transfer(uint32_t core, uint32_t time_slice, DRV_IN_TEXT const char *path, uint32_t max_size);

/* mode 0: 1 while a transfer runs, else 0. mode 1: how far the latest one is: 0 there was none, 1 all lines are in the
 * file, 2 lines wait for their time slice, 3 the file is full, 4 the file cannot be written. */
uint32_t drv_log_transfer_status(uint32_t mode, DRV_OUT uint32_t *status);

/* Called by a thread of the driver with each line that this process records. result: "success" or "fail", whether the
 * line is in its log. One hook is set at a time; null takes it back, and it is not called any more then. */
typedef void (*drv_log_hook)(DRV_IN_TEXT const char *result, DRV_IN_TEXT const char *format, ...);
uint32_t drv_log_hook_set(drv_log_hook hook);

/* Called by a thread of the driver with each line that this process records in the security log, and with the log id of
 * the registration. Registered again under its log id, a hook takes the place of the one before; null takes it back. */
typedef void (*drv_sec_log_hook)(uint32_t log_id, DRV_IN_TEXT const char *format, ...);
uint32_t drv_sec_log_hook_register(uint32_t log_id, DRV_IN_TEXT const char *name, drv_sec_log_hook hook);

/* Records one line in the security log. */
uint32_t drv_sec_log_record(DRV_IN_TEXT const char *format, ...) DRV_PRINTF_LIKE(1, 2);

/* Writes the lines of the security log, and who has registered a hook in this process, into the base log. */
uint32_t drv_sec_log_show(void);

DRV_END_DECLS

#endif
