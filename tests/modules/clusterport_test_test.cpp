// clusterport_test: every sub-command on the real program, with the drivers scripted; and with the library of the
// cluster ports, or the basic one, at fault.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/command.h"
#include "tests/support/library_faults.h"
#include "tests/support/simulator.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

// What comes before each operation on a port.
const std::string clusterport_board_up = "drv_cpld_init(inst_id=0xffffffff) = 0\n"
                                         "drv_localbus_init(inst_id=0xffffffff) = 0\n";
const std::string clusterport_up = clusterport_board_up + "drv_clusterport_init() = 0\n";

// A sub-command of a port with words that it takes, and what the table has for it.
struct port_command {
    std::string name;
    std::string words;
    std::string call;
    std::string echo;
    std::string refused; // the line of an operation that fails with 0x811101a4
    std::string lacking; // the line of a library without the operation
    std::string usage;
};

const std::vector<port_command> port_commands = {
    {"drv_clusterport_get_phy_test", "3", "drv_clusterport_get_phy_test(port=3)", "clusterport:3 \n\n",
     "drv_clusterport_get_phy_test ret:0x811101a4\n\n", "dlsym drv_clusterport_get_phy_test fail\n",
     "invalid arg num [port]\n"},
    {"drv_clusterport_set_shut", "3 1", "drv_clusterport_set_shut(port=3, flag=1)", "clusterport:3 flag:1\n\n",
     "drv_clusterport_set_shut ret:0x811101a4\n\n", "dlsym drv_clusterport_set_shut fail\n",
     "invalid arg num [port] [flag]\n"},
    {"drv_clusterport_get_speed", "3", "drv_clusterport_get_speed(port=3)", "clusterport:3 \n\n",
     "drv_clusterport_get_speed ret:0x811101a4\n\n", "dlsym drv_clusterport_get_speed fail\n",
     "invalid arg num [port]\n"},
    {"drv_clusterport_set_speed", "3 1000", "drv_clusterport_set_speed(port=3, speed=1000)",
     "clusterport:3 speed:1000\n\n", "drv_clusterport_set_speed ret:0x811101a4\n\n",
     "dlsym drv_clusterport_set_speed fail\n", "invalid arg num [port] [speed]\n"},
    {"drv_clusterport_get_mode", "3", "drv_clusterport_get_mode(port=3)", "clusterport:3 \n\n",
     "drv_clusterport_get_mode ret:0x811101a4\n\n", "dlsym drv_clusterport_get_mode fail\n",
     "invalid arg num [port]\n"},
    {"drv_clusterport_get_link_status", "3", "drv_clusterport_get_link_status(port=3)", "clusterport:3 \n\n",
     "drv_clusterport_get_link_status ret:0x811101a4\n\n", "dlsym drv_clusterport_get_link_status fail\n",
     "invalid arg num [port]\n"},
    {"drv_clusterport_get_statistics", "3", "drv_clusterport_get_statistics(port=3)", "clusterport:3 \n\n",
     "drv_clusterport_get_statistics ret:0x811101a4\n\n", "dlsym drv_clusterport_get_statistics fail\n",
     "invalid arg num [port]\n"},
    {"drv_clusterport_reset", "3 1", "drv_clusterport_reset(port=3, reset_type=1)", "clusterport:3 reset_type:1\n\n",
     "drv_clusterport_reset ret:0x811101a4\n\n", "dlsym drv_clusterport_reset fail\n",
     "invalid arg num [port] [reset_type]\n"},
    {"drv_clusterport_set_led", "3 2", "drv_clusterport_set_led(port=3, oper_type=2)", "clusterport:3 oper_type:2\n\n",
     "drv_clusterport_set_led ret:0x811101a4\n\n", "dlsym drv_clusterport_set_led fail\n",
     "invalid arg num [port] [oper_type]\n"},
};

std::string cluster_line(const port_command &command) {
    return "clusterport_test " + command.name + " " + command.words;
}

// The sub-commands that begin with the bring-up of the board: those of a port, and the bring-up of the ports.
std::vector<std::string> lines_with_board_bring_up() {
    std::vector<std::string> lines = {"clusterport_test drv_clusterport_init"};
    for (const port_command &command : port_commands) {
        lines.push_back(cluster_line(command));
    }
    return lines;
}

