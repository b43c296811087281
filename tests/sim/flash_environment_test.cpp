// Variables in flash: set and saved by name, seen as bytes in flash, and what a start makes of copies that are not
// whole.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <fstream>
#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string store_full = "0x8111010b\n";
const std::string not_ready = "0x8111010f\n";
const std::string restart = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";
const std::string save = "drv_env_save()";
const std::string save_ok = "drv_env_save_ok()";
const std::string print = "drv_env_print()";
const std::string saving = "0x0 status=255\n";
const std::string saved = "0x0 status=0\n";
const std::string of_production = "board_reset_mode=1\\nhard_reset_init_flag=1\\n";
const std::string after_restart = "board_reset_mode=\\nhard_reset_init_flag=1\\n";

std::string set(const std::string &name, const std::string &value) {
    return "drv_env_set(name=\"" + name + "\", value=\"" + value + "\")";
}

std::string get(const std::string &name) {
    return "drv_env_get(name=\"" + name + "\", size=256)";
}

std::string clr(const std::string &name) {
    return "drv_env_clr(name=\"" + name + "\")";
}

std::string value(const std::string &text) {
    return "0x0 value=\"" + text + "\"\n";
}

std::string listing(const std::string &text) {
    return "0x0 text=\"" + text + "\"\n";
}

test_board master() {
    return new_delivered("mpu_master");
}

// On the virtual clock, with the launcher's options behind those for the state.
struct flash_board {
    std::string state = new_scratch_dir() + "/state";

    std::string answers(const std::vector<std::string> &calls, const std::vector<std::string> &by_hand = {},
                        const std::string &seat = "mpu_master") const {
        std::vector<std::string> options{"--board", seat, "--state", state, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, calls);
    }
};

// The two halves of section 8, as they stand in the image.
std::string main_copy(const std::string &state) {
    return read_file(state + "/images/flash-slot9.bin").substr(0x80000, 0x80000);
}

std::string backup_copy(const std::string &state) {
    return read_file(state + "/images/flash-slot9.bin").substr(0x100000, 0x80000);
}

} // namespace

TEST(FlashEnvironment, WhatIsSetIsSeenByTheNextRun) {
    const test_board board = master();
    EXPECT_EQ(answers(board, {set("sdv_test", "kestro_ok"), get("sdv_test"), set("empty", "")}),
              ok + value("kestro_ok") + ok);
    EXPECT_EQ(answers(board, {get("sdv_test"), get("empty"), set("sdv_test", "again"), print}),
              value("kestro_ok") + value("") + ok + listing(of_production + "sdv_test=again\\nempty=\\n"));
    EXPECT_EQ(answers(board, {clr("sdv_test"), get("sdv_test"), clr("sdv_test"), print}),
              ok + no_such_device + no_such_device + listing(of_production + "empty=\\n"));
    EXPECT_EQ(answers(board, {"drv_env_clr_all()", print, get("hard_reset_init_flag")}),
              ok + listing("") + no_such_device);
}

TEST(FlashEnvironment, NumbersAreWrittenToTheirBase) {
    const auto written = [](const std::string &number, const std::string &base) {
        return "drv_env_num_set(name=\"n\", value=" + number + ", base=" + base + ")";
    };
    const auto read = [](const std::string &base) { return "drv_env_num_get(name=\"n\", base=" + base + ")"; };
    EXPECT_EQ(answers(master(), {written("8899", "10"), get("n"), read("10"), written("0xff", "16"), get("n"),
                                 read("16"), read("10"), written("0xffffffff", "2"), get("n"), read("2"),
                                 written("35", "36"), get("n"), written("0", "10"), get("n")}),
              ok + value("8899") + "0x0 value=8899\n" + ok + value("ff") + "0x0 value=255\n" + bad_value + ok +
                  value("11111111111111111111111111111111") + "0x0 value=0xffffffff\n" + ok + value("z") + ok +
                  value("0"));
    EXPECT_EQ(answers(master(), {written("1", "1"), written("1", "0"), written("1", "37"), read("10"),
                                 "drv_env_num_get(name=\"hard_reset_init_flag\", base=10)", set("n", ""), read("10")}),
              bad_value + bad_value + bad_value + no_such_device + "0x0 value=1\n" + ok + bad_value);
}

