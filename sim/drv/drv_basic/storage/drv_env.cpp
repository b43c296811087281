// Variables of the own board in flash, by name.
#include "drv_basic/storage/drv_env.h"

#include "sim/devices/storage/environment.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_env_get(const char *name, char *value, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(name, value);
        write_text(value, size, flash_variable::text_of_name(b, b.self(), name));
    });
}

uint32_t drv_env_set(const char *, const char *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_num_get(const char *, uint32_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_num_set(const char *, uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_save() {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_save_ok(uint8_t *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_clr(const char *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_env_clr_all() {
    return DRV_NOT_SUPPORTED;
}

int32_t drv_env_print(char *) {
    return static_cast<int32_t>(DRV_NOT_SUPPORTED);
}
