// Variables in reserved memory: set, cleared, saved, and what starts of the board leave of them.
#include "sim/core/env_image.h"
#include "sim/core/store.h"
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string store_full = "0x8111010b\n";
const std::string mode = "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10)";
const std::string warm_reset = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";
const std::string listing = "drv_memenv_print()";

// Where the two copies stand in the image of the memory.
constexpr size_t main_at = 0x10000;
constexpr size_t backup_at = 0x12000;
constexpr size_t half_size = 0x2000;

std::string get(const std::string &name) {
    return "drv_memenv_get(name=\"" + name + "\", size=256)";
}

std::string set(const std::string &name, const std::string &value) {
    return "drv_memenv_set(name=\"" + name + "\", value=\"" + value + "\")";
}

std::string clear(const std::string &name) {
    return "drv_memenv_clr(name=\"" + name + "\")";
}

std::string value(const std::string &text) {
    return "0x0 value=\"" + text + "\"\n";
}

std::string listed(const std::string &lines) {
    return "0x0 text=\"" + lines + "\"\n";
}

std::string half(const test_board &board, size_t at) {
    return read_file(board.state + "/images/himem-slot9.bin").substr(at, half_size);
}

} // namespace

TEST(MemoryEnvironment, ANewBoardHasWhatStartUpSoftwarePutThere) {
    EXPECT_EQ(answers(new_delivered("mpu_master"), {mode, get("kestro_softreset_mode"), listing}),
              "0x0 value=1\n" + value("1") + listed("kestro_softreset_mode=1\\n"));
}

TEST(MemoryEnvironment, AnotherProcessSeesWhatWasSet) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set("town", "Bern = 1"), set("empty", ""), set("town 2", "%s")}), ok + ok + ok);
    EXPECT_EQ(answers(board, {get("town"), get("empty"), get("town 2"), listing}),
              value("Bern = 1") + value("") + value("%s") +
                  listed("kestro_softreset_mode=1\\ntown=Bern = 1\\nempty=\\ntown 2=%s\\n"));
    EXPECT_EQ(answers(board, {set("town", "Thun"), get("town")}), ok + value("Thun"));
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {get("town")}), no_such_device);
}

TEST(MemoryEnvironment, NumbersAreWrittenToTheirBase) {
    const auto written = [](const std::string &number, const std::string &base) {
        return answers(new_delivered("mpu_master"),
                       {"drv_memenv_num_set(name=\"n\", value=" + number + ", base=" + base + ")", get("n"),
                        "drv_memenv_num_get(name=\"n\", base=" + base + ")"});
    };
    EXPECT_EQ(written("8899", "10"), ok + value("8899") + "0x0 value=8899\n");
    EXPECT_EQ(written("0xffffffff", "16"), ok + value("ffffffff") + "0x0 value=0xffffffff\n");
    EXPECT_EQ(written("5", "2"), ok + value("101") + "0x0 value=5\n");
    EXPECT_EQ(written("35", "36"), ok + value("z") + "0x0 value=35\n");
    for (const std::string base : {"0", "1", "37"}) {
        EXPECT_EQ(written("5", base), bad_value + no_such_device + no_such_device);
    }
}

// It is empty, and as a number 0; a base that there is not stays wrong.
TEST(MemoryEnvironment, AClearedVariableStillReads) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {set("town", "Bern"), clear("town"), get("town"), "drv_memenv_num_get(name=\"town\", base=10)",
                        "drv_memenv_num_get(name=\"town\", base=1)", listing}),
        ok + ok + value("") + "0x0 value=0\n" + bad_value + listed("kestro_softreset_mode=1\\ntown=\\n"));
    EXPECT_EQ(answers(board, {set("town", "Thun"), "drv_memenv_clr_all()", get("town"), mode, listing}),
              ok + ok + value("") + "0x0 value=0\n" + listed("kestro_softreset_mode=\\ntown=\\n"));
}

TEST(MemoryEnvironment, NamesThatNoVariableHas) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {get("town"), "drv_memenv_num_get(name=\"town\", base=10)", clear("town"), get(""), clear("")}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
}

TEST(MemoryEnvironment, NamesAndTextsThatNoVariableCanHave) {
    const test_board board = new_delivered("mpu_master");
    const std::string name(63, 'n');
    const std::string text(255, 't');
    EXPECT_EQ(answers(board, {set(name, text), get(name)}), ok + value(text));
    EXPECT_EQ(answers(board, {set("", "1"), set("a=b", "1"), set(name + "n", "1"), set("a", text + "t"),
                              "drv_memenv_num_set(name=\"\", value=1, base=10)", get("a")}),
              bad_value + bad_value + bad_value + bad_value + bad_value + no_such_device);
    EXPECT_EQ(answers(board, {"drv_memenv_get(name=\"" + name + "\", size=255)",
                              "drv_memenv_get(name=\"" + name + "\", size=0)"}),
              too_small + too_small);
}