TEST(FlashEnvironment, NamesValuesAndAreas) {
    const std::string long_name(63, 'n');
    const std::string long_value(255, 'v');
    EXPECT_EQ(answers(master(), {set(long_name, long_value), get(long_name), set(long_name + "n", "1"),
                                 set("a", long_value + "v"), set("", "1"), set("a=b", "1"), set("a", "b=c=d"), get("a"),
                                 set("with blanks", " 1 "), get("with blanks"), set("A", "other"), get("a"), get("")}),
              ok + value(long_value) + bad_value + bad_value + bad_value + bad_value + ok + value("b=c=d") + ok +
                  value(" 1 ") + ok + value("b=c=d") + no_such_device);
    EXPECT_EQ(answers(master(), {set("a", "123"), "drv_env_get(name=\"a\", size=3)", "drv_env_get(name=\"a\", size=4)",
                                 "drv_env_get(name=\"a\", size=0)"}),
              ok + too_small + value("123") + too_small);
}

TEST(FlashEnvironment, MissingPointers) {
    const std::vector<std::string> calls{"drv_env_get(name=null, size=8)",
                                         "drv_env_get(name=\"a\", size=8, value=null)",
                                         "drv_env_set(name=null, value=\"1\")",
                                         "drv_env_set(name=\"a\", value=null)",
                                         "drv_env_num_get(name=null, base=10)",
                                         "drv_env_num_get(name=\"a\", base=10, value=null)",
                                         "drv_env_num_set(name=null, base=10)",
                                         "drv_env_save_ok(status=null)",
                                         "drv_env_clr(name=null)"};
    std::string refused;
    for (size_t i = 0; i < calls.size(); ++i) {
        refused += null_pointer;
    }
    EXPECT_EQ(answers(master(), calls), refused);
    EXPECT_EQ(answers(master(), {"drv_env_print(text=null)"}), "-2129592063\n"); // null_pointer, signed
}

TEST(FlashEnvironment, NotOnALineCard) {
    EXPECT_EQ(answers(new_delivered("lpu"), {get("a"), set("a", "1"), "drv_env_num_get(name=\"a\", base=10)",
                                             "drv_env_num_set(name=\"a\", value=1, base=10)", save, save_ok, clr("a"),
                                             "drv_env_clr_all()", print}),
              not_supported + not_supported + not_supported + not_supported + not_supported + not_supported +
                  not_supported + not_supported + "-2129591900\n"); // not_supported, signed
}

TEST(FlashEnvironment, EachBoardHasItsOwn) {
    const test_board board = master();
    EXPECT_EQ(answers(board, {set("a", "9")}), ok);
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {get("a"), set("a", "10"), save}), no_such_device + ok + ok);
    EXPECT_EQ(answers(board, {get("a"), save_ok}), value("9") + saved);
}

TEST(FlashEnvironment, WhatWasNotSavedIsGoneAfterAStart) {
    EXPECT_EQ(answers(master(), {set("a", "1"), clr("hard_reset_init_flag"), restart, print}),
              ok + ok + ok + listing(after_restart));
    EXPECT_EQ(answers(master(), {"drv_env_clr_all()", restart, print}), ok + ok + listing(after_restart));
}

TEST(FlashEnvironment, ASaveTakesItsTime) {
    EXPECT_EQ(flash_board().answers({save_ok, set("a", "1"), save, save_ok, "wait 2.999", save_ok, save, "wait 0.001",
                                     save_ok, restart, save_ok, print}),
              saved + ok + ok + saving + saving + not_ready + saved + ok + saved + listing(after_restart + "a=1\\n"));
}

TEST(FlashEnvironment, ASaveIsOfWhatWasSetBeforeIt) {
    EXPECT_EQ(flash_board().answers({set("a", "1"), save, "wait 1", set("a", "2"), set("b", "3"),
                                     clr("hard_reset_init_flag"), get("a"), "wait 3", get("a"), restart, print}),
              ok + ok + ok + ok + ok + value("2") + value("2") + ok + listing(after_restart + "a=1\\n"));
}

