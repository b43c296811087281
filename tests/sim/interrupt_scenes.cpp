// Plays a scene with the test interrupt and prints what was heard and when. Run on the virtual clock it prints the same
// each time.
//
//   interrupt_scenes (waits|itself|masks|clears|replaces|exit|crowd)
#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_intr.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr uint32_t own_index = 100;
constexpr uint32_t own_type = 200;

int64_t milliseconds() {
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
}

void say(const char *what, uint32_t number) {
    printf("%lld ms: %s 0x%x\n", static_cast<long long>(milliseconds()), what, number);
}

void rest(int64_t span) {
    std::this_thread::sleep_for(std::chrono::milliseconds(span));
}

void write(uint32_t offset, uint32_t data) {
    if (const uint32_t ret = drv_cpld_reg_write(DRV_INST_SELF, 1, offset, data); ret != 0) {
        say("write", ret);
    }
}

void raise_source() {
    write(0x600, 0xFFFF);
    write(0x62F, 0x7788);
    write(0x630, 1);
}

uint32_t enlist(drv_intr_handler handler, void *user_data = nullptr) {
    return drv_intr_set_regist(own_index, own_type, handler, user_data);
}

uint32_t delist() {
    return drv_intr_set_unregist(own_index, own_type);
}

uint32_t hear(uint32_t, uint32_t, void *) {
    say("called", 0);
    return 0;
}

uint32_t hear_for_long(uint32_t, uint32_t, void *) {
    say("begins", 0);
    rest(100);
    say("ends", 0);
    return 0;
}

// Unregistering comes back only when the handler has.
void waits() {
    enlist(hear_for_long);
    raise_source();
    rest(50);
    say("unregistered", delist());
    rest(500);
}

uint32_t unregister_itself(uint32_t, uint32_t, void *) {
    say("called", 0);
    say("unregistered", delist());
    return 0;
}

void itself() {
    enlist(unregister_itself);
    raise_source();
    rest(100);
    say("unregistered", delist());
    say("registered", enlist(unregister_itself));
    rest(100);
}

uint32_t mask_itself(uint32_t index, uint32_t type, void *) {
    say("disabled", drv_intr_disable(index, type));
    return 0;
}

void masks() {
    enlist(mask_itself);
    raise_source();
    for (int i = 0; i < 2; ++i) {
        rest(100);
        say("enabled", drv_intr_enable(own_index, own_type));
    }
    rest(100);
}

uint32_t clear_source(uint32_t, uint32_t, void *) {
    uint32_t latch = 0;
    drv_cpld_reg_read(DRV_INST_SELF, 1, 0x600, &latch);
    say("latch", latch);
    write(0x62F, 0);
    write(0x630, 0);
    write(0x600, 0xFFFF);
    return 0;
}

void clears() {
    enlist(clear_source);
    for (int i = 0; i < 3; ++i) {
        raise_source();
        rest(100);
    }
}

uint32_t replace_itself(uint32_t, uint32_t, void *) {
    say("unregistered", delist());
    say("registered", enlist(hear));
    return 0;
}

void replaces() {
    enlist(replace_itself);
    raise_source();
    rest(15);
    say("unregistered", delist());
    rest(100);
}

void calls_once_more() {
    say("exit", drv_intr_enable(own_index, own_type));
}

// What is registered at the end of the process is called no more, and the drivers answer.
void ends_registered() {
    std::atexit(calls_once_more);
    enlist(hear);
    raise_source();
    rest(5);
}

// Registrations that were given back. Whoever is called for one of them is called too late.
std::array<std::atomic<bool>, 1000> is_over;
std::atomic<uint32_t> calls = 0;

uint32_t hear_in_time(uint32_t, uint32_t, void *user_data) {
    if (*static_cast<std::atomic<bool> *>(user_data)) {
        say("too late", 0);
    }
    if (++calls % 4 == 0) {
        drv_intr_disable(own_index, own_type);
    }
    return 0;
}

void mask_and_unmask(const std::atomic<bool> &ends) {
    while (!ends) {
        drv_intr_disable(own_index, own_type);
        drv_intr_enable(own_index, own_type);
        std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
}

// One registers and unregisters, two disable and enable, and the handler disables, too.
void crowd() {
    std::atomic<bool> ends = false;
    raise_source();
    std::vector<std::thread> others;
    others.emplace_back([&] { mask_and_unmask(ends); });
    others.emplace_back([&] { mask_and_unmask(ends); });
    uint32_t registered = 0;
    uint32_t unregistered = 0;
    while (registered < 30 || calls < 30) {
        if (registered == is_over.size()) {
            break;
        }
        std::atomic<bool> &own = is_over.at(registered);
        registered += enlist(hear_in_time, &own) == 0 ? 1 : 0;
        std::this_thread::sleep_for(std::chrono::microseconds(500));
        unregistered += delist() == 0 ? 1 : 0;
        own = true;
    }
    ends = true;
    for (std::thread &each : others) {
        each.join();
    }
    printf("%s\n", registered == unregistered ? "as many unregistered as registered" : "some are left");
    printf("%s\n", calls >= 30 ? "called" : "hardly called");
}

} // namespace

int main(int count, char **words) {
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    milliseconds();
    const std::map<std::string, void (*)()> scenes = {
        {"waits", waits},       {"itself", itself},        {"masks", masks}, {"clears", clears},
        {"replaces", replaces}, {"exit", ends_registered}, {"crowd", crowd}};
    const auto scene = scenes.find(count > 1 ? words[1] : "");
    if (scene == scenes.end()) {
        fprintf(stderr, "interrupt_scenes: no such scene\n");
        return 2;
    }
    scene->second();
    return 0;
}
