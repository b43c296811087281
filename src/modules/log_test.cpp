// log_test: the driver log, a ring of lines per log id, its hooks, and its transfer to a file. No banners here.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#include "bounds/bounds.h"
#include "drv_basic/service/drv_log.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/standard_streams.h"
#include "shell/words.h"

namespace {

constexpr uint32_t usual_log_size = 8192;
constexpr size_t hook_text_size = 512;

int write_log(int count, char **args) {
    if (count < 3) {
        printf("./kestro_test log_test %s [module_id] [log_level] [buffer]\r\n", "write_log");
        return -1;
    }
    drv_log_record(word_to_u32(args[0]), word_to_u32(args[1]), 0, "%s", args[2]);
    return 0;
}

using read_operation = uint32_t (*)(uint32_t log_id, char *buffer, uint32_t len, uint32_t *lines);

int print_log(char **args, read_operation read_lines, const char *no_memory) {
    const uint32_t log_id = word_to_u32(args[0]);
    const uint32_t len = word_to_u32(args[1]);
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        puts(no_memory);
        return -1;
    }
    uint32_t lines = 0;
    const uint32_t ret = read_lines(log_id, buffer, len, &lines);
    if (ret == 0) {
        printf("read_line:%d\r\n", static_cast<int>(lines));
        printf("%s\r\n", buffer);
    } else {
        puts("drv_log_read failure\r");
    }
    free(buffer);
    return static_cast<int>(ret);
}

int read_log(int count, char **args) {
    if (count < 2) {
        printf("./kestro_test log_test %s [module_id] [len]\r\n", "read_log");
        return -1;
    }
    return print_log(args, drv_log_read, "drv log read malloc buffer failure\r");
}

int read_log_with_clean(int count, char **args) {
    if (count < 2) {
        printf("./kestro_test log_test %s [module_id] [len]\r\n", "read_log_with_clean");
        return -1;
    }
    return print_log(args, drv_log_read_clr, "drv read log with clean malloc buffer failure\r");
}

int log_regist(int count, char **args) {
    if (count < 2) {
        printf("./kestro_test log_test %s [module_id] [module_name]\r\n", "log_regist");
        return -1;
    }
    const uint32_t size = count > 2 ? word_to_u32(args[2]) : usual_log_size;
    return static_cast<int>(drv_log_register(word_to_u32(args[0]), args[1], size));
}

int log_deregist(int count, char **args) {
    if (count < 1) {
        printf("./kestro_test log_test %s [module_id]\r\n", "log_deregist");
        return -1;
    }
    return static_cast<int>(drv_log_deregister(word_to_u32(args[0])));
}

// The driver's thread that moves the lines lives as long as this process does: an operator ends both.
[[noreturn]] void stay_alive() {
    flush_partial_line();
    for (;;) {
        pause();
    }
}

int log_transfer(int count, char **args) {
    if (count < 4) {
        printf("./kestro_test log_test %s [core] [time_slice] [path] [max_size]\r\n", "log_transfer");
        return -1;
    }
    const uint32_t ret = drv_log_transfer(word_to_u32(args[0]), word_to_u32(args[1]), args[2], word_to_u32(args[3]));
    if (ret != 0) {
        printf("./kestro_test log_test %s failure\r\n", "log_transfer");
        return -1;
    }
    stay_alive();
}

int log_transfer_status(int count, char **args) {
    if (count < 1) {
        printf("./kestro_test log_test %s [mode]\r\n", "log_transfer_status");
        return -1;
    }
    uint32_t status = 0;
    const uint32_t ret = drv_log_transfer_status(word_to_u32(args[0]), &status);
    if (ret == 0) {
        printf("status:0x%x\r\n", status);
    } else {
        puts("drv_log_transfer_status failure \r");
    }
    return static_cast<int>(ret);
}

