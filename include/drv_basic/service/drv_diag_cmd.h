/* Diagnose commands: a line of words in, a text out. The drivers have commands of their own, and a program may add
 * some. */
#ifndef DRV_DIAG_CMD_H
#define DRV_DIAG_CMD_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* A command takes at most so many numbers. */
#define DRV_DIAG_PARAMETERS 3

/* Writes its answer to output; 0, or a code that becomes the result of drv_diag_cmd_process. A command of fewer
 * parameters is given 0 for the others. It may call drivers. */
typedef uint32_t (*drv_diag_handler)(DRV_OUT_TEXT(size) char *output, uint32_t size, uint32_t first, uint32_t second,
                                     uint32_t third);

/* A command of the program. The texts have to stay as long as the program runs: a driver may keep their addresses. */
struct drv_diag_record {
    DRV_IN_TEXT const char *command; /* what is typed, without parameters */
    drv_diag_handler handler;
    DRV_IN_TEXT const char *key;  /* what it is filed under: the same as the command */
    DRV_IN_TEXT const char *help; /* "[argcnt=N] ...": so many numbers follow on the command */
};

DRV_STATIC_ASSERT(sizeof(struct drv_diag_record) == 4 * sizeof(void *), "a record is four machine words");

/* The diagnosis as a whole. A second call changes nothing, and drv_diag_cmd_init does it where nobody did. */
uint32_t drv_diag_init(void);

/* Before it there are no commands. A second call changes nothing. */
uint32_t drv_diag_cmd_init(void);

/* All records of a list, or none where one is refused: one without a handler is. */
uint32_t drv_diag_reg_cmd_list(DRV_IN_ARRAY(count) const struct drv_diag_record *records, uint32_t count);

/* The words of a command and its parameters, decimal or with 0x in front. "help" alone or behind the first words of
 * commands gives their help texts, a line each. */
uint32_t drv_diag_cmd_process(DRV_IN_TEXT const char *command, DRV_OUT_TEXT(size) char *output, uint32_t size);

DRV_END_DECLS

#endif
