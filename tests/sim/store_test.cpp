// The store itself: registers, changes that were cut short, a full table, and a store that has been replaced.
#include "sim/core/board.h"
#include "sim/core/prepare.h"
#include "sim/core/store.h"
#include "sim/devices/bsp/processor_pins.h"
#include "tests/sim/label_change.h"
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace gpio_pin = kestro_sim::gpio_pin;

using kestro_sim::change;
using kestro_sim::store;

namespace {

std::string new_state() {
    return new_delivered("mpu_master").state;
}

void expect_label(const store &opened, uint8_t value) {
    EXPECT_EQ(opened.read("eeprom-slot9.bin", 16, 2400), bytes_of(2400, value));
    EXPECT_EQ(opened.get("self/a/b/0/low"), value);
    EXPECT_EQ(opened.get("self/a/b/0/high"), value + 1U);
}

} // namespace

TEST(Store, RegistersKeepTheirValues) {
    const std::string state = new_state();
    const std::string longest(kestro_sim::cell_key_max, 'k');
    {
        store opened(state);
        EXPECT_FALSE(opened.get("self/x/y/1/z").has_value());
        change writes;
        writes.put("self/x/y/1/z", 0xFEDCBA9876543210U);
        writes.put(longest, 7);
        EXPECT_TRUE(opened.commit(writes));
    }
    const store again(state);
    EXPECT_EQ(again.get("self/x/y/1/z"), 0xFEDCBA9876543210U);
    EXPECT_EQ(again.get(longest), 7U);
    EXPECT_FALSE(again.get(longest.substr(1)).has_value());
}

TEST(Store, KeysAreNotTakenForOneAnother) {
    store opened(new_state());
    change writes;
    for (uint32_t i = 0; i < 200; ++i) {
        writes.put("self/x/y/" + std::to_string(i) + "/z", i);
    }
    ASSERT_TRUE(opened.commit(writes));
    for (uint32_t i = 0; i < 200; ++i) {
        EXPECT_EQ(opened.get("self/x/y/" + std::to_string(i) + "/z"), i);
    }
}

TEST(Store, CommittedChangeIsBroughtAboutByTheNextProcess) {
    const std::string state = new_state();
    {
        store killed(state);
        ASSERT_TRUE(killed.commit(label_change(0x11)));
        killed.record(label_change(0x22));
        // The writer came as far as a part of the first copy.
        std::string image = read_file(state + "/images/eeprom-slot9.bin");
        image.replace(16, 700, std::string(700, '\x22'));
        write_file(state + "/images/eeprom-slot9.bin", image);
    }
    expect_label(store(state), 0x22);
}

TEST(Store, CommittedChangeIsBroughtAboutByProcessesThatRunAlready) {
    const std::string state = new_state();
    store killed(state);
    store running(state);
    killed.record(label_change(0x22));
    change other;
    other.put("self/x/y/1/z", 5);
    ASSERT_TRUE(running.commit(other));
    expect_label(running, 0x22);
    EXPECT_EQ(running.get("self/x/y/1/z"), 5U);
}

TEST(Board, OperationStartsWithWhatAKilledProcessHadBegun) {
    const test_board made = new_delivered("mpu_master");
    kestro_sim::board running(made.description, made.state, made.seat);
    store(made.state).record(label_change(0x22));
    EXPECT_TRUE(running.begin_operation());
    EXPECT_EQ(running.read_image("eeprom-slot9.bin", 16, 2400), bytes_of(2400, 0x22));
}

TEST(Store, ChangeThatWasNotCommittedLeavesNoTrace) {
    const std::string state = new_state();
    {
        store killed(state);
        ASSERT_TRUE(killed.commit(label_change(0x11)));
        killed.record(label_change(0x22));
    }
    // Without the mark, which stands behind the header of 128 bytes, the journal counts for nothing.
    std::string file = read_file(state + "/store");
    ASSERT_EQ(file[128], 1);
    file[128] = 0;
    write_file(state + "/store", file);
    expect_label(store(state), 0x11);
}

