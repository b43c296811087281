// Variables of the own board in flash, by name.
#include "drv_basic/storage/drv_env.h"

#include "sim/devices/storage/environment.h"
#include "sim/devices/storage/flash_environment.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <charconv>

using namespace kestro_sim;

namespace {

std::string flash_text_of(board &b, const std::string &name) {
    for (const env_variable &variable : read_environment(b, b.self())) {
        if (variable.name == name) {
            return variable.value;
        }
    }
    refuse(error::no_such_device);
}

void set_in_flash(board &b, const std::string &name, const std::string &value) {
    refuse_if(!is_env_name(name) || value.size() > env_value_max, error::bad_value);
    env_variables variables = read_environment(b, b.self());
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [&](const env_variable &variable) { return variable.name == name; });
    if (found == variables.end()) {
        variables.push_back({name, value});
    } else {
        found->value = value;
    }
    write_environment(b, b.self(), variables);
}

std::string written_to_base(uint32_t value, uint32_t base) {
    refuse_if(base < 2 || base > 36, error::bad_value);
    std::array<char, 32> digits{};
    const auto [end, problem] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, static_cast<int>(base));
    return {digits.data(), end};
}

} // namespace

uint32_t drv_env_get(const char *name, char *value, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(name, value);
        write_text(value, size, flash_text_of(b, name));
    });
}

uint32_t drv_env_set(const char *name, const char *value) {
    return operate([&](board &b) {
        refuse_null(name, value);
        set_in_flash(b, name, value);
    });
}

uint32_t drv_env_num_get(const char *name, uint32_t *value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name, value);
        *value = number_to_base(flash_text_of(b, name), base);
    });
}

uint32_t drv_env_num_set(const char *name, uint32_t value, uint32_t base) {
    return operate([&](board &b) {
        refuse_null(name);
        set_in_flash(b, name, written_to_base(value, base));
    });
}

uint32_t drv_env_save() {
    return operate([](board &b) { begin_saving(b, b.self()); });
}

uint32_t drv_env_save_ok(uint8_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = is_saving(b, b.self()) ? DRV_ENV_SAVING : 0;
    });
}

uint32_t drv_env_clr(const char *name) {
    return operate([&](board &b) {
        refuse_null(name);
        env_variables variables = read_environment(b, b.self());
        const auto removed =
            std::erase_if(variables, [&](const env_variable &variable) { return variable.name == name; });
        refuse_if(removed == 0, error::no_such_device);
        write_environment(b, b.self(), variables);
    });
}

uint32_t drv_env_clr_all() {
    return operate([](board &b) {
        read_environment(b, b.self());
        write_environment(b, b.self(), {});
    });
}

int32_t drv_env_print(char *text) {
    return static_cast<int32_t>(operate([&](board &b) {
        refuse_null(text);
        std::string listing;
        for (const env_variable &variable : read_environment(b, b.self())) {
            listing += variable.name + "=" + variable.value + "\n";
        }
        write_text(text, DRV_ENV_PRINT_SIZE, listing);
    }));
}
