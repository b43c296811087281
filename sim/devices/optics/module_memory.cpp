// What all maps have in common: words, texts, sums, limits, and the area that users may write.
#include "sim/devices/optics/module_memory.h"

#include "sim/core/catalogue.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace kestro_sim {

namespace optics {

namespace {

// Where users may write, and how much of it.
struct user_area {
    uint8_t device;
    int page;
    uint32_t length;
};

user_area user_area_of(const model &kind) {
    switch (kind.managed_by) {
    case management::sfp:
        return {diagnostics_device, 0, kind.measures ? 120U : 0U};
    case management::qsfp:
        return {first_device, 2, half};
    case management::cmis:
        break;
    }
    return {first_device, 3, half};
}

std::string user_cell(const optical_module::one &module, uint32_t offset) {
    char place[48];
    snprintf(place, sizeof place, "/optics_user/%u/0x%02x", module.id, offset);
    return module.instance + place;
}

limit_words words(const limits &from, double (*in_words)(double)) {
    const auto one = [&](double value) { return static_cast<int32_t>(std::lround(in_words(value))); };
    return {one(from.high_alarm), one(from.low_alarm), one(from.high_warning), one(from.low_warning)};
}

double celsius_in_words(double value) {
    return value * 256;
}
double volts_in_words(double value) {
    return value * 10000;
}
double milliamperes_in_words(double value) {
    return value * 500;
}
double dbm_in_words(double value) {
    return std::pow(10, value / 10) * 10000;
}
double percent_in_words(double value) {
    return value / 100 * 32767;
}

} // namespace

void memory_view::word(uint32_t address, int64_t value) {
    (*this)[address] = static_cast<uint8_t>(static_cast<uint64_t>(value) >> 8U);
    (*this)[address + 1] = static_cast<uint8_t>(value);
}

void memory_view::text(uint32_t address, uint32_t length, std::string_view what) {
    for (uint32_t i = 0; i < length; ++i) {
        (*this)[address + i] = i < what.size() ? static_cast<uint8_t>(what[i]) : ' ';
    }
}

void memory_view::sum(uint32_t first, uint32_t last, uint32_t at) {
    uint32_t total = 0;
    for (uint32_t address = first; address <= last; ++address) {
        total += (*this)[address];
    }
    (*this)[at] = static_cast<uint8_t>(total);
}

all_limits limits_of(const model &kind) {
    return {words(kind.temperature, celsius_in_words),
            words(kind.volts, volts_in_words),
            words(kind.milliamperes, milliamperes_in_words),
            words(kind.tx_dbm, dbm_in_words),
            words(kind.rx_dbm, dbm_in_words),
            words(laser_celsius, celsius_in_words),
            words(tec_percent, percent_in_words)};
}

uint32_t overstepped(int32_t value, const limit_words &words) {
    return (value > words[0] ? 8U : 0U) | (value < words[1] ? 4U : 0U) | (value > words[2] ? 2U : 0U) |
           (value < words[3] ? 1U : 0U);
}

memory memory_of(board &b, const optical_module::fitted &which) {
    memory made;
    const map_source from{b, which, optical_module::measure(b, which), limits_of(*which.kind),
                          optical_module::is_ready(b, which)};
    switch (which.kind->managed_by) {
    case management::sfp:
        fill_sfp(made, from);
        break;
    case management::qsfp:
        fill_qsfp(made, from);
        break;
    case management::cmis:
        fill_cmis(made, from);
        break;
    }
    const user_area user = user_area_of(*which.kind);
    for (uint32_t offset = 0; offset < user.length; ++offset) {
        const auto written = b.cell(user_cell(which.module, offset));
        made[{user.device, user.page}][offset] = static_cast<uint8_t>(written.value_or(0));
    }
    return made;
}

void write_byte(board &b, const optical_module::fitted &which, uint8_t device, int page, uint32_t address,
                uint8_t value) {
    const model &kind = *which.kind;
    const user_area user = user_area_of(kind);
    if (device == user.device && page == user.page && address >= half && address - half < user.length) {
        change writes;
        writes.put(user_cell(which.module, address - half), value);
        b.commit(writes);
        return;
    }
    switch (kind.managed_by) {
    case management::sfp:
        if (device == diagnostics_device) {
            write_sfp(b, which, address, value);
        }
        break;
    case management::qsfp:
        write_qsfp(b, which, address, value);
        break;
    case management::cmis:
        write_cmis(b, which, page, address, value);
        break;
    }
}

bool has_device(const model &kind, uint8_t device) {
    return device == first_device ||
           (device == diagnostics_device && kind.managed_by == management::sfp && kind.measures);
}

bool has_page(const model &kind, uint8_t device, int page) {
    static constexpr int qsfp_pages[]{0, 2, 3};
    static constexpr int cmis_pages[]{0, 1, 2, 3, 0x10, 0x11};
    if (!has_device(kind, device)) {
        return false;
    }
    switch (kind.managed_by) {
    case management::sfp:
        return page == 0;
    case management::qsfp:
        return std::find(std::begin(qsfp_pages), std::end(qsfp_pages), page) != std::end(qsfp_pages);
    case management::cmis:
        break;
    }
    return std::find(std::begin(cmis_pages), std::end(cmis_pages), page) != std::end(cmis_pages);
}

} // namespace optics

device_list devices_of_module_memory() {
    return {};
}

} // namespace kestro_sim
