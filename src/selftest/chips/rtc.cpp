// The real-time clock. Its time is replaced for a moment and put back with a second added, which is about what the test
// has taken of it.
#include "selftest/chips/rtc.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "bounds/bounds.h"
#include "drv_basic/management/drv_rtc.h"
#include "selftest/entry_walk.h"
#include "selftest/result_code.h"
#include "selftest/selftest_log.h"
#include "selftest/test_value.h"

namespace {

// In seconds. A clock that is ahead has a difference below 0 and always passes.
constexpr double tolerance = 2.0;
constexpr uint32_t dump_size = 2000;
constexpr uint32_t rtc_log = 32;

// Day 0 is kept on purpose: it is the last of January, to the chip and to mktime alike.
constexpr drv_rtc_time test_time = {22, 22, 22, 22, 0, 0, 2, 22};

struct rtc_report {
    char *buffer;
    uint32_t capacity;
    uint32_t fill;
};

// A text that does not fit is cut at the capacity; nothing is written beyond it.
__attribute__((format(printf, 2, 3))) void append(rtc_report *report, const char *format, ...) {
    if (report->fill >= report->capacity) {
        return;
    }
    const uint32_t room = report->capacity - report->fill;
    char *end = report->buffer + report->fill;
    va_list values;
    va_start(values, format);
    vsnprintf_s(end, room, room - 1, format, values);
    va_end(values);
    report->fill += static_cast<uint32_t>(strnlen(end, room));
}

time_t calendar_time(const drv_rtc_time &time) {
    tm calendar = {};
    calendar.tm_sec = int{time.second};
    calendar.tm_min = int{time.minute};
    calendar.tm_hour = int{time.hour};
    calendar.tm_mday = int{time.day_of_month};
    calendar.tm_mon = time.month - 1;
    calendar.tm_year = time.year + 100;
    return mktime(&calendar);
}

int check_battery(rtc_report *report) {
    uint32_t status = 0;
    const uint32_t ret = drv_rtc_read_battery_status(&status);
    if (is_not_supported(ret)) {
        append(report, "Info   : rtc battery status test is not support\r\n");
        return 0;
    }
    if (ret != 0 || status != 0) {
        append(report, "Error : rtc battery status test fail\r\n");
        return -1;
    }
    append(report, "Success: rtc battery status test pass\r\n");
    return 0;
}

int check_read(rtc_report *report, drv_rtc_time *time) {
    const uint32_t ret = drv_rtc_read_time(time);
    if (ret != 0) {
        append(report, "Error : read rtc time test ret:0x%x\r\n", ret);
        return -1;
    }
    append(report, "Success: read rtc time test pass\r\n\trtc time: 20%d/%d/%d %d:%d:%d:%d Week%d(7 for Sunday)\r\n",
           time->year, time->month, time->day_of_month, time->hour, time->minute, time->second, time->subsecond,
           time->day_of_week);
    return 0;
}

int check_consistency(rtc_report *report, const drv_rtc_time &rtc) {
    const time_t now = time(nullptr);
    const double difference = difftime(now, calendar_time(rtc));
    const bool agrees = difference < tolerance;
    append(report, "%s",
           agrees ? "Success: rtc system time consistency test pass\r\n"
                  : "Error : rtc system time consistency test fail\r\n");
    tm local = {};
    localtime_r(&now, &local);
    append(report, "\tsys time: 20%d/%d/%d %d:%d:%d:0 Week%d(0 for Sunday)\r\n", local.tm_year - 100, local.tm_mon + 1,
           local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec, local.tm_wday);
    append(report, "\ttime diff: %f(s)\r\n", difference);
    return agrees ? 0 : -1;
}

void append_times(rtc_report *report, const drv_rtc_time &written, const drv_rtc_time &read) {
    append(report, "\twrite time: 20%d/%d/%d %d:%d:%d:%d \r\n", written.year, written.month, written.day_of_month,
           written.hour, written.minute, written.second, written.subsecond);
    append(report, "\tread  time: 20%d/%d/%d %d:%d:%d:%d \r\n", read.year, read.month, read.day_of_month, read.hour,
           read.minute, read.second, read.subsecond);
}

// What the clock shows is told after a write that failed, too.
int check_write(rtc_report *report) {
    drv_rtc_time read_back = {};
    const uint32_t write_ret = drv_rtc_write_time(&test_time);
    const uint32_t read_ret = drv_rtc_read_time(&read_back);
    const uint32_t ret = write_ret != 0 ? write_ret : read_ret;
    const double difference = difftime(calendar_time(test_time), calendar_time(read_back));
    const bool passed = ret == 0 && difference < tolerance;
    if (passed) {
        append(report, "Success: write rtc time test pass\r\n");
    } else {
        append(report, "Error : write rtc time test fail\r\n\tret 0x%x\r\n", ret);
    }
    append_times(report, test_time, read_back);
    append(report, "\ttime diff: %f(s)\r\n", difference);
    return passed ? 0 : -1;
}

// Second 60 is written as it is: the chip carries it over.
int recover(rtc_report *report, drv_rtc_time time) {
    time.second = static_cast<int8_t>(time.second + 1);
    const uint32_t ret = drv_rtc_write_time(&time);
    append(report, "\tInfo :recover time ret:0x%x\r\n", ret);
    return ret == 0 ? 0 : -1;
}

int check_dump(rtc_report *report) {
    auto *text = static_cast<char *>(calloc(dump_size + 1, 1));
    if (text == nullptr) {
        append(report, "Error : dump rtc reg malloc fail\r\n");
        return -1;
    }
    const uint32_t ret = drv_rtc_dump_info(text, dump_size);
    if (ret != 0) {
        append(report, "Error : dump rtc reg test ret:0x%x\r\n", ret);
    } else {
        append(report, "Success: dump rtc reg test pass\r\n");
        selftest_log("RTC_TEST", rtc_log, log_info, "RTC get dump info: \r\n%s\r\n", text);
    }
    free(text);
    return ret == 0 ? 0 : -1;
}

// A clock whose own time could not be read is neither compared nor overwritten: there would be nothing to put back.
int check_clock(rtc_report *report) {
    int result = check_battery(report);
    drv_rtc_time found = {};
    if (check_read(report, &found) == 0) {
        result |= check_consistency(report, found);
        begin_test_value();
        result |= check_write(report);
        result |= recover(report, found);
        end_test_value();
    } else {
        result = -1;
    }
    return result | check_dump(report);
}

} // namespace

// The drivers know the board's one clock: the description only says whether it is there.
int rtc_section(uint32_t inst_id, char *buffer, uint32_t capacity, uint32_t *fill) {
    rtc_report report = {};
    report.buffer = buffer;
    report.capacity = capacity;
    report.fill = *fill;
    int result = -1;
    if (has_entries(open_entry_walk(inst_id, "rtc", "rtc_chip"))) {
        result = check_clock(&report);
    } else {
        append(&report, "Error: rtc xml get entry num fail.\r\n");
    }
    *fill = report.fill;
    return result;
}
