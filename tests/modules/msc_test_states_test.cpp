// msc_test: states, the lines between the two boards and switch-overs, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/modules/runs.h"

using namespace kestro_tests;

namespace {

told_operation operation(const std::string &name) {
    return {"msc_test", banners::narrow, name};
}

} // namespace

TEST(MscTest, SetState) {
    expect_runs(
        operation("msc_set_state"),
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
        operation("msc_set_state"),
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, state=1) = 0x811101a4",
          "drv_msc_set_state::inst_id:0xffffffff sw_mode 0(scc) state 1(slave) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 4294967295 7", "inst_id=0x5, sw_mode=0xffffffff, state=7) = 0x12",
          "drv_msc_set_state::inst_id:0x5 sw_mode -1(unknown) state 7(unknown) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, GetState) {
    expect_runs(
        operation("msc_get_state"),
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
    expect_failures(operation("msc_get_state"),
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_state::inst_id:0x5 sw_mode 3(unknown) state 0(master) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetPeerState) {
    expect_runs(
        operation("msc_get_peer_state"),
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
    expect_failures(operation("msc_get_peer_state"),
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_peer_state::inst_id:0xffffffff sw_mode 0(scc) state 0(master) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_peer_state::inst_id:0x5 sw_mode 3(unknown) state 0(master) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetSwitchReason) {
    expect_runs(
        operation("msc_get_switch_reason"),
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
    expect_failures(operation("msc_get_switch_reason"),
                    {{"0", "inst_id=0xffffffff, sw_mode=0) = 0x811101a4",
                      "drv_msc_get_switch_reason::inst_id:0xffffffff sw_mode 0(scc) reason 0 ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "inst_id=0x5, sw_mode=3) = 0x12",
                      "drv_msc_get_switch_reason::inst_id:0x5 sw_mode 3(unknown) reason 0 ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetSelfOk) {
    expect_runs(
        operation("msc_get_self_ok"),
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
    expect_failures(operation("msc_get_self_ok"),
                    {{"0", "sw_mode=0) = 0x811101a4",
                      "drv_msc_get_self_ok::inst_id:0xffffffff sw_mode 0(scc) self_ok 0(not ok) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "sw_mode=3) = 0x12",
                      "drv_msc_get_self_ok::inst_id:0x5 sw_mode 3(unknown) self_ok 0(not ok) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, GetPeerOk) {
    expect_runs(
        operation("msc_get_peer_ok"),
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
    expect_failures(operation("msc_get_peer_ok"),
                    {{"0", "sw_mode=0) = 0x811101a4",
                      "drv_msc_get_peer_ok::inst_id:0xffffffff sw_mode 0(scc) peer_ok 0(not ok) ret:0x811101a4\n",
                      "para[0]=0x811101a4 para[1]=0x0 "},
                     {"5 3", "sw_mode=3) = 0x12",
                      "drv_msc_get_peer_ok::inst_id:0x5 sw_mode 3(unknown) peer_ok 0(not ok) ret:0x12\n",
                      "para[0]=0x12 para[1]=0x0 "}});
}

TEST(MscTest, SetSelfBad) {
    expect_runs(
        operation("msc_set_self_bad"),
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
        operation("msc_set_self_bad"),
        {{"0 1", "sw_mode=0, status=1) = 0x811101a4",
          "drv_msc_set_self_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "sw_mode=3, status=1) = 0x12",
          "drv_msc_set_self_bad::inst_id:0x5 sw_mode 3(unknown) bad 1(force bad) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerBad) {
    expect_runs(
        operation("msc_set_peer_bad"),
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
        operation("msc_set_peer_bad"),
        {{"0 1", "sw_mode=0, status=1) = 0x811101a4",
          "drv_msc_set_peer_bad::inst_id:0xffffffff sw_mode 0(scc) bad 1(force bad) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "sw_mode=3, status=1) = 0x12",
          "drv_msc_set_peer_bad::inst_id:0x5 sw_mode 3(unknown) bad 1(force bad) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetSoftReady) {
    expect_runs(
        operation("msc_set_soft_ready"),
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
        operation("msc_set_soft_ready"),
        {{"0 1", "inst_id=0xffffffff, sw_mode=0, soft_ready=1) = 0x811101a4",
          "drv_msc_set_soft_ready::inst_id:0xffffffff mode 0(scc) soft ready 1(ready) ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5 3 1", "inst_id=0x5, sw_mode=3, soft_ready=1) = 0x12",
          "drv_msc_set_soft_ready::inst_id:0x5 mode 3(unknown) soft ready 1(ready) ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerSlave) {
    expect_runs(
        operation("msc_set_peer_slave"),
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_set_peer_slave::inst_id:0xff00000a peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_set_peer_slave::inst_id:0x0 peer_slave ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        operation("msc_set_peer_slave"),
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_set_peer_slave::inst_id:0xffffffff peer_slave ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_set_peer_slave::inst_id:0x5 peer_slave ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, SetPeerSlaveCancel) {
    expect_runs(
        operation("msc_set_peer_slave_cancel"),
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xff00000a ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_set_peer_slave_cancel::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        operation("msc_set_peer_slave_cancel"),
        {{"", "inst_id=0xffffffff) = 0x811101a4", "drv_msc_set_peer_slave_cancel::inst_id:0xffffffff ret:0x811101a4\n",
          "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_set_peer_slave_cancel::inst_id:0x5 ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, ForceMaster) {
    expect_runs(
        operation("msc_force_master"),
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_force_master::inst_id:0xff00000a force master ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_force_master::inst_id:0xffffffff force master ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_force_master::inst_id:0xffffffff force master ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_force_master::inst_id:0x0 force master ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        operation("msc_force_master"),
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_force_master::inst_id:0xffffffff force master ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_force_master::inst_id:0x5 force master ret:0x12\n", "para[0]=0x12 "}});
}

TEST(MscTest, ForceStandby) {
    expect_runs(
        operation("msc_force_standby"),
        {{"0xff00000a", "inst_id=0xff00000a) = 0", "drv_msc_force_standby::inst_id:0xff00000a force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"", "inst_id=0xffffffff) = 0", "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"1 1", "inst_id=0xffffffff) = 0", "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x0\n",
          "para[0]=0x0 "},
         {"board", "inst_id=0x0) = 0", "drv_msc_force_standby::inst_id:0x0 force standby ret:0x0\n", "para[0]=0x0 "}});
    expect_failures(
        operation("msc_force_standby"),
        {{"", "inst_id=0xffffffff) = 0x811101a4",
          "drv_msc_force_standby::inst_id:0xffffffff force standby ret:0x811101a4\n", "para[0]=0x811101a4 "},
         {"5", "inst_id=0x5) = 0x12", "drv_msc_force_standby::inst_id:0x5 force standby ret:0x12\n", "para[0]=0x12 "}});
}
