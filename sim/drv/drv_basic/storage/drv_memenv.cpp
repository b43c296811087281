// Variables of the own board in reserved memory, by name.
#include "drv_basic/storage/drv_env.h"

#include "sim/devices/storage/environment.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_memenv_get(const char *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_memenv_set(const char *, const char *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_memenv_num_get(const char *name, uint32_t *value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name, value);
        *value = number_to_base(memory_variable::text_of_name(b, b.self(), name), base);
    });
}

uint32_t drv_memenv_num_set(const char *, uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_memenv_save() {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_memenv_clr(const char *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_memenv_clr_all() {
    return DRV_NOT_SUPPORTED;
}

int32_t drv_memenv_print(char *) {
    return static_cast<int32_t>(DRV_NOT_SUPPORTED);
}
