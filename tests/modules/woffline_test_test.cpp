// woffline_test: every sub-command on the real program, with the driver scripted.
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
        expect_success("woffline_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

void expect_failures(const std::string &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_failure("woffline_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

} // namespace

TEST(WofflineTest, UsageListsTheSubCommandsInOrder) {
    expect_run("woffline_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_woffline_init    inst_id\n"
               " drv_woffline_deinit  inst_id\n"
               " drv_woffline_set_en_state   inst_id enable\n"
               " drv_woffline_get_en_state   inst_id\n"
               " drv_woffline_get_state      inst_id chip_id\n"
               " drv_woffline_get_peer_state inst_id chip_id\n"
               " drv_woffline_set_irq_enable inst_id enable\n"
               " drv_woffline_get_irq_enable inst_id\n"
               " drv_woffline_get_irq_state  inst_id chip_id\n"
               " drv_woffline_set_sfu_isolate_en   inst_id enable\n"
               " drv_woffline_get_sfu_isolate_en   inst_id \n",
               0);
}

TEST(WofflineTest, Init) {
    expect_runs(
        "woffline_init",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_woffline_init::inst_id:0xff00000a ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_woffline_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_woffline_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_woffline_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("woffline_init",
                    {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_woffline_init::inst_id:0xffffffff ret:0x811101a4\n",
                      "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_woffline_init::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(WofflineTest, Deinit) {
    expect_runs(
        "woffline_deinit",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_woffline_deinit::inst_id:0xff00000a ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_woffline_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_woffline_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_woffline_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("woffline_deinit",
                    {{"", "inst_id=0xffffffff) = 0x811101a4",
                      "drv_woffline_deinit::inst_id:0xffffffff ret:0x811101a4\n", "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_woffline_deinit::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(WofflineTest, SetEnState) {
    expect_runs(
        "woffline_set_en_state",
        {{"0xff00000a 1", "inst_id=0xff00000a, enable=1) = 0",
          "drv_woffline_set_en_state::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 0", "inst_id=0xff000009, enable=0) = 0",
          "drv_woffline_set_en_state::inst_id:0xff000009 enable:0 ret:0x0\n", "para[0]=0x0 "},
         {"9 4294967295", "inst_id=0x9, enable=0xffffffff) = 0",
          "drv_woffline_set_en_state::inst_id:0x9 enable:-1 ret:0x0\n", "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, enable=1) = 0", "drv_woffline_set_en_state::inst_id:0xffffffff enable:1 ret:0x0\n",
          "para[0]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, enable=1) = 0",
          "drv_woffline_set_en_state::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 "},
         {"board on", "inst_id=0x0, enable=0) = 0", "drv_woffline_set_en_state::inst_id:0x0 enable:0 ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, enable=0) = 0",
          "input error : in_num : 0 over [1-2] .\ndrv_woffline_set_en_state::inst_id:0xffffffff enable:0 ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures("woffline_set_en_state",
                    {{"1", "inst_id=0xffffffff, enable=1) = 0x811101a4",
                      "drv_woffline_set_en_state::inst_id:0xffffffff enable:1 ret:0x811101a4\n", "para[0]=0x811101a4 "},
                     {"5 4294967295", "inst_id=0x5, enable=0xffffffff) = 0x12",
                      "drv_woffline_set_en_state::inst_id:0x5 enable:-1 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(WofflineTest, GetEnState) {
    expect_runs(
        "woffline_get_en_state",
        {{"0xff00000a", "inst_id=0xff00000a) = 0 enable=1",
          "drv_woffline_get_en_state::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0",
          "drv_woffline_get_en_state::inst_id:0xff00000a enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0xfffffffe",
          "drv_woffline_get_en_state::inst_id:0xff00000a enable:-2 ret:0x0\n", "para[0]=0x0 para[1]=0xfffffffe "},
         {"", "inst_id=0xffffffff) = 0 enable=1", "drv_woffline_get_en_state::inst_id:0xffffffff enable:1 ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"1 1", "inst_id=0xffffffff) = 0 enable=0", "drv_woffline_get_en_state::inst_id:0xffffffff enable:0 ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board", "inst_id=0x0) = 0 enable=0", "drv_woffline_get_en_state::inst_id:0x0 enable:0 ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "}});
    expect_failures(
        "woffline_get_en_state",
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_woffline_get_en_state::inst_id:0xffffffff enable:0 ret:0x811101a4\n", "para[0]=0x811101a4 para[1]=0x0 "},
         {"5", "inst_id=0x5) = 0x12", "drv_woffline_get_en_state::inst_id:0x5 enable:0 ret:0x12\n",
          "para[0]=0x12 para[1]=0x0 "}});
}

TEST(WofflineTest, GetState) {
    expect_runs(
        "woffline_get_state",
        {{"0xff00000a 1", "inst_id=0xff00000a, chip_id=1) = 0 state=1",
          "drv_woffline_get_state::inst_id:0xff00000a id:1 state:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 0", "inst_id=0xff000009, chip_id=0) = 0 state=0",
          "drv_woffline_get_state::inst_id:0xff000009 id:0 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"9 4294967295", "inst_id=0x9, chip_id=0xffffffff) = 0 state=0xfffffffe",
          "drv_woffline_get_state::inst_id:0x9 id:-1 state:-2 ret:0x0\n", "para[0]=0x0 para[1]=0xfffffffe "},
         {"1", "inst_id=0xffffffff, chip_id=1) = 0 state=1",
          "drv_woffline_get_state::inst_id:0xffffffff id:1 state:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, chip_id=1) = 0 state=0",
          "drv_woffline_get_state::inst_id:0xffffffff id:1 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, chip_id=0) = 0 state=0",
          "drv_woffline_get_state::inst_id:0x0 id:0 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, chip_id=0) = 0 state=1",
          "input error : in_num : 0 over [1-2] .\ndrv_woffline_get_state::inst_id:0xffffffff id:0 state:1 ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("woffline_get_state",
                    {{"1", "inst_id=0xffffffff, chip_id=1) = 0x811101a4",
                      "drv_woffline_get_state::inst_id:0xffffffff id:1 state:0 ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 4294967295", "inst_id=0x5, chip_id=0xffffffff) = 0x12",
                      "drv_woffline_get_state::inst_id:0x5 id:-1 state:0 ret:0x12\n", "para[0]=0x12 para[1]=0x0 "}});
}

TEST(WofflineTest, GetPeerState) {
    expect_runs(
        "woffline_get_peer_state",
        {{"0xff00000a 1", "inst_id=0xff00000a, chip_id=1) = 0 state=1",
          "drv_woffline_get_peer_state::inst_id:0xff00000a id:1 enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 0", "inst_id=0xff000009, chip_id=0) = 0 state=0",
          "drv_woffline_get_peer_state::inst_id:0xff000009 id:0 enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"9 4294967295", "inst_id=0x9, chip_id=0xffffffff) = 0 state=0xfffffffe",
          "drv_woffline_get_peer_state::inst_id:0x9 id:-1 enable:-2 ret:0x0\n", "para[0]=0x0 para[1]=0xfffffffe "},
         {"1", "inst_id=0xffffffff, chip_id=1) = 0 state=1",
          "drv_woffline_get_peer_state::inst_id:0xffffffff id:1 enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, chip_id=1) = 0 state=0",
          "drv_woffline_get_peer_state::inst_id:0xffffffff id:1 enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, chip_id=0) = 0 state=0",
          "drv_woffline_get_peer_state::inst_id:0x0 id:0 enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, chip_id=0) = 0 state=1",
          "input error : in_num : 0 over [1-2] .\ndrv_woffline_get_peer_state::inst_id:0xffffffff id:0 enable:1 "
          "ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures(
        "woffline_get_peer_state",
        {{"1", "inst_id=0xffffffff, chip_id=1) = 0x811101a4",
          "drv_woffline_get_peer_state::inst_id:0xffffffff id:1 enable:0 ret:0x811101a4\n",
          "para[0]=0x811101a4 para[1]=0x0 "},
         {"5 4294967295", "inst_id=0x5, chip_id=0xffffffff) = 0x12",
          "drv_woffline_get_peer_state::inst_id:0x5 id:-1 enable:0 ret:0x12\n", "para[0]=0x12 para[1]=0x0 "}});
}

TEST(WofflineTest, SetIrqEnable) {
    expect_runs(
        "woffline_set_irq_enable",
        {{"0xff00000a 1", "inst_id=0xff00000a, enable=1) = 0",
          "drv_woffline_set_irq_enable::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 0", "inst_id=0xff000009, enable=0) = 0",
          "drv_woffline_set_irq_enable::inst_id:0xff000009 enable:0 ret:0x0\n", "para[0]=0x0 "},
         {"9 4294967295", "inst_id=0x9, enable=0xffffffff) = 0",
          "drv_woffline_set_irq_enable::inst_id:0x9 enable:-1 ret:0x0\n", "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, enable=1) = 0",
          "drv_woffline_set_irq_enable::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, enable=1) = 0",
          "drv_woffline_set_irq_enable::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 "},
         {"board on", "inst_id=0x0, enable=0) = 0", "drv_woffline_set_irq_enable::inst_id:0x0 enable:0 ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, enable=0) = 0",
          "input error : in_num : 0 over [1-2] .\ndrv_woffline_set_irq_enable::inst_id:0xffffffff enable:0 ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "woffline_set_irq_enable",
        {{"1", "inst_id=0xffffffff, enable=1) = 0x811101a4",
          "drv_woffline_set_irq_enable::inst_id:0xffffffff enable:1 ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5 4294967295", "inst_id=0x5, enable=0xffffffff) = 0x12",
          "drv_woffline_set_irq_enable::inst_id:0x5 enable:-1 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(WofflineTest, GetIrqEnable) {
    expect_runs(
        "woffline_get_irq_enable",
        {{"0xff00000a", "inst_id=0xff00000a) = 0 enable=1",
          "drv_woffline_get_irq_enable::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0",
          "drv_woffline_get_irq_enable::inst_id:0xff00000a enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0xfffffffe",
          "drv_woffline_get_irq_enable::inst_id:0xff00000a enable:-2 ret:0x0\n", "para[0]=0x0 para[1]=0xfffffffe "},
         {"", "inst_id=0xffffffff) = 0 enable=1", "drv_woffline_get_irq_enable::inst_id:0xffffffff enable:1 ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"1 1", "inst_id=0xffffffff) = 0 enable=0",
          "drv_woffline_get_irq_enable::inst_id:0xffffffff enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"board", "inst_id=0x0) = 0 enable=0", "drv_woffline_get_irq_enable::inst_id:0x0 enable:0 ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "}});
    expect_failures("woffline_get_irq_enable",
                    {{"", "inst_id=0xffffffff) = 0x811101a4",
                      "drv_woffline_get_irq_enable::inst_id:0xffffffff enable:0 ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_woffline_get_irq_enable::inst_id:0x5 enable:0 ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(WofflineTest, GetIrqState) {
    expect_runs(
        "woffline_get_irq_state",
        {{"0xff00000a 1", "inst_id=0xff00000a, chip_id=1) = 0 state=1",
          "drv_woffline_get_irq_state::inst_id:0xff00000a id:1 state:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 0", "inst_id=0xff000009, chip_id=0) = 0 state=0",
          "drv_woffline_get_irq_state::inst_id:0xff000009 id:0 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"9 4294967295", "inst_id=0x9, chip_id=0xffffffff) = 0 state=0xfffffffe",
          "drv_woffline_get_irq_state::inst_id:0x9 id:-1 state:-2 ret:0x0\n", "para[0]=0x0 para[1]=0xfffffffe "},
         {"1", "inst_id=0xffffffff, chip_id=1) = 0 state=1",
          "drv_woffline_get_irq_state::inst_id:0xffffffff id:1 state:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, chip_id=1) = 0 state=0",
          "drv_woffline_get_irq_state::inst_id:0xffffffff id:1 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, chip_id=0) = 0 state=0",
          "drv_woffline_get_irq_state::inst_id:0x0 id:0 state:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, chip_id=0) = 0 state=1",
          "input error : in_num : 0 over [1-2] .\ndrv_woffline_get_irq_state::inst_id:0xffffffff id:0 state:1 "
          "ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures(
        "woffline_get_irq_state",
        {{"1", "inst_id=0xffffffff, chip_id=1) = 0x811101a4",
          "drv_woffline_get_irq_state::inst_id:0xffffffff id:1 state:0 ret:0x811101a4\n",
          "para[0]=0x811101a4 para[1]=0x0 "},
         {"5 4294967295", "inst_id=0x5, chip_id=0xffffffff) = 0x12",
          "drv_woffline_get_irq_state::inst_id:0x5 id:-1 state:0 ret:0x12\n", "para[0]=0x12 para[1]=0x0 "}});
}

TEST(WofflineTest, SetSfuIsolateEn) {
    expect_runs("woffline_set_sfu_isolate_en",
                {{"0xff00000a 1", "inst_id=0xff00000a, enable=1) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"0xff000009 0", "inst_id=0xff000009, enable=0) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0xff000009 enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"9 4294967295", "inst_id=0x9, enable=0xffffffff) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0x9 enable:-1 ret:0x0\n", "para[0]=0x0 "},
                 {"1", "inst_id=0xffffffff, enable=1) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"1 0 1", "inst_id=0xffffffff, enable=1) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 "},
                 {"board on", "inst_id=0x0, enable=0) = 0",
                  "drv_woffline_set_sfu_isolate_enable::inst_id:0x0 enable:0 ret:0x0\n", "para[0]=0x0 "},
                 {"", "inst_id=0xffffffff, enable=0) = 0",
                  "input error : in_num : 0 over [1-2] .\ndrv_woffline_set_sfu_isolate_enable::inst_id:0xffffffff "
                  "enable:0 ret:0x0\n",
                  "para[0]=0x0 "}});
    expect_failures(
        "woffline_set_sfu_isolate_en",
        {{"1", "inst_id=0xffffffff, enable=1) = 0x811101a4",
          "drv_woffline_set_sfu_isolate_enable::inst_id:0xffffffff enable:1 ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5 4294967295", "inst_id=0x5, enable=0xffffffff) = 0x12",
          "drv_woffline_set_sfu_isolate_enable::inst_id:0x5 enable:-1 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(WofflineTest, GetSfuIsolateEn) {
    expect_runs(
        "woffline_get_sfu_isolate_en",
        {{"0xff00000a", "inst_id=0xff00000a) = 0 enable=1",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xff00000a enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xff00000a enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"0xff00000a", "inst_id=0xff00000a) = 0 enable=0xfffffffe",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xff00000a enable:-2 ret:0x0\n",
          "para[0]=0x0 para[1]=0xfffffffe "},
         {"", "inst_id=0xffffffff) = 0 enable=1",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xffffffff enable:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 1", "inst_id=0xffffffff) = 0 enable=0",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xffffffff enable:0 ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"board", "inst_id=0x0) = 0 enable=0", "drv_woffline_get_sfu_isolate_enable::inst_id:0x0 enable:0 ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "}});
    expect_failures(
        "woffline_get_sfu_isolate_en",
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_woffline_get_sfu_isolate_enable::inst_id:0xffffffff enable:0 ret:0x811101a4\n",
          "para[0]=0x811101a4 para[1]=0x0 "},
         {"5", "inst_id=0x5) = 0x12", "drv_woffline_get_sfu_isolate_enable::inst_id:0x5 enable:0 ret:0x12\n",
          "para[0]=0x12 para[1]=0x0 "}});
}