TEST(FlashEnvironment, ASaveGoesOnWhenNobodyAsks) {
    const flash_board board;
    board.answers({set("a", "1"), save, "wait 2"});
    board.answers({"wait 1"});
    EXPECT_EQ(board.answers({restart, get("a")}), ok + value("1"));
}

// Time that passes without a call of a driver is time of the board.
TEST(FlashEnvironment, ASaveIsDoneBehindARunWithoutADriver) {
    const flash_board board;
    EXPECT_EQ(board.answers({set("a", "1"), save, save_ok}), ok + ok + saving);
    EXPECT_EQ(board.answers({"wait 2"}), "");
    EXPECT_EQ(board.answers({save_ok}), saving);
    EXPECT_EQ(board.answers({"wait 1"}), "");
    EXPECT_EQ(board.answers({save_ok}), saved);
}

// A block that was damaged where the save is about to write is mended by it, and hinders nobody else.
TEST(FlashEnvironment, ADamagedBlockIsMendedByASave) {
    const flash_board board;
    const std::string elsewhere = "drv_flash_read(section_id=0, len=2)";
    const std::string as_it_was = board.answers({elsewhere});
    EXPECT_TRUE(as_it_was.starts_with("0x0 buffer=[")) << as_it_was;
    EXPECT_EQ(board.answers({set("a", "1"), save, "wait 0.5"}), ok + ok);
    const std::string image = board.state + "/images/flash-slot9.bin";
    std::string bytes = read_file(image);
    bytes[0x80000 + 400000] = static_cast<char>(bytes[0x80000 + 400000] ^ 1);
    std::ofstream(image, std::ios::binary) << bytes;
    EXPECT_EQ(board.answers({"wait 3", elsewhere, save_ok, restart, get("a")}), as_it_was + saved + ok + value("1"));
}

TEST(FlashEnvironment, ASaveThatWasSetByHand) {
    const std::string store = "slot9/env/store/0/";
    const flash_board board;
    EXPECT_EQ(board.answers({set("a", "1"), save}), ok + ok);
    EXPECT_EQ(board.answers({save_ok}, {"--set", store + "save_time=0", "--set", store + "began=9223372036854775807"}),
              saved);
    EXPECT_EQ(board.answers({save}, {"--set", store + "save_time=3000"}), ok);
    EXPECT_EQ(board.answers({save_ok, save, save_ok}, {"--set", store + "steps=100"}), saved + ok + saving);
}

// The slave's main copy is torn by the first pull, its backup by the second.
TEST(FlashEnvironment, APulledBoardSavesNoMore) {
    const flash_board slave;
    const auto pull = [&] { slave.answers({"wait 5"}, {"--pull", "slot10"}); };
    const auto answers_when_plugged = [&](const std::vector<std::string> &calls) {
        return slave.answers(calls, {"--plug", "slot10"}, "mpu_slave");
    };
    EXPECT_EQ(slave.answers({set("a", "1"), save, "wait 1"}, {}, "mpu_slave"), ok + ok);
    pull();
    EXPECT_EQ(answers_when_plugged({print, save_ok}), listing(of_production) + saved);
    EXPECT_EQ(slave.answers({set("a", "2"), save, "wait 2"}, {}, "mpu_slave"), ok + ok);
    pull();
    EXPECT_EQ(answers_when_plugged({print}), listing(of_production + "a=2\\n"));
}

