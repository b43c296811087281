/* Optical transceivers in the front ports of a board or card. A library that a board may lack.
 *
 * Items of the queries are numbers of the library; powers are in dBm, temperatures in degrees Celsius, voltages in
 * volts, bias currents in mA, distances in metres. */
#ifndef DRV_OPT_H
#define DRV_OPT_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_OPT_MAP_ROWS 16
#define DRV_OPT_LANES_MAX 16
#define DRV_OPT_TYPES_MAX 100

/* The package type that marks the end of the used rows of a port map. */
#define DRV_OPT_NO_PACKAGE 15U

/* So many ports of one package type, numbered on from the first. */
struct drv_opt_port_row {
    uint32_t package_type;
    uint32_t number;
    uint32_t start_id;
};

/* Which port, and which of its lanes: bit N for lane N. */
struct drv_opt_port_para {
    uint32_t package_type;
    uint32_t port;
    uint32_t lanebitmap;
};

/* One value of the module, or one of each lane. */
struct drv_opt_ddm_value {
    float value[16];
    uint32_t count;
};

/* Bit N of a bitmap: value N is beyond its upper or lower limit. Alarms have the same shape. */
struct drv_opt_ddm_warning {
    uint32_t high_bit_map;
    uint32_t low_bit_map;
    struct drv_opt_ddm_value realtime_value;
};

/* How far the module reaches over each kind of cable; 0 where it has no use for it. */
struct drv_opt_distance {
    float om1;
    float om2;
    float om3;
    float om4;
    float sm;
    float sm_fec;
    float sm_no_fec;
    float copper;
};

struct drv_opt_type {
    uint32_t attr;
    uint32_t mode;
    uint32_t speed;
    uint32_t extend;
    uint32_t reserved;
};

DRV_STATIC_ASSERT(sizeof(struct drv_opt_port_row) == 12, "port map crosses the driver interface");
DRV_STATIC_ASSERT(sizeof(struct drv_opt_port_para) == 12, "port selector crosses the driver interface");
DRV_STATIC_ASSERT(sizeof(struct drv_opt_ddm_value) == 68, "values cross the driver interface");
DRV_STATIC_ASSERT(sizeof(struct drv_opt_ddm_warning) == 76, "warnings cross the driver interface");
DRV_STATIC_ASSERT(sizeof(struct drv_opt_distance) == 32, "distances cross the driver interface");
DRV_STATIC_ASSERT(sizeof(struct drv_opt_type) == 20, "types cross the driver interface");

uint32_t drv_opt_init(uint32_t inst_id);
uint32_t drv_opt_exit(uint32_t inst_id);

/* slot: the low half of an instance id; frame: its top byte. size: of the map in bytes. */
uint32_t drv_opt_get_card_port_map(uint32_t slot, uint32_t frame,
                                   DRV_OUT_ARRAY(DRV_OPT_MAP_ROWS) struct drv_opt_port_row *map, uint32_t size);

/* The name of a package type. */
uint32_t drv_cbb_optical_get_port_type_str_from_value(uint32_t value, DRV_OUT_TEXT(size) char *text, uint32_t size);

/* Waits; count is in microseconds. */
uint32_t drv_cbb_optical_delay_nointerupt(uint32_t count);

uint32_t drv_opt_get_lane_num(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                              DRV_OUT uint32_t *lane_num);

/* 1 when a module is there: as the driver knows, and by the pin of the cage. */
uint32_t drv_opt_get_present_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                    DRV_OUT uint32_t *value);
uint32_t drv_opt_get_physical_present_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                             DRV_OUT uint32_t *value);

uint32_t drv_opt_get_common_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t item,
                                 DRV_OUT_TEXT(size) char *text, uint32_t size);
uint32_t drv_opt_get_trans_distance(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                    DRV_OUT struct drv_opt_distance *distance);

/* Bit N when lane N receives no light. */
uint32_t drv_opt_get_los_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                DRV_OUT uint32_t *value);

/* 1 when a transmitter has failed. */
uint32_t drv_opt_get_tx_fault_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                     DRV_OUT uint32_t *value);

uint32_t drv_opt_get_ddm_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t item,
                              DRV_OUT struct drv_opt_ddm_value *value);

/* reserved: always 0. */
uint32_t drv_opt_get_ddm_warning_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t item,
                                      uint32_t reserved, DRV_OUT struct drv_opt_ddm_warning *warning);
uint32_t drv_opt_get_ddm_alarm_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t item,
                                    uint32_t reserved, DRV_OUT struct drv_opt_ddm_warning *alarm);
uint32_t drv_opt_get_threshold_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t item,
                                    DRV_OUT float *value);

/* 1 when the transmitters of the lanes are switched off. */
uint32_t drv_opt_get_disable_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                    DRV_OUT uint32_t *value);
uint32_t drv_opt_set_disable_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint32_t value);

/* 1 when the module was pulled since it was last asked. */
uint32_t drv_opt_get_physical_pull_status(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                          DRV_OUT uint32_t *value);

uint32_t drv_opt_get_encode_type(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                 DRV_OUT uint32_t *value);
uint32_t drv_opt_get_type(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                          DRV_OUT_ARRAY(DRV_OPT_TYPES_MAX, num) struct drv_opt_type *types, DRV_OUT uint32_t *num);

/* item 0: whether the module measures at all; 1 to 7: what it measures; 8 to 14: what it has thresholds for. */
uint32_t drv_opt_get_diag_info_support_flag(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                            uint32_t item, DRV_OUT uint32_t *flag);
uint32_t drv_opt_get_linear_attr(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                 DRV_OUT uint32_t *value);
uint32_t drv_opt_get_common_register_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                          DRV_OUT_TEXT(size) char *text, uint32_t size);

/* direction: 0 the transmitter, 1 the receiver. */
uint32_t drv_opt_set_rate(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint8_t direction,
                          uint8_t rate);

/* Of the bus to the module: 0 when it is well. */
uint32_t drv_opt_bus_status_get(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                                DRV_OUT uint32_t *value);
uint32_t drv_opt_bus_status_recovery(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para);
uint32_t drv_opt_get_dfx_info(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para,
                              DRV_OUT_TEXT(size) char *text, uint32_t size);

/* Registers of the module's memory map, one byte each in a word. device: the address on its bus in eight bits (0xA0,
 * 0xA2), or 0 for the first; page: which page is shown in the upper half. length is in registers. */
uint32_t drv_opt_register_read(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint8_t device,
                               uint8_t page, uint32_t address, DRV_OUT_ARRAY(length) uint32_t *data, uint32_t length);
uint32_t drv_opt_register_write(uint32_t inst_id, DRV_IN const struct drv_opt_port_para *port_para, uint8_t device,
                                uint8_t page, uint32_t address, DRV_IN_ARRAY(length) const uint32_t *data,
                                uint32_t length);

DRV_END_DECLS

#endif
