// kestro_test: one command line, one action, one exit.
#include <cstdio>

#include "shell/command_table.h"
#include "shell/dispatch.h"
#include "shell/root_commands.h"
#include "shell/standard_streams.h"

namespace {

int run(int count, char **args) {
    const command_table table = new_command_table();
    if (table.empty()) {
        puts("malloc for root cmd failure\r");
        return 1;
    }
    if (register_rows(root_commands(), table) != 0) {
        puts("root cmd regist failure\r");
        free_command_table(table);
        return 1;
    }
    const int result = dispatch(count, args, table, timing_off);
    free_command_table(table);
    return result;
}

} // namespace

int main(int argc, char **argv) {
    // Whatever standard output is connected to, a finished line is out before the next driver call.
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return end_output(run(argc - 1, argv + 1));
}
