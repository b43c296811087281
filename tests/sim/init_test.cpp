// Bring-up of the drivers of a slot.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";

std::string init(const std::string &slot) {
    return "drv_init_entry(slot=" + slot + ")";
}

std::string leave(const std::string &slot) {
    return "drv_exit_entry(slot=" + slot + ")";
}

} // namespace

TEST(InitDriver, DriversAreUpUntilTheyAreTakenDown) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {init("5"), leave("5"), leave("5")}), ok + ok + not_ready);
    EXPECT_EQ(answers(board, {leave("5"), leave("4"), init("5"), leave("5")}), not_ready + ok + ok + ok);
}

TEST(InitDriver, PlainSlotsAndInstancesAreTheSame) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {leave("0xff000005"), leave("5"), init("0xff000005"), leave("5"), leave("0xffffffff"),
                              leave("9"), init("9"), leave("0xff000009")}),
              ok + not_ready + ok + ok + ok + not_ready + ok + ok);
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {leave("9"), leave("10")}), not_ready + ok);
}

TEST(InitDriver, CardsOnALineCard) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {leave("0x0100ffff"), leave("0x0100ffff"), init("0x0100ffff"), leave("0x0200ffff")}),
              ok + not_ready + ok + ok);
}

TEST(InitDriver, EmptyAndUnknownPlaces) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {init("6"), leave("6"), init("0"), init("17"), init("255"), init("256"), leave("0xffff")}),
              no_such_instance + no_such_instance + no_such_instance + no_such_instance + no_such_instance +
                  no_such_instance + no_such_instance);
}

// Another card, or the same one again: its drivers begin anew.
TEST(InitDriver, AFreshlyPluggedCardHasNone) {
    const std::string state = new_scratch_dir() + "/state";
    EXPECT_EQ(answers_of({"--state", state, "--pull", "slot5"}, {init("5"), leave("5")}),
              no_such_instance + no_such_instance);
    EXPECT_EQ(answers_of({"--state", state, "--plug", "slot5"}, {leave("5"), leave("4"), init("5"), leave("5")}),
              not_ready + ok + ok + ok);
}

} // namespace kestro_tests
