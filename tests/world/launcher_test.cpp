// The launcher's options, what it gives kestro_test, and what it says of mistakes.
#include "tests/world/world_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;
using kestro_tests::process_result;

namespace {

// A build with the launcher in it and, around it, parts that only show what they were given.
class Launcher : public testing::Test {
  protected:
    void SetUp() override {
        tree_ = fs::canonical(kestro_tests::new_scratch_dir());
        const fs::path helpers = fs::path(kestro_tests::build_dir()) / "tests/world";
        for (const char *folder : {"sim/chassis", "probe", "home", "board_files"}) {
            fs::create_directories(tree_ / folder);
        }
        fs::copy_file(fs::path(kestro_tests::build_dir()) / "kestro_sim", tree_ / "kestro_sim");
        fs::copy_file(helpers / "launched_program", tree_ / "kestro_test");
        for (const char *library : {"sim/libkestro_board.so", "sim/libkestro_world.so", "probe/libkestro_probe.so"}) {
            fs::copy_file(helpers / "libboard_double.so", tree_ / library);
        }
        for (const char *board : {"bare", "line_card", "mpu_master", "mpu_slave", "pulled", "watched"}) {
            write(std::string("sim/chassis/") + board + ".seat", "<board/>\n");
        }
    }

    void write(const std::string &name, const std::string &content) const {
        kestro_tests::write_file(path(name), content);
    }

    std::string path(const std::string &name) const {
        return (tree_ / name).string();
    }

    process_result run(std::vector<std::string> words, const std::vector<std::string> &environment = {}) const {
        words.insert(words.begin(), path("kestro_sim"));
        // run_process knows the emulator for programs of the build only.
        const char *emulator = getenv("KESTRO_EMULATOR");
        if (emulator != nullptr) {
            words.insert(words.begin(), emulator);
        }
        std::vector<std::string> all = environment;
        for (const std::string &usual : {"HOME=" + path("home"), std::string("XDG_STATE_HOME"),
                                         std::string("LD_PRELOAD"), std::string("LD_LIBRARY_PATH")}) {
            const std::string name = usual.substr(0, usual.find('='));
            const bool changed = std::any_of(environment.begin(), environment.end(), [&](const std::string &change) {
                return change.substr(0, change.find('=')) == name;
            });
            if (!changed) {
                all.push_back(usual);
            }
        }
        return kestro_tests::run_with(words, all, tree_.string());
    }

    // What kestro_test is given when nothing was asked for.
    std::string default_environment() const {
        return environment_of("seat_of_mpu_master", path("home/.local/state/kestro_sim/double"));
    }

    // Of the libraries that are linked, and of each that a board may lack.
    std::string folders_without(const std::vector<std::string> &lacking = {}) const {
        std::string folders = path("sim");
        for (const std::string library :
             {"drv_clusterport", "drv_inner_eth", "drv_mng_eth", "drv_inphi115050", "optical_lib"}) {
            const bool is_there = std::find(lacking.begin(), lacking.end(), library) == lacking.end();
            folders += is_there ? ":" + path("sim/opened/" + library) : "";
        }
        return folders;
    }

    std::string environment_of(const std::string &seat, const std::string &state) const {
        return "LD_LIBRARY_PATH=" + folders_without() + "\nLD_PRELOAD=" + path("sim/libkestro_world.so") +
               "\nKESTRO_SIM_BOARD=" + state + "/merged.xml\nKESTRO_SIM_SEAT=" + seat + "\nKESTRO_SIM_STATE=" + state +
               "\nKESTRO_SIM_ROOT=" + state + "/root/" + seat +
               "\nKESTRO_SIM_CLOCK=real\nKESTRO_SIM_TIME=(none)\nKESTRO_SIM_FAIL_ALLOC=(none)\n"
               "KESTRO_SIM_WATCHDOG=(none)\nKESTRO_PROBE_SCRIPT=(none)\n"
               "KESTRO_PROBE_STRICT=(none)\nKESTRO_PROBE_TRACE=(none)\nKESTRO_PROBE_TRACE_OUTPUT=(none)\nKESTRO_PROBE_"
               "REPLAY=(none)\n"
               "KESTRO_PROBE_FAIL_CALL=(none)\nKESTRO_PROBE_SIGNAL_CALL=(none)\n";
    }

