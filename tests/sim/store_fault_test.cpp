// A kill and a full disk at every single change that the store makes to its files: all or nothing, registers, images
// and checksums alike.
#include "sim/core/prepare.h"
#include "sim/core/state_files.h"
#include "sim/core/store.h"
#include "tests/sim/fault_points.h"
#include "tests/sim/label_change.h"
#include "tests/sim/support.h"
#include "tests/support/thoroughness.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kestro_tests {

using kestro_sim::change;
using kestro_sim::store;

namespace {

constexpr int far_too_many = 1000;

void commit_label(const std::string &state, uint8_t value) {
    store opened(state);
    if (!opened.commit(label_change(value))) {
        throw std::runtime_error("the table is full");
    }
}

// The value that all parts of the change have. Reading checks the checksums.
int whole_label(const std::string &state) {
    const store opened(state);
    const auto low = opened.get("self/a/b/0/low");
    const auto value = static_cast<uint8_t>(low.value_or(0));
    EXPECT_EQ(opened.read("eeprom-slot9.bin", 16, 2400), bytes_of(2400, value));
    EXPECT_EQ(opened.get("self/a/b/0/high"), value + 1U);
    opened.check_registers();
    opened.read("eeprom-slot9.bin", 0, opened.image_size("eeprom-slot9.bin"));
    return value;
}

test_board labelled(uint8_t value) {
    const test_board board = new_delivered("mpu_master");
    commit_label(board.state, value);
    return board;
}

std::string make(const test_board &board, bool reset) {
    return prepare_says(board.word, board.state, reset);
}

void make_or_throw(const test_board &board, bool reset) {
    const std::string said = make(board, reset);
    if (!said.empty()) {
        throw std::runtime_error(said);
    }
}

bool is_new(const test_board &board) {
    const store opened(board.state);
    return !opened.get("self/a/b/0/low").has_value() &&
           opened.read("eeprom-slot9.bin", 16, 6) == std::vector<uint8_t>{'[', 'b', 'o', 'a', 'r', 'd'};
}

} // namespace

namespace {

const std::string ring_name = "log/ring.log";

// Ten lines of ten bytes, and what becomes of them: with room for one more, and without.
struct ring_case {
    uint64_t size;
    std::string after;
};

const std::string ten_lines = "2 line 10\n2 line 11\n2 line 12\n2 line 13\n2 line 14\n"
                              "2 line 15\n2 line 16\n2 line 17\n2 line 18\n2 line 19\n";

std::vector<ring_case> ring_cases() {
    return {{110, ten_lines + "2 line 20\n"}, {100, ten_lines.substr(50) + "2 line 20\n"}};
}

std::string ring_before_fault() {
    std::string state = new_scratch_dir();
    std::filesystem::create_directory(state + "/log");
    write_file(state + "/" + ring_name, ten_lines);
    return state;
}

} // namespace

TEST(LogFault, EachChangeLeavesTheLinesBeforeOrBehind) {
    for (const ring_case &one : ring_cases()) {
        for (const fault kind : {fault::killed, fault::full_once, fault::full_for_good}) {
            for (int n = 1; n < far_too_many && !HasFailure(); ++n) {
                SCOPED_TRACE(std::to_string(one.size) + " " + std::to_string(n));
                const std::string state = ring_before_fault();
                const outcome end = run_with_fault(
                    kind, n, [&] { kestro_sim::append_to_ring(state, ring_name, "2 line 20\n", one.size); });
                const std::string lines = kestro_sim::lines_of_ring(state, ring_name);
                if (end == outcome::done) {
                    EXPECT_EQ(lines, one.after);
                    EXPECT_GT(n, 1);
                    break;
                }
                EXPECT_TRUE(lines == ten_lines || (end == outcome::killed && lines == one.after)) << lines;
                // Half of a line, or of a file that was to take the place of this one, is in nobody's way.
                kestro_sim::append_to_ring(state, ring_name, "2 line 20\n", 4096);
                EXPECT_TRUE(kestro_sim::lines_of_ring(state, ring_name).ends_with(lines + "2 line 20\n"));
            }
        }
    }
}

