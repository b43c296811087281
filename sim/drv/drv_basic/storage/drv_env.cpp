// Variables of the own board by name.
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

uint32_t drv_memenv_num_get(const char *name, uint32_t *value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name, value);
        *value = number_to_base(memory_variable::text_of_name(b, b.self(), name), base);
    });
}
