// The module commands: each receives the words behind its own name, the sub-command first.
#pragma once

int avs_test(int count, char **args);
int backplane_test(int count, char **args);
int barcode_test(int count, char **args);
int board_capability_test(int count, char **args);
int board_test(int count, char **args);
int chip9555_test(int count, char **args);
int clock_test(int count, char **args);
int console_redirect_test(int count, char **args);
int cpld_test(int count, char **args);
int device_test(int count, char **args);
int digital_test(int count, char **args);
int dyinggasp_test(int count, char **args);
int elabel_test(int count, char **args);
int fan_test(int count, char **args);
int flash_test(int count, char **args);
int init_test(int count, char **args);
int led_test(int count, char **args);
int mac_test(int count, char **args);
int msc_test(int count, char **args);
int pcie_test(int count, char **args);
int phy_test(int count, char **args);
int pll_test(int count, char **args);
int power_test(int count, char **args);
int powerdetec_test(int count, char **args);
int reset_test(int count, char **args);
int rtc_test(int count, char **args);
int sata_test(int count, char **args);
int slot_test(int count, char **args);
int softreset_test(int count, char **args);
int temp_test(int count, char **args);
int tempdetec_test(int count, char **args);
int usb_test(int count, char **args);
int voltage_test(int count, char **args);
int voltdetec_test(int count, char **args);
int woffline_test(int count, char **args);
