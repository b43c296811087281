// One check or section of the board self-test, by its name: what a whole-board run calls among many others.
//
//     selftest_part NAME [report]
//
// Prints its lines, "report" by way of a report buffer, and then "result <n>".
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "selftest/identity/barcode_storage.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/identity/mac_storage.h"
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

// A line each, in the order in which a whole-board run comes to them.
constexpr part parts[] = {
    {"barcode", on_self<barcode_section>},
    {"elabel", elabel},
    {"mac", on_self<mac_section>},
    {"power", on_self<power_section>},
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
