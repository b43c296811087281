// The controller of a fan tray: whether it is up, and how it goes down and comes up again. While it is down the fans
// turn on their own, and nobody watches them: an operator waits until it is told to come up.
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"
#include "selftest/test_value.h"
#include "shell/console.h"

namespace {

constexpr uint32_t init_operation = 0;

uint32_t show_init_status(const fan_unit &fan, report_sink sink) {
    report_append(sink, "[FAN%d-%d]: ", static_cast<int>(fan.slot_id), static_cast<int>(fan.fan_id));
    flush_partial_line();
    uint32_t status = 0;
    const uint32_t ret = drv_fan_get_operation_complete_status(fan.slot_id, fan.fan_id, init_operation, &status);
    const char *text = status == 0 ? "Completed" : "Uncompleted";
    report_append(sink, "%s\r\n", ret == 0 ? text : fan_no_value(ret));
    return fan_failure(ret);
}

} // namespace

uint32_t fan_get_init_status(uint32_t slot_id, report_sink sink) {
    uint32_t num = 0;
    uint32_t result = count_fans(slot_id, &num, sink);
    if (result != 0) {
        return result;
    }
    report_rule(sink);
    report_append(sink, "[FAN%d] Init Status:\r\n", static_cast<int>(slot_id));
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        result += show_init_status({slot_id, fan_id}, sink);
    }
    report_rule(sink);
    return result;
}

namespace {

struct completion {
    bool is_in_time;
    uint32_t last_ret;
};

// A tray that does not tell is taken as ready after the first second.
completion wait_for_completion(uint32_t slot_id) {
    constexpr int polls = 30;
    constexpr uint32_t pause = 1000;
    uint32_t ret = 0;
    for (int poll = 0; poll < polls; ++poll) {
        sleep_milliseconds(pause);
        uint32_t status = 0;
        ret = drv_fan_get_operation_complete_status(slot_id, DRV_FAN_ALL, init_operation, &status);
        if (ret == DRV_NOT_SUPPORTED || (ret == 0 && status == 0)) {
            return {true, ret};
        }
    }
    return {false, ret};
}

round_outcome init_once(uint32_t slot_id, uint32_t round, report_sink sink) {
    const uint32_t ret = drv_fan_init(slot_id);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]init fail(0x%x)\r\n", static_cast<int>(round), ret);
        return {false, ret};
    }
    if (!wait_for_completion(slot_id).is_in_time) {
        report_append(sink, "Error: init status overtime init test\r\n");
        return {false, 1};
    }
    return {true, 0};
}

} // namespace

uint32_t fan_multi_init_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    report_rule(sink);
    const timeval start = fan_time();
    report_append(sink, "[FAN%d] Multi Init Test Result: \r\n", static_cast<int>(slot_id));
    round_sum sum{};
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, init_once(slot_id, round, sink));
    }
    report_rounds(sum, times, sink);
    report_fan_time(fan_time_style::rounds, start, sink);
    return sum.result;
}

namespace {

// That a driver which is down cannot be taken down again is no fault: only the counts tell of it.
round_outcome exit_once(uint32_t slot_id, uint32_t round, report_sink sink) {
    const uint32_t ret = drv_fan_exit(slot_id);
    if (ret != 0) {
        report_append(sink, "Info: [%d times]deinit fail(0x%x)\r\n", static_cast<int>(round), ret);
    }
    return {ret == 0, 0};
}

// The wait follows an init that failed, too: a tray may come up on its own.
uint32_t recover(uint32_t slot_id, uint32_t init_ret, report_sink sink) {
    uint32_t result = init_ret;
    if (init_ret != 0) {
        report_append(sink, "Error: init fail when recovery(0x%x)\r\n", init_ret);
    }
    if (!wait_for_completion(slot_id).is_in_time) {
        report_append(sink, "Error: init status overtime when recovery\r\n");
        result += 1;
    }
    return result;
}

} // namespace

uint32_t fan_multi_deinit_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    report_rule(sink);
    const timeval start = fan_time();
    report_append(sink, "[FAN%d] Multi Deinit Test Result: \r\n", static_cast<int>(slot_id));
    round_sum sum{};
    begin_test_value();
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, exit_once(slot_id, round, sink));
    }
    const uint32_t init_ret = drv_fan_init(slot_id);
    end_test_value();
    const uint32_t result = recover(slot_id, init_ret, sink);
    report_rounds(sum, times, sink);
    report_fan_time(fan_time_style::rounds, start, sink);
    return result;
}

namespace {

// The lines of this test have no end: what comes next stands behind them.
round_outcome init_after_exit(uint32_t slot_id, uint32_t round, uint32_t init_ret, report_sink sink) {
    if (init_ret != 0) {
        report_append(sink, "Error: [%d times]init fail in second step(0x%x)", static_cast<int>(round), init_ret);
        flush_partial_line();
        return {false, init_ret};
    }
    const completion end = wait_for_completion(slot_id);
    if (!end.is_in_time) {
        // A driver that answers to the end that it is not ready has code 0, and adds nothing.
        report_append(sink, "Error: [%d times]init status overtime in third step", static_cast<int>(round));
        flush_partial_line();
        return {false, end.last_ret};
    }
    return {true, 0};
}

round_outcome exit_and_init(uint32_t slot_id, uint32_t round, report_sink sink) {
    begin_test_value();
    const uint32_t exit_ret = drv_fan_exit(slot_id);
    const uint32_t init_ret = exit_ret == 0 ? drv_fan_init(slot_id) : 0;
    end_test_value();
    if (exit_ret != 0) {
        return {false, exit_ret};
    }
    return init_after_exit(slot_id, round, init_ret, sink);
}

} // namespace

uint32_t fan_init_deinit_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    report_rule(sink);
    const timeval start = fan_time();
    report_append(sink, "[FAN%d] Init-Deinit Test Result: \r\n", static_cast<int>(slot_id));
    round_sum sum{};
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, exit_and_init(slot_id, round, sink));
    }
    report_rounds(sum, times, sink);
    report_fan_time(fan_time_style::rounds, start, sink);
    return sum.result;
}
