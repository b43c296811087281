#include "onekey/fan/fan_report.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "drv_basic/environment/drv_fan.h"

uint32_t fan_failure(uint32_t ret) {
    return ret == DRV_NOT_SUPPORTED ? 0 : ret;
}

const char *fan_no_value(uint32_t ret) {
    return ret == DRV_NOT_SUPPORTED ? "N/A" : "--";
}

uint32_t get_fan_slots(drv_slot_list *list) {
    constexpr uint32_t fan_slot_type = 5;
    *list = {};
    const uint32_t ret = drv_slot_get_list(fan_slot_type, list);
    if (ret == 0) {
        list->num = std::min(list->num, DRV_SLOT_LIST_MAX);
    }
    return ret;
}

uint32_t list_fan_slots(drv_slot_list *list, report_sink sink) {
    const uint32_t ret = get_fan_slots(list);
    if (ret != 0) {
        report_append(sink, "Error: get fan slot list fail\r\n");
    }
    return ret;
}

// A tray that cannot even tell this is not tested, so here "not supported" is a failure as well.
uint32_t count_fans(uint32_t slot_id, uint32_t *num, report_sink sink) {
    const uint32_t ret = drv_fan_get_num(slot_id, num);
    if (ret != 0) {
        report_append(sink, "Error: get fan%d num fail\r\n", static_cast<int>(slot_id));
    }
    return ret;
}

void report_rule(report_sink sink) {
    report_append(sink, "----------------------------------------------------------------\r\n");
}

timeval fan_time() {
    timeval now{};
    gettimeofday(&now, nullptr);
    return now;
}

// The milliseconds are the whole time once more, not what is left of a second.
void report_fan_time(fan_time_style style, const timeval &start, report_sink sink) {
    const timeval end = fan_time();
    timeval gone{};
    timersub(&end, &start, &gone);
    const long seconds = static_cast<long>(gone.tv_sec);
    const long milliseconds = seconds * 1000 + static_cast<long>(gone.tv_usec) / 1000;
    switch (style) {
    case fan_time_style::labels:
        report_append(sink, "-------------------Total test time: %lds %04ldms-------------------\r\n", seconds,
                      milliseconds);
        break;
    case fan_time_style::rounds:
        report_append(sink, "-----------------Total test time: %03lds %06ldms-----------------\r\n", seconds,
                      milliseconds);
        break;
    case fan_time_style::values:
        report_append(sink, "--------------------Total test time: %lds %ldms--------------------\r\n", seconds,
                      milliseconds);
        break;
    }
}

void sleep_milliseconds(uint32_t milliseconds) {
    timespec left{};
    left.tv_sec = static_cast<time_t>(milliseconds / 1000);
    left.tv_nsec = static_cast<long>(milliseconds % 1000) * 1000000;
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

void count_round(round_sum *sum, const round_outcome &round) {
    if (round.is_good) {
        ++sum->good;
    } else {
        ++sum->bad;
    }
    sum->result += round.code;
}

void report_rounds(const round_sum &sum, uint32_t times, report_sink sink) {
    report_append(sink, "Info: Success times: %u, Fail times: %u, total times: %u\r\n", sum.good, sum.bad, times);
}