// How these open their library, of which the statistics have a spelling of their own.
std::string cluster_open_failure(const std::string &name) {
    return name == "drv_clusterport_get_statistics" ? "dlopen libdrv_clusterport.so fail,error <system> <loader>\n"
                                                    : "dlopen libdrv_clusterport.so fail, error <system> <loader>\n";
}

void expect_cluster_library_used(const std::string &line, const std::string &script, int opened, int closed) {
    if (lists_lines() || !is_tried_here(line + script)) {
        return;
    }
    SCOPED_TRACE("kestro_test " + line);
    const library_use use = library_used("drv_clusterport", line, script);
    EXPECT_EQ(use.opened, opened);
    EXPECT_EQ(use.closed, closed);
}

void expect_port_success(const std::string &words, const std::string &answered_call, const std::string &body) {
    expect_success("clusterport_test " + words, clusterport_up + answered_call, body);
}

} // namespace

TEST(ClusterportTest, UsageListsTheSubCommandsInOrder) {
    expect_run("clusterport_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_clusterport_init\n"
               " drv_clusterport_exit\n"
               " drv_clusterport_get_phy_test port\n"
               " drv_clusterport_set_shut port flag\n"
               " drv_clusterport_get_speed port\n"
               " drv_clusterport_set_speed port speed\n"
               " drv_clusterport_get_mode port\n"
               " drv_clusterport_get_link_status port\n"
               " drv_clusterport_get_statistics port\n"
               " drv_clusterport_reset port reset_type\n"
               " drv_clusterport_set_led port oper_type\n",
               0);
}

// The whole of one run, written out.
TEST(ClusterportTest, AWholeRun) {
    expect_run("clusterport_test drv_clusterport_get_speed 3",
               "drv_cpld_init(inst_id=0xffffffff) = 0\n"
               "drv_localbus_init(inst_id=0xffffffff) = 0\n"
               "drv_clusterport_init() = 0\n"
               "drv_clusterport_get_speed(port=3) = 0 speed=1000",
               "clusterport:3 \n\nclusterport:3 speed:1000 \n\n"
               "cmd_exec used second:0\r\ncmd_exec used millisecond:0\r\n",
               0);
}

