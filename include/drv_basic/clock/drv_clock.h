/* Clocks of the board: the detectors that watch them, what the synthesisers and the backplane are clocked from. */
#ifndef DRV_CLOCK_H
#define DRV_CLOCK_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Starts and stops the detectors. A start forgets losses that were noticed and a loss of signal that was set. */
uint32_t drv_clk_init(uint32_t inst_id);
uint32_t drv_clk_deinit(uint32_t inst_id);

/* status: 1 when the clock is watched. */
uint32_t drv_clk_check_init(uint32_t inst_id, uint32_t clock_id, DRV_OUT uint32_t *status);

/* status: 0 when the clock's detector bears the identity that it should. */
uint32_t drv_clk_detect_check_id(uint32_t inst_id, uint32_t clock_id, DRV_OUT uint32_t *status);

/* status: 0 when the clock is there, 1 when it is lost. */
uint32_t drv_clk_detect_get_status(uint32_t inst_id, uint32_t clock_id, DRV_OUT uint32_t *status);

/* status: 1 when the clock was lost since the history was last read; reading it forgets that. */
uint32_t drv_clk_detect_get_status_history(uint32_t inst_id, uint32_t clock_id, DRV_OUT uint32_t *status);

/* The registers of the clock's detector, as text. */
uint32_t drv_clk_detect_dump_reg(uint32_t inst_id, uint32_t clock_id, DRV_OUT_TEXT(size) char *buffer, uint32_t size);

/* The synchronous clock: channel is the recovered clock that it follows. */
uint32_t drv_board_set_synclk_source(uint32_t inst_id, uint32_t channel);
uint32_t drv_board_get_synclk_source(uint32_t inst_id, DRV_OUT uint32_t *channel);
uint32_t drv_board_set_synclk_enable(uint32_t inst_id, uint32_t enable);

/* Takes the signal of a line port for lost, and so the clock that is recovered from it; of one port at a time. */
uint32_t drv_board_set_synclk_los(uint32_t inst_id, uint32_t port);

/* The network processor from which the time stamps come. */
uint32_t drv_clock_set_timestamp_source(uint32_t inst_id, uint32_t np_id);

/* ref_mode: 0 the first reference that is there, 1 or 2 that reference only. */
uint32_t drv_clock_set_pll_source(uint32_t inst_id, uint32_t pll_id, uint32_t ref_mode);

/* The stratum 3 clock. status: 0 running free, 1 locked, 2 holding the frequency of a reference that was lost. */
uint32_t drv_board_get_3clk_status(uint32_t inst_id, DRV_OUT uint32_t *status);

/* sel_en: 0 takes the first source that is there, 1 the given clock only. */
uint32_t drv_board_set_3clk_source(uint32_t inst_id, uint32_t sel_en, DRV_IN const uint32_t *l3clk_src);
uint32_t drv_board_get_3clk_source_mode(uint32_t inst_id, DRV_OUT uint32_t *sel_en);

DRV_END_DECLS

#endif
