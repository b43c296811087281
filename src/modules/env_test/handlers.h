// The sub-commands of env_test, by subject.
#pragma once

namespace env_commands {

int env_get(int count, char **args);
int env_set(int count, char **args);
int env_save(int count, char **args);
int env_save_ok(int count, char **args);
int env_clr(int count, char **args);
int env_clr_all(int count, char **args);
int env_print(int count, char **args);
int env_num_get(int count, char **args);
int env_num_set(int count, char **args);

int memenv_get(int count, char **args);
int memenv_set(int count, char **args);
int memenv_num_get(int count, char **args);
int memenv_num_set(int count, char **args);
int memenv_save(int count, char **args);
int memenv_print(int count, char **args);
int memenv_clr(int count, char **args);
int memenv_clr_all(int count, char **args);

int read_file(int count, char **args);
int write_file(int count, char **args);
int write_mtd(int count, char **args);

int env_sdv_test(int count, char **args);
int memenv_sdv_test(int count, char **args);

} // namespace env_commands
