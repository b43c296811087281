// The master/slave controllers of the two main processing units. Each looks at the lines of both, so a switch-over is
// the same whoever causes it.
#include "sim/devices/management/mastership.h"

#include "sim/core/catalogue.h"
#include "sim/core/instance.h"
#include "sim/devices/management/board_unit.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kestro_sim {

namespace {

constexpr uint32_t scc = 0;
constexpr uint32_t xsc = 1;
constexpr uint32_t mode_count = 2;
constexpr uint32_t either = 2; // of the counts of switch-overs
constexpr uint32_t automatic = 0;
constexpr uint32_t by_software = 1;

constexpr uint32_t bit_of(uint32_t mode) {
    return 1U << mode;
}

constexpr bool has(modes which, uint32_t mode) {
    return (static_cast<uint32_t>(which) & bit_of(mode)) != 0;
}

device_of<mastership::family> chassis_control() {
    return board::at<mastership::family>(board::chassis());
}

device_of<switch_over::family> switch_overs(uint32_t of) {
    return board::at<switch_over::family>(board::chassis(), of);
}

device_of<master_control::family> control_of(const std::string &place) {
    return board::at<master_control::family>(place);
}

device_of<switch_channel::family> channel_at(const std::string &place, uint32_t mode) {
    return board::at<switch_channel::family>(place, mode);
}

void count_switch_over(board &b, change &writes, uint32_t of, switch_reason why) {
    const auto counted = switch_overs(of);
    b.put(writes, counted, switch_over::reason, static_cast<uint32_t>(why));
    b.put(writes, counted, switch_over::count, b.get(counted, switch_over::count) + 1U);
}

} // namespace

// What a switch-over looks at of one board.
struct master_controller::lines {
    bool is_there;
    bool holds_other;
    uint32_t enable;
    uint32_t control;
    uint32_t self_bad;
    uint32_t peer_bad;
    uint32_t ready;

    bool is_ok_beside(const lines &other) const {
        return is_there && ready != 0 && self_bad == 0 && !(other.is_there && other.peer_bad != 0);
    }
    bool lets_it_happen() const {
        return !is_there || (enable != 0 && control == automatic);
    }
    switch_reason why_not_ok_beside(const lines &other) const {
        if (!is_there) {
            return switch_reason::gone;
        }
        const bool is_bad = self_bad != 0 || (other.is_there && other.peer_bad != 0);
        return is_bad ? switch_reason::bad : switch_reason::not_ready;
    }
};

// What is about to be written, with the switch-over that follows from it: of the own board.
struct master_controller::pending {
    modes which = modes::all;
    const reg *name = nullptr;
    uint32_t value = 0;
    std::optional<bool> is_there{};
    std::optional<bool> holds_peer{};

    uint32_t over(uint32_t mode, const reg &what, uint32_t present) const {
        return name != nullptr && has(which, mode) && name->is_same_as(what) ? value : present;
    }
};

master_controller::master_controller(board &b, const std::string &place)
    : b_(b), self_{place, slot_of_place(place).value_or(0)}, peer_{} {
    const auto unit = board::at<board_unit::family>(place);
    if (b.has(unit, board_unit::peer_slot)) {
        peer_.slot = b.get(unit, board_unit::peer_slot);
        peer_.place = slot_place(peer_.slot);
    }
}

bool master_controller::is_there(const seat &who) const {
    return !who.place.empty() && presence::is_there(b_, who.place);
}

bool master_controller::holds_other(const seat &who) const {
    return is_there(who) && b_.get(control_of(who.place), master_control::holds_peer) != 0;
}

master_controller::lines master_controller::read(const seat &of, uint32_t mode, const pending &soon) const {
    using namespace switch_channel;
    const auto which = channel_at(of.place, mode);
    lines now{is_there(of),           holds_other(of),         b_.get(which, enable),
              b_.get(which, control), b_.get(which, self_bad), b_.get(which, peer_bad),
              b_.get(which, ready)};
    if (of.slot == self_.slot) {
        now.is_there = soon.is_there.value_or(now.is_there);
        now.holds_other = soon.holds_peer.value_or(now.holds_other);
        now.enable = soon.over(mode, enable, now.enable);
        now.control = soon.over(mode, control, now.control);
        now.self_bad = soon.over(mode, self_bad, now.self_bad);
        now.peer_bad = soon.over(mode, peer_bad, now.peer_bad);
        now.ready = soon.over(mode, ready, now.ready);
    }
    return now;
}

bool master_controller::is_ok(const seat &who, const seat &other, uint32_t mode) const {
    return read(who, mode, {}).is_ok_beside(read(other, mode, {}));
}

uint32_t master_controller::master_slot(uint32_t mode) const {
    const uint32_t slot = b_.master_slot();
    const bool is_other = mode == xsc && b_.get(chassis_control(), mastership::split) != 0;
    if (!is_other) {
        return slot;
    }
    return slot == self_.slot ? peer_.slot : self_.slot;
}

