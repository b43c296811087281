// Variables of the own board in reserved memory, by name.
#include "drv_basic/storage/drv_env.h"

#include "sim/devices/storage/memory_environment.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_memenv_get(const char *name, char *value, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(name, value);
        write_text(value, size, memory_environment::get(b, b.self(), name));
    });
}

uint32_t drv_memenv_set(const char *name, const char *value) {
    return operate([&](board &b) {
        refuse_null(name, value);
        memory_environment::set(b, b.self(), name, value);
    });
}

// What was cleared is 0.
uint32_t drv_memenv_num_get(const char *name, uint32_t *value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name, value);
        const std::string text = memory_environment::get(b, b.self(), name);
        *value = number_to_base(text.empty() ? "0" : text, base);
    });
}

uint32_t drv_memenv_num_set(const char *name, uint32_t value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name);
        memory_environment::set(b, b.self(), name, text_to_base(value, base));
    });
}

uint32_t drv_memenv_save() {
    return operate([](board &b) { memory_environment::save(b, b.self()); });
}

uint32_t drv_memenv_clr(const char *name) {
    return operate([&](board &b) {
        refuse_null(name);
        memory_environment::clear(b, b.self(), name);
    });
}

uint32_t drv_memenv_clr_all() {
    return operate([](board &b) { memory_environment::clear_all(b, b.self()); });
}

int32_t drv_memenv_print(char *text) {
    return static_cast<int32_t>(operate([&](board &b) {
        refuse_null(text);
        write_text(text, DRV_ENV_PRINT_SIZE, memory_environment::listing(b, b.self()));
    }));
}
