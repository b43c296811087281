// One check or section of the board self-test, by its name: what a whole-board run calls among many others.
//
//     selftest_part NAME [report]
//
// Prints its lines, "report" by way of a report buffer, and then "result <n>".
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#include "onekey/fan/fan_log.h"
#include "onekey/fan/fan_monitor.h"
#include "onekey/fan/fan_onekey.h"
#include "selftest/board_selftest.h"
#include "selftest/cards/card_test.h"
#include "selftest/cards/slave_board.h"
#include "selftest/cards/slots.h"
#include "selftest/cards/subboards.h"
#include "selftest/chips/cpld.h"
#include "selftest/chips/expander.h"
#include "selftest/chips/i2c_bus.h"
#include "selftest/chips/interrupts.h"
#include "selftest/chips/local_bus.h"
#include "selftest/chips/mdio_bus.h"
#include "selftest/chips/pci.h"
#include "selftest/chips/rtc.h"
#include "selftest/environment/board_capability.h"
#include "selftest/environment/digital.h"
#include "selftest/environment/dyinggasp.h"
#include "selftest/environment/soft_reset.h"
#include "selftest/environment/temperature.h"
#include "selftest/environment/voltage.h"
#include "selftest/environment/woffline.h"
#include "selftest/identity/barcode_storage.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/identity/mac_storage.h"
#include "selftest/management/backplane.h"
#include "selftest/management/bios.h"
#include "selftest/management/board_cards.h"
#include "selftest/management/board_health.h"
#include "selftest/management/board_identity.h"
#include "selftest/management/board_mng.h"
#include "selftest/management/board_presence.h"
#include "selftest/management/boot_step.h"
#include "selftest/management/control_logic.h"
#include "selftest/management/power_cycle.h"
#include "selftest/management/smb_counters.h"
#include "selftest/management/storage_sizes.h"
#include "selftest/power/power_display.h"
#include "selftest/power/power_init.h"
#include "selftest/power/power_input.h"
#include "selftest/power/power_onekey.h"
#include "selftest/power/power_reports.h"
#include "selftest/power/power_set_and_get.h"
#include "selftest/power/power_software.h"
#include "selftest/report.h"

