// A sub-command that is in no table: its handler with the words behind its name, and what that returned. And a module
// that is run twice by one process.
//
//     unlisted_command NAME [words]
#include <cstdio>
#include <cstring>

#include "modules/eeprom_test.h"
#include "modules/meth_test/handlers.h"
#include "modules/modules.h"
#include "shell/command_table.h"

namespace {

int intr_test_twice(int count, char **args) {
    printf("result %d\n", intr_test(count, args));
    return intr_test(count, args);
}

struct unlisted {
    const char *name;
    command_handler handler;
};

constexpr unlisted all_unlisted[] = {
    {"drv_meth_read_reg", meth_commands::meth_read_reg},
    {"drv_meth_write_reg", meth_commands::meth_write_reg},
    {"eeprom_init", eeprom_commands::eeprom_init},
    {"eeprom_exit", eeprom_commands::eeprom_exit},
    {"intr_test_twice", intr_test_twice},
};

} // namespace

int main(int argc, char **argv) {
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    for (const unlisted &each : all_unlisted) {
        if (argc > 1 && strcmp(each.name, argv[1]) == 0) {
            printf("result %d\n", each.handler(argc - 2, argv + 2));
            return 0;
        }
    }
    fprintf(stderr, "unlisted_command: no sub-command '%s'\n", argc > 1 ? argv[1] : "");
    return 2;
}
