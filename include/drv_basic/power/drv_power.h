/* Power supplies, by the slot of their power frame and their place in it, counted from 0. They are seen from the main
 * processing units.
 *
 * A supply on the PMBus answers for its input and its history also while it has no input; one behind the simple
 * protocol then answers with little more than its presence. */
#ifndef DRV_POWER_H
#define DRV_POWER_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_POWER_LABEL_SIZE 1024U

/* The programs of a supply: module_num modules run the one with soft_id, numbered from 0; 255 stands for one. */
#define DRV_POWER_SOFTWARE_MAX 3U

struct drv_power_software {
    uint32_t soft_id;
    uint32_t module_num;
};

struct drv_power_software_info {
    uint32_t soft_cnt;
    struct drv_power_software software[3];
};

DRV_STATIC_ASSERT(sizeof(struct drv_power_software_info) == 28, "software information crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_power_software_info, software) == 4,
                  "software information crosses the driver interface");

/* Brings the driver of one supply up and down. Without a supply, or without any answer from it, init fails; it may be
 * brought up twice. */
uint32_t drv_power_init(uint32_t slot_id, uint32_t power_id);
uint32_t drv_power_deinit(uint32_t slot_id, uint32_t power_id);

/* How many places for supplies the frame has. */
uint32_t drv_power_get_num(uint32_t slot_id, DRV_OUT uint32_t *num);

/* Properties by number. Those that are read:
 *
 *   0   presence: 0 present, 1 absent        1   1 while there is an alarm      2   0 output good, 1 not
 *   3   rated power, W                       4   current limit, mA              5   temperature limit, degrees Celsius
 *   6   status word                          7   status byte of the output voltage, 8 of the current, 9 of the input,
 *   10  of the temperature, 11 of memory and communication, 12 of the maker, 13 of the fans; 0 is good
 *   14  input voltage, mV                    15  output voltage, mV             16  output current, mA
 *   17  temperature, degrees Celsius         18  fan speed, 1/min               19  output power, W
 *   20  input power, W                       21  PMBus revision                 23  protocol version
 *   22  kind: 0 AC, 1 low DC, 2 high DC, 3 AC and high DC, 4 battery, 5 backup access board
 *   24  latched off: 1 a fault keeps the output off until it is switched on again, 0 it comes back by itself
 *   25  when the output went off last, s     26  output enabled                 27  delay of the output, s
 *   28  clock of the supply, s               30  version of the power factor stage, 31 of the converter
 *   32  fan speed, %                         33  hardware version               34  temperature mode: 1 wide
 *   35  input current, mA                    36  type of device                 37  how long it bridges, ms
 *   38  where it shuts down, degrees Celsius 39  how it comes back: 0 stays off, 1 by itself
 *   40  input: 0 AC, 1 low DC, 2 high DC, 3 nothing                             41  switch on the panel: 1 on
 *   42  how air goes: 0 front to back, 1 back to front
 *   43  1 when there was an alarm since faults were cleared, 44 when the output was not good
 *   46  1 while the input is low, 47 when it was
 *
 * Set can be 5, 24, 26, 27, 28 and 34, and a write to 29 clears faults and histories. */
uint32_t drv_power_get_property(uint32_t slot_id, uint32_t power_id, uint32_t type, DRV_OUT uint32_t *value);
uint32_t drv_power_set_property(uint32_t slot_id, uint32_t power_id, uint32_t type, uint32_t value);

/* Alarms by number: 1 communication, 2 temperature, 3 input under-voltage, 4 output over-current, 5 output
 * over-voltage, 6 input over-voltage, 7 off for want of input, 9 another, 10 fans, 13 input, 14 output current or
 * power, 15 output voltage. alarms: the bits of the status that the alarm is made of; sub_alarm: 1 while it is on. */
uint32_t drv_power_get_alarm(uint32_t slot_id, uint32_t power_id, uint32_t type, DRV_OUT uint32_t *alarms,
                             DRV_OUT uint32_t *sub_alarm);

/* type: 0 label text, whose length is told; 1 software version, 2 hardware version, 3 features of the module, a word
 * each; 4 features of its controller as text. len: room in the area; only a label changes it. */
uint32_t drv_power_get_board_property(uint32_t slot_id, uint32_t power_id, uint32_t type,
                                      DRV_OUT_BYTES(len) uint8_t *buffer, DRV_INOUT uint32_t *len);

/* A label (type 0): its CRC-16 of two bytes, the more significant first, then text, filled with zeros. */
uint32_t drv_power_set_board_property(uint32_t slot_id, uint32_t power_id, uint32_t type,
                                      DRV_IN_BYTES(len) const uint8_t *buffer, uint32_t len);

/* Records of 8 bytes, the oldest first: seconds (4 bytes), event (2), value (2), most significant bytes first. */
uint32_t drv_power_get_bbox_info(uint32_t slot_id, uint32_t power_id, DRV_OUT_BYTES(len) uint8_t *buffer, uint32_t len,
                                 DRV_OUT uint32_t *retlen);

uint32_t drv_power_get_software_info(uint32_t slot_id, uint32_t power_id, DRV_OUT struct drv_power_software_info *info);
uint32_t drv_power_get_softver(uint32_t slot_id, uint32_t power_id, uint32_t soft_id, uint32_t module_id,
                               DRV_OUT uint32_t *version);

/* An image: soft_id, a reserved byte, the CRC-16 of what follows, then the version (4 bytes) and the code, most
 * significant bytes first. reserved is 0. */
uint32_t drv_power_load_app(uint32_t slot_id, uint32_t power_id, uint32_t reserved,
                            DRV_IN_BYTES(len) const uint8_t *data, uint32_t len);

/* Hooks for corrections of a driver that is in the field. */
uint32_t drv_power_patch_func1(DRV_IN_TEXT const char *text, uint32_t len);
uint32_t drv_power_patch_func2(DRV_IN_TEXT const char *text, uint32_t len);

DRV_END_DECLS

#endif
