// Redirection of a console. It belongs to this process: it ends with it, and no other run hears anything.
#include "drv_basic/service/drv_console_redirect.h"

#include "sim/core/events.h"
#include "sim/devices/service/console.h"
#include "sim/devices/service/driver_log.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace kestro_sim;

namespace {

constexpr const char *topic = "console";
constexpr const char *console_log = "drv_log_console";
constexpr uint32_t slot_max = 0xFFFF;
constexpr uint32_t instance_of_slots = 0xFF000000U;
constexpr uint32_t longest_text = 4096;

struct redirection {
    uint32_t slot;
    console::one port;
    uint32_t rate;
};

// Each reception has a number: an event that tells the end of one has it as its value, a text has 0.
struct reception {
    listener_id ears = 0;
    uint64_t number = 0;
};

struct process_state {
    std::optional<redirection> open;
    reception heard;
    uint64_t receptions = 0;
    int64_t last_echo = 0;          // when the latest one is due
    std::vector<event_id> echoes{}; // of the open redirection
};

// Only touched within operations, and never freed: drivers are called from exit handlers too.
process_state &state() {
    static auto *const all = new process_state;
    return *all;
}

console::one port_of(board &b, uint32_t slot_id) {
    refuse_if(slot_id != DRV_INST_SELF && slot_id > slot_max, error::no_such_instance);
    return b.find<console::family>(slot_id == DRV_INST_SELF ? slot_id : instance_of_slots + slot_id);
}

// Before anything is changed, so that a log without room refuses the whole.
void note_down(board &b, uint32_t slot_id, const std::string &what) {
    const std::string slot = slot_id == DRV_INST_SELF ? "own slot" : "slot " + std::to_string(slot_id);
    driver_log::note(b, console_log, slot + ": " + what);
}

void hand_over(drv_console_redirect_recv_callback callback, const event &news) {
    const std::string text(news.bytes.begin(), news.bytes.end());
    callback(news.source, text.c_str(), static_cast<uint32_t>(text.size()));
}

// On the thread that delivers events: the redirection was closed, and all that was on its way has come.
void end_reception(uint64_t number) {
    listener_id gone = 0;
    operate([&](board &) {
        if (state().heard.number == number) {
            gone = std::exchange(state().heard, {}).ears;
        }
    });
    stop_listening(gone);
}

reception begin_reception(board &b, drv_console_redirect_recv_callback callback) {
    const uint64_t number = ++state().receptions;
    const auto hears = [callback, number](const event &news) {
        if (news.value == 0) {
            hand_over(callback, news);
        } else if (news.value == number) {
            end_reception(number);
        }
    };
    return {listen(b, topic, hears), number};
}

} // namespace

uint32_t drv_console_redirect_en(uint32_t slot_id, uint32_t baud_rate) {
    return operate([&](board &b) {
        const auto port = port_of(b, slot_id);
        refuse_if(!console::is_rate(baud_rate), error::bad_value);
        refuse_if(state().open && state().open->slot != slot_id, error::bad_value);
        note_down(b, slot_id, "redirected at " + std::to_string(baud_rate) + " bit/s");
        state().open = redirection{slot_id, port, baud_rate};
    });
}

// The one before is not called any more when this returns. It may be waiting for the lock, so it is waited for without.
uint32_t drv_console_redirect_recv_callback_register(drv_console_redirect_recv_callback callback) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        const reception made = callback == nullptr ? reception{} : begin_reception(b, callback);
        gone = std::exchange(state().heard, made).ears;
    });
    stop_listening(gone);
    return result;
}

uint32_t drv_console_redirect_send_data(const char *data, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(data);
        refuse_if(!state().open, error::no_such_device);
        refuse_if(len > longest_text, error::out_of_range);
        const redirection &open = *state().open;
        refuse_if(!b.is_present(open.port.instance), error::no_such_instance);
        note_down(b, open.slot, std::to_string(len) + " bytes sent");
        const int64_t now = b.now();
        for (console::piece &back : console::answer(b, open.port, open.rate, {data, len})) {
            state().last_echo = std::max(state().last_echo, now + back.after);
            state().echoes.push_back(post_at(now + back.after, {topic, open.slot, 0, std::move(back.bytes)}));
        }
    });
}

// Answers that are on their way to nobody are gone; those that somebody hears are waited for, and then the callback is
// forgotten.
uint32_t drv_console_redirect_close(uint32_t slot_id) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        refuse_if(!state().open || state().open->slot != slot_id, error::no_such_device);
        note_down(b, slot_id, "closed");
        state().open.reset();
        const std::vector<event_id> echoes = std::exchange(state().echoes, {});
        if (state().heard.ears == 0) {
            std::for_each(echoes.begin(), echoes.end(), cancel);
        } else if (state().last_echo > b.now()) {
            post_at(state().last_echo, {topic, slot_id, state().heard.number, {}});
        } else {
            gone = std::exchange(state().heard, {}).ears;
        }
    });
    stop_listening(gone);
    return result;
}
