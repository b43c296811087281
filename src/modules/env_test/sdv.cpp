// What the self-tests of the two stores of variables say alike.
#include "modules/env_test/sdv.h"

#include <cstdio>
#include <cstring>

namespace env_commands {

void compare_text(const char *value, const char *pass) {
    if (strcmp(value, sdv_text) != 0) {
        printf("set value[kestro_ok] and get value[%s], compare fail.\n", value);
    } else {
        printf("%s\n", pass);
    }
}

void compare_number(uint32_t value, const char *pass) {
    if (value != sdv_number) {
        printf("set value[8899] and get value[%d], compare fail.\n", static_cast<int>(value));
    } else {
        printf("%s\n", pass);
    }
}

void report_copies(bool are_equal, const char *pass) {
    printf("%s\n", are_equal ? pass : "main area data and backup area data, compare fail.");
}

} // namespace env_commands
