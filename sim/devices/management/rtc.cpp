// What the clock counts is the board time and an offset. Its registers are worked out from that when they are read; the
// day of the week is a counter of its own, which knows nothing of the calendar.
#include "sim/devices/management/rtc.h"

#include "sim/core/catalogue.h"
#include "sim/core/time.h"

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <ctime>

namespace kestro_sim {

namespace {

using namespace std::chrono;

constexpr uint32_t low_battery = 2500; // mV
constexpr uint32_t counter_count = 8;
constexpr uint32_t days_of_week = 7;
constexpr int64_t nanoseconds_per_hundredth = nanoseconds_per_second / 100;
constexpr sys_days first_day = 2000y / January / 1;
// After year 99 the chip begins anew.
constexpr int64_t century = nanoseconds{days{sys_days{2100y / January / 1} - first_day}}.count();

// What the digits of a counter hold: not each has four bits for the tens.
constexpr uint32_t counter_max[counter_count]{99, 79, 79, 39, 7, 39, 19, 99};

uint32_t &counter(rtc::counters &all, uint32_t number) {
    uint32_t *const each[counter_count]{&all.subsecond,   &all.second,       &all.minute, &all.hour,
                                        &all.day_of_week, &all.day_of_month, &all.month,  &all.year};
    return *each[number];
}

int64_t within_century(int64_t since_2000) {
    const int64_t rest = since_2000 % century;
    return rest < 0 ? rest + century : rest;
}

// The local time of this process, which is that of its world.
int64_t local_time() {
    timespec now{};
    tm local{};
    clock_gettime(CLOCK_REALTIME, &now);
    localtime_r(&now.tv_sec, &local);
    const seconds since_1970{int64_t{now.tv_sec} + local.tm_gmtoff};
    return nanoseconds{since_1970 - first_day.time_since_epoch()}.count() + now.tv_nsec;
}

// Days of the week go on beyond the century.
int64_t counted(board &b, const rtc::chip &which) {
    const bool was_set = b.has(which, rtc::offset);
    return was_set ? static_cast<int64_t>(b.get_wide(which, rtc::offset)) + b.now() : local_time();
}

uint32_t calendar_day_of_week(int64_t since_2000) {
    return weekday{first_day + floor<days>(nanoseconds{since_2000})}.iso_encoding();
}

int64_t since_2000(const rtc::counters &time) {
    const year_month month =
        2000y / January + years{static_cast<int>(time.year)} + months{static_cast<int>(time.month) - 1};
    const sys_days day = sys_days{month / 1} + days{static_cast<int>(time.day_of_month) - 1};
    const seconds within_day = hours{time.hour} + minutes{time.minute} + seconds{time.second};
    return within_century(nanoseconds{day - first_day + within_day}.count() +
                          time.subsecond * nanoseconds_per_hundredth);
}

constexpr uint32_t coded(uint32_t number) {
    return number / 10 << 4 | number % 10;
}

constexpr uint32_t decoded(uint32_t digits) {
    return (digits >> 4) * 10 + (digits & 0x0F);
}

uint32_t read_counter(board &b, const device &chip, uint32_t address) {
    rtc::counters time = rtc::read(b, rtc::chip{chip});
    return coded(counter(time, address));
}

// What is no number in these digits is not taken; hardware cannot refuse it.
void write_counter(board &b, const device &chip, uint32_t address, uint32_t value) {
    const uint32_t number = decoded(value);
    if ((value & 0x0F) > 9 || value >> 4 > 9 || number > counter_max[address]) {
        return;
    }
    rtc::counters time = rtc::read(b, rtc::chip{chip});
    counter(time, address) = number;
    rtc::set(b, rtc::chip{chip}, time);
}

uint32_t read_battery_low(board &b, const device &chip) {
    return rtc::is_battery_low(b, rtc::chip{chip}) ? 1 : 0;
}

// Software says that it knows, but not that it happened.
bool takes_cleared(board & /*b*/, const device & /*chip*/, uint32_t value) {
    return value == 0;
}

constexpr space_register counter_at(uint32_t address, const char *name, const char *meaning) {
    return {address, name, meaning, 0, 0, 0, {}, 1, read_counter, write_counter};
}

constexpr space_field status_bits[]{
    {0x01, &rtc::family, 0, &rtc::oscillator_stopped, 0, bus::read_write, {nullptr, takes_cleared}},
    {0x02, &rtc::family, 0, &rtc::battery, 0, bus::read_only, {read_battery_low, nullptr}}};

constexpr uint32_t memory_begin = 0x10;
constexpr uint32_t space_size = 0x20;
constexpr space_register registers[]{
    counter_at(0x00, "subsecond", "hundredths of a second; this and the following in binary coded decimal"),
    counter_at(0x01, "second", "seconds"),
    counter_at(0x02, "minute", "minutes"),
    counter_at(0x03, "hour", "hours, 0 to 23"),
    counter_at(0x04, "day_of_week", "1 Monday to 7 Sunday"),
    counter_at(0x05, "day_of_month", "from 1 on"),
    counter_at(0x06, "month", "from 1 on"),
    counter_at(0x07, "year", "since 2000"),
    {0x08, "status", "bit 0 the oscillator has stopped since the time was set, bit 1 battery low", 0, 0xFC, 0,
     status_bits},
    {0x09, "trim", "how much the oscillator is slowed down, in parts per million"},
    {memory_begin, "memory", "what software keeps in the battery's care", 0, 0, 0, {}, 16},
};

__attribute__((format(printf, 1, 2))) std::string line_of(const char *format, ...) {
    char line[80];
    va_list values;
    va_start(values, format);
    const int length = vsnprintf(line, sizeof line, format, values);
    va_end(values);
    return {line, static_cast<size_t>(length)};
}

std::string info(board &b) {
    const auto chip = b.find_at<rtc::family>(b.self());
    const rtc::counters time = rtc::read(b, chip);
    std::string text =
        line_of("time: 20%02u-%02u-%02u %02u:%02u:%02u.%02u, day %u of the week\r\n", time.year, time.month,
                time.day_of_month, time.hour, time.minute, time.second, time.subsecond, time.day_of_week);
    text += std::string("oscillator: ") +
            (b.get(chip, rtc::oscillator_stopped) != 0 ? "has stopped, the time is not to be trusted" : "running") +
            "\r\n";
    return text +
           line_of("battery: %u mV%s\r\n", b.get(chip, rtc::battery), rtc::is_battery_low(b, chip) ? ", low" : "");
}

} // namespace

constexpr register_space rtc_space{"rtc", &rtc::family, 8, space_size, undeclared::all_ones, registers};

rtc::counters rtc::read(board &b, const chip &which) {
    const int64_t moment = counted(b, which);
    const int64_t time = within_century(moment);
    const auto day = floor<days>(nanoseconds{time});
    const year_month_day date{first_day + day};
    const hh_mm_ss within_day{nanoseconds{time} - day};
    const uint32_t day_of_week = (calendar_day_of_week(moment) - 1 + b.get(which, day_ahead)) % days_of_week + 1;
    return {static_cast<uint32_t>(within_day.subseconds().count() / nanoseconds_per_hundredth),
            static_cast<uint32_t>(within_day.seconds().count()),
            static_cast<uint32_t>(within_day.minutes().count()),
            static_cast<uint32_t>(within_day.hours().count()),
            day_of_week,
            static_cast<unsigned>(date.day()),
            static_cast<unsigned>(date.month()),
            static_cast<uint32_t>(static_cast<int>(date.year()) - 2000)};
}

void rtc::set(board &b, const chip &which, const counters &to) {
    counters time = to;
    for (uint32_t i = 0; i < counter_count; ++i) {
        refuse_if(counter(time, i) > counter_max[i], error::bad_value);
    }
    time.hour = decoded(coded(time.hour) & ~b.get(which, hour_lost));
    const int64_t moment = since_2000(time);
    change writes;
    b.keep(writes, which, offset, static_cast<uint64_t>(moment - b.now()));
    b.put(writes, which, day_ahead, (time.day_of_week + days_of_week - calendar_day_of_week(moment)) % days_of_week);
    b.put(writes, which, oscillator_stopped, 0);
    b.commit(writes);
}

bool rtc::is_battery_low(board &b, const chip &which) {
    return b.get(which, battery) < low_battery;
}

finding rtc::check(board &b, const chip &which) {
    finding found;
    if (b.get(which, oscillator_stopped) != 0) {
        add_fault(found, "the oscillator has stopped since the time was set");
    }
    if (is_battery_low(b, which)) {
        add_fault(found, "the battery is low: " + std::to_string(b.get(which, battery)) + " mV");
    }
    return found;
}

std::string rtc::dump(board &b, const chip &which) {
    std::string text;
    for (const space_register &each : registers) {
        if (each.address < memory_begin) {
            text += line_of("0x%02x: 0x%02x %s\r\n", each.address, read_space(b, rtc_space, which, each.address),
                            each.name);
        }
    }
    return text;
}

std::string rtc::dump_bytes(board &b, const chip &which, uint32_t start, uint32_t num) {
    refuse_if(num == 0 || start >= space_size || num > space_size - start, error::out_of_range);
    std::string text;
    for (uint32_t i = 0; i < num; ++i) {
        text += i % 8 == 0 ? line_of("0x%02x:", start + i) : "";
        text += line_of(" %02x", read_space(b, rtc_space, which, start + i));
        text += i % 8 == 7 || i + 1 == num ? "\r\n" : "";
    }
    return text;
}

device_list devices_of_rtc() {
    static constexpr const device_family *families[]{&rtc::family};
    static constexpr const register_space *spaces[]{&rtc_space};
    static constexpr diag_command commands[]{{"rtc info", info}};
    return {families, spaces, commands};
}

} // namespace kestro_sim
