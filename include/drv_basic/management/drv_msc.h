/* Master/slave control of the two main processing units.
 *
 * sw_mode: 0 scc, 1 xsc, 2 all. A setting of all is one of both; reading all tells what holds for both (enabled, ok),
 * or for either (forced, interrupting). state: 0 master, 1 slave, 2 abnormal: the peer is not there, or the two modes
 * differ. */
#ifndef DRV_MSC_H
#define DRV_MSC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_msc_init(uint32_t inst_id);
uint32_t drv_msc_deinit(uint32_t inst_id);

/* bond: 0 both modes are switched together, 1 each for itself. */
uint32_t drv_msc_set_bond_mode(uint32_t inst_id, uint32_t bond);

/* Whether there is a switch-over without a command, and who controls it: 0 automatic, 1 forced by software. */
uint32_t drv_msc_set_switch_en(uint32_t inst_id, uint32_t sw_mode, uint32_t enable);
uint32_t drv_msc_get_switch_en(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *enable);
uint32_t drv_msc_set_switch_ctrl(uint32_t inst_id, uint32_t sw_mode, uint32_t ctrl);
uint32_t drv_msc_get_switch_ctrl(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *ctrl);

uint32_t drv_msc_set_state(uint32_t inst_id, uint32_t sw_mode, uint32_t state);
uint32_t drv_msc_get_state(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *state);
uint32_t drv_msc_get_peer_state(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *state);

/* The work mode of the network processors, 0 to 255. */
uint32_t drv_msc_set_npu_work_mode(uint32_t inst_id, uint32_t work_mode);
uint32_t drv_msc_get_npu_work_mode(uint32_t inst_id, DRV_OUT uint32_t *work_mode);

/* Why there was a switch-over last: 0 there was none, 1 a state was set, 2 forced, 3 the peer was made slave, 4 bad,
 * 5 not ready, 6 the board went, 7 the modes were bonded. */
uint32_t drv_msc_get_switch_reason(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *reason);

/* state is 1 when there was a switch-over since it was read, or enabled, last. */
uint32_t drv_msc_set_int_en(uint32_t inst_id, uint32_t sw_mode, uint32_t enable);
uint32_t drv_msc_get_int_state(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *state);

/* Of the own board and its peer; 1 is ok. status: 0 clears it, 1 calls the board bad. */
uint32_t drv_msc_get_self_ok(uint32_t sw_mode, DRV_OUT uint32_t *self_ok);
uint32_t drv_msc_get_peer_ok(uint32_t sw_mode, DRV_OUT uint32_t *peer_ok);
uint32_t drv_msc_set_self_bad(uint32_t sw_mode, uint32_t status);
uint32_t drv_msc_set_peer_bad(uint32_t sw_mode, uint32_t status);

/* The peer is held as slave, until that is cancelled. */
uint32_t drv_msc_set_peer_slave(uint32_t inst_id);
uint32_t drv_msc_set_peer_slave_cancel(uint32_t inst_id);

/* soft_ready: 1 when the software of the board could be the master's. */
uint32_t drv_msc_set_soft_ready(uint32_t inst_id, uint32_t sw_mode, uint32_t soft_ready);

/* A switch-over whatever the state of the boards is; from then on software controls this board. */
uint32_t drv_msc_force_master(uint32_t inst_id);
uint32_t drv_msc_force_standby(uint32_t inst_id);

/* What the controller knows as text, at most size bytes. */
uint32_t drv_msc_dump_info(uint32_t inst_id, DRV_OUT_TEXT(size) char *buffer, uint32_t size);

DRV_END_DECLS

#endif
