// What becomes of an image lies in registers of its chip; the configuration itself is nowhere kept.
#include "sim/devices/chips/logic_load.h"

#include "sim/core/catalogue.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"
#include "sim/devices/management/health.h"
#include "sim/devices/management/restart.h"

namespace kestro_sim {

namespace {

using logic_of = device_of<logic_chip::family>;
using card_logic_of = device_of<pic_cpld::family>;

logic_image image_for(std::span<const uint8_t> bytes, uint32_t part) {
    const logic_image image = decode_logic_image(bytes);
    refuse_if(image.part != part, error::no_such_device);
    return image;
}

logic_load::begun begin_load(board &b, const logic_of &chip, std::span<const uint8_t> bytes) {
    const logic_image image = image_for(bytes, b.get(chip, logic_chip::part));
    const uint32_t number = b.get(chip, logic_chip::loads) + 1U;
    b.put_all(chip, {{logic_chip::load, logic_chip::load_begun},
                     {logic_chip::loads, number},
                     {logic_chip::loaded_version, image.version},
                     {logic_chip::loaded_year, image.year},
                     {logic_chip::loaded_month, image.month},
                     {logic_chip::loaded_day, image.day}});
    return {number, b.get(chip, logic_chip::load_time) * nanoseconds_per_millisecond};
}

void need_own_load(board &b, const logic_of &chip, const logic_load::begun &load) {
    refuse_if(b.get(chip, logic_chip::load) != logic_chip::load_begun || b.get(chip, logic_chip::loads) != load.number,
              error::not_ready);
}

bool is_of_test_interrupt(const space_register &each) {
    return !each.fields.empty() && each.fields.front().family == &test_interrupt::family;
}

// An FPGA that was loaded begins as after power-on.
void reset_registers(board &b, change &writes, const logic_of &chip) {
    const register_space *const space = find_space("cpld", chip);
    for (const space_register &each : space == nullptr ? std::span<const space_register>() : space->registers) {
        const bool is_plain = each.fields.empty() && each.read == nullptr;
        if (is_plain || is_of_test_interrupt(each)) {
            force_space(b, *space, chip, each.address, each.reset_value);
        }
    }
    test_interrupt::reset(b, writes, chip);
    b.put(writes, chip, logic_chip::upsets, 0);
    b.put(writes, chip, logic_chip::scratch, logic_chip::scratch.reset_value);
    using written_register = written_of<logic_chip::family>;
    for (const written_register each :
         std::initializer_list<written_register>{logic_chip::np_slave, logic_chip::np_low, logic_chip::np_high}) {
        if (b.has(chip, each)) {
            b.put(writes, chip, each, 0);
        }
    }
}

// A chip that did not tell when its logic was made does so from then on.
void take_over(board &b, change &writes, const logic_of &chip) {
    b.put(writes, chip, logic_chip::version, b.get(chip, logic_chip::loaded_version));
    b.keep(writes, chip, logic_chip::build_year, b.get(chip, logic_chip::loaded_year));
    b.keep(writes, chip, logic_chip::build_month, b.get(chip, logic_chip::loaded_month));
    b.keep(writes, chip, logic_chip::build_day, b.get(chip, logic_chip::loaded_day));
}

} // namespace

logic_load::begun logic_load::begin_fpga(board &b, const logic_of &chip, std::span<const uint8_t> image) {
    refuse_if(b.get(chip, logic_chip::is_fpga) == 0, error::not_supported);
    return begin_load(b, chip, image);
}

logic_load::begun logic_load::begin_cpld(board &b, const logic_of &chip, std::span<const uint8_t> image) {
    refuse_if(b.get(chip, logic_chip::is_fpga) != 0, error::not_supported);
    return begin_load(b, chip, image);
}

void logic_load::finish_fpga(board &b, const logic_of &chip, const begun &load) {
    need_own_load(b, chip, load);
    change writes;
    reset_registers(b, writes, chip);
    b.put(writes, chip, logic_chip::load, logic_chip::load_running);
    b.commit(writes);
}

void logic_load::finish_cpld(board &b, const logic_of &chip, const begun &load) {
    need_own_load(b, chip, load);
    b.put(chip, logic_chip::load, logic_chip::load_waiting);
}

void logic_load::finish_by_restart(board &b, const logic_of &chip, const begun &load) {
    need_own_load(b, chip, load);
    change writes;
    take_over(b, writes, chip);
    note_restart(b, writes, chip.instance, restart_reason::command, restart_kind::cold);
    b.commit(writes);
}

logic_load::begun logic_load::begin_card(board &b, const card_logic_of &chip, std::span<const uint8_t> image) {
    const logic_image taken = image_for(image, b.get(chip, pic_cpld::part));
    const uint32_t number = b.get(chip, pic_cpld::loads) + 1U;
    b.put_all(chip, {{pic_cpld::loading, 1}, {pic_cpld::loads, number}, {pic_cpld::loaded_version, taken.version}});
    return {number, b.get(chip, pic_cpld::load_time) * nanoseconds_per_millisecond};
}

void logic_load::finish_card(board &b, const card_logic_of &chip, const begun &load) {
    refuse_if(b.get(chip, pic_cpld::loading) == 0 || b.get(chip, pic_cpld::loads) != load.number, error::not_ready);
    b.put_all(chip, {{pic_cpld::loading, 0}, {pic_cpld::version, b.get(chip, pic_cpld::loaded_version)}});
}

// The half of a flash that was not programmed to its end is not started from.
void logic_load::start_logic(board &b, change &writes, const std::string &place) {
    for (const auto &chip : b.all_at<logic_chip::family>(place)) {
        const uint32_t load = b.get(chip, logic_chip::load);
        if (load == logic_chip::load_waiting) {
            take_over(b, writes, chip);
        }
        if (load != logic_chip::load_none) {
            b.put(writes, chip, logic_chip::load, logic_chip::load_none);
        }
        // An FPGA takes its whole configuration from its flash, without the bits that had turned.
        if (b.get(chip, logic_chip::is_fpga) != 0 && b.get(chip, logic_chip::upsets) != 0) {
            b.put(writes, chip, logic_chip::upsets, 0);
        }
    }
    for (const auto &chip : b.all_at<pic_cpld::family>(place)) {
        if (b.get(chip, pic_cpld::loading) != 0) {
            b.put(writes, chip, pic_cpld::loading, 0);
        }
    }
}

device_list devices_of_logic_load() {
    return {};
}

} // namespace kestro_sim
