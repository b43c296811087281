// The module commands: each receives the words behind its own name, the sub-command first.
#pragma once

int barcode_test(int count, char **args);
int board_test(int count, char **args);
int elabel_test(int count, char **args);
int init_test(int count, char **args);
int led_test(int count, char **args);
int mac_test(int count, char **args);
int reset_test(int count, char **args);
int rtc_test(int count, char **args);
int sata_test(int count, char **args);
int slot_test(int count, char **args);
int usb_test(int count, char **args);
int voltage_test(int count, char **args);
