// What is noted of each card.
#include <gtest/gtest.h>

#include <map>

#include "nb_bsp/nb_bsp.h"
#include "selftest/cards/card_layout.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct place {
    uint32_t offset;
    uint32_t size;
};

// The card's EEPROM.
std::map<uint32_t, place> sections;

const std::map<uint32_t, place> kv_lpu = {{8, {2544, 128}}, {9, {2672, 128}}};
const std::map<uint32_t, place> qrm_old = {{0, {0, 1024}},    {7, {2048, 128}}, {11, {2240, 1536}},
                                           {12, {3776, 300}}, {13, {7296, 64}}, {8, {8016, 176}}};

class CardLayoutTest : public testing::Test {
  protected:
    void SetUp() override {
        sections.clear();
        for (uint32_t card = 0; card <= card_numbers; ++card) {
            set_card_layout(card, unknown_card);
            set_card_value(card, 0);
        }
    }
    void TearDown() override {
        SetUp();
    }
};

int recognise(uint32_t card_number) {
    int result = 99;
    printed_by([&] { result = recognise_card_layout(1, card_number, console_sink); });
    return result;
}

} // namespace

uint32_t find_section_info_by_section(uint32_t, uint32_t section_id, uint32_t *, uint32_t *offset, uint32_t *size) {
    const auto found = sections.find(section_id);
    if (found == sections.end()) {
        return 0x31;
    }
    *offset = found->second.offset;
    *size = found->second.size;
    return 0;
}

TEST_F(CardLayoutTest, TheLayoutIsNotedForTheCardAlone) {
    sections = qrm_old;
    EXPECT_EQ(recognise(0), 0);
    sections = kv_lpu;
    EXPECT_EQ(recognise(255), 0);
    EXPECT_EQ(card_layout_of(0), 3U);
    EXPECT_EQ(card_layout_of(1), 0U);
    EXPECT_EQ(card_layout_of(254), 0U);
    EXPECT_EQ(card_layout_of(255), 4U);
    EXPECT_EQ(card_layout_of(256), 0U);
}

TEST_F(CardLayoutTest, ALayoutThatIsNotRecognisedTakesTheNoteBack) {
    sections = kv_lpu;
    recognise(7);
    sections.erase(9);
    EXPECT_EQ(recognise(7), 0);
    EXPECT_EQ(card_layout_of(7), 0U);
}

TEST_F(CardLayoutTest, CardsWithoutANumberShareARecord) {
    sections = kv_lpu;
    recognise(65535);
    EXPECT_EQ(card_layout_of(256), 4U);
    EXPECT_EQ(card_layout_of(UINT32_MAX), 4U);
    EXPECT_EQ(card_layout_of(255), 0U);
}

TEST_F(CardLayoutTest, ValuesAreNotLayouts) {
    set_card_value(3, 0x12345678);
    set_card_layout(3, router_old_card);
    set_card_value(4, 7);
    EXPECT_EQ(card_value_of(3), 0x12345678U);
    EXPECT_EQ(card_layout_of(3), 2U);
    EXPECT_EQ(card_value_of(4), 7U);
    EXPECT_EQ(card_value_of(5), 0U);
}
