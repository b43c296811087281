// Plays a scene with the library of the management ports, opened and closed at run time, and prints what was heard. Run
// on the virtual clock it prints the same each time.
//
//   packet_scenes (area|short|closed|replaced|exit|own)
#include "drv_mng_eth/drv_meth.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <thread>

namespace {

void *library = nullptr;
uint8_t area[8];

template <typename operation> operation *find(const char *name) {
    return reinterpret_cast<operation *>(dlsym(library, name));
}

int64_t milliseconds() {
    static const auto start = std::chrono::steady_clock::now();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
}

uint32_t hear(uint32_t port, void *data, void *, uint32_t length) {
    printf("%lld ms: port %u, %s, %u bytes: %.*s\n", static_cast<long long>(milliseconds()), port,
           data == area ? "the area" : "own", length, static_cast<int>(length), static_cast<const char *>(data));
    return length;
}

uint32_t hear_too(uint32_t port, void *, void *, uint32_t length) {
    printf("%lld ms: another of port %u, %u bytes\n", static_cast<long long>(milliseconds()), port, length);
    return length;
}

void rest(int64_t span) {
    std::this_thread::sleep_for(std::chrono::milliseconds(span));
}

void listen(drv_meth_rx_callback callback, void *to, uint32_t size) {
    printf("register 0x%x\n",
           find<decltype(drv_meth_register_callback)>("drv_meth_register_callback")(0, callback, to, size));
}

void send(const char *text) {
    printf("send 0x%x\n", find<decltype(drv_meth_tx_pkt)>("drv_meth_tx_pkt")(0, reinterpret_cast<const uint8_t *>(text),
                                                                             static_cast<uint32_t>(strlen(text))));
}

void play(const std::string &scene) {
    if (scene == "own") {
        listen(hear, nullptr, 0);
    } else if (scene == "short") {
        listen(hear, area, sizeof area);
        send("it is longer than that");
    } else {
        listen(hear, area, sizeof area);
    }
    send("hello");
    if (scene == "replaced") {
        listen(hear_too, area, sizeof area);
    }
    if (scene == "exit") {
        printf("exit 0x%x\n", find<decltype(drv_meth_exit)>("drv_meth_exit")(0));
    }
    if (scene == "closed") {
        const int closed = dlclose(library);
        const bool is_gone = dlopen("libdrv_mng_eth.so", RTLD_NOW | RTLD_NOLOAD) == nullptr;
        printf("close %d, gone %d\n", closed, is_gone ? 1 : 0);
    }
    rest(1000);
    printf("%lld ms: end\n", static_cast<long long>(milliseconds()));
}

} // namespace

int main(int count, char **words) {
    setvbuf(stdout, nullptr, _IOLBF, 0);
    library = dlopen("libdrv_mng_eth.so", RTLD_NOW);
    if (count != 2 || library == nullptr) {
        fprintf(stderr, "packet_scenes: %s\n", dlerror());
        return 2;
    }
    milliseconds();
    play(words[1]);
    return 0;
}