mastery master_controller::state_of(const seat &who, modes which) const {
    uint32_t mastered = 0;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        mastered |= master_slot(mode) == who.slot ? bit_of(mode) : 0;
    }
    mastered &= static_cast<uint32_t>(which);
    if (mastered == 0) {
        return mastery::slave;
    }
    return mastered == static_cast<uint32_t>(which) ? mastery::master : mastery::abnormal;
}

mastery master_controller::state(modes which) const {
    return state_of(self_, which);
}

mastery master_controller::peer_state(modes which) const {
    return is_there(peer_) ? state_of(peer_, which) : mastery::abnormal;
}

bool master_controller::self_ok(modes which) const {
    return (!has(which, scc) || is_ok(self_, peer_, scc)) && (!has(which, xsc) || is_ok(self_, peer_, xsc));
}

bool master_controller::peer_ok(modes which) const {
    return (!has(which, scc) || is_ok(peer_, self_, scc)) && (!has(which, xsc) || is_ok(peer_, self_, xsc));
}

uint32_t master_controller::least(modes which, reading name) const {
    uint32_t found = UINT32_MAX;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        found = has(which, mode) ? std::min(found, b_.get(channel_at(self_.place, mode), name)) : found;
    }
    return found;
}

uint32_t master_controller::most(modes which, reading name) const {
    uint32_t found = 0;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        found = has(which, mode) ? std::max(found, b_.get(channel_at(self_.place, mode), name)) : found;
    }
    return found;
}

void master_controller::set(modes which, setting name, uint32_t value) {
    change writes;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        if (has(which, mode)) {
            b_.put(writes, channel_at(self_.place, mode), name, value);
        }
    }
    arbitrate(writes, {which, &*name, value});
    b_.commit(writes);
}

modes master_controller::widened(modes which) const {
    return b_.get(chassis_control(), mastership::bond) == 0 ? modes::all : which;
}

void master_controller::require_peer() const {
    refuse_if(!is_there(peer_), error::no_such_instance);
}

void master_controller::require_willing(const seat &who, const seat &other, modes which) const {
    refuse_if(holds_other(other), error::bad_value);
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        refuse_if(has(which, mode) && !is_ok(who, other, mode), error::bad_value);
    }
}

// Who is to be the master in each mode, and why.
struct master_controller::outcome {
    std::array<uint32_t, mode_count> master;
    std::array<switch_reason, mode_count> why{};

    void give(modes which, const seat &to, switch_reason because) {
        for (uint32_t mode = 0; mode < mode_count; ++mode) {
            if (has(which, mode)) {
                master.at(mode) = to.slot;
                why.at(mode) = because;
            }
        }
    }
};

master_controller::outcome master_controller::present() const {
    return {{master_slot(scc), master_slot(xsc)}};
}

// Where the master stays it, nothing is noted.
void master_controller::apply(change &writes, const outcome &wanted) {
    const outcome now = present();
    if (wanted.master == now.master) {
        return;
    }
    b_.put(writes, chassis_control(), mastership::slot, wanted.master[scc]);
    b_.put(writes, chassis_control(), mastership::split, wanted.master[scc] == wanted.master[xsc] ? 0 : 1);
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        if (wanted.master.at(mode) != now.master.at(mode)) {
            count_switch_over(b_, writes, mode, wanted.why.at(mode));
            count_switch_over(b_, writes, either, wanted.why.at(mode));
        }
    }
}

void master_controller::move(change &writes, modes which, const seat &to, switch_reason why) {
    outcome wanted = present();
    wanted.give(which, to, why);
    apply(writes, wanted);
}

// The lines of both boards in one mode.
struct master_controller::rivals {
    lines master;
    lines other;
    const seat *other_seat;

    bool may_switch() const {
        const bool is_free = !(master.is_there && master.holds_other);
        return is_free && other.is_ok_beside(master) && master.lets_it_happen() && other.lets_it_happen();
    }
};

master_controller::rivals master_controller::rivals_in(uint32_t mode, const pending &soon) const {
    const bool is_own = master_slot(mode) == self_.slot;
    const seat &other = is_own ? peer_ : self_;
    return {read(is_own ? self_ : peer_, mode, soon), read(other, mode, soon), &other};
}

// A mode whose master is not ok goes to the other board, if that is; bonded, the other mode has to come along. A
// chassis that does not say who is the master has no two to choose from.
void master_controller::arbitrate(change &writes, const pending &soon) {
    if (peer_.place.empty() || !b_.has(chassis_control(), mastership::slot)) {
        return;
    }
    outcome wanted = present();
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        const rivals in_mode = rivals_in(mode, soon);
        const modes moved = widened(static_cast<modes>(bit_of(mode)));
        const bool may_switch = (!has(moved, scc) || rivals_in(scc, soon).may_switch()) &&
                                (!has(moved, xsc) || rivals_in(xsc, soon).may_switch());
        if (may_switch && !in_mode.master.is_ok_beside(in_mode.other)) {
            wanted.give(moved, *in_mode.other_seat, in_mode.master.why_not_ok_beside(in_mode.other));
        }
    }
    apply(writes, wanted);
}

