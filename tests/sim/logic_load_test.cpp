// Images for programmable logic: what each kind of chip makes of one, when that shows, and what is refused.
#include "sim/devices/chips/logic_load.h"

#include "sim/devices/management/restart.h"
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"
#include "tests/support/logic_image.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";
const std::string damaged = "0x81110109\n";

const image_parts fpga1{.part = 0x00F90001, .version = 0x0205};
const image_parts cpld0{.part = 0x00C50001, .version = 0x0108};
const image_parts card_logic{.part = 0x00C50101, .version = 0x0105};

std::string load_call(const std::string &operation, const std::string &which, const std::string &image) {
    return operation + "(" + which + ", buffer=" + bytes(image) + ", length=" + std::to_string(image.size()) + ")";
}

std::string fpga_call(const image_parts &image, const std::string &which = "chip_id=1") {
    return load_call("drv_fpga_load", which, image_bytes(image));
}

std::string cpld_call(const image_parts &image, const std::string &which = "chip_id=0") {
    return load_call("drv_cpld_load", which, image_bytes(image));
}

std::string jtag_call(const image_parts &image, const std::string &which = "chip_id=0") {
    return load_call("drv_jtag_load_cpld", which, image_bytes(image));
}

std::string card_call(const image_parts &image, const std::string &which) {
    return load_call("drv_logic_pic_load", which, image_bytes(image));
}

const std::string cold_start = "drv_reset_board()";
const std::string warm_start = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";

std::string version_of(int chip) {
    return "drv_cpld_get_version(chip_id=" + std::to_string(chip) + ")";
}

std::string is_version(int version) {
    return "0x0 version=" + std::to_string(version) + "\n";
}

// The card's register of its version, by its SPI bus.
std::string card_version(int chip) {
    return "drv_spi_read(chip_id=" + std::to_string(chip) + ", command=[01 00], command_length=2, length=2)";
}

