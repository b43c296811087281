/* Programmable logic: the board's control CPLD (chip 0) and control FPGAs, by the registers that their bus reads.
 *
 * Checks write their result (0 good, else faults found) and their findings as text (msg) into an area of size bytes. */
#ifndef DRV_CPLD_H
#define DRV_CPLD_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Of all chips of the instance. */
uint32_t drv_cpld_init(uint32_t inst_id);
uint32_t drv_cpld_deinit(uint32_t inst_id);

/* offset: the register's number. data: as wide as the chip's registers are. */
uint32_t drv_cpld_reg_read(uint32_t inst_id, uint32_t chip_id, uint32_t offset, DRV_OUT uint32_t *data);
uint32_t drv_cpld_reg_write(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t data);

/* num registers from start on, as lines of text. Eight bytes for each register and sixteen more are always enough. */
uint32_t drv_cpld_reg_dump(uint32_t inst_id, uint32_t chip_id, uint32_t start, uint32_t num,
                           DRV_OUT_TEXT(size) char *buffer, uint32_t size);

/* Patterns through the chip's scratch register, which holds afterwards what it held before. */
uint32_t drv_cpld_selftest(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result, DRV_OUT_TEXT(size) char *msg,
                           uint32_t size);

/* All checks that the chip has. flag: those that found faults, bit 0 the self-test, bit 1 the agent SPI, bit 2 the PCIe
 * links. */
uint32_t drv_cpld_test_all_function(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *flag);

/* When the chip's logic was made: 2025, 1 to 12, 1 to 31. */
uint32_t drv_cpld_get_build_time(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *year, DRV_OUT uint32_t *month,
                                 DRV_OUT uint32_t *day);

uint32_t drv_cpld_get_version(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *version);

/* Whether an FPGA had to load its logic more than once since it has power. */
uint32_t drv_cpld_check_repeat_load(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                                    DRV_OUT_TEXT(size) char *msg, uint32_t size);

/* The links to the logic chips beside it, all together. */
uint32_t drv_cpld_check_chip_link(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                                  DRV_OUT_TEXT(size) char *msg, uint32_t size);

/* channel: the chip's serial receiver, from 0. */
uint32_t drv_cpld_uart_get_recv_alarm(uint32_t inst_id, uint32_t chip_id, uint32_t channel, DRV_OUT uint32_t *result,
                                      DRV_OUT_TEXT(size) char *msg, uint32_t size);

/* channel: the agent behind the chip, from 0. */
uint32_t drv_cpld_check_agent_spi_status(uint32_t inst_id, uint32_t chip_id, uint32_t channel, DRV_OUT uint32_t *result,
                                         DRV_OUT_TEXT(size) char *msg, uint32_t size);

/* channel: the chip's PCIe port, from 0. */
uint32_t drv_cpld_check_pcie_link_status(uint32_t inst_id, uint32_t chip_id, uint32_t channel, DRV_OUT uint32_t *result,
                                         DRV_OUT_TEXT(size) char *msg, uint32_t size);

/* The area through which a program exchanges data of its own with programmable logic, that of plug-in cards too: before
 * the first and after the last transfer of a program. */
uint32_t drv_cpld_init_usr_data_pool(uint32_t inst_id);
uint32_t drv_cpld_exit_usr_data_pool(uint32_t inst_id);

/* Where the chip finds the network processor: its address as a slave of the control bus, 0 to 0x7F, and the address of
 * its memory. */
uint32_t drv_cpld_set_np_para(uint32_t inst_id, uint32_t chip_id, uint32_t slave_addr, uint64_t np_addr);

/* Programs an image into the idle half of the CPLD's flash: the chip goes on with what it has, and runs the new logic
 * from the next cold start on. The image says which part it is for, and has a checksum; another one is refused and
 * changes nothing. */
uint32_t drv_cpld_load(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(length) const uint8_t *buffer, uint32_t length);

/* The same through the test port, which only the board itself reaches; then the board restarts with the new logic. */
uint32_t drv_jtag_load_cpld(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(length) const uint8_t *buffer,
                            uint32_t length);

DRV_END_DECLS

#endif
