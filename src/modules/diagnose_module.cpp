// The table of a diagnose module has room for what these modules may once have, an eighth of the usual one.
#include "modules/diagnose_module.h"

#include <cstdio>

#include "shell/dispatch.h"

namespace {

constexpr size_t diagnose_slots = 16;

static_assert(sizeof(void *) != 4 || diagnose_slots * sizeof(command_entry) == 192, "the board's table is 192 bytes");

} // namespace

int run_diagnose_module(const command_row &row, int count, char **args, const char *tag) {
    const command_table table = new_command_table(diagnose_slots);
    if (table.empty()) {
        printf("[%s module] malloc cmd-tbl buff fail.\n", tag);
    }
    if (register_command(row.name, row.handler, row.help, table) != 0) {
        printf("[%s module] cmd register fail.\n", tag);
    }
    const int result = dispatch(count, args, table, timing_off);
    free_command_table(table);
    return result;
}
