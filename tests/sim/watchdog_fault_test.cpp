// A kill and a full disk at every single change that is made while a bite is written down: it happened once, or is
// still to be found.
#include "sim/core/hand.h"
#include "sim/core/store.h"
#include "sim/devices/management/restart.h"
#include "sim/devices/management/watchdog.h"
#include "tests/sim/fault_points.h"
#include "tests/sim/support.h"
#include "tests/support/thoroughness.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace kestro_tests {

using namespace kestro_sim;

namespace {

constexpr int far_too_many = 1000;

// The watchdog of bad hardware was due long ago: its bite changes most.
test_board overdue() {
    const test_board board = new_delivered("mpu_master");
    change late;
    late.put("time/board_ns", 100'000'000'000U);
    EXPECT_TRUE(store(board.state).commit(late));
    std::string printed;
    const std::vector<hand_action> actions{{hand_action::kind::set, "slot9/watchdog/timer/1/timeout=5000"},
                                           {hand_action::kind::set, "slot9/watchdog/timer/1/fed=1"},
                                           {hand_action::kind::set, "slot9/watchdog/timer/1/enabled=1"}};
    EXPECT_EQ(lay_hand_on(board.description, board.state, actions, printed), std::nullopt);
    return board;
}

test_board copy_of(const test_board &board) {
    test_board copy = board;
    copy.state = new_scratch_dir() + "/state";
    std::filesystem::copy(board.state, copy.state, std::filesystem::copy_options::recursive);
    return copy;
}

void look(const test_board &at) {
    board b(at.description, at.state, at.seat);
    if (!b.begin_operation()) {
        throw std::runtime_error("there is no state");
    }
    settle_bites(b);
    if (has_bite(b)) {
        throw std::runtime_error("it could not be written down");
    }
}

// Everything that belongs to it, or nothing. Reading checks the checksums.
bool has_bitten(const test_board &at) {
    board b(at.description, at.state, at.seat);
    EXPECT_TRUE(b.begin_operation());
    const auto timer = board::at<watchdog::family>("slot9", watchdog::of_bad_hardware);
    const bool is_over = b.get(timer, watchdog::bites) != 0;
    EXPECT_EQ(b.get(timer, watchdog::bites), is_over ? 1U : 0U);
    EXPECT_EQ(b.get(timer, watchdog::enabled), is_over ? 0U : 1U);
    EXPECT_EQ(b.get(timer, watchdog::timeout), is_over ? 180000U : 5000U);
    EXPECT_EQ(b.get(board::at<reset_reason::family>("slot9", 0), reset_reason::reason), is_over ? 3U : 1U);
    EXPECT_EQ(b.get(board::at<reset_reason::family>("slot9", 1), reset_reason::reason), is_over ? 1U : 4U);
    EXPECT_EQ(b.get(board::at<reset_control::family>("slot9"), reset_control::starts), is_over ? 1U : 0U);
    EXPECT_EQ(b.master_slot(), is_over ? 10U : 9U);
    EXPECT_EQ(next_bite(b, "slot9").has_value(), !is_over);
    return is_over;
}

} // namespace

TEST(WatchdogFault, KilledWhileABiteIsWrittenDown) {
    const test_board model = overdue();
    int before = 0;
    int after = 0;
    for (int n = 1; n < far_too_many && !HasFailure(); n += 3 * stride()) {
        SCOPED_TRACE(n);
        const test_board board = copy_of(model);
        const outcome end = run_with_fault(fault::killed, n, [&] { look(board); });
        ++(has_bitten(board) ? after : before);
        look(board);
        EXPECT_TRUE(has_bitten(board));
        if (end == outcome::done) {
            break;
        }
        ASSERT_EQ(end, outcome::killed);
    }
    EXPECT_GT(before, 0);
    EXPECT_GT(3 * after * stride(), 8);
}

TEST(WatchdogFault, ABiteThatFindsNoRoomIsFoundLater) {
    const test_board model = overdue();
    for (int n = 1; n < far_too_many && !HasFailure(); n += 3 * stride()) {
        SCOPED_TRACE(n);
        const test_board board = copy_of(model);
        const outcome end = run_with_fault(fault::full_once, n, [&] { look(board); });
        has_bitten(board);
        look(board);
        EXPECT_TRUE(has_bitten(board));
        if (end == outcome::done) {
            break;
        }
        ASSERT_EQ(end, outcome::refused);
    }
}

} // namespace kestro_tests
