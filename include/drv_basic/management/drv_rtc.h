/* The real-time clock of the board. */
#ifndef DRV_RTC_H
#define DRV_RTC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* The board's local time. */
struct drv_rtc_time {
    int8_t subsecond; /* hundredths of a second */
    int8_t second;
    int8_t minute;
    int8_t hour;
    int8_t day_of_week; /* 1 Monday to 7 Sunday */
    int8_t day_of_month;
    int8_t month; /* 1 to 12 */
    int8_t year;  /* since 2000 */
};

DRV_STATIC_ASSERT(sizeof(struct drv_rtc_time) == 8, "RTC time crosses the driver interface");

uint32_t drv_rtc_read_time(DRV_OUT struct drv_rtc_time *time);
uint32_t drv_rtc_write_time(DRV_IN const struct drv_rtc_time *time);

/* status: 0 good, 1 low. */
uint32_t drv_rtc_read_battery_status(DRV_OUT uint32_t *status);

/* The clock's registers as text, a line each; not the memory that it keeps for software. */
uint32_t drv_rtc_dump_info(DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* num registers from start on as text. */
uint32_t drv_rtc_reg_dump(uint32_t start, uint32_t num, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* result: 0 good, else faults found; the findings are written as text. */
uint32_t drv_rtc_check(DRV_OUT uint32_t *result, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

DRV_END_DECLS

#endif
