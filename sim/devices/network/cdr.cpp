// What a lane sees is worked out in one place, for the registers and the texts alike.
#include "sim/devices/network/cdr.h"

#include "sim/core/catalogue.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <optional>

namespace kestro_sim {

namespace cdr {

namespace {

constexpr uint32_t rates[]{10, 25, 28};

constexpr int least_quality = 20;

// An equaliser has 16 settings; a byte of the register holds one, and whether it adapts.
constexpr uint32_t held = 0x80;
constexpr uint32_t setting_bits = 0x0F;

// Of what a signal still has where the equaliser is off by one step.
constexpr int lost_by_step = 6;

struct lane_state {
    bool has_signal;
    bool is_locked;
    uint32_t setting; // of the equaliser
    uint32_t height;  // of the eye, in mV
    uint32_t width;   // of the eye, in thousandths of a bit's time
};

struct arriving {
    uint32_t lanes;
    uint32_t rate;
    int quality;
};

arriving signal_at(board &b, const cdr_interface::one &which, side at) {
    if (at == side::line) {
        return {b.get(which, cdr_interface::line_signal), b.get(which, cdr_interface::line_rate),
                static_cast<int>(b.get(which, cdr_interface::line_quality))};
    }
    return {b.get(which, cdr_interface::host_signal), b.get(which, cdr_interface::host_rate),
            static_cast<int>(b.get(which, cdr_interface::host_quality))};
}

cdr_part::one find_part(board &b, const std::string &place, uint32_t chip_id, uint32_t sub_chip_id) {
    for (const cdr_part::one &part : b.all_at<cdr_part::family>(place)) {
        if (b.get(part, cdr_part::chip) == chip_id && b.get(part, cdr_part::number) == sub_chip_id) {
            return part;
        }
    }
    refuse(error::no_such_device);
}

cdr_part::one part_of(board &b, const cdr_interface::one &which) {
    return find_part(b, which.instance, b.get(which, cdr_interface::chip), b.get(which, cdr_interface::sub_chip));
}

uint32_t equaliser_byte(board &b, const cdr_part::one &part, uint32_t lane) {
    return b.get(part, cdr_part::equaliser) >> 8U * lane & 0xFFU;
}

// Which line equaliser a lane of the interface has; on the host's side they always adapt.
uint32_t equaliser_of(board &b, const cdr_interface::one &which, side at, uint32_t lane) {
    return at == side::line ? equaliser_byte(b, part_of(b, which), b.get(which, cdr_interface::first_lane) + lane) : 0;
}

bool has_had_time(board &b, const cdr_interface::one &which) {
    const auto began = static_cast<int64_t>(b.get_wide(which, cdr_interface::since));
    return b.now() - began >= b.get(which, cdr_interface::lock_time) * nanoseconds_per_millisecond;
}

// A lane of an interface, counted from its first.
lane_state lane_at(board &b, const cdr_interface::one &which, side at, uint32_t lane) {
    const arriving signal = signal_at(b, which, at);
    const uint32_t rate = b.get(which, cdr_interface::rate);
    const uint32_t equaliser = equaliser_of(b, which, at, lane);
    const uint32_t best = static_cast<uint32_t>(100 - signal.quality) * setting_bits / 100;
    const bool has_signal = (signal.lanes >> lane & 1U) != 0;
    const bool hears = has_signal && rate != 0;

    lane_state state{has_signal, false, (equaliser & held) != 0 ? equaliser & setting_bits : hears ? best : 0, 0, 0};
    // Later lanes have the longer traces, so a little less of the signal arrives there.
    const int steps_off = std::abs(static_cast<int>(state.setting) - static_cast<int>(best));
    const int left = signal.quality - static_cast<int>(lane) - lost_by_step * steps_off;
    if (!hears || rate != signal.rate || left < least_quality || !has_had_time(b, which)) {
        return state;
    }
    state.is_locked = true;
    state.height = static_cast<uint32_t>(4 * left);
    state.width = static_cast<uint32_t>(250 + 5 * left);
    return state;
}

// The interface of a sub-chip's lane that is set up, and which lane of it that is.
struct lane_of_interface {
    cdr_interface::one which;
    uint32_t lane;
};

std::optional<lane_of_interface> interface_at(board &b, const cdr_part::one &part, uint32_t lane) {
    for (const cdr_interface::one &which : b.all_at<cdr_interface::family>(part.instance)) {
        const uint32_t first = b.get(which, cdr_interface::first_lane);
        if (b.get(which, cdr_interface::chip) == b.get(part, cdr_part::chip) &&
            b.get(which, cdr_interface::sub_chip) == b.get(part, cdr_part::number) && lane >= first &&
            lane - first < b.get(which, cdr_interface::lanes)) {
            return lane_of_interface{which, lane - first};
        }
    }
    return std::nullopt;
}

lane_state lane_of(board &b, const cdr_part::one &part, side at, uint32_t lane) {
    const auto found = interface_at(b, part, lane);
    return found ? lane_at(b, found->which, at, found->lane) : lane_state{};
}

__attribute__((format(printf, 1, 2))) std::string written_as(const char *format, ...) {
    char text[160];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

std::vector<device_of<cdr_chip::family>> chips_of(board &b, const std::string &place) {
    std::vector<device_of<cdr_chip::family>> chips = b.all_at<cdr_chip::family>(place);
    refuse_if(chips.empty(), error::not_supported);
    return chips;
}

void need_running(board &b, const std::string &place, uint32_t chip_id) {
    const auto chip = b.find_at<cdr_chip::family>(place, chip_id);
    refuse_if(b.get(chip, cdr_chip::state) != cdr_chip::running, error::not_ready);
}

constexpr struct {
    side at;
    const char *name;
} sides[]{{side::line, "line"}, {side::host, "host"}};

} // namespace

void prepare(board &b, const std::string &place) {
    change writes;
    for (const auto &chip : chips_of(b, place)) {
        b.put(writes, chip, cdr_chip::state, std::max(b.get(chip, cdr_chip::state), cdr_chip::prepared));
    }
    b.commit(writes);
}

void start(board &b, const std::string &place) {
    change writes;
    for (const auto &chip : chips_of(b, place)) {
        refuse_if(b.get(chip, cdr_chip::state) == cdr_chip::down, error::not_ready);
        b.put(writes, chip, cdr_chip::state, cdr_chip::running);
    }
    b.commit(writes);
}

void stop(board &b, const std::string &place, uint32_t chip_id) {
    change writes;
    b.put(writes, b.find_at<cdr_chip::family>(place, chip_id), cdr_chip::state, cdr_chip::down);
    for (const cdr_part::one &part : b.all_at<cdr_part::family>(place)) {
        if (b.get(part, cdr_part::chip) == chip_id) {
            b.put(writes, part, cdr_part::equaliser, 0);
            b.put(writes, part, cdr_part::scratch, 0);
        }
    }
    for (const cdr_interface::one &which : b.all_at<cdr_interface::family>(place)) {
        if (b.get(which, cdr_interface::chip) == chip_id) {
            b.put(writes, which, cdr_interface::rate, 0);
        }
    }
    b.commit(writes);
}

cdr_part::one running_part(board &b, const std::string &place, uint32_t chip_id, uint32_t sub_chip_id) {
    need_running(b, place, chip_id);
    return find_part(b, place, chip_id, sub_chip_id);
}

cdr_interface::one running_interface(board &b, const std::string &place, uint32_t chip_id, uint32_t inf_id) {
    need_running(b, place, chip_id);
    for (const cdr_interface::one &which : b.all_at<cdr_interface::family>(place)) {
        if (b.get(which, cdr_interface::chip) == chip_id && b.get(which, cdr_interface::number) == inf_id) {
            return which;
        }
    }
    refuse(error::no_such_device);
}

int64_t set_up(board &b, const cdr_interface::one &which, uint32_t gbit_per_s) {
    refuse_if(std::find(std::begin(rates), std::end(rates), gbit_per_s) == std::end(rates), error::bad_value);
    if (b.get(which, cdr_interface::rate) != gbit_per_s) {
        b.put_all(which, {{cdr_interface::rate, gbit_per_s}, {cdr_interface::since, static_cast<uint64_t>(b.now())}});
    }
    const auto began = static_cast<int64_t>(b.get_wide(which, cdr_interface::since));
    const int64_t takes = b.get(which, cdr_interface::lock_time) * nanoseconds_per_millisecond;
    return std::max(began + takes - b.now(), int64_t{0});
}

void need_rate(board &b, const cdr_interface::one &which, uint32_t gbit_per_s) {
    refuse_if(gbit_per_s == 0 || b.get(which, cdr_interface::rate) != gbit_per_s, error::not_ready);
}

void take_down(board &b, const cdr_interface::one &which, uint32_t gbit_per_s) {
    need_rate(b, which, gbit_per_s);
    b.put(which, cdr_interface::rate, 0);
}

bool is_up(board &b, const cdr_interface::one &which, side at) {
    for (uint32_t lane = 0; lane < b.get(which, cdr_interface::lanes); ++lane) {
        if (!lane_at(b, which, at, lane).is_locked) {
            return false;
        }
    }
    return true;
}

std::string config_text(board &b, const cdr_interface::one &which) {
    const auto chip = board::at<cdr_chip::family>(which.instance, b.get(which, cdr_interface::chip));
    const uint32_t first = b.get(which, cdr_interface::first_lane);
    const uint32_t lanes = b.get(which, cdr_interface::lanes);
    std::string text =
        written_as("chip %u: identity 0x%04x, revision %u\n", chip.id, b.get(chip, cdr_chip::identity),
                   b.get(chip, cdr_chip::revision)) +
        written_as("interface %u: sub-chip %u, lanes %u to %u, %u Gbit/s\n", b.get(which, cdr_interface::number),
                   b.get(which, cdr_interface::sub_chip), first, first + lanes - 1, b.get(which, cdr_interface::rate));
    for (uint32_t lane = 0; lane < lanes; ++lane) {
        const uint32_t equaliser = equaliser_of(b, which, side::line, lane);
        text += (equaliser & held) != 0
                    ? written_as("line lane %u: equaliser held at %u\n", first + lane, equaliser & setting_bits)
                    : written_as("line lane %u: equaliser adapts\n", first + lane);
    }
    return text;
}

std::string status_text(board &b, const cdr_interface::one &which) {
    const uint32_t first = b.get(which, cdr_interface::first_lane);
    std::string text;
    for (const auto &[at, name] : sides) {
        text += written_as("%s: link %s\n", name, is_up(b, which, at) ? "up" : "down");
        for (uint32_t lane = 0; lane < b.get(which, cdr_interface::lanes); ++lane) {
            const lane_state state = lane_at(b, which, at, lane);
            text += written_as("%s lane %u: %s, %s, equaliser %u\n", name, first + lane,
                               state.has_signal ? "signal" : "no signal", state.is_locked ? "locked" : "not locked",
                               state.setting);
        }
    }
    return text;
}

std::string eye_text(board &b, const cdr_interface::one &which) {
    const uint32_t first = b.get(which, cdr_interface::first_lane);
    std::string text;
    for (const auto &[at, name] : sides) {
        for (uint32_t lane = 0; lane < b.get(which, cdr_interface::lanes); ++lane) {
            const lane_state state = lane_at(b, which, at, lane);
            text += state.is_locked ? written_as("%s lane %u: eye %u mV high, %u mUI wide\n", name, first + lane,
                                                 state.height, state.width)
                                    : written_as("%s lane %u: eye closed\n", name, first + lane);
        }
    }
    return text;
}

namespace {

constexpr uint32_t line_equalisers = 0x10;
constexpr uint32_t host_equalisers = 0x14;
constexpr uint32_t line_eyes = 0x20;
constexpr uint32_t host_eyes = 0x24;
constexpr uint32_t lane_rates = 0x08;

device_of<cdr_chip::family> chip_of(board &b, const device &which) {
    return board::at<cdr_chip::family>(which.instance, b.get(cdr_part::one{which}, cdr_part::chip));
}

uint32_t read_identity(board &b, const device &which, uint32_t) {
    return b.get(chip_of(b, which), cdr_chip::identity);
}

uint32_t read_revision(board &b, const device &which, uint32_t) {
    return b.get(chip_of(b, which), cdr_chip::revision);
}

uint32_t read_lanes(board &b, const device &which, side at, bool lane_state::*of) {
    uint32_t value = 0;
    for (uint32_t lane = 0; lane < cdr_part::lanes_max; ++lane) {
        value |= lane_of(b, cdr_part::one{which}, at, lane).*of ? 1U << lane : 0U;
    }
    return value;
}

uint32_t read_line_signal(board &b, const device &which, uint32_t) {
    return read_lanes(b, which, side::line, &lane_state::has_signal);
}

uint32_t read_line_lock(board &b, const device &which, uint32_t) {
    return read_lanes(b, which, side::line, &lane_state::is_locked);
}

uint32_t read_host_signal(board &b, const device &which, uint32_t) {
    return read_lanes(b, which, side::host, &lane_state::has_signal);
}

uint32_t read_host_lock(board &b, const device &which, uint32_t) {
    return read_lanes(b, which, side::host, &lane_state::is_locked);
}

uint32_t read_rate(board &b, const device &which, uint32_t address) {
    const auto found = interface_at(b, cdr_part::one{which}, address - lane_rates);
    return found ? b.get(found->which, cdr_interface::rate) : 0;
}

uint32_t read_equaliser(board &b, const device &which, uint32_t address) {
    const cdr_part::one part{which};
    const uint32_t lane = address - line_equalisers;
    return (equaliser_byte(b, part, lane) & held) | lane_of(b, part, side::line, lane).setting;
}

uint32_t read_host_equaliser(board &b, const device &which, uint32_t address) {
    return lane_of(b, cdr_part::one{which}, side::host, address - host_equalisers).setting;
}

// A lane that adapts again forgets the setting at which it was held.
void write_equaliser(board &b, const device &which, uint32_t address, uint32_t value) {
    const cdr_part::one part{which};
    const uint32_t shift = 8U * (address - line_equalisers);
    const uint32_t byte = (value & held) != 0 ? value & (held | setting_bits) : 0;
    b.put(part, cdr_part::equaliser, (b.get(part, cdr_part::equaliser) & ~(0xFFU << shift)) | byte << shift);
}

uint32_t eye_word(const lane_state &state) {
    return state.height / 2 << 8U | state.width / 5;
}

uint32_t read_line_eye(board &b, const device &which, uint32_t address) {
    return eye_word(lane_of(b, cdr_part::one{which}, side::line, address - line_eyes));
}

uint32_t read_host_eye(board &b, const device &which, uint32_t address) {
    return eye_word(lane_of(b, cdr_part::one{which}, side::host, address - host_eyes));
}

constexpr space_field scratch_bits[]{{0xFFFF, &cdr_part::family, own_id, &cdr_part::scratch}};

constexpr space_register part_registers[]{
    {.address = 0x00, .name = "identity", .meaning = "what the chip is", .read = read_identity},
    {.address = 0x01, .name = "revision", .meaning = "the chip's revision", .read = read_revision},
    {.address = 0x02, .name = "scratch", .meaning = "kept for software", .fields = scratch_bits},
    {.address = 0x04, .name = "line_signal", .meaning = "lanes with a signal of the line", .read = read_line_signal},
    {.address = 0x05, .name = "line_lock", .meaning = "lanes that locked to it", .read = read_line_lock},
    {.address = 0x06, .name = "host_signal", .meaning = "lanes with a signal of the host", .read = read_host_signal},
    {.address = 0x07, .name = "host_lock", .meaning = "lanes that locked to it", .read = read_host_lock},
    {.address = lane_rates,
     .name = "rate",
     .meaning = "in Gbit/s, of lanes 0 to 3; 0 not set up",
     .count = cdr_part::lanes_max,
     .read = read_rate},
    {.address = line_equalisers,
     .name = "line_equaliser",
     .meaning = "of lanes 0 to 3: bit 7 held, bits 3 to 0 the setting",
     .count = cdr_part::lanes_max,
     .read = read_equaliser,
     .write = write_equaliser},
    {.address = host_equalisers,
     .name = "host_equaliser",
     .meaning = "the setting of lanes 0 to 3, which always adapt",
     .count = cdr_part::lanes_max,
     .read = read_host_equaliser},
    {.address = line_eyes,
     .name = "line_eye",
     .meaning = "of lanes 0 to 3: the upper byte height in 2 mV, the lower width in 5 mUI",
     .count = cdr_part::lanes_max,
     .read = read_line_eye},
    {.address = host_eyes,
     .name = "host_eye",
     .meaning = "the same of the host's side",
     .count = cdr_part::lanes_max,
     .read = read_host_eye},
};

} // namespace

constexpr register_space registers{"cdr", &cdr_part::family, 16, 0x28, undeclared::refused, part_registers};

} // namespace cdr

device_list devices_of_cdr() {
    static constexpr const device_family *families[]{&cdr_chip::family, &cdr_part::family, &cdr_interface::family};
    static constexpr const register_space *spaces[]{&cdr::registers};
    return {families, spaces};
}

} // namespace kestro_sim
