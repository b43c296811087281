// env_sdv_test: sets variables in flash, reads them back, saves them, compares the two copies in flash, clears them.
//
// The test variables are not left behind by an operator who presses Ctrl-C: the signal waits, nothing is saved any
// more, the wait for a save ends at once, and the variables are cleared first. A test that fails leaves them to be
// looked at.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <unistd.h>

#include "drv_basic/storage/drv_env.h"
#include "drv_basic/storage/drv_flash.h"
#include "modules/env_test/handlers.h"
#include "modules/env_test/sdv.h"
#include "selftest/test_value.h"
#include "shell/console.h"

namespace {

using namespace env_commands;

// A section of flash with two copies of the environment.
constexpr uint32_t environment_section = 8;
constexpr uint32_t copy_size = 0x80000;
constexpr uint32_t image_size = 2 * copy_size;

int report_failure(const char *step, uint32_t ret) {
    printf("%s fail, ret=0x%x \n", step, ret);
    return -1;
}

int check_text() {
    char value[sdv_value_size + 1] = {};
    const uint32_t ret = drv_env_get(sdv_text_name, value, sdv_value_size);
    if (ret != 0) {
        return report_failure("drv env get", ret);
    }
    compare_text(value, "Test env set-get..............PASS");
    return 0;
}

// This one failure shows its code in decimal.
int check_number() {
    uint32_t ret = drv_env_num_set(sdv_number_name, sdv_number, sdv_base);
    if (ret != 0) {
        return report_failure("drv env set", ret);
    }
    uint32_t value = 0;
    ret = drv_env_num_get(sdv_number_name, &value, sdv_base);
    if (ret != 0) {
        printf("drv env get fail, ret=%d \n", static_cast<int>(ret));
        return -1;
    }
    compare_number(value, "Test env_num set-get..............PASS");
    return 0;
}

// A signal ends the pause, and with it the wait.
int wait_until_saved() {
    constexpr int waits_max = 20;
    uint8_t status = 0;
    printf("wait save status");
    for (int waits = 0; waits < waits_max && !is_end_asked_for(); ++waits) {
        flush_partial_line();
        const uint32_t ret = drv_env_save_ok(&status);
        if (ret != 0) {
            return report_failure("drv env save ok", ret);
        }
        if (status != DRV_ENV_SAVING) {
            printf("ok.\n");
            return 0;
        }
        printf(".");
        flush_partial_line();
        sleep(1);
    }
    printf("fail.\n");
    return -1;
}

int check_copies() {
    char *image = new_text_area(image_size);
    if (image == nullptr) {
        printf("malloc 1M buff fail\n");
        return -1;
    }
    const uint32_t ret =
        drv_flash_read(DRV_INST_SELF, environment_section, 0, reinterpret_cast<uint8_t *>(image), image_size);
    if (ret != 0) {
        free(image);
        return report_failure("falsh read env", ret);
    }
    report_copies(memcmp(image, image + copy_size, copy_size) == 0, "Test env save..............PASS");
    free(image);
    return 0;
}

int check_save() {
    const uint32_t ret = drv_env_save();
    if (ret != 0) {
        return report_failure("drv env save", ret);
    }
    if (wait_until_saved() != 0) {
        return -1;
    }
    return check_copies();
}

int clear_variables() {
    for (const char *name : {sdv_text_name, sdv_number_name}) {
        const uint32_t ret = drv_env_clr(name);
        if (ret != 0) {
            return report_failure("clr env", ret);
        }
    }
    return 0;
}

// What was cleared is not there any more.
int check_clearing() {
    if (clear_variables() != 0) {
        return -1;
    }
    char value[sdv_value_size + 1] = {};
    if (drv_env_get(sdv_text_name, value, sdv_value_size) == 0) {
        printf("clr env fail, get env is {%s} \n", value);
        return -1;
    }
    uint32_t number = 0;
    if (drv_env_num_get(sdv_number_name, &number, sdv_base) == 0) {
        printf("clr env fail, get env num is {%d} \n", static_cast<int>(number));
        return -1;
    }
    printf("Test env clr..............PASS\n");
    return 0;
}

int check_variables() {
    if (check_text() != 0 || check_number() != 0) {
        return -1;
    }
    return is_end_asked_for() ? 0 : check_save();
}

} // namespace

namespace env_commands {

// A store that does not take the first variable is told of, and no failure: there is nothing to try then.
int env_sdv_test(int /*count*/, char ** /*args*/) {
    begin_test_value();
    const uint32_t set_ret = drv_env_set(sdv_text_name, sdv_text);
    if (set_ret != 0) {
        report_failure("drv env set", set_ret);
        end_test_value();
        return 0;
    }
    int ret = check_variables();
    if (is_end_asked_for()) {
        drv_env_clr(sdv_text_name);
        drv_env_clr(sdv_number_name);
    } else if (ret == 0) {
        ret = check_clearing();
    }
    end_test_value();
    return ret;
}

} // namespace env_commands
