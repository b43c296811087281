// The module commands: each receives the words behind its own name, the sub-command first.
#pragma once

int barcode_test(int count, char **args);
int board_test(int count, char **args);
int chip9555_test(int count, char **args);
int console_redirect_test(int count, char **args);
int cpld_test(int count, char **args);
int digital_test(int count, char **args);
int elabel_test(int count, char **args);
int led_test(int count, char **args);
int mac_test(int count, char **args);
int pcie_test(int count, char **args);
int reset_test(int count, char **args);
int slot_test(int count, char **args);
int voltage_test(int count, char **args);
