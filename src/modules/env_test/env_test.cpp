// env_test: the board's named variables, in flash (env) and in reserved memory that survives a reset (memenv); bytes of
// files and MTD partitions, to look into the stores; and a self-test of each store. No banners here.
#include <array>

#include "modules/env_test/handlers.h"
#include "modules/modules.h"
#include "shell/dispatch.h"

namespace {

using namespace env_commands;

constexpr std::array rows = {
    command_row{"env_get", env_get, "env_get"},
    command_row{"env_set", env_set, "env_set"},
    command_row{"env_save", env_save, "env_save"},
    command_row{"env_save_ok", env_save_ok, "env_save_ok"},
    command_row{"env_clr", env_clr, "env_clr"},
    command_row{"env_clr_all", env_clr_all, "env_clr_all"},
    command_row{"env_print", env_print, "env_print"},
    command_row{"env_num_get", env_num_get, "env_num_get"},
    command_row{"env_num_set", env_num_set, "env_num_set"},
    command_row{"memenv_get", memenv_get, "memenv_get"},
    command_row{"memenv_set", memenv_set, "memenv_set"},
    command_row{"memenv_num_get", memenv_num_get, "memenv_num_get"},
    command_row{"memenv_num_set", memenv_num_set, "memenv_num_set"},
    command_row{"memenv_save", memenv_save, "memenv_save"},
    command_row{"memenv_print", memenv_print, "memenv_print"},
    command_row{"memenv_clr", memenv_clr, "memenv_clr"},
    command_row{"memenv_clr_all", memenv_clr_all, "memenv_clr_all"},
    command_row{"read_file", read_file, "read_file file_name offset length"},
    command_row{"write_file", write_file, "write_file file_name offset value"},
    command_row{"write_mtd", write_mtd, "write_mtd mtd_name offset value"},
    command_row{"env_sdv_test", env_sdv_test, "env_sdv_test"},
    command_row{"memenv_sdv_test", memenv_sdv_test, "memenv_sdv_test"},
};

static_assert(rows_are_sound(rows));

} // namespace

int env_test(int count, char **args) {
    return run_module(rows, count, args);
}
