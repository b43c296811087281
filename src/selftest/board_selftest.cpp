// The one-key board self-test: order of the sections and the master/slave branch.
#include "selftest/board_selftest.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/management/drv_msc.h"
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
#include "selftest/management/board_mng.h"
#include "selftest/power/power_onekey.h"

namespace {

// The board's own label is number 0.
int elabel_section(uint32_t inst_id, report_sink sink) {
    return elabel_write_test(inst_id, 0, sink);
}

constexpr std::array common_sections = {
    selftest_section{"board mng", board_mng_test, nullptr},
    selftest_section{"voltage", voltage_section, nullptr},
    selftest_section{"temperature", temperature_section, nullptr},
    selftest_section{"barcode", barcode_section, nullptr},
    selftest_section{"elabel", elabel_section, nullptr},
    selftest_section{"mac", mac_section, nullptr},
    selftest_section{"woffline", woffline_section, nullptr},
    selftest_section{"slot", slot_section, nullptr},
    selftest_section{"digital", digital_section, nullptr},
    selftest_section{"board capability", board_capability_section, nullptr},
    selftest_section{"soft-reset", soft_reset_section, nullptr},
    selftest_section{"sub-board", subboard_section, nullptr},
    selftest_section{"dyinggasp", dyinggasp_section, nullptr},
    selftest_section{"intr", intr_section, nullptr},
    selftest_section{"cpld", cpld_section, nullptr},
    selftest_section{"i2c", i2c_section, nullptr},
    selftest_section{"lbc bus", lbc_section, nullptr},
    selftest_section{"mdio", mdio_section, nullptr},
    selftest_section{"pci", pci_section, nullptr},
    selftest_section{"chip9555", chip9555_section, nullptr},
    selftest_section{"rtc", nullptr, rtc_section},
    selftest_section{"msc", nullptr, nullptr},
};

// Only the master reaches the backplane and the power supplies.
constexpr std::array master_sections = {
    selftest_section{"backplane", check_backplane, nullptr},
    selftest_section{"power", power_section, nullptr},
};

constexpr std::array slave_sections = {
    selftest_section{"slave board special", slave_special_section, nullptr},
};

// On a console run there is no report buffer: the step gets one of its own, which is then printed whole.
int run_buffered(buffered_step step, uint32_t inst_id, report_sink sink) {
    if (sink.buffer != nullptr && sink.fill != nullptr) {
        return step(inst_id, sink.buffer, report_capacity, sink.fill);
    }
    auto *buffer = static_cast<char *>(calloc(report_capacity + 1, 1));
    if (buffer == nullptr) {
        return -1;
    }
    uint32_t fill = 0;
    const int result = step(inst_id, buffer, report_capacity, &fill);
    fputs(buffer, stdout);
    free(buffer);
    return result;
}

int run_step(const selftest_section &section, uint32_t inst_id, report_sink sink) {
    if (section.buffered != nullptr) {
        return run_buffered(section.buffered, inst_id, sink);
    }
    return section.step != nullptr ? section.step(inst_id, sink) : 0;
}

} // namespace

int run_sections(std::span<const selftest_section> sections, uint32_t inst_id, report_sink sink) {
    int result = 0;
    for (const selftest_section &section : sections) {
        report_append(sink, "\r\n##### %s test begin \r\n", section.name);
        result |= run_step(section, inst_id, sink);
    }
    return result;
}

int board_selftest_run(uint32_t inst_id, report_sink sink) {
    constexpr uint32_t master = 0;
    constexpr uint32_t slave = 1;
    run_sections(common_sections, inst_id, sink);
    uint32_t state = slave;
    // Which of the two boards this is does not depend on the board under test.
    const uint32_t ret = drv_msc_get_state(DRV_INST_SELF, 0, &state);
    if (ret == 0 && state == master) {
        run_sections(master_sections, inst_id, sink);
    } else if (ret == 0 && state == slave) {
        run_sections(slave_sections, inst_id, sink);
    }
    return 0;
}
