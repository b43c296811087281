// What is noted of each card, and what of it outlasts the card's test.
#include <gtest/gtest.h>

#include <map>

#include "drv_basic/management/drv_board.h"
#include "nb_bsp/nb_bsp.h"
#include "selftest/cards/card_layout.h"
#include "selftest/cards/card_test.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/selftest/fake_storage.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct place {
    uint32_t offset;
    uint32_t size;
};

// The card's EEPROM, and the number that the board support gives the card.
std::map<uint32_t, place> sections;
uint32_t number_of_card;

const std::map<uint32_t, place> kv_lpu = {{8, {2544, 128}}, {9, {2672, 128}}};
const std::map<uint32_t, place> qrm_old = {{0, {0, 1024}},    {7, {2048, 128}}, {11, {2240, 1536}},
                                           {12, {3776, 300}}, {13, {7296, 64}}, {8, {8016, 176}}};

class CardLayoutTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
        storage() = {};
        sections.clear();
        number_of_card = 0;
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

int test_card() {
    int result = 99;
    printed_by([&] { result = card_onekey_test(1, console_sink); });
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

uint32_t get_card_id(uint32_t, uint32_t *card_id) {
    *card_id = number_of_card;
    return 0;
}

uint32_t drv_board_get_type(uint32_t, uint32_t *type) {
    *type = 5;
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

TEST_F(CardLayoutTest, AFullTestTakesTheNoteBackAndLeavesTheValue) {
    number_of_card = 9;
    sections = qrm_old;
    set_card_value(9, 11);
    test_card();
    EXPECT_EQ(card_layout_of(9), 0U);
    EXPECT_EQ(card_value_of(9), 11U);
}

// Its test ends early, so the note stays; and it passes whatever fails.
TEST_F(CardLayoutTest, AKvLineCardKeepsItsNote) {
    number_of_card = 9;
    sections = kv_lpu;
    storage().broken = true;
    EXPECT_EQ(test_card(), 0);
    EXPECT_EQ(card_layout_of(9), 4U);
}