void master_controller::make_master(modes which) {
    which = widened(which);
    if (state(which) == mastery::master) {
        return;
    }
    require_willing(self_, peer_, which);
    change writes;
    move(writes, which, self_, switch_reason::state_set);
    b_.commit(writes);
}

void master_controller::make_slave(modes which) {
    which = widened(which);
    if (state(which) == mastery::slave) {
        return;
    }
    require_peer();
    require_willing(peer_, self_, which);
    change writes;
    move(writes, which, peer_, switch_reason::state_set);
    b_.commit(writes);
}

void master_controller::force(mastery to) {
    const bool is_master = to == mastery::master;
    if (!is_master) {
        require_peer();
    }
    refuse_if(holds_other(is_master ? peer_ : self_), error::bad_value);
    change writes;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        b_.put(writes, channel_at(self_.place, mode), switch_channel::control, by_software);
    }
    move(writes, modes::all, is_master ? self_ : peer_, switch_reason::forced);
    b_.commit(writes);
}

void master_controller::hold_peer() {
    require_peer();
    if (state(modes::all) != mastery::master) {
        require_willing(self_, peer_, modes::all);
    }
    change writes;
    b_.put(writes, control_of(self_.place), master_control::holds_peer, 1);
    move(writes, modes::all, self_, switch_reason::peer_made_slave);
    b_.commit(writes);
}

void master_controller::let_peer_go() {
    change writes;
    b_.put(writes, control_of(self_.place), master_control::holds_peer, 0);
    pending soon;
    soon.holds_peer = false;
    arbitrate(writes, soon);
    b_.commit(writes);
}

void master_controller::call_peer_bad(modes which, uint32_t value) {
    require_peer();
    set(which, switch_channel::peer_bad, value);
}

// The exchange goes to the master of system control when it was with the other.
void master_controller::set_bond(uint32_t bond) {
    change writes;
    b_.put(writes, chassis_control(), mastership::bond, bond);
    if (bond == 0 && master_slot(xsc) != master_slot(scc)) {
        move(writes, modes::xsc, master_slot(scc) == self_.slot ? self_ : peer_, switch_reason::bonded);
    }
    b_.commit(writes);
}

void master_controller::set_interrupt(modes which, uint32_t enable) {
    change writes;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        if (has(which, mode)) {
            const auto channel = channel_at(self_.place, mode);
            b_.put(writes, channel, switch_channel::int_enable, enable);
            b_.put(writes, channel, switch_channel::int_seen, b_.get(switch_overs(mode), switch_over::count));
        }
    }
    b_.commit(writes);
}

bool master_controller::take_interrupt(modes which) {
    change writes;
    bool is_raised = false;
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        const auto channel = channel_at(self_.place, mode);
        const uint32_t count = b_.get(switch_overs(mode), switch_over::count);
        if (has(which, mode) && b_.get(channel, switch_channel::int_enable) != 0 &&
            b_.get(channel, switch_channel::int_seen) != count) {
            b_.put(writes, channel, switch_channel::int_seen, count);
            is_raised = true;
        }
    }
    if (is_raised) {
        b_.commit(writes);
    }
    return is_raised;
}

void master_controller::note_fitted(change &writes, bool is_there) {
    pending soon;
    soon.is_there = is_there;
    arbitrate(writes, soon);
}

std::string master_controller::dump() const {
    static constexpr const char *state_names[]{"master", "slave", "abnormal"};
    const auto name_of = [](mastery state) { return std::string(state_names[static_cast<uint32_t>(state)]); };
    const auto control = control_of(self_.place);
    std::string text = mastership::bond_names[b_.get(chassis_control(), mastership::bond)];
    text += ", npu mode " + std::to_string(b_.get(control, master_control::npu_mode));
    text += b_.get(control, master_control::holds_peer) != 0 ? ", peer held" : "";
    for (uint32_t mode = 0; mode < mode_count; ++mode) {
        const auto which = static_cast<modes>(bit_of(mode));
        const auto channel = channel_at(self_.place, mode);
        text += mode == scc ? "\nscc: " : "\nxsc: ";
        text += name_of(state(which)) + ", peer " + name_of(peer_state(which)) + ", ";
        text += switch_channel::control_names[b_.get(channel, switch_channel::control)];
        text += b_.get(channel, switch_channel::enable) != 0 ? ", enabled" : ", disabled";
        text += self_ok(which) ? ", ok" : ", not ok";
        text += peer_ok(which) ? ", peer ok" : ", peer not ok";
        text += std::string(", last: ") + switch_over::reason_names[b_.get(switch_overs(mode), switch_over::reason)];
    }
    return text;
}

void note_fitted(board &b, change &writes, const std::string &place, bool is_there) {
    if (!card_of_place(place) && !b.all_at<master_control::family>(place).empty()) {
        master_controller(b, place).note_fitted(writes, is_there);
    }
}

device_list devices_of_mastership() {
    static constexpr const device_family *families[]{&mastership::family, &switch_over::family, &master_control::family,
                                                     &switch_channel::family};
    return {families, {}};
}

} // namespace kestro_sim
