/* Board management: identity, presence, slots, memory sizes, power domains and health checks of a board.
 *
 * Checks write their result and their findings as text (dfx) into an area of size bytes. */
#ifndef DRV_BOARD_H
#define DRV_BOARD_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Cards of the board. Boards with card slots list slot numbers, boards with cards on the board itself list one-byte
 * card numbers; count tells how many of either. */
#define DRV_CARD_LIST_SLOTS 8U
#define DRV_CARD_LIST_CARDS 32U

struct drv_card_list {
    uint32_t count;
    union {
        uint32_t slot_id[8];
        uint8_t card_no[32];
    };
};

DRV_STATIC_ASSERT(sizeof(struct drv_card_list) == 36, "card list crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_card_list, slot_id) == 4, "card list crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_card_list, card_no) == 4, "card list crosses the driver interface");

/* Called when a board comes (in is 1) or goes (in is 0). */
typedef uint32_t (*drv_board_in_out_handler)(uint32_t slot_id, uint32_t in, void *user_data);

uint32_t drv_board_init(uint32_t inst_id);
uint32_t drv_board_deinit(uint32_t inst_id);

/* Identity. */
uint32_t drv_board_get_type(uint32_t inst_id, DRV_OUT uint32_t *type);
uint32_t drv_board_set_type(uint32_t inst_id, uint32_t type);
uint32_t drv_board_get_pcb_ver(uint32_t inst_id, DRV_OUT uint32_t *ver);
uint32_t drv_board_get_usr_pcb_ver(uint32_t inst_id, DRV_OUT uint32_t *ver);
uint32_t drv_board_get_soft_pcb_ver(uint32_t inst_id, DRV_OUT uint32_t *ver);
uint32_t drv_board_get_bom_ver(uint32_t inst_id, DRV_OUT uint32_t *ver);
uint32_t drv_board_get_bom_id(uint32_t inst_id, DRV_OUT uint32_t *bom_id);
uint32_t drv_board_get_capability(uint32_t inst_id, uint32_t type, DRV_OUT uint32_t *capability);

/* Rated power, in watts. */
uint32_t drv_board_get_power(uint32_t inst_id, DRV_OUT uint32_t *power);

/* Presence. status: 0 present, 1 absent. */
uint32_t drv_board_get_online_status(uint32_t inst_id, DRV_OUT uint32_t *status);
uint32_t drv_board_get_online_status_ex(uint32_t inst_id, DRV_OUT uint32_t *status);
uint32_t drv_board_set_online_status(uint32_t inst_id, uint32_t status);
uint32_t drv_board_get_self_online_status(DRV_OUT uint32_t *status);
uint32_t drv_board_get_peer_online_status(DRV_OUT uint32_t *status);

/* status: 0 fully inserted, 1 not. */
uint32_t drv_board_get_fullin_status(uint32_t inst_id, DRV_OUT uint32_t *status);
uint32_t drv_board_check_fullin_status(uint32_t inst_id, DRV_OUT uint32_t *status, DRV_OUT_TEXT(size) char *dfx,
                                       uint32_t size);
uint32_t drv_board_in_out_reg(drv_board_in_out_handler handler, void *user_data, DRV_IN_TEXT const char *name,
                              uint32_t flag);
uint32_t drv_board_in_out_unreg(drv_board_in_out_handler handler);

/* Slot numbers: physical, and logical as the software counts them. */
uint32_t drv_board_get_self_slotid(DRV_OUT uint32_t *slot_id);
uint32_t drv_board_get_peer_slotid(DRV_OUT uint32_t *slot_id);
uint32_t drv_board_get_self_logic_slotid(DRV_OUT uint32_t *slot_id);
uint32_t drv_board_get_peer_logic_slotid(DRV_OUT uint32_t *slot_id);
uint32_t drv_board_check_slotid(uint32_t inst_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *dfx,
                                uint32_t size);

/* Memory sizes, in MiB. */
uint32_t drv_board_get_bootrom_size(uint32_t inst_id, DRV_OUT uint32_t *size);
uint32_t drv_board_get_flash_size(uint32_t inst_id, DRV_OUT uint32_t *size);
uint32_t drv_board_get_nandflash_size(uint32_t inst_id, DRV_OUT uint32_t *size);
uint32_t drv_board_get_nvram_size(uint32_t inst_id, DRV_OUT uint32_t *size);
uint32_t drv_board_get_sdram_size(uint32_t inst_id, DRV_OUT uint32_t *size);

/* Bytes 320 to 381 of the module's DDR4 SPD: the manufacturing information. */
uint32_t drv_board_get_dimm_info(uint32_t inst_id, uint32_t dimm_id, DRV_OUT_BYTES(size) uint8_t *buffer,
                                 uint32_t size);

/* Degrees Celsius. */
uint32_t drv_board_get_dimm_temperature(uint32_t inst_id, uint32_t dimm_id, DRV_OUT int32_t *temperature);
uint32_t drv_board_check_dimm_bus_status(uint32_t inst_id, uint32_t dimm_no, DRV_OUT uint32_t *status,
                                         DRV_OUT_TEXT(size) char *dfx, uint32_t size);
uint32_t drv_board_get_ddr_event(uint32_t inst_id, uint32_t cpu_chip_no, DRV_OUT uint32_t *state,
                                 DRV_OUT_TEXT(size) char *dfx, uint32_t size);

