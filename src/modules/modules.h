// The module commands: each receives the words behind its own name, the sub-command first.
#pragma once

int avs_test(int count, char **args);
int barcode_test(int count, char **args);
int board_test(int count, char **args);
int device_test(int count, char **args);
int elabel_test(int count, char **args);
int led_test(int count, char **args);
int mac_test(int count, char **args);
int powerdetec_test(int count, char **args);
int reset_test(int count, char **args);
int slot_test(int count, char **args);
int temp_test(int count, char **args);
int tempdetec_test(int count, char **args);
int voltage_test(int count, char **args);
int voltdetec_test(int count, char **args);
