// When a clock is there, and what its detector makes of it.
#include "sim/devices/clock/clock_source.h"

#include "sim/core/catalogue.h"

#include <optional>

namespace kestro_sim {

namespace {

using clock_source::one;

// The clock that arrives by its own means: its line signal must not be taken for lost.
bool arrives(board &b, const one &which, const synclk::settings &set) {
    return b.get(which, clock_source::present) != 0 &&
           (!b.has(which, clock_source::port) || b.get(which, clock_source::port) != set.los_port);
}

// The number of the clock that a clock comes from: its own, or that of the one it follows; nothing when it is lost.
std::optional<uint32_t> origin_of(board &b, const one &which, const synclk::settings &set) {
    if (b.get(which, clock_source::synchronous) == 0) {
        return arrives(b, which, set) ? std::optional(which.id) : std::nullopt;
    }
    const auto followed = board::at<clock_source::family>(which.instance, set.channel);
    const bool is_there = b.get(which, clock_source::present) != 0 && set.enable != 0 && b.is_described(followed) &&
                          b.get(followed, clock_source::synchronous) == 0 && arrives(b, followed, set);
    return is_there ? std::optional(followed.id) : std::nullopt;
}

bool is_watched(board &b, const one &which) {
    return b.get_or(board::at<clock_unit::family>(which.instance), clock_unit::watching, 0) != 0;
}

} // namespace

synclk::settings synclk::now_of(board &b, const std::string &place) {
    const auto which = board::at<family>(place);
    return {b.get_or(which, channel, 0), b.get_or(which, enable, 0), b.get_or(which, los_port, no_port)};
}

void synclk::change_to(board &b, const device_of<family> &which, const settings &to) {
    const settings before = now_of(b, which.instance);
    change writes;
    b.put(writes, which, channel, to.channel);
    b.put(writes, which, enable, to.enable);
    b.put(writes, which, los_port, to.los_port);
    for (const one &source : b.all_at<clock_source::family>(which.instance)) {
        const auto came_from = origin_of(b, source, before);
        const auto comes_from = origin_of(b, source, to);
        if (came_from == comes_from) {
            continue;
        }
        if (comes_from) {
            b.put(writes, source, clock_source::since, static_cast<uint64_t>(b.now()));
        } else if (is_watched(b, source)) {
            b.put(writes, source, clock_source::noticed, 1);
        }
    }
    b.commit(writes);
}

namespace clock_source {

namespace {

void keep_noticed(board &b, const one &which, bool is_noticed) {
    if ((b.get(which, noticed) != 0) != is_noticed) {
        b.put(which, noticed, is_noticed ? 1 : 0);
    }
}

} // namespace

bool is_lost(board &b, const one &which) {
    return !origin_of(b, which, synclk::now_of(b, which.instance));
}

bool look_for_loss(board &b, const one &which) {
    const bool lost = is_lost(b, which);
    if (lost && is_watched(b, which)) {
        keep_noticed(b, which, true);
    }
    return lost;
}

// A clock that is still lost has been lost since this time as well.
bool take_history(board &b, const one &which) {
    const bool lost = look_for_loss(b, which);
    const bool was_lost = b.get(which, noticed) != 0;
    keep_noticed(b, which, was_lost && lost);
    return was_lost;
}

void start_detectors(board &b, const device_of<clock_unit::family> &unit) {
    const auto synchronous_clock = board::at<synclk::family>(unit.instance);
    if (b.is_described(synchronous_clock)) {
        synclk::settings to = synclk::now_of(b, unit.instance);
        to.los_port = synclk::no_port;
        synclk::change_to(b, synchronous_clock, to);
    }
    change writes;
    b.put(writes, unit, clock_unit::watching, 1);
    for (const one &source : b.all_at<family>(unit.instance)) {
        b.put(writes, source, noticed, 0);
    }
    b.commit(writes);
}

void stop_detectors(board &b, const device_of<clock_unit::family> &unit) {
    b.put(unit, clock_unit::watching, 0);
}

namespace {

uint32_t lost_bit(board &b, const device &which) {
    return is_lost(b, one{which}) ? 1 : 0;
}

// The counter stands still when nothing arrives. Lowest byte first.
constexpr uint32_t counter_at = 4;

uint32_t read_counter(board &b, const device &which, uint32_t at) {
    const one source{which};
    return is_lost(b, source) ? 0 : b.get(source, kilohertz) >> 8 * (at - counter_at);
}

constexpr space_field identity_bits[]{{0xFF, &family, own_id, &identity, 0, bus::read_only, {}}};
constexpr space_field status_bits[]{{0x01, &family, own_id, &present, 0, bus::read_only, {lost_bit, nullptr}},
                                    {0x02, &family, own_id, &noticed, 0, bus::clear_by_one, {}}};
constexpr space_field control_bits[]{{0x01, &clock_unit::family, 0, &clock_unit::watching}};

constexpr space_register detector_registers[]{
    {.address = 0x00, .name = "identity", .meaning = "what tells a detector from others", .fields = identity_bits},
    {.address = 0x01,
     .name = "status",
     .meaning = "bit 0 lost, bit 1 a loss was noticed; a written 1 clears that",
     .read_only = 0xFC,
     .fields = status_bits},
    {.address = 0x02,
     .name = "control",
     .meaning = "bit 0: losses are kept; one bit for all detectors",
     .read_only = 0xFE,
     .fields = control_bits},
    {.address = counter_at,
     .name = "frequency",
     .meaning = "kilohertz as counted, lowest byte first",
     .count = 4,
     .read = read_counter},
};

} // namespace

constexpr register_space detector{"clock", &family, 8, 8, undeclared::all_ones, detector_registers};

} // namespace clock_source

device_list devices_of_clock_source() {
    static constexpr const device_family *families[]{&clock_unit::family, &synclk::family, &clock_source::family,
                                                     &timestamp::family};
    static constexpr const register_space *spaces[]{&clock_source::detector};
    return {families, spaces};
}

} // namespace kestro_sim
