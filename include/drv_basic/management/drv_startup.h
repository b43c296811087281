/* What the board's start-up software goes by: the files that it starts from, and the lock word in front of its menu. */
#ifndef DRV_STARTUP_H
#define DRV_STARTUP_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Types of start-up files. */
#define DRV_STARTUP_BOOT 1U   /* image of the start-up software itself */
#define DRV_STARTUP_SYSTEM 2U /* system software */
#define DRV_STARTUP_CONFIG 3U /* saved configuration */
#define DRV_STARTUP_PATCH 4U  /* patch of the system software */

/* There is one lock word, that of the start-up menu. */
#define DRV_LOCKWORD_MENU 1U

#define DRV_LOCKWORD_DEFAULT 1U /* the word of all delivered boards */
#define DRV_LOCKWORD_NULL 2U    /* there is none: whoever is at the console gets into the menu */
#define DRV_LOCKWORD_USER 3U    /* one that the owner has set */

/* The next start of the own board takes this file. file_name: a file of the board's storage, by its path or, in the
 * home directory of the software, by its name alone. */
uint32_t drv_update_startup_file(uint32_t file_type, DRV_IN_TEXT const char *file_name);

/* Takes the lock word away: null. It outlives restarts as it is. */
uint32_t drv_clear_boot_lockword(uint32_t lock_id);
uint32_t drv_get_boot_lockword_status(uint32_t lock_id, DRV_OUT uint32_t *status);

DRV_END_DECLS

#endif
