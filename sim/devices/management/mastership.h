// Which of the two main processing units is the master, and how the other takes over.
//
// There are two switch modes, scc (system control) and xsc (exchange), bonded or each for itself. One register of the
// chassis says who is the master of scc; that of xsc is the same board unless the two are split.
#pragma once

#include "sim/core/board.h"

#include <string>

namespace kestro_sim {

namespace mastership {

inline constexpr const char *bond_names[]{"bond", "spec"};

inline constexpr reg slot = reg::number("slot", 0, UINT16_MAX, "", "the slot of the master").required().written();
inline constexpr reg split = reg::flag("split", "whether the other board is the master of xsc").or_else(0).written();
inline constexpr reg bond =
    reg::choice("bond", bond_names, "whether both modes are switched together or each for itself").or_else(0).written();
inline constexpr device_family family =
    device_family{"sim_msc", "master", "which main processing unit is the master", {slot, split, bond}}.up_to(0);

} // namespace mastership

enum class switch_reason : uint32_t {
    none = 0,
    state_set = 1,
    forced = 2,
    peer_made_slave = 3,
    bad = 4,
    not_ready = 5,
    gone = 6,
    bonded = 7,
};

namespace switch_over {
inline constexpr const char *reason_names[]{"none", "state set", "forced", "peer made slave",
                                            "bad",  "not ready", "gone",   "bonded"};
inline constexpr reg reason = reg::choice("reason", reason_names, "why the last one was").or_else(0).written();
inline constexpr reg count = reg::number("count", 0, any_u32, "", "how many there were").or_else(0).written();
inline constexpr device_family family =
    device_family{"sim_msc", "switchover", "switch-overs: 0 of scc, 1 of xsc, 2 of either", {reason, count}}.up_to(2);
} // namespace switch_over

namespace master_control {
inline constexpr reg npu_mode =
    reg::number("npu_mode", 0, 255, "", "the work mode of the network processors").or_else(0).written();
inline constexpr reg holds_peer = reg::flag("holds_peer", "whether it holds its peer as slave").or_else(0).written();
inline constexpr device_family family = device_family{
    "sim_msc",
    "controller",
    "the master/slave controller of a main processing unit",
    {npu_mode, holds_peer}}.up_to(0);
} // namespace master_control

namespace switch_channel {

inline constexpr const char *control_names[]{"auto", "force"};

inline constexpr reg enable =
    reg::flag("enable", "whether there are switch-overs without a command").or_else(1).written();
inline constexpr reg control =
    reg::choice("control", control_names, "what decides on switch-overs").or_else(0).written();
inline constexpr reg self_bad = reg::flag("self_bad", "whether the board calls itself bad").or_else(0).written();
inline constexpr reg peer_bad = reg::flag("peer_bad", "whether the board calls its peer bad").or_else(0).written();
inline constexpr reg ready = reg::flag("ready", "whether its software is ready").or_else(1).written();
inline constexpr reg int_enable = reg::flag("int_enable", "whether a switch-over interrupts").or_else(0).written();
inline constexpr reg int_seen =
    reg::number("int_seen", 0, any_u32, "", "which switch-over it was told of last").or_else(0).written();

inline constexpr device_family family = device_family{
    "sim_msc",
    "mode",
    "a switch mode of a controller: 0 scc, 1 xsc",
    {enable, control, self_bad, peer_bad, ready, int_enable,
     int_seen}}.up_to(1);

} // namespace switch_channel

enum class modes : uint32_t { scc = 1, xsc = 2, all = 3 };

enum class mastery : uint32_t { master = 0, slave = 1, abnormal = 2 };

// A main processing unit beside its peer.
class master_controller {
  public:
    using setting = written_of<switch_channel::family>;
    using reading = word_of<switch_channel::family>;

    // Of the place of a controller. A place whose unit knows no peer has none.
    master_controller(board &b, const std::string &place);

    // Abnormal when the modes differ, and a peer that is not there.
    mastery state(modes which) const;
    mastery peer_state(modes which) const;
    bool self_ok(modes which) const;
    bool peer_ok(modes which) const;

    // The least and the most that a register is in these modes.
    uint32_t least(modes which, reading name) const;
    uint32_t most(modes which, reading name) const;

    // Followed by a switch-over when the master is not ok any more, the other is, and both let it happen.
    void set(modes which, setting name, uint32_t value);

    // What software wants: the board must be there, be ok and not be held by the other. Forced, it need not be ok, and
    // from then on software decides.
    void make_master(modes which);
    void make_slave(modes which);
    void force(mastery to);
    void hold_peer();
    void let_peer_go();
    void call_peer_bad(modes which, uint32_t value);

    void set_bond(uint32_t bond);

    // A switch-over interrupts once: enabling and reading begin anew.
    void set_interrupt(modes which, uint32_t enable);
    bool take_interrupt(modes which);

    std::string dump() const;

    // The board comes or goes.
    void note_fitted(change &writes, bool is_there);

  private:
    struct lines;
    struct pending;
    struct outcome;
    struct rivals;
    struct seat {
        std::string place;
        uint32_t slot;
    };

    lines read(const seat &of, uint32_t mode, const pending &soon) const;
    bool is_ok(const seat &who, const seat &other, uint32_t mode) const;
    uint32_t master_slot(uint32_t mode) const;
    mastery state_of(const seat &who, modes which) const;
    bool holds_other(const seat &who) const;
    bool is_there(const seat &who) const;
    modes widened(modes which) const;
    void require_peer() const;
    void require_willing(const seat &who, const seat &other, modes which) const;
    rivals rivals_in(uint32_t mode, const pending &soon) const;
    outcome present() const;
    void apply(change &writes, const outcome &wanted);
    void move(change &writes, modes which, const seat &to, switch_reason why);
    void arbitrate(change &writes, const pending &soon);

    board &b_;
    seat self_;
    seat peer_;
};

// What main processing units make of a board or card that comes or goes.
void note_fitted(board &b, change &writes, const std::string &place, bool is_there);

} // namespace kestro_sim
