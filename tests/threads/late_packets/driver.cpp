// A driver of management ports that calls back as a real one does: on a thread of its own, and late. What was sent
// comes back; when it does, the port says:
//
//   0  before the send returns
//   1  twice, once the library has been closed
//   2  twice, while the process ends
//   3  without end, from the registration on
//
// It stays in memory when it is closed, as a library with a thread must.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include "drv_mng_eth/drv_meth.h"

namespace {

enum port_kind : uint32_t { at_once, after_close, at_end, without_end };

enum fault : uint32_t { none = 0, refused_area = 0x11, wrong_count = 0x12, unknown_port = 0x13 };

// Written before the thread starts.
struct registration {
    uint32_t port;
    drv_meth_rx_callback callback;
    uint8_t *area;
    uint32_t size;
    uint32_t used;
};

registration registered;
std::atomic<bool> was_closed;
std::atomic<bool> is_ending;
std::atomic<bool> has_called_back;
std::atomic<uint32_t> calls;
std::atomic<uint32_t> found;

bool is_fit(const uint8_t *area, uint32_t size) {
    return size == 2048 && std::all_of(area, area + size, [](uint8_t byte) { return byte == 0; });
}

void call_back() {
    const registration &to = registered;
    if (to.callback(to.port, to.area, nullptr, to.used) != to.used) {
        found = wrong_count;
    }
    ++calls;
}

void wait_for(const std::atomic<bool> &event) {
    while (!event) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void call_back_twice_after(const std::atomic<bool> &event) {
    std::thread([&event] {
        wait_for(event);
        call_back();
        call_back();
        has_called_back = true;
    }).detach();
}

void call_back_without_end() {
    const char *const packet = "without end, without end, without";
    registered.used = 32;
    std::memcpy(registered.area, packet, registered.used);
    std::thread([] {
        for (;;) {
            call_back();
        }
    }).detach();
}

void keep_packet(const uint8_t *buffer, uint32_t buf_len) {
    registered.used = std::min(buf_len, registered.size);
    std::memcpy(registered.area, buffer, registered.used);
}

// The thread must not outlive what its library has.
__attribute__((destructor)) void end_with_the_process() {
    is_ending = true;
    if (registered.port == at_end && registered.callback != nullptr) {
        wait_for(has_called_back);
    }
}

} // namespace

// Called when the library has been closed: comes back when the late packets have been handed over.
extern "C" void wait_for_late_packets() {
    was_closed = true;
    if (registered.port == after_close) {
        wait_for(has_called_back);
    }
}

uint32_t drv_meth_init(uint32_t port) {
    return port <= without_end ? none : unknown_port;
}

uint32_t drv_meth_register_callback(uint32_t port, drv_meth_rx_callback callback, void *buffer, uint32_t size) {
    registered = {port, callback, static_cast<uint8_t *>(buffer), size, 0};
    if (!is_fit(registered.area, size)) {
        found = refused_area;
    }
    if (port == without_end) {
        call_back_without_end();
    }
    return found;
}

uint32_t drv_meth_tx_pkt(uint32_t port, const uint8_t *buffer, uint32_t buf_len) {
    switch (port) {
    case at_once:
        keep_packet(buffer, buf_len);
        std::thread(call_back).join();
        break;
    case after_close:
        keep_packet(buffer, buf_len);
        call_back_twice_after(was_closed);
        break;
    case at_end:
        keep_packet(buffer, buf_len);
        call_back_twice_after(is_ending);
        break;
    case without_end:
        while (calls < 3) {
            std::this_thread::yield();
        }
        break;
    default:
        return unknown_port;
    }
    return found;
}
