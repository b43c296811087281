// Retimers of the front ports: brought up in three steps, locked in board time, and the same in registers and texts.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";
const std::string out_of_range = "0x81110107\n";
const std::string soft_init = "drv_cdr_soft_init(inst_id=0xffffffff)";
const std::string init_chip = "drv_cdr_init_chip(inst_id=0xffffffff)";

// Interface 0 of chip 0 has four lanes at 25 Gbit/s; 1 and 2 share a sub-chip, two lanes each at 10 Gbit/s. Nothing is
// plugged into interface 1 of chip 1.
struct inf {
    int chip;
    int number;
    int rate;

    std::string call(const std::string &operation, const std::string &more = "") const {
        return "drv_cdr_" + operation + "(chip_id=" + std::to_string(chip) +
               ", selector={inf_id=" + std::to_string(number) + " chl_rate=" + std::to_string(rate) + "}" + more + ")";
    }
    std::string set_up() const {
        return call("init_interface");
    }
    std::string take_down() const {
        return call("destroy_interface");
    }
    std::string line_link() const {
        return call("get_interface_link", ", dir=0");
    }
    std::string host_link() const {
        return call("get_interface_link", ", dir=1");
    }
    std::string config() const {
        return call("get_interface_config", ", size=10240");
    }
    std::string status() const {
        return call("get_interface_status", ", size=10240");
    }
    std::string eye() const {
        return call("get_digit_eye", ", size=10240");
    }
};

const inf wide{0, 0, 25};
const inf pair{0, 1, 10};
const inf other_pair{0, 2, 10};
const inf unplugged{1, 1, 25};

const std::string link_up = "0x0 status=1\n";
const std::string link_down = "0x8111010f status=0\n";

std::string read_cdr(int chip, int part, const std::string &address) {
    return "drv_cdr_reg_read(chip_id=" + std::to_string(chip) + ", sub_chip_id=" + std::to_string(part) +
           ", reg_addr=" + address + ")";
}

std::string write_cdr(int chip, int part, const std::string &address, const std::string &to) {
    return "drv_cdr_reg_write(chip_id=" + std::to_string(chip) + ", sub_chip_id=" + std::to_string(part) +
           ", reg_addr=" + address + ", value=" + to + ")";
}

std::string word(uint32_t number) {
    return "0x0 value=" + std::to_string(number) + "\n";
}

std::string text(const std::string &lines) {
    return "0x0 text=\"" + lines + "\"\n";
}

class CdrDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat_};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }
    void bring_up() const {
        EXPECT_EQ(answers({soft_init, init_chip}), ok + ok);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string seat_ = "mpu_master";
};

} // namespace

TEST_F(CdrDriver, NothingAnswersBeforeItWasBroughtUp) {
    EXPECT_EQ(answers({init_chip, wide.set_up(), wide.line_link(), read_cdr(0, 0, "0")}),
              not_ready + not_ready + not_ready + not_ready);
    EXPECT_EQ(
        answers({soft_init, wide.set_up(), read_cdr(0, 0, "0"), init_chip, read_cdr(0, 0, "0"), read_cdr(1, 1, "1"),
                 wide.line_link(), wide.config(), wide.status(), wide.eye(), wide.take_down()}),
        ok + not_ready + not_ready + ok + word(0x4B43) + word(3) + not_ready + not_ready + not_ready + not_ready +
            not_ready);
}

TEST_F(CdrDriver, LinksComeUpWhileTheDriverWaits) {
    bring_up();
    EXPECT_EQ(answers({wide.set_up(), wide.line_link(), wide.host_link()}), ok + link_up + link_up);
    EXPECT_EQ(answers({pair.set_up(), pair.line_link(), pair.host_link(), other_pair.line_link()}),
              ok + link_up + link_up + not_ready);
    EXPECT_EQ(answers({unplugged.set_up(), unplugged.line_link(), unplugged.host_link()}), ok + link_down + link_up);
}

TEST_F(CdrDriver, SlowLanesLockAfterTheDriverWentOn) {
    bring_up();
    const std::string lock = read_cdr(0, 0, "5");
    EXPECT_EQ(answers({wide.set_up(), lock, wide.line_link(), "wait 1.499", lock, wide.host_link(), "wait 0.001", lock,
                       wide.line_link(), wide.host_link()},
                      {"--set", "slot9/cdr/interface/0/lock_time=2000"}),
              ok + word(0) + link_down + word(0) + link_down + word(0xF) + link_up + link_up);
}

