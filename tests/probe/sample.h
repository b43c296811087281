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
typedef uint32_t (*sample_log)(DRV_IN_TEXT const char *result, const char *format, ...);

#define SAMPLE_LANES 3
#define SAMPLE_NAME_SIZE (0x10U)
enum sample_limit { SAMPLE_ROWS = 2, SAMPLE_COLUMNS };

struct sample_lane {
    uint32_t power;
    float gain;
};

/* Records and arrays of all kinds within a record. */
struct sample_port {
    uint32_t number;
    struct sample_lane first;
    struct sample_lane lanes[SAMPLE_LANES];
    uint16_t table[SAMPLE_ROWS][SAMPLE_COLUMNS];
    uint8_t keys[2][2];
    char names[2][4];
    double scale;
};

/* A request that points to what is sent and to where the answer goes. */
struct sample_request {
    uint16_t channel;
    uint16_t length;
    uint32_t room;
    DRV_IN_BYTES(length) const uint8_t *data;
    DRV_OUT_BYTES(room) uint8_t *answer;
    DRV_IN_TEXT const char *label;
    sample_handler done;
    void *context;
};

struct sample_command {
    DRV_IN_TEXT const char *text;
    sample_log log;
    uint32_t count;
    DRV_IN_ARRAY(count) const uint16_t *codes;
};

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
uint32_t sample_port_get(uint32_t port, DRV_OUT struct sample_port *found);
uint32_t sample_lanes(DRV_IN_ARRAY(count) const struct sample_lane *wanted, uint32_t count,
                      DRV_OUT_ARRAY(SAMPLE_LANES, filled) struct sample_lane *lanes, DRV_OUT uint32_t *filled);
uint32_t sample_words(DRV_INOUT_ARRAY(count) uint16_t *words, uint32_t count, DRV_OUT_ARRAY(2) uint32_t *wide,
                      DRV_IN_ARRAY(2) const double *scales);
uint32_t sample_transfer(DRV_INOUT struct sample_request *request);
uint32_t sample_commands(DRV_IN_ARRAY(number) const struct sample_command *list, uint32_t number);
uint32_t sample_packet(DRV_OUT_BYTES(size, length) uint8_t *packet, uint32_t size, DRV_OUT uint32_t *length,
                       DRV_INOUT_BYTES(4) uint8_t *key);
uint32_t sample_title(DRV_OUT_TEXT(SAMPLE_NAME_SIZE) char *title);
int32_t sample_balance(int32_t left);
uint64_t sample_total(void);
void sample_delay(uint32_t count);
uint32_t sample_log_hook(sample_log hook);

DRV_END_DECLS

#endif
