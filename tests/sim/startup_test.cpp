// What a board starts with: files that the next start takes, and the lock word in the boot flash.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kestro_tests {

namespace {

const std::string begin = "drv_diag_cmd_init()";
const std::string info = "drv_diag_cmd_process(command=\"startup info\", size=600)";
const std::string home = "/opt/hostx/home/";
const std::string damaged = "0x81110109\n";

std::string update(uint32_t type, const std::string &name) {
    return "drv_update_startup_file(file_type=" + std::to_string(type) + ", file_name=\"" + name + "\")";
}

// A chassis of its own, with the board's files: those are found by the launcher's way alone.
std::vector<std::string> new_state() {
    return {"--state", new_scratch_dir() + "/state"};
}

std::vector<std::string> with(std::vector<std::string> options, const std::vector<std::string> &more) {
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

std::string file_of_board(const std::vector<std::string> &state, const std::string &path) {
    return state[1] + "/root/slot9" + path;
}

// One line of the diagnosis for each type of file, and one for the lock word.
struct shown_start {
    std::string running = "as delivered";
    std::string next = "as delivered";
};

std::string shown(const shown_start &system, const std::string &lock = "default") {
    const std::string none = ": running as delivered, next start as delivered\\r\\n";
    return "0x0 output=\"start-up software" + none + "system software: running " + system.running + ", next start " +
           system.next + "\\r\\nconfiguration" + none + "patch" + none + "lock word: " + lock + "\\r\\n\"\n";
}

std::string read_record(size_t length) {
    return "drv_flash_read(section_id=2, offset=0, len=" + std::to_string(length) + ")";
}

std::string write_record(const std::string &bytes) {
    return "drv_flash_write(section_id=2, offset=0, buffer=" + bytes + ")";
}

const std::string lock_status = "drv_get_boot_lockword_status(lock_id=1)";
const std::string clear_lock = "drv_clear_boot_lockword(lock_id=1)";

} // namespace

TEST(StartUpDriver, TheNextStartTakesTheFile) {
    const std::vector<std::string> state = new_state();
    const std::string image = home + "power_app.bin";
    const std::string label = home + "elabel.txt";
    EXPECT_EQ(answers_of(state, {begin, info, update(2, image), info, update(2, "elabel.txt"), info}),
              ok + shown({}) + ok + shown({"as delivered", image}) + ok + shown({"as delivered", label}));
    const std::string reset = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";
    EXPECT_EQ(answers_of(state, {begin, reset, info, update(2, image), info, "drv_reset_board()", info}),
              ok + ok + shown({label, label}) + ok + shown({label, image}) + ok + shown({image, image}));
    EXPECT_EQ(calls_of(with(state, {"--get", "slot9/startup/file/2/running", "--set", "slot9/startup/file/2/next="}),
                       {begin}),
              image + "\n" + begin + " = 0x0\n");
    EXPECT_EQ(answers_of(with(state, {"--pull", "slot9", "--plug", "slot9"}), {begin, info}), ok + shown({}));
}

TEST(StartUpDriver, EachTypeHasAFileOfItsOwn) {
    const std::vector<std::string> state = new_state();
    const std::string elabel = "running as delivered, next start " + home + "elabel.txt\\r\\n";
    const std::string image = "running as delivered, next start " + home + "power_app.bin\\r\\n";
    EXPECT_EQ(
        answers_of(state, {update(1, "elabel.txt"), update(3, "power_app.bin"), update(4, "elabel.txt"), begin, info}),
        ok + ok + ok + ok + "0x0 output=\"start-up software: " + elabel +
            "system software: running as delivered, next start as delivered\\r\\nconfiguration: " + image +
            "patch: " + elabel + "lock word: default\\r\\n\"\n");
}

// The peer has files of its own, and takes them when it starts.
TEST(StartUpDriver, ARestartOfThePeerIsThePeersOwn) {
    const std::vector<std::string> state = new_state();
    const std::vector<std::string> slave = with(state, {"--board", "mpu_slave"});
    const std::string label = home + "elabel.txt";
    EXPECT_EQ(answers_of(slave, {begin, update(2, label), info}), ok + ok + shown({"as delivered", label}));
    EXPECT_EQ(answers_of(state, {begin, info, "drv_reset_peer_board()", info}), ok + shown({}) + ok + shown({}));
    EXPECT_EQ(answers_of(slave, {begin, info}), ok + shown({label, label}));
}

TEST(StartUpDriver, WhatIsNoFileIsRefused) {
    const std::vector<std::string> state = new_state();
    answers_of(state, {begin});
    const std::string folder = file_of_board(state, home);
    write_file(folder + "empty", "");
    mkfifo((folder + "pipe").c_str(), 0644);
    std::filesystem::create_symlink("/etc/passwd", folder + "leads_out");
    write_file(folder + std::string(112, 'n'), "one byte more than there is room for");
    for (const std::string &name :
         {std::string(), home, home + "none.bin", std::string("none.bin"), std::string("empty"), std::string("pipe"),
          std::string("leads_out"), std::string(".."), std::string(112, 'n'), home + std::string(112, 'n'),
          std::string("/etc/passwd"), std::string("/opt/hostx/../../etc/passwd"), std::string("home/elabel.txt"),
          std::string("/opt/hostx/home/../home/elabel.txt"), std::string("elabel.txt ")}) {
        EXPECT_EQ(answers_of(state, {update(2, name), begin, info}), bad_value + ok + shown({})) << name;
    }
}

// 127 bytes of path; a link that stays on the board is as good as the file.
TEST(StartUpDriver, LongNamesAndLinks) {
    const std::vector<std::string> state = new_state();
    answers_of(state, {begin});
    const std::string name(111, 'n');
    write_file(file_of_board(state, home + name), "x");
    std::filesystem::create_symlink(home + name, file_of_board(state, home + "link"));
    EXPECT_EQ(answers_of(state, {update(2, name), begin, info, update(2, "link"), info}),
              ok + ok + shown({"as delivered", home + name}) + ok + shown({"as delivered", home + "link"}));
}

TEST(StartUpDriver, WrongCalls) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {update(0, "elabel.txt"), update(5, "elabel.txt"),
                        "drv_update_startup_file(file_type=1, file_name=null)",
                        "drv_get_boot_lockword_status(lock_id=0)", "drv_get_boot_lockword_status(lock_id=2)",
                        "drv_get_boot_lockword_status(lock_id=1, status=null)", "drv_clear_boot_lockword(lock_id=2)"}),
        no_such_device + no_such_device + null_pointer + no_such_device + no_such_device + null_pointer +
            no_such_device);
    EXPECT_EQ(answers(new_delivered("lpu"), {update(1, "elabel.txt"), lock_status, clear_lock, begin, info}),
              not_supported + not_supported + not_supported + ok + not_supported);
}