TEST_F(CdrDriver, ALinkIsKeptAtItsRate) {
    bring_up();
    const std::vector<std::string> slow{"--set", "slot9/cdr/interface/0/lock_time=2000"};
    EXPECT_EQ(answers({wide.set_up(), "wait 1.5", wide.set_up(), wide.line_link(), init_chip, wide.line_link()}, slow),
              ok + ok + link_up + ok + link_up);
    // Another rate is another lock, and one that does not arrive gives none.
    const inf slower{0, 0, 10};
    EXPECT_EQ(answers({slower.set_up(), wide.line_link(), slower.line_link(), "wait 60", slower.line_link(),
                       slower.host_link(), wide.set_up(), wide.line_link(), "wait 1.5", wide.line_link()}),
              ok + not_ready + link_down + link_down + link_down + ok + link_down + link_up);
}

TEST_F(CdrDriver, LinksFollowTheirSignal) {
    bring_up();
    EXPECT_EQ(answers({wide.set_up(), wide.line_link()}), ok + link_up);
    EXPECT_EQ(
        answers({wide.line_link(), wide.host_link(), read_cdr(0, 0, "4"), read_cdr(0, 0, "5"), read_cdr(0, 0, "7")},
                {"--set", "slot9/cdr/interface/0/line_signal=0xb"}),
        link_down + link_up + word(0xB) + word(0xB) + word(0xF));
    EXPECT_EQ(
        answers({wide.line_link(), wide.host_link(), read_cdr(0, 0, "6"), read_cdr(0, 0, "7")},
                {"--set", "slot9/cdr/interface/0/line_signal=0xf", "--set", "slot9/cdr/interface/0/host_signal=0"}),
        link_up + link_down + word(0) + word(0));
    EXPECT_EQ(answers({wide.line_link(), wide.host_link()}, {"--set", "slot9/cdr/interface/0/host_signal=0xf", "--set",
                                                             "slot9/cdr/interface/0/host_rate=28"}),
              link_up + link_down);
}

// At 22 % the fourth lane, with its longer trace, has 19 left.
TEST_F(CdrDriver, ASignalThatIsTooBadDoesNotLock) {
    bring_up();
    EXPECT_EQ(answers({wide.set_up(), wide.line_link(), read_cdr(0, 0, "4"), read_cdr(0, 0, "5")},
                      {"--set", "slot9/cdr/interface/0/line_quality=23"}),
              ok + link_up + word(0xF) + word(0xF));
    EXPECT_EQ(answers({wide.line_link(), read_cdr(0, 0, "5"), read_cdr(0, 0, "0x20"), read_cdr(0, 0, "0x23")},
                      {"--set", "slot9/cdr/interface/0/line_quality=22"}),
              link_down + word(0x7) + word(0x2C48) + word(0));
}

TEST_F(CdrDriver, TextsAgreeWithTheRegisters) {
    bring_up();
    EXPECT_EQ(answers({pair.set_up(), pair.config(), pair.status(), pair.eye()}),
              ok +
                  text("chip 0: identity 0x4b43, revision 2\\n"
                       "interface 1: sub-chip 1, lanes 0 to 1, 10 Gbit/s\\n"
                       "line lane 0: equaliser adapts\\n"
                       "line lane 1: equaliser adapts\\n") +
                  text("line: link up\\n"
                       "line lane 0: signal, locked, equaliser 4\\n"
                       "line lane 1: signal, locked, equaliser 4\\n"
                       "host: link up\\n"
                       "host lane 0: signal, locked, equaliser 1\\n"
                       "host lane 1: signal, locked, equaliser 1\\n") +
                  text("line lane 0: eye 280 mV high, 600 mUI wide\\n"
                       "line lane 1: eye 276 mV high, 595 mUI wide\\n"
                       "host lane 0: eye 360 mV high, 700 mUI wide\\n"
                       "host lane 1: eye 356 mV high, 695 mUI wide\\n"));
    // The other half of the sub-chip has a signal, but nobody set it up.
    EXPECT_EQ(answers({read_cdr(0, 1, "4"), read_cdr(0, 1, "5"), read_cdr(0, 1, "6"), read_cdr(0, 1, "7"),
                       read_cdr(0, 1, "8"), read_cdr(0, 1, "9"), read_cdr(0, 1, "10"), read_cdr(0, 1, "11"),
                       read_cdr(0, 1, "0x10"), read_cdr(0, 1, "0x12"), read_cdr(0, 1, "0x14"), read_cdr(0, 1, "0x17"),
                       read_cdr(0, 1, "0x20"), read_cdr(0, 1, "0x21"), read_cdr(0, 1, "0x22"), read_cdr(0, 1, "0x24"),
                       read_cdr(0, 1, "0x25"), read_cdr(0, 1, "0x27")}),
              word(0xF) + word(0x3) + word(0xF) + word(0x3) + word(10) + word(10) + word(0) + word(0) + word(4) +
                  word(0) + word(1) + word(0) + word(0x8C78) + word(0x8A77) + word(0) + word(0xB48C) + word(0xB28B) +
                  word(0));
}

