// A driver library in two forms: complete, and the one of a board that lacks these operations.
#include "drv_basic/management/drv_board.h"
#include "nb_bsp/nb_bsp.h"

#ifdef COMPLETE
uint32_t nb_get_himem_info(uint64_t *, uint64_t *) {
    return 0;
}

uint32_t drv_board_get_type(uint32_t, uint32_t *) {
    return 0;
}
#endif
