// Programmable logic. The drivers check; here their findings become lines.
#include "selftest/chips/cpld.h"

#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_fpga.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"

namespace {

constexpr uint32_t fpga_chip = 2;
constexpr uint32_t message_size = 256;
constexpr uint32_t dumped_registers = 16;

// What a check of one chip hands over. The byte behind the message ends one that fills its area.
struct outcome {
    uint32_t ret;
    uint32_t result;
    char message[message_size + 1];
};

int report_fault(const char *check, uint32_t chip, const outcome &found, report_sink sink) {
    report_append(sink, "Error  : cpld %u %s fail 0x%x. result 0x%x msg %s\r\n", chip, check, found.ret, found.result,
                  found.message);
    return -1;
}

int report_pass(const char *check, uint32_t chip, const outcome &found, report_sink sink) {
    report_append(sink, "Success: cpld %u %s pass. msg %s\r\n", chip, check, found.message);
    return 0;
}

int report_outcome(const char *check, uint32_t chip, const outcome &found, report_sink sink) {
    const bool is_fault = found.ret != 0 || found.result != 0;
    return is_fault ? report_fault(check, chip, found, sink) : report_pass(check, chip, found, sink);
}

int check_itself(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_selftest(inst_id, chip, &found.result, found.message, message_size);
    return report_outcome("self test", chip, found, sink);
}

int check_dump(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_reg_dump(inst_id, chip, 0, dumped_registers, found.message, message_size);
    if (found.ret != 0) {
        report_append(sink, "Error  : cpld %u reg dump fail 0x%x msg %s\r\n", chip, found.ret, found.message);
        return -1;
    }
    return report_pass("reg dump", chip, found, sink);
}

// Upside down, and kept: in reports from the field "not support" stands where the check ran, and whoever reads them
// knows it. What is judged is the result that a driver leaves beside the code for "not supported".
int check_upsets(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_fpga_check_seu(inst_id, chip, &found.result, found.message, message_size);
    if (!is_not_supported(found.ret)) {
        report_append(sink, "Info: cpld %u seu is not support.\r\n", chip);
        return 0;
    }
    return found.result != 0 ? report_fault("seu test", chip, found, sink) : report_pass("seu test", chip, found, sink);
}

int check_build_time(uint32_t inst_id, uint32_t chip, report_sink sink) {
    uint32_t year = 0;
    uint32_t month = 0;
    uint32_t day = 0;
    const uint32_t ret = drv_cpld_get_build_time(inst_id, chip, &year, &month, &day);
    if (ret == 0) {
        report_append(sink, "Success: cpld %u build time %u/%u/%u.\r\n", chip, year, month, day);
        return 0;
    }
    if (is_not_supported(ret)) {
        return 0;
    }
    report_append(sink, "Error  : cpld %u get build time fail 0x%x.\r\n", chip, ret);
    return -1;
}

int check_version(uint32_t inst_id, uint32_t chip, report_sink sink) {
    uint32_t version = 0;
    const uint32_t ret = drv_cpld_get_version(inst_id, chip, &version);
    if (ret == 0) {
        report_append(sink, "Success: cpld %u version %u.\r\n", chip, version);
        return 0;
    }
    if (is_not_supported(ret)) {
        return 0;
    }
    report_append(sink, "Error  : cpld %u version fail 0x%x.\r\n", chip, ret);
    return -1;
}

// An FPGA loads its logic at each start, and every one can tell how often: one that cannot is at fault.
int check_repeated_load(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_check_repeat_load(inst_id, chip, &found.result, found.message, message_size);
    const bool is_fault = found.ret != 0 || found.result != 0;
    return is_fault ? report_fault("repeat load test", chip, found, sink)
                    : report_pass("load sts test", chip, found, sink);
}

// What a chip that fails its self-test tells of itself is not worth a line.
int check_chip(uint32_t inst_id, uint32_t chip, uint32_t chip_type, report_sink sink) {
    if (check_itself(inst_id, chip, sink) != 0) {
        return -1;
    }
    int result = check_dump(inst_id, chip, sink);
    result |= check_upsets(inst_id, chip, sink);
    result |= check_build_time(inst_id, chip, sink);
    result |= check_version(inst_id, chip, sink);
    if (chip_type == fpga_chip) {
        result |= check_repeated_load(inst_id, chip, sink);
    }
    return result;
}

// A link that is down is told and not judged.
int check_chip_link(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_check_chip_link(inst_id, chip, &found.result, found.message, message_size);
    if (is_not_supported(found.ret)) {
        return 0;
    }
    if (found.ret != 0) {
        return report_fault("chip link test", chip, found, sink);
    }
    report_append(sink, "Info   : cpld %u chip link test end. result 0x%x msg %s\r\n", chip, found.result,
                  found.message);
    return 0;
}

int check_uart(uint32_t inst_id, uint32_t chip, uint32_t channel, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_uart_get_recv_alarm(inst_id, chip, channel, &found.result, found.message, message_size);
    return is_not_supported(found.ret) ? 0 : report_outcome("uart get recv alarm test", chip, found, sink);
}

// The first agent stands for all: they share clock and data.
int check_agent(uint32_t inst_id, uint32_t chip, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_check_agent_spi_status(inst_id, chip, 0, &found.result, found.message, message_size);
    return is_not_supported(found.ret) ? 0 : report_outcome("check agent spi", chip, found, sink);
}

int check_pcie(uint32_t inst_id, uint32_t chip, uint32_t channel, report_sink sink) {
    outcome found{};
    found.ret = drv_cpld_check_pcie_link_status(inst_id, chip, channel, &found.result, found.message, message_size);
    return is_not_supported(found.ret) ? 0 : report_outcome("check pcie link", chip, found, sink);
}

int check_links(uint32_t inst_id, uint32_t chip, report_sink sink) {
    int result = check_chip_link(inst_id, chip, sink);
    result |= check_uart(inst_id, chip, 0, sink);
    result |= check_uart(inst_id, chip, 1, sink);
    result |= check_agent(inst_id, chip, sink);
    result |= check_pcie(inst_id, chip, 0, sink);
    result |= check_pcie(inst_id, chip, 1, sink);
    return result;
}

int check_described_chip(const entry_walk &walk, report_sink sink) {
    uint32_t chip = 0;
    uint32_t chip_type = 0;
    const char *element = "chip_id";
    uint32_t ret = read_element(walk, element, &chip);
    if (ret == 0) {
        element = "chip_type";
        ret = read_element(walk, element, &chip_type);
    }
    if (ret != 0) {
        report_append(sink, "Error: cpld xml get %s fail. 0x%x  \r\n", element, ret);
        return -1;
    }
    const int result = check_chip(walk.inst_id, chip, chip_type, sink);
    return result | check_links(walk.inst_id, chip, sink);
}

} // namespace

int cpld_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "cpld", "cpld_cfg");
    if (!has_entries(walk)) {
        report_append(sink, "Error: cpld xml get entry num fail.\r\n");
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        result |= check_described_chip(walk, sink);
    }
    return result;
}
