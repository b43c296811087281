// A program that makes the driver calls its words name, one line of output for each.
#include "drv_basic/environment/drv_avs.h"
#include "drv_basic/environment/drv_voltage.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_led.h"
#include "drv_basic/management/drv_reset.h"
#include "drv_basic/management/drv_smb.h"
#include "drv_basic/service/drv_log.h"
#include "nb_bsp/nb_bsp.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uint32_t self = DRV_INST_SELF;

void show_bytes(const char *name, uint32_t ret, const uint8_t *bytes, size_t count) {
    printf("%s: 0x%x", name, ret);
    for (size_t i = 0; i < count; ++i) {
        printf(" %02x", bytes[i]);
    }
    printf("\n");
}

void num(uint32_t type_id) {
    uint32_t count = 77;
    const uint32_t ret = drv_mac_get_num(self, type_id, &count, 0);
    printf("num: 0x%x %u\n", ret, count);
}

void num1() {
    num(1);
}

void num9() {
    num(9);
}

void addrs() {
    // Two bytes behind the area that the driver is given show whether anything wrote too far.
    uint8_t area[14];
    memset(area, 0xee, sizeof(area));
    const uint32_t ret = drv_mac_get_addr_num(self, 1, 2, area, 12);
    show_bytes("addrs", ret, area, sizeof(area));
}

void set() {
    const uint8_t addr[6] = {0x20, 0x02, 0, 0, 0, 0xff};
    printf("set: 0x%x\n", drv_mac_set_addr(self, 1, addr));
}

void log() {
    const uint32_t ret =
        drv_log_record(0, 2, 0, "chip %d of \"%s\": 0x%" PRIx64 " 100%%", 3, "lpu", UINT64_C(0x1122334455667788));
    printf("log: 0x%x\n", ret);
}

void code() {
    drv_reset_code found = {1, 2, 3, 4};
    const uint32_t ret = drv_reset_get_code(&found);
    printf("code: 0x%x 0x%x %u %u %u\n", ret, found.code, found.year, found.month, found.day);
}

void set_code() {
    const drv_reset_code given = {0x20, 2030, 1, 2};
    printf("set_code: 0x%x\n", drv_reset_self_board_without_reboot(&given));
}

void cards() {
    drv_card_list list = {};
    const uint32_t ret = drv_board_get_card_list(self, &list);
    printf("cards: 0x%x %u 0x%x 0x%x\n", ret, list.count, list.slot_id[0], list.slot_id[1]);
}

void bios() {
    char text[10];
    memset(text, 'e', sizeof(text));
    const uint32_t ret = drv_board_get_bios_ver(self, text, 8);
    show_bytes("bios", ret, reinterpret_cast<const uint8_t *>(text), sizeof(text));
}

void no_area() {
    printf("no_area: 0x%x\n", drv_board_get_type(self, nullptr));
}

void patch() {
    char text[8] = "fade";
    const uint32_t ret = drv_led_patch_func1(self, text, sizeof(text));
    printf("patch: 0x%x %s\n", ret, text);
}

uint32_t on_board(uint32_t slot_id, uint32_t in, void *user_data) {
    uint32_t count = 0;
    drv_mac_get_num(self, slot_id, &count, 0);
    printf("board %u %u: %u\n", slot_id, in, count);
    *static_cast<uint32_t *>(user_data) = count;
    return 0;
}

void in_out() {
    uint32_t seen = 0;
    const uint32_t registered = drv_board_in_out_reg(on_board, &seen, "tiny", 1);
    const uint32_t unregistered = drv_board_in_out_unreg(nullptr);
    printf("in_out: 0x%x %u 0x%x\n", registered, seen, unregistered);
}

// The same without unregistering; flag says out of where the driver calls back.
void in_out_with(uint32_t flag) {
    uint32_t seen = 0;
    fflush(nullptr);
    const uint32_t registered = drv_board_in_out_reg(on_board, &seen, "tiny", flag);
    printf("in_out: 0x%x %u\n", registered, seen);
}

void in_out_later() {
    in_out_with(2);
}

void in_out_child() {
    in_out_with(3);
}

void crash() {
    drv_voltage_init(7);
}

void hang() {
    drv_voltage_exit(7);
}

void child_crash() {
    fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        crash();
    }
    waitpid(pid, nullptr, 0);
}

void on_thread(void (*call)()) {
    pthread_t thread;
    const auto run = [](void *given) -> void * {
        reinterpret_cast<void (*)()>(given)();
        return nullptr;
    };
    pthread_create(&thread, nullptr, run, reinterpret_cast<void *>(call));
    pthread_join(thread, nullptr);
}

void thread_num() {
    on_thread(num1);
}

void thread_num9() {
    on_thread(num9);
}

void close_all() {
    for (int file = 3; file < 64; ++file) {
        close(file);
    }
}

void late_call(const char *library, const char *operation) {
    void *handle = dlopen(library, RTLD_NOW | RTLD_LOCAL);
    void *found = handle != nullptr ? dlsym(handle, operation) : nullptr;
    const char *fault = dlerror();
    if (found == nullptr || fault != nullptr) {
        printf("late: not found\n");
        return;
    }
    uint32_t count = 77;
    const uint32_t ret = reinterpret_cast<uint32_t (*)(uint32_t, uint32_t, uint32_t *)>(found)(self, 4, &count);
    printf("late: 0x%x %u\n", ret, count);
}

void late() {
    late_call(TINY_LATE, "drv_smb_get_tx_err_count");
}

void late_missing() {
    late_call(TINY_LATE, "drv_subboard_get_type");
}

// An operation that no library has.
void himem() {
    uint64_t start = 1;
    uint64_t length = 2;
    const uint32_t ret = nb_get_himem_info(&start, &length);
    printf("himem: 0x%x 0x%" PRIx64 " 0x%" PRIx64 "\n", ret, start, length);
}

void next() {
    uint32_t value = 0;
    const uint32_t ret = drv_voltage_get_value(self, 0, &value);
    printf("next: 0x%x %u\n", ret, value);
}

// The child makes a call of its own and ends in the ordinary way.
void in_child() {
    fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        num9();
        exit(0);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    printf("in_child: %d\n", WEXITSTATUS(status));
}

void environment() {
    fflush(nullptr);
    const int status = system("env | grep -E '^(LD_PRELOAD|KESTRO_PROBE)'");
    printf("environment: %d\n", WEXITSTATUS(status));
}

void partial() {
    printf("no line end");
}

struct word {
    const char *name;
    void (*call)();
};

constexpr word words[] = {
    {"num", num1},
    {"num9", num9},
    {"addrs", addrs},
    {"set", set},
    {"log", log},
    {"code", code},
    {"set_code", set_code},
    {"cards", cards},
    {"bios", bios},
    {"no_area", no_area},
    {"patch", patch},
    {"in_out", in_out},
    {"late", late},
    {"late_missing", late_missing},
    {"himem", himem},
    {"next", next},
    {"in_child", in_child},
    {"environment", environment},
    {"partial", partial},
    {"in_out_later", in_out_later},
    {"crash", crash},
    {"in_out_child", in_out_child},
    {"hang", hang},
    {"child_crash", child_crash},
    {"close_all", close_all},
    {"thread_num", thread_num},
    {"thread_num9", thread_num9},
};

} // namespace

int main(int count, char **args) {
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    for (int i = 1; i < count; ++i) {
        for (const word &known : words) {
            if (strcmp(args[i], known.name) == 0) {
                known.call();
            }
        }
    }
    return 3;
}
