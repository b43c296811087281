// The real-time clock of the own board.
#include "drv_basic/management/drv_rtc.h"

#include "sim/devices/management/rtc.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

rtc::chip own_chip(board &b) {
    return b.find_at<rtc::family>(b.self());
}

// A byte below 0 becomes a number that no counter holds.
uint32_t number_in(int8_t byte) {
    return static_cast<uint32_t>(byte);
}

} // namespace

uint32_t drv_rtc_read_time(drv_rtc_time *time) {
    return operate([&](board &b) {
        refuse_null(time);
        const rtc::counters now = rtc::read(b, own_chip(b));
        *time = {static_cast<int8_t>(now.subsecond),   static_cast<int8_t>(now.second),
                 static_cast<int8_t>(now.minute),      static_cast<int8_t>(now.hour),
                 static_cast<int8_t>(now.day_of_week), static_cast<int8_t>(now.day_of_month),
                 static_cast<int8_t>(now.month),       static_cast<int8_t>(now.year)};
    });
}

uint32_t drv_rtc_write_time(const drv_rtc_time *time) {
    return operate([&](board &b) {
        refuse_null(time);
        rtc::set(b, own_chip(b),
                 {number_in(time->subsecond), number_in(time->second), number_in(time->minute), number_in(time->hour),
                  number_in(time->day_of_week), number_in(time->day_of_month), number_in(time->month),
                  number_in(time->year)});
    });
}

uint32_t drv_rtc_dump_info(char *buffer, uint32_t len) {
    return operate([&](board &b) { write_text(buffer, len, rtc::dump(b, own_chip(b))); });
}

uint32_t drv_rtc_reg_dump(uint32_t start, uint32_t num, char *buffer, uint32_t len) {
    return operate([&](board &b) { write_text(buffer, len, rtc::dump_bytes(b, own_chip(b), start, num)); });
}

uint32_t drv_rtc_check(uint32_t *result, char *buffer, uint32_t len) {
    return operate([&](board &b) { tell(rtc::check(b, own_chip(b)), result, buffer, len); });
}

uint32_t drv_rtc_read_battery_status(uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = rtc::is_battery_low(b, own_chip(b)) ? 1 : 0;
    });
}
