// console_redirect_test: the serial console of another slot, brought to this program: a text is sent there, and what
// the far end answers is printed as it comes.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "bounds/bounds.h"
#include "drv_basic/service/drv_console_redirect.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr banner_style style = banner_style::bare;

constexpr size_t data_size = 64;

// Nobody waits a day at the bench, and a slip of the hand is no reason to hold the console for years.
constexpr uint32_t longest_delay = 24 * 60 * 60;

struct redirect_words {
    uint32_t slot_id;
    uint32_t baud_rate;
    char data[data_size];
    uint32_t data_len; // said by the command line; the text itself is as long as it is
    uint32_t delay_time;
};

// The slot takes the place that other sub-commands give to an instance: it may be left out, and is the own one then.
redirect_words take_words(int count, char **args) {
    constexpr int full_form = 5;
    redirect_words words{};
    words.slot_id = DRV_INST_SELF;
    check_args(full_form, count, args, &words.slot_id, nullptr, nullptr);
    if (count < full_form - 1) {
        return words;
    }
    char **next = count == full_form ? args + 1 : args;
    words.baud_rate = word_to_u32(next[0]);
    snprintf_s(words.data, data_size, data_size - 1, "%s", next[1]);
    words.data_len = word_to_u32(next[2]);
    words.delay_time = word_to_u32(next[3]);
    return words;
}

void wait_seconds(uint32_t seconds) {
    unsigned left = seconds < longest_delay ? seconds : longest_delay;
    while (left > 0) {
        left = sleep(left);
    }
}

// Called on a thread of the driver while the main one prints its own lines. Those are whole lines, a call each; what
// came is one piece under the stream's lock, and ends its line, so neither can get into the other.
void print_received(uint32_t /*slot_id*/, const char *data, uint32_t len) {
    if (len == 0) {
        return;
    }
    flockfile(stdout);
    fwrite(data, 1, len, stdout);
    if (data[len - 1] != '\n') {
        putchar('\n');
    }
    funlockfile(stdout);
}

uint32_t enable(const redirect_words &words) {
    const uint32_t ret = drv_console_redirect_en(words.slot_id, words.baud_rate);
    if (ret == 0) {
        printf("console redirect en successful!\r\n");
    } else {
        printf("console redirect en fail!, retval %x\r\n", ret);
    }
    return ret;
}

uint32_t register_callback() {
    const uint32_t ret = drv_console_redirect_recv_callback_register(print_received);
    if (ret == 0) {
        printf("console redirect recv callback register successful!\r\n");
    } else {
        printf("console redirect recv callback register fail!, retval %x\r\n", ret);
    }
    return ret;
}

uint32_t send_data(const redirect_words &words) {
    wait_seconds(words.delay_time);
    const uint32_t ret = drv_console_redirect_send_data(words.data, static_cast<uint32_t>(strlen(words.data)));
    if (ret == 0) {
        printf("console redirect send data successful!\r\n");
    } else {
        printf("console redirect send data fail!, retval %x\r\n", ret);
    }
    return ret;
}

// The wait is for the answer: closing lets come what is on its way.
uint32_t close_redirect(const redirect_words &words) {
    const uint32_t ret = drv_console_redirect_close(words.slot_id);
    if (ret == 0) {
        printf("console redirect close successful!\r\n");
        wait_seconds(words.delay_time);
    } else {
        printf("console redirect close fail!, retval %x\r\n", ret);
    }
    return ret;
}

// After a step that failed. Closing forgets the callback as well; a driver that cannot close is asked for that alone.
// No lines: the step has had its own.
void take_back(uint32_t slot_id) {
    if (drv_console_redirect_close(slot_id) != 0) {
        drv_console_redirect_recv_callback_register(nullptr);
    }
}

uint32_t run_steps(const redirect_words &words) {
    uint32_t ret = enable(words);
    if (ret != 0) {
        return ret;
    }
    ret |= register_callback();
    if (ret == 0) {
        ret |= send_data(words);
    }
    if (ret != 0) {
        take_back(words.slot_id);
        return ret;
    }
    ret |= close_redirect(words);
    if (ret != 0) {
        drv_console_redirect_recv_callback_register(nullptr);
    }
    return ret;
}

int drv_console_redirect_func_test(int count, char **args) {
    print_begin_banner(style, "test_console_redirect_func_test");
    const redirect_words words = take_words(count, args);
    printf("slot_id:%x baud_rate:%x data:%s data_len:%x delay_time:%x\n", words.slot_id, words.baud_rate, words.data,
           words.data_len, words.delay_time);
    const uint32_t ret = run_steps(words);
    printf("slot_id:%x baud_rate:%x data:%s data_len:%x delay_time:%x ret:0x%x  \n", words.slot_id, words.baud_rate,
           words.data, words.data_len, words.delay_time, ret);
    printf("##############################  use command \"cat /dev/kestro_log/drv_log_console\" to check all info  "
           "#################\n");
    print_end_banner(style, "test_console_redirect_func_test");
    return static_cast<int>(ret);
}

constexpr std::array rows = {
    command_row{"drv_console_redirect_func_test", drv_console_redirect_func_test,
                "drv_console_redirect_func_test slot_id baud_rate data data_len delay_time"},
};

static_assert(rows_are_sound(rows));

} // namespace

int console_redirect_test(int count, char **args) {
    return run_module(rows, count, args);
}
