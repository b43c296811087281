// dyinggasp_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include <vector>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// The words behind the sub-command, the call that they make with its answer, the line about it, and the result print.
struct run {
    std::string words;
    std::string call;
    std::string line;
    std::string items;
};

std::string told(const std::string &operation, const run &one) {
    return framed(banners::wide, "test_" + operation, one.line, one.items);
}

void expect_runs(const std::string &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_success("dyinggasp_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

void expect_failures(const std::string &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_failure("dyinggasp_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

} // namespace

TEST(DyinggaspTest, UsageListsTheSubCommandsInOrder) {
    expect_run("dyinggasp_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_dyinggasp_init   inst_id\n"
               " drv_dyinggasp_deinit inst_id\n"
               " drv_dyinggasp_set_simulation_enable inst_id enable\n"
               " drv_dyinggasp_set_enable            inst_id board  enable\n",
               0);
}

TEST(DyinggaspTest, Init) {
    expect_runs(
        "dyinggasp_init",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_dyinggasp_init::inst_id:0xff00000a ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_dyinggasp_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_dyinggasp_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_dyinggasp_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("dyinggasp_init",
                    {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_dyinggasp_init::inst_id:0xffffffff ret:0x811101a4\n",
                      "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_dyinggasp_init::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(DyinggaspTest, Deinit) {
    expect_runs(
        "dyinggasp_deinit",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_dyinggasp_deinit::inst_id:0xff00000a ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_dyinggasp_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_dyinggasp_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_dyinggasp_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("dyinggasp_deinit",
                    {{"", "inst_id=0xffffffff) = 0x811101a4",
                      "drv_dyinggasp_deinit::inst_id:0xffffffff ret:0x811101a4\n", "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_dyinggasp_deinit::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(DyinggaspTest, SetSimulationEnable) {
    expect_runs("dyinggasp_set_simulation_enable",
                {{"0xff00000a 1", "inst_id=0xff00000a, enable=1) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0xff00000a simu_enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"0xff000009 0", "inst_id=0xff000009, enable=0) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0xff000009 simu_enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"9 4294967295", "inst_id=0x9, enable=0xffffffff) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0x9 simu_enable:-1 ret:0x0\n", "para[0]=0x0 "},
                 {"1", "inst_id=0xffffffff, enable=1) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0xffffffff simu_enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"1 0 1", "inst_id=0xffffffff, enable=1) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0xffffffff simu_enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"board on", "inst_id=0x0, enable=0) = 0",
                  "drv_dyinggasp_set_simulation_enable::inst_id:0x0 simu_enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"", "inst_id=0xffffffff, enable=0) = 0",
                  "input error : in_num : 0 over [1-2] .\ndrv_dyinggasp_set_simulation_enable::inst_id:0xffffffff "
                  "simu_enable:0 ret:0x0\n",
                  "para[0]=0x0 "}});
    expect_failures("dyinggasp_set_simulation_enable",
                    {{"1", "inst_id=0xffffffff, enable=1) = 0x811101a4",
                      "drv_dyinggasp_set_simulation_enable::inst_id:0xffffffff simu_enable:1 ret:0x811101a4\n",
                      "para[0]=0x811101a4 "},
                     {"5 4294967295", "inst_id=0x5, enable=0xffffffff) = 0x12",
                      "drv_dyinggasp_set_simulation_enable::inst_id:0x5 simu_enable:-1 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(DyinggaspTest, SetEnable) {
    expect_runs("dyinggasp_set_enable",
                {{"0xff00000a 2 1", "inst_id=0xff00000a, board_id=2, enable=1) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0xff00000a board 2 enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"0xff000009 5 0", "inst_id=0xff000009, board_id=5, enable=0) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0xff000009 board 5 enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"9 4294967295 4294967294", "inst_id=0x9, board_id=0xffffffff, enable=0xfffffffe) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0x9 board -1 enable:-2 ret:0x0\n", "para[0]=0x0 "},
                 {"2 1", "inst_id=0xffffffff, board_id=2, enable=1) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0xffffffff board 2 enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"1 0 0 1", "inst_id=0xffffffff, board_id=1, enable=0) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0xffffffff board 1 enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"board on on", "inst_id=0x0, board_id=0, enable=0) = 0",
                  "drv_dyinggasp_set_enable::inst_id:0x0 board 0 enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"", "inst_id=0xffffffff, board_id=0, enable=0) = 0",
                  "input error : in_num : 0 over [2-3] .\ndrv_dyinggasp_set_enable::inst_id:0xffffffff board 0 "
                  "enable:0 ret:0x0\n",
                  "para[0]=0x0 "},
                 {"1", "inst_id=0xffffffff, board_id=0, enable=0) = 0",
                  "input error : in_num : 1 over [2-3] .\ndrv_dyinggasp_set_enable::inst_id:0xffffffff board 0 "
                  "enable:0 ret:0x0\n",
                  "para[0]=0x0 "}});
    expect_failures(
        "dyinggasp_set_enable",
        {{"2 1", "inst_id=0xffffffff, board_id=2, enable=1) = 0x811101a4",
          "drv_dyinggasp_set_enable::inst_id:0xffffffff board 2 enable:1 ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5 4294967295 4294967294", "inst_id=0x5, board_id=0xffffffff, enable=0xfffffffe) = 0x12",
          "drv_dyinggasp_set_enable::inst_id:0x5 board -1 enable:-2 ret:0x12\n", "para[0]=0x12 "}});
}
