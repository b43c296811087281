/* Redirection of another board's serial console to this program. */
#ifndef DRV_CONSOLE_REDIRECT_H
#define DRV_CONSOLE_REDIRECT_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Called by a thread of the driver with what the far console sends: len bytes, and a terminator behind them. */
typedef void (*drv_console_redirect_recv_callback)(uint32_t slot_id, DRV_IN_TEXT const char *data, uint32_t len);

/* One console is redirected at a time. slot_id: a slot number, or all ones for the own slot. baud_rate: bits per
 * second. */
uint32_t drv_console_redirect_en(uint32_t slot_id, uint32_t baud_rate);

/* One callback is registered at a time; null takes it back, and it is not called any more then. */
uint32_t drv_console_redirect_recv_callback_register(drv_console_redirect_recv_callback callback);

/* To the console that is redirected. */
uint32_t drv_console_redirect_send_data(DRV_IN_BYTES(len) const char *data, uint32_t len);

/* What the far console is just answering still comes; then the callback is forgotten. */
uint32_t drv_console_redirect_close(uint32_t slot_id);

DRV_END_DECLS

#endif
