// Frames of the three kinds of chips, and the registers behind them.
#include "sim/devices/chips/spi_chips.h"

#include "sim/core/catalogue.h"
#include "sim/core/checksum.h"
#include "sim/core/instance.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"
#include "sim/devices/chassis/slots.h"
#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/card_bus.h"
#include "sim/devices/management/power_domain.h"

#include <algorithm>
#include <array>

namespace kestro_sim {

namespace {

using frame_bytes = std::span<const uint8_t>;

uint32_t number_at(frame_bytes frame, size_t at) {
    return uint32_t{frame[at]} << 24 | uint32_t{frame[at + 1]} << 16 | uint32_t{frame[at + 2]} << 8 | frame[at + 3];
}

void add_number(std::vector<uint8_t> &bytes, uint32_t number, int width) {
    for (int shift = width; shift != 0; shift -= 8) {
        bytes.push_back(static_cast<uint8_t>(number >> (shift - 8)));
    }
}

bool is_frame(frame_bytes frame, frame_bytes start, size_t length) {
    return frame.size() == length && std::equal(start.begin(), start.end(), frame.begin());
}

uint32_t read_card_ok(board &b, const device &chip, uint32_t) {
    return power_domain::drives_card_ok(b, chip.instance) ? 1 : 0;
}

constexpr space_field logic_version[]{{0xFFFF, &pic_cpld::family, own_id, &pic_cpld::version, 0, bus::read_only, {}}};
constexpr space_field type_low[]{{0xFFFF, &board_unit::family, 0, &board_unit::type, 0, bus::read_only, {}}};
constexpr space_field type_high[]{{0xFFFF, &board_unit::family, 0, &board_unit::type, 16, bus::read_only, {}}};
constexpr space_field pcb_version[]{{0xFFFF, &board_unit::family, 0, &board_unit::pcb_ver, 0, bus::read_only, {}}};

constexpr space_register pic_cpld_registers[]{
    {0x0000, "identity", "what tells this chip from others", 0x51C0, 0xFFFF},
    {0x0001, "version", "the version of its logic", 0, 0, 0, logic_version},
    {0x0010, "type_low", "the type of the card: bits 0 to 15", 0, 0, 0, type_low},
    {0x0011, "type_high", "bits 16 to 31", 0, 0, 0, type_high},
    {0x0012, "pcb_version", "the version of its printed circuit board", 0, 0, 0, pcb_version},
    {0x0020, "state", "bit 0 when the card says that it is well", 0, 0, 0, {}, 1, read_card_ok},
    {0x1B00, "scratch", "for trying the bus", 0},
};

constexpr register_space pic_cpld_space{"pic_cpld", &pic_cpld::family,   16,
                                        0x8000,     undeclared::refused, pic_cpld_registers};

constexpr space_field qoram_version[]{{UINT32_MAX, &qoram::family, own_id, &qoram::version, 0, bus::read_only, {}}};

constexpr space_register qoram_registers[]{
    {0x00, "identity", "what tells this chip from others", 0x4B545141, UINT32_MAX},
    {0x01, "version", "the version of the chip", 0, 0, 0, qoram_version},
    {0x02, "control", "bit 0 lets queues into the memory", 0x00000001, 0xFFFFFFFE},
    {0x05, "scratch", "for trying the bus", 0x5A5A5A5A},
    {.address = 0x10, .name = "window", .meaning = "words of the queue memory", .count = 0xF0},
};

constexpr register_space qoram_space{"qoram", &qoram::family, 32, 0x100, undeclared::refused, qoram_registers};

constexpr space_field sa8009_version[]{{UINT32_MAX, &sa8009::family, own_id, &sa8009::version, 0, bus::read_only, {}}};

constexpr space_register sa8009_registers[]{
    {0x00, "identity", "what tells this chip from others", 0x4B548009, UINT32_MAX},
    {0x01, "version", "the version of the chip", 0, 0, 0, sa8009_version},
    {0x02, "control", "bit N lets port N of the fabric in", 0x0000000F, 0xFFFFFFF0},
    {0x10, "scratch", "for trying the bus", 0},
};

constexpr register_space sa8009_space{"sa8009", &sa8009::family, 32, 0x100, undeclared::refused, sa8009_registers};

template <const device_family &Family> device_of<Family> fitted(board &b, const std::string &place, uint32_t id) {
    auto found = board::at<Family>(place, id);
    refuse_if(!b.is_described(found), error::not_ready);
    return found;
}

struct spi_card_place {
    std::string name;
    bool is_reached; // its bus leads to the board of the chip
};

// Cards stand on the board itself where it has places for them, else in slots.
spi_card_place place_of_its_card(board &b, const spi_chip::one &chip) {
    const uint32_t number = b.get(chip, spi_chip::unit);
    if (!b.all_at<place_for_card::family>(chip.instance).empty()) {
        return {chip.instance + "/card" + std::to_string(number), true};
    }
    return {place_of_slot(b, number), card_bus::is_open(b, slot_of_place(chip.instance).value_or(0), number)};
}

pic_cpld::one answering_cpld(board &b, const spi_chip::one &chip) {
    pic_cpld::one cpld = pic_cpld::behind(b, chip);
    refuse_if(b.get(cpld, pic_cpld::loading) != 0, error::not_ready);
    return cpld;
}

constexpr uint32_t cpld_write_bit = 0x8000;

uint32_t cpld_word(frame_bytes frame, size_t at) {
    return frame[at] | uint32_t{frame[at + 1]} << 8;
}

void write_cpld(board &b, const spi_chip::one &chip, frame_bytes frame) {
    const auto cpld = answering_cpld(b, chip);
    refuse_if(frame.size() != 4 || (cpld_word(frame, 0) & cpld_write_bit) == 0, error::bad_value);
    write_space(b, pic_cpld_space, cpld, cpld_word(frame, 0) & ~cpld_write_bit, cpld_word(frame, 2));
}

std::vector<uint8_t> read_cpld(board &b, const spi_chip::one &chip, frame_bytes command, uint32_t length) {
    const auto cpld = answering_cpld(b, chip);
    refuse_if(command.size() != 2 || length != 2 || (cpld_word(command, 0) & cpld_write_bit) != 0, error::bad_value);
    const uint32_t value = read_space(b, pic_cpld_space, cpld, cpld_word(command, 0));
    return {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
}

constexpr std::array<uint8_t, 3> qoram_write_start{0x04, 0x00, 0x00};
constexpr std::array<uint8_t, 3> qoram_request_start{0x84, 0x00, 0x00};
constexpr std::array<uint8_t, 1> qoram_answer_start{0xC4};
constexpr uint32_t qoram_answer_length = 5;
constexpr int64_t nanoseconds_per_microsecond = 1000;
constexpr uint32_t qoram_idle = 0;
constexpr uint32_t qoram_busy = 1;
constexpr uint32_t qoram_answered = 2;
constexpr uint32_t qoram_unknown = 3;

// The chip tells of a register that it lacks in its answer, too.
void ask_qoram(board &b, const qoram::one &chip, uint32_t address) {
    const bool is_known = find_register(qoram_space, address) != nullptr;
    b.put_all(chip, {{qoram::asked, is_known ? qoram::known_register : qoram::unknown_register},
                     {qoram::address, address},
                     {qoram::since, static_cast<uint64_t>(b.now())}});
    refuse_if(!is_known, error::out_of_range);
}

void write_qoram(board &b, const qoram::one &chip, frame_bytes frame) {
    if (is_frame(frame, qoram_request_start, 7)) {
        ask_qoram(b, chip, number_at(frame, 3));
        return;
    }
    refuse_if(!is_frame(frame, qoram_write_start, 11), error::bad_value);
    write_space(b, qoram_space, chip, number_at(frame, 3), number_at(frame, 7));
}

uint32_t qoram_status(board &b, const qoram::one &chip) {
    const uint32_t asked = b.get(chip, qoram::asked);
    if (asked == qoram::nothing) {
        return qoram_idle;
    }
    const auto since = static_cast<int64_t>(b.get_wide(chip, qoram::since));
    if (b.now() - since < int64_t{b.get(chip, qoram::latency)} * nanoseconds_per_microsecond) {
        return qoram_busy;
    }
    return asked == qoram::known_register ? qoram_answered : qoram_unknown;
}

// An answer that was taken is gone.
std::vector<uint8_t> read_qoram(board &b, const qoram::one &chip, frame_bytes command, uint32_t length) {
    refuse_if(!is_frame(command, qoram_answer_start, 1) || length != qoram_answer_length, error::bad_value);
    const uint32_t status = qoram_status(b, chip);
    std::vector<uint8_t> answer{static_cast<uint8_t>(status)};
    add_number(answer, status == qoram_answered ? read_space(b, qoram_space, chip, b.get(chip, qoram::address)) : 0,
               32);
    if (status == qoram_answered || status == qoram_unknown) {
        b.put(chip, qoram::asked, qoram::nothing);
    }
    return answer;
}

constexpr std::array<uint8_t, 2> sa8009_write_start{0x82, 0x01};
constexpr std::array<uint8_t, 2> sa8009_read_start{0x81, 0x01};
constexpr uint32_t sa8009_answer_length = 12;

void write_sa8009(board &b, const sa8009::one &chip, frame_bytes frame) {
    refuse_if(!is_frame(frame, sa8009_write_start, 10), error::bad_value);
    write_space(b, sa8009_space, chip, number_at(frame, 2), number_at(frame, 6));
}

std::vector<uint8_t> read_sa8009(board &b, const sa8009::one &chip, frame_bytes command, uint32_t length) {
    refuse_if(!is_frame(command, sa8009_read_start, 6) || length != sa8009_answer_length, error::bad_value);
    const uint32_t address = number_at(command, 2);
    std::vector<uint8_t> answer{0x00, 0x01};
    add_number(answer, address, 32);
    add_number(answer, read_space(b, sa8009_space, chip, address), 32);
    add_number(answer, crc16_checksum(answer), 16);
    return answer;
}

} // namespace

pic_cpld::one pic_cpld::of_card(board &b, const std::string &place) {
    const auto power = board::at<power_domain::family>(place, power_domain::card_power);
    refuse_if(b.get_or(power, power_domain::on, 1) == 0, error::not_ready);
    return fitted<family>(b, place, 0);
}

pic_cpld::one pic_cpld::behind(board &b, const spi_chip::one &chip) {
    refuse_if(b.get(chip, spi_chip::kind) != spi_chip::pic_cpld_kind, error::no_such_device);
    refuse_if(b.get(chip, spi_chip::silent) != 0, error::not_ready);
    const spi_card_place place = place_of_its_card(b, chip);
    refuse_if(!place.is_reached || !b.is_present(place.name), error::not_ready);
    return of_card(b, place.name);
}

void spi_chip::write(board &b, const one &chip, std::span<const uint8_t> frame) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    const uint32_t id = b.get(chip, unit);
    switch (b.get(chip, kind)) {
    case pic_cpld_kind:
        write_cpld(b, chip, frame);
        break;
    case qoram_kind:
        write_qoram(b, fitted<qoram::family>(b, chip.instance, id), frame);
        break;
    default:
        write_sa8009(b, fitted<sa8009::family>(b, chip.instance, id), frame);
    }
}

std::vector<uint8_t> spi_chip::read(board &b, const one &chip, std::span<const uint8_t> command, uint32_t length) {
    refuse_if(b.get(chip, silent) != 0, error::not_ready);
    const uint32_t id = b.get(chip, unit);
    switch (b.get(chip, kind)) {
    case pic_cpld_kind:
        return read_cpld(b, chip, command, length);
    case qoram_kind:
        return read_qoram(b, fitted<qoram::family>(b, chip.instance, id), command, length);
    default:
        return read_sa8009(b, fitted<sa8009::family>(b, chip.instance, id), command, length);
    }
}

device_list devices_of_spi_chips() {
    static constexpr const device_family *families[]{&spi_chip::family, &pic_cpld::family, &qoram::family,
                                                     &sa8009::family};
    static constexpr const register_space *spaces[]{&pic_cpld_space, &qoram_space, &sa8009_space};
    return {families, spaces};
}

} // namespace kestro_sim
