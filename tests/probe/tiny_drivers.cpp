// A driver library of a few operations that has nothing to do with the simulated chassis: fixed answers, so that a test
// sees what the probe changes.
#include "drv_basic/environment/drv_voltage.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_led.h"
#include "drv_basic/management/drv_reset.h"
#include "drv_basic/service/drv_diag_cmd.h"
#include "drv_basic/service/drv_log.h"

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#ifndef TINY_BOARD
extern "C" int tiny_marker() {
    return 1;
}
#endif

// Fails with its outputs untouched for types it does not know.
uint32_t drv_mac_get_num(uint32_t, uint32_t type_id, uint32_t *num, uint32_t) {
    if (type_id > 8) {
        return DRV_NOT_SUPPORTED;
    }
    *num = type_id + 3;
    return 0;
}

// Calls another operation, as driver libraries do among themselves.
uint32_t drv_mac_get_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint8_t *buffer, uint32_t size) {
    uint32_t base = 0;
    drv_mac_get_num(inst_id, type_id, &base, 0);
    for (uint32_t i = 0; i < num * 6 && i < size; ++i) {
        buffer[i] = static_cast<uint8_t>(base * 16 + i);
    }
    return 0;
}

// Writes a byte too many.
uint32_t drv_mac_get_addr(uint32_t, uint32_t, uint8_t *addr) {
    for (uint8_t i = 0; i < 7; ++i) {
        addr[i] = static_cast<uint8_t>(i + 1);
    }
    return 0;
}

uint32_t drv_mac_set_addr(uint32_t, uint32_t, const uint8_t *addr) {
    return addr[0];
}

uint32_t drv_log_record(uint32_t, uint32_t, uint32_t, const char *format, ...) {
    char text[128];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof(text), format, values);
    va_end(values);
    printf("driver log: %s\n", text);
    return 0;
}

static drv_diag_handler diag_handler = nullptr;

uint32_t drv_diag_reg_cmd_list(const drv_diag_record *records, uint32_t) {
    diag_handler = records[0].handler;
    return 0;
}

// Has the handler called once more without an area to write to: what stands there stays as it was.
uint32_t drv_diag_cmd_process(const char *, char *output, uint32_t size) {
    char untouched = 'x';
    output[0] = 'y';
    const uint32_t ret = diag_handler(output, size, 1, 2, 0xffffffff);
    return (ret + diag_handler(&untouched, 0, 0, 0, 0)) | static_cast<uint32_t>(untouched) << 8;
}

uint32_t drv_reset_get_code(drv_reset_code *code) {
    *code = {0x811101a4, 2031, 12, 30};
    return 0;
}

uint32_t drv_reset_self_board_without_reboot(const drv_reset_code *code) {
    return code->year;
}

uint32_t drv_board_get_card_list(uint32_t, drv_card_list *list) {
    *list = {};
    list->count = 2;
    list->slot_id[0] = 1;
    list->slot_id[1] = 0x10203;
    return 0;
}

uint32_t drv_board_get_bios_ver(uint32_t, char *text, uint32_t size) {
    snprintf(text, size, "V1.02");
    return 0;
}

// Writes its answer in the place of the text, and fails all the same.
uint32_t drv_led_patch_func1(uint32_t, char *buffer, uint32_t size) {
    const bool known = strcmp(buffer, "blink") == 0;
    snprintf(buffer, size, known ? "done" : "what?");
    return known ? 0 : 7;
}

// Tells the program at once that a board has come: 1 out of the call, 2 out of a thread of its own, 3 out of a child.
uint32_t drv_board_in_out_reg(drv_board_in_out_handler handler, void *user_data, const char *, uint32_t flag) {
    if (flag == 2) {
        std::thread([=] { handler(5, 1, user_data); }).join();
        return 0;
    }
    const pid_t pid = flag == 3 ? fork() : 0;
    if (pid > 0) {
        return static_cast<uint32_t>(waitpid(pid, nullptr, 0) != pid);
    }
    const uint32_t ret = handler(5, 1, user_data);
    if (flag == 3) {
        fflush(nullptr);
        _exit(0);
    }
    return ret;
}

uint32_t drv_voltage_init(uint32_t) {
    raise(SIGSEGV);
    return 0;
}

uint32_t drv_voltage_exit(uint32_t) {
    for (;;) {
        pause();
    }
}

uint32_t drv_board_in_out_unreg(drv_board_in_out_handler handler) {
    return handler == nullptr ? 1 : 0;
}

// Answers which definition comes behind this library.
uint32_t drv_voltage_get_value(uint32_t, uint32_t, uint32_t *value) {
    const auto next = reinterpret_cast<int (*)()>(dlsym(RTLD_NEXT, "tiny_marker"));
    *value = next != nullptr ? static_cast<uint32_t>(next()) : 0;
    return 0;
}
