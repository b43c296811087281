// What eeprom_test has beside its table.
#pragma once

namespace eeprom_commands {

// Kept for bring-up, and in no table: a board whose EEPROM driver was taken down is nameless for all that runs on it.
int eeprom_init(int count, char **args);
int eeprom_exit(int count, char **args);

} // namespace eeprom_commands