// On the virtual clock of a state of its own: loading takes seconds.
class LogicLoad : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &options = {}) const {
        std::vector<std::string> all{"--state", state_, "--clock", "virtual"};
        all.insert(all.end(), options.begin(), options.end());
        return answers_of(all, lines);
    }

    std::string value(const std::string &path) const {
        return launcher_prints({"--state", state_, "--get", path});
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

// Every way of asking tells of the new logic: the chip's driver, the board's, the buses, and other seats.
TEST_F(LogicLoad, AnFpgaRunsWhatWasLoaded) {
    const std::vector<std::string> ask{version_of(1),
                                       "drv_board_get_cpld_ver(cpld_id=1)",
                                       "drv_cpld_get_build_time(chip_id=1)",
                                       "drv_cpld_reg_read(chip_id=1, offset=1)",
                                       "drv_cpld_reg_read(chip_id=1, offset=2)",
                                       "drv_cpld_reg_read(chip_id=1, offset=3)",
                                       "drv_cpld_reg_read(chip_id=1, offset=0x12)",
                                       "drv_localbus_read(chip_id=1, address=1, length=2)",
                                       version_of(2)};
    EXPECT_EQ(answers(ask), is_version(0x203) +
                                "0x0 ver=515\n0x0 year=2025 month=6 day=2\n0x0 data=515\n0x0 data=2025\n0x0 data=1538\n"
                                "0x0 data=0\n0x0 buffer=[02 03]\n" +
                                is_version(0x204));
    EXPECT_EQ(answers({fpga_call(fpga1)}), ok);
    EXPECT_EQ(answers(ask), is_version(0x205) +
                                "0x0 ver=517\n0x0 year=2026 month=1 day=10\n0x0 data=517\n0x0 data=2026\n"
                                "0x0 data=266\n0x0 data=1\n0x0 buffer=[02 05]\n" +
                                is_version(0x204));
    EXPECT_EQ(answers({"drv_cpld_get_version(inst_id=0xff000009, chip_id=1)"}, {"--board", "mpu_slave"}),
              is_version(0x205));
    EXPECT_EQ(value("slot9/board/logic/1/load"), "3\n");
    EXPECT_EQ(value("slot9/board/logic/1/version"), "0x0203\n");
}

TEST_F(LogicLoad, TheLatestImageCounts) {
    EXPECT_EQ(answers({fpga_call(fpga1), fpga_call({.part = 0x00F90001, .version = 0x0100, .configuration = "x"}),
                       version_of(1), fpga_call(fpga1), fpga_call(fpga1), version_of(1)}),
              ok + ok + is_version(0x100) + ok + ok + is_version(0x205));
    EXPECT_EQ(value("slot9/board/logic/1/loads"), "4\n");
}

// Its memory lives as long as it has power, and the processor's own restart leaves that alone.
TEST_F(LogicLoad, AnFpgaForgetsItsImageAtAColdStart) {
    EXPECT_EQ(answers({fpga_call(fpga1), warm_start, version_of(1), cold_start, version_of(1),
                       "drv_cpld_get_build_time(chip_id=1)", "drv_cpld_reg_read(chip_id=1, offset=0x12)",
                       fpga_call(fpga1), version_of(1)}),
              ok + ok + is_version(0x205) + ok + is_version(0x203) + "0x0 year=2025 month=6 day=2\n0x0 data=0\n0x0\n" +
                  is_version(0x205));
    const std::string remote = "inst_id=0xff000007, chip_id=1";
    const std::string ask = "drv_cpld_get_version(" + remote + ")";
    EXPECT_EQ(answers({fpga_call({.part = 0x00F90003, .version = 0x0311}, remote), ask}), ok + is_version(0x311));
    EXPECT_EQ(answers({ask}, {"--pull", "slot7", "--plug", "slot7"}), is_version(0x310));
}

// Between its first and its last byte an FPGA has no logic; who broke off the load left it so.
TEST_F(LogicLoad, AnFpgaWithoutLogicDoesNotAnswer) {
    std::string silent;
    const std::vector<std::string> calls{version_of(1),
                                         "drv_board_get_cpld_ver(cpld_id=1)",
                                         "drv_cpld_get_build_time(chip_id=1)",
                                         "drv_cpld_reg_read(chip_id=1, offset=0)",
                                         "drv_cpld_reg_write(chip_id=1, offset=15, data=1)",
                                         "drv_cpld_reg_dump(chip_id=1, num=1, size=64)",
                                         "drv_cpld_selftest(chip_id=1, size=64)",
                                         "drv_cpld_check_repeat_load(chip_id=1, size=64)",
                                         "drv_cpld_set_np_para(chip_id=1, slave_addr=1, np_addr=1)",
                                         "drv_localbus_read(chip_id=1, length=2)",
                                         "drv_localbus_write(chip_id=1, address=15, buffer=[00 01], length=2)",
                                         "drv_fpga_check_seu(chip_id=1, size=64)",
                                         "drv_fpga_clr_seu_err(chip_id=1)"};
    for (size_t i = 0; i < calls.size(); ++i) {
        silent += not_ready;
    }
    EXPECT_EQ(answers(calls, {"--set", "slot9/board/logic/1/load=begun"}), silent);
    EXPECT_EQ(answers({version_of(0), version_of(2), "drv_board_get_cpld_num()", warm_start, version_of(1)}),
              is_version(0x107) + is_version(0x204) + "0x0 num=3\n0x0\n" + not_ready);
    EXPECT_EQ(answers({fpga_call(fpga1), version_of(1)}), ok + is_version(0x205));
    EXPECT_EQ(answers({cold_start, version_of(1)}, {"--set", "slot9/board/logic/1/load=begun"}),
              ok + is_version(0x203));
}

// Registers begin as after power-on, and the upsets of the old configuration are gone with it.
TEST_F(LogicLoad, ALoadedFpgaBeginsAnew) {
    EXPECT_EQ(answers({"drv_cpld_reg_write(chip_id=1, offset=15, data=0x1234)",
                       "drv_cpld_set_np_para(chip_id=1, slave_addr=2, np_addr=0x0004000300020001)",
                       "drv_cpld_reg_read(chip_id=1, offset=0x600)", fpga_call(fpga1)},
                      {"--set", "slot9/cpld/1/0x600=3", "--set", "slot9/board/logic/1/upsets=3"}),
              ok + ok + "0x0 data=3\n" + ok);
    EXPECT_EQ(answers({"drv_cpld_reg_dump(chip_id=1, start=0xf, num=1, size=64)",
                       "drv_cpld_reg_dump(chip_id=1, start=0x20, num=5, size=64)",
                       "drv_cpld_reg_read(chip_id=1, offset=0x600)", "drv_fpga_check_seu(chip_id=1, size=64)"}),
              "0x0 buffer=\"00f: 005a\\n\"\n0x0 buffer=\"020: 0000 0000 0000 0000 0000\\n\"\n0x0 data=0\n"
              "0x0 result=0 msg=\"\"\n");
}

TEST_F(LogicLoad, UpsetsAreForgotten) {
    const std::string check = "drv_fpga_check_seu(chip_id=1, size=64)";
    EXPECT_EQ(answers({check, "drv_fpga_clr_seu_err(chip_id=2)", check, "drv_fpga_clr_seu_err(chip_id=1)", check,
                       "drv_fpga_clr_seu_err(chip_id=0)", "drv_fpga_clr_seu_err(chip_id=3)",
                       "drv_fpga_clr_seu_err(inst_id=0xff000006, chip_id=1)",
                       "drv_fpga_clr_seu_err(inst_id=0xff000005, chip_id=1)"},
                      {"--set", "slot9/board/logic/1/upsets=3"}),
              "0x0 result=1 msg=\"turned bits: 3\"\n0x0\n0x0 result=1 msg=\"turned bits: 3\"\n0x0\n"
              "0x0 result=0 msg=\"\"\n" +
                  not_supported + no_such_device + no_such_instance + not_supported);
    EXPECT_EQ(answers({warm_start, check, cold_start, check}, {"--set", "slot9/board/logic/1/upsets=5"}),
              ok + "0x0 result=1 msg=\"turned bits: 5\"\n" + ok + "0x0 result=0 msg=\"\"\n");
}

// The new half of its flash is taken by a cold start, of which there are several kinds.
TEST_F(LogicLoad, ACpldTakesItsImageAtAColdStart) {
    const std::string waits = "drv_cpld_reg_read(chip_id=0, offset=0x38)";
    EXPECT_EQ(answers({cpld_call({.part = 0x00C50001, .version = 0x0999}), cpld_call(cpld0), version_of(0), waits,
                       warm_start, version_of(0), waits, cold_start, version_of(0), waits,
                       "drv_cpld_get_build_time(chip_id=0)", "drv_cpld_reg_read(chip_id=0, offset=1)",
                       "drv_board_get_cpld_ver(cpld_id=0)", cold_start, version_of(0)}),
              ok + ok + is_version(0x107) + "0x0 data=1\n" + ok + is_version(0x107) + "0x0 data=1\n" + ok +
                  is_version(0x108) + "0x0 data=0\n0x0 year=2026 month=1 day=10\n0x0 data=8\n0x0 ver=264\n" + ok +
                  is_version(0x108));
    const std::string remote = "inst_id=0xff000007, chip_id=0";
    const std::string ask = "drv_cpld_get_version(" + remote + ")";
    EXPECT_EQ(answers({cpld_call({.part = 0x00C50002, .version = 0x0113}, remote), ask}), ok + is_version(0x112));
    EXPECT_EQ(answers({ask}, {"--pull", "slot7", "--plug", "slot7"}), is_version(0x113));
}

// It goes on with what it has, and starts with that.
TEST_F(LogicLoad, ALoadOfACpldThatWasBrokenOffChangesNothing) {
    EXPECT_EQ(answers({cpld_call(cpld0)}), ok);
    EXPECT_EQ(answers({version_of(0), cold_start, version_of(0)}, {"--set", "slot9/board/logic/0/load=begun"}),
              is_version(0x107) + ok + is_version(0x107));
    EXPECT_EQ(value("slot9/board/logic/0/load"), "0\n");
}

TEST_F(LogicLoad, TheTestPortRestartsTheBoard) {
    EXPECT_EQ(answers({warm_start, "drv_reset_get_mode()", fpga_call(fpga1), jtag_call(cpld0), version_of(0),
                       version_of(1), "drv_cpld_get_build_time(chip_id=0)", "drv_reset_get_mode()",
                       "drv_reset_get_reason(index=0)", cold_start, version_of(0)}),
              ok + "0x0 cool=0\n" + ok + ok + is_version(0x108) + is_version(0x203) +
                  "0x0 year=2026 month=1 day=10\n0x0 cool=1\n0x0 reason=4\n" + ok + is_version(0x108));
    EXPECT_EQ(answers({jtag_call({.part = 0x00C50002, .version = 1}, "inst_id=0xff000007, chip_id=0"),
                       jtag_call(cpld0, "inst_id=0xff000009, chip_id=0"), jtag_call(fpga1, "chip_id=1"),
                       jtag_call(fpga1), jtag_call(cpld0, "chip_id=3")}),
              not_supported + ok + not_supported + no_such_device + no_such_device);
}

// Each of the four takes seconds of board time; a new board's clock begins at a full hour.
TEST_F(LogicLoad, LoadingTakesItsTime) {
    const std::string clock = "drv_rtc_read_time()";
    const auto shows = [](int second) {
        return "0x0 time={subsecond=0 second=" + std::to_string(second) +
               " minute=0 hour=8 day_of_week=4 day_of_month=15 month=1 year=26}\n";
    };
    EXPECT_EQ(answers({clock, fpga_call(fpga1), clock, cpld_call(cpld0), clock, jtag_call(cpld0), clock,
                       card_call(card_logic, "chip_id=5"), clock, cpld_call(fpga1), clock},
                      {"--set", "slot9/board/logic/1/load_time=5000"}),
              shows(0) + ok + shows(5) + ok + shows(7) + ok + shows(9) + ok + shows(11) + no_such_device + shows(11));
}

// By the number of the card on the board's SPI buses, or by the card itself.
TEST_F(LogicLoad, TheLogicOfCards) {
    EXPECT_EQ(answers({card_version(5), card_call(card_logic, "chip_id=5"), card_version(5), card_version(4),
                       card_call(card_logic, "inst_id=0xff000004, chip_id=0"), card_version(4),
                       "drv_reset_board(inst_id=0xff000004)", card_version(4)}),
              "0x0 buffer=[04 01]\n0x0\n0x0 buffer=[05 01]\n0x0 buffer=[04 01]\n0x0\n0x0 buffer=[05 01]\n0x0\n"
              "0x0 buffer=[05 01]\n");
    EXPECT_EQ(answers({card_call(card_logic, "chip_id=1"), card_call(card_logic, "inst_id=0x0200ffff, chip_id=0"),
                       card_version(1), card_version(2), card_call(card_logic, "chip_id=3")},
                      {"--board", "lpu"}),
              ok + ok + "0x0 buffer=[05 01]\n0x0 buffer=[05 01]\n" + not_ready);
}

TEST_F(LogicLoad, ALoadOfACardThatWasBrokenOff) {
    const std::string begun = "slot5/pic/cpld/0/loading=1";
    const std::string write = "drv_spi_write(chip_id=5, frame=[00 9b 01 00], length=4)";
    EXPECT_EQ(answers({card_version(5), write, card_version(4), card_call(card_logic, "chip_id=5"), card_version(5)},
                      {"--set", begun}),
              not_ready + not_ready + "0x0 buffer=[04 01]\n0x0\n0x0 buffer=[05 01]\n");
    EXPECT_EQ(answers({card_version(5), "drv_reset_board(inst_id=0xff000005)", card_version(5)}, {"--set", begun}),
              not_ready + ok + "0x0 buffer=[05 01]\n");
}

TEST_F(LogicLoad, CardsThatAreNotReached) {
    EXPECT_EQ(answers({card_call(card_logic, "chip_id=1"), card_call(card_logic, "chip_id=16"),
                       card_call(card_logic, "chip_id=7"), card_call(card_logic, "inst_id=0xff000005, chip_id=1"),
                       card_call(card_logic, "inst_id=0xff000006, chip_id=0"),
                       "drv_board_set_power_off(inst_id=0xff000005, type=9)", card_call(card_logic, "chip_id=5"),
                       card_call(card_logic, "inst_id=0xff000005, chip_id=0")}),
              not_ready + no_such_device + no_such_device + no_such_device + no_such_instance + ok + not_ready +
                  not_ready);
    EXPECT_EQ(answers({card_call(card_logic, "chip_id=4"), card_call(card_logic, "inst_id=0xff000004, chip_id=0")},
                      {"--board", "mpu_slave"}),
              not_ready + not_ready);
    EXPECT_EQ(answers({card_call(card_logic, "chip_id=4")}, {"--set", "slot9/spi/chip/4/silent=1"}), not_ready);
    EXPECT_EQ(value("slot5/pic/cpld/0/loads"), "0\n");
    EXPECT_EQ(value("slot4/pic/cpld/0/loads"), "0\n");
}

// Nothing has changed after any of them.
TEST_F(LogicLoad, ImagesThatAreRefused) {
    const std::string good = image_bytes(fpga1);
    std::string other_checksum = good;
    other_checksum[20] = static_cast<char>(other_checksum[20] ^ 1);
    std::string other_byte = good;
    other_byte.back() = 'x';
    std::string other_version = good;
    other_version[8] = 6;
    std::string other_start = good;
    other_start[3] = 'g';
    const auto load = [](const std::string &image) { return load_call("drv_fpga_load", "chip_id=1", image); };
    const auto parts = [](image_parts changed) {
        changed.part = fpga1.part;
        return fpga_call(changed);
    };
    EXPECT_EQ(answers({load(other_checksum), load(other_byte), load(other_version),
                       load(good.substr(0, good.size() - 1)), load(good + "x"), load(good.substr(0, 24))}),
              damaged + damaged + damaged + damaged + damaged + damaged);
    EXPECT_EQ(
        answers({load(other_start), load(good.substr(0, 23)), load(""), load("KLOG"), parts({.version = 0x10000}),
                 parts({.version = 1, .year = 1999}), parts({.version = 1, .year = 2100}),
                 parts({.version = 1, .month = 0}), parts({.version = 1, .month = 13}), parts({.version = 1, .day = 0}),
                 parts({.version = 1, .day = 32}), parts({.version = 1, .configuration = ""})}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value +
            bad_value + bad_value + bad_value);
    EXPECT_EQ(answers({version_of(1), "drv_cpld_get_build_time(chip_id=1)"}),
              is_version(0x203) + "0x0 year=2025 month=6 day=2\n");
    EXPECT_EQ(value("slot9/board/logic/1/loads"), "0\n");
}

TEST_F(LogicLoad, ImagesForOtherChips) {
    EXPECT_EQ(answers({fpga_call(fpga1, "chip_id=2"), fpga_call({.part = 0x00F90003, .version = 1}), fpga_call(cpld0),
                       cpld_call({.part = 0x00C50002, .version = 1}), cpld_call(card_logic),
                       card_call(cpld0, "chip_id=5"), version_of(0), version_of(1), version_of(2)}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  is_version(0x107) + is_version(0x203) + is_version(0x204));
}

TEST_F(LogicLoad, ChipsThatTakeNoImage) {
    EXPECT_EQ(answers({fpga_call(cpld0, "chip_id=0"), cpld_call(fpga1, "chip_id=1"), fpga_call(fpga1, "chip_id=3"),
                       cpld_call(cpld0, "chip_id=3"), fpga_call(fpga1, "inst_id=0xff000005, chip_id=1"),
                       fpga_call(fpga1, "inst_id=0xff000006, chip_id=1"), fpga_call(fpga1, "inst_id=0, chip_id=1")}),
              not_supported + not_supported + no_such_device + no_such_device + not_supported + no_such_instance +
                  no_such_instance);
    EXPECT_EQ(answers({"drv_fpga_load(chip_id=1, buffer=null)", "drv_cpld_load(chip_id=0, buffer=null, length=24)",
                       "drv_jtag_load_cpld(chip_id=0, buffer=null)", "drv_logic_pic_load(chip_id=5, buffer=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer);
}

TEST(LogicLoadOfAltered, AChipWhosePartIsNotDescribedTakesNone) {
    EXPECT_EQ(
        answers(new_altered("mpu_master", {{"self/sim_board/logic/1/part", ""}, {"slot5/sim_pic/cpld/0/part", ""}}),
                {fpga_call(fpga1), card_call(card_logic, "chip_id=5"), version_of(1)}),
        not_supported + not_supported + is_version(0x203));
}

namespace {

using kestro_sim::board;
using kestro_sim::device_of;
using kestro_sim::logic_chip::family;

std::string code_of(const std::function<void()> &step) {
    try {
        step();
        return "done";
    } catch (const kestro_sim::refusal &refused) {
        return refused.code == kestro_sim::error::not_ready ? "not ready" : "refused otherwise";
    }
}

std::vector<uint8_t> as_bytes(const std::string &image) {
    return {image.begin(), image.end()};
}

} // namespace

// Of two at once the one that began later is the one that comes about, whichever ends first.
TEST(LogicLoadSteps, AnotherLoadThatBeganMeanwhile) {
    const test_board made = new_delivered("mpu_master");
    board simulated(made.description, made.state, made.seat);
    ASSERT_TRUE(simulated.begin_operation());
    const auto chip = board::at<family>(made.seat, 1);
    const auto first = kestro_sim::logic_load::begin_fpga(simulated, chip, as_bytes(image_bytes(fpga1)));
    const auto later = kestro_sim::logic_load::begin_fpga(
        simulated, chip, as_bytes(image_bytes({.part = 0x00F90001, .version = 0x0300})));
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_fpga(simulated, chip, first); }), "not ready");
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_fpga(simulated, chip, later); }), "done");
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_fpga(simulated, chip, later); }), "not ready");
    EXPECT_EQ(kestro_sim::logic_chip::read_version(simulated, chip), 0x0300U);
}