TEST(StoreFault, KilledAtEachChangeLeavesAllOrNothing) {
    const test_board board = labelled(0x11);
    int before = 0;
    int after = 0;
    for (int n = 1; n < far_too_many && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        commit_label(board.state, 0x11);
        const outcome end = run_with_fault(fault::killed, n, [&] { commit_label(board.state, 0x22); });
        const int value = whole_label(board.state);
        if (end == outcome::done) {
            EXPECT_EQ(value, 0x22);
            break;
        }
        ASSERT_EQ(end, outcome::killed);
        EXPECT_TRUE(value == 0x11 || value == 0x22);
        // Once begun, a later kill does not undo it.
        EXPECT_FALSE(value == 0x11 && after > 0);
        ++(value == 0x11 ? before : after);
    }
    EXPECT_EQ(before, 2); // the journal, its mark
    EXPECT_GT(after, 6);  // two writes to the image, two registers, three blocks, the header, the mark
}

TEST(StoreFault, FullDiskAtEachChangeLeavesNothing) {
    const test_board board = labelled(0x11);
    for (int n = 1; n < far_too_many && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        commit_label(board.state, 0x11);
        const outcome end = run_with_fault(fault::full_once, n, [&] { commit_label(board.state, 0x22); });
        if (end == outcome::done) {
            EXPECT_GT(n, 8);
            break;
        }
        ASSERT_EQ(end, outcome::refused);
        const int value = whole_label(board.state);
        // The last change but takes the mark off: everything is written by then.
        EXPECT_TRUE(value == 0x11 || value == 0x22);
    }
}

TEST(StoreFault, DiskThatStaysFullLeavesAllOrNothing) {
    const test_board board = labelled(0x11);
    for (int n = 1; n < far_too_many && !HasFailure(); ++n) {
        SCOPED_TRACE(n);
        commit_label(board.state, 0x11);
        const outcome end = run_with_fault(fault::full_for_good, n, [&] { commit_label(board.state, 0x22); });
        const int value = whole_label(board.state);
        EXPECT_TRUE(value == 0x11 || value == 0x22);
        if (end == outcome::done) {
            break;
        }
        ASSERT_EQ(end, outcome::refused);
    }
}

TEST(StoreFault, MakingThatIsKilledAtEachChangeIsDoneAgain) {
    for (int n = 1; n < far_too_many && !HasFailure(); n += long_stride()) {
        SCOPED_TRACE(n);
        const test_board board = board_to_make("mpu_master", new_scratch_dir() + "/state");
        const outcome end = run_with_fault(fault::killed, n, [&] { make_or_throw(board, false); });
        EXPECT_EQ(make(board, false), "");
        EXPECT_TRUE(is_new(board));
        EXPECT_FALSE(std::filesystem::exists(board.state + "/new"));
        if (end == outcome::done) {
            EXPECT_GT(n, 10);
            break;
        }
        ASSERT_EQ(end, outcome::killed);
    }
}

TEST(StoreFault, ResetThatIsKilledAtEachChangeIsOldOrNew) {
    int kept = 0;
    int made_new = 0;
    for (int n = 1; n < far_too_many && !HasFailure(); n += long_stride()) {
        SCOPED_TRACE(n);
        const test_board board = labelled(0x11);
        const outcome end = run_with_fault(fault::killed, n, [&] { make_or_throw(board, true); });
        EXPECT_EQ(make(board, false), "");
        const bool now_new = is_new(board);
        ++(now_new ? made_new : kept);
        EXPECT_TRUE(now_new || whole_label(board.state) == 0x11);
        EXPECT_TRUE(std::filesystem::exists(board.state + "/root/slot9/proc/interrupts"));
        EXPECT_TRUE(std::filesystem::exists(board.state + "/log"));
        EXPECT_FALSE(std::filesystem::exists(board.state + "/new"));
        if (end == outcome::done) {
            EXPECT_TRUE(now_new);
            break;
        }
        ASSERT_EQ(end, outcome::killed);
    }
    EXPECT_GT(kept * long_stride(), 5);
    EXPECT_GT(made_new * long_stride(), 5);
}

TEST(StoreFault, ResetOnAFullDiskKeepsTheOldState) {
    int kept = 0;
    for (int n = 1; n < far_too_many && !HasFailure(); n += long_stride()) {
        SCOPED_TRACE(n);
        const test_board board = labelled(0x11);
        const outcome end = run_with_fault(fault::full_once, n, [&] { make_or_throw(board, true); });
        EXPECT_EQ(make(board, false), "");
        if (end == outcome::done) {
            EXPECT_TRUE(is_new(board));
            break;
        }
        if (!is_new(board)) {
            EXPECT_EQ(whole_label(board.state), 0x11);
            ++kept;
        }
    }
    EXPECT_GT(kept * long_stride(), 5);
}

} // namespace kestro_tests
