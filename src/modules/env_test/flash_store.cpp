// env_*: variables in flash. What is set or cleared counts at once and is in flash once it has been saved.
#include <cstdio>
#include <cstdlib>

#include "drv_basic/storage/drv_env.h"
#include "modules/env_test/handlers.h"
#include "modules/env_test/variables.h"
#include "shell/console.h"
#include "shell/words.h"

namespace env_commands {

int env_get(int count, char **args) {
    if (count < 1) {
        return report_form("env_get", "[env_name]");
    }
    char value[value_size + 1] = {};
    if (drv_env_get(args[0], value, value_size) != 0) {
        return -1;
    }
    report_text(args[0], value);
    return 0;
}

int env_set(int count, char **args) {
    if (count < 1) {
        return report_form("env_set", "[env_name] [env_value]");
    }
    return static_cast<int>(drv_env_set(args[0], text_to_set(count, args)));
}

int env_save(int /*count*/, char ** /*args*/) {
    return static_cast<int>(drv_env_save());
}

int env_save_ok(int /*count*/, char ** /*args*/) {
    uint8_t status = 0;
    const uint32_t ret = drv_env_save_ok(&status);
    if (ret != 0) {
        return report_code("drv_env_save_ok", ret);
    }
    printf("success:%d\r\n", status);
    return 0;
}

int env_clr(int count, char **args) {
    if (count < 1) {
        return report_form("env_clr", "[env_name]");
    }
    return static_cast<int>(drv_env_clr(args[0]));
}

int env_clr_all(int /*count*/, char ** /*args*/) {
    return report_code("drv_env_clr_all", drv_env_clr_all());
}

int env_print(int /*count*/, char ** /*args*/) {
    char *text = new_text_area(DRV_ENV_PRINT_SIZE);
    if (text == nullptr) {
        return -1;
    }
    const int ret = drv_env_print(text);
    report_listing(ret, text);
    free(text);
    return ret;
}

int env_num_get(int count, char **args) {
    if (count < 2) {
        return report_form("env_num_get", "[env_name] [base]");
    }
    uint32_t value = 0;
    const uint32_t ret = drv_env_num_get(args[0], &value, word_to_u32(args[1]));
    return report_number("drv_env_num_get", ret, args[0], value);
}

int env_num_set(int count, char **args) {
    if (count < 3) {
        return report_form("env_num_set", "[env_name] [value] [base]");
    }
    const uint32_t ret = drv_env_num_set(args[0], word_to_u32(args[1]), word_to_u32(args[2]));
    return report_code("drv_env_num_set", ret);
}

} // namespace env_commands