// As a delivered board has it, taken away, and set by its owner: the driver tells what stands in the boot flash.
TEST(BootLockWord, StandsInTheBootFlash) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {lock_status, read_record(10), clear_lock, lock_status, read_record(10)}),
              "0x0 status=1\n0x0 buffer=[ff ff ff ff ff ff ff ff ff ff]\n0x0\n0x0 status=2\n0x0 buffer=" +
                  bytes("LOCKWORD=", 10) + "\n");
    EXPECT_EQ(answers(board, {lock_status, write_record(bytes("LOCKWORD=secret", 16)), lock_status, begin,
                              "drv_diag_cmd_process(command=\"startup info\", size=600)"}),
              "0x0 status=2\n0x0\n0x0 status=3\n0x0\n" + shown({}, "set by the user"));
    EXPECT_EQ(answers(board, {lock_status, clear_lock, lock_status, read_record(16), begin, info}),
              "0x0 status=3\n0x0\n0x0 status=2\n0x0 buffer=" + bytes("LOCKWORD=", 16) + "\n0x0\n" + shown({}, "none"));
}

TEST(BootLockWord, OutlivesRestarts) {
    const std::vector<std::string> state = new_state();
    const std::string reset = "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})";
    EXPECT_EQ(answers_of(state, {clear_lock, reset, lock_status, "drv_reset_board()", lock_status}),
              ok + ok + "0x0 status=2\n" + ok + "0x0 status=2\n");
    EXPECT_EQ(answers_of(with(state, {"--pull", "slot9", "--plug", "slot9"}), {lock_status}), "0x0 status=2\n");
    EXPECT_EQ(answers_of(with(state, {"--board", "mpu_slave"}), {lock_status}), "0x0 status=1\n");
    EXPECT_EQ(answers_of(with(state, {"--reset"}), {lock_status}), "0x0 status=1\n");
}

// The record has 64 bytes, a terminator among them.
TEST(BootLockWord, WhatIsNoLockWordIsDamaged) {
    const test_board board = new_delivered("mpu_master");
    const std::string longest = "LOCKWORD=" + std::string(54, 'w');
    EXPECT_EQ(answers(board, {write_record(bytes(longest, 64)), lock_status, write_record(bytes(longest + "w", 64)),
                              lock_status, write_record("[4c]"), lock_status, write_record("[00]"), lock_status, begin,
                              info, clear_lock, lock_status}),
              ok + "0x0 status=3\n" + ok + damaged + ok + damaged + ok + damaged + ok + damaged + ok +
                  "0x0 status=2\n");
}

} // namespace kestro_tests
