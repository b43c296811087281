// The woffline section: both sides, the enables that are inverted and restored, what the description lacks.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string nodes(int watch, int interrupt, int isolation) {
    std::string counts = entry_count("woffline_mng", "woffline_get_state", watch);
    if (watch != 0) {
        counts += entry_count("woffline_mng", "woffline_get_en_irq", interrupt);
    }
    if (watch != 0 && interrupt != 0) {
        counts += entry_count("woffline_mng", "woffline_get_sfu_isolate_enable", isolation);
    }
    return counts;
}

std::string rule(const std::string &operation, const std::string &answer) {
    return "drv_woffline_" + operation + "(inst_id=0xffffffff) = " + answer + "\n";
}

std::string set_rule(const std::string &operation, int enable, const std::string &answer) {
    return "drv_woffline_" + operation + "(inst_id=0xffffffff, enable=" + std::to_string(enable) + ") = " + answer +
           "\n";
}

std::string side_rule(const std::string &operation, int side, const std::string &answer) {
    return "drv_woffline_" + operation + "(inst_id=0xffffffff, chip_id=" + std::to_string(side) + ") = " + answer +
           "\n";
}

// One inversion of an enable that is 1.
std::string good_inversion(const std::string &get, const std::string &set) {
    return rule(get, "0 enable=1 x1") + set_rule(set, 0, "0 x1") + rule(get, "0 enable=0 x1") +
           set_rule(set, 1, "0 x1");
}

std::string good_watch() {
    return good_inversion("get_en_state", "set_en_state");
}

std::string good_side(int side) {
    return side_rule("get_state", side, "0 state=0") + good_watch() + side_rule("get_peer_state", side, "0 state=0");
}

constexpr const char *down_lines = "Success: woffline woffline down get sts 0 test pass.\r\n"
                                   "Success: woffline woffline down get and set en 0 test pass.\r\n"
                                   "Success: woffline woffline down get peer sts 0 pass.\r\n";
constexpr const char *up_lines = "Success: woffline woffline up get sts 0 test pass.\r\n"
                                 "Success: woffline woffline up get and set en 0 test pass.\r\n"
                                 "Success: woffline woffline up get peer sts 0 pass.\r\n";
constexpr const char *no_interrupt = "Info: woffline xml get no irq entry num.\r\n";
constexpr const char *interrupt_lines = "Success: woffline get irq test pass.\r\n"
                                        "Success: woffline get and set irq en test pass.\r\n";
constexpr const char *no_isolation = "Info: woffline xml get no SFU_ISOLATE entry num.\r\n";

std::string good_interrupt() {
    return good_inversion("get_irq_enable", "set_irq_enable");
}

// The result is 0 whatever happens.
void expect_lines(const std::string &script, const std::string &lines) {
    expect_part("woffline", script, lines, 0);
}

// The side 0 fares as the script says, side 1 is well, and there is nothing else.
void expect_down(const std::string &script, const std::string &lines) {
    expect_lines(nodes(1, 0, 0) + script + good_side(1), lines + up_lines + no_interrupt);
}

void expect_interrupt(const std::string &script, const std::string &lines) {
    expect_lines(nodes(2, 1, 0) + good_side(0) + good_side(1) + script,
                 std::string(down_lines) + up_lines + lines + no_isolation);
}

void expect_isolation(const std::string &script, const std::string &lines) {
    expect_lines(nodes(2, 1, 1) + good_side(0) + good_side(1) + good_interrupt() + script,
                 std::string(down_lines) + up_lines + interrupt_lines + lines);
}

} // namespace

TEST(WofflineSectionTest, AWholeBoard) {
    expect_isolation(good_inversion("get_sfu_isolate_en", "set_sfu_isolate_en"), "");
}

TEST(WofflineSectionTest, OrderOfCalls) {
    const std::string watch = "drv_woffline_get_en_state(inst_id=0xffffffff)\n"
                              "drv_woffline_set_en_state(inst_id=0xffffffff, enable=0)\n"
                              "drv_woffline_get_en_state(inst_id=0xffffffff)\n"
                              "drv_woffline_set_en_state(inst_id=0xffffffff, enable=1)\n";
    EXPECT_EQ(driver_calls("woffline", nodes(1, 1, 1) + good_side(0) + good_side(1) + good_interrupt() +
                                           good_inversion("get_sfu_isolate_en", "set_sfu_isolate_en")),
              "drv_woffline_get_state(inst_id=0xffffffff, chip_id=0)\n" + watch +
                  "drv_woffline_get_peer_state(inst_id=0xffffffff, chip_id=0)\n"
                  "drv_woffline_get_state(inst_id=0xffffffff, chip_id=1)\n" +
                  watch +
                  "drv_woffline_get_peer_state(inst_id=0xffffffff, chip_id=1)\n"
                  "drv_woffline_get_irq_enable(inst_id=0xffffffff)\n"
                  "drv_woffline_set_irq_enable(inst_id=0xffffffff, enable=0)\n"
                  "drv_woffline_get_irq_enable(inst_id=0xffffffff)\n"
                  "drv_woffline_set_irq_enable(inst_id=0xffffffff, enable=1)\n"
                  "drv_woffline_get_sfu_isolate_en(inst_id=0xffffffff)\n"
                  "drv_woffline_set_sfu_isolate_en(inst_id=0xffffffff, enable=0)\n"
                  "drv_woffline_get_sfu_isolate_en(inst_id=0xffffffff)\n"
                  "drv_woffline_set_sfu_isolate_en(inst_id=0xffffffff, enable=1)\n");
}

