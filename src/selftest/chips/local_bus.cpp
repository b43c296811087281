// The local bus. Two bytes of each chip are read and written back.
#include "selftest/chips/local_bus.h"

#include "drv_basic/chips/drv_localbus.h"
#include "selftest/entry_walk.h"

namespace {

constexpr const char *module = "lbc";
constexpr const char *node = "lbc_dev";
constexpr uint32_t address = 0;
constexpr uint32_t length = 2;

// Chips on this bus are soldered to the board: one that does not answer fails, though its line begins with "Info".
int check_chip(uint32_t inst_id, uint32_t chip, report_sink sink) {
    uint8_t bytes[length] = {};
    uint32_t ret = drv_localbus_read(inst_id, chip, address, bytes, length);
    if (ret != 0) {
        report_append(sink, "Info   : lbc chip 0x%x lbc read fail 0x%x.\r\n", chip, ret);
        return -1;
    }
    ret = drv_localbus_write(inst_id, chip, address, bytes, length);
    if (ret != 0) {
        report_append(sink, "Info   : lbc chip 0x%x lbc write fail 0x%x. address 0x%x value 0x%x 0x%x \r\n", chip, ret,
                      address, bytes[0], bytes[1]);
        return -1;
    }
    report_append(sink, "Success: lbc chip 0x%x lbc read write pass. address 0x%x value 0x%x 0x%x \r\n", chip, address,
                  bytes[0], bytes[1]);
    return 0;
}

} // namespace

int lbc_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, module, node);
    if (!has_entries(walk)) {
        report_append(sink, "Error: lbc xml get %s entry num fail.\r\n", node);
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t chip = 0;
        const uint32_t ret = read_element(walk, "chip_id", &chip);
        if (ret != 0) {
            report_append(sink, "Error: lbc xml get %s fail. 0x%x  \r\n", "chip_id", ret);
            result = -1;
            continue;
        }
        result |= check_chip(inst_id, chip, sink);
    }
    return result;
}
