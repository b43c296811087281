// Variables that software keeps on a board: by name, and as start-up software leaves them.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string mode = "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10)";
const std::string reason = "drv_env_get(name=\"board_reset_mode\", size=256)";
const std::string flag = "drv_env_get(name=\"hard_reset_init_flag\", size=4)";
const std::string type = "drv_softreset_get_reset_type()";
const std::string warm_reset = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";

std::string told(const std::string &of_type, const std::string &of_mode, const std::string &of_reason) {
    return "0x0 reset_type=" + of_type + "\n0x0 value=" + of_mode + "\n0x0 value=\"" + of_reason +
           "\"\n0x0 value=\"1\"\n";
}

} // namespace

TEST(Environment, ANewBoardCameUpFromPower) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(answers(new_delivered(seat), {type, mode, reason, flag}), told("2", "1", "1")) << seat;
    }
}

TEST(Environment, FollowsTheResets) {
    const test_board master = new_delivered("mpu_master");
    const test_board slave = seen_from(master, "mpu_slave");
    EXPECT_EQ(answers(slave, {warm_reset, type, mode, reason, flag}), ok + told("0", "0", ""));
    EXPECT_EQ(answers(master, {type, mode, reason, flag}), told("2", "1", "1"));
    EXPECT_EQ(answers(master, {"drv_reset_peer_board()"}), ok);
    EXPECT_EQ(answers(slave, {type, mode, reason, flag}), told("1", "1", "4"));
}

TEST(Environment, ABoardThatIsPluggedInComesUpFromPower) {
    const std::string state = new_scratch_dir() + "/state";
    const auto of_slave = [&](const std::vector<std::string> &by_hand, const std::vector<std::string> &calls) {
        std::vector<std::string> options{"--board", "mpu_slave", "--state", state};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, calls);
    };
    EXPECT_EQ(of_slave({}, {warm_reset, mode}), "0x0\n0x0 value=0\n");
    answers_of({"--state", state, "--pull", "slot10", "--plug", "slot10"}, {mode});
    EXPECT_EQ(of_slave({}, {type, mode, reason, flag}), told("2", "1", "1"));
}

TEST(Environment, NumbersAreReadToTheirBase) {
    const auto of_text = [](const std::string &text, const std::string &base) {
        return answers(new_changed("mpu_master", "kestro_softreset_mode\"/> <element name=\"text\" text=\"1\"/>",
                                   "kestro_softreset_mode\"/> <element name=\"text\" text=\"" + text + "\"/>"),
                       {"drv_memenv_num_get(name=\"kestro_softreset_mode\", base=" + base + ")"});
    };
    EXPECT_EQ(of_text("4294967295", "10"), "0x0 value=0xffffffff\n");
    EXPECT_EQ(of_text("4294967296", "10"), bad_value);
    EXPECT_EQ(of_text("ff", "16"), "0x0 value=255\n");
    EXPECT_EQ(of_text("ff", "10"), bad_value);
    EXPECT_EQ(of_text("1 ", "10"), bad_value);
    EXPECT_EQ(of_text("-1", "10"), bad_value);
    EXPECT_EQ(of_text("z", "36"), "0x0 value=35\n");
    EXPECT_EQ(of_text("1", "37"), bad_value);
    EXPECT_EQ(of_text("1", "1"), bad_value);
    EXPECT_EQ(of_text("1", "0"), bad_value);
}

TEST(Environment, NamesAndAreas) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_env_get(name=\"hard_reset_init_flag\", size=2)",
                       "drv_env_get(name=\"hard_reset_init_flag\", size=1)", "drv_env_get(name=\"nothing\", size=256)",
                       "drv_env_get(name=\"kestro_softreset_mode\", size=256)",
                       "drv_memenv_num_get(name=\"board_reset_mode\", base=10)", "drv_env_get(name=null, size=256)",
                       "drv_env_get(name=\"board_reset_mode\", size=256, value=null)",
                       "drv_memenv_num_get(name=null, base=10)",
                       "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10, value=null)"}),
              "0x0 value=\"1\"\n" + too_small + no_such_device + no_such_device + no_such_device + null_pointer +
                  null_pointer + null_pointer + null_pointer);
    EXPECT_EQ(answers(new_delivered("lpu"), {reason, mode}), not_supported + not_supported);
}

TEST(SoftReset, AStatusRegisterAtFaultShowsTheSameAfterAnyStart) {
    const std::string control = "<entry name=\"0\"><element name=\"support\" value=\"1\"/>";
    EXPECT_EQ(answers(new_changed("mpu_master", control + "</entry>",
                                  control + "<element name=\"stuck_at\" value=\"7\"/></entry>"),
                      {type, warm_reset, type}),
              "0x0 reset_type=7\n0x0\n0x0 reset_type=7\n");
}

} // namespace kestro_tests
