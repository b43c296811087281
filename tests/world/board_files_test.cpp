// The board's files and scripts stand in a directory of the desk; the rest of the desk is as it is.
#include "tests/world/world_run.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;
using kestro_tests::lines;
using kestro_tests::process_result;

namespace {

const std::vector<std::string> open_calls = {"open",     "open64",     "openat",     "openat64",
                                             "__open_2", "__open64_2", "__openat_2", "__openat64_2",
                                             "fopen",    "fopen64",    "freopen",    "freopen64"};
const std::vector<std::string> stat_calls = {"stat",       "stat64",       "lstat",     "lstat64",  "fstatat",
                                             "fstatat64",  "__xstat",      "__xstat64", "__lxstat", "__lxstat64",
                                             "__fxstatat", "__fxstatat64", "statx"};
const std::vector<std::string> access_calls = {"access", "faccessat"};
const std::vector<std::string> realpath_calls = {"realpath", "realpath of its own", "__realpath_chk",
                                                 "canonicalize_file_name"};

// Read off the program's ELF header: the tests may be another machine's.
bool is_64_bit() {
    constexpr size_t class_at = 4;
    constexpr char class_64 = 2;
    static const std::string program = kestro_tests::read_file(kestro_tests::build_dir() + "/kestro_test");
    return program.at(class_at) == class_64;
}

// The emulator answers some calls otherwise than a kernel does.
bool is_emulated() {
    return getenv("KESTRO_EMULATOR") != nullptr;
}

class BoardFiles : public testing::Test {
  protected:
    void SetUp() override {
        // A path that a shell does not read as it is.
        root_ = fs::canonical(kestro_tests::new_scratch_dir()) / "it's $HOME \"board\"";
        write("/opt/hostx/home/elabel.txt", "label");
    }

    void write(const std::string &path, const std::string &content) const {
        fs::create_directories(fs::path(on_desk(path)).parent_path());
        kestro_tests::write_file(on_desk(path), content);
    }

    void link(const std::string &target, const std::string &path) const {
        fs::create_directories(fs::path(on_desk(path)).parent_path());
        fs::create_symlink(target, on_desk(path));
    }

    std::string on_desk(const std::string &path) const {
        return root_.string() + path;
    }

    void make_runnable(const std::string &path) const {
        fs::permissions(on_desk(path), fs::perms::owner_all);
    }

    void expect_shows(const std::vector<std::string> &words, const std::string &out) const {
        const process_result result = kestro_tests::run_in_world(words, {"KESTRO_SIM_ROOT=" + root_.string()});
        EXPECT_EQ(result.out, out) << words[0] << " " << words.back();
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }

