// One check or section of the board self-test, by its name: what a whole-board run calls among many others.
//
//     selftest_part NAME [report]
//
// Prints its lines, "report" by way of a report buffer, and then "result <n>".
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "selftest/chips/cpld.h"
#include "selftest/chips/i2c_bus.h"
#include "selftest/chips/interrupts.h"
#include "selftest/chips/local_bus.h"
#include "selftest/identity/barcode_storage.h"
#include "selftest/identity/elabel_storage.h"
#include "selftest/identity/mac_storage.h"
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

// A line each, in the order in which a whole-board run comes to them.
constexpr part parts[] = {
    {"barcode", on_self<barcode_section>}, {"elabel", elabel},
    {"mac", on_self<mac_section>},         {"intr", on_self<intr_section>},
    {"cpld", on_self<cpld_section>},       {"i2c", on_self<i2c_section>},
    {"lbc", on_self<lbc_section>},
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