TEST_F(CdrDriver, LanesAreThoseOfTheSubChip) {
    bring_up();
    EXPECT_EQ(answers({other_pair.set_up(), other_pair.eye(), read_cdr(0, 1, "5")}),
              ok +
                  text("line lane 2: eye 240 mV high, 550 mUI wide\\n"
                       "line lane 3: eye 236 mV high, 545 mUI wide\\n"
                       "host lane 2: eye 360 mV high, 700 mUI wide\\n"
                       "host lane 3: eye 356 mV high, 695 mUI wide\\n") +
                  word(0xC));
}

TEST_F(CdrDriver, EyesOfNoSignalAreClosed) {
    bring_up();
    EXPECT_EQ(answers({unplugged.set_up(), unplugged.eye(), unplugged.status()}),
              ok +
                  text("line lane 0: eye closed\\nline lane 1: eye closed\\n"
                       "line lane 2: eye closed\\nline lane 3: eye closed\\n"
                       "host lane 0: eye 360 mV high, 700 mUI wide\\n"
                       "host lane 1: eye 356 mV high, 695 mUI wide\\n"
                       "host lane 2: eye 352 mV high, 690 mUI wide\\n"
                       "host lane 3: eye 348 mV high, 685 mUI wide\\n") +
                  text("line: link down\\n"
                       "line lane 0: no signal, not locked, equaliser 0\\n"
                       "line lane 1: no signal, not locked, equaliser 0\\n"
                       "line lane 2: no signal, not locked, equaliser 0\\n"
                       "line lane 3: no signal, not locked, equaliser 0\\n"
                       "host: link up\\n"
                       "host lane 0: signal, locked, equaliser 1\\n"
                       "host lane 1: signal, locked, equaliser 1\\n"
                       "host lane 2: signal, locked, equaliser 1\\n"
                       "host lane 3: signal, locked, equaliser 1\\n"));
}

// Each step away from the best setting costs 6 % of the signal: 70 % at 4, so 58 % at 6, and 4 % at 15.
TEST_F(CdrDriver, AnEqualiserMayBeHeld) {
    bring_up();
    EXPECT_EQ(answers({pair.set_up(), write_cdr(0, 1, "0x10", "0x86"), read_cdr(0, 1, "0x10"), read_cdr(0, 1, "0x11"),
                       pair.eye(), pair.config()}),
              ok + ok + word(0x86) + word(4) +
                  text("line lane 0: eye 232 mV high, 540 mUI wide\\n"
                       "line lane 1: eye 276 mV high, 595 mUI wide\\n"
                       "host lane 0: eye 360 mV high, 700 mUI wide\\n"
                       "host lane 1: eye 356 mV high, 695 mUI wide\\n") +
                  text("chip 0: identity 0x4b43, revision 2\\n"
                       "interface 1: sub-chip 1, lanes 0 to 1, 10 Gbit/s\\n"
                       "line lane 0: equaliser held at 6\\n"
                       "line lane 1: equaliser adapts\\n"));
    EXPECT_EQ(
        answers({write_cdr(0, 1, "0x11", "0xff"), read_cdr(0, 1, "0x11"), read_cdr(0, 1, "0x10"), read_cdr(0, 1, "5"),
                 pair.line_link(), write_cdr(0, 1, "0x11", "0x0f"), read_cdr(0, 1, "0x11"), pair.line_link()}),
        ok + word(0x8F) + word(0x86) + word(0x1) + link_down + ok + word(4) + link_up);
}

TEST_F(CdrDriver, WhatIsReadOnlyStays) {
    bring_up();
    EXPECT_EQ(
        answers({write_cdr(0, 0, "0", "1"), write_cdr(0, 0, "5", "0xf"), write_cdr(0, 0, "8", "25"),
                 write_cdr(0, 0, "0x20", "1"), write_cdr(0, 0, "2", "0xbeef"), read_cdr(0, 0, "0"), read_cdr(0, 0, "5"),
                 read_cdr(0, 0, "8"), read_cdr(0, 0, "0x20"), read_cdr(0, 0, "2"), read_cdr(0, 1, "2")}),
        ok + ok + ok + ok + ok + word(0x4B43) + word(0) + word(0) + word(0) + word(0xBEEF) + word(0));
}