    fs::path root_;
};

TEST_F(BoardFiles, EveryOpeningCallFindsTheBoardsFile) {
    expect_shows({"files", "/opt/hostx/home/elabel.txt"}, lines(open_calls, "label"));
}

TEST_F(BoardFiles, EveryPlaceOfTheBoardIsKnown) {
    for (const char *path : {"/opt/hostx/x/y", "/home/release/x", "/home/1", "/proc/interrupts", "/dev/watchdog",
                             "/dev/kestro_log/fan_mng", "/etc/install_itp.sh", "/etc/init.d/install_itp.sh"}) {
        write(path, "board");
        expect_shows({"files", path}, lines(open_calls, "board"));
    }
}

// The desk has a /proc/interrupts of its own.
TEST_F(BoardFiles, AMissingFileOfTheBoardIsNeverTheDesks) {
    expect_shows({"files", "/proc/interrupts"}, lines(open_calls, "No such file or directory"));
    expect_shows({"status", "/proc/interrupts"},
                 lines(stat_calls, "No such file or directory") + lines(access_calls, "No such file or directory"));
    expect_shows({"realpath", "/proc/interrupts"}, lines(realpath_calls, "No such file or directory"));
}

TEST_F(BoardFiles, OtherPathsAreTheDesks) {
    const std::string desk = kestro_tests::scratch_file("file", "desk");
    expect_shows({"files", desk}, lines(open_calls, "desk"));
    expect_shows({"status", desk}, lines(stat_calls, "4") + lines(access_calls, "ok"));
    write("/opt/hostxx/file", "board");
    write("/home/10", "board");
    write("/home/other", "board");
    for (const char *path : {"/opt/hostxx/file", "/home/10", "/home/other", "/dev/watchdog_none", ""}) {
        expect_shows({"files", path}, lines(open_calls, "No such file or directory"));
    }
}

TEST_F(BoardFiles, PathsAreReadAsTheKernelReadsThem) {
    for (const char *path : {"//opt//hostx/./home/elabel.txt", "/opt/../opt/hostx/home/../home/elabel.txt",
                             "/../opt/hostx/home/elabel.txt"}) {
        expect_shows({"files", path}, lines(open_calls, "label"));
    }
    const std::string desk = kestro_tests::scratch_file("file", "desk");
    expect_shows({"files", "/proc/../dev/.." + desk}, lines(open_calls, "desk"));
}

TEST_F(BoardFiles, LinksLeadWithinTheBoard) {
    write("/etc/install_itp.sh", "script");
    write("/etc/passwd", "board's users");
    link("/etc/install_itp.sh", "/etc/init.d/install_itp.sh");
    link("../home/elabel.txt", "/opt/hostx/data/relative");
    link("/opt/hostx/data", "/opt/hostx/folder");
    link("/etc/passwd", "/opt/hostx/users");
    link("/etc/hostname", "/opt/hostx/nowhere");
    link("../../../../../../../../../../../../etc/passwd", "/opt/hostx/upwards");
    link("loop", "/opt/hostx/loop");
    expect_shows({"files", "/etc/init.d/install_itp.sh"}, lines(open_calls, "script"));
    expect_shows({"files", "/opt/hostx/folder/relative"}, lines(open_calls, "label"));
    expect_shows({"files", "/opt/hostx/users"}, lines(open_calls, "board's users"));
    expect_shows({"files", "/opt/hostx/upwards"}, lines(open_calls, "board's users"));
    expect_shows({"files", "/opt/hostx/nowhere"}, lines(open_calls, "No such file or directory"));
    expect_shows({"files", "/opt/hostx/loop"}, lines(open_calls, "Too many levels of symbolic links"));
    expect_shows({"realpath", "/opt/hostx/loop"}, lines(realpath_calls, "Too many levels of symbolic links"));
}

TEST_F(BoardFiles, EveryStatusCallFindsTheBoardsFile) {
    expect_shows({"status", "/opt/hostx/home/elabel.txt"}, lines(stat_calls, "5") + lines(access_calls, "ok"));
}

TEST_F(BoardFiles, TheStatusOfALinkIsItsOwn) {
    link("elabel.txt", "/opt/hostx/home/link");
    const std::string link_size = "10";
    expect_shows({"status", "/opt/hostx/home/link"},
                 lines({"stat", "stat64"}, "5") + lines({"lstat", "lstat64"}, link_size) +
                     lines({"fstatat", "fstatat64", "__xstat", "__xstat64"}, "5") +
                     lines({"__lxstat", "__lxstat64"}, link_size) +
                     lines({"__fxstatat", "__fxstatat64", "statx"}, "5") + lines(access_calls, "ok"));
}

TEST_F(BoardFiles, TheRealPathIsTheBoardsAndNotTheDesks) {
    write("/dev/kestro_log/fan_mng", "");
    write("/etc/passwd", "");
    link("/opt/hostx/home", "/opt/hostx/link");
    link("/etc/passwd", "/opt/hostx/users");
    expect_shows({"realpath", "/dev/kestro_log/fan_mng"}, lines(realpath_calls, "/dev/kestro_log/fan_mng"));
    expect_shows({"realpath", "/opt//hostx/./link/elabel.txt"}, lines(realpath_calls, "/opt/hostx/home/elabel.txt"));
    // Where the link leads has no name that would open the same file again.
    expect_shows({"realpath", "/opt/hostx/./users"}, lines(realpath_calls, "/opt/hostx/users"));
    expect_shows({"realpath", "/proc/../dev/null"}, lines(realpath_calls, "/dev/null"));
}

TEST_F(BoardFiles, DirectoriesAreTheBoards) {
    write("/opt/hostx/home/second", "");
    const std::vector<std::string> calls =
        is_64_bit() ? std::vector<std::string>{"scandir64", "scandir"} : std::vector<std::string>{"scandir64"};
    expect_shows({"directory", "/opt/hostx/home"}, "opendir: ok\n" + lines(calls, ". .. elabel.txt second"));
    expect_shows({"directory", "/home/release"},
                 lines({"opendir"}, "No such file or directory") + lines(calls, "No such file or directory"));
}

TEST_F(BoardFiles, FilesAreMadeRenamedAndRemovedOnTheBoard) {
    write("/opt/hostx/home/gone", "");
    link("/home/1", "/opt/hostx/home/link");
    expect_shows({"entries", "/opt/hostx/home"},
                 "mkdir: ok\ncreat: ok\nopen for the first time: ok\nmode: 640\nchmod: ok\nrename: ok\nunlink: ok\n"
                 "rmdir: ok\nremove: ok\nreadlink: /home/1\n");
    EXPECT_EQ(fs::status(on_desk("/opt/hostx/home/renamed")).permissions(), fs::perms::owner_read);
    EXPECT_FALSE(fs::exists(on_desk("/opt/hostx/home/gone")));
    EXPECT_FALSE(fs::exists(on_desk("/opt/hostx/home/made")));
}

TEST_F(BoardFiles, AFileThatTheLauncherNamedIsTheDesksWhereverItLies) {
    const std::string out = lines(open_calls, "No such file or directory");
    for (const char *name :
         {"KESTRO_SIM_STATE", "KESTRO_SIM_BOARD", "KESTRO_PROBE_SCRIPT", "KESTRO_PROBE_TRACE", "KESTRO_PROBE_REPLAY"}) {
        const process_result result =
            kestro_tests::run_in_world({"files", "/opt/hostx/home/elabel.txt"},
                                       {"KESTRO_SIM_ROOT=" + root_.string(), name + std::string("=/opt/hostx/home")});
        EXPECT_EQ(result.out, out) << name;
    }
}

TEST_F(BoardFiles, ScriptsOfTheBoardAreRunWithoutTheWorld) {
    write("/etc/install_itp.sh", "#!/bin/sh\necho \"test $1 preload [$LD_PRELOAD]\"\nexit 3\n");
    make_runnable("/etc/install_itp.sh");
    const std::string line = "test 7 preload []\n";
    expect_shows({"script", "/etc/install_itp.sh"},
                 line + "execve: 3\n" + line + "execv: 3\n" + line + "posix_spawn: 3\n");
}

TEST_F(BoardFiles, AScriptThatIsMissingOrMayNotRunSaysSo) {
    // Its vfork is a fork, and a child that could not start shows only its status.
    const std::string emulated = "127";
    expect_shows({"script", "/etc/install_itp.sh"},
                 "execve: 2\nexecv: 2\nposix_spawn: " + (is_emulated() ? emulated : "2") + "\n");
    write("/etc/install_itp.sh", "#!/bin/sh\n");
    expect_shows({"script", "/etc/install_itp.sh"},
                 "execve: 13\nexecv: 13\nposix_spawn: " + (is_emulated() ? emulated : "13") + "\n");
}

TEST_F(BoardFiles, ShellCommandsWorkOnTheBoardsFiles) {
    write("/opt/hostx/home/power_app.bin", "power\n");
    fs::permissions(on_desk("/opt/hostx/home/power_app.bin"), fs::perms::owner_write | fs::perms::owner_read);
    expect_shows({"command", "chmod 755 /opt/hostx/home/power_app.bin"}, "system: 0\npopen: 0\n");
    EXPECT_EQ(static_cast<int>(fs::status(on_desk("/opt/hostx/home/power_app.bin")).permissions()), 0755);
    for (const char *command : {"cat /opt/hostx/home/power_app.bin", "cat '/opt/hostx/home/power_app.bin'",
                                "cat \"/opt/hostx/home/power_app.bin\"", "cat</opt/hostx/home/power_app.bin",
                                "X=/opt/hostx/home/power_app.bin; cat \"$X\"",
                                "echo \\\" '\"' > /dev/null; cat /opt/hostx/home/power_app.bin",
                                "cd /opt/hostx;cat home/power_app.bin", "cat '/opt/hostx/home/'power_app.bin"}) {
        expect_shows({"command", command}, "power\nsystem: 0\npopen: power\npopen: 0\n");
    }
    expect_shows({"command", "cat /home/1 2>/dev/null; echo $?"}, "1\nsystem: 0\npopen: 1\npopen: 0\n");
}

TEST_F(BoardFiles, OtherShellCommandsAreLeftAlone) {
    for (const char *text : {"/opt/hostxx", "x/opt/hostx", "./opt/hostx", "/home/10", "/dev/watchdog0"}) {
        expect_shows({"command", std::string("echo ") + text},
                     std::string(text) + "\nsystem: 0\npopen: " + text + "\npopen: 0\n");
    }
    expect_shows({"command", "exit 9"}, "system: 9\npopen: 9\n");
}

// Behind the file are the simulated drivers, which this program does not have.
TEST_F(BoardFiles, TheWatchdogIsThatOfTheDrivers) {
    expect_shows({"watchdog", "/dev/watchdog"}, "open: No such file or directory\n");
    write("/dev/watchdog", "");
    expect_shows({"watchdog", "/dev/watchdog"},
                 lines({"keep alive", "get timeout"}, "No such device") + "timeout 0\n" +
                     lines({"set timeout", "set timeout to nothing", "disable", "unknown option"}, "No such device"));
    EXPECT_EQ(kestro_tests::read_file(on_desk("/dev/watchdog")), "");
}

TEST_F(BoardFiles, AnotherFileIsNoWatchdog) {
    const std::string file = kestro_tests::scratch_file("file", "");
    write("/dev/watchdog", "");
    const std::string refusal = is_emulated() ? "Function not implemented" : "Inappropriate ioctl for device";
    expect_shows({"watchdog", file},
                 lines({"keep alive", "get timeout"}, refusal) + "timeout 0\n" +
                     lines({"set timeout", "set timeout to nothing", "disable", "unknown option"}, refusal));
}

TEST_F(BoardFiles, ARootThatEndsWithASlashIsTheSame) {
    const process_result result = kestro_tests::run_in_world({"files", "/opt/hostx/home/elabel.txt"},
                                                             {"KESTRO_SIM_ROOT=" + root_.string() + "//"});
    EXPECT_EQ(result.out, lines(open_calls, "label"));
}

TEST_F(BoardFiles, WithoutARootTheDesksFilesAreUsed) {
    const process_result result =
        kestro_tests::run_in_world({"status", "/proc/interrupts"}, {"KESTRO_SIM_ROOT", "KESTRO_SIM_CLOCK"});
    EXPECT_EQ(result.out, lines(stat_calls, "0") + lines(access_calls, "ok"));
}

TEST(WorldEnvironment, OnlyWhatTheDriversReadLaterStays) {
    const std::string other = kestro_tests::build_dir() + "/tests/world/libboard_double.so";
    const std::string world = kestro_tests::build_dir() + "/sim/libkestro_world.so";
    const std::vector<std::string> words = {kestro_tests::build_dir() + "/tests/world/world_helper",
                                            "environment",
                                            "LD_PRELOAD",
                                            "KESTRO_SIM_ROOT",
                                            "KESTRO_SIM_CLOCK",
                                            "KESTRO_SIM_FAIL_ALLOC",
                                            "KESTRO_SIM_WATCHDOG",
                                            "KESTRO_SIM_BOARD",
                                            "KESTRO_SIM_STATE"};
    const auto shown = [&](const std::string &preload) {
        return kestro_tests::run_with(words, {"LD_PRELOAD=" + preload, "KESTRO_SIM_ROOT=/none",
                                              "KESTRO_SIM_CLOCK=virtual", "KESTRO_SIM_FAIL_ALLOC=99999",
                                              "KESTRO_SIM_WATCHDOG=1", "KESTRO_SIM_BOARD=/b", "KESTRO_SIM_STATE=/s"})
            .out;
    };
    const std::string rest = "KESTRO_SIM_ROOT=(none)\nKESTRO_SIM_CLOCK=(none)\nKESTRO_SIM_FAIL_ALLOC=(none)\n"
                             "KESTRO_SIM_WATCHDOG=(none)\nKESTRO_SIM_BOARD=/b\nKESTRO_SIM_STATE=/s\n";
    EXPECT_EQ(shown(world), "LD_PRELOAD=(none)\n" + rest);
    EXPECT_EQ(shown(other + ":" + world), "LD_PRELOAD=" + other + "\n" + rest);
    EXPECT_EQ(shown(world + " " + other), "LD_PRELOAD=" + other + "\n" + rest);
}

} // namespace
