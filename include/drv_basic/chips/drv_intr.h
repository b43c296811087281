/* Interrupts of the own board, by index and type.
 *
 * A line that the board has only one of its type has no index of its own and is called by an index of all ones. */
#ifndef DRV_INTR_H
#define DRV_INTR_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Called by a thread of the driver, and again as long as the source stays raised. It may call drivers, and may
 * unregister itself. Returns 0. */
typedef uint32_t (*drv_intr_handler)(uint32_t index, uint32_t type, void *user_data);

/* A line has one handler. Registering it enables the line, unregistering it disables the line and waits for a handler
 * that runs, unless it is that one which calls. */
uint32_t drv_intr_set_regist(uint32_t index, uint32_t type, drv_intr_handler handler, void *user_data);
uint32_t drv_intr_set_unregist(uint32_t index, uint32_t type);

/* Only of a line with a handler. What is raised meanwhile is told when the line is enabled. */
uint32_t drv_intr_enable(uint32_t index, uint32_t type);
uint32_t drv_intr_disable(uint32_t index, uint32_t type);

DRV_END_DECLS

#endif
