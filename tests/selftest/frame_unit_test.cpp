// The walk over the board description, the order of sections, and the uniformity checks.
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "bounds/bounds.h"
#include "selftest/board_selftest.h"
#include "selftest/entry_walk.h"
#include "selftest/identity/uniformity.h"
#include "selftest/result_code.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

class FrameTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
    }
};

int pass_step(uint32_t inst_id, report_sink sink) {
    report_append(sink, "step 0x%x\r\n", inst_id);
    return 0;
}

int fail_step(uint32_t, report_sink) {
    return -1;
}

// As the rtc section does: formats at the fill length and stores it back.
int buffered(uint32_t, char *buffer, uint32_t capacity, uint32_t *fill) {
    *fill += static_cast<uint32_t>(sprintf_s(buffer + *fill, capacity - *fill, "room %u\r\n", capacity));
    return -1;
}

constexpr std::array sections = {
    selftest_section{"one", pass_step, nullptr},
    selftest_section{"two", fail_step, nullptr},
    selftest_section{"three", nullptr, nullptr},
    selftest_section{"four", nullptr, buffered},
};

constexpr const char *sections_text = "\r\n##### one test begin \r\nstep 0x5\r\n"
                                      "\r\n##### two test begin \r\n"
                                      "\r\n##### three test begin \r\n"
                                      "\r\n##### four test begin \r\nroom 2097152\r\n";

} // namespace

TEST_F(FrameTest, WalkVisitsTheEntriesInOrder) {
    drivers().entry_num = 3;
    drivers().elements = {{"m/n/entry0/id", 7}, {"m/n/entry2/id", 9}, {"m/spare/entry2/id", 90}};
    entry_walk walk = open_entry_walk(0xFFFFFFFF, "m", "n");
    ASSERT_TRUE(has_entries(walk));
    std::vector<std::string> names;
    std::vector<uint32_t> ids;
    while (next_entry(&walk)) {
        names.emplace_back(walk.entry);
        uint32_t id = 0;
        if (read_element(walk, "id", &id) == 0) {
            ids.push_back(id);
        }
        if (names.size() == 3) {
            uint32_t spare = 0;
            EXPECT_EQ(read_element_of_node(walk, "spare", "id", &spare), 0U);
            EXPECT_EQ(spare, 90U);
        }
    }
    EXPECT_EQ(names, (std::vector<std::string>{"entry0", "entry1", "entry2"}));
    EXPECT_EQ(ids, (std::vector<uint32_t>{7, 9}));
    EXPECT_FALSE(next_entry(&walk));
}

TEST_F(FrameTest, EntriesAreNumberedInDecimal) {
    drivers().entry_num = 11;
    entry_walk walk = open_entry_walk(1, "m", "n");
    while (next_entry(&walk)) {
    }
    EXPECT_STREQ(walk.entry, "entry10");
}

TEST_F(FrameTest, AMissingNodeHasNoEntries) {
    drivers().entry_num_result = 0x12;
    drivers().entry_num = 4;
    entry_walk walk = open_entry_walk(1, "m", "n");
    EXPECT_FALSE(has_entries(walk));
    EXPECT_EQ(walk.ret, 0x12U);
    EXPECT_FALSE(next_entry(&walk));
    drivers() = {};
    EXPECT_FALSE(has_entries(open_entry_walk(1, "m", "n")));
}

TEST_F(FrameTest, SectionsRunInOrderWhateverFails) {
    EXPECT_EQ(printed_by([] { EXPECT_EQ(run_sections(sections, 5, console_sink), -1); }), sections_text);
}

TEST_F(FrameTest, ABufferedStepAppendsToTheReport) {
    std::vector<char> area(report_capacity);
    uint32_t fill = 0;
    EXPECT_EQ(printed_by([&] { run_sections(sections, 5, {area.data(), &fill}); }), "");
    EXPECT_EQ(std::string(area.data()), sections_text);
    EXPECT_EQ(fill, strlen(sections_text));
}

TEST_F(FrameTest, NotSupportedGoesByTheLowByte) {
    EXPECT_TRUE(is_not_supported(0x811101A4));
    EXPECT_TRUE(is_not_supported(0xA4));
    EXPECT_FALSE(is_not_supported(0xA400));
    EXPECT_FALSE(is_not_supported(0));
}

TEST_F(FrameTest, UniformLabels) {
    drivers().eeprom_sections[0] = drivers().eeprom_sections[1] = std::string(1200, 'L');
    EXPECT_EQ(printed_by([] { EXPECT_EQ(elabel_uniformity_check(3, console_sink), 0); }),
              "Success: master elabel read test pass.\r\n"
              "Success: backup elabel read test pass.\r\n"
              "Success: master and backup elabel uniformity check pass.\r\n");
}

TEST_F(FrameTest, LabelsThatDifferInTheLastByte) {
    drivers().eeprom_sections[0] = drivers().eeprom_sections[1] = std::string(1200, 'L');
    drivers().eeprom_sections[1][1199] = 'M';
    EXPECT_EQ(printed_by([] { EXPECT_EQ(elabel_uniformity_check(3, console_sink), 0); }),
              "Success: master elabel read test pass.\r\n"
              "Success: backup elabel read test pass.\r\n"
              "Error: master and backup elabel uniformity check fail. \r\n");
}

TEST_F(FrameTest, LabelsThatCannotBeReadAreNotCompared) {
    drivers().eeprom_errors = {{0, 0x15}};
    EXPECT_EQ(printed_by([] { elabel_uniformity_check(3, console_sink); }),
              "Error: master elabel read fail. please check elabel is already load. [ret]:0x15\r\n"
              "Success: backup elabel read test pass.\r\n");
    drivers().eeprom_errors = {{1, 0x16}};
    EXPECT_EQ(printed_by([] { elabel_uniformity_check(3, console_sink); }),
              "Success: master elabel read test pass.\r\n"
              "Error: backup elabel read fail. please check card is support back elabel, only qrm old card is not "
              "support. [ret]:0x16\r\n");
}

TEST_F(FrameTest, UniformMacs) {
    drivers().eeprom_sections[8] = drivers().eeprom_sections[9] = std::string(128, 'M');
    EXPECT_EQ(printed_by([] { EXPECT_EQ(mac_uniformity_check(3, console_sink), 0); }),
              "Success: master mac read test pass.\r\n"
              "Success: master and backup mac uniformity check pass. \r\n");
    drivers().eeprom_sections[9][127] = 'N';
    EXPECT_EQ(printed_by([] { EXPECT_EQ(mac_uniformity_check(3, console_sink), 0); }),
              "Success: master mac read test pass.\r\n"
              "Error: master and backup mac uniformity check fail. \r\n");
}

TEST_F(FrameTest, MacsThatCannotBeRead) {
    drivers().eeprom_errors = {{8, 0x811101a4}, {9, 0x811101a4}};
    EXPECT_EQ(printed_by([] { EXPECT_EQ(mac_uniformity_check(3, console_sink), 0); }),
              "Error: master mac read fail. please check card is support mac, only eth card is support. "
              "[ret]:0x811101a4\r\n"
              "Error: backup mac read fail. need backup mac section. [ret]:0x811101a4\r\n");
}
