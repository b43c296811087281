// How disks start, work and wear, all of it worked out from board time, and how they tell of it.
#include "sim/devices/storage/disk.h"

#include "sim/core/catalogue.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace kestro_sim {

namespace {

constexpr int64_t nanoseconds_per_hour = 3600 * nanoseconds_per_second;

// What is known of the hours before the board was new stands in hours.
int64_t working_time(board &b, const disk::bay &which) {
    const auto before = static_cast<int64_t>(b.get_wide(which, disk::worked));
    if (b.get(which, disk::on) == 0) {
        return before;
    }
    const auto switched_on = static_cast<int64_t>(b.get_wide(which, disk::since));
    return before + b.now() - std::max<int64_t>(switched_on, 0);
}

// A row of the table: what the disk makes of a raw number, from 100 (as new) or 200 down to 0, and where it is too low.
struct attribute {
    uint32_t id;
    const char *name;
    uint32_t flags;
    uint32_t value;
    uint32_t threshold;
    bool tells_failure; // or age
    bool is_updated_always;
    int64_t raw;
};

uint32_t less(uint32_t from, uint32_t by) {
    return from - std::min(from, by);
}

std::string row_of(const attribute &one) {
    char line[128];
    const bool is_failing = one.threshold != 0 && one.value <= one.threshold;
    const int length =
        snprintf(line, sizeof line, "%3u %-24s0x%04x   %03u   %03u   %03u    %-10s%-9s%-12s%lld\r\n", one.id, one.name,
                 one.flags, one.value, one.value, one.threshold, one.tells_failure ? "Pre-fail" : "Old_age",
                 one.is_updated_always ? "Always" : "Offline", is_failing ? "FAILING_NOW" : "-",
                 static_cast<long long>(one.raw));
    return {line, static_cast<size_t>(length)};
}

std::array<attribute, 7> attributes_of(board &b, const disk::bay &which) {
    const uint32_t reallocated = b.get(which, disk::reallocated);
    const uint32_t pending = b.get(which, disk::pending);
    const uint32_t crc_errors = b.get(which, disk::crc_errors);
    const uint32_t hours = disk::power_on_hours(b, which);
    const auto celsius = static_cast<int32_t>(b.get(which, disk::celsius));
    const uint32_t life = disk::remaining_life(b, which);
    const uint32_t coolness = less(100, static_cast<uint32_t>(std::max(celsius, 0)));
    return {{{5, "Reallocated_Sector_Ct", 0x0033, less(100, reallocated), 10, true, true, reallocated},
             {9, "Power_On_Hours", 0x0032, std::max(life, 1U), 0, false, true, hours},
             {12, "Power_Cycle_Count", 0x0032, 100, 0, false, true, b.get(which, disk::starts)},
             {194, "Temperature_Celsius", 0x0022, coolness, 0, false, true, celsius},
             {197, "Current_Pending_Sector", 0x0012, less(100, pending), 0, false, true, pending},
             {199, "UDMA_CRC_Error_Count", 0x003e, less(200, crc_errors), 0, false, true, crc_errors},
             {202, "Percent_Lifetime_Remain", 0x0031, life, 5, true, false, less(100, life)}}};
}

} // namespace

bool disk::is_on_line(board &b, const bay &which) {
    const auto switched_on = static_cast<int64_t>(b.get_wide(which, since));
    return b.get(which, present) != 0 && b.get(which, on) != 0 &&
           b.now() - switched_on >= b.get(which, start_up) * nanoseconds_per_millisecond;
}

void disk::switch_on(board &b, const bay &which) {
    if (b.get(which, on) == 0) {
        b.put_all(which, {{on, 1}, {since, static_cast<uint64_t>(b.now())}, {starts, b.get(which, starts) + 1U}});
    }
}

void disk::switch_off(board &b, const bay &which) {
    if (b.get(which, on) != 0) {
        b.put_all(which, {{on, 0}, {worked, static_cast<uint64_t>(working_time(b, which))}});
    }
}

uint32_t disk::power_on_hours(board &b, const bay &which) {
    return b.get(which, hours) + static_cast<uint32_t>(working_time(b, which) / nanoseconds_per_hour);
}

uint32_t disk::remaining_life(board &b, const bay &which) {
    const uint64_t used = uint64_t{power_on_hours(b, which)} * 100 / b.get(which, rated_hours);
    return static_cast<uint32_t>(100 - std::min<uint64_t>(used, 100));
}

finding disk::check_seat(board &b, const bay &which) {
    refuse_if(b.get(which, present) == 0, error::not_ready);
    finding found;
    if (b.get(which, seated) == 0) {
        add_fault(found, "the disk does not sit fully in its connector");
    }
    return found;
}

std::string disk::attribute_report(board &b, const bay &which) {
    std::string text = "Device Model:     " + b.text(which, model) + "\r\nSerial Number:    " + b.text(which, serial) +
                       "\r\nFirmware Version: " + b.text(which, firm) + "\r\n\r\n" +
                       "ID# ATTRIBUTE_NAME          FLAG     VALUE WORST THRESH TYPE      UPDATED  WHEN_FAILED "
                       "RAW_VALUE\r\n";
    for (const attribute &one : attributes_of(b, which)) {
        text += row_of(one);
    }
    return text;
}

device_list devices_of_disk() {
    static constexpr const device_family *families[]{&disk::family};
    return {families, {}};
}

} // namespace kestro_sim
