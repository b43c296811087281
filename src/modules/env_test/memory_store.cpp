// memenv_*: variables in reserved memory. They outlive a reset, not a loss of power; saving them makes the backup half
// of the memory equal to the main one.
#include <cstdlib>

#include "drv_basic/storage/drv_env.h"
#include "modules/env_test/handlers.h"
#include "modules/env_test/variables.h"
#include "shell/console.h"
#include "shell/words.h"

namespace env_commands {

int memenv_get(int count, char **args) {
    if (count < 1) {
        return report_form("memenv_get", "[env_name]");
    }
    char value[value_size + 1] = {};
    if (drv_memenv_get(args[0], value, value_size) != 0) {
        return -1;
    }
    report_text(args[0], value);
    return 0;
}

int memenv_set(int count, char **args) {
    if (count < 1) {
        return report_form("memenv_set", "[env_name] [env_value]");
    }
    return static_cast<int>(drv_memenv_set(args[0], text_to_set(count, args)));
}

int memenv_num_get(int count, char **args) {
    if (count < 2) {
        return report_form("memenv_num_get", "[memenv_name] [base]");
    }
    uint32_t value = 0;
    const uint32_t ret = drv_memenv_num_get(args[0], &value, word_to_u32(args[1]));
    return report_number("drv_memenv_num_get", ret, args[0], value);
}

int memenv_num_set(int count, char **args) {
    if (count < 3) {
        return report_form("memenv_num_set", "[memenv_name] [value] [base]");
    }
    const uint32_t ret = drv_memenv_num_set(args[0], word_to_u32(args[1]), word_to_u32(args[2]));
    return report_code("drv_memenv_num_set", ret);
}

int memenv_save(int /*count*/, char ** /*args*/) {
    return report_code("drv_memenv_save", drv_memenv_save());
}

// The label in front of the result is that of the store in flash.
int memenv_print(int /*count*/, char ** /*args*/) {
    char *text = new_text_area(DRV_ENV_PRINT_SIZE);
    if (text == nullptr) {
        return -1;
    }
    const int ret = drv_memenv_print(text);
    report_listing(ret, text);
    free(text);
    return ret;
}

int memenv_clr(int count, char **args) {
    if (count < 1) {
        return report_form("memenv_clr", "[memenv_name]");
    }
    return report_code("drv_memenv_clr", drv_memenv_clr(args[0]));
}

int memenv_clr_all(int /*count*/, char ** /*args*/) {
    return report_code("drv_memenv_clr_all", drv_memenv_clr_all());
}

} // namespace env_commands
