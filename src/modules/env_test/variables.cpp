// What the sub-commands of both stores of variables share.
#include "modules/env_test/variables.h"

#include <cstdio>

namespace env_commands {

int report_form(const char *sub_command, const char *words) {
    printf("./kestro_test env_test %s %s\r\n", sub_command, words);
    return -1;
}

void report_text(const char *name, const char *value) {
    printf("[name]:%s [value]:%s\n", name, value);
}

int report_number(const char *operation, uint32_t ret, const char *name, uint32_t value) {
    if (ret != 0) {
        return report_code(operation, ret);
    }
    printf("[name]:%s [value]:%u\n", name, value);
    return 0;
}

int report_code(const char *operation, uint32_t ret) {
    printf("%s ret:%u\r\n", operation, ret);
    return static_cast<int>(ret);
}

void report_listing(int ret, const char *text) {
    printf("env_print_test:[ret]:%d\r\n%s\r\n", ret, text);
}

const char *text_to_set(int count, char **args) {
    return count == 2 ? args[1] : "";
}

} // namespace env_commands
