// Runs whose standard output cannot be written. The real program runs on driver libraries in which every operation
// answers 0, started by a shell that prepares its standard streams.
#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

constexpr const char *passing = "mac_test drv_mac_init 1";
constexpr const char *failing = "led_test led_func1";
constexpr const char *lost = "kestro_test: standard output cannot be written, and lines of this run are lost\n";

bool is_emulated() {
    return getenv("KESTRO_EMULATOR") != nullptr;
}

// $K stands for the program.
process_result run_shell(const std::string &command, const std::vector<std::string> &environment = {}) {
    process_options options;
    options.environment = environment;
    options.environment.push_back("LD_LIBRARY_PATH=" + build_dir() + "/noop");
    // A full disk is full for the coverage counters too; what these say of it is not the program's.
    options.environment.emplace_back("GCOV_ERROR_FILE=/dev/null");
    options.environment.push_back("K=" + std::string(is_emulated() ? getenv("KESTRO_EMULATOR") : "") + " " +
                                  build_dir() + "/kestro_test");
    return run_process({"/bin/sh", "-c", command}, options);
}

void expect_lost(const std::string &command) {
    SCOPED_TRACE(command);
    const process_result result = run_shell(command);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, lost);
    EXPECT_EQ(result.status, 1);
}

// How many bytes a run prints when all is well.
size_t printed_bytes(const std::string &words) {
    return run_shell("exec $K " + words).out.size();
}

} // namespace

TEST(LostOutputTest, ARunThatCanBeReadKeepsItsStatus) {
    EXPECT_EQ(run_shell(std::string("exec $K ") + passing).status, 0);
    EXPECT_EQ(run_shell(std::string("exec $K ") + failing).status, 255);
    EXPECT_GT(printed_bytes(passing), 0U);
    EXPECT_EQ(run_shell(std::string("exec $K ") + failing).err, "");
}

TEST(LostOutputTest, AFullDeviceIsStatusOneWhateverTheRunWouldHaveBeen) {
    expect_lost(std::string("exec $K ") + passing + " >/dev/full");
    expect_lost(std::string("exec $K ") + failing + " >/dev/full");
    expect_lost("exec $K >/dev/full");
}

TEST(LostOutputTest, ADiskThatFillsUpInTheMiddle) {
    // A limit of one block of 512 bytes stands for the end of the disk.
    ASSERT_GT(printed_bytes("board_test"), 1024U);
    const std::string file = scratch_file("out", "");
    const process_result result = run_shell("trap '' XFSZ; ulimit -f 1; exec $K board_test >" + file);
    EXPECT_EQ(result.err, lost);
    EXPECT_EQ(result.status, 1);
    const std::string kept = read_file(file);
    EXPECT_GT(kept.size(), 0U);
    EXPECT_LT(kept.size(), printed_bytes("board_test"));
    EXPECT_EQ(run_shell("exec $K board_test").out.substr(0, kept.size()), kept);
}

TEST(LostOutputTest, APipeWithoutAReader) {
    // Descriptor 4 is the reader that lets 5 be opened for writing; once it is closed, nobody reads.
    const std::string pipe = new_scratch_dir() + "/pipe";
    const std::string unread = "mkfifo " + pipe + " && exec 4<>" + pipe + " 5>" + pipe + " && exec 4<&- && ";
    const std::string run = unread + "exec $K " + std::string(passing) + " >&5";
    const process_result ignored = run_shell("trap '' PIPE; " + run);
    EXPECT_EQ(ignored.err, lost);
    EXPECT_EQ(ignored.status, 1);
    const process_result ended = run_shell("rm " + pipe + "; " + run);
    if (!is_emulated()) { // which tells of the signal itself
        EXPECT_EQ(ended.err, "");
    }
    EXPECT_EQ(ended.status, 128 + SIGPIPE);
}

TEST(LostOutputTest, AClosedStandardOutput) {
    if (is_emulated()) {
        GTEST_SKIP() << "the emulator's own files take the closed place";
    }
    expect_lost(std::string("exec $K ") + passing + " >&-");
    expect_lost(std::string("exec $K ") + failing + " >&-");
    expect_lost(std::string("exec $K ") + passing + " <&- >&-");
}

TEST(LostOutputTest, WithStandardErrorClosedTheStatusStillTells) {
    const process_result result = run_shell(std::string("exec $K ") + passing + " >/dev/full 2>&-");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 1);
}

TEST(LostOutputTest, StandardInputMayBeClosed) {
    const process_result result = run_shell("exec $K mac_test <&-");
    EXPECT_EQ(result.out, run_shell("exec $K mac_test").out);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(run_shell(std::string("exec $K ") + failing + " <&-").status, 255);
}

TEST(LostOutputTest, NoFileOfADriverTakesThePlaceOfAClosedStream) {
    if (is_emulated()) {
        GTEST_SKIP() << "the emulator's own files take the closed place";
    }
    const std::string device = scratch_file("device", "");
    for (const std::string closed : {" >&-", " 2>&-", " >&- 2>&-", " <&- >&- 2>&-"}) {
        SCOPED_TRACE(closed);
        const bool output_closed = closed.find(">&- ") != std::string::npos || closed == " >&-";
        const process_result result =
            run_shell(std::string("exec $K ") + passing + closed,
                      {"LD_PRELOAD=" + build_dir() + "/tests/libearly_opener.so", "EARLY_OPENER_FILE=" + device});
        EXPECT_EQ(read_file(device), "");
        EXPECT_EQ(result.status, output_closed ? 1 : 0);
    }
}