TEST(WofflineSectionTest, ABoardWithoutAWatchIsAskedForNothingElse) {
    expect_lines(nodes(0, 0, 0), "Info: woffline xml get no entry num.\r\n");
    expect_lines(no_entry_count("woffline_mng", "woffline_get_state", "0x12"),
                 "Info: woffline xml get no entry num.\r\n");
}

TEST(WofflineSectionTest, AWatchWithoutInterruptIsNotAskedForIsolation) {
    expect_down(good_side(0), down_lines);
    expect_lines(entry_count("woffline_mng", "woffline_get_state", 2) +
                     no_entry_count("woffline_mng", "woffline_get_en_irq", "0x12") + good_side(0) + good_side(1),
                 std::string(down_lines) + up_lines + no_interrupt);
}

TEST(WofflineSectionTest, AWatchWithoutIsolation) {
    expect_interrupt(good_interrupt(), interrupt_lines);
    expect_lines(entry_count("woffline_mng", "woffline_get_state", 2) +
                     entry_count("woffline_mng", "woffline_get_en_irq", 1) +
                     no_entry_count("woffline_mng", "woffline_get_sfu_isolate_enable", "0x12") + good_side(0) +
                     good_side(1) + good_interrupt(),
                 std::string(down_lines) + up_lines + interrupt_lines + no_isolation);
}

TEST(WofflineSectionTest, StatesAreShownAndAnEnableThatIsOffIsSwitchedOnAndBack) {
    expect_down(side_rule("get_state", 0, "0 state=1") + rule("get_en_state", "0 enable=0 x1") +
                    set_rule("set_en_state", 1, "0 x1") + rule("get_en_state", "0 enable=1 x1") +
                    set_rule("set_en_state", 0, "0 x1") + side_rule("get_peer_state", 0, "0 state=2"),
                "Success: woffline woffline down get sts 1 test pass.\r\n"
                "Success: woffline woffline down get and set en 1 test pass.\r\n"
                "Success: woffline woffline down get peer sts 2 pass.\r\n");
}

TEST(WofflineSectionTest, AnEnableOfAnyValueIsRestoredAsItWas) {
    expect_down(side_rule("get_state", 0, "0") + rule("get_en_state", "0 enable=5 x1") +
                    set_rule("set_en_state", 0, "0 x1") + rule("get_en_state", "0 x1") +
                    set_rule("set_en_state", 5, "0 x1") + side_rule("get_peer_state", 0, "0"),
                down_lines);
}

TEST(WofflineSectionTest, AStateThatCannotBeRead) {
    expect_down(side_rule("get_state", 0, "0x1f"), "Error: woffline get state woffline down fail 0x1f.\r\n");
}

TEST(WofflineSectionTest, TheUpperSideFailsByItsOwnName) {
    expect_lines(nodes(1, 0, 0) + good_side(0) + side_rule("get_state", 1, "0x811101a4"),
                 std::string(down_lines) + "Error: woffline get state woffline up fail 0x811101a4.\r\n" + no_interrupt);
    expect_lines(nodes(1, 0, 0) + good_side(0) + side_rule("get_state", 1, "0") + good_watch() +
                     side_rule("get_peer_state", 1, "0x2f"),
                 std::string(down_lines) + "Error: woffline get peer woffline up fail 0x2f.\r\n" + no_interrupt);
}

TEST(WofflineSectionTest, AnEnableThatCannotBeReadIsNotTouched) {
    expect_down(side_rule("get_state", 0, "0 state=0") + rule("get_en_state", "0x1f x1"),
                "Error: woffline get en fail 0x1f.\r\n");
    expect_interrupt(rule("get_irq_enable", "0x1f"), "Error: woffline get irq fail 0x1f.\r\n");
    expect_isolation(rule("get_sfu_isolate_en", "0x1f"), "Error: woffline get sfu fail 0x1f.\r\n");
}