TEST(ClusterportTest, TheBoardComesUpFirstThenTheLibraryThenTheOperation) {
    if (lists_lines()) {
        return;
    }
    const std::string script = new_scratch_dir() + "/script";
    const std::string trace = new_scratch_dir() + "/trace";
    write_file(script, clusterport_up + "drv_clusterport_set_led(port=3, oper_type=2) = 0\n");
    const process_result result =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--script", script, "--trace", trace},
                {"clusterport_test", "drv_clusterport_set_led", "3", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(read_file(trace), "drv_cpld_init(inst_id=0xffffffff) = 0x0\n"
                                "drv_localbus_init(inst_id=0xffffffff) = 0x0\n"
                                "drv_clusterport_init() = 0x0\n"
                                "drv_clusterport_set_led(port=3, oper_type=2) = 0x0\n");
}

TEST(ClusterportTest, Init) {
    expect_success("clusterport_test drv_clusterport_init", clusterport_up, "drv_clusterport_init ret:0\n\n");
    expect_failure("clusterport_test drv_clusterport_init",
                   clusterport_board_up + "drv_clusterport_init() = 0x811101a4",
                   "drv_clusterport_init ret:0x811101a4\n\n");
    expect_failure("clusterport_test drv_clusterport_init 0", "", "invalid arg num\n");
    expect_failure("clusterport_test drv_clusterport_init port", "", "invalid arg num\n");
    expect_failure("clusterport_test drv_clusterport_init 1 2", "", "invalid arg num\n");
}

// Nothing is brought up before it.
TEST(ClusterportTest, Exit) {
    expect_success("clusterport_test drv_clusterport_exit", "drv_clusterport_exit() = 0",
                   "drv_clusterport_exit ret:0\n\n");
    expect_failure("clusterport_test drv_clusterport_exit", "drv_clusterport_exit() = 0x811101a4",
                   "drv_clusterport_exit ret:2165375396\n\n");
    expect_failure("clusterport_test drv_clusterport_exit 0", "", "invalid arg num\n");
    expect_failure("clusterport_test drv_clusterport_exit port", "", "invalid arg num\n");
    expect_failure("clusterport_test drv_clusterport_exit 1 2", "", "invalid arg num\n");
}

TEST(ClusterportTest, GetPhyTest) {
    expect_port_success("drv_clusterport_get_phy_test 3", "drv_clusterport_get_phy_test(port=3) = 0 result=7",
                        "clusterport:3 \n\nclusterport:3 selftest result:7 \n\n");
    expect_port_success("drv_clusterport_get_phy_test 0x10",
                        "drv_clusterport_get_phy_test(port=16) = 0 result=0xffffffff",
                        "clusterport:16 \n\nclusterport:16 selftest result:4294967295 \n\n");
    expect_port_success("drv_clusterport_get_phy_test port", "drv_clusterport_get_phy_test(port=0) = 0",
                        "clusterport:0 \n\nclusterport:0 selftest result:0 \n\n");
}

TEST(ClusterportTest, SetShut) {
    expect_port_success("drv_clusterport_set_shut 3 1", "drv_clusterport_set_shut(port=3, flag=1) = 0",
                        "clusterport:3 flag:1\n\n");
    expect_port_success("drv_clusterport_set_shut 010 0xffffffff",
                        "drv_clusterport_set_shut(port=8, flag=0xffffffff) = 0", "clusterport:8 flag:4294967295\n\n");
    expect_port_success("drv_clusterport_set_shut port flag", "drv_clusterport_set_shut(port=0, flag=0) = 0",
                        "clusterport:0 flag:0\n\n");
}

TEST(ClusterportTest, GetSpeed) {
    expect_port_success("drv_clusterport_get_speed 4294967295",
                        "drv_clusterport_get_speed(port=0xffffffff) = 0 speed=0xfffffffe",
                        "clusterport:4294967295 \n\nclusterport:4294967295 speed:4294967294 \n\n");
    expect_port_success("drv_clusterport_get_speed port", "drv_clusterport_get_speed(port=0) = 0",
                        "clusterport:0 \n\nclusterport:0 speed:0 \n\n");
}

TEST(ClusterportTest, SetSpeed) {
    expect_port_success("drv_clusterport_set_speed 3 1000", "drv_clusterport_set_speed(port=3, speed=1000) = 0",
                        "clusterport:3 speed:1000\n\n");
    expect_port_success("drv_clusterport_set_speed 0xffffffff 0x100000000",
                        "drv_clusterport_set_speed(port=0xffffffff, speed=0xffffffff) = 0",
                        "clusterport:4294967295 speed:4294967295\n\n");
    expect_port_success("drv_clusterport_set_speed port speed", "drv_clusterport_set_speed(port=0, speed=0) = 0",
                        "clusterport:0 speed:0\n\n");
}

TEST(ClusterportTest, GetMode) {
    expect_port_success("drv_clusterport_get_mode 3", "drv_clusterport_get_mode(port=3) = 0 mode=1",
                        "clusterport:3 \n\nclusterport:3 mode:1 \n\n");
    expect_port_success("drv_clusterport_get_mode 4", "drv_clusterport_get_mode(port=4) = 0 mode=0xffffffff",
                        "clusterport:4 \n\nclusterport:4 mode:4294967295 \n\n");
    expect_port_success("drv_clusterport_get_mode port", "drv_clusterport_get_mode(port=0) = 0",
                        "clusterport:0 \n\nclusterport:0 mode:0 \n\n");
}

TEST(ClusterportTest, GetLinkStatus) {
    expect_port_success("drv_clusterport_get_link_status 3", "drv_clusterport_get_link_status(port=3) = 0 status=1",
                        "clusterport:3 \n\nclusterport3 link status:1 \n\n");
    expect_port_success("drv_clusterport_get_link_status 0xffffffff",
                        "drv_clusterport_get_link_status(port=0xffffffff) = 0 status=0xffffffff",
                        "clusterport:4294967295 \n\nclusterport4294967295 link status:4294967295 \n\n");
    expect_port_success("drv_clusterport_get_link_status port", "drv_clusterport_get_link_status(port=0) = 0",
                        "clusterport:0 \n\nclusterport0 link status:0 \n\n");
}

TEST(ClusterportTest, GetStatistics) {
    expect_port_success(
        "drv_clusterport_get_statistics 3",
        "drv_clusterport_get_statistics(port=3) = 0 statistics={in_bytes=18446744073709551615 in_frames=4294967296 "
        "in_multicast_frames=103 in_brdcast_frames=104 in_unicast_frames=105 in_fcserr_frames=106 "
        "in_oversize_frames=107 in_jab_frames=108 in_fragment_frames=109 in_drop_frames=110 in_undersize_frames=111 "
        "in_err_frames=112 in_crc_bad_frames=113 in_reserved=114 out_bytes=9223372036854775808 out_frames=116 "
        "out_multicast_frames=117 out_brdcast_frames=118 out_unicast_frames=119 out_err_frames=120 "
        "out_drop_frames=121 out_reserved=122}",
        "clusterport:3 \n\n"
        "clusterport:3 stat:\n"
        "in_bytes is 18446744073709551615\n"
        "in_frames is 4294967296\n"
        "in_multicast_frames is 103\n"
        "in_brdcast_frames is 104\n"
        "in_unicast_frames is 105\n"
        "in_fcserr_frames is 106\n"
        "in_oversize_frames is 107\n"
        "in_jab_frames is 108\n"
        "in_fragment_frames is 109\n"
        "in_drop_frames is 110\n"
        "in_undersize_frames is 111\n"
        "in_err_frames is 112\n"
        "in_crc_bad_frames is 113\n"
        "in_reserved is 114\n"
        "out_bytes is 9223372036854775808\n"
        "out_frames is 116\n"
        "out_multicast_frames is 117\n"
        "out_brdcast_frames is 118\n"
        "out_unicast_frames is 119\n"
        "out_err_frames is 120\n"
        "out_drop_frames is 121\n"
        "out_reserved is 122\n");
}

namespace {

// The counters of a driver that answered well and wrote none of them.
const std::string no_clusterport_frames = "in_bytes is 0\n"
                                          "in_frames is 0\n"
                                          "in_multicast_frames is 0\n"
                                          "in_brdcast_frames is 0\n"
                                          "in_unicast_frames is 0\n"
                                          "in_fcserr_frames is 0\n"
                                          "in_oversize_frames is 0\n"
                                          "in_jab_frames is 0\n"
                                          "in_fragment_frames is 0\n"
                                          "in_drop_frames is 0\n"
                                          "in_undersize_frames is 0\n"
                                          "in_err_frames is 0\n"
                                          "in_crc_bad_frames is 0\n"
                                          "in_reserved is 0\n"
                                          "out_bytes is 0\n"
                                          "out_frames is 0\n"
                                          "out_multicast_frames is 0\n"
                                          "out_brdcast_frames is 0\n"
                                          "out_unicast_frames is 0\n"
                                          "out_err_frames is 0\n"
                                          "out_drop_frames is 0\n"
                                          "out_reserved is 0\n";

} // namespace

// The port is signed in the head of the counters, and nowhere else.
TEST(ClusterportTest, GetStatisticsOfOtherPorts) {
    expect_port_success("drv_clusterport_get_statistics 0xffffffff",
                        "drv_clusterport_get_statistics(port=0xffffffff) = 0",
                        "clusterport:4294967295 \n\nclusterport:-1 stat:\n" + no_clusterport_frames);
    expect_port_success("drv_clusterport_get_statistics port", "drv_clusterport_get_statistics(port=0) = 0",
                        "clusterport:0 \n\nclusterport:0 stat:\n" + no_clusterport_frames);
}

TEST(ClusterportTest, Reset) {
    expect_port_success("drv_clusterport_reset 3 1", "drv_clusterport_reset(port=3, reset_type=1) = 0",
                        "clusterport:3 reset_type:1\n\n");
    expect_port_success("drv_clusterport_reset -1 -2",
                        "drv_clusterport_reset(port=0xffffffff, reset_type=0xfffffffe) = 0",
                        "clusterport:4294967295 reset_type:4294967294\n\n");
    expect_port_success("drv_clusterport_reset port type", "drv_clusterport_reset(port=0, reset_type=0) = 0",
                        "clusterport:0 reset_type:0\n\n");
}

TEST(ClusterportTest, SetLed) {
    expect_port_success("drv_clusterport_set_led 3 2", "drv_clusterport_set_led(port=3, oper_type=2) = 0",
                        "clusterport:3 oper_type:2\n\n");
    expect_port_success("drv_clusterport_set_led 0x1f 0xffffffff",
                        "drv_clusterport_set_led(port=31, oper_type=0xffffffff) = 0",
                        "clusterport:31 oper_type:4294967295\n\n");
    expect_port_success("drv_clusterport_set_led port led", "drv_clusterport_set_led(port=0, oper_type=0) = 0",
                        "clusterport:0 oper_type:0\n\n");
}

TEST(ClusterportTest, AnOperationThatFails) {
    for (const port_command &command : port_commands) {
        expect_failure(cluster_line(command), clusterport_up + command.call + " = 0x811101a4",
                       command.echo + command.refused);
    }
}

// The words are counted before anything is opened.
TEST(ClusterportTest, CountsAreExact) {
    for (const port_command &command : port_commands) {
        expect_failure("clusterport_test " + command.name, "", command.usage);
        expect_failure(cluster_line(command) + " 4", "", command.usage);
        expect_failure(cluster_line(command) + " 4 5", "", command.usage);
    }
    expect_failure("clusterport_test drv_clusterport_set_shut 3", "", "invalid arg num [port] [flag]\n");
    expect_failure("clusterport_test drv_clusterport_set_speed 3", "", "invalid arg num [port] [speed]\n");
    expect_failure("clusterport_test drv_clusterport_reset 3", "", "invalid arg num [port] [reset_type]\n");
    expect_failure("clusterport_test drv_clusterport_set_led 3", "", "invalid arg num [port] [oper_type]\n");
}

TEST(ClusterportTest, PortsThatCannotBeBroughtUp) {
    for (const port_command &command : port_commands) {
        expect_failure(cluster_line(command), clusterport_board_up + "drv_clusterport_init() = 0x811101a4",
                       command.echo + "drv_clusterport_init ret:0x811101a4\n\n");
    }
}

TEST(ClusterportTest, ABoardWhoseCpldsCannotBeBroughtUp) {
    for (const std::string &line : lines_with_board_bring_up()) {
        expect_failure(line, "drv_cpld_init(inst_id=0xffffffff) = 0x811101a4",
                       "drv_cpld_init ret:0x811101a4\n\nclusterport_pre_init ret:0x811101a4\n\n");
    }
}

TEST(ClusterportTest, ABoardWhoseLocalBusCannotBeBroughtUp) {
    for (const std::string &line : lines_with_board_bring_up()) {
        expect_failure(line, "drv_cpld_init(inst_id=0xffffffff) = 0\ndrv_localbus_init(inst_id=0xffffffff) = 0x12",
                       "drv_localbus_init ret:0x12\n\nclusterport_pre_init ret:0x12\n\n");
    }
}

TEST(ClusterportTest, WithoutTheBasicLibrary) {
    for (const std::string &line : lines_with_board_bring_up()) {
        expect_failure_with(missing("drv_basic"), line, "",
                            "dlopen libdrv_basic.so fail, error <system> <loader>\n"
                            "clusterport_pre_init ret:0xffffffff\n\n");
    }
}

// Nothing is brought up where one of the two would be missing.
TEST(ClusterportTest, ABasicLibraryWithoutABringUp) {
    for (const std::string &line : lines_with_board_bring_up()) {
        expect_failure_with(lacking("drv_basic", "drv_cpld_init"), line, "",
                            "dlsym drv_cpld_init fail, error <system> <loader>\n"
                            "clusterport_pre_init ret:0xffffffff\n\n");
        expect_failure_with(lacking("drv_basic", "drv_localbus_init"), line, "",
                            "dlsym drv_localbus_init fail, error <system> <loader>\n"
                            "clusterport_pre_init ret:0xffffffff\n\n");
    }
}

TEST(ClusterportTest, WithoutTheLibrary) {
    expect_failure_with(missing("drv_clusterport"), "clusterport_test drv_clusterport_init", clusterport_board_up,
                        "dlopen libdrv_clusterport.so fail, error <system> <loader>\n");
    expect_failure_with(missing("drv_clusterport"), "clusterport_test drv_clusterport_exit", "",
                        "dlopen libdrv_clusterport.so fail, error <system> <loader>\n");
    for (const port_command &command : port_commands) {
        expect_failure_with(missing("drv_clusterport"), cluster_line(command), clusterport_board_up,
                            cluster_open_failure(command.name));
    }
}

TEST(ClusterportTest, AFileThatIsNoLibrary) {
    expect_failure_with(no_library("drv_clusterport"), "clusterport_test drv_clusterport_init", clusterport_board_up,
                        "dlopen libdrv_clusterport.so fail, error <system> <loader>\n");
    expect_failure_with(no_library("drv_clusterport"), "clusterport_test drv_clusterport_exit", "",
                        "dlopen libdrv_clusterport.so fail, error <system> <loader>\n");
    for (const port_command &command : port_commands) {
        expect_failure_with(no_library("drv_clusterport"), cluster_line(command), clusterport_board_up,
                            cluster_open_failure(command.name));
    }
}

// Those that bring the ports up need that operation, too, and look it up first.
TEST(ClusterportTest, ALibraryWithoutItsBringUp) {
    expect_failure_with(lacking("drv_clusterport", "drv_clusterport_init"), "clusterport_test drv_clusterport_init",
                        clusterport_board_up, "dlsym drv_clusterport_init fail, error <system> <loader>\n");
    for (const port_command &command : port_commands) {
        expect_failure_with(lacking("drv_clusterport", "drv_clusterport_init"), cluster_line(command),
                            clusterport_board_up, "dlsym drv_clusterport_init fail, error <system> <loader>\n");
    }
}

TEST(ClusterportTest, ALibraryWithoutTheOperation) {
    expect_failure_with(lacking("drv_clusterport", "drv_clusterport_exit"), "clusterport_test drv_clusterport_exit", "",
                        "dlsym drv_clusterport_exit fail\n");
    for (const port_command &command : port_commands) {
        expect_failure_with(lacking("drv_clusterport", command.name), cluster_line(command), clusterport_board_up,
                            command.lacking);
    }
}

// Only what a sub-command needs is looked up.
TEST(ClusterportTest, ALibraryWithoutAnotherOperation) {
    expect_run_with(lacking("drv_clusterport", "drv_clusterport_set_led"),
                    "clusterport_test drv_clusterport_get_mode 3",
                    clusterport_up + "drv_clusterport_get_mode(port=3) = 0 mode=1",
                    "clusterport:3 \n\nclusterport:3 mode:1 \n\n" + std::string(timing_lines), 0);
    expect_run_with(lacking("drv_clusterport", "drv_clusterport_init"), "clusterport_test drv_clusterport_exit",
                    "drv_clusterport_exit() = 0", "drv_clusterport_exit ret:0\n\n" + std::string(timing_lines), 0);
}

TEST(ClusterportTest, ALibraryThatCrashesWhileItIsLoaded) {
    expect_run_with(crashing("drv_clusterport"), "clusterport_test drv_clusterport_get_mode 3", clusterport_board_up,
                    "", 128 + SIGSEGV);
}

TEST(ClusterportTest, TheLibraryIsClosedAgain) {
    for (const port_command &command : port_commands) {
        const std::string line = cluster_line(command);
        expect_cluster_library_used(line, clusterport_up + command.call + " = 0", 1, 1);
        expect_cluster_library_used(line, clusterport_up + command.call + " = 0x811101a4", 1, 1);
        expect_cluster_library_used(line, clusterport_board_up + "drv_clusterport_init() = 0x811101a4", 1, 1);
    }
    expect_cluster_library_used("clusterport_test drv_clusterport_exit", "drv_clusterport_exit() = 0", 1, 1);
    expect_cluster_library_used("clusterport_test drv_clusterport_exit", "drv_clusterport_exit() = 0x811101a4", 1, 1);
}

TEST(ClusterportTest, OnlyPortsThatCameUpKeepTheirLibrary) {
    const std::string line = "clusterport_test drv_clusterport_init";
    expect_cluster_library_used(line, clusterport_up, 1, 0);
    expect_cluster_library_used(line, clusterport_board_up + "drv_clusterport_init() = 0x811101a4", 1, 1);
}

TEST(ClusterportTest, NothingIsOpenedForAWrongCountOrOnABoardThatIsNotUp) {
    expect_cluster_library_used("clusterport_test drv_clusterport_init 1", "", 0, 0);
    expect_cluster_library_used("clusterport_test drv_clusterport_exit 1", "", 0, 0);
    expect_cluster_library_used("clusterport_test drv_clusterport_set_led 3", "", 0, 0);
    expect_cluster_library_used("clusterport_test drv_clusterport_set_led 3 2",
                                "drv_cpld_init(inst_id=0xffffffff) = 0x811101a4", 0, 0);
}