TEST(FlashEnvironment, BothCopiesStandInSectionEight) {
    const flash_board board;
    EXPECT_EQ(
        board.answers({set("x", "yz"), save, "wait 3", save_ok, clr("hard_reset_init_flag"),
                       "drv_flash_read(section_id=8, offset=0, len=12)",
                       "drv_flash_read(section_id=8, offset=16, len=50)",
                       "drv_flash_mtd_read(mtd_name=\"env\", offset=59, len=6)",
                       "drv_flash_mtd_read(mtd_name=\"env_bak\", offset=59, len=6)",
                       "drv_flash_read(section_id=8, offset=0x8003b, len=6)"}),
        ok + ok + saved + ok + "0x0 buffer=" + bytes(std::string("KENV\x02\0\0\0\x2f\0\0\0", 12)) + "\n" +
            "0x0 buffer=" + bytes(std::string("board_reset_mode=1\0hard_reset_init_flag=1\0x=yz\0\xFF\xFF\xFF", 50)) +
            "\n0x0 buffer=" + bytes(std::string("=yz\0\xFF\xFF", 6)) + "\n0x0 buffer=" +
            bytes(std::string("=yz\0\xFF\xFF", 6)) + "\n0x0 buffer=" + bytes(std::string("=yz\0\xFF\xFF", 6)) + "\n");
    EXPECT_EQ(main_copy(board.state), backup_copy(board.state));
}

TEST(FlashEnvironment, ADamagedCopyIsPassedOver) {
    const auto damaged = [](const std::string &offset) {
        return "drv_flash_write(section_id=8, offset=" + offset + ", buffer=[00])";
    };
    EXPECT_EQ(flash_board().answers({damaged("20"), restart, print}), ok + ok + listing(after_restart));
    EXPECT_EQ(flash_board().answers({damaged("0x80008"), restart, print}), ok + ok + listing(after_restart));
    EXPECT_EQ(flash_board().answers(
                  {damaged("0"), damaged("0x80000"), restart, print, set("a", "1"), save, "wait 3", restart, print}),
              ok + ok + ok + listing("") + ok + ok + ok + listing("a=1\\n"));
    EXPECT_EQ(
        flash_board().answers({"drv_flash_mtd_write(mtd_name=\"env\", offset=16, buffer=[00])", restart, print, save,
                               "wait 3", restart, "drv_flash_mtd_read(mtd_name=\"env\", offset=16, len=1)"}),
        ok + ok + listing(after_restart) + ok + ok + "0x0 buffer=[62]\n");
}

// 34 steps in 3 s: 17 for each copy. Until the first one is whole again, the other holds what was saved before.
TEST(FlashEnvironment, PowerThatGoesAtAnyStepLeavesTheOldOrTheNew) {
    const flash_board board;
    std::string kept = "first";
    board.answers({set("a", kept), save, "wait 3"});
    for (int step = 0; step <= 34; ++step) {
        const int milliseconds = (step * 3000 + 33) / 34;
        const std::string wanted = "at step " + std::to_string(step);
        const std::string waited =
            "wait " + std::to_string(milliseconds / 1000) + "." + std::to_string(1000 + milliseconds % 1000).substr(1);
        const std::string expected = step < 17 ? kept : wanted;
        EXPECT_EQ(board.answers({set("a", wanted), save, waited, restart, get("a"), save_ok}),
                  ok + ok + ok + value(expected) + saved)
            << step;
        kept = expected;
    }
}

TEST(FlashEnvironment, HoldsSixtyKibibytes) {
    const flash_board board;
    const std::string text(250, 't');
    std::vector<std::string> calls;
    for (int i = 100; i < 400; ++i) {
        calls.push_back(set("v" + std::to_string(i), text));
    }
    // Each takes 256 bytes, the head 16, what is there from production 42.
    const int fitting = (60 * 1024 - 16 - 42) / 256;
    std::string expected;
    for (int i = 0; i < 300; ++i) {
        expected += i < fitting ? ok : store_full;
    }
    EXPECT_EQ(board.answers(calls), expected);
    std::string all = of_production;
    for (int i = 100; i < 100 + fitting; ++i) {
        all += "v" + std::to_string(i) + "=" + text + "\\n";
    }
    EXPECT_EQ(board.answers({print, "drv_env_clr(name=\"v100\")", set("v100", text), save, "wait 3", restart,
                             get("v338"), get("v339"), get("v100")}),
              listing(all) + ok + ok + ok + ok + value(text) + no_such_device + value(text));
    EXPECT_EQ(main_copy(board.state), backup_copy(board.state));
}

} // namespace kestro_tests
