// Bar code storage. The board keeps its bar code: it is written back before anything is compared.
#include "selftest/identity/barcode_storage.h"

#include <cstring>

#include "bounds/bounds.h"
#include "drv_basic/identity/drv_barcode.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"
#include "selftest/test_value.h"

namespace {

// A terminator of our own stands behind bar codes that fill their area.
using barcode_area = char[DRV_BARCODE_SIZE + 1];

constexpr const char *test_text = "Hello test now...";

uint8_t *bytes(char *area) {
    return reinterpret_cast<uint8_t *>(area);
}

uint32_t read_barcode(uint32_t inst_id, uint32_t barcode_id, barcode_area &area) {
    return drv_barcode_read(inst_id, barcode_id, bytes(area), DRV_BARCODE_SIZE);
}

void report_read_failure(const char *step, uint32_t inst_id, uint32_t barcode_id, uint32_t ret, report_sink sink) {
    report_append(sink, "%s fail, inst_id=0x%x, barcode_id=0x%x, ret=%#x.\r\n", step, inst_id, barcode_id, ret);
}

bool write_barcode(uint32_t inst_id, uint32_t barcode_id, barcode_area &area, const char *step, report_sink sink) {
    const uint32_t ret = drv_barcode_write(inst_id, barcode_id, bytes(area), DRV_BARCODE_SIZE);
    if (ret != 0) {
        report_append(sink, "%s fail, ret = 0x%x, barcode_id = 0x%x.\r\n", step, ret, barcode_id);
    }
    return ret == 0;
}

// Test text out and back in, then the saved text out again.
bool write_round_trip(uint32_t inst_id, uint32_t barcode_id, barcode_area &written, barcode_area &read_back,
                      barcode_area &saved, report_sink sink) {
    if (!write_barcode(inst_id, barcode_id, written, "drv_barcode_write", sink)) {
        return false;
    }
    const uint32_t ret = read_barcode(inst_id, barcode_id, read_back);
    if (ret != 0) {
        report_read_failure("drv_barcode_read after write", inst_id, barcode_id, ret, sink);
        return false;
    }
    return write_barcode(inst_id, barcode_id, saved, "drv_barcode_write after test", sink);
}

} // namespace

int barcode_write_test(uint32_t inst_id, uint32_t barcode_id, report_sink sink) {
    barcode_area saved = {};
    barcode_area written = {};
    barcode_area read_back = {};
    const uint32_t ret = read_barcode(inst_id, barcode_id, saved);
    if (is_not_supported(ret)) {
        report_append(sink, "Info   : barcode is not support.\r\n");
        return 0;
    }
    if (ret != 0) {
        report_read_failure("drv_barcode_read", inst_id, barcode_id, ret, sink);
        return -1;
    }
    strcpy_s(written, sizeof(written), test_text);
    begin_test_value();
    const bool restored = write_round_trip(inst_id, barcode_id, written, read_back, saved, sink);
    end_test_value();
    if (!restored) {
        return -1;
    }
    if (memcmp(written, read_back, DRV_BARCODE_SIZE) == 0) {
        report_append(sink, "Success: barcode read and write match test pass.\r\n");
        return 0;
    }
    report_append(sink, "Error: barcode read and write match test fail.\r\n");
    report_append(sink, "original info : \r\n%s\r\n", saved);
    report_append(sink, "write info : \r\n%s\r\n", written);
    report_append(sink, "read info : \r\n%s\r\n", read_back);
    return -1;
}

int barcode_section(uint32_t inst_id, report_sink sink) {
    entry_walk walk = open_entry_walk(inst_id, "barcode", "barcode_attr");
    if (!has_entries(walk)) {
        report_append(sink, "Error: barcode_ xml get entry num fail.\r\n");
        return -1;
    }
    int result = 0;
    while (next_entry(&walk)) {
        uint32_t barcode_id = 0;
        if (read_element(walk, "barcode_id", &barcode_id) == 0 && barcode_write_test(inst_id, barcode_id, sink) != 0) {
            result = -1;
        }
    }
    return result;
}
