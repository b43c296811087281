// msc_test: every sub-command on the real program, with the driver scripted.
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
    return framed(banners::narrow, "test_" + operation, one.line, one.items);
}

void expect_runs(const std::string &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_success("msc_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

void expect_failures(const std::string &operation, const std::vector<run> &runs) {
    for (const run &one : runs) {
        expect_failure("msc_test drv_" + operation + " " + one.words, "drv_" + operation + "(" + one.call,
                       told(operation, one));
    }
}

} // namespace

TEST(MscTest, UsageListsTheSubCommandsInOrder) {
    expect_run("msc_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_msc_init   inst_id\n"
               " drv_msc_deinit inst_id\n"
               " drv_msc_set_bond_mode inst_id bond\n"
               " drv_msc_set_switch_en inst_id sw_mode enable\n"
               " drv_msc_get_switch_en inst_id sw_mode\n"
               " drv_msc_set_switch_ctrl inst_id sw_mode ctrl\n"
               " drv_msc_get_switch_ctrl inst_id sw_mode\n"
               " drv_msc_set_state inst_id sw_mode ms_sate\n"
               " drv_msc_get_state inst_id sw_mode\n"
               " drv_msc_set_npu_work_mode inst_id work_mode\n"
               " drv_msc_get_npu_work_mode inst_id work_mode\n"
               " drv_msc_get_peer_state    inst_id sw_mode\n"
               " drv_msc_get_switch_reason inst_id sw_mode\n"
               " drv_msc_set_int_en    inst_id sw_mode enable\n"
               " drv_msc_get_int_state inst_id sw_mode\n"
               " drv_msc_get_self_ok  sw_mode\n"
               " drv_msc_get_peer_ok  sw_mode\n"
               " drv_msc_set_self_bad sw_mode status\n"
               " drv_msc_set_peer_bad sw_mode status\n"
               " drv_msc_set_peer_slave inst_id\n"
               " drv_msc_set_peer_slave_cancel inst_id\n"
               " drv_msc_set_soft_ready inst_id sw_mode soft_ready\n"
               " drv_msc_force_master   inst_id\n"
               " drv_msc_force_standby  inst_id\n"
               " drv_msc_dump_info      inst_id\n",
               0);
}

TEST(MscTest, Init) {
    expect_runs(
        "msc_init",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_init::inst_id:0xff00000a ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("msc_init",
                    {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_msc_init::inst_id:0xffffffff ret:0x811101a4\n",
                      "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_msc_init::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, Deinit) {
    expect_runs(
        "msc_deinit",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_deinit::inst_id:0xff00000a ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures("msc_deinit",
                    {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_msc_deinit::inst_id:0xffffffff ret:0x811101a4\n",
                      "para[0]=0x811101a4 "},
                     {"5", "inst_id=0x5) = 0x12", "drv_msc_deinit::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetBondMode) {
    expect_runs(
        "msc_set_bond_mode",
        {{"0xff00000a 0", "inst_id=0xff00000a, bond=0) = 0",
          "drv_msc_set_bond_mode::inst_id:0xff00000a bond 0(bond) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1", "inst_id=0xff000009, bond=1) = 0",
          "drv_msc_set_bond_mode::inst_id:0xff000009 bond 1(spec) ret:0x0\n", "para[0]=0x0 "},
         {"9 2", "inst_id=0x9, bond=2) = 0", "drv_msc_set_bond_mode::inst_id:0x9 bond 2(unknown) ret:0x0\n",
          "para[0]=0x0 "},
         {"010 4294967295", "inst_id=0x8, bond=0xffffffff) = 0",
          "drv_msc_set_bond_mode::inst_id:0x8 bond -1(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"0", "inst_id=0xffffffff, bond=0) = 0", "drv_msc_set_bond_mode::inst_id:0xffffffff bond 0(bond) ret:0x0\n",
          "para[0]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, bond=1) = 0",
          "drv_msc_set_bond_mode::inst_id:0xffffffff bond 1(spec) ret:0x0\n", "para[0]=0x0 "},
         {"board on", "inst_id=0x0, bond=0) = 0", "drv_msc_set_bond_mode::inst_id:0x0 bond 0(bond) ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, bond=0) = 0",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_set_bond_mode::inst_id:0xffffffff bond 0(bond) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures("msc_set_bond_mode",
                    {{"0", "inst_id=0xffffffff, bond=0) = 0x811101a4",
                      "drv_msc_set_bond_mode::inst_id:0xffffffff bond 0(bond) ret:0x811101a4\n", "para[0]=0x811101a4 "},
                     {"5 4294967295", "inst_id=0x5, bond=0xffffffff) = 0x12",
                      "drv_msc_set_bond_mode::inst_id:0x5 bond -1(unknown) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetSwitchEn) {
    expect_runs(
        "msc_set_switch_en",
        {{"0xff00000a 0 1", "inst_id=0xff00000a, sw_mode=0, enable=1) = 0",
          "drv_msc_set_switch_en::inst_id:0xff00000a sw_mode 0(scc) sw_enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "inst_id=0xff000009, sw_mode=1, enable=0) = 0",
          "drv_msc_set_switch_en::inst_id:0xff000009 sw_mode 1(xsc) sw_enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "inst_id=0x9, sw_mode=2, enable=2) = 0",
          "drv_msc_set_switch_en::inst_id:0x9 sw_mode 2(all) sw_enable 2(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 1", "inst_id=0x8, sw_mode=3, enable=1) = 0",
          "drv_msc_set_switch_en::inst_id:0x8 sw_mode 3(unknown) sw_enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "inst_id=0xffffffff, sw_mode=0, enable=1) = 0",
          "drv_msc_set_switch_en::inst_id:0xffffffff sw_mode 0(scc) sw_enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "inst_id=0xffffffff, sw_mode=1, enable=0) = 0",
          "drv_msc_set_switch_en::inst_id:0xffffffff sw_mode 1(xsc) sw_enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "inst_id=0x0, sw_mode=0, enable=0) = 0",
          "drv_msc_set_switch_en::inst_id:0x0 sw_mode 0(scc) sw_enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0, enable=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_switch_en::inst_id:0xffffffff sw_mode 0(scc) sw_enable "
          "0(disable) ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, sw_mode=0, enable=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_switch_en::inst_id:0xffffffff sw_mode 0(scc) sw_enable "
          "0(disable) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_switch_en",
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, enable=1) = 0x811101a4",
          "drv_msc_set_switch_en::inst_id:0xffffffff sw_mode 0(scc) sw_enable 1(enable) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "inst_id=0x5, sw_mode=3, enable=1) = 0x12",
          "drv_msc_set_switch_en::inst_id:0x5 sw_mode 3(unknown) sw_enable 1(enable) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetSwitchEn) {
    expect_runs(
        "msc_get_switch_en",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 enable=0",
          "drv_msc_get_switch_en::inst_id:0xff00000a sw_mode 0(scc) enable 0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 enable=1",
          "drv_msc_get_switch_en::inst_id:0xff000009 sw_mode 1(xsc) enable 1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 enable=2",
          "drv_msc_get_switch_en::inst_id:0x9 sw_mode 2(all) enable 2(unknown) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 enable=0",
          "drv_msc_get_switch_en::inst_id:0x8 sw_mode 3(unknown) enable 0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 enable=0",
          "drv_msc_get_switch_en::inst_id:0xffffffff sw_mode 0(scc) enable 0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 enable=1",
          "drv_msc_get_switch_en::inst_id:0xffffffff sw_mode 1(xsc) enable 1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 enable=1",
          "drv_msc_get_switch_en::inst_id:0x0 sw_mode 0(scc) enable 1(enable) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 enable=0",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_switch_en::inst_id:0xffffffff sw_mode 0(scc) enable "
          "0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "}});
    expect_failures("msc_get_switch_en",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_switch_en::inst_id:0xffffffff sw_mode 0(scc) enable 0(disable) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_switch_en::inst_id:0x5 sw_mode 3(unknown) enable 0(disable) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetSwitchCtrl) {
    expect_runs(
        "msc_set_switch_ctrl",
        {{"0xff00000a 0 1", "inst_id=0xff00000a, sw_mode=0, ctrl=1) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0xff00000a sw_mode 0(scc) sw_ctrl 1(force) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "inst_id=0xff000009, sw_mode=1, ctrl=0) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0xff000009 sw_mode 1(xsc) sw_ctrl 0(auto) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "inst_id=0x9, sw_mode=2, ctrl=2) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0x9 sw_mode 2(all) sw_ctrl 2(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 1", "inst_id=0x8, sw_mode=3, ctrl=1) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0x8 sw_mode 3(unknown) sw_ctrl 1(force) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "inst_id=0xffffffff, sw_mode=0, ctrl=1) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl 1(force) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "inst_id=0xffffffff, sw_mode=1, ctrl=0) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0xffffffff sw_mode 1(xsc) sw_ctrl 0(auto) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "inst_id=0x0, sw_mode=0, ctrl=0) = 0",
          "drv_msc_set_switch_ctrl::inst_id:0x0 sw_mode 0(scc) sw_ctrl 0(auto) ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0, ctrl=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl "
          "0(auto) ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, sw_mode=0, ctrl=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl "
          "0(auto) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_switch_ctrl",
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, ctrl=1) = 0x811101a4",
          "drv_msc_set_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl 1(force) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "inst_id=0x5, sw_mode=3, ctrl=1) = 0x12",
          "drv_msc_set_switch_ctrl::inst_id:0x5 sw_mode 3(unknown) sw_ctrl 1(force) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetSwitchCtrl) {
    expect_runs(
        "msc_get_switch_ctrl",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 ctrl=1",
          "drv_msc_get_switch_ctrl::inst_id:0xff00000a sw_mode 0(scc) sw_ctrl 1(force) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 ctrl=0",
          "drv_msc_get_switch_ctrl::inst_id:0xff000009 sw_mode 1(xsc) sw_ctrl 0(auto) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 ctrl=2",
          "drv_msc_get_switch_ctrl::inst_id:0x9 sw_mode 2(all) sw_ctrl 2(unknown) ret:0x0\n",
          "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 ctrl=1",
          "drv_msc_get_switch_ctrl::inst_id:0x8 sw_mode 3(unknown) sw_ctrl 1(force) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 ctrl=1",
          "drv_msc_get_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl 1(force) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 ctrl=0",
          "drv_msc_get_switch_ctrl::inst_id:0xffffffff sw_mode 1(xsc) sw_ctrl 0(auto) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 ctrl=0",
          "drv_msc_get_switch_ctrl::inst_id:0x0 sw_mode 0(scc) sw_ctrl 0(auto) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 ctrl=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl "
          "1(force) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_switch_ctrl",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_switch_ctrl::inst_id:0xffffffff sw_mode 0(scc) sw_ctrl 0(auto) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_switch_ctrl::inst_id:0x5 sw_mode 3(unknown) sw_ctrl 0(auto) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetState) {
    expect_runs(
        "msc_set_state",
        {{"0xff00000a 0 1", "inst_id=0xff00000a, sw_mode=0, state=1) = 0",
          "drv_msc_set_state::inst_id:0xff00000a sw_mode 0(scc) state 1(slave) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "inst_id=0xff000009, sw_mode=1, state=0) = 0",
          "drv_msc_set_state::inst_id:0xff000009 sw_mode 1(xsc) state 0(master) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "inst_id=0x9, sw_mode=2, state=2) = 0",
          "drv_msc_set_state::inst_id:0x9 sw_mode 2(all) state 2(abnoraml) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 3", "inst_id=0x8, sw_mode=3, state=3) = 0",
          "drv_msc_set_state::inst_id:0x8 sw_mode 3(unknown) state 3(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"0xff00000a 4294967295 7", "inst_id=0xff00000a, sw_mode=0xffffffff, state=7) = 0",
          "drv_msc_set_state::inst_id:0xff00000a sw_mode -1(unknown) state 7(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "inst_id=0xffffffff, sw_mode=0, state=1) = 0",
          "drv_msc_set_state::inst_id:0xffffffff sw_mode 0(scc) state 1(slave) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "inst_id=0xffffffff, sw_mode=1, state=0) = 0",
          "drv_msc_set_state::inst_id:0xffffffff sw_mode 1(xsc) state 0(master) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "inst_id=0x0, sw_mode=0, state=0) = 0",
          "drv_msc_set_state::inst_id:0x0 sw_mode 0(scc) state 0(master) ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0, state=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) "
          "ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, sw_mode=0, state=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) "
          "ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_state",
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, state=1) = 0x811101a4",
          "drv_msc_set_state::inst_id:0xffffffff sw_mode 0(scc) state 1(slave) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 4294967295 7", "inst_id=0x5, sw_mode=0xffffffff, state=7) = 0x12",
          "drv_msc_set_state::inst_id:0x5 sw_mode -1(unknown) state 7(unknown) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetState) {
    expect_runs(
        "msc_get_state",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 state=0",
          "drv_msc_get_state::inst_id:0xff00000a sw_mode 0(scc) state 0(master) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 state=1",
          "drv_msc_get_state::inst_id:0xff000009 sw_mode 1(xsc) state 1(slave) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 state=2",
          "drv_msc_get_state::inst_id:0x9 sw_mode 2(all) state 2(abnoraml) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 state=3",
          "drv_msc_get_state::inst_id:0x8 sw_mode 3(unknown) state 3(unknown) ret:0x0\n", "para[0]=0x0 para[1]=0x3 "},
         {"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 state=7",
          "drv_msc_get_state::inst_id:0xff00000a sw_mode 0(scc) state 7(unknown) ret:0x0\n",
          "para[0]=0x0 para[1]=0x7 "},
         {"0xff00000a 1", "inst_id=0xff00000a, sw_mode=1) = 0 state=0xffffffff",
          "drv_msc_get_state::inst_id:0xff00000a sw_mode 1(xsc) state -1(unknown) ret:0x0\n",
          "para[0]=0x0 para[1]=0xffffffff "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 state=0",
          "drv_msc_get_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 state=1",
          "drv_msc_get_state::inst_id:0xffffffff sw_mode 1(xsc) state 1(slave) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 state=1",
          "drv_msc_get_state::inst_id:0x0 sw_mode 0(scc) state 1(slave) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 state=0",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) "
          "ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "}});
    expect_failures("msc_get_state",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_state::inst_id:0x5 sw_mode 3(unknown) state 0(master) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetNpuWorkMode) {
    expect_runs(
        "msc_set_npu_work_mode",
        {{"0xff00000a 2", "inst_id=0xff00000a, work_mode=2) = 0",
          "drv_msc_set_npu_work_mode::inst_id:0xff00000a work_mode 2 ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 4294967295", "inst_id=0xff000009, work_mode=0xffffffff) = 0",
          "drv_msc_set_npu_work_mode::inst_id:0xff000009 work_mode -1 ret:0x0\n", "para[0]=0x0 "},
         {"2", "inst_id=0xffffffff, work_mode=2) = 0",
          "drv_msc_set_npu_work_mode::inst_id:0xffffffff work_mode 2 ret:0x0\n", "para[0]=0x0 "},
         {"1 0 1", "inst_id=0xffffffff, work_mode=1) = 0",
          "drv_msc_set_npu_work_mode::inst_id:0xffffffff work_mode 1 ret:0x0\n", "para[0]=0x0 "},
         {"board on", "inst_id=0x0, work_mode=0) = 0", "drv_msc_set_npu_work_mode::inst_id:0x0 work_mode 0 ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, work_mode=0) = 0",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_set_npu_work_mode::inst_id:0xffffffff work_mode 0 ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_npu_work_mode",
        {{"2", "inst_id=0xffffffff, work_mode=2) = 0x811101a4",
          "drv_msc_set_npu_work_mode::inst_id:0xffffffff work_mode 2 ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5 4294967295", "inst_id=0x5, work_mode=0xffffffff) = 0x12",
          "drv_msc_set_npu_work_mode::inst_id:0x5 work_mode -1 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetNpuWorkMode) {
    expect_runs(
        "msc_get_npu_work_mode",
        {{"0xff00000a 5", "inst_id=0xff00000a) = 0 work_mode=1",
          "drv_msc_get_npu_work_mode::inst_id:0xff00000a work_mode 1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 6", "inst_id=0xff000009) = 0 work_mode=0xffffffff",
          "drv_msc_get_npu_work_mode::inst_id:0xff000009 work_mode -1 ret:0x0\n", "para[0]=0x0 para[1]=0xffffffff "},
         {"5", "inst_id=0xffffffff) = 0 work_mode=1",
          "drv_msc_get_npu_work_mode::inst_id:0xffffffff work_mode 1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff) = 0 work_mode=0xffffffff",
          "drv_msc_get_npu_work_mode::inst_id:0xffffffff work_mode -1 ret:0x0\n", "para[0]=0x0 para[1]=0xffffffff "},
         {"board on", "inst_id=0x0) = 0 work_mode=0xffffffff",
          "drv_msc_get_npu_work_mode::inst_id:0x0 work_mode -1 ret:0x0\n", "para[0]=0x0 para[1]=0xffffffff "},
         {"", "inst_id=0xffffffff) = 0 work_mode=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_npu_work_mode::inst_id:0xffffffff work_mode 1 ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_npu_work_mode",
                    {{"5", "inst_id=0xffffffff) = 0x811101a4",
                      "drv_msc_get_npu_work_mode::inst_id:0xffffffff work_mode 5 ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x5 "},
                     {"5 6", "inst_id=0x5) = 0x12", "drv_msc_get_npu_work_mode::inst_id:0x5 work_mode 6 ret:0x12\n",
                      "para[0]=0x12 para[1]=0x6 "}});
}

TEST(MscTest, GetPeerState) {
    expect_runs(
        "msc_get_peer_state",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 state=1",
          "drv_msc_get_peer_state::inst_id:0xff00000a sw_mode 0(scc) state 1(slave) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 state=0",
          "drv_msc_get_peer_state::inst_id:0xff000009 sw_mode 1(xsc) state 0(master) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 state=2",
          "drv_msc_get_peer_state::inst_id:0x9 sw_mode 2(all) state 2(abnoraml) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 state=3",
          "drv_msc_get_peer_state::inst_id:0x8 sw_mode 3(unknown) state 3(unknown) ret:0x0\n",
          "para[0]=0x0 para[1]=0x3 "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 state=1",
          "drv_msc_get_peer_state::inst_id:0xffffffff sw_mode 0(scc) state 1(slave) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 state=0",
          "drv_msc_get_peer_state::inst_id:0xffffffff sw_mode 1(xsc) state 0(master) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 state=0",
          "drv_msc_get_peer_state::inst_id:0x0 sw_mode 0(scc) state 0(master) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 state=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_peer_state::inst_id:0xffffffff sw_mode 0(scc) state "
          "1(slave) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_peer_state",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_peer_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_peer_state::inst_id:0x5 sw_mode 3(unknown) state 0(master) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetSwitchReason) {
    expect_runs(
        "msc_get_switch_reason",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 reason=4",
          "drv_msc_get_switch_reason::inst_id:0xff00000a sw_mode 0(scc) reason 4 ret:0x0\n",
          "para[0]=0x0 para[1]=0x4 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 reason=0xffffffff",
          "drv_msc_get_switch_reason::inst_id:0xff000009 sw_mode 1(xsc) reason -1 ret:0x0\n",
          "para[0]=0x0 para[1]=0xffffffff "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 reason=4",
          "drv_msc_get_switch_reason::inst_id:0x9 sw_mode 2(all) reason 4 ret:0x0\n", "para[0]=0x0 para[1]=0x4 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 reason=0xffffffff",
          "drv_msc_get_switch_reason::inst_id:0x8 sw_mode 3(unknown) reason -1 ret:0x0\n",
          "para[0]=0x0 para[1]=0xffffffff "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 reason=4",
          "drv_msc_get_switch_reason::inst_id:0xffffffff sw_mode 0(scc) reason 4 ret:0x0\n",
          "para[0]=0x0 para[1]=0x4 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 reason=0xffffffff",
          "drv_msc_get_switch_reason::inst_id:0xffffffff sw_mode 1(xsc) reason -1 ret:0x0\n",
          "para[0]=0x0 para[1]=0xffffffff "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 reason=0xffffffff",
          "drv_msc_get_switch_reason::inst_id:0x0 sw_mode 0(scc) reason -1 ret:0x0\n",
          "para[0]=0x0 para[1]=0xffffffff "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 reason=4",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_switch_reason::inst_id:0xffffffff sw_mode 0(scc) reason "
          "4 ret:0x0\n",
          "para[0]=0x0 para[1]=0x4 "}});
    expect_failures("msc_get_switch_reason",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_switch_reason::inst_id:0xffffffff sw_mode 0(scc) reason 0 ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_switch_reason::inst_id:0x5 sw_mode 3(unknown) reason 0 ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetIntEn) {
    expect_runs("msc_set_int_en",
                {{"0xff00000a 0 1", "inst_id=0xff00000a, sw_mode=0, enable=1) = 0",
                  "drv_msc_set_int_en::inst_id:0xff00000a sw_mode 0(scc) enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
                 {"0xff000009 1 0", "inst_id=0xff000009, sw_mode=1, enable=0) = 0",
                  "drv_msc_set_int_en::inst_id:0xff000009 sw_mode 1(xsc) enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
                 {"9 2 2", "inst_id=0x9, sw_mode=2, enable=2) = 0",
                  "drv_msc_set_int_en::inst_id:0x9 sw_mode 2(all) enable 2(unknown) ret:0x0\n", "para[0]=0x0 "},
                 {"010 3 1", "inst_id=0x8, sw_mode=3, enable=1) = 0",
                  "drv_msc_set_int_en::inst_id:0x8 sw_mode 3(unknown) enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
                 {"0 1", "inst_id=0xffffffff, sw_mode=0, enable=1) = 0",
                  "drv_msc_set_int_en::inst_id:0xffffffff sw_mode 0(scc) enable 1(enable) ret:0x0\n", "para[0]=0x0 "},
                 {"1 0 0 1", "inst_id=0xffffffff, sw_mode=1, enable=0) = 0",
                  "drv_msc_set_int_en::inst_id:0xffffffff sw_mode 1(xsc) enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
                 {"board on on", "inst_id=0x0, sw_mode=0, enable=0) = 0",
                  "drv_msc_set_int_en::inst_id:0x0 sw_mode 0(scc) enable 0(disable) ret:0x0\n", "para[0]=0x0 "},
                 {"", "inst_id=0xffffffff, sw_mode=0, enable=0) = 0",
                  "input error : in_num : 0 over [2-3] .\ndrv_msc_set_int_en::inst_id:0xffffffff sw_mode 0(scc) enable "
                  "0(disable) ret:0x0\n",
                  "para[0]=0x0 "},
                 {"1", "inst_id=0xffffffff, sw_mode=0, enable=0) = 0",
                  "input error : in_num : 1 over [2-3] .\ndrv_msc_set_int_en::inst_id:0xffffffff sw_mode 0(scc) enable "
                  "0(disable) ret:0x0\n",
                  "para[0]=0x0 "}});
    expect_failures(
        "msc_set_int_en",
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, enable=1) = 0x811101a4",
          "drv_msc_set_int_en::inst_id:0xffffffff sw_mode 0(scc) enable 1(enable) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "inst_id=0x5, sw_mode=3, enable=1) = 0x12",
          "drv_msc_set_int_en::inst_id:0x5 sw_mode 3(unknown) enable 1(enable) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetIntState) {
    expect_runs(
        "msc_get_int_state",
        {{"0xff00000a 0", "inst_id=0xff00000a, sw_mode=0) = 0 state=1",
          "drv_msc_get_int_state::inst_id:0xff00000a sw_mode 0(scc) state 1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 1", "inst_id=0xff000009, sw_mode=1) = 0 state=0",
          "drv_msc_get_int_state::inst_id:0xff000009 sw_mode 1(xsc) state 0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"9 2", "inst_id=0x9, sw_mode=2) = 0 state=2",
          "drv_msc_get_int_state::inst_id:0x9 sw_mode 2(all) state 2(unknown) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "inst_id=0x8, sw_mode=3) = 0 state=1",
          "drv_msc_get_int_state::inst_id:0x8 sw_mode 3(unknown) state 1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"0", "inst_id=0xffffffff, sw_mode=0) = 0 state=1",
          "drv_msc_get_int_state::inst_id:0xffffffff sw_mode 0(scc) state 1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "inst_id=0xffffffff, sw_mode=1) = 0 state=0",
          "drv_msc_get_int_state::inst_id:0xffffffff sw_mode 1(xsc) state 0(disable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board on", "inst_id=0x0, sw_mode=0) = 0 state=0",
          "drv_msc_get_int_state::inst_id:0x0 sw_mode 0(scc) state 0(disable) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0) = 0 state=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_int_state::inst_id:0xffffffff sw_mode 0(scc) state "
          "1(enable) ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_int_state",
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_int_state::inst_id:0xffffffff sw_mode 0(scc) state 0(disable) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_int_state::inst_id:0x5 sw_mode 3(unknown) state 0(disable) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetSelfOk) {
    expect_runs(
        "msc_get_self_ok",
        {{"0xff00000a 0", "sw_mode=0) = 0 self_ok=1",
          "drv_msc_get_self_ok::inst_id:0xff00000a sw_mode 0(scc) self_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 1", "sw_mode=1) = 0 self_ok=0",
          "drv_msc_get_self_ok::inst_id:0xff000009 sw_mode 1(xsc) self_ok 0(not ok) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"9 2", "sw_mode=2) = 0 self_ok=2",
          "drv_msc_get_self_ok::inst_id:0x9 sw_mode 2(all) self_ok 2(unknown) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "sw_mode=3) = 0 self_ok=1",
          "drv_msc_get_self_ok::inst_id:0x8 sw_mode 3(unknown) self_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0", "sw_mode=0) = 0 self_ok=1",
          "drv_msc_get_self_ok::inst_id:0xffffffff sw_mode 0(scc) self_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "sw_mode=1) = 0 self_ok=0",
          "drv_msc_get_self_ok::inst_id:0xffffffff sw_mode 1(xsc) self_ok 0(not ok) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board on", "sw_mode=0) = 0 self_ok=0",
          "drv_msc_get_self_ok::inst_id:0x0 sw_mode 0(scc) self_ok 0(not ok) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "sw_mode=0) = 0 self_ok=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_self_ok::inst_id:0xffffffff sw_mode 0(scc) self_ok 1(ok) "
          "ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_self_ok",
                    {{"0", "sw_mode=0) = 0x811101a4",
                      "drv_msc_get_self_ok::inst_id:0xffffffff sw_mode 0(scc) self_ok 0(not ok) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "sw_mode=3) = 0x12",
                      "drv_msc_get_self_ok::inst_id:0x5 sw_mode 3(unknown) self_ok 0(not ok) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetPeerOk) {
    expect_runs(
        "msc_get_peer_ok",
        {{"0xff00000a 0", "sw_mode=0) = 0 peer_ok=1",
          "drv_msc_get_peer_ok::inst_id:0xff00000a sw_mode 0(scc) peer_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0xff000009 1", "sw_mode=1) = 0 peer_ok=0",
          "drv_msc_get_peer_ok::inst_id:0xff000009 sw_mode 1(xsc) peer_ok 0(not ok) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"9 2", "sw_mode=2) = 0 peer_ok=2",
          "drv_msc_get_peer_ok::inst_id:0x9 sw_mode 2(all) peer_ok 2(unknown) ret:0x0\n", "para[0]=0x0 para[1]=0x2 "},
         {"010 3", "sw_mode=3) = 0 peer_ok=1",
          "drv_msc_get_peer_ok::inst_id:0x8 sw_mode 3(unknown) peer_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"0", "sw_mode=0) = 0 peer_ok=1",
          "drv_msc_get_peer_ok::inst_id:0xffffffff sw_mode 0(scc) peer_ok 1(ok) ret:0x0\n", "para[0]=0x0 para[1]=0x1 "},
         {"1 0 1", "sw_mode=1) = 0 peer_ok=0",
          "drv_msc_get_peer_ok::inst_id:0xffffffff sw_mode 1(xsc) peer_ok 0(not ok) ret:0x0\n",
          "para[0]=0x0 para[1]=0x0 "},
         {"board on", "sw_mode=0) = 0 peer_ok=0",
          "drv_msc_get_peer_ok::inst_id:0x0 sw_mode 0(scc) peer_ok 0(not ok) ret:0x0\n", "para[0]=0x0 para[1]=0x0 "},
         {"", "sw_mode=0) = 0 peer_ok=1",
          "input error : in_num : 0 over [1-2] .\ndrv_msc_get_peer_ok::inst_id:0xffffffff sw_mode 0(scc) peer_ok 1(ok) "
          "ret:0x0\n",
          "para[0]=0x0 para[1]=0x1 "}});
    expect_failures("msc_get_peer_ok",
                    {{"0", "sw_mode=0) = 0x811101a4",
                      "drv_msc_get_peer_ok::inst_id:0xffffffff sw_mode 0(scc) peer_ok 0(not ok) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "sw_mode=3) = 0x12",
                      "drv_msc_get_peer_ok::inst_id:0x5 sw_mode 3(unknown) peer_ok 0(not ok) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetSelfBad) {
    expect_runs(
        "msc_set_self_bad",
        {{"0xff00000a 0 1", "sw_mode=0, status=1) = 0",
          "drv_msc_set_self_bad::inst_id:0xff00000a sw_mode 0(scc) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "sw_mode=1, status=0) = 0",
          "drv_msc_set_self_bad::inst_id:0xff000009 sw_mode 1(xsc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "sw_mode=2, status=2) = 0",
          "drv_msc_set_self_bad::inst_id:0x9 sw_mode 2(all) bad 2(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 1", "sw_mode=3, status=1) = 0",
          "drv_msc_set_self_bad::inst_id:0x8 sw_mode 3(unknown) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "sw_mode=0, status=1) = 0",
          "drv_msc_set_self_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "sw_mode=1, status=0) = 0",
          "drv_msc_set_self_bad::inst_id:0xffffffff sw_mode 1(xsc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "sw_mode=0, status=0) = 0",
          "drv_msc_set_self_bad::inst_id:0x0 sw_mode 0(scc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"", "sw_mode=0, status=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_self_bad::inst_id:0xffffffff sw_mode 0(scc) bad 0(clear "
          "bad sts) ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "sw_mode=0, status=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_self_bad::inst_id:0xffffffff sw_mode 0(scc) bad 0(clear "
          "bad sts) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_self_bad",
        {{"0 1", "sw_mode=0, status=1) = 0x811101a4",
          "drv_msc_set_self_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "sw_mode=3, status=1) = 0x12",
          "drv_msc_set_self_bad::inst_id:0x5 sw_mode 3(unknown) bad 1(force bad) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerBad) {
    expect_runs(
        "msc_set_peer_bad",
        {{"0xff00000a 0 1", "sw_mode=0, status=1) = 0",
          "drv_msc_set_peer_bad::inst_id:0xff00000a sw_mode 0(scc) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "sw_mode=1, status=0) = 0",
          "drv_msc_set_peer_bad::inst_id:0xff000009 sw_mode 1(xsc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "sw_mode=2, status=2) = 0",
          "drv_msc_set_peer_bad::inst_id:0x9 sw_mode 2(all) bad 2(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 1", "sw_mode=3, status=1) = 0",
          "drv_msc_set_peer_bad::inst_id:0x8 sw_mode 3(unknown) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "sw_mode=0, status=1) = 0",
          "drv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "sw_mode=1, status=0) = 0",
          "drv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 1(xsc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "sw_mode=0, status=0) = 0",
          "drv_msc_set_peer_bad::inst_id:0x0 sw_mode 0(scc) bad 0(clear bad sts) ret:0x0\n", "para[0]=0x0 "},
         {"", "sw_mode=0, status=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 0(scc) bad 0(clear "
          "bad sts) ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "sw_mode=0, status=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 0(scc) bad 0(clear "
          "bad sts) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_peer_bad",
        {{"0 1", "sw_mode=0, status=1) = 0x811101a4",
          "drv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "sw_mode=3, status=1) = 0x12",
          "drv_msc_set_peer_bad::inst_id:0x5 sw_mode 3(unknown) bad 1(force bad) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerSlave) {
    expect_runs(
        "msc_set_peer_slave",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_set_peer_slave::inst_id:0xff00000a peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_set_peer_slave::inst_id:0x0 peer_slave ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        "msc_set_peer_slave",
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_set_peer_slave::inst_id:0x5 peer_slave ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerSlaveCancel) {
    expect_runs(
        "msc_set_peer_slave_cancel",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xff00000a ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        "msc_set_peer_slave_cancel",
        {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_set_peer_slave_cancel::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetSoftReady) {
    expect_runs(
        "msc_set_soft_ready",
        {{"0xff00000a 0 1", "inst_id=0xff00000a, sw_mode=0, soft_ready=1) = 0",
          "drv_msc_set_soft_ready::inst_id:0xff00000a mode 0(scc) soft ready 1(ready) ret:0x0\n", "para[0]=0x0 "},
         {"0xff000009 1 0", "inst_id=0xff000009, sw_mode=1, soft_ready=0) = 0",
          "drv_msc_set_soft_ready::inst_id:0xff000009 mode 1(xsc) soft ready 0(not ready) ret:0x0\n", "para[0]=0x0 "},
         {"9 2 2", "inst_id=0x9, sw_mode=2, soft_ready=2) = 0",
          "drv_msc_set_soft_ready::inst_id:0x9 mode 2(all) soft ready 2(unknown) ret:0x0\n", "para[0]=0x0 "},
         {"010 3 1", "inst_id=0x8, sw_mode=3, soft_ready=1) = 0",
          "drv_msc_set_soft_ready::inst_id:0x8 mode 3(unknown) soft ready 1(ready) ret:0x0\n", "para[0]=0x0 "},
         {"0 1", "inst_id=0xffffffff, sw_mode=0, soft_ready=1) = 0",
          "drv_msc_set_soft_ready::inst_id:0xffffffff mode 0(scc) soft ready 1(ready) ret:0x0\n", "para[0]=0x0 "},
         {"1 0 0 1", "inst_id=0xffffffff, sw_mode=1, soft_ready=0) = 0",
          "drv_msc_set_soft_ready::inst_id:0xffffffff mode 1(xsc) soft ready 0(not ready) ret:0x0\n", "para[0]=0x0 "},
         {"board on on", "inst_id=0x0, sw_mode=0, soft_ready=0) = 0",
          "drv_msc_set_soft_ready::inst_id:0x0 mode 0(scc) soft ready 0(not ready) ret:0x0\n", "para[0]=0x0 "},
         {"", "inst_id=0xffffffff, sw_mode=0, soft_ready=0) = 0",
          "input error : in_num : 0 over [2-3] .\ndrv_msc_set_soft_ready::inst_id:0xffffffff mode 0(scc) soft ready "
          "0(not ready) ret:0x0\n",
          "para[0]=0x0 "},
         {"1", "inst_id=0xffffffff, sw_mode=0, soft_ready=0) = 0",
          "input error : in_num : 1 over [2-3] .\ndrv_msc_set_soft_ready::inst_id:0xffffffff mode 0(scc) soft ready "
          "0(not ready) ret:0x0\n",
          "para[0]=0x0 "}});
    expect_failures(
        "msc_set_soft_ready",
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, soft_ready=1) = 0x811101a4",
          "drv_msc_set_soft_ready::inst_id:0xffffffff mode 0(scc) soft ready 1(ready) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "inst_id=0x5, sw_mode=3, soft_ready=1) = 0x12",
          "drv_msc_set_soft_ready::inst_id:0x5 mode 3(unknown) soft ready 1(ready) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, ForceMaster) {
    expect_runs(
        "msc_force_master",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_force_master::inst_id:0xff00000a force master ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_force_master::inst_id:0xffffffff force master ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_force_master::inst_id:0xffffffff force master ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_force_master::inst_id:0x0 force master ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        "msc_force_master",
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_force_master::inst_id:0xffffffff force master ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_force_master::inst_id:0x5 force master ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, ForceStandby) {
    expect_runs(
        "msc_force_standby",
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_force_standby::inst_id:0xff00000a force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_force_standby::inst_id:0x0 force standby ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        "msc_force_standby",
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_force_standby::inst_id:0x5 force standby ret:0x12\n", "para[0]=0x12 "}});
}

// The text stands on a line of its own, as the driver wrote it.
TEST(MscTest, DumpInfo) {
    expect_success("msc_test drv_msc_dump_info 0xff00000a",
                   "drv_msc_dump_info(inst_id=0xff00000a, size=256) = 0 buffer=\"scc: master\\nxsc: slave %n\"",
                   framed(banners::narrow, "test_msc_dump_info",
                          "drv_msc_dump_info::inst_id:0xff00000a dump ret:0x0\nscc: master\nxsc: slave %n\n",
                          "para[0]=0x0 "));
    const std::string nothing = "drv_msc_dump_info::inst_id:0xffffffff dump ret:0x0\n\n";
    expect_success("msc_test drv_msc_dump_info", "drv_msc_dump_info(inst_id=0xffffffff, size=256) = 0",
                   framed(banners::narrow, "test_msc_dump_info", nothing, "para[0]=0x0 "));
    expect_success("msc_test drv_msc_dump_info 1 2", "drv_msc_dump_info(inst_id=0xffffffff, size=256) = 0",
                   framed(banners::narrow, "test_msc_dump_info", nothing, "para[0]=0x0 "));
    expect_success("msc_test drv_msc_dump_info board", "drv_msc_dump_info(inst_id=0, size=256) = 0",
                   framed(banners::narrow, "test_msc_dump_info", "drv_msc_dump_info::inst_id:0x0 dump ret:0x0\n\n",
                          "para[0]=0x0 "));
    expect_failure("msc_test drv_msc_dump_info",
                   "drv_msc_dump_info(inst_id=0xffffffff, size=256) = 0x811101a4 buffer=\"half\"",
                   framed(banners::narrow, "test_msc_dump_info",
                          "drv_msc_dump_info::inst_id:0xffffffff dump ret:0x811101a4\nhalf\n", "para[0]=0x811101a4 "));
}

TEST(MscTest, DumpInfoShowsNothingBehindAFullArea) {
    const std::string full(256, 'F');
    expect_success("msc_test drv_msc_dump_info",
                   "drv_msc_dump_info(inst_id=0xffffffff, size=256) = 0 buffer=\"" + full + "\"",
                   framed(banners::narrow, "test_msc_dump_info",
                          "drv_msc_dump_info::inst_id:0xffffffff dump ret:0x0\n" + full + "\n", "para[0]=0x0 "));
}

// The text area is the last thing that the program allocates, so a run that a failing allocation does not change lies
// just behind it.
TEST(MscTest, DumpInfoWithoutMemorySaysSoAndSucceeds) {
    const std::string state = new_scratch_dir();
    const std::string trace = new_scratch_dir() + "/trace";
    const std::string script = scratch_file("no-memory-script", "drv_msc_dump_info = 0\n");
    const auto run_without = [&](int allocation) {
        return run_sim({"--state", state, "--clock", "virtual", "--script", script, "--trace", trace, "--fail-alloc",
                        std::to_string(allocation)},
                       {"msc_test", "drv_msc_dump_info"});
    };
    int unchanged = 4096;
    const std::string whole = run_without(unchanged).out;
    ASSERT_NE(whole.find("drv_msc_dump_info::inst_id:0xffffffff dump ret:0x0\n"), std::string::npos) << whole;
    for (int changed = 0; unchanged - changed > 1;) {
        const int middle = (changed + unchanged) / 2;
        (run_without(middle).out == whole ? unchanged : changed) = middle;
    }
    const process_result result = run_without(unchanged - 1);
    EXPECT_EQ(result.out,
              begin_banner(banners::narrow, "test_msc_dump_info") + "drv_msc_dump_info::malloc fail\n" + timing_lines);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(read_file(trace), "");
}