    std::string word(const std::string &text) const {
        return "word[" + text + "]\n";
    }

    void expect_runs(const process_result &result, const std::string &out) const {
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }

    void expect_refused(const process_result &result, const std::string &message) const {
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "kestro_sim: " + message + "\n");
        EXPECT_EQ(result.status, 2);
    }

    // A process of its own removes the copy a moment after the run has ended.
    void expect_removed(const std::string &copy) const {
        for (int tries = 0; fs::exists(copy) && tries < 10000; ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_FALSE(fs::exists(copy)) << copy;
    }

    // One line of what kestro_test was given.
    std::string given(const process_result &result, const std::string &name) const {
        EXPECT_EQ(result.err, "");
        const size_t begin = result.out.find("\n" + name + "=");
        if (begin == std::string::npos) {
            return "(not shown)";
        }
        const size_t value = begin + name.size() + 2;
        return result.out.substr(value, result.out.find('\n', value) - value);
    }

    fs::path tree_;
};

TEST_F(Launcher, WithoutAnOptionStartsTheMasterOnTheRealClock) {
    expect_runs(run({}), word(path("kestro_test")) + default_environment());
    EXPECT_EQ(kestro_tests::read_file(path("home/.local/state/kestro_sim/double/prepared")),
              path("sim/chassis/mpu_master.seat") + "\nkept\n");
}

TEST_F(Launcher, HandsWordsOnUntouched) {
    expect_runs(run({"mac_test", "-h", "--help", "-?", "", "--", "[1,2]", "a b", "--board", "%%", "{}"}),
                word(path("kestro_test")) + word("mac_test") + word("-h") + word("--help") + word("-?") + word("") +
                    word("--") + word("[1,2]") + word("a b") + word("--board") + word("%%") + word("{}") +
                    default_environment());
}

TEST_F(Launcher, HandsOnWordsThatBeginWithADashAfterTwoDashes) {
    expect_runs(run({"--", "--help"}), word(path("kestro_test")) + word("--help") + default_environment());
    expect_runs(run({"--", "-?", "--"}), word(path("kestro_test")) + word("-?") + word("--") + default_environment());
    expect_runs(run({"--", "--board", "x"}),
                word(path("kestro_test")) + word("--board") + word("x") + default_environment());
}

TEST_F(Launcher, TheFirstWordMayBeEmptyOrADash) {
    expect_runs(run({"", "--reset"}), word(path("kestro_test")) + word("") + word("--reset") + default_environment());
    expect_runs(run({"-", "--reset"}), word(path("kestro_test")) + word("-") + word("--reset") + default_environment());
}

TEST_F(Launcher, HelpNamesEveryOption) {
    const process_result result = run({"--help"});
    for (const char *option : {"--help", "--board NAME|FILE", "--state DIR", "--root DIR", "--clock real|virtual",
                               "--script FILE", "--strict", "--trace FILE", "--trace-output", "--replay FILE",
                               "--fail-call N[+][=CODE]", "--signal-call N[,N][=NAME]", "--fail-alloc N",
                               "--without LIBRARY", "--reset", "--accept-images", "--discard"}) {
        EXPECT_NE(result.out.find(std::string("  ") + option + " "), std::string::npos) << option << result.out;
    }
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(fs::exists(path("home/.local")));
}

TEST_F(Launcher, TakesABoardByName) {
    expect_runs(run({"--board", "line_card", "x"}),
                word(path("kestro_test")) + word("x") +
                    environment_of("seat_of_line_card", path("home/.local/state/kestro_sim/double")));
}

TEST_F(Launcher, TakesABoardFileAsItIs) {
    write("odd.xml", "<board/>");
    const std::string expected =
        word(path("kestro_test")) + environment_of("seat_of_file", path("home/.local/state/kestro_sim/own"));
    expect_runs(run({"--board", "odd.xml"}), expected);
    expect_runs(run({"--board=./probe/../odd.xml"}), expected);
    expect_runs(run({"--board", path("odd.xml")}), expected);
}

TEST_F(Launcher, TheLastOfSeveralValuesHolds) {
    EXPECT_EQ(given(run({"--board", "line_card", "--board", "mpu_slave"}), "KESTRO_SIM_SEAT"), "seat_of_mpu_slave");
}

TEST_F(Launcher, KeepsTheStateWhereItIsTold) {
    EXPECT_EQ(given(run({"--state", "here"}), "KESTRO_SIM_STATE"), path("here"));
    EXPECT_EQ(given(run({"--state", "here"}), "KESTRO_SIM_ROOT"), path("here/root/seat_of_mpu_master"));
    EXPECT_EQ(given(run({}, {"XDG_STATE_HOME=" + path("states")}), "KESTRO_SIM_STATE"),
              path("states/kestro_sim/double"));
    // A relative base directory does not count.
    EXPECT_EQ(given(run({}, {"XDG_STATE_HOME=states"}), "KESTRO_SIM_STATE"),
              path("home/.local/state/kestro_sim/double"));
    EXPECT_EQ(given(run({"--state", "here"}, {"HOME"}), "KESTRO_SIM_STATE"), path("here"));
}

TEST_F(Launcher, ResetMakesTheBoardNew) {
    run({"--reset", "--state", "here"});
    EXPECT_EQ(kestro_tests::read_file(path("here/prepared")), path("sim/chassis/mpu_master.seat") + "\nreset\n");
}

TEST_F(Launcher, AcceptsImagesOfAStateThatIsReady) {
    run({"--accept-images", "--state", "here"});
    EXPECT_EQ(kestro_tests::read_file(path("here/prepared")),
              path("sim/chassis/mpu_master.seat") + "\nkept\naccepted\n");
    write("here/odd image", "");
    expect_refused(run({"--accept-images", "--state", "here"}),
                   path("here/odd image") + ": is no file of 8 bytes; put one of that size there");
}

TEST_F(Launcher, SaysThatItsDirectoryIsGone) {
    fs::create_directories(path("gone"));
    const process_result result = kestro_tests::run_with(
        {"/bin/sh", "-c", "cd gone && rmdir ../gone && exec ${KESTRO_EMULATOR:-} \"$0\" --state here",
         path("kestro_sim")},
        {}, tree_.string());
    expect_refused(result, "here: the directory that kestro_sim was started in is gone (No such file or directory); "
                           "start it in another, or give the whole path");
}

TEST_F(Launcher, DiscardRunsOnACopyOfTheState) {
    run({"--state", "here"});
    write("here/kept", "as it was");
    const process_result result = run({"--state", "here", "--discard", "keep", "kept"});
    const std::string copy = given(result, "KESTRO_SIM_STATE");
    EXPECT_NE(copy, path("here"));
    EXPECT_EQ(given(result, "KESTRO_SIM_ROOT"), copy + "/root/seat_of_mpu_master");
    EXPECT_EQ(given(result, "file"), "as it was");
    EXPECT_EQ(kestro_tests::read_file(path("here/kept")), "as it was");
    expect_removed(copy);
    const std::string elsewhere = path("home");
    EXPECT_EQ(given(run({"--state", "here", "--discard"}, {"TMPDIR=" + elsewhere}), "KESTRO_SIM_STATE")
                  .substr(0, elsewhere.size() + 12),
              elsewhere + "/kestro_sim-");
    EXPECT_EQ(given(run({"--state", "here", "--discard", "--root", "board_files"}), "KESTRO_SIM_ROOT"),
              path("board_files"));
}

// A pipe that somebody put in the place of a board's file is none to read from, in the copy as in the state.
TEST_F(Launcher, DiscardTakesPipesAlongAsPipes) {
    run({"--state", "here"});
    ASSERT_EQ(mkfifo(path("here/pipe").c_str(), 0600), 0);
    const process_result result = run({"--state", "here", "--discard", "keep", "kept"});
    EXPECT_EQ(result.err, "");
    expect_removed(given(result, "KESTRO_SIM_STATE"));
}

TEST_F(Launcher, DiscardRemovesTheCopyWhicheverWayTheRunEnds) {
    expect_removed(given(run({"--state", "here", "--discard", "exit", "7"}), "KESTRO_SIM_STATE"));
    process_result crashed = run({"--state", "here", "--discard", "crash"});
    EXPECT_EQ(crashed.status, 128 + 11);
    // An emulator tells of the crash itself.
    crashed.err.clear();
    expect_removed(given(crashed, "KESTRO_SIM_STATE"));
    // No child of the launcher's is left for the program to wait for.
    EXPECT_EQ(given(run({"--state", "here", "--discard", "children"}), "children"), "none");
}

TEST_F(Launcher, DiscardNeedsAPlaceForTheCopy) {
    run({"--state", "here"});
    expect_refused(run({"--state", "here", "--discard"}, {"TMPDIR=" + path("none")}),
                   path("none") +
                       ": No such file or directory; --discard needs room for a copy of the state; TMPDIR says where");
}

TEST_F(Launcher, HandsEachOptionOnAsAVariable) {
    write("calls", "");
    EXPECT_EQ(given(run({"--root", "board_files"}), "KESTRO_SIM_ROOT"), path("board_files"));
    EXPECT_EQ(given(run({"--clock", "virtual"}), "KESTRO_SIM_CLOCK"), "virtual");
    EXPECT_EQ(given(run({"--clock", "virtual"}), "KESTRO_SIM_TIME"), "2500000000");
    EXPECT_EQ(given(run({"--clock", "real"}), "KESTRO_SIM_CLOCK"), "real");
    EXPECT_EQ(given(run({"--fail-alloc", "12"}), "KESTRO_SIM_FAIL_ALLOC"), "12");
    EXPECT_EQ(given(run({"--script", "calls"}), "KESTRO_PROBE_SCRIPT"), path("calls"));
    EXPECT_EQ(given(run({"--replay", "calls"}), "KESTRO_PROBE_REPLAY"), path("calls"));
    EXPECT_EQ(given(run({"--trace", "made"}), "KESTRO_PROBE_TRACE"), path("made"));
    EXPECT_EQ(given(run({"--trace", "made", "--trace-output"}), "KESTRO_PROBE_TRACE_OUTPUT"), "1");
    EXPECT_EQ(given(run({"--strict"}), "KESTRO_PROBE_STRICT"), "1");
    for (const char *call : {"1", "7=0x811101A4", "4294967295=0", "3+", "3+=57005"}) {
        EXPECT_EQ(given(run({"--fail-call", call}), "KESTRO_PROBE_FAIL_CALL"), call);
    }
    for (const char *calls : {"1", "3,3", "3,7,11=TERM", "2=HUP", "2=INT"}) {
        EXPECT_EQ(given(run({"--signal-call", calls}), "KESTRO_PROBE_SIGNAL_CALL"), calls);
    }
}

TEST_F(Launcher, LoadsTheProbeOnlyWhenItHasWork) {
    write("calls", "");
    const std::string both = path("probe/libkestro_probe.so") + ":" + path("sim/libkestro_world.so");
    EXPECT_EQ(given(run({"--clock", "virtual", "--fail-alloc", "1"}), "LD_PRELOAD"), path("sim/libkestro_world.so"));
    EXPECT_EQ(given(run({"--strict"}), "LD_PRELOAD"), both);
    EXPECT_EQ(given(run({"--fail-call", "1"}), "LD_PRELOAD"), both);
    EXPECT_EQ(given(run({"--script", "calls"}), "LD_PRELOAD"), both);
    EXPECT_EQ(given(run({"--replay", "calls"}), "LD_PRELOAD"), both);
    EXPECT_EQ(given(run({"--trace", "made"}), "LD_PRELOAD"), both);
}

TEST_F(Launcher, KeepsTheLoaderPathsOfTheUser) {
    const std::string extra = path("sim/libkestro_board.so");
    const process_result result = run({}, {"LD_PRELOAD=" + extra, "LD_LIBRARY_PATH=/usr/games:/usr/local/games"});
    EXPECT_EQ(given(result, "LD_PRELOAD"), extra + ":" + path("sim/libkestro_world.so"));
    EXPECT_EQ(given(result, "LD_LIBRARY_PATH"), folders_without() + ":/usr/games:/usr/local/games");
}

TEST_F(Launcher, LeavesOutTheLibrariesThatABoardLacks) {
    const auto folders = [&](const std::vector<std::string> &options) {
        return given(run(options), "LD_LIBRARY_PATH");
    };
    EXPECT_EQ(folders({"--without", "drv_mng_eth"}), folders_without({"drv_mng_eth"}));
    EXPECT_EQ(folders({"--without", "liboptical_lib.so", "--without", "drv_inner_eth"}),
              folders_without({"optical_lib", "drv_inner_eth"}));
    EXPECT_EQ(folders({"--board", "bare"}), folders_without({"drv_mng_eth", "drv_clusterport"}));
    EXPECT_EQ(folders({"--board", "bare", "--without", "drv_inphi115050"}),
              folders_without({"drv_mng_eth", "drv_clusterport", "drv_inphi115050"}));
}

// A board is looked at in front of a run when any watchdog is on.
TEST_F(Launcher, SaysWhetherTheWatchdogOfTheBoardIsOn) {
    const std::string settled = path("home/.local/state/kestro_sim/double/settled");
    EXPECT_EQ(given(run({}), "KESTRO_SIM_WATCHDOG"), "(none)");
    EXPECT_FALSE(fs::exists(settled));
    EXPECT_EQ(given(run({"--board", "mpu_slave"}), "KESTRO_SIM_WATCHDOG"), "(none)");
    EXPECT_EQ(kestro_tests::read_file(settled), "merged.xml");
    EXPECT_EQ(given(run({"--board", "watched"}), "KESTRO_SIM_WATCHDOG"), "1");
}

TEST_F(Launcher, ClearsWhatAnEarlierRunLeft) {
    expect_runs(run({}, {"KESTRO_SIM_BOARD=a", "KESTRO_SIM_STATE=b", "KESTRO_SIM_ROOT=c", "KESTRO_SIM_CLOCK=virtual",
                         "KESTRO_SIM_TIME=77", "KESTRO_SIM_FAIL_ALLOC=1", "KESTRO_SIM_WATCHDOG=1",
                         "KESTRO_PROBE_SCRIPT=d", "KESTRO_PROBE_STRICT=1", "KESTRO_PROBE_TRACE=e",
                         "KESTRO_PROBE_TRACE_OUTPUT=1", "KESTRO_PROBE_REPLAY=f", "KESTRO_PROBE_FAIL_CALL=1"}),
                word(path("kestro_test")) + default_environment());
}

TEST_F(Launcher, ExitStatusAndSignalsAreTheProductsOwn) {
    EXPECT_EQ(run({"exit", "7"}).status, 7);
    EXPECT_EQ(run({"exit", "255"}).status, 255);
    EXPECT_EQ(run({"crash"}).status, 128 + 11);
}

TEST_F(Launcher, KeepsWhatATraceFileHolds) {
    write("old", "kept\n");
    run({"--trace", "old"});
    EXPECT_EQ(kestro_tests::read_file(path("old")), "kept\n");
}

TEST_F(Launcher, RefusesUnknownOptions) {
    const std::string right = "there is no such option; kestro_sim --help lists them, and words for kestro_test that "
                              "begin with - follow --";
    expect_refused(run({"--bord", "x"}), "--bord: " + right);
    expect_refused(run({"--reset", "--bord=x"}), "--bord: " + right);
    expect_refused(run({"-h"}), "-h: " + right);
    expect_refused(run({"-?"}), "-?: " + right);
}

TEST_F(Launcher, RefusesAMissingOrEmptyValue) {
    expect_refused(run({"--board"}), "--board: its value is missing; right is --board NAME|FILE");
    expect_refused(run({"--reset", "--fail-call"}),
                   "--fail-call: its value is missing; right is --fail-call N[+][=CODE]");
    expect_refused(run({"--state", ""}), "--state: its value is empty; right is --state DIR");
    expect_refused(run({"--script="}), "--script: its value is empty; right is --script FILE");
}

TEST_F(Launcher, RefusesAnUnknownBoard) {
    expect_refused(run({"--board", "mpu"}), "--board: there is no board 'mpu'; right is another");
}

TEST_F(Launcher, SaysWhatIsWrongWithADescription) {
    write("broken.xml", "<broken/>");
    expect_refused(run({"--board", "broken.xml"}),
                   path("broken.xml") + ":1: <broken> stands here; here <board> is due");
}

TEST_F(Launcher, PullsAndPlugsBeforeTheRun) {
    EXPECT_EQ(
        given(run({"--state", "here", "--pull", "slot5", "--plug=slot2", "--pull", "slot4", "x"}), "KESTRO_SIM_SEAT"),
        "seat_of_mpu_master");
    EXPECT_EQ(kestro_tests::read_file(path("here/refitted")), "merged.xml pull slot5 pull slot4 plug slot2");
}

TEST_F(Launcher, PullsAndPlugsWithoutARun) {
    fs::remove(path("kestro_test"));
    const process_result result = run({"--state", "here", "--plug", "slot5"});
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(kestro_tests::read_file(path("here/refitted")), "merged.xml plug slot5");
}

TEST_F(Launcher, RefusesToRunOnABoardThatIsPulledOut) {
    expect_refused(run({"--board", "pulled", "x"}), "the board at seat_of_pulled is pulled out");
}

TEST_F(Launcher, RefusesAnotherClock) {
    expect_refused(run({"--clock", "fast"}), "--clock: 'fast' is no clock; right are real and virtual");
    expect_refused(run({"--clock="}), "--clock: its value is empty; right is --clock real|virtual");
}

TEST_F(Launcher, RefusesNumbersThatNameNothing) {
    for (const char *call : {"0", "x", "-1", "1x", "1=", "1=0x", "1=100000000000", "1++", "+", "0x1", " 1", "=5"}) {
        expect_refused(run({std::string("--fail-call=") + call}),
                       std::string("--fail-call: '") + call +
                           "' names no call; right are N, N+, N=CODE and N+=CODE, N from 1 on, CODE decimal or "
                           "0x-hexadecimal");
    }
    for (const char *calls : {"0", "x", "1,", ",1", "1,0", "1=", "1=KILL", "1=int", "1 ,2", "=TERM", "1+"}) {
        expect_refused(run({std::string("--signal-call=") + calls}),
                       std::string("--signal-call: '") + calls +
                           "' names no call; right are N, N,N and N=TERM, N from 1 on, the signal INT, TERM or HUP");
    }
    for (const char *number : {"0", "x", "-1", "1+", "1=5", "99999999999"}) {
        expect_refused(run({"--fail-alloc", number}),
                       std::string("--fail-alloc: '") + number + "' names no allocation; right is a number from 1 on");
    }
}

TEST_F(Launcher, RefusesToLeaveOutWhatEveryBoardHas) {
    for (const char *library : {"drv_basic", "libdrv_basic.so", "mng_eth", "libdrv_mng_eth", ".so"}) {
        expect_refused(run({"--without", library}), "--without: '" + std::string(library) +
                                                        "' is no library that a board may lack; right are "
                                                        "drv_clusterport, drv_inner_eth, drv_mng_eth, "
                                                        "drv_inphi115050, optical_lib");
    }
}

TEST_F(Launcher, RefusesToShowTheOutputInNoTrace) {
    expect_refused(run({"--trace-output"}),
                   "--trace-output: there is no trace to show the output in; add --trace FILE");
}

TEST_F(Launcher, RefusesToReplayBesideAScript) {
    const std::string message = "--replay: a recording answers every call by itself; leave out --script and --strict";
    write("calls", "");
    expect_refused(run({"--replay", "calls", "--script", "calls"}), message);
    expect_refused(run({"--strict", "--replay", "calls"}), message);
}

TEST_F(Launcher, RefusesFilesThatAreNotThere) {
    expect_refused(run({"--script", "none"}),
                   path("none") + ": No such file or directory; --script takes a file that can be read");
    expect_refused(run({"--replay", "none"}),
                   path("none") + ": No such file or directory; --replay takes a file that can be read");
    expect_refused(run({"--script", "probe"}), path("probe") + ": is a directory; --script takes a file");
    expect_refused(run({"--trace", "none/trace"}),
                   path("none/trace") + ": No such file or directory; --trace takes a file that can be written");
    expect_refused(run({"--trace", "probe"}),
                   path("probe") + ": Is a directory; --trace takes a file that can be written");
    expect_refused(run({"--root", "none"}), path("none") + ": there is no such directory; --root takes one that is "
                                                           "laid out like the board's root");
    write("file", "");
    expect_refused(run({"--root", "file"}), path("file") + ": there is no such directory; --root takes one that is "
                                                           "laid out like the board's root");
}

TEST_F(Launcher, RefusesToRunWithoutAPlaceForTheState) {
    const std::string message = "--state: neither XDG_STATE_HOME nor HOME is an absolute path; set one of them, or "
                                "name a directory with --state";
    expect_refused(run({}, {"HOME"}), message);
    expect_refused(run({}, {"HOME=here", "XDG_STATE_HOME="}), message);
}

TEST_F(Launcher, RefusesToRunWithoutAllItsParts) {
    fs::permissions(path("kestro_test"), fs::perms::owner_read);
    expect_refused(run({}), path("kestro_test") + ": Permission denied; kestro_test must be a program that can be "
                                                  "run");
    fs::remove(path("kestro_test"));
    expect_refused(run({}), path("kestro_test") + ": there is no such program; kestro_test lies beside kestro_sim");
    write("kestro_test", "");
    fs::permissions(path("kestro_test"), fs::perms::owner_all);
    fs::remove(path("probe/libkestro_probe.so"));
    expect_refused(run({"--strict"}), path("probe/libkestro_probe.so") +
                                          ": No such file or directory; the whole of kestro_test must be built");
    fs::remove(path("sim/libkestro_world.so"));
    expect_refused(run({}), path("sim/libkestro_world.so") +
                                ": No such file or directory; the whole of kestro_test must be built");
}

TEST_F(Launcher, RefusesAPathThatCannotBePreloaded) {
    const fs::path blank = tree_ / "a b";
    fs::create_directories(blank);
    for (const char *part : {"sim", "probe", "kestro_test"}) {
        fs::rename(tree_ / part, blank / part);
    }
    fs::rename(tree_ / "kestro_sim", blank / "kestro_sim");
    tree_ = blank;
    expect_refused(run({"--state", "here"}), path("sim/libkestro_world.so") +
                                                 ": the loader cannot preload from a path with a blank or a colon; "
                                                 "move the build to a path without");
}

TEST_F(Launcher, RunsThroughAnEmulator) {
    write("emulator", "#!/bin/sh\nunset LD_PRELOAD LD_LIBRARY_PATH\nprintf 'emulated[%s]\\n' \"$@\"\n");
    fs::permissions(path("emulator"), fs::perms::owner_all);
    const process_result result = run({"--", "-h"}, {"KESTRO_EMULATOR=" + path("emulator")});
    EXPECT_EQ(result.out, "emulated[" + path("kestro_test") + "]\nemulated[-h]\n");
}

TEST_F(Launcher, SaysWhenTheEmulatorIsNotThere) {
    expect_refused(run({}, {"KESTRO_EMULATOR=/none"}),
                   "/none: No such file or directory; KESTRO_EMULATOR takes the path of a program");
}

} // namespace
