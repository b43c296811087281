/* Resets, reset reasons and start-up flags. */
#ifndef DRV_RESET_H
#define DRV_RESET_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Why and when the board was last reset. */
struct drv_reset_code {
    uint32_t code;
    uint16_t year;
    uint8_t month;
    uint8_t day;
};

DRV_STATIC_ASSERT(sizeof(struct drv_reset_code) == 8, "reset code crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_reset_code, year) == 4, "reset code crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_reset_code, month) == 6, "reset code crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_reset_code, day) == 7, "reset code crosses the driver interface");

uint32_t drv_reset_init(uint32_t inst_id);
uint32_t drv_reset_deinit(uint32_t inst_id);
uint32_t drv_reset_chip(uint32_t inst_id, uint32_t chip_id);
uint32_t drv_reset_board(uint32_t inst_id);

/* Stores the code and resets the own board; on hardware it does not come back. */
uint32_t drv_reset_self_board(DRV_IN const struct drv_reset_code *code);
uint32_t drv_reset_self_board_without_reboot(DRV_IN const struct drv_reset_code *code);
uint32_t drv_reset_peer_board(void);
uint32_t drv_reset_get_code(DRV_OUT struct drv_reset_code *code);

/* index 0 is the latest reset. */
uint32_t drv_reset_get_reason(uint32_t inst_id, uint32_t index, DRV_OUT uint32_t *reason);

/* cool: 1 after a cold start, 0 after a warm one. */
uint32_t drv_reset_get_mode(DRV_OUT uint32_t *cool);
uint32_t drv_reset_sync_file_system(void);

/* status: 1 while the button is pressed. */
uint32_t drv_reset_get_button_status(DRV_OUT uint32_t *status);
uint32_t drv_reset_set_self_sys_ready(uint32_t mode);
uint32_t drv_reset_get_peer_sys_ready(DRV_OUT uint32_t *mode);
uint32_t drv_reset_set_soft_start_ok_flag(uint32_t flag);
uint32_t drv_reset_get_soft_start_ok_flag(DRV_OUT uint32_t *flag);

DRV_END_DECLS

#endif
