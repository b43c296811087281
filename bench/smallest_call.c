/* The least that a program can do to make one driver call and show what came back. */
#include <stdio.h>
#include <stdlib.h>

#include "drv_basic/identity/drv_mac.h"

int main(int argc, char **argv) {
    uint32_t num = 0;
    const uint32_t type_id = argc > 1 ? (uint32_t)strtoul(argv[1], NULL, 0) : 0;
    const uint32_t ret = drv_mac_get_num(DRV_INST_SELF, type_id, &num, 0);
    printf("type:%u num:%u ret:0x%x\n", type_id, num, ret);
    return ret == 0 ? 0 : 1;
}