TEST(Store, FullTableRefusesFurtherRegisters) {
    store opened(new_state());
    for (uint32_t written = 0; written < 8192; written += 256) {
        change writes;
        for (uint32_t i = written; i < written + 256; ++i) {
            writes.put("self/x/y/" + std::to_string(i) + "/z", i);
        }
        ASSERT_TRUE(opened.commit(writes));
    }
    change known;
    known.put("self/x/y/8191/z", 1);
    EXPECT_TRUE(opened.commit(known));
    // Of a change that has no room, nothing is written.
    known.put("self/x/y/8192/z", 8192);
    known.put("self/x/y/8191/z", 2);
    EXPECT_FALSE(opened.commit(known));
    EXPECT_EQ(opened.get("self/x/y/8191/z"), 1U);
    EXPECT_EQ(opened.get("self/x/y/4711/z"), 4711U);
    EXPECT_FALSE(opened.get("self/x/y/8192/z").has_value());
}

TEST(Store, LargestChangesFitTheJournal) {
    const std::string state = new_state();
    store opened(state);
    change registers;
    uint32_t count = 0;
    try {
        for (;; ++count) {
            registers.put("self/x/y/" + std::to_string(count) + "/z", count);
        }
    } catch (const std::length_error &) {
        EXPECT_GT(count, 400U);
    }
    EXPECT_TRUE(opened.commit(registers));
    change bytes;
    try {
        for (uint32_t offset = 0;; offset += 17) {
            bytes.write("eeprom-slot9.bin", offset % 8192, bytes_of(1, 0x44));
        }
    } catch (const std::length_error &) {
        EXPECT_TRUE(opened.commit(bytes));
    }
    EXPECT_EQ(store(state).get("self/x/y/" + std::to_string(count - 1) + "/z"), count - 1);
    EXPECT_EQ(store(state).read("eeprom-slot9.bin", 17, 1), bytes_of(1, 0x44));
}

TEST(Store, ChangeLargerThanTheJournalIsAnError) {
    change writes;
    EXPECT_THROW(writes.write("eeprom-slot9.bin", 0, bytes_of(kestro_sim::largest_write() + 1, 0)), std::length_error);
    EXPECT_NO_THROW(writes.write("eeprom-slot9.bin", 0, bytes_of(kestro_sim::largest_write(), 0)));
    EXPECT_THROW(writes.put("k", 1), std::length_error);
}

TEST(Store, ResetRetiresTheOldStore) {
    const test_board board = new_delivered("mpu_master");
    const store running(board.state);
    EXPECT_FALSE(running.is_retired());
    EXPECT_EQ(prepare_says(board.word, board.state, true), "");
    EXPECT_TRUE(running.is_retired());
    EXPECT_FALSE(store(board.state).is_retired());
}

TEST(Board, RegistersStartAsDescribed) {
    const test_board made = new_delivered("mpu_master");
    kestro_sim::board simulated(made.description, made.state, made.seat);
    const auto pin = simulated.find<gpio_pin::family>(DRV_INST_SELF, 17);
    EXPECT_EQ(simulated.get(pin, gpio_pin::level), 1U);
    simulated.put(pin, gpio_pin::level, 0);
    EXPECT_EQ(simulated.get(pin, gpio_pin::level), 0U);
    std::vector<uint32_t> pins;
    for (const auto &each : simulated.all_at<gpio_pin::family>("slot9")) {
        pins.push_back(each.id);
    }
    EXPECT_EQ(pins, (std::vector<uint32_t>{0, 5, 16, 17, 40}));
}

TEST(Board, LargeImagesAreWrittenInPieces) {
    const std::string storage = "<module name=\"sim_storage\"><node name=\"image\"><entry name=\"large\"><element "
                                "name=\"size\" value=\"300000\"/><element name=\"fill\" value=\"255\"/></entry></node>"
                                "</module></board>";
    const test_board made = new_changed("lpu", "</board>", storage);
    kestro_sim::board simulated(made.description, made.state, made.seat);
    simulated.write_image("large-slot7.bin", 10, bytes_of(200000, 0x33));
    EXPECT_EQ(simulated.image_size("large-slot7.bin"), 300000U);
    EXPECT_EQ(simulated.read_image("large-slot7.bin", 10, 200000), bytes_of(200000, 0x33));
    EXPECT_EQ(simulated.read_image("large-slot7.bin", 0, 10), bytes_of(10, 0xFF));
    EXPECT_EQ(simulated.read_image("large-slot7.bin", 200010, 10), bytes_of(10, 0xFF));
}

} // namespace kestro_tests