/* Programmable logic and start-up software. area: 1 to 3. */
uint32_t drv_board_get_cpld_ver(uint32_t inst_id, uint32_t cpld_id, DRV_OUT uint32_t *ver);
uint32_t drv_board_get_cpld_num(uint32_t inst_id, DRV_OUT uint32_t *num);
uint32_t drv_board_get_ctrl_fpga_num(uint32_t inst_id, DRV_OUT uint32_t *num);
uint32_t drv_board_get_bios_ver(uint32_t inst_id, DRV_OUT_TEXT(size) char *text, uint32_t size);
uint32_t drv_board_get_area(uint32_t inst_id, DRV_OUT uint32_t *area);
uint32_t drv_board_check_bios(uint32_t area, DRV_OUT uint32_t *result);

/* Boot steps, 0 to 255: how far start-up has come. */
uint32_t drv_board_get_peer_bootstep(uint32_t inst_id, DRV_OUT uint32_t *step);
uint32_t drv_board_get_self_bootstep(uint32_t inst_id, DRV_OUT uint32_t *step);
uint32_t drv_board_set_self_bootstep(uint32_t inst_id, uint32_t step);

/* 1 when the board is to start with factory settings. */
uint32_t drv_board_get_factory_reset_flag(uint32_t inst_id, DRV_OUT uint32_t *flag);

/* Power domains, by type 0 to 33. status: 1 on, 0 off. */
uint32_t drv_board_set_power_on(uint32_t inst_id, uint32_t type);
uint32_t drv_board_set_power_off(uint32_t inst_id, uint32_t type);
uint32_t drv_board_get_power_status(uint32_t inst_id, uint32_t type, DRV_OUT uint32_t *status);
uint32_t drv_board_check_low_voltage(uint32_t inst_id, DRV_OUT uint32_t *status, DRV_OUT_TEXT(size) char *dfx,
                                     uint32_t size);

/* Solder joints at the four corners of a chip, and corrosion of the board. status: 0 good. */
uint32_t drv_board_get_four_corner_status(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *status);
uint32_t drv_board_check_four_corner_status(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *status,
                                            DRV_OUT_TEXT(size) char *dfx, uint32_t size);
uint32_t drv_board_check_corrosion_status(uint32_t inst_id, DRV_OUT uint32_t *status, DRV_OUT_TEXT(size) char *dfx,
                                          uint32_t size);

/* Cards. ok: 0 when the card is ready. */
uint32_t drv_board_get_card_ok(uint32_t inst_id, uint32_t slot_id, DRV_OUT uint32_t *ok);
uint32_t drv_board_get_card_list(uint32_t inst_id, DRV_OUT struct drv_card_list *list);

/* status: 0 MPUA, 1 MPUB. */
uint32_t drv_board_get_mpu_status(uint32_t inst_id, DRV_OUT uint32_t *status, DRV_OUT_TEXT(size) char *dfx,
                                  uint32_t size);
uint32_t drv_board_check_mpu_status(uint32_t inst_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *dfx,
                                    uint32_t size);
uint32_t drv_board_check_int_status(uint32_t index_id, uint32_t type, DRV_OUT uint32_t *result,
                                    DRV_OUT_TEXT(size) char *dfx, uint32_t size);

/* Isolation of a switch fabric from the board. enable: 1 isolated. */
uint32_t drv_board_set_sfu_isolate(uint32_t inst_id, uint32_t id, uint32_t enable);
uint32_t drv_board_get_sfu_isolate(uint32_t inst_id, uint32_t id, DRV_OUT uint32_t *value);
uint32_t drv_board_set_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, uint32_t enable);
uint32_t drv_board_get_sfu_fullin_isolate_en(uint32_t inst_id, uint32_t id, DRV_OUT uint32_t *value);

/* Black box: time_value in seconds. */
uint32_t drv_board_set_bbox_enable(uint32_t inst_id, uint32_t enable);
uint32_t drv_board_set_bbox_time(uint32_t inst_id, uint32_t time_value);

/* SMI buses. source: 0 main, 1 backup. */
uint32_t drv_board_check_smi(uint32_t inst_id, uint32_t bus_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *dfx,
                             uint32_t size);
uint32_t drv_board_check_smi_crc(uint32_t inst_id, uint32_t bus_id, DRV_OUT uint32_t *result,
                                 DRV_OUT_TEXT(size) char *dfx, uint32_t size);
uint32_t drv_board_check_smi_los(uint32_t inst_id, uint32_t bus_id, DRV_OUT uint32_t *result,
                                 DRV_OUT_TEXT(size) char *dfx, uint32_t size);
uint32_t drv_board_set_backup_smi_en(uint32_t inst_id, uint32_t en_flag);
uint32_t drv_board_set_smi_source(uint32_t inst_id, uint32_t source);
uint32_t drv_board_get_smi_source(uint32_t inst_id, DRV_OUT uint32_t *source);

/* Trusted platform module. online: 0 present, 1 absent; active: 1 active. */
uint32_t drv_board_get_tpm_online_status(uint32_t inst_id, DRV_OUT uint32_t *status);
uint32_t drv_board_get_tpm_active_status(uint32_t inst_id, DRV_OUT uint32_t *status);

DRV_END_DECLS

#endif
