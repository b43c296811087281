// The driver log: one ring of lines per log id, in the state directory, and a hook that hears what this process
// records.
#include "drv_basic/service/drv_log.h"

#include "sim/core/events.h"
#include "sim/core/state_files.h"
#include "sim/devices/service/driver_log.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

using namespace kestro_sim;

namespace {

constexpr const char *topic = "driver log";
constexpr uint32_t level_max = 3;
constexpr size_t line_max = 4096;

// A line of the log is one line of the file.
std::string one_line(uint32_t level, std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string line = std::to_string(level) + " ";
    for (const char c : text) {
        line += c == '\n' || c == '\r' ? ' ' : c;
    }
    return line + "\n";
}

// Whole lines from the front.
std::string_view lines_that_fit(std::string_view lines, size_t room) {
    const size_t end = lines.size() <= room ? lines.size() : lines.rfind('\n', room == 0 ? 0 : room - 1) + 1;
    return lines.substr(0, end);
}

enum class reading { looks, takes };

uint32_t read_log(uint32_t log_id, char *buffer, uint32_t len, uint32_t *lines, reading how) {
    return operate([&](board &b) {
        refuse_null(buffer, lines);
        const auto log = driver_log::find(b, log_id);
        refuse_if(len == 0, error::too_small);
        const std::string all = lines_of_ring(b.state_dir(), driver_log::file(b, log));
        const std::string_view fit = lines_that_fit(all, len - 1);
        refuse_if(fit.empty() && !all.empty(), error::too_small);
        if (how == reading::takes && !all.empty()) {
            replace_ring(b.state_dir(), driver_log::file(b, log), std::string_view(all).substr(fit.size()));
        }
        write_text(buffer, len, fit);
        *lines = static_cast<uint32_t>(std::count(fit.begin(), fit.end(), '\n'));
    });
}

// Who hears what this process records. Never freed: drivers are called from exit handlers too.
struct hooked {
    listener_id ears = 0; // only touched within operations
    std::atomic<bool> is_set = false;
    std::mutex lock; // of what follows
    std::condition_variable changed;
    uint64_t told = 0;
    uint64_t heard = 0;
};

hooked &hook_of_process() {
    static auto *const all = new hooked;
    return *all;
}

// What a hook itself records is not told to it, or it would never end.
thread_local bool is_within_hook = false;

void hand_over(drv_log_hook hook, const event &news) {
    const std::string text(news.bytes.begin(), news.bytes.end());
    is_within_hook = true;
    hook(news.value == 0 ? "success" : "fail", "%s", text.c_str());
    is_within_hook = false;
    hooked &own = hook_of_process();
    const std::lock_guard guard(own.lock);
    ++own.heard;
    own.changed.notify_all();
}

void tell_hook(std::string_view text, uint32_t result) {
    hooked &own = hook_of_process();
    if (!own.is_set || is_within_hook) {
        return;
    }
    operate([&](board &b) {
        if (own.ears == 0) {
            return;
        }
        {
            const std::lock_guard guard(own.lock);
            ++own.told;
        }
        post(b, {topic, 0, result, {text.begin(), text.end()}});
    });
}

// Who has recorded a line goes on when the hook has heard it, so a run prints the same each time; and a hook that is
// taken back has heard all that was recorded before. One that waits for whoever waits for it, as for the lock of the
// standard output, is not waited for any longer.
void let_hook_hear() {
    constexpr std::chrono::seconds patience{2};
    hooked &own = hook_of_process();
    std::unique_lock guard(own.lock);
    if (!is_within_hook) {
        own.changed.wait_for(guard, patience, [&] { return own.heard >= own.told; });
    }
    own.heard = own.told;
    own.changed.notify_all();
}

} // namespace

uint32_t drv_log_record(uint32_t log_id, uint32_t level, uint32_t flag, const char *format, ...) {
    std::array<char, line_max> text{};
    if (format != nullptr) {
        va_list values;
        va_start(values, format);
        vsnprintf(text.data(), text.size(), format, values);
        va_end(values);
    }
    const uint32_t result = operate([&](board &b) {
        refuse_null(format);
        refuse_if(level > level_max || flag != 0, error::bad_value);
        driver_log::append(b, driver_log::find(b, log_id), one_line(level, text.data()));
        look_at_sources_again();
    });
    tell_hook(text.data(), result);
    let_hook_hear();
    return result;
}

uint32_t drv_log_read(uint32_t log_id, char *buffer, uint32_t len, uint32_t *lines) {
    return read_log(log_id, buffer, len, lines, reading::looks);
}

uint32_t drv_log_read_clr(uint32_t log_id, char *buffer, uint32_t len, uint32_t *lines) {
    return read_log(log_id, buffer, len, lines, reading::takes);
}

uint32_t drv_log_register(uint32_t log_id, const char *name, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(name);
        driver_log::enroll(b, log_id, name, size);
    });
}

uint32_t drv_log_deregister(uint32_t log_id) {
    return operate([&](board &b) { driver_log::strike_off(b, log_id); });
}

uint32_t drv_log_hook_set(drv_log_hook hook) {
    let_hook_hear();
    listener_id gone = 0;
    hooked &own = hook_of_process();
    const uint32_t result = operate([&](board &b) {
        const listener_id made =
            hook == nullptr ? 0 : listen(b, topic, [hook](const event &news) { hand_over(hook, news); });
        own.is_set = made != 0;
        gone = std::exchange(own.ears, made);
    });
    stop_listening(gone);
    return result;
}