// Hooks are called by a thread of the driver, also while the process ends. A line that is longer than its area is cut.
__attribute__((format(printf, 2, 3))) void print_logged_line(const char *result, const char *format, ...) {
    char text[hook_text_size] = {};
    va_list values;
    va_start(values, format);
    vsnprintf_s(text, sizeof(text), sizeof(text) - 1, format, values);
    va_end(values);
    if (hold_output()) {
        printf("result=%s, log=%s\n", result, text);
        release_output();
    }
}

__attribute__((format(printf, 2, 3))) void print_security_line(uint32_t log_id, const char *format, ...) {
    char text[hook_text_size] = {};
    va_list values;
    va_start(values, format);
    vsnprintf_s(text, sizeof(text), sizeof(text) - 1, format, values);
    va_end(values);
    if (hold_output()) {
        printf("[product_sec_log]logid=0x%x, log=%s\n", log_id, text);
        release_output();
    }
}

std::atomic<bool> is_stop_asked_for;
static_assert(std::atomic<bool>::is_always_lock_free);

// Straight to the descriptor: any thread may get the signal, in the middle of a line that it prints. All lines before
// are out, as standard output keeps none back that has ended. The name in the text is that of the handler that this one
// was once copied from.
void stop_on_signal(int sig_no) {
    const int kept_errno = errno;
    char line[] = "intr_test_signal_handler exit, sig_no=00\n";
    const size_t length = strlen(line);
    char *digits = line + length - 3;
    if (sig_no >= 10) {
        *digits++ = static_cast<char>('0' + sig_no / 10 % 10);
    }
    *digits++ = static_cast<char>('0' + sig_no % 10);
    *digits++ = '\n';
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, line, static_cast<size_t>(digits - line));
    is_stop_asked_for = true;
    errno = kept_errno;
}

// The handler stays until the process ends: a second signal has its line, and the hook is removed all the same.
void wait_for_operator() {
    constexpr useconds_t poll_pause = 10000;
    is_stop_asked_for = false;
    struct sigaction stop {};
    stop.sa_handler = stop_on_signal;
    stop.sa_flags = SA_RESTART;
    sigemptyset(&stop.sa_mask);
    sigaction(SIGINT, &stop, nullptr);
    puts("wait for ctrl+c");
    while (!is_stop_asked_for) {
        usleep(poll_pause);
    }
}

int log_test_hook(int, char **) {
    constexpr uint32_t test_log = 10;
    constexpr uint32_t level_info = 2;
    puts("enter");
    drv_log_hook_set(print_logged_line);
    drv_log_record(test_log, level_info, 0, "test_log");
    wait_for_operator();
    drv_log_hook_set(nullptr);
    puts("exit");
    return 0;
}

int register_security_hook(int, char **) {
    constexpr uint32_t security_log = 0x11223344;
    return static_cast<int>(drv_sec_log_hook_register(security_log, "slot3", print_security_line));
}

int show_security_log(int, char **) {
    return static_cast<int>(drv_sec_log_show());
}

int record_security_line(int count, char **args) {
    if (count < 1) {
        puts("./kestro_test log_test drv_sec_log_record <log>");
        return -1;
    }
    return static_cast<int>(drv_sec_log_record("%s", args[0]));
}

constexpr std::array rows = {
    command_row{"write_log", write_log, "write_log"},
    command_row{"read_log", read_log, "read_log"},
    command_row{"read_log_with_clean", read_log_with_clean, "read_log_with_clean"},
    command_row{"log_regist", log_regist, "log_regist"},
    command_row{"log_deregist", log_deregist, "log_deregist"},
    command_row{"log_transfer", log_transfer, "log_transfer"},
    command_row{"log_transfer_status", log_transfer_status, "log_transfer_status"},
    command_row{"log_test_hook", log_test_hook, "log_test_hook"},
    command_row{"drv_sec_log_hook_register", register_security_hook, "drv_sec_log_hook_register"},
    command_row{"drv_sec_log_show", show_security_log, "drv_sec_log_show"},
    command_row{"drv_sec_log_record", record_security_line, "drv_sec_log_record <log>"},
};

static_assert(rows_are_sound(rows));

} // namespace

int log_test(int count, char **args) {
    return run_module(rows, count, args);
}