TEST(LogicLoadSteps, AColdStartInBetween) {
    const test_board made = new_delivered("mpu_master");
    board simulated(made.description, made.state, made.seat);
    ASSERT_TRUE(simulated.begin_operation());
    const auto cpld = board::at<family>(made.seat, 0);
    const auto on_card = board::at<kestro_sim::pic_cpld::family>("slot5");
    const auto load = kestro_sim::logic_load::begin_cpld(simulated, cpld, as_bytes(image_bytes(cpld0)));
    const auto of_card = kestro_sim::logic_load::begin_card(simulated, on_card, as_bytes(image_bytes(card_logic)));
    for (const std::string &place : {made.seat, std::string("slot5")}) {
        kestro_sim::change writes;
        note_restart(simulated, writes, place, kestro_sim::restart_reason::command, kestro_sim::restart_kind::cold);
        simulated.commit(writes);
    }
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_cpld(simulated, cpld, load); }), "not ready");
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_by_restart(simulated, cpld, load); }), "not ready");
    EXPECT_EQ(code_of([&] { kestro_sim::logic_load::finish_card(simulated, on_card, of_card); }), "not ready");
    EXPECT_EQ(kestro_sim::logic_chip::read_version(simulated, cpld), 0x0107U);
}

} // namespace kestro_tests
