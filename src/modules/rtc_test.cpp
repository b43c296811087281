// rtc_test: the real-time clock, a chip with a battery of its own that counts on while the board is off. A written time
// reaches the system clock with the next start only. No banners here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "drv_basic/management/drv_rtc.h"
#include "drv_basic/service/drv_diag_cmd.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

// All eight bytes as the chip gave them, also after a failure: they are then 0.
int rtc_get_time(int /*count*/, char ** /*args*/) {
    drv_rtc_time time{};
    const uint32_t ret = drv_rtc_read_time(&time);
    printf("drv_rtc_read_time:[ret]:%d\r\n", static_cast<int>(ret));
    printf("cms:0x%x\r\n", static_cast<unsigned>(time.subsecond));
    printf("csecond:0x%x\r\n", static_cast<unsigned>(time.second));
    printf("cmin:0x%x\r\n", static_cast<unsigned>(time.minute));
    printf("chour:0x%x\r\n", static_cast<unsigned>(time.hour));
    printf("cday_of_week:0x%x\r\n", static_cast<unsigned>(time.day_of_week));
    printf("cday_of_month:0x%x\r\n", static_cast<unsigned>(time.day_of_month));
    printf("cmonth:0x%x\r\n", static_cast<unsigned>(time.month));
    printf("cyear:0x%x\r\n", static_cast<unsigned>(time.year));
    return static_cast<int>(ret);
}

// One time that is easy to know again; setting the right time is not the business of a test.
int rtc_set_time(int /*count*/, char ** /*args*/) {
    constexpr drv_rtc_time time = {5, 5, 5, 5, 5, 5, 5, 5};
    const uint32_t ret = drv_rtc_write_time(&time);
    printf("drv_rtc_write_time:[ret]:%d\r\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int rtc_dump_reg(int count, char **args) {
    if (count < 1) {
        return -1;
    }
    const uint32_t len = word_to_u32(args[0]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_rtc_dump_info(buffer, len);
    printf("drv_rtc_dump_info:[ret]:%d len:%d\r\n%s\r\n", static_cast<int>(ret), static_cast<int>(len), buffer);
    free(buffer);
    return static_cast<int>(ret);
}

// The one word is the length of the text area, though the listing does not say so.
int rtc_check(int count, char **args) {
    uint32_t result = 0;
    if (count < 1) {
        return -1;
    }
    const uint32_t len = word_to_u32(args[0]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_rtc_check(&result, buffer, len);
    printf("drv_rtc_check:[ret]:%d result:%d,len:%d\r\n%s\r\n", static_cast<int>(ret), static_cast<int>(result),
           static_cast<int>(len), buffer);
    free(buffer);
    return static_cast<int>(ret);
}

int rtc_dump_reg_customize(int count, char **args) {
    if (count < 3) {
        return -1;
    }
    const uint32_t start = word_to_u32(args[0]);
    const uint32_t num = word_to_u32(args[1]);
    const uint32_t len = word_to_u32(args[2]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        return 0;
    }
    const uint32_t ret = drv_rtc_reg_dump(start, num, buffer, len);
    printf("drv_rtc_reg_dump:[ret]:%d len:%d\r\n%s\r\n", static_cast<int>(ret), static_cast<int>(len), buffer);
    free(buffer);
    return static_cast<int>(ret);
}

// Diagnose texts are written as formats without values: a doubled percent sign is one. Any other percent sign stands as
// it is, for there is no value that it could show.
void print_diagnose_text(const char *text) {
    for (const char *c = text; *c != '\0'; ++c) {
        if (c[0] == '%' && c[1] == '%') {
            ++c;
        }
        putchar(*c);
    }
}

// What the diagnosis found is in its text; the sub-command fails only where there was none to be had.
int rtc_get_info(int /*count*/, char ** /*args*/) {
    constexpr uint32_t size = 0x100000;
    if (drv_diag_cmd_init() != 0) {
        puts("drv_diag_cmd_init fail.");
        return -1;
    }
    char *buffer = new_text_area(size);
    if (buffer == nullptr) {
        return -1;
    }
    const uint32_t ret = drv_diag_cmd_process("rtc info", buffer, size);
    printf("rtc test cmd [rtc info]............%s\n", ret == 0 ? "pass" : "fail");
    if (ret == 0) {
        print_diagnose_text(buffer);
    }
    free(buffer);
    return 0;
}

constexpr std::array rows = {
    command_row{"rtc_get_time", rtc_get_time, "rtc_get_time"},
    command_row{"rtc_set_time", rtc_set_time, "rtc_set_time"},
    command_row{"rtc_dump_reg", rtc_dump_reg, "rtc_dump_reg len"},
    command_row{"rtc_check", rtc_check, "rtc_check"},
    command_row{"rtc_dump_reg_customize", rtc_dump_reg_customize, "rtc_dump_reg_customize start num len"},
    command_row{"rtc_get_info", rtc_get_info, "rtc_get_info"},
};

static_assert(rows_are_sound(rows));

} // namespace

int rtc_test(int count, char **args) {
    return run_module(rows, count, args);
}