TEST(WofflineSectionTest, AnEnableThatCannotBeSet) {
    expect_down(side_rule("get_state", 0, "0 state=0") + rule("get_en_state", "0 enable=1 x1") +
                    set_rule("set_en_state", 0, "0x2f x1"),
                "Error: woffline set en 0 fail 0x2f.\r\n");
    expect_interrupt(rule("get_irq_enable", "0 enable=0") + set_rule("set_irq_enable", 1, "0x2f"),
                     "Error: woffline get irq fail 0x2f.\r\n");
    expect_isolation(rule("get_sfu_isolate_en", "0 enable=0") + set_rule("set_sfu_isolate_en", 1, "0x2f"),
                     "Error: woffline get sfu fail 0x2f.\r\n");
}

TEST(WofflineSectionTest, AnEnableThatCannotBeReadBackIsRestored) {
    expect_down(side_rule("get_state", 0, "0 state=0") + rule("get_en_state", "0 enable=1 x1") +
                    set_rule("set_en_state", 0, "0 x1") + rule("get_en_state", "0x3f x1") +
                    set_rule("set_en_state", 1, "0 x1"),
                "Error: woffline original 1 set 0 get 0 not uniform en fail 0x3f.\r\n");
    expect_interrupt(rule("get_irq_enable", "0 x1") + set_rule("set_irq_enable", 1, "0") +
                         rule("get_irq_enable", "0x3f x1") + set_rule("set_irq_enable", 0, "0x4f"),
                     "Error: woffline irq original 0 set 1 get 0 not uniform en fail 0x3f.\r\n");
    expect_isolation(rule("get_sfu_isolate_en", "0 x1") + set_rule("set_sfu_isolate_en", 1, "0") +
                         rule("get_sfu_isolate_en", "0x3f x1") + set_rule("set_sfu_isolate_en", 0, "0"),
                     "Error: woffline sfu original 0 set 1 get 0 not uniform en fail 0x3f.\r\n");
}

TEST(WofflineSectionTest, AnEnableThatCannotBeRestored) {
    expect_down(side_rule("get_state", 0, "0 state=0") + rule("get_en_state", "0 enable=1 x1") +
                    set_rule("set_en_state", 0, "0 x1") + rule("get_en_state", "0 enable=0 x1") +
                    set_rule("set_en_state", 1, "0x4f x1"),
                "Error: woffline original 1 set 0 get 0 not uniform en fail 0x4f.\r\n");
    expect_interrupt(rule("get_irq_enable", "0 enable=0 x1") + set_rule("set_irq_enable", 1, "0") +
                         rule("get_irq_enable", "0 enable=1 x1") + set_rule("set_irq_enable", 0, "0x4f"),
                     "Error: woffline irq original 0 set 1 get 1 not uniform en fail 0x4f.\r\n");
    expect_isolation(rule("get_sfu_isolate_en", "0 enable=0 x1") + set_rule("set_sfu_isolate_en", 1, "0") +
                         rule("get_sfu_isolate_en", "0 enable=1 x1") + set_rule("set_sfu_isolate_en", 0, "0x4f"),
                     "Error: woffline sfu original 0 set 1 get 1 not uniform en fail 0x4f.\r\n");
}

TEST(WofflineSectionTest, AnEnableThatDoesNotFollow) {
    expect_down(side_rule("get_state", 0, "0 state=0") + rule("get_en_state", "0 enable=1 x2") +
                    set_rule("set_en_state", 0, "0 x1") + set_rule("set_en_state", 1, "0 x1"),
                "Error: woffline original 1 set 0 get 1 not uniform en fail 0x0.\r\n");
    expect_interrupt(rule("get_irq_enable", "0 enable=2") + set_rule("set_irq_enable", 0, "0") +
                         set_rule("set_irq_enable", 2, "0"),
                     "Error: woffline irq original 2 set 0 get 2 not uniform en fail 0x0.\r\n");
    expect_isolation(rule("get_sfu_isolate_en", "0") + set_rule("set_sfu_isolate_en", 1, "0") +
                         set_rule("set_sfu_isolate_en", 0, "0"),
                     "Error: woffline sfu original 0 set 1 get 0 not uniform en fail 0x0.\r\n");
}

TEST(WofflineSectionTest, APeerThatCannotBeRead) {
    expect_down(side_rule("get_state", 0, "0 state=0") + good_watch() + side_rule("get_peer_state", 0, "0x81110102"),
                "Error: woffline get peer woffline down fail 0x81110102.\r\n");
}

TEST(WofflineSectionTest, AFailedInterruptIsFollowedByTheIsolation) {
    expect_lines(nodes(2, 1, 1) + good_side(0) + good_side(1) + rule("get_irq_enable", "0x1f") +
                     rule("get_sfu_isolate_en", "0x2f"),
                 std::string(down_lines) + up_lines +
                     "Error: woffline get irq fail 0x1f.\r\n"
                     "Error: woffline get sfu fail 0x2f.\r\n");
}