namespace {

constexpr uint32_t self = 0xffffffff;

struct part {
    const char *name;
    int (*run)(report_sink sink);
};

int elabel(report_sink sink) {
    return elabel_write_test(self, 0, sink);
}

template <int check(uint32_t, report_sink)> int on_self(report_sink sink) {
    return check(self, sink);
}

template <uint32_t card> int on_card(report_sink sink) {
    return card_onekey_test(card, sink);
}

// On the console the step's buffer is printed whole, as a whole-board run does.
template <buffered_step step> int buffered(report_sink sink) {
    if (sink.buffer != nullptr) {
        return step(self, sink.buffer, report_capacity, sink.fill);
    }
    auto *buffer = static_cast<char *>(calloc(report_capacity + 1, 1));
    uint32_t fill = 0;
    const int result = step(self, buffer, report_capacity, &fill);
    fputs(buffer, stdout);
    free(buffer);
    return result;
}

constexpr uint32_t power_slot = 13;
constexpr power_unit supply = {power_slot, 0};

template <int check(const power_unit &, report_sink)> int on_supply(report_sink sink) {
    return check(supply, sink);
}

template <power_test_mode mode> int power_onekey(report_sink sink) {
    return power_onekey_test(power_slot, mode, sink);
}

template <uint32_t len> int power_bbox(report_sink sink) {
    return power_bbox_report(supply, len, sink);
}

int power_number(report_sink sink) {
    return power_number_report(power_slot, sink);
}

int power_version(report_sink sink) {
    return power_version_report(supply, 2, 1, sink);
}

// What it found as one number: 1 on the PMBus, 2 no input.
int power_input_found(report_sink sink) {
    const power_input found = detect_power_input(supply, sink);
    return (found.pmbus ? 1 : 0) + (found.no_input ? 2 : 0);
}

int power_init(report_sink sink) {
    return power_init_test(supply, 3, sink);
}

int power_software_info(report_sink sink) {
    drv_power_software_info info{};
    return power_software_report(supply, sink, &info);
}

constexpr uint32_t fan_slot = 11;

template <uint32_t test(report_sink)> int on_fans(report_sink sink) {
    return static_cast<int>(test(sink));
}

template <uint32_t test(uint32_t, uint32_t, report_sink), uint32_t times> int on_tray(report_sink sink) {
    return static_cast<int>(test(fan_slot, times, sink));
}

int fan_init_status(report_sink sink) {
    return static_cast<int>(fan_get_init_status(fan_slot, sink));
}

// The monitor's own time; both of its lines and those of the drivers go to the console.
template <unsigned seconds> int fan_monitor(report_sink) {
    const int result = fan_monitor_start();
    sleep(seconds);
    return result;
}

int fan_monitor_twice(report_sink) {
    const int first = fan_monitor_start();
    sleep(15);
    const int second = fan_monitor_start();
    sleep(30);
    return first + 10 * second;
}

// What the speed test prints is not looked at here.
int fan_monitor_and_speed_test(report_sink) {
    static char report[report_capacity];
    uint32_t fill = 0;
    fan_monitor_start();
    sleep(5);
    fan_speed_test(fan_slot, 2, {report, &fill});
    sleep(90);
    const int second = fan_monitor_start();
    sleep(90);
    return second;
}

// The buffer behind what was read shows that nothing is written there.
template <uint32_t size> int fan_log(report_sink sink) {
    char buffer[17] = "################";
    const int result = fan_log_fetch(buffer, size);
    report_append(sink, "%s\n", buffer);
    return result;
}

// In the order in which a whole-board run comes to them; behind the checks of a section the section itself.
constexpr part parts[] = {
    {"hardware_identity", on_self<check_hardware_identity>},
    {"pcb_version", on_self<check_pcb_version>},
    {"self_online", on_self<check_self_online>},
    {"peer_online", on_self<check_peer_online>},
    {"fullin", on_self<check_fullin>},
    {"slot_id", on_self<check_slot_id>},
    {"cards", on_self<check_cards>},
    {"epld_power", on_self<check_epld_power>},
    {"tpm", on_self<check_tpm>},
    {"boot_step", on_self<check_boot_step>},
    {"weld", on_self<check_weld>},
    {"corrosion", on_self<check_corrosion>},
    {"low_voltage", on_self<check_low_voltage>},
    {"bios", on_self<check_bios>},
    {"mpu_status", on_self<check_mpu_status>},
    {"control_logic", on_self<check_control_logic>},
    {"capability", on_self<check_capability>},
    {"storage_sizes", on_self<check_storage_sizes>},
    {"board_mng", on_self<board_mng_test>},
    {"voltage_values", on_self<check_voltage_values>},
    {"voltage_setting", on_self<check_voltage_setting>},
    {"vrm_alerts", on_self<check_vrm_alerts>},
    {"power_and_avs_dump", on_self<check_power_and_avs_dump>},
    {"power_stages", on_self<check_power_stages>},
    {"voltage", on_self<voltage_section>},
    {"temperature", on_self<temperature_section>},
    {"barcode", on_self<barcode_section>},
    {"elabel", elabel},
    {"mac", on_self<mac_section>},
    {"woffline", on_self<woffline_section>},
    {"slot", on_self<slot_section>},
    {"digital", on_self<digital_section>},
    {"board_capability", on_self<board_capability_section>},
    {"soft_reset", on_self<soft_reset_section>},
    {"subboard", on_self<subboard_section>},
    {"dyinggasp_simulation", on_self<check_dyinggasp_simulation>},
    {"dyinggasp_cards", on_self<check_dyinggasp_cards>},
    {"dyinggasp", on_self<dyinggasp_section>},
    {"intr", on_self<intr_section>},
    {"cpld", on_self<cpld_section>},
    {"i2c", on_self<i2c_section>},
    {"lbc", on_self<lbc_section>},
    {"mdio", on_self<mdio_section>},
    {"pci", on_self<pci_section>},
    {"chip9555", on_self<chip9555_section>},
    {"rtc", buffered<rtc_section>},
    {"backplane", on_self<check_backplane>},
    {"power", on_self<power_section>},
    {"slave_special", on_self<slave_special_section>},
    // What a whole-board run does not come to.
    {"smb_counters", on_self<check_smb_counters>},
    {"card_in_slot_1", on_card<0xff000001>},
    {"card_in_slot_2", on_card<0xff000002>},
    {"card_in_slot_3", on_card<0xff000003>},
    {"card_in_slot_4", on_card<0xff000004>},
    {"card_in_slot_5", on_card<0xff000005>},
    {"card_1_on_board", on_card<0x0100ffff>},
    {"power_single", on_supply<power_single_test>},
    {"power_display", on_supply<power_display_test>},
    {"power_bbox_16", power_bbox<16>},
    {"power_bbox_0", power_bbox<0>},
    {"power_bbox_half_report", power_bbox<report_capacity / 2 + 1>},
    {"power_bbox_largest", power_bbox<0xffffffff>},
    {"power_input", power_input_found},
    {"power_properties", on_supply<power_property_display>},
    {"power_board_properties", on_supply<power_board_property_display>},
    {"power_alarms", on_supply<power_alarm_display>},
    {"power_init", power_init},
    {"power_set_and_get", on_supply<power_set_and_get_test>},
    {"power_software", on_supply<power_software_test>},
    {"power_software_info", power_software_info},
    {"power_number", power_number},
    {"power_version", power_version},
    {"power_onekey_all", power_onekey<power_test_all>},
    {"power_onekey_display", power_onekey<power_test_display>},
    {"power_onekey_config", power_onekey<power_test_config>},
    {"power_onekey_init", power_onekey<power_test_init>},
    {"power_onekey_software", power_onekey<power_test_software>},
    {"fan_info", on_fans<fan_check_get_info_one_key_test>},
    {"fan_alarms", on_fans<fan_get_alarm_info>},
    {"fan_labels", on_fans<fan_get_elabel_info>},
    {"fan_shifts", on_fans<fan_get_all_shift_info>},
    {"fan_led", on_fans<fan_led_one_key_test>},
    {"fan_init_status", fan_init_status},
    {"fan_elabel", on_tray<fan_elabel_test, 2>},
    {"fan_elabel_no_rounds", on_tray<fan_elabel_test, 0>},
    {"fan_speed", on_tray<fan_speed_test, 2>},
    {"fan_shift", on_tray<fan_shift_test, 2>},
    {"fan_multi_init", on_tray<fan_multi_init_test, 2>},
    {"fan_multi_deinit", on_tray<fan_multi_deinit_test, 2>},
    {"fan_init_deinit", on_tray<fan_init_deinit_test, 2>},
    {"fan_onekey", on_fans<fan_check_one_key>},
    {"fan_monitor_0_seconds", fan_monitor<0>},
    {"fan_monitor_20_seconds", fan_monitor<20>},
    {"fan_monitor_620_seconds", fan_monitor<620>},
    {"fan_monitor_twice", fan_monitor_twice},
    {"fan_monitor_and_speed_test", fan_monitor_and_speed_test},
    {"fan_log", fan_log<16>},
    {"fan_log_1_byte", fan_log<1>},
    {"fan_log_0_bytes", fan_log<0>},
};

const part *find_part(const char *name) {
    for (const part &each : parts) {
        if (strcmp(each.name, name) == 0) {
            return &each;
        }
    }
    return nullptr;
}

int run_with_report(const part &chosen) {
    auto *buffer = static_cast<char *>(malloc(report_capacity));
    uint32_t fill = 0;
    const int result = chosen.run({buffer, &fill});
    fwrite(buffer, 1, fill, stdout);
    free(buffer);
    return result;
}

} // namespace

int main(int argc, char **argv) {
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    const part *chosen = argc > 1 ? find_part(argv[1]) : nullptr;
    if (chosen == nullptr) {
        fprintf(stderr, "selftest_part: no part '%s'\n", argc > 1 ? argv[1] : "");
        return 2;
    }
    printf("result %d\n", argc > 2 ? run_with_report(*chosen) : chosen->run(console_sink));
    return 0;
}