// 25 variables of 320 bytes, and what else there is; cleared ones give their room to others
// when it is needed.
TEST(MemoryEnvironment, AFullMemory) {
    const test_board board = new_delivered("mpu_master");
    const auto name = [](int number) { return std::string(61, 'n') + std::to_string(10 + number); };
    const std::string text(255, 't');
    std::vector<std::string> calls;
    std::string said;
    for (int i = 0; i < 25; ++i) {
        calls.push_back(set(name(i), text));
        said += ok;
    }
    EXPECT_EQ(answers(board, calls), said);
    EXPECT_EQ(answers(board, {set(name(25), text), get(name(25)), get(name(24))}),
              store_full + no_such_device + value(text));
    EXPECT_EQ(answers(board, {clear(name(3)), set(name(25), text), clear(name(4)), set(name(26), text), get(name(3))}),
              ok + ok + ok + ok + value(""));
    EXPECT_EQ(answers(board, {clear(name(5)), set(name(27), text), get(name(27)), get(name(3)), get(name(5)), mode}),
              ok + ok + value(text) + no_such_device + no_such_device + "0x0 value=1\n");
}

// A board starts, also where its variables leave no room to note how.
TEST(MemoryEnvironment, AFullMemoryHindersNoStart) {
    const test_board board = new_delivered("mpu_master");
    std::vector<std::string> lines{clear("kestro_softreset_mode")};
    std::string expected = ok;
    for (int i = 0; i < 25; ++i) {
        lines.push_back(set(std::string(61, 'n') + static_cast<char>('a' + i) + "x", std::string(255, 't')));
        expected += ok;
    }
    EXPECT_EQ(answers(board, lines), expected);
    // The last byte; one more, and the empty variable would have made room.
    const std::string text(150, 'm');
    EXPECT_EQ(answers(board, {set("m", text), mode}), ok + "0x0 value=0\n");
    EXPECT_EQ(answers(board, {warm_reset, get("m"), mode}), ok + value(text) + "0x0 value=0\n");
    EXPECT_EQ(answers(board, {set("m", text + "m"), mode}), ok + no_such_device);
}

TEST(MemoryEnvironment, ASaveMakesTheHalvesEqual) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(half(board, main_at), half(board, backup_at));
    EXPECT_EQ(answers(board, {set("town", "Bern")}), ok);
    EXPECT_NE(half(board, main_at), half(board, backup_at));
    EXPECT_EQ(answers(board, {"drv_memenv_save()"}), ok);
    EXPECT_EQ(half(board, main_at), half(board, backup_at));
    EXPECT_NE(half(board, backup_at).find("town=Bern"), std::string::npos);
    EXPECT_EQ(answers(board, {clear("town")}), ok);
    EXPECT_NE(half(board, backup_at).find("town=Bern"), std::string::npos);
    EXPECT_EQ(half(board, main_at).find("Bern"), std::string::npos);
}

TEST(MemoryEnvironment, ASaveOfANewBoardWritesBothHalves) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_memenv_save()"}), ok);
    for (const size_t at : {main_at, backup_at}) {
        EXPECT_NE(half(board, at).find("kestro_softreset_mode=1"), std::string::npos);
    }
}

TEST(MemoryEnvironment, TheBackupServesWhereTheMainCopyIsLost) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set("town", "Bern"), "drv_memenv_save()", set("town", "Thun")}), ok + ok + ok);
    kestro_sim::change overwritten;
    const std::vector<uint8_t> nothing(kestro_sim::env_head_size);
    overwritten.write("himem-slot9.bin", main_at, nothing);
    ASSERT_TRUE(kestro_sim::store(board.state).commit(overwritten));
    EXPECT_EQ(answers(board, {get("town")}), value("Bern"));
    overwritten.write("himem-slot9.bin", backup_at, nothing);
    ASSERT_TRUE(kestro_sim::store(board.state).commit(overwritten));
    EXPECT_EQ(answers(board, {get("town"), mode}), no_such_device + "0x0 value=1\n");
}

TEST(MemoryEnvironment, OutlivesResets) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(answers(slave, {set("town", "Bern"), warm_reset, get("town"), mode}),
              ok + ok + value("Bern") + "0x0 value=0\n");
    EXPECT_EQ(answers(master, {"drv_reset_peer_board()"}), ok);
    EXPECT_EQ(answers(slave, {get("town"), mode}), value("Bern") + "0x0 value=1\n");
}

// Start-up software writes down the start, and saves it.
TEST(MemoryEnvironment, AStartLeavesTheHalvesEqual) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set("town", "Bern"), warm_reset}), ok + ok);
    EXPECT_EQ(half(board, main_at), half(board, backup_at));
    EXPECT_NE(half(board, main_at).find("kestro_softreset_mode=0"), std::string::npos);
}

TEST(MemoryEnvironment, IsLostWithThePower) {
    const std::string state = new_scratch_dir() + "/state";
    const std::vector<std::string> slave{"--board", "mpu_slave", "--state", state};
    EXPECT_EQ(answers_of(slave, {set("town", "Bern"), "drv_memenv_clr(name=\"kestro_softreset_mode\")",
                                 "drv_memenv_save()", get("town")}),
              ok + ok + ok + value("Bern"));
    answers_of({"--state", state, "--pull", "slot10", "--plug", "slot10"}, {mode});
    EXPECT_EQ(answers_of(slave, {get("town"), listing}), no_such_device + listed("kestro_softreset_mode=1\\n"));
}

TEST(MemoryEnvironment, ABoardWithoutVariables) {
    EXPECT_EQ(answers(new_delivered("lpu"),
                      {get("town"), set("town", "Bern"), clear("town"), "drv_memenv_clr_all()", "drv_memenv_save()",
                       "drv_memenv_num_set(name=\"n\", value=1, base=10)", listing}),
              not_supported + not_supported + not_supported + not_supported + not_supported + not_supported +
                  "-2129591900\n");
}

} // namespace kestro_tests
