/* A driver interface with every kind of parameter and field that the headers may use. */
#ifndef SAMPLE_H
#define SAMPLE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

struct sample_state {
    int8_t small;
    int16_t level;
    uint64_t total;
    float ratio;
    char name[8];
    uint16_t steps[3];
    float curve[2];
    union {
        uint32_t word;
        uint8_t part[4];
    };
};

typedef void (*sample_handler)(uint32_t event);

uint32_t sample_wide(uint32_t inst_id, int32_t offset, uint64_t address, float gain, char letter, int8_t step,
                     int16_t trim);
uint32_t sample_read(uint32_t inst_id, DRV_OUT_BYTES(length) uint8_t *data, DRV_INOUT uint32_t *length);
uint32_t sample_text(DRV_IN_TEXT const char *name, DRV_OUT_TEXT(16) char *answer, DRV_INOUT_TEXT(size) char *both,
                     uint16_t size);
uint32_t sample_state_set(DRV_IN const struct sample_state *state, DRV_OUT struct sample_state *old);
uint32_t sample_state_swap(DRV_INOUT struct sample_state *state);
uint32_t sample_watch(sample_handler handler, void *context);
uint32_t sample_levels(DRV_OUT int32_t *low, DRV_OUT float *gain, DRV_IN const uint64_t *limit);
uint32_t sample_print(uint32_t level, DRV_IN_TEXT const char *format, ...) DRV_PRINTF_LIKE(2, 3);
uint32_t sample_stop(void);

DRV_END_DECLS

#endif
