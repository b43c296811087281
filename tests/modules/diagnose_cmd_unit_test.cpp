// The handlers that diagnose_cmd_test registers, called as no driver on a board does: with areas that are too small.
#include <gtest/gtest.h>

#include "drv_basic/service/drv_diag_cmd.h"
#include "modules/modules.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

std::vector<drv_diag_record> records;

std::vector<drv_diag_record> registered() {
    std::string name = "test_func";
    char *words[] = {name.data()};
    records.clear();
    printed_by([&] { EXPECT_EQ(diagnose_cmd_test(1, words), 0); });
    return records;
}

// Exactly as much room as the text needs, one byte less, and none; what lies behind the area is not touched.
void expect_handler(const drv_diag_record &record, const std::string &text) {
    SCOPED_TRACE(record.command);
    ASSERT_NE(record.handler, nullptr);
    const auto needed = static_cast<uint32_t>(text.size() + 1);
    std::string area(needed + 1, '#');
    EXPECT_EQ(record.handler(area.data(), needed, 0xFEDCBA98, 0x80000000, 0), 0U);
    EXPECT_EQ(area, text + '\0' + "#");
    area.assign(needed + 1, '#');
    EXPECT_EQ(record.handler(area.data(), needed - 1, 0xFEDCBA98, 0x80000000, 0), 0xFFFFFFFFU);
    EXPECT_EQ(area[0], '\0');
    EXPECT_EQ(area.substr(needed - 1), "##");
    area.assign(needed + 1, '#');
    EXPECT_EQ(record.handler(area.data(), 0, 0xFEDCBA98, 0x80000000, 0), 0xFFFFFFFFU);
    EXPECT_EQ(area, std::string(needed + 1, '#'));
}

} // namespace

uint32_t drv_diag_cmd_init() {
    return 0;
}

uint32_t drv_diag_reg_cmd_list(const drv_diag_record *list, uint32_t count) {
    records.insert(records.end(), list, list + count);
    return 0;
}

uint32_t drv_diag_cmd_process(const char *, char *, uint32_t) {
    return 1;
}

TEST(DiagnoseHandlers, WriteOneLineOrFail) {
    const std::vector<drv_diag_record> all = registered();
    ASSERT_EQ(all.size(), 5U);
    expect_handler(all[0], "[diagnose module] test_exec_cmd no para..........");
    expect_handler(all[1], "[diagnose module] test_exec_cmd one para [0xfedcba98].............");
    expect_handler(all[2], "[diagnose module] test_exec_cmd two para [0xfedcba98] [0x80000000].........");
    expect_handler(all[3], "[diagnose module] test_exec_cmd three para [0xfedcba98] [0x80000000] [0x0].........");
    EXPECT_EQ(all[4].handler, nullptr);
}

// A driver may keep the addresses of texts: those of a run stand where those of the run before do.
TEST(DiagnoseHandlers, TextsStayWhereTheyAre) {
    const std::vector<drv_diag_record> first = registered();
    const std::vector<drv_diag_record> second = registered();
    ASSERT_EQ(first.size(), second.size());
    for (size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(first[i].command, second[i].command);
        EXPECT_EQ(first[i].key, second[i].key);
        EXPECT_EQ(first[i].help, second[i].help);
    }
}
