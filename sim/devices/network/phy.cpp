// How a port's registers, its link and the other end hang together.
#include "sim/devices/network/phy.h"

#include "sim/core/catalogue.h"

#include <algorithm>
#include <bit>

namespace kestro_sim {

namespace phy {

namespace {

// Bits of the control register. The first and the restart clear themselves at once.
constexpr uint32_t reset_bit = 0x8000;
constexpr uint32_t loopback_bit = 0x4000;
constexpr uint32_t speed_100 = 0x2000;
constexpr uint32_t negotiate = 0x1000;
constexpr uint32_t power_down = 0x0800;
constexpr uint32_t isolate = 0x0400;
constexpr uint32_t restart_bit = 0x0200;
constexpr uint32_t full_duplex = 0x0100;
constexpr uint32_t collision_test = 0x0080;
constexpr uint32_t speed_1000 = 0x0040;

constexpr uint32_t kept_bits =
    loopback_bit | speed_100 | negotiate | power_down | isolate | full_duplex | collision_test | speed_1000;

// A change of these takes the link down. Isolation cuts off the processor's side alone.
constexpr uint32_t link_bits = loopback_bit | speed_100 | negotiate | power_down | full_duplex | speed_1000;

constexpr uint32_t advertised_10 = 0x0060;
constexpr uint32_t advertised_100 = 0x0180;
constexpr uint32_t advertised_1000 = 0x0300;

constexpr uint32_t mark = 0x4B54;

struct speed_code {
    uint32_t bits; // of the control register
    uint32_t ability;
    uint32_t mbit_per_s;
};

constexpr speed_code speeds[]{{0, 1, 10}, {speed_100, 2, 100}, {speed_1000, 4, 1000}};

// Both bits together mean nothing: such a port finds no link.
const speed_code *forced_speed(uint32_t control_bits) {
    const uint32_t bits = control_bits & (speed_100 | speed_1000);
    const auto *found =
        std::find_if(std::begin(speeds), std::end(speeds), [&](const speed_code &each) { return each.bits == bits; });
    return found == std::end(speeds) ? nullptr : found;
}

uint32_t fastest(uint32_t abilities) {
    const auto *found = std::find_if(std::begin(speeds), std::end(speeds),
                                     [&](const speed_code &each) { return each.ability == std::bit_floor(abilities); });
    return found == std::end(speeds) ? 0 : found->mbit_per_s;
}

uint32_t offers(uint32_t control_bits, uint32_t advertise_bits, uint32_t gigabit_bits) {
    if ((control_bits & negotiate) == 0) {
        const speed_code *forced = forced_speed(control_bits);
        return forced == nullptr ? 0 : forced->ability;
    }
    return ((advertise_bits & advertised_10) != 0 ? 1U : 0U) | ((advertise_bits & advertised_100) != 0 ? 2U : 0U) |
           ((gigabit_bits & advertised_1000) != 0 ? 4U : 0U);
}

void begin_link(board &b, change &writes, const one &port, uint32_t offer) {
    b.put(writes, port, offered, offer);
    b.put(writes, port, since, static_cast<uint64_t>(b.now()));
    b.put(writes, port, link_lost, 1);
}

void write_control(board &b, const one &port, uint32_t value) {
    if ((value & reset_bit) != 0) {
        reset(b, port);
        return;
    }
    const uint32_t before = b.get(port, control);
    const uint32_t after = value & kept_bits;
    const bool is_restarted = (value & restart_bit) != 0 && (after & negotiate) != 0;
    change writes;
    b.put(writes, port, control, after);
    if (is_restarted || ((before ^ after) & link_bits) != 0) {
        begin_link(b, writes, port, offers(after, b.get(port, advertise), b.get(port, gigabit)));
    }
    b.commit(writes);
}

void set_control_bits(board &b, const one &port, uint32_t mask, uint32_t to) {
    write_control(b, port, (b.get(port, control) & ~mask) | to);
}

// The two ends have found each other, by negotiation.
bool has_negotiated(board &b, const one &port) {
    return is_up(b, port) && (b.get(port, control) & (negotiate | loopback_bit)) == negotiate;
}

uint32_t if_negotiated(board &b, const one &port, uint32_t bits) {
    return has_negotiated(b, port) ? bits : 0;
}

std::vector<one> ports_at(board &b, const std::string &place, uint32_t chip_id) {
    std::vector<one> ports = b.all_at<family>(place);
    refuse_if(ports.empty(), error::not_supported);
    std::erase_if(ports, [&](const one &port) { return b.get(port, chip) != chip_id; });
    refuse_if(ports.empty(), error::no_such_device);
    return ports;
}

} // namespace

std::vector<one> ports_of(board &b, uint32_t chip_id) {
    return ports_at(b, b.self(), chip_id);
}

one find(board &b, uint32_t chip_id, uint32_t at_address) {
    return find_at(b, b.self(), chip_id, at_address);
}

one find_at(board &b, const std::string &place, uint32_t chip_id, uint32_t at_address) {
    for (const one &port : ports_at(b, place, chip_id)) {
        if (b.get(port, address) == at_address) {
            return port;
        }
    }
    refuse(error::no_such_device);
}

void reset(board &b, const one &port) {
    change writes;
    b.put(writes, port, control, control_reset);
    b.put(writes, port, advertise, advertise_reset);
    b.put(writes, port, gigabit, gigabit_reset);
    b.put(writes, port, nick, 0);
    begin_link(b, writes, port, all_speeds);
    b.commit(writes);
}

bool is_up(board &b, const one &port) {
    if (!is_on(b, port)) {
        return false;
    }
    if (is_looped(b, port)) {
        return true;
    }
    const auto began = static_cast<int64_t>(b.get_wide(port, since));
    return (b.get(port, offered) & b.get(port, partner)) != 0 &&
           b.now() - began >= b.get(port, negotiation) * nanoseconds_per_millisecond;
}

// A port that is looped does not negotiate: it runs at the speed that its control register says.
uint32_t speed(board &b, const one &port) {
    if (!is_up(b, port)) {
        return 0;
    }
    if (is_looped(b, port)) {
        const speed_code *forced = forced_speed(b.get(port, control));
        return forced == nullptr ? 0 : forced->mbit_per_s;
    }
    return fastest(b.get(port, offered) & b.get(port, partner));
}

uint32_t configured_speed(board &b, const one &port) {
    const uint32_t bits = b.get(port, control);
    const speed_code *forced = forced_speed(bits);
    return (bits & negotiate) != 0 || forced == nullptr ? 0 : forced->mbit_per_s;
}

void set_speed(board &b, const one &port, uint32_t mbit_per_s) {
    if (mbit_per_s == 0) {
        set_control_bits(b, port, 0, negotiate | restart_bit);
        return;
    }
    const auto *wanted = std::find_if(std::begin(speeds), std::end(speeds),
                                      [&](const speed_code &each) { return each.mbit_per_s == mbit_per_s; });
    refuse_if(wanted == std::end(speeds), error::bad_value);
    set_control_bits(b, port, negotiate | speed_100 | speed_1000, wanted->bits);
}

bool is_on(board &b, const one &port) {
    return (b.get(port, control) & power_down) == 0;
}

void switch_to(board &b, const one &port, bool on) {
    set_control_bits(b, port, power_down, on ? 0 : power_down);
}

bool is_looped(board &b, const one &port) {
    return (b.get(port, control) & loopback_bit) != 0;
}

void set_loopback(board &b, const one &port, bool looped) {
    set_control_bits(b, port, loopback_bit, looped ? loopback_bit : 0);
}

void set_medium(board &b, const one &port, uint32_t to) {
    refuse_if(to >= std::size(medium_names) || (b.get(port, media) >> to & 1U) == 0, error::bad_value);
    if (to == b.get(port, medium)) {
        return;
    }
    change writes;
    b.put(writes, port, medium, to);
    begin_link(b, writes, port, offers(b.get(port, control), b.get(port, advertise), b.get(port, gigabit)));
    b.commit(writes);
}

void leave_mark(board &b, uint32_t chip_id) {
    change writes;
    for (const one &port : ports_of(b, chip_id)) {
        b.put(writes, port, nick, mark);
    }
    b.commit(writes);
}

bool bears_mark(board &b, uint32_t chip_id) {
    const std::vector<one> ports = ports_of(b, chip_id);
    return std::all_of(ports.begin(), ports.end(), [&](const one &port) { return b.get(port, nick) == mark; });
}

namespace {

uint32_t read_control(board &b, const device &which, uint32_t) {
    return b.get(one{which}, control);
}

void write_control_register(board &b, const device &which, uint32_t, uint32_t value) {
    write_control(b, one{which}, value);
}

// All speeds of copper but half-duplex gigabit, negotiation, and what else every port of this kind has.
constexpr uint32_t abilities = 0x7949;

uint32_t read_status(board &b, const device &which, uint32_t) {
    const one port{which};
    const bool was_up_throughout = is_up(b, port) && b.get(port, link_lost) == 0;
    return abilities | if_negotiated(b, port, 0x0020) | (was_up_throughout ? 0x0004U : 0U);
}

// A link that was lost is told once.
void after_status(board &b, const device &which, uint32_t) {
    const one port{which};
    const uint32_t is_down = is_up(b, port) ? 0 : 1;
    if (b.get(port, link_lost) != is_down) {
        b.put(port, link_lost, is_down);
    }
}

uint32_t read_partner(board &b, const device &which, uint32_t) {
    const one port{which};
    const uint32_t can = b.get(port, partner);
    return if_negotiated(b, port,
                         0x4001U | ((can & 1U) != 0 ? advertised_10 : 0) | ((can & 2U) != 0 ? advertised_100 : 0));
}

uint32_t read_expansion(board &b, const device &which, uint32_t) {
    return if_negotiated(b, one{which}, 0x0001);
}

uint32_t read_gigabit_status(board &b, const device &which, uint32_t) {
    const one port{which};
    const uint32_t receivers = speed(b, port) == 1000 ? 0x3000 : 0;
    return if_negotiated(b, port, ((b.get(port, partner) & 4U) != 0 ? 0x0C00U : 0U) | receivers);
}

uint32_t read_medium(board &b, const device &which, uint32_t) {
    return b.get(one{which}, medium);
}

// Hardware has one bit here, and no ear for a medium that the port lacks.
void write_medium(board &b, const device &which, uint32_t, uint32_t value) {
    const one port{which};
    if ((b.get(port, media) >> (value & 1U) & 1U) != 0) {
        set_medium(b, port, value & 1U);
    }
}

// The link as it is now, without a latch: speed in the two highest bits, full duplex, valid, up.
uint32_t read_link(board &b, const device &which, uint32_t) {
    const one port{which};
    if (!is_up(b, port)) {
        return 0;
    }
    const uint32_t is_full = has_negotiated(b, port) || (b.get(port, control) & full_duplex) != 0 ? 0x2000 : 0;
    const uint32_t mbit_per_s = speed(b, port);
    return (mbit_per_s == 1000 ? 0x8000U : 0U) | (mbit_per_s == 100 ? 0x4000U : 0U) | is_full | 0x0C00U;
}

constexpr space_field identifier_high[]{{0xFFFF, &family, own_id, &identifier, 16, bus::read_only, {}}};
constexpr space_field identifier_low[]{{0xFFFF, &family, own_id, &identifier, 0, bus::read_only, {}}};
constexpr space_field advertised[]{{0x0FE0, &family, own_id, &advertise, 5}};
constexpr space_field gigabit_bits[]{{0x0300, &family, own_id, &gigabit, 8}};
constexpr space_field nick_bits[]{{0xFFFF, &family, own_id, &nick}};

constexpr space_register port_registers[]{
    {.address = 0x00,
     .name = "control",
     .meaning = "bit 15 reset, 14 loopback, 13 and 6 speed, 12 negotiate, 11 power down, 10 isolate, 9 begin anew, "
                "8 full duplex, 7 collision test",
     .reset_value = control_reset,
     .read = read_control,
     .write = write_control_register},
    {.address = 0x01,
     .name = "status",
     .meaning = "bit 5 negotiated, bit 2 the link was up ever since this was last read; the others say what it can",
     .reset_value = abilities,
     .read = read_status,
     .after_read = after_status},
    {.address = 0x02, .name = "identifier1", .meaning = "high half of the identifier", .fields = identifier_high},
    {.address = 0x03, .name = "identifier2", .meaning = "low half of the identifier", .fields = identifier_low},
    {.address = 0x04,
     .name = "advertise",
     .meaning = "what it offers up to 100 Mbit/s; takes effect when the link begins anew",
     .reset_value = advertise_reset,
     .read_only = 0xF01F,
     .fields = advertised},
    {.address = 0x05, .name = "partner", .meaning = "what the other end offered", .read = read_partner},
    {.address = 0x06, .name = "expansion", .meaning = "bit 0 the other end negotiates", .read = read_expansion},
    {.address = 0x07, .name = "reserved", .meaning = "reads as 0", .read_only = 0xFFFF, .count = 2},
    {.address = 0x09,
     .name = "gigabit_control",
     .meaning = "bits 8 and 9: what it offers at 1000 Mbit/s",
     .reset_value = gigabit_reset,
     .read_only = 0xFCFF,
     .fields = gigabit_bits},
    {.address = 0x0A,
     .name = "gigabit_status",
     .meaning = "bits 10 and 11 what the other end offered, bits 12 and 13 both receivers work",
     .read = read_gigabit_status},
    {.address = 0x0B, .name = "reserved", .meaning = "reads as 0", .read_only = 0xFFFF, .count = 4},
    {.address = 0x0F,
     .name = "extended_status",
     .meaning = "what it can at 1000 Mbit/s",
     .reset_value = 0x3000,
     .read_only = 0xFFFF},
    {.address = 0x10,
     .name = "medium",
     .meaning = "bit 0: 0 copper, 1 fibre",
     .read = read_medium,
     .write = write_medium},
    {.address = 0x11,
     .name = "link",
     .meaning = "as it is now: bits 15 and 14 speed, 13 full duplex, 11 valid, 10 up",
     .read = read_link},
    {.address = 0x12, .name = "reserved", .meaning = "reads as 0", .read_only = 0xFFFF, .count = 12},
    {.address = 0x1E, .name = "nick", .meaning = "the driver's mark", .fields = nick_bits},
    {.address = 0x1F, .name = "reserved", .meaning = "reads as 0", .read_only = 0xFFFF},
};

} // namespace

constexpr register_space registers{"phy", &family, 16, 32, undeclared::refused, port_registers};

} // namespace phy

device_list devices_of_phy() {
    static constexpr const device_family *families[]{&phy_chip::family, &phy::family};
    static constexpr const register_space *spaces[]{&phy::registers};
    return {families, spaces};
}

} // namespace kestro_sim