TEST_F(CdrDriver, AnInterfaceIsTakenDownAlone) {
    bring_up();
    EXPECT_EQ(
        answers({pair.set_up(), other_pair.set_up(), inf{0, 1, 25}.take_down(), pair.take_down(), pair.line_link(),
                 pair.take_down(), other_pair.line_link(), read_cdr(0, 1, "5"), pair.set_up(), pair.line_link()}),
        ok + ok + not_ready + ok + not_ready + not_ready + link_up + word(0xC) + ok + link_up);
}

TEST_F(CdrDriver, AChipThatWasDestroyedForgets) {
    bring_up();
    const std::string destroy_0 = "drv_cdr_destroy_chip(chip_id=0)";
    EXPECT_EQ(answers({pair.set_up(), unplugged.set_up(), write_cdr(0, 0, "2", "7"), write_cdr(1, 0, "2", "8"),
                       write_cdr(0, 1, "0x10", "0x81"), destroy_0, destroy_0, pair.line_link(), read_cdr(0, 0, "2"),
                       read_cdr(1, 0, "2"), unplugged.host_link(), init_chip}),
              ok + ok + ok + ok + ok + ok + ok + not_ready + not_ready + word(8) + link_up + not_ready);
    EXPECT_EQ(answers({soft_init, init_chip, pair.line_link(), read_cdr(0, 0, "2"), read_cdr(0, 1, "0x10"),
                       read_cdr(1, 0, "2"), unplugged.host_link()}),
              ok + ok + not_ready + word(0) + word(0) + word(8) + link_up);
}

TEST_F(CdrDriver, RefusesWhatThereIsNot) {
    bring_up();
    EXPECT_EQ(answers({"drv_cdr_destroy_chip(chip_id=2)", inf{2, 0, 25}.set_up(), inf{0, 3, 25}.set_up(),
                       inf{1, 2, 25}.take_down(), read_cdr(2, 0, "0"), read_cdr(0, 2, "0"), write_cdr(0, 2, "2", "0")}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  no_such_device);
    EXPECT_EQ(answers({inf{0, 0, 0}.set_up(), inf{0, 0, 24}.set_up(), inf{0, 0, 0}.line_link(), wide.set_up(),
                       wide.call("get_interface_link", ", dir=2"), write_cdr(0, 0, "2", "0x10000")}),
              bad_value + bad_value + not_ready + ok + bad_value + bad_value);
    EXPECT_EQ(answers({read_cdr(0, 0, "3"), read_cdr(0, 0, "0x28"), write_cdr(0, 0, "0x28", "0"),
                       read_cdr(0, 0, "0xffffffff")}),
              out_of_range + out_of_range + out_of_range + out_of_range);
    EXPECT_EQ(answers({"drv_cdr_soft_init(inst_id=0xff000001)", "drv_cdr_init_chip(inst_id=0xff000001)",
                       "drv_cdr_destroy_chip(inst_id=0xff000001)"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST_F(CdrDriver, ALineCardHasNone) {
    const std::string of = "(inst_id=0xff000007)";
    EXPECT_EQ(answers({"drv_cdr_soft_init" + of, "drv_cdr_init_chip" + of, "drv_cdr_destroy_chip" + of,
                       "drv_cdr_reg_read" + of, "drv_cdr_init_interface(inst_id=0xff000007, selector={chl_rate=25})"}),
              not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST_F(CdrDriver, EachUnitHasItsOwn) {
    bring_up();
    EXPECT_EQ(answers({wide.set_up()}), ok);
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({wide.line_link()}), not_ready);
    seat_ = "mpu_master";
    EXPECT_EQ(answers({wide.line_link()}), link_up);
}

TEST_F(CdrDriver, MissingAreas) {
    bring_up();
    EXPECT_EQ(
        answers({wide.set_up(), "drv_cdr_init_interface(selector=null)", "drv_cdr_destroy_interface(selector=null)",
                 "drv_cdr_get_interface_config(selector=null, size=64)", "drv_cdr_get_interface_link(selector=null)",
                 wide.call("get_interface_config", ", text=null, size=64"),
                 wide.call("get_interface_status", ", text=null, size=64"),
                 wide.call("get_digit_eye", ", text=null, size=64"), wide.call("get_interface_link", ", status=null"),
                 "drv_cdr_reg_read(value=null)"}),
        ok + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer + null_pointer);
    EXPECT_EQ(answers({wide.call("get_interface_config", ", size=64"), wide.call("get_digit_eye", ", size=64")}),
              too_small + too_small);
}

} // namespace kestro_tests
