// memenv_sdv_test: sets variables in reserved memory, reads them back, saves them, compares the two halves of the
// memory, clears them. As with the store in flash, an operator's Ctrl-C waits until the test variables are gone.
#include <bit>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "drv_basic/storage/drv_env.h"
#include "drv_basic/storage/drv_highmem.h"
#include "modules/env_test/handlers.h"
#include "modules/env_test/sdv.h"
#include "selftest/test_value.h"

namespace {

using namespace env_commands;

constexpr uint32_t environment_region = 16;

int report_failure(const char *step, uint32_t ret) {
    printf("%s fail, ret=0x%x \n", step, ret);
    return -1;
}

int check_text() {
    uint32_t ret = drv_memenv_set(sdv_text_name, sdv_text);
    if (ret != 0) {
        return report_failure("drv env set", ret);
    }
    char value[sdv_value_size + 1] = {};
    ret = drv_memenv_get(sdv_text_name, value, sdv_value_size);
    if (ret != 0) {
        return report_failure("drv env get", ret);
    }
    compare_text(value, "Test memenv set-get..............PASS");
    return 0;
}

int check_number() {
    uint32_t ret = drv_memenv_num_set(sdv_number_name, sdv_number, sdv_base);
    if (ret != 0) {
        return report_failure("drv env set", ret);
    }
    uint32_t value = 0;
    ret = drv_memenv_num_get(sdv_number_name, &value, sdv_base);
    if (ret != 0) {
        return report_failure("drv env get", ret);
    }
    compare_number(value, "Test memenv_num set-get..............PASS");
    return 0;
}

// The odd byte of an odd length belongs to neither half. Memory that has no address, or one that no pointer holds, is
// not read and counts as different.
bool halves_are_equal(uint64_t address, uint32_t length) {
    const auto place = static_cast<uintptr_t>(address);
    if (place == 0 || place != address) {
        return false;
    }
    const uint32_t half = length / 2;
    const auto *const main_half = std::bit_cast<const uint8_t *>(place);
    return memcmp(main_half, main_half + half, half) == 0;
}

int check_halves() {
    uint64_t address = 0;
    uint32_t ret = drv_highmem_get_base_addr(environment_region, &address);
    if (ret != 0) {
        return report_failure("get memenv addr", ret);
    }
    uint32_t length = 0;
    ret = drv_highmem_get_len(environment_region, &length);
    if (ret != 0) {
        return report_failure("get memenv size", ret);
    }
    report_copies(halves_are_equal(address, length), "Test memenv save..............PASS");
    return 0;
}

int check_save() {
    const uint32_t ret = drv_memenv_save();
    if (ret != 0) {
        return report_failure("drv env save", ret);
    }
    return check_halves();
}

int clear_variables() {
    for (const char *name : {sdv_text_name, sdv_number_name}) {
        const uint32_t ret = drv_memenv_clr(name);
        if (ret != 0) {
            return report_failure("clr env", ret);
        }
    }
    return 0;
}

// Unlike one in flash, a variable that was cleared is still there, and empty.
int check_clearing() {
    if (clear_variables() != 0) {
        return -1;
    }
    char value[sdv_value_size + 1] = {};
    if (drv_memenv_get(sdv_text_name, value, sdv_value_size) != 0) {
        printf("clr env fail, get env is {%s} \n", value);
        return -1;
    }
    if (value[0] != '\0') {
        printf("clr env fail.\n");
    }
    uint32_t number = 0;
    if (drv_memenv_num_get(sdv_number_name, &number, sdv_base) != 0) {
        printf("clr env fail, get env num is {%d} \n", static_cast<int>(number));
        return -1;
    }
    if (number != 0) {
        printf("clr env num fail.\n");
    }
    printf("Test memenv clr..............PASS\n");
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

int memenv_sdv_test(int /*count*/, char ** /*args*/) {
    begin_test_value();
    int ret = check_variables();
    if (is_end_asked_for()) {
        drv_memenv_clr(sdv_text_name);
        drv_memenv_clr(sdv_number_name);
    } else if (ret == 0) {
        ret = check_clearing();
    }
    end_test_value();
    return ret;
}

} // namespace env_commands
